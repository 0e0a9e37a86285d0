#include "cli/factories.h"

#include <cctype>

#include "bmpfont/bmp_font_reader.h"
#include "bmpfont/bmp_font_writer.h"
#include "core/general_exception.h"
#include "sources/lc_font_reader.h"
#include "sources/win_font_reader.h"
#include "xmlfiles/glyph_order_files.h"
#include "zgly/alternate_char.h"
#include "zgly/zarnic_font_reader.h"
#include "zgly/zarnic_font_writer.h"

namespace {

bool SameNoCase(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

}  // namespace

std::filesystem::path ResolveGlyphOrder(const std::string& text) {
    std::error_code ec;
    if (text.empty() || std::filesystem::is_regular_file(text, ec)) return text;
    // A bare name: a shipped order, with or without its extension.
    if (text.find('/') == std::string::npos) {
        for (const auto& dir : GlyphOrderDirectories()) {
            for (const auto& entry : std::filesystem::directory_iterator(dir, ec)) {
                std::string name = entry.path().filename().string();
                if (SameNoCase(name, text) || SameNoCase(name, text + ".xlor")) return entry.path();
            }
        }
    }
    return text;
}


std::unique_ptr<CFontReader> CreateSourceReader(const CliSource& o) {
    switch (o.Input) {
    case InputKind::Zgly: return std::make_unique<CZarnicFontReader>(o.InputPath);
    case InputKind::Bmp: return std::make_unique<CBmpFontReader>(o.InputPath, ResolveGlyphOrder(o.FromOrder), o.BmpBpp);
    case InputKind::Font: {
        // As the font panel refuses a size before it builds the reader.
        if (o.FontSizeGiven < 1) ThrowError("Parameter Error:\n Invalid Font Size(%d)", o.FontSizeGiven);
        auto reader = std::make_unique<CWinFontReader>(o.FontFace, o.FontSize, o.FontBpp, o.WidthType, o.FixedWidth,
                                                       o.SoftAA);
        for (const auto& [tag, value] : o.Axes) reader->Axes.push_back({tag, value});
        reader->LuminanceCoverage = o.LuminanceCoverage;
        reader->Threads = o.Threads;
        return reader;
    }
    case InputKind::Lc:
        return std::make_unique<CLcFontReader>(o.InputPath, o.LcHalfPath, o.LcMainFixed, o.LcHalfFixed,
                                               o.LcVertical);
    case InputKind::None: break;
    }
    throw CGeneralException("Internal Error:\n No input selected.");
}

std::unique_ptr<CFontWriter> CreateWriter(const CliOptions& o) {
    switch (o.Output) {
    case OutputKind::Zgly: {
        // As the output panel reads its alternate character field.
        ZglyWriterOptions options;
        if (o.AltCharGiven) options.AlternateChar = ParseAlternateChar(o.AltCharText, o.Encoding);
        options.LineHeight = o.LineHeight;
        options.DefaultLeftSpace = o.DefaultLeft;
        options.DefaultWidth = o.DefaultWidth;
        options.DefaultRightSpace = o.DefaultRight;
        options.Encoding = static_cast<EncodingNumber>(o.Encoding);
        options.Rotation = o.Rotation;
        return std::make_unique<CZarnicFontWriter>(o.OutputPath, options);
    }
    case OutputKind::Bmp:
        return std::make_unique<CBmpFontWriter>(o.OutputPath, ResolveGlyphOrder(o.ToOrder), o.DrawGrid, o.CellWidth,
                                                o.CellHeight, o.OffsetLeft, o.OffsetTop, o.MarginRight,
                                                o.MarginBottom);
    case OutputKind::None: break;
    }
    throw CGeneralException("Internal Error:\n No output selected.");
}
