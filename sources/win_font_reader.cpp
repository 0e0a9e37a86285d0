// Renders every character an installed font (or a font file) has.
#include "sources/win_font_reader.h"

#include <memory>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/pg_ctrl.h"
#include "platform/paths.h"
#include "sources/font_catalog.h"
#include "sources/colour_letterer.h"
#include "sources/font_face.h"
#include "sources/font_source_checks.h"
#include "sources/letterer.h"
#include "sources/parallel_lettering.h"

namespace {

[[noreturn]] void ThrowFaceNotFound(const std::string& name) {
    // A file that is no font gets the message every build gives; only a name
    // needs the catalog this build lacks.
    if (!FontCatalogAvailable() && !PathExists(name))
        ThrowError("Parameter Error:\n Font(%s) is not a font file; this build finds no installed fonts by name, "
                   "give the path of a font file.",
                   name);
    ThrowError("Parameter Error:\n Font(%s) is not installed.", name);
}

}  // namespace

void CWinFontReader::CheckParameters() {
    if (FaceName.empty()) ThrowError("Internal Error:\n Font is not selected.");
    if (Size == 0) ThrowError("Parameter Error:\n Invalid Font Size(%d)", 0);
    if (Bpp < 1 || Bpp > 5) ThrowError("Internal Error:\n Bpp(%d) out of range.", Bpp);
    if (WidthType < 0 || WidthType >= GlyphWidthTypeCount) ThrowError("Internal Error:\n Invalid GlyphWidth Type(%d)", WidthType);
    if (WidthType == WidthFixed && FixedWidth <= 0) ThrowError("Parameter Error:\n Invalid fixed width(%d)", FixedWidth);
    const std::string name = ParseFaceName(FaceName).FaceName;
    FontLocation location;
    if (!ResolveFontName(name, location, Size)) {
        std::string file;
        int index = 0;
        CheckReadableFontFile(SplitFaceNumber(name, file, index) ? file : name);
        ThrowFaceNotFound(FaceName);
    }
    location.Axes = Axes;
    CheckFaceAndAxes(name, location);
    CheckCharset(name, location);
    CheckStrikeSize(name, location, Size);
    CheckSizeFits(location, Size);
}

void CWinFontReader::Read(CFontData& font, const CFontFilter& filter) {
    g_pPgCtrl->SetStatus(" Making Font Data...");
    g_pPgCtrl->ResetProgress();
    g_pPgCtrl->SetProgressRange(0x10000);

    const FontRequest request = ParseFaceName(FaceName);
    // Looked up once: with the size, a bitmap family's file nearest it.
    FontLocation location;
    if (!ResolveFontName(request.FaceName, location, Size)) ThrowFaceNotFound(request.FaceName);
    location.Axes = Axes;
    // A face of bitmap strikes has no grey levels: it is read at 2 levels
    // whatever was asked, as the window's level list offers only that. Colour
    // strikes have their coverage, scaled to any size.
    const bool colour = IsColourBitmapFont(location);
    const int32_t bpp = IsBitmapOnly(location) && !colour ? 1 : Bpp;
    if (bpp != Bpp)
        ReportWarning(g_pPgCtrl, "Font(%s) has bitmap strikes only: it is read at 1 bit per pixel (2 levels), "
                                 "not %d levels.",
                      request.FaceName, 1 << Bpp);
    if (LuminanceCoverage && !colour)
        ReportWarning(g_pPgCtrl, "Font(%s) has no colour bitmaps: luminance coverage changes nothing.", request.FaceName);
    const int threads = LetteringThreads(Threads, filter);
    if (threads > 1) LoadFontBytes(location);
    auto makeLetterer = [&]() -> std::unique_ptr<CLetterer> {
        std::unique_ptr<CLetterer> letterer;
        if (colour) {
            auto colours = std::make_unique<CColourLetterer>();
            colours->Luminance = LuminanceCoverage;
            letterer = std::move(colours);
        } else if (bpp == 1) {
            letterer = std::make_unique<CRasterLetterer>();
        } else {
            auto vector = std::make_unique<CVectorLetterer>();
            vector->SoftAA = SoftAA;
            letterer = std::move(vector);
        }
        letterer->Setup(bpp, WidthType, FixedWidth, request.Vertical);
        letterer->Prepare(location, Size);
        return letterer;
    };
    font.IsVertical.Set(request.Vertical);
    std::unique_ptr<CLetterer> letterer = makeLetterer();

    if (threads > 1) {
        LetterInParallel(threads, *letterer, makeLetterer, font, filter);
    } else {
        // A glyph that MakeGlyph left untouched serves the next code.
        std::unique_ptr<CGlyph> glyph;
        for (uint32_t code = 0; code < 0xFFFF; ++code) {
            g_pPgCtrl->StepProgress(1);
            if (filter.IsExcluded(static_cast<uint16_t>(code))) continue;
            if (!glyph) glyph = std::make_unique<CGlyph>();
            if (letterer->MakeGlyph(*glyph, static_cast<char16_t>(code)))
                font.AddGlyph(std::move(glyph), static_cast<uint16_t>(code));
        }
    }
    letterer.reset();
    font.Bpp.Set(bpp);
}
