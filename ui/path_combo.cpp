#include "ui/path_combo.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolTip>

#include "ui/dlg.h"
#include "ui/path_tip.h"
#include "settings/settings_store.h"

namespace {

// The path tip comes up quickly.
constexpr int TipWakeUpDelay = 100;

// The application's own style with the tip's wake-up delay of the path fields.
class CTipTimingStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        if (hint == SH_ToolTip_WakeUpDelay) return TipWakeUpDelay;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

}  // namespace

CPathComboBox::CPathComboBox(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(20);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    // Drops are taken by the main window, which routes them by area.
    lineEdit()->setAcceptDrops(false);
    setAcceptDrops(false);
}

void CPathComboBox::showPopup() {
    TextBeforeChoice = currentText();
    QComboBox::showPopup();
}

void CPathComboBox::keyPressEvent(QKeyEvent* event) {
    TextBeforeChoice = currentText();
    QComboBox::keyPressEvent(event);
}

void CPathComboBox::wheelEvent(QWheelEvent* event) {
    // A wheel turned while passing over the field scrolls nothing: only the
    // field being typed in changes its path.
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    TextBeforeChoice = currentText();
    QComboBox::wheelEvent(event);
}

CPathCombo::CPathCombo(const CSettingsStore& settings, PathFieldKind kind, QWidget* parent)
    : QObject(parent),
      Parent(parent),
      Settings(settings),
      FieldKind(std::move(kind)),
      Entries(settings, FieldKind.Section),
      ComboBox(MakeChild<CPathComboBox>(parent)),
      SelectButton(MakeChild<QPushButton>(parent, "&Select File")),
      TipStyle(std::make_unique<CTipTimingStyle>()),
      PathTip(MakeChild<CPathTip>(ComboBox->lineEdit(), ComboBox->lineEdit())) {
    // The edit does not own a style set on it; the field does.
    ComboBox->lineEdit()->setStyle(TipStyle.get());
    NormalPalette = ComboBox->lineEdit()->palette();
    ComboBox->view()->setMinimumWidth(500);
    ComboBox->lineEdit()->installEventFilter(this);
    connect(ComboBox, &QComboBox::activated, this, &CPathCombo::OnChosen);
    connect(ComboBox, &QComboBox::editTextChanged, this, &CPathCombo::OnTextChanged);
    connect(SelectButton, &QPushButton::clicked, this, &CPathCombo::Browse);
}

void CPathCombo::Initialise() {
    Entries.Load();
    QString stored = CDlg::ToQ(Entries.StoredPath());
    RebuildList();
    SetText(stored);
}

std::string CPathCombo::GetText() const { return CDlg::FromQ(ComboBox->currentText()); }

void CPathCombo::SetText(const QString& text) {
    ComboBox->setEditText(text);
    Entries.StorePath(CDlg::FromQ(text));
}

void CPathCombo::RebuildList() {
    Rebuilding = true;
    {
        QSignalBlocker block(ComboBox);
        ComboBox->clear();
        for (const std::string& entry : Entries.Entries()) ComboBox->addItem(CDlg::ToQ(entry));
        ComboBox->setCurrentIndex(0);
    }
    Rebuilding = false;
}

void CPathCombo::Commit() {
    std::string text = GetText();
    Entries.Commit(text);
    RebuildList();
    ComboBox->setEditText(CDlg::ToQ(Entries.Entries().front()));
}

void CPathCombo::OnChosen(int index) {
    if (!Entries.Select(index, CDlg::FromQ(ComboBox->TextBeforeChoice))) return;
    RebuildList();
    QString chosen = CDlg::ToQ(Entries.Entries().front());
    ComboBox->setEditText(chosen);
    ComboBox->TextBeforeChoice = chosen;
}

void CPathCombo::OnTextChanged(const QString& text) {
    if (!Rebuilding) Entries.StorePath(CDlg::FromQ(text));
}

void CPathCombo::Browse() {
    QString savedDir = QDir::currentPath();
    QFileDialog dialog(Parent, "Select File");
    dialog.setAcceptMode(FieldKind.OpenMode ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(FieldKind.OpenMode ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    // "*.*" means every file on Windows; Qt would ask for a dot in the name.
    dialog.setNameFilters(QString(FieldKind.Filter).replace("(*.*)", "(*)").split(";;"));
    dialog.setDefaultSuffix(FieldKind.DefaultExtension);
    QString current = ComboBox->currentText().left(259);
    if (!current.isEmpty()) dialog.selectFile(current);
    bool accepted = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    QDir::setCurrent(savedDir);
    if (accepted) SetText(QDir::toNativeSeparators(dialog.selectedFiles().front()));
}

void CPathCombo::SetDropHighlight(bool on) {
    if (on == DropHighlight) return;
    DropHighlight = on;
    QLineEdit* edit = ComboBox->lineEdit();
    if (on) {
        QPalette tip = QToolTip::palette();
        QPalette p = NormalPalette;
        p.setColor(QPalette::Base, tip.color(QPalette::ToolTipBase));
        p.setColor(QPalette::Text, tip.color(QPalette::ToolTipText));
        edit->setPalette(p);
    } else {
        edit->setPalette(NormalPalette);
    }
    ComboBox->repaint();
}

void CPathCombo::Drop(const QString& file) {
    SetText(file);
    SetDropHighlight(false);
}

bool CPathCombo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ComboBox->lineEdit() && event->type() == QEvent::ToolTip) {
        PathTip->ShowOverText();
        return true;
    }
    return QObject::eventFilter(watched, event);
}
