#include "ui/warning_wnd.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

#include "ui/settings_store.h"

namespace {
const char* Section = "WarningWindow";
}

CWarningWnd::CWarningWnd(const CSettingsStore& settings, QWidget* owner)
    : CDlg(owner, Qt::Window), Settings(settings), View(MakeChild<QPlainTextEdit>(this)) {
    setWindowTitle("glyphwright message");
    setAttribute(Qt::WA_ShowWithoutActivating);
    View->setReadOnly(true);
    View->setLineWrapMode(QPlainTextEdit::NoWrap);
    View->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    View->setFont(QFont("DejaVu Sans Mono"));
    auto* layout = MakeChild<QVBoxLayout>(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(View);
}

void CWarningWnd::Clear() {
    Text.clear();
    WarningCount = 0;
    if (Shown) View->clear();
}

// Bare line feeds become CR LF; CR LF pairs stay as they are.
void CWarningWnd::AddText(const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) Text += '\r';
        Text += text[i];
    }
}

void CWarningWnd::Refresh() {
    if (!Shown) return;
    QString shown = QString::fromStdString(Text);
    shown.replace("\r\n", "\n");
    if (shown.endsWith('\n')) shown.chop(1);
    View->setPlainText(shown);
}

void CWarningWnd::AppendWarning(const std::string& text) {
    if (WarningCount < MaxWarnings) {
        Text += "Warning: ";
        AddText(text);
        Text += "\r\n";
        Refresh();
    } else if (WarningCount == MaxWarnings) {
        Text += "Warning: Number of warnings over max limit.\r\n";
        Refresh();
    }
    ++WarningCount;
}

void CWarningWnd::AppendError(const std::string& text) {
    Text += "---------------------- Error -------------------------------- \r\n";
    AddText(text);
    Text += "\r\n";
    Refresh();
    View->verticalScrollBar()->setValue(View->verticalScrollBar()->maximum());
}

void CWarningWnd::Show(QWidget* mainWindow) {
    Shown = true;
    Refresh();
    int x = Settings.GetInt(Section, "x", -1);
    int y = Settings.GetInt(Section, "y", -1);
    int w = Settings.GetInt(Section, "w", 400);
    int h = Settings.GetInt(Section, "h", 200);
    QRect screen = QGuiApplication::primaryScreen()->virtualGeometry();
    bool stored = !(x < 0 && y < 0) && x < screen.width() && y < screen.height();
    if (!stored && mainWindow) {
        QRect frame = mainWindow->frameGeometry();
        x = frame.right() + 1;
        y = frame.top();
    }
    Placing = true;
    move(x, y);
    resize(w, h);
    Placing = false;
    show();
    View->verticalScrollBar()->setValue(View->verticalScrollBar()->maximum());
}

void CWarningWnd::Close() {
    Shown = false;
    hide();
}

void CWarningWnd::StorePlacement() {
    if (Placing || !isVisible()) return;
    Settings.SetInt(Section, "x", pos().x());
    Settings.SetInt(Section, "y", pos().y());
    Settings.SetInt(Section, "w", width());
    Settings.SetInt(Section, "h", height());
}

void CWarningWnd::moveEvent(QMoveEvent* event) {
    CDlg::moveEvent(event);
    StorePlacement();
}

void CWarningWnd::resizeEvent(QResizeEvent* event) {
    CDlg::resizeEvent(event);
    StorePlacement();
}

void CWarningWnd::closeEvent(QCloseEvent* event) {
    Shown = false;
    CDlg::closeEvent(event);
}
