#include "cli/convert_options.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <set>

#include "cli/option_words.h"
#include "cli/suggestions.h"

namespace {

using V = OptionValue;
using G = OptionGroup;
using I = InputKind;
using O = OutputKind;

const std::vector<ConvertOption> Table = {
    {"--from-font", V::Text, G::Input, I::Font, O::None, true},
    {"--from-bmp", V::Text, G::Input, I::Bmp, O::None, true},
    {"--from-zgly", V::Text, G::Input, I::Zgly, O::None, true},
    {"--from-lc", V::Text, G::Input, I::Lc, O::None, true},
    {"--lc-half", V::Text, G::LcHalf, I::Lc, O::None, true},
    {"--style", V::Text, G::Source, I::Font},
    {"--axis", V::Texts, G::Source, I::Font},
    {"--coverage", V::Text, G::Source, I::Font},
    {"--from-order", V::Text, G::Source, I::Bmp, O::None, true},
    {"--colors", V::Number, G::Source, I::Bmp},
    {"--size", V::Number, G::Source, I::Font},
    {"--cell-height", V::Number, G::Source, I::Font},
    {"--levels", V::Number, G::Source, I::Font},
    {"--width", V::Text, G::Source, I::Font},
    {"--fixed-width", V::Number, G::Source, I::Font},
    {"--no-soft-aa", V::Flag, G::Source, I::Font},
    {"--lc-proportional", V::Flag, G::Source, I::Lc},
    {"--lc-half-proportional", V::Flag, G::Source, I::Lc},
    {"--vertical", V::Flag, G::Source, I::Lc},
    {"--to-zgly", V::Text, G::Output, I::None, O::Zgly, true},
    {"--to-bmp", V::Text, G::Output, I::None, O::Bmp, true},
    {"--encoding", V::Text, G::Run, I::None, O::Zgly},
    {"--alt-char", V::Text, G::Run, I::None, O::Zgly},
    {"--line-height", V::Number, G::Run, I::None, O::Zgly},
    {"--default-left", V::Number, G::Run, I::None, O::Zgly},
    {"--default-width", V::Number, G::Run, I::None, O::Zgly},
    {"--default-right", V::Number, G::Run, I::None, O::Zgly},
    {"--rotation", V::Number, G::Run, I::None, O::Zgly},
    {"--to-order", V::Text, G::Run, I::None, O::Bmp, true},
    {"--no-grid", V::Flag, G::Run, I::None, O::Bmp},
    {"--cell", V::Pair, G::Run, I::None, O::Bmp, false, 'x'},
    {"--offset", V::Pair, G::Run, I::None, O::Bmp, false, ','},
    {"--margins", V::Pair, G::Run, I::None, O::Bmp, false, ','},
    {"--filter", V::Text, G::Run, I::None, O::None, true},
    {"--chars", V::Texts, G::Run},
    {"--chars-file", V::Texts, G::Run, I::None, O::None, true},
    {"--chars-encoding", V::Text, G::Run},
    {"--range", V::Codes, G::Run},
    {"--quiet", V::Flag, G::Run},
    {"--threads", V::Number, G::Run},
};

const ConvertOption& Find(const std::string& name) {
    for (const ConvertOption& o : Table)
        if (name == o.Name) return o;
    throw CUsageError("unknown option '" + name + "'");
}

std::set<std::string> Names(bool flags) {
    std::set<std::string> names;
    for (const ConvertOption& o : Table)
        if ((o.Value == V::Flag) == flags) names.insert(o.Name);
    return names;
}

const std::set<std::string> ValueOptions = Names(false);
const std::set<std::string> FlagOptions = Names(true);

const char* const NeedsInput = "convert needs an input (--from-zgly, --from-bmp, --from-font or --from-lc)";
const char* const NeedsOutput = "convert needs an output (--to-zgly or --to-bmp)";

[[noreturn]] void Fail(const std::string& text) { throw CUsageError(text); }

// Choice words are matched as people type them: "UTF-8" is "utf-8".
int ParseChoice(const std::string& option, const std::string& text, const std::vector<std::string>& choices) {
    for (std::size_t i = 0; i < choices.size(); ++i)
        if (SameIgnoringCase(text, choices[i])) return static_cast<int>(i);
    std::string list;
    for (const auto& c : choices) list += (list.empty() ? "" : "|") + c;
    Fail(option + " takes " + list + ", not '" + text + "'" + DidYouMean(text, choices));
}

// "a,b" or "a,b,c,d", or "WxH".
std::vector<int> ParseList(const std::string& option, const std::string& text, char sep) {
    std::vector<int> values;
    std::size_t start = 0;
    for (;;) {
        std::size_t at = text.find(sep, start);
        values.push_back(ParseIntOption(option, text.substr(start, at - start)));
        if (at == std::string::npos) break;
        start = at + 1;
    }
    return values;
}

// "wght=700": a variable font's axis tag (one to four letters) and a value.
std::pair<std::string, double> ParseAxis(const std::string& text) {
    const std::size_t eq = text.find('=');
    const std::string tag = text.substr(0, eq), number = eq == std::string::npos ? "" : text.substr(eq + 1);
    char* end = nullptr;
    const double value = std::strtod(number.c_str(), &end);
    if (tag.empty() || tag.size() > 4 || number.empty() || *end != '\0' || !std::isfinite(value))
        Fail("--axis takes TAG=VALUE (as wght=700), not '" + text + "'");
    return {tag, value};
}

// A source as it is being parsed: the options it has seen and the two size
// options, which only make sense together.
struct SourceDraft {
    CliSource Source;
    std::set<std::string> Seen;
    std::optional<int> Size, CellHeight;
    std::string LcMain;
};

// --from-lc and --lc-half make one LC source when the current one lacks the other file.
bool CompletesLcSource(const std::vector<SourceDraft>& drafts, const std::string& name) {
    if (drafts.empty() || drafts.back().Source.Input != InputKind::Lc) return false;
    return (name == "--from-lc" || name == "--lc-half") && !drafts.back().Seen.count(name);
}

void ApplySourceOption(SourceDraft& d, const std::string& name, const std::string& value) {
    CliSource& s = d.Source;
    if (name == "--from-zgly") { s.Input = InputKind::Zgly; s.InputPath = value; }
    else if (name == "--from-bmp") { s.Input = InputKind::Bmp; s.InputPath = value; }
    else if (name == "--from-font") { s.Input = InputKind::Font; s.FontFace = value; }
    else if (name == "--from-lc") { s.Input = InputKind::Lc; d.LcMain = value; }
    else if (name == "--lc-half") { s.Input = InputKind::Lc; s.LcHalfPath = value; }
    else if (name == "--from-order") s.FromOrder = value;
    else if (name == "--colors") s.BmpBpp = 1 + ParseChoice(name, value, LevelChoices);
    else if (name == "--size") d.Size = ParseIntOption(name, value);
    else if (name == "--cell-height") d.CellHeight = ParseIntOption(name, value);
    else if (name == "--levels") s.FontBpp = 1 + ParseChoice(name, value, LevelChoices);
    else if (name == "--width") s.WidthType = ParseChoice(name, value, WidthChoices);
    else if (name == "--fixed-width") s.FixedWidth = ParseIntOption(name, value);
    else if (name == "--no-soft-aa") s.SoftAA = false;
    else if (name == "--style") s.FontStyle = value;
    else if (name == "--axis") s.Axes.push_back(ParseAxis(value));
    else if (name == "--coverage") s.LuminanceCoverage = ParseChoice(name, value, {"alpha", "luminance"}) == 1;
    else if (name == "--lc-proportional") s.LcMainFixed = false;
    else if (name == "--lc-half-proportional") s.LcHalfFixed = false;
    else if (name == "--vertical") s.LcVertical = true;
}

// The two (or four) numbers of --cell, --offset or --margins.
std::vector<int> ParsePair(const std::string& name, const std::string& value, const char* form, std::size_t most = 2) {
    std::vector<int> v = ParseList(name, value, Find(name).Separator);
    if (v.size() != 2 && v.size() != most) Fail(name + " takes " + form + ", not '" + value + "'");
    return v;
}

void ApplyOutputOption(CliOptions& o, const std::string& name, const std::string& value) {
    auto setOutput = [&](OutputKind kind) {
        if (o.Output != OutputKind::None) Fail("give exactly one output (" + name + " is a second one)");
        o.Output = kind;
        o.OutputPath = value;
    };
    if (name == "--to-zgly") setOutput(OutputKind::Zgly);
    else if (name == "--to-bmp") setOutput(OutputKind::Bmp);
    else if (name == "--encoding") o.Encoding = ParseChoice(name, value, EncodingChoices);
    else if (name == "--alt-char") { o.AltCharGiven = true; o.AltCharText = value; }
    else if (name == "--line-height") o.LineHeight = ParseIntOption(name, value);
    else if (name == "--default-left") o.DefaultLeft = ParseIntOption(name, value);
    else if (name == "--default-width") o.DefaultWidth = ParseIntOption(name, value);
    else if (name == "--default-right") o.DefaultRight = ParseIntOption(name, value);
    else if (name == "--rotation") o.Rotation = ParseChoice(name, value, {"0", "90", "180", "270"});
    else if (name == "--to-order") o.ToOrder = value;
    else if (name == "--no-grid") o.DrawGrid = false;
    else if (name == "--cell") {
        const auto v = ParsePair(name, value, "WxH");
        o.CellWidth = v[0];
        o.CellHeight = v[1];
    } else if (name == "--offset") {
        const auto v = ParsePair(name, value, "X,Y");
        o.OffsetLeft = v[0];
        o.OffsetTop = v[1];
    } else if (name == "--margins") {
        const auto v = ParsePair(name, value, "L,T or L,T,R,B", 4);
        o.OffsetLeft = v[0];
        o.OffsetTop = v[1];
        o.MarginRight = v.size() == 4 ? v[2] : v[0];
        o.MarginBottom = v.size() == 4 ? v[3] : v[1];
    } else if (name == "--filter") { o.FilterPath = value; o.FilterGiven = true; }
    else if (name == "--chars") o.Chars.push_back(value);
    else if (name == "--chars-file") o.CharsFiles.push_back(value);
    else if (name == "--chars-encoding") o.CharsEncoding = ParseChoice(name, value, EncodingChoices);
    else if (name == "--range") o.Ranges.push_back(ParseCodeRange(value));
    else if (name == "--quiet") o.Quiet = true;
    else if (name == "--threads") {
        o.Threads = ParseIntOption(name, value);
        if (o.Threads < 1 || o.Threads > 256) Fail("--threads takes 1 to 256, not '" + value + "'");
    }
}

// Checks a parsed source and settles its size; later font sources without a
// size, levels, width type or fixed width of their own take the first font
// source's.
void FinishSource(SourceDraft& d, std::size_t number, std::size_t count, const CliSource* firstFont) {
    CliSource& s = d.Source;
    const std::string which = count > 1 ? " (source " + std::to_string(number) + ")" : "";
    for (const auto& name : d.Seen)
        if (const ConvertOption& in = Find(name); in.Group == G::Source && in.Input != s.Input)
            Fail(name + " does not apply to this input" + which);
    if (s.Input == InputKind::Lc) s.InputPath = d.LcMain;
    if (s.Input == InputKind::Bmp && s.FromOrder.empty()) Fail("--from-bmp needs --from-order" + which);
    if (s.Input != InputKind::Font) return;
    if (firstFont && !d.Size && !d.CellHeight) {
        s.FontSize = firstFont->FontSize;
        s.FontSizeGiven = firstFont->FontSizeGiven;
    } else {
        if (d.Size.has_value() == d.CellHeight.has_value())
            Fail("--from-font needs exactly one of --size and --cell-height" + which);
        // "Use Windows Size" passes the character height as a negative size.
        s.FontSizeGiven = d.Size ? *d.Size : *d.CellHeight;
        s.FontSize = d.Size ? -*d.Size : *d.CellHeight;
    }
    if (firstFont && !d.Seen.count("--levels")) s.FontBpp = firstFont->FontBpp;
    // Glyphs of one font should space alike: the width type comes along too.
    if (firstFont && !d.Seen.count("--width")) s.WidthType = firstFont->WidthType;
    if (firstFont && !d.Seen.count("--fixed-width")) s.FixedWidth = firstFont->FixedWidth;
}

uint32_t ParseCode(const std::string& text, const std::string& whole) {
    std::string digits = text;
    int base = 10;
    if (digits.rfind("U+", 0) == 0 || digits.rfind("u+", 0) == 0 || digits.rfind("0x", 0) == 0 ||
        digits.rfind("0X", 0) == 0) {
        digits = digits.substr(2);
        base = 16;
    }
    const char* allowed = base == 16 ? "0123456789abcdefABCDEF" : "0123456789";
    if (digits.empty() || digits.size() > 8 || digits.find_first_not_of(allowed) != std::string::npos)
        Fail("--range takes FIRST-LAST or CODE (as U+3041, 0x3041 or 12353), not '" + whole + "'");
    unsigned long v = std::strtoul(digits.c_str(), nullptr, base);
    if (v > 0x10FFFF) Fail("--range: '" + text + "' is beyond U+10FFFF");
    return static_cast<uint32_t>(v);
}

}  // namespace

const std::vector<std::string> LevelChoices = {"2", "4", "8", "16"};
const std::vector<std::string> WidthChoices = {"glyph", "keep-space", "margin", "fixed"};
const std::vector<std::string> EncodingChoices = {"utf-8", "utf-16", "shift_jis", "cp1252"};

const std::vector<ConvertOption>& ConvertOptionTable() { return Table; }

int ParseIntOption(const std::string& option, const std::string& text) {
    errno = 0;
    char* end = nullptr;
    long v = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || errno == ERANGE || v < -2147483647L || v > 2147483647L)
        Fail(option + " needs a whole number, not '" + text + "'");
    return static_cast<int>(v);
}

CliCodeRange ParseCodeRange(const std::string& text) {
    std::size_t dash = text.find('-');
    CliCodeRange r;
    r.First = ParseCode(text.substr(0, dash), text);
    r.Last = dash == std::string::npos ? r.First : ParseCode(text.substr(dash + 1), text);
    if (r.Last < r.First) Fail("--range '" + text + "' ends before it starts");
    return r;
}

CliOptions ParseConvertOptions(const std::vector<std::string>& args) {
    CliOptions o;
    for (const auto& a : args)
        if (a == "--help" || a == "-h") return o;  // the help, with convert's examples
    o.Command = CliCommand::Convert;
    std::set<std::string> seen;
    std::vector<SourceDraft> drafts;
    SourceDraft before;  // source options given before the first --from-...

    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i].empty() || args[i][0] != '-')
            Fail("'" + args[i] + "' is not an option. " + NeedsInput + " and an output (--to-zgly or --to-bmp), " +
                 "each followed by its file or face");
        const OptionWord word = ReadOptionWord(args, i, ValueOptions, FlagOptions);
        const std::string& name = word.Name;
        const std::string& value = word.Value;

        const OptionGroup group = Find(name).Group;
        if (group == G::Input || group == G::LcHalf) {
            // Source options given before the first source belong to it.
            if (!CompletesLcSource(drafts, name)) drafts.push_back(drafts.empty() ? std::move(before) : SourceDraft{});
        }
        if (group == G::Input || group == G::LcHalf || group == G::Source) {
            SourceDraft& d = drafts.empty() ? before : drafts.back();
            if (!d.Seen.insert(name).second && Find(name).Value != V::Texts) Fail(name + " is given twice");
            ApplySourceOption(d, name, value);
        } else {
            // The characters may be listed many times; the run takes them all.
            const bool repeatable = Find(name).Value == V::Texts || Find(name).Value == V::Codes;
            if (!repeatable && !seen.insert(name).second) Fail(name + " is given twice");
            ApplyOutputOption(o, name, value);
        }
    }

    if (drafts.empty()) Fail(NeedsInput);
    if (o.Output == OutputKind::None) Fail(NeedsOutput);
    const CliSource* firstFont = nullptr;
    for (std::size_t n = 0; n < drafts.size(); ++n) {
        FinishSource(drafts[n], n + 1, drafts.size(), firstFont);
        if (!firstFont && drafts[n].Source.Input == InputKind::Font) firstFont = &drafts[n].Source;
    }
    for (auto& d : drafts) o.Sources.push_back(std::move(d.Source));
    for (const auto& name : seen)
        if (const ConvertOption& out = Find(name); out.Group == G::Run && out.Output != O::None && out.Output != o.Output)
            Fail(name + " does not apply to this output");
    if (o.Output == OutputKind::Bmp && o.ToOrder.empty()) Fail("--to-bmp needs --to-order");
    const bool cell = seen.count("--cell") != 0;
    if (cell && seen.count("--margins")) Fail("--cell and --margins exclude each other");
    if (seen.count("--offset") && !cell) Fail("--offset needs --cell");
    if (cell) {
        o.MarginRight = o.MarginBottom = 0;
        // Without an offset the glyphs are centred in their cells.
        if (!seen.count("--offset")) o.OffsetLeft = o.OffsetTop = -1;
    }
    if (o.Output == OutputKind::Bmp) CheckOutputExtension("--to-bmp", o.OutputPath, {".bmp", ".png"});
    return o;
}
