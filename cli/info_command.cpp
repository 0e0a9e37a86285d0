#include "cli/info_command.h"

#include "cli/json_text.h"

#include "core/codepage.h"
#include "core/general_exception.h"
#include "zgly/zgly_info.h"

namespace {

const char* MethodName(int method) {
    switch (method) {
    case 0: return "direct";
    case 1: return "table";
    case 2: return "scan";
    default: return "unknown";
    }
}


const char* Bool(bool b) { return b ? "true" : "false"; }

}  // namespace

std::string FormatInfoText(const std::string& path, const ZglyInfo& i) {
    std::string s;
    s += "File: " + path + "\n";
    s += FormatString("Header: version %04X, file size %d, %d blocks\n", i.Version, i.FileSize, i.BlockCount);
    s += FormatString("FINF: line feed %d, encoding %d (%s), default widths left %d glyph %d char %d\n", i.LineFeed,
                      i.Encoding, EncodingName(i.Encoding), i.DefaultLeft, i.DefaultGlyphWidth, i.DefaultCharWidth);
    s += FormatString("CGLP: cell %dx%d, cell size %d bytes, baseline %d, max char width %d, bpp %d, vertical %s, "
                      "rotation %d\n",
                      i.CellWidth, i.CellHeight, i.CellSize, i.Baseline, i.MaxCharWidth, i.Bpp,
                      i.Vertical ? "yes" : "no", i.Rotation * 90);
    for (std::size_t k = 0; k < i.WidthBlocks.size(); ++k)
        s += FormatString("CWDH %d: glyphs %d to %d\n", static_cast<int>(k), i.WidthBlocks[k].FirstGlyph,
                          i.WidthBlocks[k].LastGlyph);
    for (std::size_t k = 0; k < i.MapBlocks.size(); ++k) {
        const auto& m = i.MapBlocks[k];
        s += FormatString("CMAP %d: codes 0x%04X to 0x%04X, %s, %d mapped codes\n", static_cast<int>(k), m.FirstCode,
                          m.LastCode, MethodName(m.Method), m.MappedCodes);
    }
    s += FormatString("Glyphs: %d, mapped codes: %d\n", i.GlyphCount, i.MappedCodes);
    if (i.HasAlternateCode)
        s += FormatString("Alternate glyph: %d (code 0x%04X)\n", i.AlternateGlyph, i.AlternateCode);
    else
        s += FormatString("Alternate glyph: %d (no code)\n", i.AlternateGlyph);
    return s;
}

std::string FormatInfoJson(const std::string& path, const ZglyInfo& i) {
    std::string s = "{";
    s += "\"file\":" + JsonString(path);
    s += FormatString(",\"version\":%d,\"fileSize\":%d,\"blockCount\":%d", i.Version, i.FileSize, i.BlockCount);
    s += FormatString(",\"finf\":{\"lineFeed\":%d,\"alternateGlyph\":%d,\"defaultLeft\":%d,\"defaultGlyphWidth\":%d,"
                      "\"defaultCharWidth\":%d,\"encoding\":%d,\"encodingName\":",
                      i.LineFeed, i.AlternateGlyph, i.DefaultLeft, i.DefaultGlyphWidth, i.DefaultCharWidth,
                      i.Encoding);
    s += JsonString(EncodingName(i.Encoding)) + "}";
    s += FormatString(",\"cglp\":{\"cellWidth\":%d,\"cellHeight\":%d,\"cellSize\":%d,\"baseline\":%d,"
                      "\"maxCharWidth\":%d,\"bpp\":%d,\"vertical\":%s,\"rotation\":%d}",
                      i.CellWidth, i.CellHeight, i.CellSize, i.Baseline, i.MaxCharWidth, i.Bpp, Bool(i.Vertical),
                      i.Rotation * 90);
    s += ",\"widthBlocks\":[";
    for (std::size_t k = 0; k < i.WidthBlocks.size(); ++k)
        s += FormatString("%s{\"firstGlyph\":%d,\"lastGlyph\":%d}", k ? "," : "", i.WidthBlocks[k].FirstGlyph,
                          i.WidthBlocks[k].LastGlyph);
    s += "],\"mapBlocks\":[";
    for (std::size_t k = 0; k < i.MapBlocks.size(); ++k) {
        const auto& m = i.MapBlocks[k];
        s += FormatString("%s{\"firstCode\":%d,\"lastCode\":%d,\"method\":\"%s\",\"mappedCodes\":%d}", k ? "," : "",
                          m.FirstCode, m.LastCode, MethodName(m.Method), m.MappedCodes);
    }
    s += FormatString("],\"glyphCount\":%d,\"mappedCodes\":%d,\"alternateGlyph\":%d,\"alternateCode\":", i.GlyphCount,
                      i.MappedCodes, i.AlternateGlyph);
    s += i.HasAlternateCode ? FormatString("%d", i.AlternateCode) : std::string("null");
    return s + "}\n";
}

int RunInfoCommand(const std::string& path, bool json, std::FILE* out, std::FILE* err) {
    try {
        ZglyInfo info = DescribeZglyFile(path);
        std::string text = json ? FormatInfoJson(path, info) : FormatInfoText(path, info);
        std::fputs(text.c_str(), out);
        return 0;
    } catch (const CGeneralException& e) {
        std::fprintf(err, "%s\n", e.Message.c_str());
        return 1;
    } catch (const std::bad_alloc&) {
        std::fprintf(err, "Internal Error:\n Out of memory.\n");
        return 1;
    }
}
