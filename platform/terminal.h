// What the program knows about the terminal it writes to.
#pragma once

// Standard error is a terminal (so a progress bar may be drawn on it).
bool StandardErrorIsTerminal();
// The width of standard error's terminal in columns; 0 when it is none.
int TerminalColumns();
