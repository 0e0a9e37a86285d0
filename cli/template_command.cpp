#include "cli/template_command.h"

#include <cstdlib>

#include "bmpfont/bmp_font_layout.h"
#include "cli/factories.h"
#include "cli/option_words.h"
#include "cli/options.h"
#include "core/glyph_order.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/glyph_order_handler.h"
#include "zgly/path_checks.h"

namespace {

[[noreturn]] void Fail(const std::string& text) { throw CUsageError(text); }

int Number(const std::string& option, const std::string& text, int min) {
    char* end = nullptr;
    long v = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || v < min || v > 65535)
        Fail(option + " needs a whole number from " + std::to_string(min) + ", not '" + text + "'");
    return static_cast<int>(v);
}

}  // namespace

TemplateOptions ParseTemplateCommand(const std::vector<std::string>& args) {
    TemplateOptions o;
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i].rfind("-", 0) != 0) Fail("template does not take '" + args[i] + "'");
        const OptionWord word = ReadOptionWord(args, i, {"--order", "--cell", "--baseline", "--colors", "--out"},
                                               {"--vertical"});
        const std::string& name = word.Name;
        const std::string& value = word.Value;
        if (name == "--vertical") o.Grid.Vertical = true;
        if (name == "--order") o.Order = value;
        if (name == "--out") o.OutPath = value;
        if (name == "--baseline") o.Grid.Baseline = Number(name, value, 0);
        if (name == "--cell") {
            std::size_t x = value.find('x');
            if (x == std::string::npos) Fail("--cell needs WxH, not '" + value + "'");
            o.Grid.CellWidth = Number(name, value.substr(0, x), 1);
            o.Grid.CellHeight = Number(name, value.substr(x + 1), 1);
        }
        if (name == "--colors") {
            int colors = Number(name, value, 2);
            if (colors != 2 && colors != 4 && colors != 8 && colors != 16)
                Fail("--colors takes 2|4|8|16, not '" + value + "'");
            o.Grid.Bpp = colors == 2 ? 1 : colors == 4 ? 2 : colors == 8 ? 3 : 4;
        }
    }
    if (o.Order.empty()) Fail("template needs --order ORDER");
    if (o.Grid.CellWidth == 0) Fail("template needs --cell WxH");
    if (o.Grid.Baseline < 0) Fail("template needs --baseline N");
    if (o.OutPath.empty()) Fail("template needs --out FILE.bmp|FILE.png");
    CheckOutputExtension("--out", o.OutPath, {".bmp", ".png"});
    return o;
}

void RunTemplateCommand(const TemplateOptions& o) {
    std::filesystem::path order = ResolveGlyphOrder(o.Order);
    CheckOutputFile(o.OutPath);
    CheckGlyphOrderFile(order);
    CGlyphOrder grid;
    LoadGlyphOrderFile(grid, order);
    CheckOrderGrid(grid, order);
    WriteGridTemplate(o.OutPath, grid, o.Grid, order.filename().string());
}
