#include "platform/terminal.h"

#include <emscripten.h>

// Emscripten's own terminal answers "yes" for every stream. Node knows the
// truth; in a browser the page's worker says whether it reads the progress
// line (it sets terminalColumns on the module).
EM_JS(int, StandardErrorColumns, (), {
    if (typeof process === "object" && process.stderr) return process.stderr.isTTY ? (process.stderr.columns || 80) : 0;
    return Module["terminalColumns"] || 0;
});

bool StandardErrorIsTerminal() { return StandardErrorColumns() > 0; }

int TerminalColumns() { return StandardErrorColumns(); }
