#include "cli/options.h"

#include <cerrno>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>

namespace {

// Options that take a value, and the flags that take none.
const std::set<std::string> ValueOptions = {
    "--from-zgly", "--from-bmp",     "--from-order",    "--colors",       "--from-font", "--size",
    "--cell-height", "--levels",     "--width",         "--fixed-width",  "--from-lc",   "--lc-half",
    "--to-zgly",    "--encoding",    "--alt-char",      "--line-height",  "--default-left", "--default-width",
    "--default-right", "--rotation", "--to-bmp",        "--to-order",     "--cell",      "--offset",
    "--margins",    "--filter"};
const std::set<std::string> FlagOptions = {"--no-soft-aa", "--lc-proportional", "--lc-half-proportional",
                                           "--vertical",   "--no-grid",         "--quiet"};

// Which input or output an option belongs to.
const std::map<std::string, InputKind> InputOwner = {
    {"--from-order", InputKind::Bmp},   {"--colors", InputKind::Bmp},        {"--size", InputKind::Font},
    {"--cell-height", InputKind::Font}, {"--levels", InputKind::Font},       {"--width", InputKind::Font},
    {"--fixed-width", InputKind::Font}, {"--no-soft-aa", InputKind::Font},   {"--lc-proportional", InputKind::Lc},
    {"--lc-half-proportional", InputKind::Lc}, {"--vertical", InputKind::Lc}};
const std::map<std::string, OutputKind> OutputOwner = {
    {"--encoding", OutputKind::Zgly},     {"--alt-char", OutputKind::Zgly},     {"--line-height", OutputKind::Zgly},
    {"--default-left", OutputKind::Zgly}, {"--default-width", OutputKind::Zgly}, {"--default-right", OutputKind::Zgly},
    {"--rotation", OutputKind::Zgly},     {"--to-order", OutputKind::Bmp},      {"--no-grid", OutputKind::Bmp},
    {"--cell", OutputKind::Bmp},          {"--offset", OutputKind::Bmp},        {"--margins", OutputKind::Bmp}};

[[noreturn]] void Fail(const std::string& text) { throw CUsageError(text); }

int ParseInt(const std::string& option, const std::string& text) {
    errno = 0;
    char* end = nullptr;
    long v = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || errno == ERANGE || v < -2147483647L || v > 2147483647L)
        Fail(option + " needs a whole number, not '" + text + "'");
    return static_cast<int>(v);
}

int ParseChoice(const std::string& option, const std::string& text, const std::vector<std::string>& choices) {
    for (std::size_t i = 0; i < choices.size(); ++i)
        if (text == choices[i]) return static_cast<int>(i);
    std::string list;
    for (const auto& c : choices) list += (list.empty() ? "" : "|") + c;
    Fail(option + " takes " + list + ", not '" + text + "'");
}

// "a,b" or "a,b,c,d" (count 2 or 4; with allowShort also 2 of 4), or "WxH".
std::vector<int> ParseList(const std::string& option, const std::string& text, char sep) {
    std::vector<int> values;
    std::size_t start = 0;
    for (;;) {
        std::size_t at = text.find(sep, start);
        values.push_back(ParseInt(option, text.substr(start, at - start)));
        if (at == std::string::npos) break;
        start = at + 1;
    }
    return values;
}

void SetInput(CliOptions& o, InputKind kind, const std::string& option) {
    if (o.Input != InputKind::None && !(o.Input == kind && kind == InputKind::Lc))
        Fail("give exactly one input (" + option + " is a second one)");
    o.Input = kind;
}

void SetOutput(CliOptions& o, OutputKind kind, const std::string& option, const std::string& path) {
    if (o.Output != OutputKind::None) Fail("give exactly one output (" + option + " is a second one)");
    o.Output = kind;
    o.OutputPath = path;
}

const std::vector<std::string> Levels = {"2", "4", "8", "16"};

CliOptions ParseConvert(const std::vector<std::string>& args) {
    CliOptions o;
    o.Command = CliCommand::Convert;
    std::set<std::string> seen;
    std::optional<int> size, cellHeight;
    std::string lcMain;
    bool haveCell = false, haveOffset = false, haveMargins = false;

    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string name = args[i], value;
        if (auto eq = name.find('='); name.rfind("--", 0) == 0 && eq != std::string::npos) {
            value = name.substr(eq + 1);
            name = name.substr(0, eq);
            if (!ValueOptions.count(name)) Fail(name + " takes no value");
        } else if (ValueOptions.count(name)) {
            if (i + 1 >= args.size()) Fail(name + " needs a value");
            value = args[++i];
        } else if (!FlagOptions.count(name)) {
            Fail("unknown option '" + name + "'");
        }
        if (!seen.insert(name).second) Fail(name + " is given twice");

        if (name == "--from-zgly") { SetInput(o, InputKind::Zgly, name); o.InputPath = value; }
        else if (name == "--from-bmp") { SetInput(o, InputKind::Bmp, name); o.InputPath = value; }
        else if (name == "--from-font") { SetInput(o, InputKind::Font, name); o.FontFace = value; }
        else if (name == "--from-lc") { SetInput(o, InputKind::Lc, name); lcMain = value; }
        else if (name == "--lc-half") { SetInput(o, InputKind::Lc, name); o.LcHalfPath = value; }
        else if (name == "--from-order") o.FromOrder = value;
        else if (name == "--colors") o.BmpBpp = 1 + ParseChoice(name, value, Levels);
        else if (name == "--size") size = ParseInt(name, value);
        else if (name == "--cell-height") cellHeight = ParseInt(name, value);
        else if (name == "--levels") o.FontBpp = 1 + ParseChoice(name, value, Levels);
        else if (name == "--width") o.WidthType = ParseChoice(name, value, {"glyph", "keep-space", "margin", "fixed"});
        else if (name == "--fixed-width") o.FixedWidth = ParseInt(name, value);
        else if (name == "--no-soft-aa") o.SoftAA = false;
        else if (name == "--lc-proportional") o.LcMainFixed = false;
        else if (name == "--lc-half-proportional") o.LcHalfFixed = false;
        else if (name == "--vertical") o.LcVertical = true;
        else if (name == "--to-zgly") SetOutput(o, OutputKind::Zgly, name, value);
        else if (name == "--to-bmp") SetOutput(o, OutputKind::Bmp, name, value);
        else if (name == "--encoding") o.Encoding = ParseChoice(name, value, {"utf-8", "utf-16", "shift_jis", "cp1252"});
        else if (name == "--alt-char") { o.AltCharGiven = true; o.AltCharText = value; }
        else if (name == "--line-height") o.LineHeight = ParseInt(name, value);
        else if (name == "--default-left") o.DefaultLeft = ParseInt(name, value);
        else if (name == "--default-width") o.DefaultWidth = ParseInt(name, value);
        else if (name == "--default-right") o.DefaultRight = ParseInt(name, value);
        else if (name == "--rotation") o.Rotation = ParseChoice(name, value, {"0", "90", "180", "270"});
        else if (name == "--to-order") o.ToOrder = value;
        else if (name == "--no-grid") o.DrawGrid = false;
        else if (name == "--cell") {
            auto v = ParseList(name, value, 'x');
            if (v.size() != 2) Fail("--cell takes WxH, not '" + value + "'");
            o.CellWidth = v[0];
            o.CellHeight = v[1];
            haveCell = true;
        } else if (name == "--offset") {
            auto v = ParseList(name, value, ',');
            if (v.size() != 2) Fail("--offset takes X,Y, not '" + value + "'");
            o.OffsetLeft = v[0];
            o.OffsetTop = v[1];
            haveOffset = true;
        } else if (name == "--margins") {
            auto v = ParseList(name, value, ',');
            if (v.size() != 2 && v.size() != 4) Fail("--margins takes L,T or L,T,R,B, not '" + value + "'");
            o.OffsetLeft = v[0];
            o.OffsetTop = v[1];
            o.MarginRight = v.size() == 4 ? v[2] : v[0];
            o.MarginBottom = v.size() == 4 ? v[3] : v[1];
            haveMargins = true;
        } else if (name == "--filter") o.FilterPath = value;
        else if (name == "--quiet") o.Quiet = true;
    }

    if (o.Input == InputKind::None) Fail("convert needs an input (--from-zgly, --from-bmp, --from-font or --from-lc)");
    if (o.Output == OutputKind::None) Fail("convert needs an output (--to-zgly or --to-bmp)");
    for (const auto& name : seen) {
        if (auto in = InputOwner.find(name); in != InputOwner.end() && in->second != o.Input)
            Fail(name + " does not apply to this input");
        if (auto out = OutputOwner.find(name); out != OutputOwner.end() && out->second != o.Output)
            Fail(name + " does not apply to this output");
    }
    if (o.Input == InputKind::Lc) o.InputPath = lcMain;
    if (o.Input == InputKind::Bmp && o.FromOrder.empty()) Fail("--from-bmp needs --from-order");
    if (o.Output == OutputKind::Bmp && o.ToOrder.empty()) Fail("--to-bmp needs --to-order");
    if (o.Input == InputKind::Font) {
        if (size.has_value() == cellHeight.has_value()) Fail("--from-font needs exactly one of --size and --cell-height");
        // "Use Windows Size" passes the character height as a negative size.
        o.FontSizeGiven = size ? *size : *cellHeight;
        o.FontSize = size ? -*size : *cellHeight;
    }
    if (haveCell && haveMargins) Fail("--cell and --margins exclude each other");
    if (haveOffset && !haveCell) Fail("--offset needs --cell");
    if (haveCell) {
        o.MarginRight = o.MarginBottom = 0;
        // Without an offset the glyphs are centred in their cells.
        if (!haveOffset) o.OffsetLeft = o.OffsetTop = -1;
    }
    return o;
}

}  // namespace

CliOptions ParseCommandLine(const std::vector<std::string>& args) {
    if (args.empty()) Fail("no command given");
    const std::string& command = args[0];
    std::vector<std::string> rest(args.begin() + 1, args.end());
    if (command == "--help" || command == "-h" || command == "help") {
        if (!rest.empty()) Fail(command + " takes nothing more");
        return CliOptions{};
    }
    if (command == "--version") {
        if (!rest.empty()) Fail(command + " takes nothing more");
        CliOptions o;
        o.Command = CliCommand::Version;
        return o;
    }
    if (command == "convert") return ParseConvert(rest);
    if (command == "info") {
        CliOptions o;
        o.Command = CliCommand::Info;
        for (const auto& a : rest) {
            if (a == "--json") {
                if (o.Json) Fail("--json is given twice");
                o.Json = true;
            } else if (a.rfind("--", 0) == 0) {
                Fail("unknown option '" + a + "'");
            } else {
                if (!o.InfoPath.empty()) Fail("info takes one file");
                o.InfoPath = a;
            }
        }
        if (o.InfoPath.empty()) Fail("info needs a ZGLY file");
        return o;
    }
    if (command == "list-orders" || command == "list-fonts") {
        CliOptions o;
        o.Command = command == "list-orders" ? CliCommand::ListOrders : CliCommand::ListFonts;
        for (const auto& a : rest) {
            if (a != "--json") Fail("unknown option '" + a + "'");
            if (o.Json) Fail("--json is given twice");
            o.Json = true;
        }
        return o;
    }
    Fail("unknown command '" + command + "'");
}

const char* UsageHint() {
    return "usage: glyphwright-cli convert INPUT OUTPUT [--filter FILE.xllt] [--quiet]\n"
           "       glyphwright-cli info FILE.zgly [--json]\n"
           "       glyphwright-cli list-orders [--json] | list-fonts [--json]\n"
           "       glyphwright-cli --help | --version\n"
           "Try 'glyphwright-cli --help' for the inputs and outputs.\n";
}

const char* HelpText() {
    return "glyphwright-cli: converts fonts into ZGLY bitmap fonts or glyph-grid BMP pictures.\n"
           "\n"
           "glyphwright-cli convert INPUT OUTPUT [--filter FILE.xllt] [--quiet]\n"
           "  INPUT, exactly one of:\n"
           "    --from-zgly FILE\n"
           "    --from-bmp FILE --from-order ORDER [--colors 2|4|8|16]\n"
           "    --from-font FACE|FILE (--size PX | --cell-height PX) [--levels 2|4|8|16]\n"
           "                [--width glyph|keep-space|margin|fixed] [--fixed-width PX] [--no-soft-aa]\n"
           "    --from-lc FILE and/or --lc-half FILE [--lc-proportional] [--lc-half-proportional] [--vertical]\n"
           "  OUTPUT, exactly one of:\n"
           "    --to-zgly FILE [--encoding utf-8|utf-16|shift_jis|cp1252] [--alt-char TEXT]\n"
           "                   [--line-height N] [--default-left N] [--default-width N] [--default-right N]\n"
           "                   [--rotation 0|90|180|270]\n"
           "    --to-bmp FILE --to-order ORDER [--no-grid] [--cell WxH [--offset X,Y]] [--margins L,T[,R,B]]\n"
           "  ORDER is a path to an .xlor file or the name of a shipped one (see list-orders).\n"
           "glyphwright-cli info FILE.zgly [--json]\n"
           "glyphwright-cli list-orders [--json]    the shipped glyph order files\n"
           "glyphwright-cli list-fonts [--json]     the installed font families\n"
           "glyphwright-cli --help | --version\n"
           "\n"
           "Exit status: 0 done, 1 conversion error (message on stderr), 2 usage error, 130 cancelled (Ctrl-C).\n";
}
