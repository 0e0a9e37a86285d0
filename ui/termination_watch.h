// Being told to end (SIGTERM, SIGHUP, Ctrl-C in the starting terminal) closes
// the window the way its close button does: a running conversion is
// cancelled and unwinds first, so its temporary file is removed, and then
// the window closes. EndLikeTheSignal then ends the program by that signal.
#pragma once

#include <QObject>
#include <QTimer>

#include "platform/cancel_signals.h"

class QWidget;

class CTerminationWatch : public QObject {
public:
    explicit CTerminationWatch(QWidget& window);
    // Puts the signals' previous handling back.
    ~CTerminationWatch() override;
    CTerminationWatch(const CTerminationWatch&) = delete;
    CTerminationWatch& operator=(const CTerminationWatch&) = delete;

    // The signal received, None while none was.
    static CancelSignal Received();
    // After the window closed on a signal: ends the program by it.
    static void EndLikeTheSignal();
    // What every tick of the watch does: once a signal came, asks the visible
    // window to close (while a run unwinds, the window refuses and only cancels).
    void Check();

private:
    QWidget& Window;
    QTimer Watch;
};
