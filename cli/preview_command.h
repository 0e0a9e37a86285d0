// glyphwright-cli preview: draws a text, or every glyph, of a ZGLY file into
// a PNG picture.
#pragma once

#include <cstdio>

struct CliOptions;

// 0 written, 1 a file error (the message on err).
void RunPreviewCommand(const CliOptions& options);
