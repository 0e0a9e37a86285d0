#include "platform/command_line.h"

#include <windows.h>
#include <shellapi.h>

#include "platform/win32/wide_text.h"

// The narrow argv holds the arguments in the system's code page, which
// cannot spell every name: they are read again from the wide command line.
std::vector<std::string> CommandLineArguments(int argc, char** argv) {
    ::SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (!wide) return {argv + 1, argv + argc};
    std::vector<std::string> args;
    for (int i = 1; i < count; ++i) args.push_back(Utf8FromWide(wide[i]));
    ::LocalFree(wide);
    return args;
}
