// The command line's contract: every command and option, parsed into one
// plain struct. Parsing knows nothing of fonts; the factories build the
// readers and writers from the struct.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/font_io.h"

enum class CliCommand { Convert, Info, Preview, ListOrders, ListFonts, Help, Version };
enum class InputKind { None, Zgly, Bmp, Font, Lc };
enum class OutputKind { None, Zgly, Bmp };

// One font source of a convert run; each --from-... starts one.
struct CliSource {
    InputKind Input = InputKind::None;
    std::string InputPath;         // --from-zgly, --from-bmp, --from-lc
    std::string FromOrder;         // --from-order
    int BmpBpp = 1;                // --colors 2|4|8|16
    std::string FontFace;          // --from-font
    std::string FontStyle;         // --style
    std::vector<std::pair<std::string, double>> Axes;  // --axis TAG=VALUE, in the order given
    bool LuminanceCoverage = false;  // --coverage luminance
    int FontSize = 0;              // negative: character height (--size); positive: cell height
    int FontSizeGiven = 0;         // the number as typed after --size or --cell-height
    int FontBpp = 1;               // --levels 2|4|8|16
    int WidthType = 1;             // glyph, keep-space, margin, fixed
    int FixedWidth = 16;
    bool SoftAA = true;
    std::string LcHalfPath;        // --lc-half
    bool LcMainFixed = true;
    bool LcHalfFixed = true;
    bool LcVertical = false;
    int Threads = 0;               // the run's --threads, for a font
};

// Code points FIRST..LAST of a --range, both included.
struct CliCodeRange {
    uint32_t First = 0;
    uint32_t Last = 0;
};

struct CliOptions {
    CliCommand Command = CliCommand::Help;

    // convert: the sources in the order given; the first one that has a
    // character supplies it.
    std::vector<CliSource> Sources;

    // convert: output
    OutputKind Output = OutputKind::None;
    std::string OutputPath;
    int Encoding = 1;              // UTF-16
    bool AltCharGiven = false;
    std::string AltCharText;
    int LineHeight = NotGiven;
    int DefaultLeft = NotGiven;
    int DefaultWidth = NotGiven;
    int DefaultRight = NotGiven;
    int Rotation = 0;              // 0..3 for 0, 90, 180, 270 degrees
    std::string ToOrder;
    bool DrawGrid = true;
    // Margin mode with zero margins unless --cell or --margins says otherwise.
    int CellWidth = -1, CellHeight = -1, OffsetLeft = 0, OffsetTop = 0, MarginRight = 0, MarginBottom = 0;

    std::string FilterPath;
    bool FilterGiven = false;      // --filter, even with an empty path
    std::vector<std::string> Chars;       // --chars, each as typed
    std::vector<std::string> CharsFiles;  // --chars-file
    std::vector<CliCodeRange> Ranges;     // --range
    int CharsEncoding = -1;               // --chars-encoding: how text files without a BOM are read
    bool Quiet = false;
    int Threads = 0;               // --threads; 0: every core

    // Any of --filter, --chars, --chars-file, --range.
    bool SelectsChars() const { return FilterGiven || !Chars.empty() || !CharsFiles.empty() || !Ranges.empty(); }

    // info, list-orders, list-fonts; preview reads InfoPath too
    std::string InfoPath;
    bool Json = false;
    bool InfoChars = false;        // info --chars: the characters, not the blocks

    // preview
    std::string PreviewText;       // --text, with backslash-n turned into a line feed
    bool Sheet = false;            // --sheet instead of --text
    std::string PngPath;           // --out
    int Zoom = 2;
    bool Guides = false;
    uint32_t Ink = 0x000000;
    uint32_t Paper = 0xFFFFFF;
};

// A command line that breaks the contract; the text says what is wrong.
class CUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// args excludes the program name. Throws CUsageError, and CGeneralException
// for a settings file convert cannot read.
CliOptions ParseCommandLine(const std::vector<std::string>& args);

// The full --help text.
const char* HelpText();
