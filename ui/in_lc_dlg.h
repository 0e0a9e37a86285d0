// Input panel: LC Font files, the default mapping and the half-width mapping.
#pragma once

#include "ui/panel_dlg.h"

class QCheckBox;

class CInLcDlg : public CInDlg {
public:
    CInLcDlg(const CSettingsStore& settings, QWidget* parent);
    std::unique_ptr<CFontReader> CreateReader() override;
    void CommitHistory() override;

    // A drag goes to the field whose combo centre is nearer the pointer.
    void OnDragEnter(const QPoint& global) override;
    void OnDragOver(const QPoint& global) override;
    void OnDragLeave() override;
    void OnDrop(const QString& file) override;

    CPathCombo* MainField;
    CPathCombo* SubField;
    QCheckBox* MainFixed;
    QCheckBox* SubFixed;
    QCheckBox* Vertical;
    bool DropOnMain = true;

private:
    bool NearerMain(const QPoint& global) const;
    CPathCombo* Chosen() const { return DropOnMain ? MainField : SubField; }
};
