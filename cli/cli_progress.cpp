#include "cli/cli_progress.h"

#include "platform/cancel_signals.h"

namespace {

constexpr int BarWidth = 30;

}  // namespace

CCliPgCtrl::CCliPgCtrl(std::FILE* out, bool quiet, bool showBar) : Out(out), Quiet(quiet), ShowBar(showBar && !quiet) {}

CCliPgCtrl::~CCliPgCtrl() { ClearBar(); }

// Being told to end (kill, a closed terminal) stops the run as Ctrl-C does,
// so that its temporary file is removed on the way out.
void CCliPgCtrl::InstallInterruptHandler() { CatchCancelSignals(CancelCatch::Run); }

void CCliPgCtrl::EndLikeTheInterruptingSignal() {
    // The parent sees the program ended by the signal it sent; Ctrl-C ends
    // with the cancelled exit status instead.
    const CancelSignal signal = ReceivedCancelSignal();
    if (signal == CancelSignal::Terminate || signal == CancelSignal::HangUp) EndLikeTheSignal(signal);
}

bool CCliPgCtrl::Interrupted() { return ReceivedCancelSignal() != CancelSignal::None; }

bool CCliPgCtrl::IsCanceled() { return Interrupted(); }

void CCliPgCtrl::SetStatus(const std::string& text) {
    Status = text;
    DrawBar();
}

void CCliPgCtrl::AddWarning(const std::string& text) {
    if (!Quiet && Warnings <= MaxListedWarnings) {
        ClearBar();
        if (Warnings < MaxListedWarnings)
            std::fprintf(Out, "Warning: %s\n", text.c_str());
        else
            std::fprintf(Out, "Warning: Number of warnings over max limit.\n");
        std::fflush(Out);
        DrawBar();
    }
    ++Warnings;
}

void CCliPgCtrl::ShowProgress(int pos, int range) {
    Pos = pos;
    Range = range;
    DrawBar();
}

void CCliPgCtrl::DrawBar() {
    if (!ShowBar) return;
    int filled = Range > 0 ? static_cast<int>(static_cast<long long>(Pos) * BarWidth / Range) : 0;
    filled = filled < 0 ? 0 : (filled > BarWidth ? BarWidth : filled);
    int percent = Range > 0 ? static_cast<int>(static_cast<long long>(Pos) * 100 / Range) : 0;
    percent = percent < 0 ? 0 : (percent > 100 ? 100 : percent);
    std::string bar(static_cast<std::size_t>(filled), '#');
    bar.append(static_cast<std::size_t>(BarWidth - filled), '.');
    std::fprintf(Out, "\r\033[K[%s] %3d%%%s", bar.c_str(), percent, Status.c_str());
    std::fflush(Out);
    BarDrawn = true;
}

void CCliPgCtrl::ClearBar() {
    if (!BarDrawn) return;
    std::fprintf(Out, "\r\033[K");
    std::fflush(Out);
    BarDrawn = false;
}
