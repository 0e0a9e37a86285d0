// Where the windows appear: the main window in the middle of the screen, the
// message window as its owned tool window, and a path field's full-path tip
// laid over the field's text for as long as the pointer rests there. And how
// the window ends when told to by a signal.
#include <QCursor>
#include <QHelpEvent>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QWindow>

#include <csignal>

#include "ui/in_win_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/termination_watch.h"
#include "ui/warning_wnd.h"
#include "window_fixture.h"

namespace {

// The visible tip window, whoever made it.
QLabel* VisibleTip() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->windowType() == Qt::ToolTip && w->isVisible()) return qobject_cast<QLabel*>(w);
    return nullptr;
}

// Where a line edit draws its first character, in global coordinates.
QPoint EditTextOrigin(QLineEdit* edit) {
    QStyleOptionFrame option;
    option.initFrom(edit);
    option.lineWidth = edit->hasFrame() ? edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit) : 0;
    QRect r = edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, edit).marginsRemoved(edit->textMargins());
    return edit->mapToGlobal(QPoint(r.x() + 2, r.y() + (r.height() - edit->fontMetrics().height() + 1) / 2));
}

}  // namespace

TEST_F(WindowTest, WindowsOpenInPlace) {
    auto w = Open();
    // The main window in the middle of the screen.
    const QRect screen = w->screen()->availableGeometry();
    EXPECT_LE(std::abs(w->frameGeometry().center().x() - screen.center().x()), 1) << w->frameGeometry().x();
    EXPECT_LE(std::abs(w->frameGeometry().center().y() - screen.center().y()), 1) << w->frameGeometry().y();

    // The message window: a tool window owned by the main window, which the
    // window manager stacks directly above it.
    w->AddWarning("a warning");
    w->Messages->Show(w.get());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(w->Messages.get()));
    EXPECT_EQ(w->Messages->windowType(), Qt::Tool);
    EXPECT_EQ(w->Messages->parentWidget(), w.get());
    ASSERT_NE(w->Messages->windowHandle(), nullptr);
    EXPECT_EQ(w->Messages->windowHandle()->transientParent(), w->windowHandle());
}

TEST_F(WindowTest, PathTipLiesOverTheTextWhileThePointerRests) {
    auto w = Open();
    w->OutputTabs->setCurrentIndex(1);
    QLineEdit* edit = w->OutZarnic->FontField->Combo()->lineEdit();
    const QString path = "/a/path/much/longer/than/the/field/can/show/in/its/own/width/font.zgly";
    w->OutZarnic->FontField->SetText(path);
    const QPoint rest = edit->mapToGlobal(QPoint(10, edit->height() / 2));
    QCursor::setPos(rest);
    QHelpEvent help(QEvent::ToolTip, edit->mapFromGlobal(rest), rest);
    QApplication::sendEvent(edit, &help);

    QLabel* tip = VisibleTip();
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(tip->text(), path);
    EXPECT_EQ(tip->font(), edit->font());
    // Its text starts exactly where the field's does, and it covers the pointer.
    const QRect text = tip->contentsRect().marginsRemoved(QMargins(tip->margin(), tip->margin(), 0, 0));
    EXPECT_EQ(tip->mapToGlobal(text.topLeft()), EditTextOrigin(edit));
    EXPECT_TRUE(tip->frameGeometry().contains(rest));
    EXPECT_TRUE(tip->windowHandle()->flags() & Qt::WindowTransparentForInput);

    // Appearing under the pointer is no leaving: the tip stays while the
    // pointer rests, and goes when the pointer leaves the field.
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(edit, &leave);
    QTest::qWait(300);
    EXPECT_EQ(VisibleTip(), tip);
    QCursor::setPos(edit->mapToGlobal(QPoint(edit->width() + 50, edit->height() + 50)));
    QApplication::sendEvent(edit, &leave);
    EXPECT_EQ(VisibleTip(), nullptr);

    // An empty field has no tip.
    w->OutZarnic->FontField->SetText("");
    QCursor::setPos(rest);
    QApplication::sendEvent(edit, &help);
    EXPECT_EQ(VisibleTip(), nullptr);
}

// SIGTERM cancels a running conversion, whose temporary file goes with it,
// and then closes the window; without a run the window closes at once.
TEST_F(WindowTest, TerminationSignalsCancelThenClose) {
    auto w = Open();
    CTerminationWatch watch(*w);
    w->InputTabs->setCurrentIndex(2);
    ChooseFace(*w, "IPAGothic", 48);
    w->InWin->LevelsList->setCurrentIndex(w->InWin->LevelsList->count() - 1);
    w->OutputTabs->setCurrentIndex(1);
    w->OutZarnic->FontField->SetText(QString::fromStdString((Dir / "out.zgly").string()));
    std::raise(SIGTERM);
    EXPECT_EQ(CTerminationWatch::Received(), SIGTERM);
    EXPECT_EQ(Convert(*w), " Canceled");
    EXPECT_FALSE(std::filesystem::exists(Dir / "out.zgly"));
    for (const auto& entry : std::filesystem::directory_iterator(Dir.Dir))
        EXPECT_EQ(entry.path().filename().string().rfind(".out.zgly.", 0), std::string::npos) << entry.path();
    QTest::qWait(300);
    EXPECT_FALSE(w->isVisible());
}
