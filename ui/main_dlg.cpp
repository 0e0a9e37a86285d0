#include "ui/main_dlg.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QUrl>
#include <algorithm>
#include <cstdlib>

#include "core/general_exception.h"
#include "xmlfiles/char_selection.h"
#include "ui/icons.h"
#include "ui/in_bmp_dlg.h"
#include "ui/in_lc_dlg.h"
#include "ui/in_win_dlg.h"
#include "ui/in_zarnic_dlg.h"
#include "ui/message_box.h"
#include "ui/out_bmp_dlg.h"
#include "ui/out_zarnic_dlg.h"
#include "ui/path_combo.h"
#include "ui/window_placement.h"
#include "ui/preview_wnd.h"
#include "ui/warning_wnd.h"

namespace {

void ShowLicenceNotice() {
    bool japanese = QLocale::system().language() == QLocale::Japanese;
    QString caption = japanese ? QString::fromUtf8("フォントのライセンスについて") : QString("License Warning");
    QString text = japanese ? QString::fromUtf8(
                                  "ゲームで使用するフォントには、それぞれのフォントについて、ゲームごとに"
                                  "ライセンスが必要です。\n"
                                  "このプログラムおよび開発キットには、LCフォントを含め、どのフォントの"
                                  "ライセンスも付属していません。")
                            : QString("You must get license of the font used in your game.");
    ShowMessageBox(nullptr, QMessageBox::Warning, caption, text);
}

// The first local file of a drag, or empty when the data is not a file list.
QString FirstDraggedFile(const QMimeData* data) {
    if (!data || !data->hasUrls()) return {};
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) return QDir::toNativeSeparators(url.toLocalFile());
    return {};
}

QToolButton* MakeArrowButton(QWidget* parent, Qt::ArrowType arrow, const QString& tip) {
    auto* button = MakeChild<QToolButton>(parent);
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setToolTip(tip);
    return button;
}

}  // namespace

CMainDlg::CMainDlg(std::filesystem::path settingsPath) : Settings(std::move(settingsPath)) {
    Messages = std::make_unique<CWarningWnd>(Settings, this);
    Preview = std::make_unique<CPreviewWnd>(Settings, this);
    if (!Settings.Exists()) ShowLicenceNotice();

    try {
        FindGlyphOrderFiles(GlyphOrders);
    } catch (const CGeneralException& e) {
        AddWarning(e.Message);
    }
    BuildLayout();

    Progress->setRange(0, 100);
    SetStatus(" Ready");
    if (GlyphOrders.empty())
        ShowMessageBox(this, QMessageBox::Critical, "Error", "No Glyph Order files found.\nSo you can not process BMP.");
    UseFilterCheck->setChecked(Settings.GetBool("Main", "UseFilter", false));
    OnUseFilterClicked();
    setWindowIcon(AppIcon());
    if (!Settings.GetBool("Main", "ShowOption", false)) HideOptions();
    setWindowTitle(QString("glyphwright Version ") + GLYPHWRIGHT_VERSION);
    setAcceptDrops(true);
    adjustSize();
}

CMainDlg::~CMainDlg() = default;

void CMainDlg::BuildLayout() {
    auto* root = MakeChild<QVBoxLayout>(this);

    InputBox = MakeChild<QGroupBox>(this);
    InputTabs = MakeChild<QTabWidget>(InputBox);
    auto* inputRow = MakeChild<QHBoxLayout>(InputBox);
    auto* inputLabel = MakeChild<QLabel>(InputBox, "Input");
    inputLabel->setMinimumWidth(44);
    inputRow->addWidget(inputLabel, 0, Qt::AlignVCenter);
    inputRow->addWidget(InputTabs, 1);
    InBmp = MakeChild<CInBmpDlg>(InputTabs, Settings, GlyphOrders);
    InZarnic = MakeChild<CInZarnicDlg>(InputTabs, Settings);
    InWin = MakeChild<CInWinDlg>(InputTabs, Settings);
    InLc = MakeChild<CInLcDlg>(InputTabs, Settings);
    InputPanels = {InBmp, InZarnic, InWin, InLc};
    const char* inputLabels[] = {"BMP", "ZARNIC Font", "Windows Font", "LC Font"};
    for (int i = 0; i < 4; ++i) InputTabs->addTab(InputPanels[i], inputLabels[i]);

    FilterBox = MakeChild<QGroupBox>(this);
    auto* filterRow = MakeChild<QHBoxLayout>(FilterBox);
    UseFilterCheck = MakeChild<QCheckBox>(FilterBox, "&Use Filter");
    FilterField = MakeChild<CPathCombo>(
        FilterBox, Settings, PathFieldKind{"FilterPath", "Filter List (*.xllt);;Characters as text (*.txt);;all files (*.*)", "xllt", true});
    filterRow->addWidget(UseFilterCheck);
    filterRow->addWidget(FilterField->Combo(), 1);
    filterRow->addWidget(FilterField->Button());

    OutputBox = MakeChild<QGroupBox>(this);
    OutputTabs = MakeChild<QTabWidget>(OutputBox);
    auto* outputRow = MakeChild<QHBoxLayout>(OutputBox);
    auto* outputSide = MakeChild<QVBoxLayout>(nullptr);
    auto* outputLabel = MakeChild<QLabel>(OutputBox, "Output");
    outputLabel->setMinimumWidth(44);
    ShowOptionsButton = MakeArrowButton(OutputBox, Qt::DownArrow, "Show options");
    HideOptionsButton = MakeArrowButton(OutputBox, Qt::UpArrow, "Hide options");
    outputSide->addStretch(1);
    outputSide->addWidget(outputLabel);
    outputSide->addWidget(ShowOptionsButton, 0, Qt::AlignHCenter);
    outputSide->addStretch(1);
    outputSide->addWidget(HideOptionsButton, 0, Qt::AlignHCenter);
    outputRow->addLayout(outputSide);
    outputRow->addWidget(OutputTabs, 1);
    ShowOptionsButton->hide();
    OutBmp = MakeChild<COutBmpDlg>(OutputTabs, Settings, GlyphOrders);
    OutZarnic = MakeChild<COutZarnicDlg>(OutputTabs, Settings);
    OutputPanels = {OutBmp, OutZarnic};
    OutputTabs->addTab(OutBmp, "BMP");
    OutputTabs->addTab(OutZarnic, "ZARNIC Font");

    auto* bottom = MakeChild<QHBoxLayout>(nullptr);
    Progress = MakeChild<QProgressBar>(this);
    Progress->setTextVisible(false);
    StatusText = MakeChild<QLabel>(this);
    StatusText->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    StatusText->setTextFormat(Qt::PlainText);
    StatusText->setMinimumWidth(140);
    ConvertButton = MakeChild<QPushButton>(this, "Convert");
    ConvertButton->setDefault(true);
    ConvertButton->setMinimumWidth(90);
    PreviewButton = MakeChild<QPushButton>(this, "&Preview");
    PreviewButton->setToolTip("Draw a sample text with the ZGLY output file");
    OpenPreviewCheck = MakeChild<QCheckBox>(this, "Open preview after conversion");
    OpenPreviewCheck->setChecked(Settings.GetBool("Preview", "OpenAfterConversion", false));
    bottom->addWidget(Progress, 3);
    bottom->addWidget(StatusText, 2);
    bottom->addWidget(PreviewButton);
    bottom->addWidget(ConvertButton);
    auto* previewRow = MakeChild<QHBoxLayout>(nullptr);
    previewRow->addStretch(1);
    previewRow->addWidget(OpenPreviewCheck);

    root->addWidget(InputBox);
    root->addWidget(FilterBox);
    root->addWidget(OutputBox, 1);
    root->addLayout(previewRow);
    root->addLayout(bottom);

    FilterField->Initialise();
    InputTabs->setCurrentIndex(std::clamp(Settings.GetInt("Main", "InputSelect", 2), 0, 3));
    SelectInput();
    OutputTabs->setCurrentIndex(std::clamp(Settings.GetInt("Main", "OutputSelect", 0), 0, 1));
    SelectOutput();

    connect(InputTabs, &QTabWidget::currentChanged, this, [this] { SelectInput(); });
    connect(OutputTabs, &QTabWidget::currentChanged, this, [this] { SelectOutput(); });
    connect(UseFilterCheck, &QCheckBox::clicked, this, [this] { OnUseFilterClicked(); });
    connect(ConvertButton, &QPushButton::clicked, this, [this] { OnConvertClicked(); });
    connect(PreviewButton, &QPushButton::clicked, this, [this] { OpenPreview(); });
    connect(OpenPreviewCheck, &QCheckBox::clicked, this,
            [this](bool on) { Settings.SetBool("Preview", "OpenAfterConversion", on); });
    connect(OutZarnic->FontField->Combo(), &QComboBox::editTextChanged, this, [this] { UpdatePreviewButton(); });
    UpdatePreviewButton();
    connect(ShowOptionsButton, &QToolButton::clicked, this, [this] { ShowOptions(); });
    connect(HideOptionsButton, &QToolButton::clicked, this, [this] { HideOptions(); });
    auto* escape = MakeChild<QShortcut>(this, QKeySequence(Qt::Key_Escape));
    // The message window, a tool window, shares this shortcut: Esc pressed
    // there closes it alone.
    connect(escape, &QShortcut::activated, this, [this] {
        QWidget* active = QApplication::activeWindow();
        if (active == Messages.get() || active == Preview.get()) active->close();
        else close();
    });
}

namespace {

// Makes the panel of the current tab the current one (a tab past the panels
// counts as the last) and remembers the tab under key.
template <class Panel, std::size_t N>
void SelectPanel(const QTabWidget& tabs, const std::array<Panel*, N>& panels, Panel*& current,
                 CSettingsStore& settings, const char* key) {
    const int index = tabs.currentIndex();
    if (index < 0) return;
    Panel* panel = panels[std::min(static_cast<std::size_t>(index), N - 1)];
    if (panel == current) return;
    current = panel;
    settings.SetInt("Main", key, index);
}

}  // namespace

void CMainDlg::SelectInput() { SelectPanel(*InputTabs, InputPanels, CurrentInput, Settings, "InputSelect"); }

void CMainDlg::SelectOutput() { SelectPanel(*OutputTabs, OutputPanels, CurrentOutput, Settings, "OutputSelect"); }

void CMainDlg::OnUseFilterClicked() {
    bool on = UseFilterCheck->isChecked();
    Settings.SetBool("Main", "UseFilter", on);
    FilterField->Combo()->setEnabled(on);
    FilterField->Button()->setEnabled(on);
}

// The option areas fold away below the file rows of the output panels; the
// window gives up exactly their height and takes it back when they return.
int CMainDlg::SetOutputOptionsVisible(bool visible) {
    auto tallest = [this] { return std::max(OutBmp->sizeHint().height(), OutZarnic->sizeHint().height()); };
    int before = tallest();
    for (COutDlg* panel : OutputPanels) {
        panel->SetOptionsVisible(visible);
        // Hiding a child of a window not yet shown does not invalidate its layout.
        panel->layout()->invalidate();
    }
    int change = std::abs(tallest() - before);
    if (change > 0) OptionHeight = change;
    ShowOptionsButton->setVisible(!visible);
    HideOptionsButton->setVisible(visible);
    Settings.SetBool("Main", "ShowOption", visible);
    return OptionHeight;
}

// The panels' layout changes reach the window's minimum size through posted
// layout requests; apply them now, or the window could not shrink yet.
void CMainDlg::ApplyPendingLayouts() {
    // Each level of nesting posts the next request; a few rounds reach the top.
    for (int round = 0; round < 6; ++round) QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    layout()->activate();
}

void CMainDlg::HideOptions() {
    if (HideOptionsButton->isHidden()) return;
    int h = SetOutputOptionsVisible(false);
    if (isVisible()) {
        // Applying the layouts may already grow the window to its new minimum.
        int target = height() - h;
        ApplyPendingLayouts();
        resize(width(), target);
    }
}

void CMainDlg::ShowOptions() {
    if (ShowOptionsButton->isHidden()) return;
    int h = SetOutputOptionsVisible(true);
    if (isVisible()) {
        // Applying the layouts may already grow the window to its new minimum.
        int target = height() + h;
        ApplyPendingLayouts();
        resize(width(), target);
    }
}

void CMainDlg::OnConvertClicked() {
    if (IsConverting) {
        CancelRequested = true;
        return;
    }
    const ConversionOutcome outcome = RunConversion(*this, *this);
    UpdatePreviewButton();
    if (outcome == ConversionOutcome::Finished && CurrentOutput == OutZarnic && OpenPreviewCheck->isChecked() &&
        PreviewButton->isEnabled())
        OpenPreview();
}

void CMainDlg::UpdatePreviewButton() {
    std::error_code ec;
    const std::string text = OutZarnic->FontField->GetText();
    PreviewButton->setEnabled(!IsConverting && !text.empty() && std::filesystem::is_regular_file(text, ec));
}

void CMainDlg::OpenPreview() {
    const std::string text = OutZarnic->FontField->GetText();
    if (!text.empty()) Preview->Open(text, this);
}

// --- progress interface ---

bool CMainDlg::IsCanceled() {
    PumpEvents();
    return CancelRequested;
}

void CMainDlg::SetStatus(const std::string& text) {
    StatusText->setText(ToQ(text));
    PumpEvents();
}

void CMainDlg::AddWarning(const std::string& text) {
    Messages->AppendWarning(text);
    if (!Messages->IsShown()) Messages->Show(this);
}

void CMainDlg::ShowProgress(int pos, int range) {
    const int top = std::max(range, 1);
    const int value = std::clamp(pos, 0, top);
    Progress->setRange(0, top);  // nothing happens when unchanged
    // Drawing the bar costs tens of microseconds (the style's gradients) and
    // the steps of a run come far faster than an eye can follow: the bar is
    // moved at most every 15 ms, and always to 0 and to the end. Events are
    // still processed, and Cancel looked at, at every step.
    if (value != 0 && value != top && BarMoved.isValid() && !BarMoved.hasExpired(15)) return;
    Progress->setValue(value);
    BarMoved.start();
}

void CMainDlg::PumpEvents() { QCoreApplication::processEvents(); }

// --- conversion front end ---

void CMainDlg::BeginRun() {
    CancelRequested = false;
    IsConverting = true;
}

void CMainDlg::LockControls() {
    CurrentInput->setEnabled(false);
    CurrentOutput->setEnabled(false);
    InputTabs->tabBar()->setEnabled(false);
    OutputTabs->tabBar()->setEnabled(false);
    UseFilterCheck->setEnabled(false);
    FilterField->Combo()->setEnabled(false);
    FilterField->Button()->setEnabled(false);
    ConvertButton->setText("Cancel");
    PreviewButton->setEnabled(false);
    OpenPreviewCheck->setEnabled(false);
    repaint();
}

void CMainDlg::UnlockControls() {
    InputTabs->tabBar()->setEnabled(true);
    OutputTabs->tabBar()->setEnabled(true);
    UseFilterCheck->setEnabled(true);
    FilterField->Combo()->setEnabled(UseFilterCheck->isChecked());
    FilterField->Button()->setEnabled(UseFilterCheck->isChecked());
    ConvertButton->setText("Convert");
    OpenPreviewCheck->setEnabled(true);
    repaint();
    CurrentInput->setEnabled(true);
    CurrentOutput->setEnabled(true);
}

void CMainDlg::EndRun() { IsConverting = false; }

bool CMainDlg::UseFilter() { return UseFilterCheck->isChecked(); }

std::string CMainDlg::FilterPathText() { return FilterField->GetText(); }

std::string CMainDlg::CommitFilterPath() {
    FilterField->Commit();
    return FilterField->GetText();
}

void CMainDlg::LoadFilter(CFontFilter& filter) { LoadFilterFile(filter, CommitFilterPath()); }

std::unique_ptr<CFontReader> CMainDlg::CreateReader() { return CurrentInput->CreateReader(); }

std::unique_ptr<CFontWriter> CMainDlg::CreateWriter() { return CurrentOutput->CreateWriter(); }

void CMainDlg::CommitInputHistory() { CurrentInput->CommitHistory(); }

void CMainDlg::CommitOutputHistory() { CurrentOutput->CommitHistory(); }

void CMainDlg::ClearMessages() { Messages->Clear(); }

void CMainDlg::AppendError(const std::string& text) { Messages->AppendError(text); }

void CMainDlg::ShowMessages() { Messages->Show(this); }

bool CMainDlg::MessagesShown() { return Messages->IsShown(); }

bool CMainDlg::MessagesHaveText() { return Messages->HasText(); }

void CMainDlg::CloseMessages() { Messages->Close(); }

void CMainDlg::RaiseMessages() {
    // Directly behind the main window: above every other window, below this one.
    Messages->raise();
    raise();
}

// --- window events ---

bool CMainDlg::event(QEvent* event) {
    // The ZGLY file may have been made or removed elsewhere meanwhile.
    if (event->type() == QEvent::WindowActivate) UpdatePreviewButton();
    return CDlg::event(event);
}

void CMainDlg::closeEvent(QCloseEvent* event) {
    if (IsConverting) {
        // The run unwinds first; the window closes on the next request.
        CancelRequested = true;
        event->ignore();
        return;
    }
    Messages->Close();
    Preview->close();
    event->accept();
}

void CMainDlg::showEvent(QShowEvent* event) {
    // Sizes measured before the first show miss the style's final metrics.
    if (!event->spontaneous() && !Shown) {
        adjustSize();
        // The window starts in the middle of its screen, and wholly on it.
        if (QScreen* where = screen()) {
            const QRect area = where->availableGeometry();
            const QSize frame = frameGeometry().size();
            const QRect fitted = FitInside(area, QRect(CentredTopLeft(area, frame), frame));
            resize(fitted.size() - (frame - size()));
            move(fitted.topLeft());
        }
        // A warning of the start-up opened the message window before this
        // window had its place; it moves beside it now.
        if (Messages->IsShown()) Messages->Show(this);
    }
    Shown = true;
    CDlg::showEvent(event);
}

void CMainDlg::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && ConvertButton->isEnabled()) {
        ConvertButton->click();
        return;
    }
    CDlg::keyPressEvent(event);
}

CDlg* CMainDlg::DropTargetAt(const QPoint& pos) {
    if (InputBox->geometry().contains(pos)) return CurrentInput;
    if (OutputBox->geometry().contains(pos)) return CurrentOutput;
    return this;
}

void CMainDlg::dragEnterEvent(QDragEnterEvent* event) {
    DropTarget = nullptr;
    if (IsConverting || FirstDraggedFile(event->mimeData()).isEmpty() ||
        !(event->possibleActions() & Qt::CopyAction)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    DropTarget = DropTargetAt(event->position().toPoint());
    DropTarget->OnDragEnter(mapToGlobal(event->position().toPoint()));
}

void CMainDlg::dragMoveEvent(QDragMoveEvent* event) {
    if (!DropTarget) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    DropTarget->OnDragOver(mapToGlobal(event->position().toPoint()));
}

void CMainDlg::dragLeaveEvent(QDragLeaveEvent*) {
    if (DropTarget) DropTarget->OnDragLeave();
    DropTarget = nullptr;
}

void CMainDlg::dropEvent(QDropEvent* event) {
    QString file = FirstDraggedFile(event->mimeData());
    if (!DropTarget || file.isEmpty()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    DropTarget->OnDrop(file);
    DropTarget = nullptr;
}

void CMainDlg::OnDragEnter(const QPoint&) { FilterField->SetDropHighlight(true); }

void CMainDlg::OnDragLeave() { FilterField->SetDropHighlight(false); }

void CMainDlg::OnDrop(const QString& file) { FilterField->Drop(file); }
