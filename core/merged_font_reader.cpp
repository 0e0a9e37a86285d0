#include "core/merged_font_reader.h"

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/grey_levels.h"

namespace {

// The filter for a later source: what the run wants and the font still lacks.
std::unique_ptr<CFontFilter> MissingOnly(const CFontFilter& filter, const CFontData& font) {
    auto rest = std::make_unique<CFontFilter>();
    rest->PassAll = false;
    for (uint32_t code = 0; code < 0xFFFF; ++code) {
        const auto c = static_cast<uint16_t>(code);
        if (!filter.IsExcluded(c) && !font.FindGlyph(c)) rest->Letters.emplace_hint(rest->Letters.end(), c, true);
    }
    return rest;
}

template <class T>
void TakeIfMissing(COptional<T>& value, const COptional<T>& from) {
    if (!value.Specified && from.Specified) value = from;
}

}  // namespace

std::string MixedDirectionsMessage(const std::string& first, bool firstVertical, const std::string& other) {
    return FormatString(
        "Parameter Error:\n Vertical and horizontal sources can not be mixed: %s is %s, but %s is %s.", first,
        firstVertical ? "vertical" : "horizontal", other, firstVertical ? "horizontal" : "vertical");
}

CMergedFontReader::CMergedFontReader(std::vector<Source> sources, std::vector<std::size_t>* counts)
    : Sources(std::move(sources)), Counts(counts) {
    if (!Sources.empty()) Path = Sources.front().Reader->Path;
}

void CMergedFontReader::CheckParameters() {
    for (auto& s : Sources) s.Reader->CheckParameters();
}

void CMergedFontReader::Read(CFontData& font, const CFontFilter& filter) {
    if (Counts) Counts->assign(Sources.size(), 0);
    for (std::size_t n = 0; n < Sources.size(); ++n) {
        CFontData part;
        if (n == 0) {
            Sources[n].Reader->Read(part, filter);
        } else {
            auto rest = MissingOnly(filter, font);
            if (rest->Letters.empty()) continue;
            Sources[n].Reader->Read(part, *rest);
            if (part.Vertical() != font.Vertical())
                throw CGeneralException(MixedDirectionsMessage(Sources[0].Name, font.Vertical(), Sources[n].Name));
        }
        TakeIfMissing(font.Bpp, part.Bpp);
        TakeIfMissing(font.LineHeight, part.LineHeight);
        TakeIfMissing(font.DefaultWidth, part.DefaultWidth);
        TakeIfMissing(font.AlternateChar, part.AlternateChar);
        TakeIfMissing(font.IsVertical, part.IsVertical);
        std::size_t added = 0;
        for (const auto& g : part.GetGlyphs()) {
            if (font.FindGlyph(g->Code)) continue;
            auto copy = CGlyph::CopyFrom(*g);
            if (font.Bpp.Specified && part.Bpp.Specified) RescaleGlyphLevels(*copy, part.Bpp.Value, font.Bpp.Value);
            font.AddGlyph(std::move(copy), g->Code);
            ++added;
        }
        if (Counts) (*Counts)[n] = added;
    }
}
