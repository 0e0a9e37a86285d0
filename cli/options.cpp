#include "cli/options.h"

#include "cli/command_help.h"
#include "cli/convert_options.h"
#include "cli/option_words.h"
#include "cli/settings_replay.h"
#include "cli/suggestions.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>

namespace {

[[noreturn]] void Fail(const std::string& text) { throw CUsageError(text); }

uint32_t ParseColor(const std::string& option, const std::string& text) {
    std::string hex = !text.empty() && text[0] == '#' ? text.substr(1) : text;
    if (hex.size() != 6 || hex.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        Fail(option + " takes a colour as RRGGBB, not '" + text + "'");
    return static_cast<uint32_t>(std::strtoul(hex.c_str(), nullptr, 16));
}

// Shells make a line feed hard to type: backslash-n is one, and a doubled
// backslash is one backslash.
std::string UnescapeText(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'n' || text[i + 1] == '\\')) {
            out += text[i + 1] == 'n' ? '\n' : '\\';
            ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

CliOptions ParsePreview(const std::vector<std::string>& args) {
    CliOptions o;
    o.Command = CliCommand::Preview;
    std::set<std::string> seen;
    bool haveText = false;
    const std::set<std::string> values = {"--text", "--out", "--zoom", "--ink", "--paper"};
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i].rfind("-", 0) != 0) {
            if (!o.InfoPath.empty()) Fail("preview takes one ZGLY file");
            o.InfoPath = args[i];
            continue;
        }
        const OptionWord word = ReadOptionWord(args, i, values, {"--sheet", "--guides"});
        const std::string& name = word.Name;
        const std::string& value = word.Value;
        if (!seen.insert(name).second) Fail(name + " is given twice");
        if (name == "--text") { o.PreviewText = UnescapeText(value); haveText = true; }
        else if (name == "--sheet") o.Sheet = true;
        else if (name == "--out") o.PngPath = value;
        else if (name == "--guides") o.Guides = true;
        else if (name == "--ink") o.Ink = ParseColor(name, value);
        else if (name == "--paper") o.Paper = ParseColor(name, value);
        else if (name == "--zoom") {
            o.Zoom = ParseIntOption(name, value);
            if (o.Zoom < 1 || o.Zoom > 16) Fail("--zoom takes 1 to 16, not '" + value + "'");
        }
    }
    if (o.InfoPath.empty()) Fail("preview needs a ZGLY file");
    if (haveText == o.Sheet) Fail("preview needs exactly one of --text and --sheet");
    if (o.PngPath.empty()) Fail("preview needs --out FILE.png");
    CheckOutputExtension("--out", o.PngPath, {".png"});
    return o;
}

}  // namespace

// info, list-orders and list-fonts: --json and, for info, one file and --chars.
static CliOptions ParseJsonCommand(CliCommand command, const std::vector<std::string>& args, bool takesFile) {
    CliOptions o;
    o.Command = command;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (takesFile && args[i].rfind("-", 0) != 0) {
            if (!o.InfoPath.empty()) Fail("info takes one file");
            o.InfoPath = args[i];
            continue;
        }
        const std::string name = ReadOptionWord(args, i, {}, takesFile ? std::set<std::string>{"--json", "--chars"}
                                                                        : std::set<std::string>{"--json"}).Name;
        bool& flag = name == "--json" ? o.Json : o.InfoChars;
        if (flag) Fail(name + " is given twice");
        flag = true;
    }
    if (takesFile && o.InfoPath.empty()) Fail("info needs a ZGLY file");
    return o;
}

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
    // A window's settings file becomes the options it stands for.
    if (command == "convert") return ParseConvertOptions(ExpandSettingsOption(rest));
    if (command == "preview") return ParsePreview(rest);
    if (command == "info") return ParseJsonCommand(CliCommand::Info, rest, true);
    if (command == "list-orders") return ParseJsonCommand(CliCommand::ListOrders, rest, false);
    if (command == "list-fonts") return ParseJsonCommand(CliCommand::ListFonts, rest, false);
    std::vector<std::string> known = CommandNames();
    known.insert(known.end(), {"help", "--help", "--version"});
    Fail("unknown command '" + command + "'" + DidYouMean(command, known));
}

const char* HelpText() {
    return "glyphwright-cli: converts fonts into ZGLY bitmap fonts or glyph-grid BMP pictures.\n"
           "\n"
           "glyphwright-cli convert INPUT... OUTPUT [CHARACTERS...] [--threads N] [--quiet]\n"
           "  INPUT, one or more; each starts a source and the source options after it are its own:\n"
           "    --from-zgly FILE\n"
           "    --from-bmp FILE --from-order ORDER [--colors 2|4|8|16]\n"
           "    --from-font FACE|FILE|FILE.ttc#N [--style STYLE] [--axis TAG=VALUE]...\n"
           "                (--size PX | --cell-height PX) [--levels 2|4|8|16]\n"
           "                [--width glyph|keep-space|margin|fixed] [--fixed-width PX] [--no-soft-aa]\n"
           "    --from-lc FILE and/or --lc-half FILE [--lc-proportional] [--lc-half-proportional] [--vertical]\n"
           "  --width: glyph = as wide as the ink, no side spaces; keep-space = the same, but a\n"
           "  character without ink (a space) keeps its advance; margin = the font's own side\n"
           "  bearings and advances; fixed = the ink centred in --fixed-width PX (default 16).\n"
           "  With several sources each character comes from the first source that has it; later\n"
           "  sources fill the gaps, in the first source's grey levels. A later --from-font without\n"
           "  a size, levels or width of its own takes the first font's. Vertical and horizontal\n"
           "  sources do not mix.\n"
           "  OUTPUT, exactly one of:\n"
           "    --to-zgly FILE [--encoding utf-8|utf-16|shift_jis|cp1252] [--alt-char TEXT]\n"
           "                   [--line-height N] [--default-left N] [--default-width N] [--default-right N]\n"
           "                   [--rotation 0|90|180|270]\n"
           "    --to-bmp FILE --to-order ORDER [--no-grid] [--cell WxH [--offset X,Y]] [--margins L,T[,R,B]]\n"
           "  ORDER is a path to an .xlor file or the name of a shipped one (see list-orders).\n"
           "  FILE.ttc#N is face N of a font collection; --axis sets a variable font's axis (wght=700).\n"
           "  Colour bitmap fonts (emoji) are scaled to the size; --coverage alpha|luminance: grey levels\n"
           "  from their coverage (default), or coverage x darkness.\n"
           "  CHARACTERS limit the run to their union (the space is always kept); each may repeat:\n"
           "    --filter FILE.xllt     a filter file (once)\n"
           "    --chars TEXT           every character of TEXT\n"
           "    --chars-file FILE      every character of a text file (not its line ends): UTF-8, or\n"
           "                           UTF-16 with a byte-order mark\n"
           "    --chars-encoding utf-8|utf-16|shift_jis|cp1252   how text files without a byte-order mark\n"
           "                           are read (default utf-8)\n"
           "    --range FIRST-LAST     code points as U+3041, 0x3041 or 12353; or one CODE\n"
           "  Texts, files and ranges that hold no character but the space fail the run.\n"
           "  --threads N renders a font on N threads (1 to 256; default: every core); the output is\n"
           "  the same at any count.\n"
           "  After a finished convert one line on stderr sums it up (not with --quiet).\n"
           "glyphwright-cli info FILE.zgly [--chars] [--json]      (--chars: the characters it holds)\n"
           "glyphwright-cli check FILE.zgly (--chars TEXT | --chars-file FILE | --range R)... [--json]\n"
           "                [--chars-encoding ENC]\n"
           "  Lists each character of the text the font lacks (code, character, FILE:LINE:COLUMN of its\n"
           "  first use); exit status 1 when any is missing.\n"
           "glyphwright-cli preview FILE.zgly (--text TEXT | --sheet) --out FILE.png\n"
           "                [--zoom 1..16] [--guides] [--ink RRGGBB] [--paper RRGGBB]\n"
           "  Draws TEXT (UTF-8; a line feed or \\n starts a new line) with the ZGLY font as a game\n"
           "  would, or with --sheet every glyph of the file labelled with its code, as a PNG picture.\n"
           "  Zoom 2, black ink on white paper unless given; --guides adds baselines, cell boxes and advances.\n"
           "glyphwright-cli list-orders [--json]    the shipped glyph order files\n"
           "glyphwright-cli list-fonts [--json]     the installed font families, their styles and collection\n"
           "                                        faces (--json: also variable instances and axes)\n"
           "glyphwright-cli convert --settings FILE.ini [OPTIONS]\n"
           "  Runs the conversion a settings file of the window describes (its selected tabs and\n"
           "  fields); OPTIONS override the file's values.\n"
           "glyphwright-cli build [RECIPE] [--jobs N] [--force] [--dry-run] [--quiet]\n"
           "  Builds every [[font]] of a TOML recipe (default ./glyphwright.toml) in parallel, skipping\n"
           "  fonts whose output, inputs and keys are unchanged; see man glyphwright-cli.\n"
           "glyphwright-cli template --order ORDER --cell WxH --baseline N [--colors 2|4|8|16] [--vertical]\n"
           "                --out FILE.bmp|FILE.png\n"
           "  Draws a blank glyph grid for ORDER (frames and baseline marks, no width lines) to draw in.\n"
           "  A glyph grid may be a BMP (1/4/8/24/32-bit, RLE) or a PNG picture, in and out.\n"
           "glyphwright-cli --help | --version      (convert --help shows this too)\n"
           "\n"
           "Examples:\n"
           "  An installed font to ZGLY, with the characters of your game's text:\n"
           "    glyphwright-cli convert --from-font \"DejaVu Sans\" --size 16 --levels 16 \\\n"
           "        --chars-file strings.txt --to-zgly ui.zgly\n"
           "  Two fonts merged, Latin from DejaVu Sans, kana and kanji from IPAGothic:\n"
           "    glyphwright-cli convert --from-font \"DejaVu Sans\" --size 16 --levels 16 \\\n"
           "        --from-font IPAGothic --chars-file strings.txt --range U+3041-U+3096 --to-zgly ui.zgly\n"
           "  A bold style at a cell height of 20 pixels, ASCII only:\n"
           "    glyphwright-cli convert --from-font \"DejaVu Sans\" --style Bold --cell-height 20 \\\n"
           "        --range 0x20-0x7E --to-zgly bold.zgly\n"
           "  A glyph-grid picture to ZGLY:\n"
           "    glyphwright-cli convert --from-bmp grid.bmp --from-order ASCII --colors 16 --to-zgly grid.zgly\n"
           "  Re-encode a ZGLY file as Shift_JIS:\n"
           "    glyphwright-cli convert --from-zgly ui.zgly --to-zgly ui-sjis.zgly --encoding shift_jis\n"
           "  Look at the result:\n"
           "    glyphwright-cli preview ui.zgly --text 'Hello, こんにちは\\nline two' --out ui.png\n"
           "\n"
           "Exit status: 0 done, 1 conversion error (message on stderr), 2 usage error, 130 cancelled (Ctrl-C).\n";
}
