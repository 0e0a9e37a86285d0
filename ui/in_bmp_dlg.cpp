#include "ui/in_bmp_dlg.h"

#include <QComboBox>
#include <QGridLayout>
#include <QPushButton>

#include "bmpfont/bmp_font_reader.h"
#include "ui/glyph_order_list.h"
#include "ui/path_combo.h"
#include "settings/settings_store.h"

CInBmpDlg::CInBmpDlg(const CSettingsStore& settings, const GlyphOrderList& orders, QWidget* parent)
    : CInDlg(settings, parent),
      BitmapField(MakeChild<CPathCombo>(
          this, settings, PathFieldKind{"InBmpPath", GridPictureFilter, "bmp", true})),
      OrderList(MakeChild<QComboBox>(this)),
      ColorsList(MakeChild<QComboBox>(this)),
      GlyphOrders(orders) {
    auto* grid = MakeChild<QGridLayout>(this);
    grid->addWidget(MakeBuddyLabel(this, "&Bitmap File", BitmapField->Combo()), 0, 0);
    grid->addWidget(BitmapField->Combo(), 0, 1, 1, 3);
    grid->addWidget(BitmapField->Button(), 0, 4);
    grid->addWidget(MakeBuddyLabel(this, "&Glyph Order", OrderList), 1, 0);
    grid->addWidget(OrderList, 1, 1);
    grid->addWidget(MakeBuddyLabel(this, "&Colors", ColorsList), 1, 2, Qt::AlignRight);
    grid->addWidget(ColorsList, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
    RouteDragTo(BitmapField);

    BitmapField->Initialise();
    FillOrderList(OrderList, GlyphOrders, Settings.GetString("InBmp", "Order", "Latin1.xlor"));
    FillCombo(ColorsList, LevelItems(), LevelIndexForBpp(Settings.GetInt("InBmp", "bpp", 1)));

    connect(ColorsList, &QComboBox::activated, this,
            [this](int index) { Settings.SetInt("InBmp", "bpp", BppForLevelIndex(index)); });
    connect(OrderList, &QComboBox::activated, this,
            [this] { Settings.SetString("InBmp", "Order", OrderFileNameForChoice(OrderList, GlyphOrders)); });
}

std::unique_ptr<CFontReader> CInBmpDlg::CreateReader() {
    std::filesystem::path order = ChosenOrderPath(OrderList);
    return std::make_unique<CBmpFontReader>(BitmapField->GetText(), order,
                                            BppForLevelIndex(ColorsList->currentIndex()));
}

void CInBmpDlg::CommitHistory() { BitmapField->Commit(); }
