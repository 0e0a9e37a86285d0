// The glyph block written while the file is saved: the same bytes as a block
// held in memory, and a wrong length refused without touching the target.
#include <gtest/gtest.h>

#include <map>

#include "zgly/font_block_file.h"
#include "zgly/font_block_set.h"
#include "synthetic_font.h"
#include "zgly_test_util.h"

using namespace zgly;

namespace {

// Writes the content in pieces of the given sizes.
CFontBlockFile::StreamedBlock Streamed(const std::vector<uint8_t>& content, std::vector<uint32_t> pieces) {
    return {TagCGLP, static_cast<uint32_t>(content.size()), [&content, pieces](CBinaryFile& file) {
                uint32_t at = 0;
                for (uint32_t n : pieces) {
                    file.Write(content.data() + at, n);
                    at += n;
                }
            }};
}

}  // namespace

TEST(StreamedSave, SameBytesAsABlockInMemoryAndWrongLengthsRefused) {
    CScratchDir dir;
    auto finf = Finf();
    const std::vector<uint8_t> cells = {9, 8, 7, 6, 5, 4, 3, 2, 1, 0, 11};  // 11: padded to 12
    const std::vector<uint8_t> widths = {1, 2, 3};
    CFontBlockSet held, rest;
    for (CFontBlockSet* set : {&held, &rest}) {
        set->AddBlock(TagCWDH, widths.data(), 3);
        set->AddBlock(TagFINF, finf.data(), 20);
    }
    held.AddBlock(TagCGLP, cells.data(), static_cast<uint32_t>(cells.size()));
    CFontBlockFile(dir / "held.zgly").Save(held);
    CFontBlockFile(dir / "streamed.zgly").Save(rest, Streamed(cells, {4, 0, 7}));
    const auto expected = FileBytes(dir / "held.zgly");
    ASSERT_EQ(expected.size(), 16u + 28 + 20 + 12);
    EXPECT_EQ(FileBytes(dir / "streamed.zgly"), expected);

    // One byte short, or one too many: nothing replaces the file already there.
    for (const auto& [pieces, message] : std::map<std::vector<uint32_t>, std::string>{
             {{10}, "Internal Error:\n Block content of 11 bytes written as 10."},
             {{11, 1}, "Internal Error:\n Block content of 11 bytes written as 12."}}) {
        std::vector<uint8_t> longer = cells;
        longer.push_back(12);
        auto block = Streamed(longer, pieces);
        block.Length = 11;
        EXPECT_EQ(ErrorOf([&] { CFontBlockFile(dir / "held.zgly").Save(rest, block); }), message);
        EXPECT_EQ(FileBytes(dir / "held.zgly"), expected);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 2);  // no temporary left
}
