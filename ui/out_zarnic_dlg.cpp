#include "ui/out_zarnic_dlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>

#include "core/codepage.h"
#include "core/general_exception.h"
#include "ui/path_combo.h"
#include "settings/settings_store.h"
#include "ui/zarnic_field_rules.h"
#include "zgly/alternate_char.h"
#include "zgly/zarnic_font_writer.h"

namespace {

const char* Section = "OutZarnic";
const std::array<const char*, 5> Labels = {"&Alternate Char ", "&Line Height", "&Default Left Space", "&Default Width",
                                           "&Default Right Space"};
const std::array<const char*, 5> Keys = {"AlterChar", "LineHeight", "DefaultLeft", "DefaultWidth", "DefaultRight"};
const std::array<int, 5> Defaults = {0, 16, 0, 16, 0};
const std::array<int, 4> Degrees = {0, 90, 180, 270};

// Judges each typed character of the signed fields before the edit sees it.
class CSignedNumberFilter : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* edit = qobject_cast<QLineEdit*>(watched);
        if (!edit || event->type() != QEvent::KeyPress) return false;
        auto* key = static_cast<QKeyEvent*>(event);
        QString text = key->text();
        if (text.size() != 1 || !text[0].isPrint()) return false;
        int selStart = edit->hasSelectedText() ? edit->selectionStart() : edit->cursorPosition();
        int selLength = edit->hasSelectedText() ? static_cast<int>(edit->selectedText().size()) : 0;
        std::u16string current = edit->text().toStdU16String();
        return !AcceptSignedNumberChar(current, selStart, selLength, text[0].unicode());
    }
};

}  // namespace

COutZarnicDlg::COutZarnicDlg(const CSettingsStore& settings, QWidget* parent)
    : COutDlg(settings, parent),
      FontField(MakeChild<CPathCombo>(
          this, settings, PathFieldKind{"OutZarnicPath", "ZARNIC Font (*.ZGLY);;all files (*.*)", "ZGLY", false})),
      EncodingList(MakeChild<QComboBox>(this)),
      Options(MakeChild<QWidget>(this)) {
    EncodingList->setParent(Options);
    auto* digits = MakeChild<QRegularExpressionValidator>(this, QRegularExpression("[0-9]*"));
    auto* signedDigits = MakeChild<QRegularExpressionValidator>(this, QRegularExpression("-?[0-9]*"));
    auto* filter = MakeChild<CSignedNumberFilter>(this);
    for (int i = 0; i < FieldCount; ++i) {
        Edits[i] = MakeChild<QLineEdit>(Options);
        Edits[i]->setAcceptDrops(false);
        Edits[i]->setMaximumWidth(90);
        UseDefault[i] = MakeChild<QCheckBox>(Options, "Use Default");
    }
    Edits[LineHeight]->setValidator(digits);
    Edits[DefaultWidth]->setValidator(digits);
    Edits[DefaultLeft]->setValidator(signedDigits);
    Edits[DefaultRight]->setValidator(digits);
    Edits[DefaultLeft]->installEventFilter(filter);
    Edits[DefaultRight]->installEventFilter(filter);
    const std::array<const char*, 4> rotationTexts = {"&0", "&90", "&180", "&270"};
    for (int i = 0; i < 4; ++i) RotationRadios[i] = MakeChild<QRadioButton>(Options, rotationTexts[i]);

    auto* grid = MakeChild<QGridLayout>(this);
    grid->addWidget(MakeBuddyLabel(this, "&ZARNIC Font", FontField->Combo()), 0, 0);
    grid->addWidget(FontField->Combo(), 0, 1);
    grid->addWidget(FontField->Button(), 0, 2);
    grid->addWidget(Options, 1, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);

    auto* values = MakeChild<QGridLayout>(Options);
    values->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < FieldCount; ++i) {
        values->addWidget(MakeBuddyLabel(Options, Labels[i], Edits[i]), i, 0);
        values->addWidget(Edits[i], i, 1);
        values->addWidget(UseDefault[i], i, 2);
    }
    values->addWidget(MakeBuddyLabel(Options, "&Encoding:", EncodingList), 0, 4);
    values->addWidget(EncodingList, 1, 4);
    auto* rotation = MakeChild<QGroupBox>(Options, "&Rotation");
    auto* rotationRow = MakeChild<QHBoxLayout>(rotation);
    for (QRadioButton* radio : RotationRadios) rotationRow->addWidget(radio);
    values->addWidget(rotation, 2, 4, 3, 1, Qt::AlignTop);
    values->setColumnMinimumWidth(3, 12);
    values->setColumnStretch(3, 1);

    RouteDragTo(FontField);
    FontField->Initialise();
    for (int i = 0; i < FieldCount; ++i) {
        QLineEdit* edit = Edits[i];
        const char* key = Keys[i];
        if (i == AlterChar)
            connect(edit, &QLineEdit::textChanged, this,
                    [this, key](const QString& text) { Settings.SetString(Section, key, FromQ(text)); });
        else
            connect(edit, &QLineEdit::textChanged, this,
                    [this, key](const QString& text) { Settings.SetInt(Section, key, IntFromText(text)); });
        if (i == AlterChar) edit->setText(ToQ(Settings.GetString(Section, key)));
        else edit->setText(QString::number(Settings.GetInt(Section, key, Defaults[i])));
        std::string useKey = std::string(key) + "UseDef";
        UseDefault[i]->setChecked(Settings.GetBool(Section, useKey, true));
        edit->setEnabled(!UseDefault[i]->isChecked());
        connect(UseDefault[i], &QCheckBox::clicked, this, [this, i, useKey](bool on) {
            Edits[i]->setEnabled(!on);
            Settings.SetBool(Section, useKey, on);
        });
    }
    QStringList names;
    for (int e = 0; e < EncodingCount; ++e) names << EncodingName(e);
    FillCombo(EncodingList, names, static_cast<int>(names.indexOf(ToQ(Settings.GetString(Section, "Encoding", "UTF-16")))));
    connect(EncodingList, &QComboBox::activated, this,
            [this] { Settings.SetString(Section, "Encoding", FromQ(EncodingList->currentText())); });
    int stored = Settings.GetInt(Section, "Rotation", 0);
    for (int i = 0; i < 4; ++i) {
        RotationRadios[i]->setChecked(stored == Degrees[i]);
        connect(RotationRadios[i], &QRadioButton::clicked, this,
                [this, i] { Settings.SetInt(Section, "Rotation", Degrees[i]); });
    }
}

int COutZarnicDlg::NumberOrDefault(Field field) const {
    return UseDefault[field]->isChecked() ? NotGiven : IntFromText(Edits[field]->text());
}

std::unique_ptr<CFontWriter> COutZarnicDlg::CreateWriter() {
    int encoding = EncodingList->currentIndex();
    if (encoding < 0 || encoding >= EncodingCount)
        throw CGeneralException("Parameter Error:\n Outout encoding is not selected.");
    std::string path = FontField->GetText();
    ZglyWriterOptions options;
    if (!UseDefault[AlterChar]->isChecked())
        options.AlternateChar = ParseAlternateChar(FromQ(Edits[AlterChar]->text()), encoding);
    options.LineHeight = NumberOrDefault(LineHeight);
    options.DefaultLeftSpace = NumberOrDefault(DefaultLeft);
    options.DefaultWidth = NumberOrDefault(DefaultWidth);
    options.DefaultRightSpace = NumberOrDefault(DefaultRight);
    options.Encoding = static_cast<EncodingNumber>(encoding);
    for (int i = 1; i < 4; ++i)
        if (RotationRadios[i]->isChecked()) options.Rotation = i;
    return std::make_unique<CZarnicFontWriter>(path, options);
}

void COutZarnicDlg::CommitHistory() { FontField->Commit(); }

void COutZarnicDlg::SetOptionsVisible(bool visible) { Options->setVisible(visible); }
