#include "ui/termination_watch.h"

#include <QWidget>
#include <csignal>

namespace {

constexpr int Signals[] = {SIGTERM, SIGHUP, SIGINT};
// How often the flag is looked at; a run pumps the event loop, so this
// also reaches a conversion in progress.
constexpr int WatchInterval = 100;

volatile std::sig_atomic_t g_Received = 0;

void OnSignal(int signal) { g_Received = signal; }

struct sigaction g_Previous[std::size(Signals)];

}  // namespace

CTerminationWatch::CTerminationWatch(QWidget& window) : Window(window) {
    g_Received = 0;
    struct sigaction sa {};
    sa.sa_handler = OnSignal;
    sigemptyset(&sa.sa_mask);
    // A second signal while the first is handled ends the program at once.
    sa.sa_flags = SA_RESETHAND | SA_RESTART;
    for (std::size_t i = 0; i < std::size(Signals); ++i) sigaction(Signals[i], &sa, &g_Previous[i]);
    Watch.setInterval(WatchInterval);
    // Closing is asked again on every tick.
    connect(&Watch, &QTimer::timeout, this, &CTerminationWatch::Check);
    Watch.start();
}

void CTerminationWatch::Check() {
    if (g_Received != 0 && Window.isVisible()) Window.close();
}

CTerminationWatch::~CTerminationWatch() {
    for (std::size_t i = 0; i < std::size(Signals); ++i) sigaction(Signals[i], &g_Previous[i], nullptr);
}

int CTerminationWatch::Received() { return g_Received; }

void CTerminationWatch::EndLikeTheSignal() {
    const int signal = g_Received;
    if (signal == 0) return;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}
