#include "ui/in_win_dlg.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolButton>

#include "core/general_exception.h"
#include "sources/glyph_width_type.h"
#include "sources/win_font_reader.h"
#include "ui/icons.h"
#include "settings/settings_store.h"

namespace {

// The width type of a first start; also what a missing selection is saved as.
constexpr int FirstStartWidthType = WidthKeepSpace;

const char* Section = "InWin";
constexpr int FaceItemHeight = 20;

QToolButton* MakeArrowButton(QWidget* parent, Qt::ArrowType arrow, const QString& tip) {
    auto* button = MakeChild<QToolButton>(parent);
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setFixedSize(18, 18);
    return button;
}

}  // namespace

void CFaceItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    std::string name = index.data().toString().toStdString();
    bool scalable = Faces.IsScalable(name);
    const QPalette& pal = option.palette;
    QColor back = pal.color(QPalette::Base), text = pal.color(QPalette::Text);
    if (!(option.state & QStyle::State_Enabled)) {
        back = pal.color(QPalette::Window);
        text = pal.color(QPalette::Disabled, QPalette::Text);
    } else if (option.state & QStyle::State_Selected) {
        back = pal.color(QPalette::Highlight);
        text = pal.color(QPalette::HighlightedText);
    } else if (!scalable) {
        back = pal.color(QPalette::ToolTipBase);
    }
    painter->save();
    painter->fillRect(option.rect, back);
    QIcon icon = scalable ? ScalableFaceIcon() : BitmapFaceIcon();
    QRect iconRect(option.rect.left() + 2, option.rect.top() + (option.rect.height() - 16) / 2, 16, 16);
    icon.paint(painter, iconRect);
    QFont face(QString::fromStdString(name.size() > 1 && name[0] == '@' ? name.substr(1) : name));
    face.setPixelSize(14);
    painter->setFont(face);
    painter->setPen(text);
    QRect textRect = option.rect.adjusted(22, 0, -2, 0);
    painter->drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, index.data().toString());
    painter->restore();
}

QSize CFaceItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    return QSize(size.width() + 22, FaceItemHeight);
}

CInWinDlg::CInWinDlg(const CSettingsStore& settings, QWidget* parent)
    : CInDlg(settings, parent),
      NameList(MakeChild<QComboBox>(this)),
      SizeCombo(MakeChild<QComboBox>(this)),
      LevelsList(MakeChild<QComboBox>(this)),
      SoftAA(MakeChild<QCheckBox>(this, "&Soft Antialias")),
      UseWinSize(MakeChild<QCheckBox>(this, "&Use Windows Size")),
      WidthList(MakeChild<QComboBox>(this)),
      FixedEdit(MakeChild<QLineEdit>(this)),
      ShowOptionsButton(MakeArrowButton(this, Qt::DownArrow, "Show options")),
      HideOptionsButton(MakeArrowButton(this, Qt::UpArrow, "Hide options")),
      Faces(ListInstalledFaces()) {
    SizeCombo->setEditable(true);
    SizeCombo->setInsertPolicy(QComboBox::NoInsert);
    SizeCombo->setValidator(MakeChild<QIntValidator>(this, 0, 9999));
    SizeCombo->lineEdit()->setAcceptDrops(false);
    FixedEdit->setValidator(MakeChild<QIntValidator>(this, 0, 99999));
    FixedEdit->setAcceptDrops(false);
    FixedEdit->setMaximumWidth(60);
    NameList->setItemDelegate(MakeChild<CFaceItemDelegate>(this, Faces));
    NameList->view()->setMinimumWidth(300);
    NameList->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    NameList->setMaxVisibleItems(16);

    auto* line = MakeChild<QFrame>(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    auto* levelsLabel = MakeBuddyLabel(this, "&Levels of Gray", LevelsList);
    auto* widthLabel = MakeBuddyLabel(this, "&Glyph Width", WidthList);
    auto* fixedLabel = MakeBuddyLabel(this, "&Fixed Width", FixedEdit);
    auto* pxLabel = MakeChild<QLabel>(this, "px");

    auto* grid = MakeChild<QGridLayout>(this);
    grid->addWidget(MakeBuddyLabel(this, "&Name", NameList), 0, 0);
    grid->addWidget(NameList, 0, 1);
    grid->addWidget(MakeBuddyLabel(this, "&Size (px)", SizeCombo), 0, 2, Qt::AlignRight);
    grid->addWidget(SizeCombo, 0, 3, 1, 2);
    SizeCombo->setMaximumWidth(100);
    auto* toggleRow = MakeChild<QHBoxLayout>(nullptr);
    toggleRow->addWidget(ShowOptionsButton);
    toggleRow->addWidget(HideOptionsButton);
    toggleRow->addWidget(line, 1);
    grid->addLayout(toggleRow, 1, 0, 1, 5);
    grid->addWidget(levelsLabel, 2, 0);
    grid->addWidget(LevelsList, 2, 1);
    grid->addWidget(SoftAA, 2, 2);
    grid->addWidget(UseWinSize, 2, 3, 1, 2);
    grid->addWidget(widthLabel, 3, 0);
    grid->addWidget(WidthList, 3, 1);
    grid->addWidget(fixedLabel, 3, 2, Qt::AlignRight);
    grid->addWidget(FixedEdit, 3, 3);
    grid->addWidget(pxLabel, 3, 4);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(4, 1);
    OptionWidgets = {levelsLabel, LevelsList, SoftAA, UseWinSize, widthLabel, WidthList, fixedLabel, FixedEdit, pxLabel};
    for (QWidget* w : OptionWidgets) {
        QSizePolicy policy = w->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        w->setSizePolicy(policy);
    }

    for (const std::string& name : Faces.Names()) NameList->addItem(QString::fromStdString(name));
    CurrentSize = Settings.GetInt(Section, "Size", 16);
    CurrentName = Settings.GetString(Section, "Name", "Tahoma");
    int found = NameList->findText(QString::fromStdString(CurrentName), Qt::MatchFixedString);
    if (found < 0 && NameList->count() > 0) {
        found = 0;
        CurrentName = NameList->itemText(0).toStdString();
    }
    NameList->setCurrentIndex(found);
    FillSizes();

    connect(SizeCombo, &QComboBox::editTextChanged, this, [this](const QString& text) {
        CurrentSize = IntFromText(text);
        Settings.SetInt(Section, "Size", CurrentSize);
    });
    SizeCombo->setEditText(QString::number(CurrentSize));

    FillCombo(LevelsList, LevelItems(), LevelIndexForBpp(Settings.GetInt(Section, "bpp", 1)));
    FillCombo(WidthList, {"glyph only", "glyph only (keep space)", "include margin", "fixed width"},
              Settings.GetInt(Section, "Width", FirstStartWidthType));
    connect(FixedEdit, &QLineEdit::textChanged, this,
            [this](const QString& text) { Settings.SetInt(Section, "Fixed", IntFromText(text)); });
    FixedEdit->setText(QString::number(Settings.GetInt(Section, "Fixed", 16)));
    UseWinSize->setChecked(Settings.GetBool(Section, "UseWinSize", true));
    SoftAA->setChecked(Settings.GetBool(Section, "SoftAA", true));
    SetOptionsVisible(Settings.GetBool(Section, "ShowOption", false));
    ApplyEnableRules();

    connect(NameList, &QComboBox::activated, this, [this] { OnNameChosen(); });
    connect(LevelsList, &QComboBox::activated, this, [this](int index) {
        int bpp = BppForLevelIndex(index);
        Settings.SetInt(Section, "bpp", bpp);
        SoftAA->setEnabled(bpp != 1);
    });
    connect(WidthList, &QComboBox::activated, this, [this](int index) {
        Settings.SetInt(Section, "Width", index >= 0 ? index : FirstStartWidthType);
        ApplyEnableRules();
    });
    connect(UseWinSize, &QCheckBox::clicked, this, [this](bool on) { Settings.SetBool(Section, "UseWinSize", on); });
    connect(SoftAA, &QCheckBox::clicked, this, [this](bool on) { Settings.SetBool(Section, "SoftAA", on); });
    connect(ShowOptionsButton, &QToolButton::clicked, this, [this] {
        SetOptionsVisible(true);
        Settings.SetBool(Section, "ShowOption", true);
    });
    connect(HideOptionsButton, &QToolButton::clicked, this, [this] {
        SetOptionsVisible(false);
        Settings.SetBool(Section, "ShowOption", false);
    });
}

void CInWinDlg::FillSizes() {
    QString text = SizeCombo->currentText();
    QSignalBlocker block(SizeCombo);
    SizeCombo->clear();
    for (int size : Faces.SizesFor(CurrentName)) SizeCombo->addItem(QString::number(size));
    SizeCombo->setCurrentIndex(-1);
    SizeCombo->setEditText(text);
}

void CInWinDlg::OnNameChosen() {
    CurrentName = NameList->currentText().toStdString();
    FillSizes();
    ApplyEnableRules();
    Settings.SetString(Section, "Name", CurrentName);
}

void CInWinDlg::ApplyEnableRules() {
    int width = WidthList->currentIndex() >= 0 ? WidthList->currentIndex() : FirstStartWidthType;
    FixedEdit->setEnabled(width == WidthFixed);
    bool scalable = Faces.IsScalable(CurrentName);
    LevelsList->setCurrentIndex(scalable ? LevelIndexForBpp(Settings.GetInt(Section, "bpp", 1)) : 0);
    LevelsList->setEnabled(scalable);
    SoftAA->setEnabled(BppForLevelIndex(LevelsList->currentIndex()) != 1);
}

void CInWinDlg::SetOptionsVisible(bool visible) {
    ShowOptionsButton->setVisible(!visible);
    HideOptionsButton->setVisible(visible);
    for (QWidget* w : OptionWidgets) w->setVisible(visible);
}

std::unique_ptr<CFontReader> CInWinDlg::CreateReader() {
    if (CurrentSize < 1) ThrowError("Parameter Error:\n Invalid Font Size(%d)", CurrentSize);
    int height = UseWinSize->isChecked() ? -CurrentSize : CurrentSize;
    int bpp = BppForLevelIndex(LevelsList->currentIndex());
    // A reader is built with the first choice when nothing is selected (a
    // stored value the list does not have), unlike the settings and the
    // enabling rules, which take the first-start one.
    int width = WidthList->currentIndex() >= 0 ? WidthList->currentIndex() : WidthGlyphOnly;
    return std::make_unique<CWinFontReader>(CurrentName, height, bpp, width, IntFromText(FixedEdit->text()),
                                            SoftAA->isChecked());
}
