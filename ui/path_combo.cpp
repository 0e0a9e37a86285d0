#include "ui/path_combo.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolTip>

#include "ui/dlg.h"
#include "ui/settings_store.h"

CPathComboBox::CPathComboBox(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(20);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
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
      SelectButton(MakeChild<QPushButton>(parent, "&Select File")) {
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
    dialog.setNameFilters(FieldKind.Filter.split(";;"));
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

// The tip shows the whole path with its text exactly where the field's text
// starts, so a path too long for the field can be read in place.
void CPathCombo::ShowTipOverText() {
    QLineEdit* edit = ComboBox->lineEdit();
    QString text = edit->text();
    if (text.isEmpty()) {
        QToolTip::hideText();
        return;
    }
    QStyle* style = edit->style();
    int frame = style->pixelMetric(QStyle::PM_ToolTipLabelFrameWidth, nullptr, edit);
    QMargins m = edit->textMargins();
    QFontMetrics fm(edit->font());
    QPoint textTopLeft(m.left() + 2, (edit->height() - fm.height()) / 2);
    QPoint global = edit->mapToGlobal(textTopLeft);
    // QToolTip places its label at the point plus a fixed cursor offset.
    QPoint offset(2, 16);
    QToolTip::showText(global - offset - QPoint(frame + 1, frame + 1), text, edit, edit->rect());
}

bool CPathCombo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ComboBox->lineEdit() && event->type() == QEvent::ToolTip) {
        ShowTipOverText();
        return true;
    }
    return QObject::eventFilter(watched, event);
}
