#include "ui/termination_watch.h"

#include <QWidget>

#include "platform/cancel_signals.h"

namespace {

// How often the flag is looked at; a run pumps the event loop, so this
// also reaches a conversion in progress.
constexpr int WatchInterval = 100;

}  // namespace

CTerminationWatch::CTerminationWatch(QWidget& window) : Window(window) {
    // A second signal while the first is handled ends the program at once.
    CatchCancelSignals(CancelCatch::Window);
    Watch.setInterval(WatchInterval);
    // Closing is asked again on every tick.
    connect(&Watch, &QTimer::timeout, this, &CTerminationWatch::Check);
    Watch.start();
}

void CTerminationWatch::Check() {
    if (Received() != CancelSignal::None && Window.isVisible()) Window.close();
}

CTerminationWatch::~CTerminationWatch() { ReleaseCancelSignals(); }

CancelSignal CTerminationWatch::Received() { return ReceivedCancelSignal(); }

void CTerminationWatch::EndLikeTheSignal() { ::EndLikeTheSignal(ReceivedCancelSignal()); }
