#include "core/font_filter.h"

#include "core/font_data.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/pg_ctrl.h"

void CFontFilter::RestrictToOrder(const CGlyphOrder& order) {
    if (PassAll) {
        for (int y = 0; y < order.Height; ++y)
            for (int x = 0; x < order.Width; ++x) {
                uint16_t code = order.GetCode(x, y);
                if (code != NoCode) Letters[code] = true;
            }
        if (!Letters.empty()) PassAll = false;
        return;
    }
    if (!order.Loaded) return;
    for (auto& entry : Letters) entry.second = false;
    for (int y = 0; y < order.Height; ++y)
        for (int x = 0; x < order.Width; ++x) {
            uint16_t code = order.GetCode(x, y);
            if (code == NoCode) continue;
            auto it = Letters.find(code);
            if (it != Letters.end()) it->second = true;
        }
    std::erase_if(Letters, [](const auto& entry) { return !entry.second; });
}

void CFontFilter::ReportMissingLetters(const CFontData& font) const {
    for (const auto& [code, included] : Letters) {
        if (included && !font.FindGlyph(code))
            ReportWarning(g_pPgCtrl,
                          "A char ('%c': U+%04X) included in the Filter is not include in the INPUT font.",
                          static_cast<char16_t>(code), static_cast<int>(code));
    }
}
