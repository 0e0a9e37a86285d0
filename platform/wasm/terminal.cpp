#include "platform/terminal.h"

#include <emscripten.h>

// Emscripten's own terminal answers "yes" for every stream; Node knows the truth.
EM_JS(int, NodeStandardErrorColumns, (), {
    if (typeof process !== "object" || !process.stderr || !process.stderr.isTTY) return 0;
    return process.stderr.columns || 80;
});

bool StandardErrorIsTerminal() { return NodeStandardErrorColumns() > 0; }

int TerminalColumns() { return NodeStandardErrorColumns(); }
