// Output panel: the native ZGLY font with its encoding, overrides and rotation.
#pragma once

#include <array>

#include "ui/panel_dlg.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;

class COutZarnicDlg : public COutDlg {
public:
    COutZarnicDlg(const CSettingsStore& settings, QWidget* parent);
    std::unique_ptr<CFontWriter> CreateWriter() override;
    void CommitHistory() override;
    void SetOptionsVisible(bool visible) override;

    // Alternate character, line height, default left, default width, default right.
    enum Field { AlterChar, LineHeight, DefaultLeft, DefaultWidth, DefaultRight, FieldCount };

    CPathCombo* FontField;
    std::array<QLineEdit*, FieldCount> Edits;
    std::array<QCheckBox*, FieldCount> UseDefault;
    QComboBox* EncodingList;
    std::array<QRadioButton*, 4> RotationRadios;
    QWidget* Options;

private:
    int NumberOrDefault(Field field) const;
};
