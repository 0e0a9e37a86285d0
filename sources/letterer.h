// Letterers: render one character of a face into a glyph, at 2 grey levels
// (CRasterLetterer) or 4 to 32 (CVectorLetterer), horizontal or vertical.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sources/font_face.h"

class CGlyph;
class CVerticalForms;

// An 8-bit image of one character with its metrics, handed to BuildGlyph.
struct RenderedCell {
    int32_t Width = 0;
    int32_t Height = 0;
    // Pen position to the image's left edge (the left side bearing).
    int32_t OriginX = 0;
    int32_t Advance = 0;
    // Rows from the image's top edge down to the baseline.
    int32_t Baseline = 0;
    uint8_t MaxLevel = 0;
    uint8_t Background = 0;
};

// Soft anti-aliasing: halves an image rendered at double height, keeping the
// baseline between 2 x 2 blocks. Works in place on Width x Height bytes.
void HalveImage(uint8_t* image, RenderedCell& cell);
// Maps the 17 levels 0..16 to 0..MaxLevel, in place.
void ScaleLevels(uint8_t* image, std::size_t count, int maxLevel);

// A face name with its vertical mark split off.
struct FontRequest {
    std::string FaceName;  // family or file path, without the '@'
    int32_t Size = 0;
    bool Vertical = false;
};
FontRequest ParseFaceName(const std::string& faceName, int32_t size);

class CLetterer {
public:
    CLetterer();
    virtual ~CLetterer();
    CLetterer(const CLetterer&) = delete;
    CLetterer& operator=(const CLetterer&) = delete;

    void Setup(int32_t bpp, int32_t widthType, int32_t fixedWidth, bool vertical);
    // Opens the face; throws when it cannot.
    virtual void Prepare(const FontRequest& request) = 0;
    // False when the face has nothing for the code; the glyph is untouched then.
    virtual bool MakeGlyph(CGlyph& glyph, char16_t code) = 0;
    bool HasGlyph(char16_t code) const;
    // Crops the image to its ink and builds the glyph with the width type's
    // spaces, turned a quarter turn clockwise for vertical fonts.
    void BuildGlyph(CGlyph& glyph, const uint8_t* image, const RenderedCell& cell);

    const CFontFace* Font() const { return Face.get(); }

protected:
    // A character's rendering as FreeType delivers it, widened to one byte a
    // pixel (coverage 0..255), already turned for vertical faces.
    struct Bitmap {
        const uint8_t* Pixels = nullptr;
        int32_t Width = 0, Rows = 0;
        int32_t Left = 0;  // pen to left edge
        int32_t Top = 0;   // baseline to top edge, upwards
        int32_t Advance = 0;
    };
    void OpenFace(const FontRequest& request, int32_t size);
    // Loads and renders the code; false when FreeType cannot.
    bool Render(char16_t code, FT_Int32 loadFlags, Bitmap& out);

    int32_t Bpp = 1;
    int32_t WidthType = 0;
    int32_t FixedWidth = 0;
    bool Vertical = false;
    int32_t FontAscent = 0;
    int32_t CellSize = 0;
    uint8_t MaxLevel() const { return static_cast<uint8_t>((1 << Bpp) - 1); }

    std::unique_ptr<CFontFace> Face;
    std::unique_ptr<CVerticalForms> Forms;

private:
    void Widen(const FT_Bitmap& bitmap);
    void TurnCounterClockwise(Bitmap& b);

    std::vector<uint8_t> Coverage;
    std::vector<uint8_t> Turned;
};

class CRasterLetterer : public CLetterer {
public:
    void Prepare(const FontRequest& request) override;
    bool MakeGlyph(CGlyph& glyph, char16_t code) override;

private:
    std::vector<uint8_t> Grid;
    std::vector<uint8_t> Result;
};

class CVectorLetterer : public CLetterer {
public:
    void Prepare(const FontRequest& request) override;
    bool MakeGlyph(CGlyph& glyph, char16_t code) override;

    bool SoftAA = false;

private:
    std::vector<uint8_t> Image;
};
