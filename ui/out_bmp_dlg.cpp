#include "ui/out_bmp_dlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>

#include "bmpfont/bmp_font_writer.h"
#include "ui/glyph_order_list.h"
#include "ui/path_combo.h"
#include "settings/settings_store.h"

namespace {

const char* Section = "OutBmp";
const std::array<const char*, 4> SizeLabels = {"&Width:", "&Height:", "&Left:", "&Top:"};
const std::array<const char*, 4> SizeKeys = {"Width", "Height", "Left", "Top"};
const std::array<const char*, 4> MarginLabels = {"&Left:", "&Top:", "&Right:", "&Bottom:"};
const std::array<const char*, 4> MarginKeys = {"MarginLeft", "MarginTop", "MarginRight", "MarginBottom"};

}  // namespace

COutBmpDlg::COutBmpDlg(const CSettingsStore& settings, const GlyphOrderList& orders, QWidget* parent)
    : COutDlg(settings, parent),
      BitmapField(MakeChild<CPathCombo>(
          this, settings, PathFieldKind{"OutBmpPath", GridPictureFilter, "bmp", false})),
      OrderList(MakeChild<QComboBox>(this)),
      Options(MakeChild<QWidget>(this)),
      GlyphOrders(orders) {
    SizeRadio = MakeChild<QRadioButton>(Options, "Size/Offset");
    MarginRadio = MakeChild<QRadioButton>(Options, "Margin");
    CenterCheck = MakeChild<QCheckBox>(Options, "Place center");
    SameMarginCheck = MakeChild<QCheckBox>(Options, "Right=Left, Bottom=Top");
    GridCheck = MakeChild<QCheckBox>(Options, "&Draw Grid");
    auto* digits = MakeChild<QRegularExpressionValidator>(this, QRegularExpression("[0-9]{0,5}"));
    for (int i = 0; i < 4; ++i) {
        NumberEdits[i] = MakeChild<QLineEdit>(Options);
        NumberEdits[i]->setValidator(digits);
        NumberEdits[i]->setAcceptDrops(false);
        NumberEdits[i]->setMaximumWidth(70);
        NumberLabels[i] = MakeBuddyLabel(Options, SizeLabels[i], NumberEdits[i]);
    }

    auto* grid = MakeChild<QGridLayout>(this);
    grid->addWidget(MakeBuddyLabel(this, "&Bitmap File", BitmapField->Combo()), 0, 0);
    grid->addWidget(BitmapField->Combo(), 0, 1);
    grid->addWidget(BitmapField->Button(), 0, 2);
    grid->addWidget(MakeBuddyLabel(this, "&Glyph Order", OrderList), 1, 0);
    grid->addWidget(OrderList, 1, 1, 1, 2);
    grid->addWidget(Options, 2, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);

    auto* cell = MakeChild<QGroupBox>(Options, "Cell Size");
    auto* cellGrid = MakeChild<QGridLayout>(cell);
    cellGrid->addWidget(SizeRadio, 0, 0, 1, 2);
    cellGrid->addWidget(CenterCheck, 0, 2, 1, 2);
    cellGrid->addWidget(MarginRadio, 1, 0, 1, 2);
    cellGrid->addWidget(SameMarginCheck, 1, 2, 1, 2);
    for (int i = 0; i < 4; ++i) {
        cellGrid->addWidget(NumberLabels[i], 2 + i % 2, (i / 2) * 2, Qt::AlignRight);
        cellGrid->addWidget(NumberEdits[i], 2 + i % 2, (i / 2) * 2 + 1);
    }
    cellGrid->setColumnStretch(4, 1);
    auto* optionsLayout = MakeChild<QVBoxLayout>(Options);
    optionsLayout->setContentsMargins(0, 0, 0, 0);
    optionsLayout->addWidget(cell);
    optionsLayout->addWidget(GridCheck);
    RouteDragTo(BitmapField);

    BitmapField->Initialise();
    FillOrderList(OrderList, GlyphOrders, Settings.GetString(Section, "Order", "Latin1.xlor"));
    bool sizeType = Settings.GetBool(Section, "SizeType", false);
    CenterCheck->setChecked(Settings.GetBool(Section, "Center", true));
    SameMarginCheck->setChecked(Settings.GetBool(Section, "SameMargin", true));
    for (int i = 0; i < 4; ++i)
        connect(NumberEdits[i], &QLineEdit::textChanged, this, [this, i] { OnNumberChanged(i); });
    if (sizeType) {
        SizeRadio->setChecked(true);
        LoadSizeFields();
    } else {
        MarginRadio->setChecked(true);
        LoadMarginFields();
    }
    GridCheck->setChecked(Settings.GetBool(Section, "Grid", true));
    ApplyEnableRules();

    connect(SizeRadio, &QRadioButton::clicked, this, [this] {
        Settings.SetBool(Section, "SizeType", true);
        if (SizeMode()) {
            ApplyEnableRules();
            LoadSizeFields();
        }
    });
    connect(MarginRadio, &QRadioButton::clicked, this, [this] {
        Settings.SetBool(Section, "SizeType", false);
        if (!SizeMode()) {
            ApplyEnableRules();
            LoadMarginFields();
        }
    });
    connect(CenterCheck, &QCheckBox::clicked, this, [this](bool on) {
        Settings.SetBool(Section, "Center", on);
        ApplyEnableRules();
        if (SizeMode()) LoadSizeFields();
    });
    connect(SameMarginCheck, &QCheckBox::clicked, this, [this](bool on) {
        Settings.SetBool(Section, "SameMargin", on);
        ApplyEnableRules();
        if (!SizeMode()) LoadMarginFields();
    });
    connect(GridCheck, &QCheckBox::clicked, this, [this](bool on) { Settings.SetBool(Section, "Grid", on); });
    connect(OrderList, &QComboBox::activated, this,
            [this] { Settings.SetString(Section, "Order", OrderFileNameForChoice(OrderList, GlyphOrders)); });
}

bool COutBmpDlg::SizeMode() const { return SizeRadio->isChecked(); }

void COutBmpDlg::ApplyEnableRules() {
    bool size = SizeMode();
    CenterCheck->setEnabled(size);
    SameMarginCheck->setEnabled(!size);
    bool third = size ? !CenterCheck->isChecked() : !SameMarginCheck->isChecked();
    NumberEdits[2]->setEnabled(third);
    NumberEdits[3]->setEnabled(third);
}

void COutBmpDlg::LoadSizeFields() {
    Loading = true;
    for (int i = 0; i < 4; ++i) {
        NumberLabels[i]->setText(SizeLabels[i]);
        NumberEdits[i]->setText(QString::number(Settings.GetInt(Section, SizeKeys[i], 0)));
    }
    Loading = false;
}

void COutBmpDlg::LoadMarginFields() {
    Loading = true;
    bool same = SameMarginCheck->isChecked();
    for (int i = 0; i < 4; ++i) {
        NumberLabels[i]->setText(MarginLabels[i]);
        const char* key = same && i >= 2 ? MarginKeys[i - 2] : MarginKeys[i];
        NumberEdits[i]->setText(QString::number(Settings.GetInt(Section, key, 0)));
    }
    Loading = false;
}

// Every edit writes its key at once; with equal margins the first two fields
// are mirrored into the other two, whose own keys stay as they were.
void COutBmpDlg::OnNumberChanged(int field) {
    if (Loading) return;
    int value = IntFromText(NumberEdits[field]->text());
    if (SizeMode()) {
        if (field >= 2 && CenterCheck->isChecked()) return;
        Settings.SetInt(Section, SizeKeys[field], value);
        return;
    }
    bool same = SameMarginCheck->isChecked();
    if (field >= 2 && same) return;
    if (field < 2 && same) NumberEdits[field + 2]->setText(NumberEdits[field]->text());
    Settings.SetInt(Section, MarginKeys[field], value);
}

std::unique_ptr<CFontWriter> COutBmpDlg::CreateWriter() {
    std::filesystem::path order = ChosenOrderPath(OrderList);
    std::array<int, 4> v{};
    for (int i = 0; i < 4; ++i) v[i] = IntFromText(NumberEdits[i]->text());
    int cellW, cellH, left, top, right = 0, bottom = 0;
    if (SizeMode()) {
        cellW = v[0];
        cellH = v[1];
        bool centre = CenterCheck->isChecked();
        left = centre ? -1 : v[2];
        top = centre ? -1 : v[3];
    } else {
        cellW = cellH = -1;
        left = v[0];
        top = v[1];
        bool same = SameMarginCheck->isChecked();
        right = same ? v[0] : v[2];
        bottom = same ? v[1] : v[3];
    }
    return std::make_unique<CBmpFontWriter>(BitmapField->GetText(), order, GridCheck->isChecked(), cellW, cellH, left,
                                            top, right, bottom);
}

void COutBmpDlg::CommitHistory() { BitmapField->Commit(); }

void COutBmpDlg::SetOptionsVisible(bool visible) { Options->setVisible(visible); }
