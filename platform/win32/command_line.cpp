#include "platform/command_line.h"

#include <windows.h>
#include <shellapi.h>

#include <cstdlib>

#include "platform/win32/wide_text.h"

namespace {
UINT g_ConsoleCodePage = 0;
// The console keeps its code page after the program: the user's one comes back.
void RestoreConsoleCodePage() { ::SetConsoleOutputCP(g_ConsoleCodePage); }
}  // namespace

// The narrow argv holds the arguments in the system's code page, which
// cannot spell every name: they are read again from the wide command line.
std::vector<std::string> CommandLineArguments(int argc, char** argv) {
    g_ConsoleCodePage = ::GetConsoleOutputCP();
    if (g_ConsoleCodePage != 0 && g_ConsoleCodePage != CP_UTF8 && ::SetConsoleOutputCP(CP_UTF8))
        std::atexit(RestoreConsoleCodePage);
    int count = 0;
    wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (!wide) return {argv + 1, argv + argc};
    std::vector<std::string> args;
    for (int i = 1; i < count; ++i) args.push_back(Utf8FromWide(wide[i]));
    ::LocalFree(wide);
    return args;
}
