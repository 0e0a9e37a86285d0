#include "ui/warning_wnd.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

#include "settings/settings_store.h"

namespace {
const char* Section = "WarningWindow";
}

CWarningWnd::CWarningWnd(const CSettingsStore& settings, QWidget* owner)
    // A tool window of its owner: the window manager keeps it directly above
    // the main window.
    : CDlg(owner, Qt::Tool),
      Settings(settings),
      Placement(*this, settings, Section, QSize(400, 200)),
      View(MakeChild<QPlainTextEdit>(this)) {
    setWindowTitle("glyphwright message");
    setAttribute(Qt::WA_ShowWithoutActivating);
    View->setReadOnly(true);
    // Long lines wrap at the window's width; only the vertical bar scrolls.
    View->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    View->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    View->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
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
    QPoint beside = mainWindow ? QPoint(mainWindow->frameGeometry().right() + 1, mainWindow->frameGeometry().top())
                               : QPoint(0, 0);
    Placement.Apply(*this, beside);
    show();
    Placement.KeepOnScreen(*this);
    raise();
    View->verticalScrollBar()->setValue(View->verticalScrollBar()->maximum());
}

void CWarningWnd::Close() {
    Shown = false;
    hide();
}


// Esc closes this window, as it closes a dialog, and never the main window.
void CWarningWnd::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) close();
    else CDlg::keyPressEvent(event);
}

void CWarningWnd::closeEvent(QCloseEvent* event) {
    Shown = false;
    CDlg::closeEvent(event);
}
