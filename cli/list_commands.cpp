#include "cli/list_commands.h"

#include <string>
#include <vector>

#include "cli/json_text.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "core/pg_ctrl.h"
#include "sources/font_catalog.h"
#include "sources/font_source_checks.h"
#include "xmlfiles/glyph_order_files.h"
#include "xmlfiles/glyph_order_handler.h"

namespace {

// The listing of every shipped order; the ones that fail to load become warnings.
std::string ListOrdersText(bool json, CPgCtrl& pg) {
    std::vector<GlyphOrderInfo> list;
    FindGlyphOrderFiles(list);
    std::string text = json ? "[" : "";
    bool first = true;
    for (const auto& info : list) {
        std::string grid = "?";
        int width = 0, height = 0;
        try {
            CGlyphOrder order;
            LoadGlyphOrderFile(order, info.Path);
            width = order.Width;
            height = order.Height;
            grid = std::to_string(width) + "x" + std::to_string(height);
        } catch (const CGeneralException& e) {
            pg.AddWarning(e.Message);
        }
        if (json) {
            text += std::string(first ? "" : ",") + "{\"file\":" + JsonString(info.FileName) +
                    ",\"title\":" + JsonString(info.Title) + ",\"comment\":" + JsonString(info.Comment) +
                    ",\"path\":" + JsonString(info.Path.string()) + ",\"width\":" + std::to_string(width) +
                    ",\"height\":" + std::to_string(height) + "}";
        } else {
            text += info.FileName + "\t" + grid + "\t" + info.Title + "\t" + info.Comment + "\n";
        }
        first = false;
    }
    if (json) text += "]\n";
    return text;
}

}  // namespace

void RunListOrders(bool json, std::FILE* out, std::FILE* err) {
    // Files that fail to load are reported as warnings, as at the window's start-up.
    CHeadlessPgCtrl pg;
    CPgCtrlScope scope(pg);
    const std::string text = ListOrdersText(json, pg);
    std::fputs(text.c_str(), out);
    for (const auto& w : pg.Warnings) std::fprintf(err, "Warning: %s\n", w.c_str());
}

void RunListFonts(bool json, std::FILE* out) {
    std::string text = json ? "[" : "";
    bool first = true;
    for (const auto& face : ListInstalledFaces()) {
        std::string sizes, styles, stylesJson;
        for (int s : face.PixelSizes) sizes += (sizes.empty() ? "" : ",") + std::to_string(s);
        for (const auto& s : face.Styles) {
            styles += (styles.empty() ? "" : ",") + s;
            stylesJson += (stylesJson.empty() ? "" : ",") + JsonString(s);
        }
        std::string faces, facesJson, instancesJson, axesJson;
        for (const auto& f : face.CollectionFaces) {
            faces += (faces.empty() ? "" : ",") + f;
            facesJson += (facesJson.empty() ? "" : ",") + JsonString(f);
        }
        for (const auto& i : face.Instances) instancesJson += (instancesJson.empty() ? "" : ",") + JsonString(i);
        for (const auto& a : face.Axes)
            axesJson += (axesJson.empty() ? "" : ",") + ("{\"tag\":" + JsonString(a.Tag) + ",\"min\":" +
                                                         AxisValueText(a.Min) + ",\"default\":" +
                                                         AxisValueText(a.Default) + ",\"max\":" + AxisValueText(a.Max) + "}");
        if (json) {
            text += std::string(first ? "" : ",") + "{\"family\":" + JsonString(face.Family) +
                    ",\"scalable\":" + (face.Scalable ? "true" : "false") + ",\"sizes\":[" + sizes +
                    "],\"vertical\":" + (face.HasVerticalForms ? "true" : "false") + ",\"styles\":[" + stylesJson +
                    "],\"faces\":[" + facesJson + "],\"instances\":[" + instancesJson + "],\"axes\":[" + axesJson +
                    "]}";
        } else {
            // A family in a collection also shows the paths of its faces.
            text += face.Family + "\t" + (face.Scalable ? "scalable" : "bitmap " + sizes) + "\t" +
                    (face.HasVerticalForms ? "@" + face.Family : "") + "\t" + styles +
                    (faces.empty() ? "" : "\t" + faces) + "\n";
        }
        first = false;
    }
    if (json) text += "]\n";
    std::fputs(text.c_str(), out);
}
