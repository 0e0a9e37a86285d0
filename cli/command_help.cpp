#include "cli/command_help.h"

#include <algorithm>

#include "cli/options.h"

namespace {

struct CommandText {
    const char* Name;
    const char* Help;  // null: the whole help
};

const CommandText Commands[] = {
    {"convert", nullptr},
    {"build",
     "usage: glyphwright-cli build [RECIPE] [--jobs N] [--force] [--dry-run] [--quiet]\n"
     "Builds every [[font]] of a TOML recipe in parallel, skipping fonts whose output, inputs\n"
     "and keys are unchanged (see man glyphwright-cli).\n"
     "  RECIPE            the recipe file (default: glyphwright.toml in the current folder)\n"
     "  --jobs N, -j N    fonts built at once, 1 to 256 (default: the number of processors)\n"
     "  --force           rebuild every font, also those up to date\n"
     "  --dry-run         print the convert commands that would run; write nothing\n"
     "  --quiet           report failures only\n"
     "Exit status: 0 done, 1 a font failed, 2 usage or recipe error, 130 cancelled.\n"},
    {"info",
     "usage: glyphwright-cli info FILE.zgly [--chars] [--json]\n"
     "Prints the header, FINF, CGLP, width and map blocks, the glyph count and the alternate\n"
     "glyph of a ZGLY file.\n"
     "  --chars           the characters the file holds instead\n"
     "  --json            the same as one JSON object\n"},
    {"check",
     "usage: glyphwright-cli check FILE.zgly (--chars TEXT | --chars-file FILE | --range R)...\n"
     "                [--chars-encoding utf-8|utf-16|shift_jis|cp1252] [--json]\n"
     "Lists each character of the text the font lacks: code, character and FILE:LINE:COLUMN of\n"
     "its first use; exit status 1 when any is missing.\n"
     "  --chars TEXT      characters to check, as typed\n"
     "  --chars-file FILE the characters of a text file (line ends are not characters)\n"
     "  --range R         code points as U+3041, 0x3041 or 12353, or FIRST-LAST\n"
     "  --chars-encoding  how text files without a byte-order mark are read (default utf-8)\n"
     "  --json            the missing characters as one JSON object\n"},
    {"preview",
     "usage: glyphwright-cli preview FILE.zgly (--text TEXT | --sheet) --out FILE.png\n"
     "                [--zoom 1..16] [--guides] [--ink RRGGBB] [--paper RRGGBB]\n"
     "Draws TEXT with the ZGLY font as a game would, as a PNG picture.\n"
     "  --text TEXT       UTF-8; a line feed or \\n starts a new line, \\\\ is one backslash\n"
     "  --sheet           every glyph of the file instead, labelled with its code\n"
     "  --out FILE.png    the picture to write\n"
     "  --zoom N          whole pixels per font pixel, 1 to 16 (default 2)\n"
     "  --guides          baselines, cell boxes and advances in light colours\n"
     "  --ink, --paper    colours as RRGGBB (default black on white)\n"},
    {"template",
     "usage: glyphwright-cli template --order ORDER --cell WxH --baseline N [--colors 2|4|8|16]\n"
     "                [--vertical] --out FILE.bmp|FILE.png\n"
     "Draws a blank glyph grid for ORDER (frames and baseline marks, no width lines) to draw in.\n"
     "  --order ORDER     an .xlor file or the name of a shipped one (see list-orders)\n"
     "  --cell WxH        the glyph area of each cell in pixels\n"
     "  --baseline N      the baseline's row from the glyph area's top (--vertical: the\n"
     "                    origin's distance from the area's right edge)\n"
     "  --colors N        2, 4, 8 or 16 (default 2)\n"
     "  --vertical        a grid for a vertical font\n"
     "  --out FILE        a .bmp or .png picture\n"},
    {"list-orders",
     "usage: glyphwright-cli list-orders [--json]\n"
     "Lists the shipped glyph order files: file, grid, title and comment.\n"},
    {"list-fonts",
     "usage: glyphwright-cli list-fonts [--json]\n"
     "Lists the installed font families: scalable or bitmap sizes, \"@\" vertical, styles.\n"},
};

const CommandText* FindCommand(const std::string& command) {
    for (const CommandText& c : Commands)
        if (command == c.Name) return &c;
    return nullptr;
}

}  // namespace

const std::vector<std::string>& CommandNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> n;
        for (const CommandText& c : Commands) n.push_back(c.Name);
        return n;
    }();
    return names;
}

std::string CommandHelp(const std::string& command) {
    const CommandText* c = FindCommand(command);
    return c && c->Help ? c->Help : HelpText();
}

std::string UsageHint(const std::string& command) {
    if (FindCommand(command)) return "Try 'glyphwright-cli " + command + " --help'.\n";
    return "Try 'glyphwright-cli --help'.\n";
}
