// Progress, status, warnings and cancellation on a terminal: a one-line bar
// on stderr when it is a terminal, warnings as "Warning: " lines, Ctrl-C as
// the Cancel button.
#pragma once

#include <cstdio>
#include <string>

#include "core/pg_ctrl.h"

// The message window's limit: later warnings are only counted.
inline constexpr int MaxListedWarnings = 100;

class CCliPgCtrl : public CSteppedPgCtrl {
public:
    // quiet: no bar and no warnings. showBar: stderr is a terminal.
    CCliPgCtrl(std::FILE* out, bool quiet, bool showBar);
    ~CCliPgCtrl() override;

    bool IsCanceled() override;
    void SetStatus(const std::string& text) override;
    void AddWarning(const std::string& text) override;

    int WarningCount() const { return Warnings; }
    // Removes the bar's line so that other text starts on a clean line.
    void ClearBar();

    // Installs the Ctrl-C (and SIGTERM, SIGHUP) handler that sets the cancel
    // request; a second one ends the program at once.
    static void InstallInterruptHandler();
    // After a run cancelled by SIGTERM or SIGHUP, ends the program by that
    // signal; returns after Ctrl-C or without a signal.
    static void EndLikeTheInterruptingSignal();
    static bool Interrupted();

protected:
    void ShowProgress(int pos, int range) override;
    void PumpEvents() override {}

private:
    void DrawBar();

    std::FILE* Out;
    bool Quiet;
    bool ShowBar;
    bool BarDrawn = false;
    std::string Status;
    int Pos = 0;
    int Range = 0;
    int Warnings = 0;
};
