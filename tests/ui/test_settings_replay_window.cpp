// A set-up made in the window, replayed by glyphwright-cli convert --settings
// from the settings file the window wrote: the same bytes as the window's run.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "ui/in_win_dlg.h"
#include "ui/out_bmp_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/warning_wnd.h"
#include "ui/path_combo.h"
#include "window_fixture.h"

namespace {

std::string Bytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace

TEST_F(WindowTest, SettingsFileReplayedByTheCommandLine) {
    auto w = Open();
    int face = w->InWin->NameList->findText("DejaVu Sans");
    ASSERT_GE(face, 0);
    Choose(w->InWin->NameList, face);
    w->InWin->SizeCombo->setEditText("13");
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
    const auto zgly = Dir / "font.zgly";
    z.FontField->SetText(QString::fromStdString(zgly.string()));

    // The second set-up: a glyph grid in cells of a given size, placed, without grid lines.
    auto gridSetUp = [&] {
        w->OutputTabs->setCurrentIndex(0);
        COutBmpDlg& b = *w->OutBmp;
        b.SizeRadio->click();
        b.CenterCheck->click();
        const char* numbers[] = {"20", "22", "3", "2"};
        for (int i = 0; i < 4; ++i) b.NumberEdits[i]->setText(numbers[i]);
        b.GridCheck->click();
        Choose(b.OrderList, b.OrderList->count() - 1);
        b.BitmapField->SetText(QString::fromStdString((Dir / "font.bmp").string()));
    };
    for (int round = 0; round < 2; ++round) {
        if (round == 1) gridSetUp();
        const auto out = round == 0 ? zgly : Dir / "font.bmp";
        ASSERT_EQ(Convert(*w), " Finish") << w->Messages->GetText();
        const std::string byWindow = Bytes(out);
        ASSERT_FALSE(byWindow.empty());
        std::filesystem::remove(out);
        std::string cmd = std::string("'") + GLYPHWRIGHT_BIN_DIR + "/glyphwright-cli' convert --quiet --settings '" +
                          SettingsPath().string() + "' 2>'" + (Dir / "err.txt").string() + "'";
        int status = std::system(cmd.c_str());
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << Bytes(Dir / "err.txt");
        EXPECT_EQ(Bytes(out), byWindow) << "round " << round;
    }
}
