// The window's fields: every value survives a restart, the rules between
// fields, the path history and its full-path tip.
#include <QCheckBox>
#include <QCursor>
#include <QHelpEvent>
#include <QRadioButton>
#include <QStyleOptionFrame>
#include <QTabWidget>
#include <QToolButton>
#include <QWindow>

#include "ui/in_bmp_dlg.h"
#include "ui/in_lc_dlg.h"
#include "ui/in_zarnic_dlg.h"
#include "ui/out_bmp_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/path_tip.h"
#include "window_fixture.h"
#include "zgly_test_util.h"

namespace {

// Every field value the window shows, in a fixed order.
QStringList Snapshot(CMainDlg& w) {
    QStringList s;
    s << QString::number(w.InputTabs->currentIndex()) << QString::number(w.OutputTabs->currentIndex())
      << QString::number(w.UseFilterCheck->isChecked()) << QString::number(w.HideOptionsButton->isHidden());
    for (CPathCombo* f : {w.FilterField, w.InBmp->BitmapField, w.InZarnic->FontField, w.InLc->MainField,
                          w.InLc->SubField, w.OutBmp->BitmapField, w.OutZarnic->FontField})
        s << QString::fromStdString(f->GetText());
    s << w.InBmp->OrderList->currentText() << w.InBmp->ColorsList->currentText();
    s << QString::fromStdString(w.InWin->CurrentName) << w.InWin->SizeCombo->currentText()
      << w.InWin->LevelsList->currentText() << w.InWin->WidthList->currentText() << w.InWin->FixedEdit->text()
      << QString::number(w.InWin->SoftAA->isChecked()) << QString::number(w.InWin->UseWinSize->isChecked())
      << QString::number(w.InWin->HideOptionsButton->isHidden());
    for (QCheckBox* c : {w.InLc->MainFixed, w.InLc->SubFixed, w.InLc->Vertical}) s << QString::number(c->isChecked());
    for (QAbstractButton* b : std::initializer_list<QAbstractButton*>{w.OutBmp->SizeRadio, w.OutBmp->CenterCheck,
                                                                       w.OutBmp->SameMarginCheck, w.OutBmp->GridCheck})
        s << QString::number(b->isChecked());
    for (QLineEdit* e : w.OutBmp->NumberEdits) s << e->text();
    for (int i = 0; i < COutZarnicDlg::FieldCount; ++i)
        s << w.OutZarnic->Edits[i]->text() << QString::number(w.OutZarnic->UseDefault[i]->isChecked());
    s << w.OutZarnic->EncodingList->currentText();
    for (QRadioButton* r : w.OutZarnic->RotationRadios) s << QString::number(r->isChecked());
    return s;
}

}  // namespace

TEST_F(WindowTest, EveryFieldSurvivesARestart) {
    auto w = Open();
    QStringList defaults = Snapshot(*w);
    w->InputTabs->setCurrentIndex(3);
    w->OutputTabs->setCurrentIndex(1);
    w->UseFilterCheck->click();
    w->HideOptionsButton->click();
    w->FilterField->Combo()->setEditText("/f/filter.xllt");
    w->InBmp->BitmapField->Combo()->setEditText("/f/in.bmp");
    w->InZarnic->FontField->Combo()->setEditText("/f/in.ZGLY");
    w->InLc->MainField->Combo()->setEditText("/f/main.dat");
    w->InLc->SubField->Combo()->setEditText("/f/\xC3\xA9sub.dat");
    w->OutBmp->BitmapField->Combo()->setEditText("/f/out.bmp");
    w->OutZarnic->FontField->Combo()->setEditText("/f/out.ZGLY");
    Choose(w->InBmp->ColorsList, 2);
    ChooseFace(*w, "DejaVu Serif", 20);
    Choose(w->InWin->WidthList, 3);
    w->InWin->FixedEdit->setText("9");
    w->InWin->SoftAA->click();
    w->InWin->UseWinSize->click();
    w->InWin->ShowOptionsButton->click();
    w->InLc->MainFixed->click();
    w->InLc->Vertical->click();
    w->OutBmp->SizeRadio->click();
    w->OutBmp->CenterCheck->click();
    for (int i = 0; i < 4; ++i) w->OutBmp->NumberEdits[i]->setText(QString::number(10 + i));
    w->OutBmp->GridCheck->click();
    for (int i = 0; i < COutZarnicDlg::FieldCount; ++i) {
        w->OutZarnic->UseDefault[i]->click();
        w->OutZarnic->Edits[i]->setText(i == 0 ? "?" : QString::number(i + 2));
    }
    Choose(w->OutZarnic->EncodingList, 2);
    w->OutZarnic->RotationRadios[2]->click();
    QStringList changed = Snapshot(*w);
    EXPECT_NE(changed, defaults);
    w.reset();
    w = Open();
    EXPECT_EQ(Snapshot(*w), changed);
}

TEST_F(WindowTest, OutputBmpMarginsMirrorAndZglyEncodingMustMatch) {
    CSettingsStore s(SettingsPath());
    s.SetString("OutZarnic", "Encoding", "utf-16");
    s.SetInt("OutZarnic", "Rotation", 45);
    auto w = Open();
    EXPECT_EQ(w->OutZarnic->EncodingList->currentIndex(), -1);
    for (QRadioButton* r : w->OutZarnic->RotationRadios) EXPECT_FALSE(r->isChecked());
    EXPECT_EQ(ErrorOf([&] { w->OutZarnic->CreateWriter(); }), "Parameter Error:\n Outout encoding is not selected.");
    // Margin mode with equal margins: the left margin shows in the right one
    // too, whose own key keeps its value.
    ASSERT_TRUE(w->OutBmp->MarginRadio->isChecked());
    ASSERT_TRUE(w->OutBmp->SameMarginCheck->isChecked());
    w->OutBmp->NumberEdits[0]->setText("3");
    EXPECT_EQ(w->OutBmp->NumberEdits[2]->text(), "3");
    EXPECT_FALSE(w->OutBmp->NumberEdits[2]->isEnabled());
    EXPECT_EQ(s.GetInt("OutBmp", "MarginRight", 77), 77);
    EXPECT_EQ(s.GetInt("OutBmp", "MarginLeft", 77), 3);
    // A raster-only setting of the Windows panel: the size passes negated.
    w->InWin->SizeCombo->setEditText("0");
    EXPECT_EQ(ErrorOf([&] { w->InWin->CreateReader(); }), "Parameter Error:\n Invalid Font Size(0)");
}

TEST_F(WindowTest, PathHistoryAndItsTipInTheField) {
    auto w = Open();
    CPathCombo* field = w->OutBmp->BitmapField;
    QComboBox* combo = field->Combo();
    ASSERT_EQ(combo->count(), 1);  // first start: the current directory
    EXPECT_EQ(combo->itemText(0), P(std::filesystem::current_path()));
    EXPECT_EQ(combo->currentText(), "");
    // A committed path goes to the top, and is there after a restart.
    field->SetText("/p/same.bmp");
    field->Commit();
    w.reset();
    w = Open();
    combo = w->OutBmp->BitmapField->Combo();
    EXPECT_EQ(combo->count(), 2);
    EXPECT_EQ(combo->itemText(0), "/p/same.bmp");
    // The full-path tip comes up after 100 ms, shows the path as it is (even one
    // that looks like markup) in the field's font, and lies over the field's text.
    QLineEdit* edit = combo->lineEdit();
    EXPECT_EQ(edit->style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay, nullptr, edit), 100);
    const QString path = "/a/path/much/longer/than/the/field/can/show/in/its/own/width/a<b>c&amp;.bmp";
    w->OutBmp->BitmapField->SetText(path);
    const QPoint rest = edit->mapToGlobal(QPoint(10, edit->height() / 2));
    QCursor::setPos(rest);
    QHelpEvent help(QEvent::ToolTip, edit->mapFromGlobal(rest), rest);
    QApplication::sendEvent(edit, &help);
    QLabel* tip = w->OutBmp->BitmapField->Tip();
    ASSERT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->textFormat(), Qt::PlainText);
    EXPECT_EQ(tip->text(), path);
    EXPECT_EQ(tip->font(), edit->font());
    // Where the line edit draws its first character.
    QStyleOptionFrame option;
    option.initFrom(edit);
    option.lineWidth = edit->hasFrame() ? edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit) : 0;
    QRect r = edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, edit).marginsRemoved(edit->textMargins());
    const QRect text = tip->contentsRect().marginsRemoved(QMargins(tip->margin(), tip->margin(), 0, 0));
    EXPECT_EQ(tip->mapToGlobal(text.topLeft()),
              edit->mapToGlobal(QPoint(r.x() + 2, r.y() + (r.height() - edit->fontMetrics().height() + 1) / 2)));
    EXPECT_TRUE(tip->frameGeometry().contains(rest));
    EXPECT_TRUE(tip->windowHandle()->flags() & Qt::WindowTransparentForInput);
    // Appearing under the pointer is no leaving: the tip stays while the
    // pointer rests, and goes when the pointer leaves the field.
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(edit, &leave);
    QApplication::processEvents();
    EXPECT_TRUE(tip->isVisible());
    QCursor::setPos(edit->mapToGlobal(QPoint(edit->width() + 50, edit->height() + 50)));
    QApplication::sendEvent(edit, &leave);
    EXPECT_FALSE(tip->isVisible());
    // An empty field has no tip.
    w->OutBmp->BitmapField->SetText("");
    QCursor::setPos(rest);
    QApplication::sendEvent(edit, &help);
    EXPECT_FALSE(tip->isVisible());
}
