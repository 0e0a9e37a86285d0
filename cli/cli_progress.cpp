#include "cli/cli_progress.h"

#include <csignal>

namespace {

// The signal that asked to stop, 0 while none did.
volatile std::sig_atomic_t g_Interrupted = 0;

void OnInterrupt(int signal) { g_Interrupted = signal; }

constexpr int BarWidth = 30;

}  // namespace

CCliPgCtrl::CCliPgCtrl(std::FILE* out, bool quiet, bool showBar) : Out(out), Quiet(quiet), ShowBar(showBar && !quiet) {}

CCliPgCtrl::~CCliPgCtrl() { ClearBar(); }

void CCliPgCtrl::InstallInterruptHandler() {
    struct sigaction sa {};
    sa.sa_handler = OnInterrupt;
    sigemptyset(&sa.sa_mask);
    sa.sa_flags = SA_RESETHAND;
    // Being told to end (kill, a closed terminal) stops the run as Ctrl-C
    // does, so that its temporary file is removed on the way out.
    for (int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &sa, nullptr);
}

void CCliPgCtrl::EndLikeTheInterruptingSignal() {
    const int signal = g_Interrupted;
    if (signal != SIGTERM && signal != SIGHUP) return;
    // The parent sees the program ended by the signal it sent.
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

bool CCliPgCtrl::Interrupted() { return g_Interrupted != 0; }

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
