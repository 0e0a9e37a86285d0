// Input panel: an existing ZGLY file.
#pragma once

#include "ui/panel_dlg.h"

class CInZarnicDlg : public CInDlg {
public:
    CInZarnicDlg(const CSettingsStore& settings, QWidget* parent);
    std::unique_ptr<CFontReader> CreateReader() override;
    void CommitHistory() override;

    CPathCombo* FontField;
};
