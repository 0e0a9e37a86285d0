#include "platform/terminal.h"

#include <windows.h>

namespace {
HANDLE ErrorHandle() { return ::GetStdHandle(STD_ERROR_HANDLE); }
}  // namespace

// A console, not a file or pipe; the progress line needs the console to
// understand its cursor sequences, which it is asked to here.
bool StandardErrorIsTerminal() {
    DWORD mode = 0;
    if (!::GetConsoleMode(ErrorHandle(), &mode)) return false;
    ::SetConsoleMode(ErrorHandle(), mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    return true;
}

int TerminalColumns() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!::GetConsoleScreenBufferInfo(ErrorHandle(), &info)) return 0;
    return info.srWindow.Right - info.srWindow.Left + 1;
}
