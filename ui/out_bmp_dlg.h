// Output panel: an editable glyph-grid BMP picture.
#pragma once

#include <array>

#include "ui/panel_dlg.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

class COutBmpDlg : public COutDlg {
public:
    COutBmpDlg(const CSettingsStore& settings, const GlyphOrderList& orders, QWidget* parent);
    std::unique_ptr<CFontWriter> CreateWriter() override;
    void CommitHistory() override;
    void SetOptionsVisible(bool visible) override;

    bool SizeMode() const;
    void ApplyEnableRules();

    CPathCombo* BitmapField;
    QComboBox* OrderList;
    QRadioButton* SizeRadio;
    QRadioButton* MarginRadio;
    QCheckBox* CenterCheck;
    QCheckBox* SameMarginCheck;
    std::array<QLabel*, 4> NumberLabels;
    std::array<QLineEdit*, 4> NumberEdits;
    QCheckBox* GridCheck;
    QWidget* Options;

private:
    void LoadSizeFields();
    void LoadMarginFields();
    void OnNumberChanged(int field);

    const GlyphOrderList& GlyphOrders;
    bool Loading = false;
};
