// The message window: the warnings and the error of the last conversion as
// plain text, in a resizable window beside the main window whose placement
// is remembered.
#pragma once

#include <string>

#include "ui/dlg.h"
#include "ui/window_placement.h"

class QPlainTextEdit;
class CSettingsStore;

class CWarningWnd : public CDlg {
public:
    CWarningWnd(const CSettingsStore& settings, QWidget* owner);

    void Clear();
    void AppendWarning(const std::string& text);
    void AppendError(const std::string& text);
    // Shows the window at its remembered place, or beside `mainWindow`.
    void Show(QWidget* mainWindow);
    bool IsShown() const { return Shown; }
    bool HasText() const { return !Text.empty(); }
    void Close();

    // Every line since the last Clear, each ended by CR LF.
    const std::string& GetText() const { return Text; }
    int GetWarningCount() const { return WarningCount; }
    QPlainTextEdit* Edit() const { return View; }

    static constexpr int MaxWarnings = 100;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void AddText(const std::string& text);
    void Refresh();

    const CSettingsStore& Settings;
    std::string Text;
    bool Shown = false;
    CWindowPlacement Placement;
    int WarningCount = 0;
    QPlainTextEdit* View;
};
