#include <QCheckBox>
#include <QPlainTextEdit>
#include <QSpinBox>

#include "synthetic_font.h"
#include "ui/in_zarnic_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/preview_wnd.h"
#include "window_fixture.h"

namespace {

QString P(const std::filesystem::path& p) { return QString::fromStdString(p.string()); }

void WriteFont(const std::filesystem::path& path) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);
    auto font = MakeSyntheticFont(fontSpec);
    font->AlternateChar.Set(u'?');
    WriteSyntheticZgly(*font, path);
}

QSize PictureSize(const CMainDlg& w) { return w.Preview->Picture->pixmap().size(); }

}  // namespace

TEST_F(WindowTest, PreviewFollowsTheZglyFieldAndRemembersItsControls) {
    auto w = Open();
    w->OutputTabs->setCurrentIndex(1);
    w->OutZarnic->FontField->SetText(P(Dir / "f.zgly"));
    EXPECT_FALSE(w->PreviewButton->isEnabled());
    WriteFont(Dir / "f.zgly");
    // Coming back to the window looks again.
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(w.get(), &activate);
    ASSERT_TRUE(w->PreviewButton->isEnabled());

    QTest::mouseClick(w->PreviewButton, Qt::LeftButton);
    ASSERT_TRUE(w->Preview->isVisible());
    EXPECT_EQ(w->Preview->ErrorText(), "");
    EXPECT_EQ(w->Preview->FileLabel->text(), P(Dir / "f.zgly"));
    // The picture follows the text and the zoom as they change.
    w->Preview->SampleEdit->setPlainText("AB");
    const QSize one = PictureSize(*w);
    ASSERT_FALSE(one.isEmpty());
    w->Preview->SampleEdit->setPlainText("AB\nAB");
    EXPECT_GT(PictureSize(*w).height(), one.height());
    w->Preview->SampleEdit->setPlainText("AB");
    w->Preview->ZoomSpin->setValue(w->Preview->ZoomSpin->value() * 2);
    EXPECT_EQ(PictureSize(*w), one * 2);
    QTest::mouseClick(w->Preview->GuidesCheck, Qt::LeftButton);
    const int zoom = w->Preview->ZoomSpin->value();

    w.reset();
    w = Open();
    EXPECT_EQ(w->Preview->SampleEdit->toPlainText(), "AB");
    EXPECT_EQ(w->Preview->ZoomSpin->value(), zoom);
    EXPECT_TRUE(w->Preview->GuidesCheck->isChecked());

    // A file that is not a font shows the reader's message in place of the picture.
    WriteFileText(Dir / "junk.zgly", "not a font at all, just text");
    w->OutZarnic->FontField->SetText(P(Dir / "junk.zgly"));
    QTest::mouseClick(w->PreviewButton, Qt::LeftButton);
    EXPECT_EQ(w->Preview->ErrorText(), "ZGLY File Error:\n The file is not ZGLY file");
    w->Preview->SampleEdit->setPlainText("still no crash");
    EXPECT_TRUE(w->Preview->Picture->pixmap().isNull());
}

TEST_F(WindowTest, PreviewOpensAfterAZglyConversionWhenAsked) {
    WriteFont(Dir / "in.zgly");
    auto w = Open();
    w->InputTabs->setCurrentIndex(1);
    w->OutputTabs->setCurrentIndex(1);
    w->InZarnic->FontField->SetText(P(Dir / "in.zgly"));
    w->OutZarnic->FontField->SetText(P(Dir / "out.zgly"));
    EXPECT_FALSE(w->PreviewButton->isEnabled());
    EXPECT_EQ(Convert(*w), " Finish");
    EXPECT_TRUE(w->PreviewButton->isEnabled());  // the run made the file
    EXPECT_FALSE(w->Preview->isVisible());

    QTest::mouseClick(w->OpenPreviewCheck, Qt::LeftButton);
    EXPECT_TRUE(CSettingsStore(SettingsPath()).GetBool("Preview", "OpenAfterConversion", false));
    EXPECT_EQ(Convert(*w), " Finish");
    ASSERT_TRUE(w->Preview->isVisible());
    EXPECT_EQ(w->Preview->ErrorText(), "");
    EXPECT_FALSE(w->Preview->Picture->pixmap().isNull());

    // A failed run opens nothing.
    w->Preview->close();
    w->InZarnic->FontField->SetText(P(Dir / "missing.zgly"));
    EXPECT_EQ(Convert(*w), " Convert Error");
    EXPECT_FALSE(w->Preview->isVisible());
    w.reset();
    w = Open();
    EXPECT_TRUE(w->OpenPreviewCheck->isChecked());
}
