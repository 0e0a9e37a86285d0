#include "ui/preview_wnd.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollArea>
#include <QSpinBox>
#include <QVBoxLayout>
#include <new>

#include "core/general_exception.h"
#include "settings/settings_store.h"
#include "zgly/font_block_set.h"
#include "preview/text_renderer.h"

namespace {
const char* Section = "Preview";
const char* DefaultSample = "The quick brown fox jumps over the lazy dog.\n0123456789";
}  // namespace

CPreviewWnd::CPreviewWnd(const CSettingsStore& settings, QWidget* owner)
    : CDlg(owner, Qt::Window), Settings(settings), Placement(*this, settings, Section, QSize(560, 360)) {
    setWindowTitle("glyphwright preview");
    FileLabel = MakeChild<QLabel>(this);
    FileLabel->setTextFormat(Qt::PlainText);
    SampleEdit = MakeChild<QPlainTextEdit>(this);
    SampleEdit->setLineWrapMode(QPlainTextEdit::NoWrap);
    SampleEdit->setFixedHeight(SampleEdit->fontMetrics().lineSpacing() * 4 + 12);
    ZoomSpin = MakeChild<QSpinBox>(this);
    ZoomSpin->setRange(1, MaxPreviewZoom);
    ZoomSpin->setSuffix(QString::fromUtf8(" \xC3\x97"));  // "x" as in "2 ×"
    GuidesCheck = MakeChild<QCheckBox>(this, "&Guides");
    GuidesCheck->setToolTip("Baselines, cell boxes and advance marks");
    Picture = MakeChild<QLabel>(this);
    Picture->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Picture->setTextFormat(Qt::PlainText);
    Picture->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Picture->setMargin(6);
    PictureArea = MakeChild<QScrollArea>(this);
    PictureArea->setWidget(Picture);
    PictureArea->setWidgetResizable(false);
    PictureArea->setBackgroundRole(QPalette::Base);

    auto* root = MakeChild<QVBoxLayout>(this);
    auto* controls = MakeChild<QHBoxLayout>(nullptr);
    controls->addWidget(MakeBuddyLabel(this, "&Zoom", ZoomSpin));
    controls->addWidget(ZoomSpin);
    controls->addSpacing(12);
    controls->addWidget(GuidesCheck);
    controls->addStretch(1);
    root->addWidget(FileLabel);
    root->addWidget(MakeBuddyLabel(this, "Sample &text", SampleEdit));
    root->addWidget(SampleEdit);
    root->addLayout(controls);
    root->addWidget(PictureArea, 1);

    Restoring = true;
    SampleEdit->setPlainText(QString::fromStdString(Settings.GetString(Section, "Text", DefaultSample)));
    ZoomSpin->setValue(std::clamp(Settings.GetInt(Section, "Zoom", 2), 1, MaxPreviewZoom));
    GuidesCheck->setChecked(Settings.GetBool(Section, "Guides", false));
    Restoring = false;

    connect(SampleEdit, &QPlainTextEdit::textChanged, this, [this] {
        if (Restoring) return;
        Settings.SetString(Section, "Text", FromQ(SampleEdit->toPlainText()));
        Redraw();
    });
    connect(ZoomSpin, &QSpinBox::valueChanged, this, [this](int zoom) {
        if (Restoring) return;
        Settings.SetInt(Section, "Zoom", zoom);
        Redraw();
    });
    connect(GuidesCheck, &QCheckBox::toggled, this, [this](bool on) {
        if (Restoring) return;
        Settings.SetBool(Section, "Guides", on);
        Redraw();
    });
}

CPreviewWnd::~CPreviewWnd() = default;

void CPreviewWnd::Open(const std::filesystem::path& file, QWidget* mainWindow) {
    FileLabel->setText(ToQ(file.string()));
    Renderer.reset();
    Blocks = std::make_unique<CFontBlockSet>();
    try {
        LoadZglyForPreview(file, *Blocks);
        Renderer = std::make_unique<CTextRenderer>(*Blocks);
    } catch (const CGeneralException& e) {
        Blocks.reset();
        ShowError(e.Message);
    } catch (const std::bad_alloc&) {
        Blocks.reset();
        ShowError("Internal Error:\n Out of memory.");
    }
    Redraw();

    if (!isVisible()) {
        QPoint below = mainWindow ? QPoint(mainWindow->frameGeometry().left() + 40,
                                           mainWindow->frameGeometry().bottom() - 80)
                                  : QPoint(0, 0);
        Placement.Apply(*this, below, QSize(200, 150));
    }
    show();
    Placement.KeepOnScreen(*this);
    raise();
}

void CPreviewWnd::Redraw() {
    if (!Renderer) return;
    try {
        CPreviewOptions options;
        options.Zoom = ZoomSpin->value();
        options.Guides = GuidesCheck->isChecked();
        const CRgbImage image = Renderer->DrawText(FromQ(SampleEdit->toPlainText()), options);
        QImage view(image.Rgb.data(), image.Width, image.Height, image.Width * 3, QImage::Format_RGB888);
        Picture->setText({});
        Picture->setPixmap(QPixmap::fromImage(view));
        Picture->adjustSize();
    } catch (const CGeneralException& e) {
        ShowError(e.Message);
    } catch (const std::bad_alloc&) {
        ShowError("Internal Error:\n Out of memory.");
    }
}

void CPreviewWnd::ShowError(const std::string& text) {
    Picture->setPixmap({});
    Picture->setText(ToQ(text));
    Picture->adjustSize();
}

QString CPreviewWnd::ErrorText() const { return Picture->pixmap().isNull() ? Picture->text() : QString(); }

// Esc closes the preview alone.
void CPreviewWnd::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) close();
    else CDlg::keyPressEvent(event);
}
