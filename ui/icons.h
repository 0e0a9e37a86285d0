// The window's small artwork, drawn at run time.
#pragma once

#include <QIcon>

QIcon AppIcon();
// Face list: an outline "A" for scalable faces, a pixel "A" for bitmap faces.
QIcon ScalableFaceIcon();
QIcon BitmapFaceIcon();
