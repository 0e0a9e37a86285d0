#include "ui/in_lc_dlg.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>

#include "sources/lc_font_reader.h"
#include "ui/path_combo.h"
#include "settings/settings_store.h"

namespace {

PathFieldKind LcKind(const char* section) {
    return PathFieldKind{section, "LC Font (*.dat);;all files (*.*)", "dat", true};
}

}  // namespace

CInLcDlg::CInLcDlg(const CSettingsStore& settings, QWidget* parent)
    : CInDlg(settings, parent),
      MainField(MakeChild<CPathCombo>(this, settings, LcKind("InLcMainPath"))),
      SubField(MakeChild<CPathCombo>(this, settings, LcKind("InLcSubPath"))),
      MainFixed(MakeChild<QCheckBox>(this, "&Fixed Width")),
      SubFixed(MakeChild<QCheckBox>(this, "&Fixed Width")),
      Vertical(MakeChild<QCheckBox>(this, "&Vertical")) {
    auto* grid = MakeChild<QGridLayout>(this);
    grid->addWidget(MakeBuddyLabel(this, "&LC Font File (default mapping)", MainField->Combo()), 0, 0);
    grid->addWidget(MainFixed, 0, 1);
    grid->addWidget(Vertical, 0, 2);
    grid->addWidget(MainField->Combo(), 1, 0, 1, 3);
    grid->addWidget(MainField->Button(), 1, 3);
    grid->addWidget(MakeBuddyLabel(this, "&LC Font File (Half Width mapping)", SubField->Combo()), 2, 0);
    grid->addWidget(SubFixed, 2, 1);
    grid->addWidget(SubField->Combo(), 3, 0, 1, 3);
    grid->addWidget(SubField->Button(), 3, 3);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(4, 1);

    MainField->Initialise();
    SubField->Initialise();
    MainFixed->setChecked(Settings.GetBool("InLc", "MainFixed", true));
    SubFixed->setChecked(Settings.GetBool("InLc", "SubFixed", true));
    Vertical->setChecked(Settings.GetBool("InLc", "Vertical", false));
    connect(MainFixed, &QCheckBox::clicked, this, [this](bool on) { Settings.SetBool("InLc", "MainFixed", on); });
    connect(SubFixed, &QCheckBox::clicked, this, [this](bool on) { Settings.SetBool("InLc", "SubFixed", on); });
    connect(Vertical, &QCheckBox::clicked, this, [this](bool on) { Settings.SetBool("InLc", "Vertical", on); });
}

std::unique_ptr<CFontReader> CInLcDlg::CreateReader() {
    return std::make_unique<CLcFontReader>(MainField->GetText(), SubField->GetText(), MainFixed->isChecked(),
                                           SubFixed->isChecked(), Vertical->isChecked());
}

void CInLcDlg::CommitHistory() {
    MainField->Commit();
    SubField->Commit();
}

bool CInLcDlg::NearerMain(const QPoint& global) const {
    auto distance2 = [&](const QWidget* w) {
        QPoint origin = w->mapToGlobal(QPoint(0, 0));
        QPoint centre(origin.x() + w->width() / 2, origin.y() + w->height() / 2);
        QPoint d = global - centre;
        return static_cast<long long>(d.x()) * d.x() + static_cast<long long>(d.y()) * d.y();
    };
    return distance2(MainField->Combo()) <= distance2(SubField->Combo());
}

void CInLcDlg::OnDragEnter(const QPoint& global) {
    DropOnMain = NearerMain(global);
    Chosen()->SetDropHighlight(true);
}

void CInLcDlg::OnDragOver(const QPoint& global) {
    bool main = NearerMain(global);
    if (main == DropOnMain) return;
    Chosen()->SetDropHighlight(false);
    DropOnMain = main;
    Chosen()->SetDropHighlight(true);
}

void CInLcDlg::OnDragLeave() { Chosen()->SetDropHighlight(false); }

void CInLcDlg::OnDrop(const QString& file) { Chosen()->Drop(file); }
