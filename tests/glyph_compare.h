// One comparison of two fonts' glyphs for the round-trip tests of every suite:
// codes, ink images (as values, whatever their depth), ink sizes, advances and
// the spaces of the font's layout. An ink-less glyph's origin offsets only say
// where its empty cell was, so they are compared for inked glyphs only.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/bit_stream.h"
#include "core/font_data.h"

inline std::vector<uint32_t> InkValues(const CGlyph& g) {
    std::vector<uint32_t> out;
    CBitReader r;
    r.Start(g.Pixels.data());
    for (int i = 0; i < g.Ink.Width() * g.Ink.Height(); ++i) out.push_back(r.ReadValue(g.Bpp));
    return out;
}

inline void ExpectSameGlyphs(const CFontData& a, const CFontData& b, const std::string& what) {
    ASSERT_EQ(a.GlyphCount(), b.GlyphCount()) << what;
    EXPECT_EQ(b.Vertical(), a.Vertical()) << what;
    for (const auto& g : a.GetGlyphs()) {
        const CGlyph* r = b.FindGlyph(g->Code);
        ASSERT_NE(r, nullptr) << what << " code " << g->Code;
        const std::string at = what + " code " + std::to_string(g->Code);
        EXPECT_EQ(r->Ink.Width(), g->Ink.Width()) << at;
        EXPECT_EQ(r->Ink.Height(), g->Ink.Height()) << at;
        EXPECT_EQ(InkValues(*r), InkValues(*g)) << at;
        const bool ink = g->Ink.Width() > 0;
        if (ink) {
            EXPECT_EQ(r->RightExtent, g->RightExtent) << at;
        }
        // Without ink only the advance is a fact; how it splits into the two
        // spaces is not kept by every format.
        if (a.Vertical()) {
            EXPECT_EQ(r->TopSpace + r->BottomSpace, g->TopSpace + g->BottomSpace) << at;
            if (ink) {
                EXPECT_EQ(r->TopSpace, g->TopSpace) << at;
            }
        } else {
            EXPECT_EQ(r->LeftSpace + r->RightSpace, g->LeftSpace + g->RightSpace) << at;
            if (ink) {
                EXPECT_EQ(r->LeftSpace, g->LeftSpace) << at;
                EXPECT_EQ(r->Ascent, g->Ascent) << at;
            }
        }
    }
}
