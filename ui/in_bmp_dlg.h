// Input panel: a glyph-grid BMP picture with its glyph order file.
#pragma once

#include "ui/panel_dlg.h"

class QComboBox;

class CInBmpDlg : public CInDlg {
public:
    CInBmpDlg(const CSettingsStore& settings, const GlyphOrderList& orders, QWidget* parent);
    std::unique_ptr<CFontReader> CreateReader() override;
    void CommitHistory() override;

    CPathCombo* BitmapField;
    QComboBox* OrderList;
    QComboBox* ColorsList;

private:
    const GlyphOrderList& GlyphOrders;
};
