// LC Font files: headerless runs of fixed-size 1-bit glyph records keyed by
// Shift_JIS codes; the variant is known only from the file size.
#include "sources/lc_font_reader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include "core/codepage.h"
#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/packed_image.h"
#include "core/pg_ctrl.h"
#include "sources/lc_half_width_map.h"
#include "zgly/binary_file.h"

namespace {

struct LcFormat {
    uint32_t FileSize;
    int PixelWidth, PixelHeight, BaselineRow, VerticalOrigin, RowBytes, RecordSize;
};

constexpr LcFormat LcFormats[] = {
    {7520, 4, 8, 7, 7, 1, 10},        {9024, 5, 10, 9, 9, 1, 12},      {10528, 6, 12, 10, 10, 1, 14},
    {13536, 8, 16, 14, 14, 1, 18},    {73320, 8, 8, 7, 7, 1, 10},      {161304, 10, 10, 9, 9, 2, 22},
    {190632, 12, 12, 10, 10, 2, 26}, {249288, 16, 16, 14, 14, 2, 34},
};

constexpr int MaxRecordBytes = 34;
constexpr int MaxImageBytes = (16 * 16 + 7) / 8;

const LcFormat& IdentifyLcFile(CBinaryFile& file) {
    const uint64_t size = file.Size();
    for (const LcFormat& f : LcFormats)
        if (f.FileSize == size) return f;
    ThrowError("Parameter Error:\n Input file(%s) is not LC Font file.", file.Path());
}

void CheckLcFile(const std::filesystem::path& path) {
    CBinaryFile file(path);
    file.Open(CBinaryFile::Mode::Read);
    IdentifyLcFile(file);
    file.Close();
}

// One record at a time into the caller's buffers; false at the end.
class CLcRecordReader {
public:
    CLcRecordReader(CBinaryFile& file, const LcFormat& format) : File(file), Format(format) {}

    bool Next(uint16_t& code, uint8_t* image) {
        const uint32_t start = File.Tell();
        uint8_t record[MaxRecordBytes];
        if (File.Read(record, 2) < 2) return false;
        code = static_cast<uint16_t>(record[0] * 256 + record[1]);
        const uint32_t rowsBytes = static_cast<uint32_t>(Format.PixelHeight * Format.RowBytes);
        if (File.Read(record + 2, rowsBytes) < rowsBytes) return false;
        std::memset(image, 0, MaxImageBytes);
        int bit = 0;
        for (int y = 0; y < Format.PixelHeight; ++y) {
            const uint8_t* row = record + 2 + y * Format.RowBytes;
            for (int x = 0; x < Format.PixelWidth; ++x, ++bit)
                if (row[x >> 3] & (0x80 >> (x & 7))) image[bit >> 3] |= static_cast<uint8_t>(0x80 >> (bit & 7));
        }
        File.Seek(start + static_cast<uint32_t>(Format.RecordSize));
        return true;
    }

private:
    CBinaryFile& File;
    const LcFormat& Format;
};

struct GlyphOptions {
    bool Fixed;
    bool Vertical;
    bool Turned;
};

void AddLcGlyph(CFontData& font, const LcFormat& format, const CFontFilter& filter, const GlyphOptions& options,
                const uint8_t* image, uint16_t code) {
    if (filter.IsExcluded(code) || font.FindGlyph(code)) return;
    int cellWidth = format.PixelWidth, cellHeight = format.PixelHeight, origin = format.BaselineRow;
    if (options.Vertical && options.Turned)
        std::swap(cellWidth, cellHeight);
    else if (options.Vertical)
        origin = format.VerticalOrigin;
    auto glyph = std::make_unique<CGlyph>();
    // A proportional glyph gets one pixel before its ink; a fixed one keeps its cell.
    if (options.Fixed)
        glyph->SetFromCellTrimmed(image, cellWidth, cellHeight, 1, options.Vertical, origin);
    else
        glyph->SetFromCell(image, cellWidth, cellHeight, 1, options.Vertical, 1, 0, origin);
    font.AddGlyph(std::move(glyph), code);
}

}  // namespace

void CLcFontReader::CheckParameters() {
    if (!Path.empty()) CheckLcFile(Path);
    if (!HalfWidthPath.empty()) CheckLcFile(HalfWidthPath);
    if (Path.empty() && HalfWidthPath.empty()) ThrowError("Parameter Error:\n LC Font file path required");
}

void CLcFontReader::Read(CFontData& font, const CFontFilter& filter) {
    g_pPgCtrl->SetStatus(" Reading LC Font...");
    uint8_t image[MaxImageBytes];
    uint16_t code = 0;
    if (!Path.empty()) {
        CBinaryFile file(Path);
        file.Open(CBinaryFile::Mode::Read);
        const LcFormat& format = IdentifyLcFile(file);
        g_pPgCtrl->ResetProgress();
        g_pPgCtrl->SetProgressRange(static_cast<int>(file.Size() / format.RecordSize));
        CLcRecordReader records(file, format);
        const GlyphOptions options{MainFixedWidth, Vertical, false};
        while (records.Next(code, image)) {
            const char16_t c = CodePageToUnicode(932, code);
            if (c != NoChar) AddLcGlyph(font, format, filter, options, image, c);
            g_pPgCtrl->StepProgress(1);
        }
        file.Close();
    }
    if (!HalfWidthPath.empty()) {
        CBinaryFile file(HalfWidthPath);
        file.Open(CBinaryFile::Mode::Read);
        const LcFormat& format = IdentifyLcFile(file);
        g_pPgCtrl->ResetProgress();
        g_pPgCtrl->SetProgressRange(static_cast<int>(HalfWidthEntryCount));
        CLcRecordReader records(file, format);
        const GlyphOptions options{HalfWidthFixedWidth, Vertical, true};
        while (records.Next(code, image)) {
            auto entry = std::lower_bound(HalfWidthCodeMap.begin(), HalfWidthCodeMap.end(), code,
                                          [](const HalfWidthEntry& e, uint16_t c) { return e.ShiftJis < c; });
            if (entry == HalfWidthCodeMap.end() || entry->ShiftJis != code) continue;
            if (Vertical) RotateClockwise(image, image, format.PixelWidth, format.PixelHeight, 1);
            AddLcGlyph(font, format, filter, options, image, entry->Unicode);
            g_pPgCtrl->StepProgress(1);
        }
        file.Close();
    }
    font.Bpp.Set(1);
    font.IsVertical.Set(Vertical);
}
