#include "ui/in_zarnic_dlg.h"

#include <QGridLayout>
#include <QPushButton>

#include "ui/path_combo.h"
#include "zgly/zarnic_font_reader.h"

CInZarnicDlg::CInZarnicDlg(const CSettingsStore& settings, QWidget* parent)
    : CInDlg(settings, parent),
      FontField(MakeChild<CPathCombo>(
          this, settings, PathFieldKind{"InZarnicPath", "ZARNIC Font (*.ZGLY);;all files (*.*)", "ZGLY", true})) {
    auto* grid = MakeChild<QGridLayout>(this);
    grid->addWidget(MakeBuddyLabel(this, "&ZARNIC Font", FontField->Combo()), 0, 0);
    grid->addWidget(FontField->Combo(), 0, 1);
    grid->addWidget(FontField->Button(), 0, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
    RouteDragTo(FontField);
    FontField->Initialise();
}

std::unique_ptr<CFontReader> CInZarnicDlg::CreateReader() {
    return std::make_unique<CZarnicFontReader>(FontField->GetText());
}

void CInZarnicDlg::CommitHistory() { FontField->Commit(); }
