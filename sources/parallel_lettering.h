// Renders an installed font's characters on several threads, each with a
// letterer (and so a FreeType face) of its own, and hands the glyphs to the
// font in code order: the font is the same as one letterer's, code by code.
#pragma once

#include <functional>
#include <memory>

class CFontData;
class CFontFilter;
class CLetterer;

// The threads worth starting for a request (0: every core the machine
// reports) and the codes the filter lets through: one for every 256 codes
// at most; 1 means the calling thread alone.
int LetteringThreads(int requested, const CFontFilter& filter);

// Every code 0x0000 to 0xFFFE, on `threads` threads (from LetteringThreads): one progress step each, on the calling thread,
// where cancelling and any failure of a letterer surface in code order, as
// in a one-letterer loop. `first` serves the calling thread; makeLetterer
// builds (Setup and Prepare) one more for each further thread.
void LetterInParallel(int threads, CLetterer& first, const std::function<std::unique_ptr<CLetterer>()>& makeLetterer,
                      CFontData& font, const CFontFilter& filter);
