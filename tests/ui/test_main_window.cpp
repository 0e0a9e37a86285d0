#include <QGroupBox>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>

#include "ui/in_bmp_dlg.h"
#include "ui/in_lc_dlg.h"
#include "ui/in_win_dlg.h"
#include "ui/in_zarnic_dlg.h"
#include "ui/out_bmp_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/warning_wnd.h"
#include "window_fixture.h"

namespace {

// A 4x8 LC Font file: 752 records of a code and eight one-byte rows; the
// first 94 are the printable ASCII characters.
void WriteLcFont(const std::filesystem::path& path) {
    std::string data;
    for (int i = 0; i < 752; ++i) {
        int code = i < 94 ? 0x21 + i : 0x889F + (i - 94);
        data += static_cast<char>(code >> 8);
        data += static_cast<char>(code & 0xFF);
        for (int row = 0; row < 8; ++row) data += static_cast<char>(row == 7 ? 0 : (0xF0 >> (row % 4)) & 0xF0);
    }
    WriteFileText(path, data);
}

QString P(const std::filesystem::path& p) { return QString::fromStdString(p.string()); }

}  // namespace

void WindowTest::ChooseFace(CMainDlg& w, const QString& face, int size) {
    int index = w.InWin->NameList->findText(face);
    ASSERT_GE(index, 0) << face.toStdString();
    Choose(w.InWin->NameList, index);
    w.InWin->SizeCombo->setEditText(QString::number(size));
}

TEST_F(WindowTest, FirstStartShowsTheLicenceNoticeOnce) {
    auto w = Open();
    ASSERT_EQ(Boxes.size(), 1);
    // The notice speaks the user's language: Japanese or English.
    if (QLocale::system().language() == QLocale::Japanese)
        EXPECT_TRUE(Boxes[0].startsWith(QString::fromUtf8("フォントのライセンスについて|")));
    else
        EXPECT_EQ(Boxes[0], "License Warning|You must get license of the font used in your game.");
    EXPECT_EQ(w->windowTitle(), "glyphwright Version 1.1.3");
    EXPECT_EQ(w->StatusText->text(), " Ready");
    // Missing keys open on "Windows Font" and "BMP"; start-up wrote the file.
    EXPECT_EQ(w->InputTabs->currentIndex(), 2);
    EXPECT_EQ(w->OutputTabs->currentIndex(), 0);
    w.reset();
    EXPECT_TRUE(std::filesystem::exists(SettingsPath()));
    CSettingsStore(SettingsPath()).SetInt("Main", "InputSelect", 9);
    w = Open();
    EXPECT_EQ(Boxes.size(), 1);
    EXPECT_EQ(w->InputTabs->currentIndex(), 3);
}

// Every input tab to every output tab, each started with the Convert button.
TEST_F(WindowTest, ConvertsFromEveryInputToEveryOutput) {
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
    convert(2, 0, Dir / "win.bmp");
    convert(2, 1, Dir / "win.ZGLY");
    w->InZarnic->FontField->SetText(P(Dir / "win.ZGLY"));
    convert(1, 0, Dir / "zgly.bmp");
    convert(1, 1, Dir / "zgly.ZGLY");
    w->InBmp->BitmapField->SetText(P(Dir / "win.bmp"));
    Choose(w->InBmp->OrderList, w->OutBmp->OrderList->currentIndex());
    convert(0, 0, Dir / "bmp.bmp");
    convert(0, 1, Dir / "bmp.ZGLY");
    WriteLcFont(Dir / "font.dat");
    w->InLc->MainField->SetText(P(Dir / "font.dat"));
    convert(3, 0, Dir / "lc.bmp");
    convert(3, 1, Dir / "lc.ZGLY");
    EXPECT_EQ(w->ConvertButton->text(), "Convert");
    EXPECT_TRUE(w->InLc->isEnabled());
}

TEST_F(WindowTest, CancelDuringALongRunLeavesNoFile) {
    auto w = Open();
    ChooseFace(*w, "DejaVu Sans", 16);
    w->OutputTabs->setCurrentIndex(1);
    w->OutZarnic->FontField->SetText(P(Dir / "cancel.ZGLY"));
    bool sawCancel = false;
    // Pressed once the run pumps events: the button now reads Cancel.
    QTimer::singleShot(0, w.get(), [&] {
        sawCancel = w->ConvertButton->text() == "Cancel" || w->Converting();
        w->ConvertButton->click();
    });
    EXPECT_EQ(Convert(*w), " Canceled");
    EXPECT_TRUE(sawCancel);
    EXPECT_FALSE(std::filesystem::exists(Dir / "cancel.ZGLY"));
    EXPECT_EQ(w->Messages->GetText().find("Error"), std::string::npos);
    EXPECT_EQ(w->ConvertButton->text(), "Convert");
    EXPECT_FALSE(w->Converting());
    EXPECT_TRUE(w->InputTabs->tabBar()->isEnabled());
}

TEST_F(WindowTest, ErrorsAndWarningsGoToTheMessageWindow) {
    auto w = Open();
    w->InputTabs->setCurrentIndex(1);
    w->OutputTabs->setCurrentIndex(1);
    w->InZarnic->FontField->SetText(P(Dir / "missing.ZGLY"));
    w->OutZarnic->FontField->SetText(P(Dir / "out.ZGLY"));
    EXPECT_EQ(Convert(*w), " Convert Error");
    ASSERT_TRUE(w->Messages->IsShown());
    const std::string& text = w->Messages->GetText();
    EXPECT_EQ(text.rfind("---------------------- Error -------------------------------- \r\n", 0), 0u) << text;
    EXPECT_NE(text.find("missing.ZGLY"), std::string::npos);
    EXPECT_TRUE(w->Messages->isVisible());

    // 150 warnings: 100 lines and the limit line, all counted.
    w->ClearMessages();
    for (int i = 0; i < 150; ++i) w->AddWarning("letter " + std::to_string(i) + (i == 0 ? "\nsecond line" : ""));
    EXPECT_EQ(w->Messages->GetWarningCount(), 150);
    QStringList lines = QString::fromStdString(w->Messages->GetText()).split("\r\n", Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 102);  // the first warning has two lines
    EXPECT_EQ(lines[0], "Warning: letter 0");
    EXPECT_EQ(lines[1], "second line");
    EXPECT_EQ(lines[100], "Warning: letter 99");
    EXPECT_EQ(lines[101], "Warning: Number of warnings over max limit.");
    EXPECT_EQ(w->Messages->Edit()->blockCount(), 102);

    // A clean run afterwards closes the window that holds no new text.
    ChooseFace(*w, "DejaVu Sans", 12);
    w->InputTabs->setCurrentIndex(2);
    w->OutputTabs->setCurrentIndex(0);
    w->OutBmp->BitmapField->SetText(P(Dir / "clean.bmp"));
    EXPECT_EQ(Convert(*w), " Finish");
    EXPECT_FALSE(w->Messages->IsShown());
}

TEST_F(WindowTest, MessageWindowPlacementIsRemembered) {
    CSettingsStore s(SettingsPath());
    s.SetInt("WarningWindow", "x", -5);
    s.SetInt("WarningWindow", "y", 10);
    s.SetInt("WarningWindow", "w", 320);
    s.SetInt("WarningWindow", "h", 150);
    auto w = Open();
    w->AddWarning("one");
    EXPECT_EQ(w->Messages->pos(), QPoint(-5, 10));
    EXPECT_EQ(w->Messages->size(), QSize(320, 150));
}
