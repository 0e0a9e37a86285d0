// The requests to stop from outside: Ctrl-C, being told to end (SIGTERM) and
// a closed terminal (SIGHUP). One flag records the first one received; runs
// poll it, and the program ends at last "like the signal", so that whoever
// started it sees why it ended.
#pragma once

enum class CancelSignal { None, Interrupt, Terminate, HangUp };

enum class CancelCatch {
    // All three; a second one ends the program at once.
    Run,
    // As Run, and interrupted system calls resume (for an event loop).
    Window,
    // Ctrl-C only, every one counted; it wakes a wait for child processes.
    Build,
};

// Installs the handlers and clears the flag.
void CatchCancelSignals(CancelCatch how);
// Puts back the handlers CatchCancelSignals replaced.
void ReleaseCancelSignals();
CancelSignal ReceivedCancelSignal();
// Ends the program by the signal, default action restored; nothing for None.
void EndLikeTheSignal(CancelSignal signal);

// A reader that went away (a closed pipe) makes writes fail instead of
// ending the program, so that a run still writes its output file.
void IgnoreBrokenPipes();
