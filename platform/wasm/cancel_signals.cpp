#include "platform/cancel_signals.h"

// No signals reach a WebAssembly program: under Node a Ctrl-C ends the whole
// process, and in a browser the page stops the worker. Nothing is ever received.

void CatchCancelSignals(CancelCatch) {}

void ReleaseCancelSignals() {}

CancelSignal ReceivedCancelSignal() { return CancelSignal::None; }

void EndLikeTheSignal(CancelSignal) {}

// Node writes to a closed pipe without a signal; nothing to ignore.
void IgnoreBrokenPipes() {}
