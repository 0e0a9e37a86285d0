#include "platform/cancel_signals.h"

#include <csignal>
#include <iterator>

namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP};

// The signal that asked to stop, 0 while none did.
volatile std::sig_atomic_t g_Received = 0;

void OnSignal(int signal) { g_Received = signal; }

struct sigaction g_Previous[std::size(Signals)];
bool g_Installed[std::size(Signals)] = {};

int SignalNumber(CancelSignal signal) {
    switch (signal) {
    case CancelSignal::Interrupt: return SIGINT;
    case CancelSignal::Terminate: return SIGTERM;
    case CancelSignal::HangUp: return SIGHUP;
    case CancelSignal::None: break;
    }
    return 0;
}

}  // namespace

void CatchCancelSignals(CancelCatch how) {
    g_Received = 0;
    struct sigaction sa {};
    sa.sa_handler = OnSignal;
    sigemptyset(&sa.sa_mask);
    // No SA_RESTART for a build: a Ctrl-C wakes the wait for the children at once.
    if (how != CancelCatch::Build) sa.sa_flags = SA_RESETHAND;
    if (how == CancelCatch::Window) sa.sa_flags |= SA_RESTART;
    for (std::size_t i = 0; i < std::size(Signals); ++i) {
        if (how == CancelCatch::Build && Signals[i] != SIGINT) continue;
        ::sigaction(Signals[i], &sa, g_Installed[i] ? nullptr : &g_Previous[i]);
        g_Installed[i] = true;
    }
}

void ReleaseCancelSignals() {
    for (std::size_t i = 0; i < std::size(Signals); ++i)
        if (g_Installed[i]) {
            ::sigaction(Signals[i], &g_Previous[i], nullptr);
            g_Installed[i] = false;
        }
}

CancelSignal ReceivedCancelSignal() {
    switch (g_Received) {
    case SIGINT: return CancelSignal::Interrupt;
    case SIGTERM: return CancelSignal::Terminate;
    case SIGHUP: return CancelSignal::HangUp;
    default: return CancelSignal::None;
    }
}

void IgnoreBrokenPipes() { std::signal(SIGPIPE, SIG_IGN); }

void EndLikeTheSignal(CancelSignal signal) {
    const int number = SignalNumber(signal);
    if (number == 0) return;
    std::signal(number, SIG_DFL);
    std::raise(number);
}
