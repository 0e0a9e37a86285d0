// The real window driven offscreen: conversions from every tab, cancelling,
// the message window, ending on a signal, the preview and the settings file
// the command line replays.
#include <sys/wait.h>

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <QTabBar>
#include <QWindow>
#include <csignal>

#include "synthetic_font.h"
#include "ui/in_bmp_dlg.h"
#include "ui/in_zarnic_dlg.h"
#include "ui/out_bmp_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/preview_wnd.h"
#include "ui/termination_watch.h"
#include "ui/warning_wnd.h"
#include "window_fixture.h"

TEST_F(WindowTest, FirstStartShowsTheLicenceNoticeOnceInTheMiddleOfTheScreen) {
    auto w = Open();
    ASSERT_EQ(Boxes.size(), 1);
    // The notice speaks the user's language: Japanese or English.
    EXPECT_TRUE(QLocale::system().language() == QLocale::Japanese
                    ? Boxes[0].startsWith(QString::fromUtf8("フォントのライセンスについて|"))
                    : Boxes[0] == "License Warning|You must get license of the font used in your game.") << Boxes[0].toStdString();
    EXPECT_EQ(w->windowTitle(), "glyphwright Version 1.1.3");
    EXPECT_EQ(w->StatusText->text(), " Ready");
    const QRect screen = w->screen()->availableGeometry();
    EXPECT_LE((w->frameGeometry().center() - screen.center()).manhattanLength(), 2) << w->frameGeometry().x();
    // Missing keys open on "Windows Font" and "BMP"; start-up wrote the file.
    EXPECT_EQ(w->InputTabs->currentIndex(), 2);
    EXPECT_EQ(w->OutputTabs->currentIndex(), 0);
    w.reset();
    w = Open();
    EXPECT_EQ(Boxes.size(), 1);
}

// The window's conversions the shared table (test_front_ends.cpp) has no case
// for: a font into a PNG grid, that grid read back, and a grid into a grid.
TEST_F(WindowTest, ConvertsIntoAndFromGlyphGrids) {
    auto w = Open();
    ASSERT_GT(w->OutBmp->OrderList->count(), 0) << "no glyph order files beside the test";
    ChooseFace(*w, "DejaVu Sans", 12);
    auto convert = [&](int input, int output, const std::filesystem::path& out) {
        w->InputTabs->setCurrentIndex(input);
        w->OutputTabs->setCurrentIndex(output);
        (output == 0 ? w->OutBmp->BitmapField : w->OutZarnic->FontField)->SetText(P(out));
        EXPECT_EQ(Convert(*w), " Finish") << input << "->" << output << "\n" << w->Messages->GetText();
        EXPECT_TRUE(std::filesystem::exists(out)) << out;
    };
    convert(2, 0, Dir / "win.png");
    EXPECT_EQ(ReadFileText(Dir / "win.png").substr(1, 3), "PNG");
    Choose(w->InBmp->OrderList, w->OutBmp->OrderList->currentIndex());
    w->InBmp->BitmapField->SetText(P(Dir / "win.png"));
    convert(0, 1, Dir / "grid.ZGLY");
    convert(0, 0, Dir / "bmp.bmp");
    EXPECT_EQ(ReadFileText(Dir / "bmp.bmp").substr(0, 2), "BM");
    EXPECT_EQ(w->ConvertButton->text(), "Convert");
}

// Cancel (the button, or a termination signal the watch finds) during a long
// run leaves no file; after a signal the window closes once the run is over.
TEST_F(WindowTest, CancelAndTerminationDuringALongRunLeaveNoFile) {
    auto w = Open();
    CTerminationWatch watch(*w);
    ChooseFace(*w, "IPAGothic", 48);
    w->OutputTabs->setCurrentIndex(1);
    w->OutZarnic->FontField->SetText(P(Dir / "out.zgly"));
    for (bool bySignal : {false, true}) {
        bool sawCancel = false;
        if (bySignal) std::raise(SIGTERM);
        // Run once the run pumps events: the button now reads Cancel.
        QTimer::singleShot(0, w.get(), [&] {
            sawCancel = w->ConvertButton->text() == "Cancel" || w->Converting();
            bySignal ? watch.Check() : w->ConvertButton->click();
        });
        EXPECT_EQ(Convert(*w), " Canceled");
        EXPECT_TRUE(sawCancel);
        EXPECT_EQ(w->Messages->GetText().find("Error"), std::string::npos);
        EXPECT_EQ(w->ConvertButton->text(), "Convert");
        EXPECT_TRUE(w->InputTabs->tabBar()->isEnabled());
        for (const auto& e : std::filesystem::directory_iterator(Dir.Dir)) EXPECT_EQ(e.path().filename(), "glyphwright.ini");
        EXPECT_TRUE(w->isVisible());
    }
    EXPECT_EQ(CTerminationWatch::Received(), CancelSignal::Terminate);
    watch.Check();
    EXPECT_FALSE(w->isVisible());
}

TEST_F(WindowTest, ErrorsAndWarningsGoToTheMessageWindow) {
    CSettingsStore s(SettingsPath());
    for (auto [key, value] : {std::pair{"x", -5}, {"y", 10}, {"w", 320}, {"h", 150}}) s.SetInt("WarningWindow", key, value);
    auto w = Open();
    w->InputTabs->setCurrentIndex(1);
    w->OutputTabs->setCurrentIndex(1);
    w->InZarnic->FontField->SetText(P(Dir / "missing.ZGLY"));
    w->OutZarnic->FontField->SetText(P(Dir / "out.ZGLY"));
    EXPECT_EQ(Convert(*w), " Convert Error");
    ASSERT_TRUE(w->Messages->isVisible());
    const std::string& text = w->Messages->GetText();
    EXPECT_EQ(text.rfind("---------------------- Error -------------------------------- \r\n", 0), 0u) << text;
    EXPECT_NE(text.find("missing.ZGLY"), std::string::npos);
    // Where it was left, pulled onto the screen, as a tool window owned by the
    // main window, stacked above it.
    EXPECT_EQ(w->Messages->pos(), QPoint(0, 10));
    EXPECT_EQ(w->Messages->size(), QSize(320, 150));
    EXPECT_EQ(w->Messages->windowType(), Qt::Tool);
    EXPECT_EQ(w->Messages->parentWidget(), w.get());
    ASSERT_NE(w->Messages->windowHandle(), nullptr);
    EXPECT_EQ(w->Messages->windowHandle()->transientParent(), w->windowHandle());
    // Moved and resized, its place is written at once.
    w->Messages->move(40, 30);
    w->Messages->resize(300, 140);
    QCoreApplication::processEvents();
    EXPECT_EQ(std::vector<int>({s.GetInt("WarningWindow", "x", 0), s.GetInt("WarningWindow", "y", 0),
                                s.GetInt("WarningWindow", "w", 0), s.GetInt("WarningWindow", "h", 0)}),
              std::vector<int>({40, 30, 300, 140}));

    // 150 warnings: 100 lines and the limit line, all counted.
    w->ClearMessages();
    for (int i = 0; i < 150; ++i) w->AddWarning("letter " + std::to_string(i) + (i == 0 ? "\nsecond line" : ""));
    EXPECT_EQ(w->Messages->GetWarningCount(), 150);
    QStringList lines = QString::fromStdString(w->Messages->GetText()).split("\r\n", Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 102);  // the first warning has two lines
    EXPECT_EQ(lines.mid(0, 2) + lines.mid(100), QStringList({"Warning: letter 0", "second line", "Warning: letter 99",
                                                             "Warning: Number of warnings over max limit."}));
    EXPECT_EQ(w->Messages->Edit()->blockCount(), 102);
}

TEST_F(WindowTest, PreviewFollowsTheZglyFieldAndTheRuns) {
    SyntheticFontShape fontShape;
    fontShape.Codes = CodeRange(0x20, 95);
    WriteSyntheticZgly(*MakeSyntheticFont(fontShape), Dir / "in.zgly");
    WriteFileText(Dir / "junk.zgly", "not a font at all, just text");
    auto w = Open();
    w->InputTabs->setCurrentIndex(1);
    w->OutputTabs->setCurrentIndex(1);
    w->InZarnic->FontField->SetText(P(Dir / "in.zgly"));
    w->OutZarnic->FontField->SetText(P(Dir / "f.zgly"));
    EXPECT_FALSE(w->PreviewButton->isEnabled());
    // Asked to, the preview opens after a run (the run made the file).
    QTest::mouseClick(w->OpenPreviewCheck, Qt::LeftButton);
    EXPECT_EQ(Convert(*w), " Finish");
    ASSERT_TRUE(w->Preview->isVisible());
    EXPECT_TRUE(w->PreviewButton->isEnabled());
    EXPECT_EQ(w->Preview->FileLabel->text(), P(Dir / "f.zgly"));
    // The picture follows the text and the zoom as they change.
    auto size = [&] { return w->Preview->Picture->pixmap().size(); };
    w->Preview->SampleEdit->setPlainText("AB");
    const QSize one = size();
    ASSERT_FALSE(one.isEmpty());
    w->Preview->ZoomSpin->setValue(w->Preview->ZoomSpin->value() * 2);
    EXPECT_EQ(size(), one * 2);
    // A file that is not a font shows the reader's message in place of the picture.
    w->OutZarnic->FontField->SetText(P(Dir / "junk.zgly"));
    QTest::mouseClick(w->PreviewButton, Qt::LeftButton);
    EXPECT_EQ(w->Preview->ErrorText(), "ZGLY File Error:\n The file is not ZGLY file");
    EXPECT_TRUE(w->Preview->Picture->pixmap().isNull());
}

// A set-up made in the window, replayed by glyphwright-cli convert --settings
// from the settings file the window wrote: the same bytes as the window's run.
TEST_F(WindowTest, SettingsFileReplayedByTheCommandLine) {
    auto w = Open();
    ChooseFace(*w, "DejaVu Sans", 13);
    Choose(w->InWin->LevelsList, 2);
    Choose(w->InWin->WidthList, 2);
    w->InWin->UseWinSize->click();
    w->InWin->SoftAA->click();
    w->OutputTabs->setCurrentIndex(1);
    COutZarnicDlg& z = *w->OutZarnic;
    Choose(z.EncodingList, 0);
    z.UseDefault[COutZarnicDlg::LineHeight]->click();
    z.Edits[COutZarnicDlg::LineHeight]->setText("24");
    z.UseDefault[COutZarnicDlg::AlterChar]->click();
    z.Edits[COutZarnicDlg::AlterChar]->setText("?");
    z.RotationRadios[3]->click();
    z.FontField->SetText(P(Dir / "font.zgly"));
    // Then the same grid in unequal margins.
    for (int round = 0; round < 3; ++round) {
        if (round == 1) {  // a glyph grid in cells of a given size, placed, without grid lines
            w->OutputTabs->setCurrentIndex(0);
            COutBmpDlg& b = *w->OutBmp;
            b.SizeRadio->click();
            b.CenterCheck->click();
            for (int i = 0; i < 4; ++i) b.NumberEdits[i]->setText(QString::number(std::array{20, 22, 3, 2}[i]));
            b.GridCheck->click();
            Choose(b.OrderList, b.OrderList->count() - 1);
            b.BitmapField->SetText(P(Dir / "font.bmp"));
        }
        if (round == 2) {
            w->OutBmp->MarginRadio->click();
            w->OutBmp->SameMarginCheck->click();
            for (int i = 0; i < 4; ++i) w->OutBmp->NumberEdits[i]->setText(QString::number(i + 1));
        }
        const auto out = Dir / (round == 0 ? "font.zgly" : "font.bmp");
        ASSERT_EQ(Convert(*w), " Finish") << w->Messages->GetText();
        const std::string byWindow = ReadFileText(out);
        ASSERT_FALSE(byWindow.empty());
        std::filesystem::remove(out);
        std::string cmd = std::string("'") + GLYPHWRIGHT_BIN_DIR + "/glyphwright-cli' convert --quiet --settings '" +
                          SettingsPath().string() + "'";
        int status = std::system(cmd.c_str());
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        EXPECT_EQ(ReadFileText(out), byWindow) << "round " << round;
    }
}
