#include <QTabWidget>
#include <fstream>

#include "ui/in_bmp_dlg.h"
#include "ui/in_win_dlg.h"
#include "ui/out_bmp_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/warning_wnd.h"
#include "window_fixture.h"

// The window's glyph-grid fields take PNG pictures both ways.
TEST_F(WindowTest, GlyphGridFieldsTakePngBothWays) {
    auto w = Open();
    ChooseFace(*w, "DejaVu Sans", 12);
    const QString png = QString::fromStdString((Dir / "grid.png").string());
    w->InputTabs->setCurrentIndex(2);
    w->OutputTabs->setCurrentIndex(0);
    w->OutBmp->BitmapField->SetText(png);
    ASSERT_EQ(Convert(*w), " Finish") << w->Messages->GetText();
    std::ifstream in(Dir / "grid.png", std::ios::binary);
    char signature[4] = {};
    in.read(signature, 4);
    EXPECT_EQ(std::string(signature + 1, 3), "PNG");

    w->InBmp->BitmapField->SetText(png);
    Choose(w->InBmp->OrderList, w->OutBmp->OrderList->currentIndex());
    w->InputTabs->setCurrentIndex(0);
    w->OutputTabs->setCurrentIndex(1);
    w->OutZarnic->FontField->SetText(QString::fromStdString((Dir / "grid.zgly").string()));
    EXPECT_EQ(Convert(*w), " Finish") << w->Messages->GetText();
    EXPECT_TRUE(std::filesystem::exists(Dir / "grid.zgly"));
}
