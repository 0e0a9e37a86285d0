// Ctrl-C, Ctrl-Break and the console's close button through the console's
// control handler; a child of `build` is asked to stop through an event its
// parent hands down (it has no console signal of its own to receive).
#include "platform/cancel_signals.h"

#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <string>

#include "platform/win32/child_cancel.h"

namespace {

std::atomic<CancelSignal> g_Received{CancelSignal::None};
std::atomic<CancelCatch> g_How{CancelCatch::Run};
bool g_Installed = false;

CancelSignal SignalOf(DWORD event) {
    switch (event) {
    case CTRL_C_EVENT:
    case CTRL_BREAK_EVENT: return CancelSignal::Interrupt;
    case CTRL_CLOSE_EVENT: return CancelSignal::HangUp;
    default: return CancelSignal::Terminate;
    }
}

BOOL WINAPI OnConsoleEvent(DWORD event) {
    const CancelSignal signal = SignalOf(event);
    CancelSignal none = CancelSignal::None;
    const bool first = g_Received.compare_exchange_strong(none, signal);
    // A second request ends the program at once, except in a build, which
    // counts every Ctrl-C itself.
    if (!first && g_How.load() != CancelCatch::Build) return FALSE;
    // The system ends the program as soon as this returns after a close,
    // log-off or shutdown: wait here while the run stops and cleans up.
    if (signal != CancelSignal::Interrupt) ::Sleep(10000);
    return TRUE;
}

DWORD WINAPI WatchParentCancel(void* event) {
    if (::WaitForSingleObject(static_cast<HANDLE>(event), INFINITE) == WAIT_OBJECT_0) {
        CancelSignal none = CancelSignal::None;
        g_Received.compare_exchange_strong(none, CancelSignal::Interrupt);
    }
    return 0;
}

void WatchParentOnce() {
    static bool watching = false;
    if (watching) return;
    watching = true;
    const char* value = std::getenv(ChildCancelVariable);
    if (!value || !*value) return;
    HANDLE event = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(std::strtoll(value, nullptr, 10)));
    if (HANDLE thread = ::CreateThread(nullptr, 0, WatchParentCancel, event, 0, nullptr)) ::CloseHandle(thread);
}

}  // namespace

void CatchCancelSignals(CancelCatch how) {
    g_Received = CancelSignal::None;
    g_How = how;
    if (!g_Installed) ::SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
    g_Installed = true;
    WatchParentOnce();
}

void ReleaseCancelSignals() {
    if (g_Installed) ::SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
    g_Installed = false;
}

CancelSignal ReceivedCancelSignal() { return g_Received.load(); }

// Windows has no signals to end by: the cancelled status, as after Ctrl-C.
void EndLikeTheSignal(CancelSignal signal) {
    if (signal == CancelSignal::None) return;
    std::exit(130);
}

// Windows sends no signal for a closed pipe: the write itself fails.
void IgnoreBrokenPipes() {}
