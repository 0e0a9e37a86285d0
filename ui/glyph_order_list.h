// The glyph order drop-down of the two BMP panels.
#pragma once

#include <string>

#include "ui/panel_dlg.h"

class QComboBox;

// Fills the list (an entry's title, or "[file name]" without one) and selects
// the entry of the stored file name; the stem alone is enough ("Latin1").
void FillOrderList(QComboBox* list, const GlyphOrderList& orders, const std::string& storedName);
// The file name to store for the chosen item: the first entry whose title is
// the item's text, else empty.
std::string OrderFileNameForChoice(QComboBox* list, const GlyphOrderList& orders);
// The chosen order file; throws when none is selected.
std::filesystem::path ChosenOrderPath(QComboBox* list);
