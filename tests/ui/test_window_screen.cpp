// Windows on the screen (a small one: ctest runs this file again on an
// 800x600 offscreen screen), Esc in each window, the wheel over path fields.
#include <QCheckBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QScreen>
#include <QWheelEvent>

#include "ui/path_combo.h"
#include "ui/preview_wnd.h"
#include "settings/settings_store.h"
#include "ui/warning_wnd.h"
#include "window_fixture.h"

namespace {

bool SmallScreen() { return QGuiApplication::primaryScreen()->availableGeometry().width() <= 800; }

}  // namespace

TEST_F(WindowTest, EveryWindowLiesWhollyOnASmallScreen) {
    if (!SmallScreen()) GTEST_SKIP() << "runs on the small screen (test_ui_small_screen)";
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    {
        // Places stored on a larger screen: partly off this one, and too big.
        CSettingsStore s(SettingsPath());
        for (auto [key, value] : {std::pair{"x", 700}, {"y", 500}, {"w", 400}, {"h", 300}}) s.SetInt("WarningWindow", key, value);
        for (auto [key, value] : {std::pair{"x", 100}, {"y", 400}, {"w", 1200}, {"h", 900}}) s.SetInt("Preview", key, value);
    }
    auto w = Open();
    EXPECT_TRUE(area.contains(w->frameGeometry())) << w->frameGeometry().x() << "," << w->frameGeometry().y();
    w->AddWarning("one");
    ASSERT_TRUE(w->Messages->isVisible());
    EXPECT_TRUE(area.contains(w->Messages->frameGeometry()));
    EXPECT_EQ(w->Messages->frameGeometry().bottomRight(), area.bottomRight());
    w->Preview->Open(Dir / "none.zgly", w.get());
    ASSERT_TRUE(w->Preview->isVisible());
    EXPECT_TRUE(area.contains(w->Preview->frameGeometry()));
    EXPECT_EQ(w->Preview->frameGeometry().size(), area.size().boundedTo(w->Preview->frameGeometry().size()));
    // Pulled onto the screen, but not remembered there: the user did not move them.
    CSettingsStore s(SettingsPath());
    EXPECT_EQ(s.GetInt("WarningWindow", "x", -1), 700);
    EXPECT_EQ(s.GetInt("Preview", "w", -1), 1200);
    w->Messages->move(10, 20);
    EXPECT_EQ(s.GetInt("WarningWindow", "x", -1), 10);
    EXPECT_EQ(s.GetInt("WarningWindow", "y", -1), 20);
}

// A warning during start-up (before the main window has its place) opens the
// message window beside the main window, and nothing is stored for it.
TEST_F(WindowTest, StartUpWarningOpensTheMessageWindowBesideTheMainWindow) {
    auto w = std::make_unique<CMainDlg>(SettingsPath());
    w->AddWarning("a broken order file");
    w->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(w.get()));
    ASSERT_TRUE(w->Messages->isVisible());
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect main = w->frameGeometry(), messages = w->Messages->frameGeometry();
    EXPECT_EQ(messages.top(), main.top());
    EXPECT_EQ(messages.left(), std::min(main.right() + 1, area.right() + 1 - messages.width()));
    EXPECT_TRUE(area.contains(messages));
    EXPECT_EQ(CSettingsStore(SettingsPath()).GetInt("WarningWindow", "x", -1), -1);
}

TEST_F(WindowTest, EscClosesTheWindowItIsPressedIn) {
    auto w = Open();
    w->AddWarning("one");
    w->Preview->Open(Dir / "none.zgly", w.get());
    for (QWidget* window : {static_cast<QWidget*>(w->Messages.get()), static_cast<QWidget*>(w->Preview.get())}) {
        ASSERT_TRUE(window->isVisible());
        // The window the user pressed Esc in is the active one.
        QApplication::setActiveWindow(window);
        QTest::keyClick(window, Qt::Key_Escape);
        EXPECT_FALSE(window->isVisible());
        EXPECT_TRUE(w->isVisible());
    }
    EXPECT_FALSE(w->Messages->IsShown());
    QApplication::setActiveWindow(w.get());
    QTest::keyClick(w.get(), Qt::Key_Escape);
    EXPECT_FALSE(w->isVisible());
}

TEST_F(WindowTest, WheelChangesAPathFieldOnlyWhenItHasFocus) {
    auto w = Open();
    CPathComboBox* combo = w->FilterField->Combo();
    w->UseFilterCheck->click();
    combo->addItems({"/a.xllt", "/b.xllt"});
    combo->setCurrentIndex(combo->findText("/a.xllt"));
    w->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(w.get()));
    w->ConvertButton->setFocus();
    auto turn = [&] {
        const QPointF at(combo->width() / 2.0, combo->height() / 2.0);
        QWheelEvent wheel(at, combo->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(combo, &wheel);
    };
    turn();
    EXPECT_EQ(combo->currentText(), "/a.xllt");
    EXPECT_EQ(combo->focusPolicy(), Qt::StrongFocus);  // the wheel does not take the focus either
    combo->setFocus();
    turn();
    EXPECT_EQ(combo->currentText(), "/b.xllt");
}

// "all files" matches every name, also one without a dot (a Makefile, a README).
TEST_F(WindowTest, AllFilesInTheBrowseDialogShowsEveryFile) {
    auto w = Open();
    QStringList filters;
    QTimer::singleShot(0, [&] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            filters = dialog->nameFilters();
            dialog->reject();
        }
    });
    w->FilterField->Browse();
    ASSERT_FALSE(filters.isEmpty());
    const QString all = filters.last();
    ASSERT_TRUE(all.startsWith("all files (")) << all.toStdString();
    const QString patterns = all.mid(all.indexOf('(') + 1).chopped(1);
    bool matches = false;
    for (const QString& pattern : patterns.split(' '))
        matches = matches || QRegularExpression(QRegularExpression::wildcardToRegularExpression(pattern)).match("README").hasMatch();
    EXPECT_TRUE(matches) << all.toStdString();
}
