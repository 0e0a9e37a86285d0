// How many glyphs a ZGLY file holds when its last cells share the block's
// zero padding, and the shortest FINF block a file may have.
#include <gtest/gtest.h>

#include "cli_runner.h"
#include "zgly_test_util.h"

using namespace zgly;

namespace {

// The one-glyph 1x1 font ("A"), as the writer lays it out, with a FINF of
// finfBytes and a scan map naming the given glyphs for 'A', 'B', ...
std::vector<uint8_t> OneCellFont(std::size_t finfBytes, const std::vector<uint16_t>& glyphs) {
    std::vector<uint8_t> finf = Finf();
    finf.resize(finfBytes);
    std::vector<uint8_t> cglp = {1, 1, 1, 0, 1, 1, 1, 0, 0x80};
    std::vector<uint16_t> scan = {static_cast<uint16_t>(glyphs.size())};
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        scan.push_back(static_cast<uint16_t>(0x41 + i));
        scan.push_back(glyphs[i]);
    }
    return File({Block(TagFINF, finf), Block(TagCGLP, cglp), Block(TagCWDH, {0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1}),
                 Block(TagCMAP, Cmap(0, 0xFFFF, MethodScan, scan))});
}

}  // namespace

TEST(CliCellCount, PaddingIsNoGlyphAndEightFinfBytesAreEnough) {
    CScratchDir dir;
    struct Case {
        std::size_t FinfBytes;
        std::vector<uint16_t> Glyphs;
        int Status;
        const char* Expected;  // in stdout for status 0, else all of stderr
    };
    const Case cases[] = {
        {20, {0}, 0, "Glyphs: 1, mapped codes: 1\n"},
        {8, {0}, 0, "Glyphs: 1, mapped codes: 1\n"},
        {4, {0}, 1, "ZGLY File Error:\n FINF block is too small(=4, must be at least 8)\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.FinfBytes);
        PutFile(dir / "in.zgly", OneCellFont(c.FinfBytes, c.Glyphs));
        CliResult r = RunCli(dir, "info " + Q(dir / "in.zgly"));
        EXPECT_EQ(r.Status, c.Status) << r.Err;
        if (c.Status == 0) EXPECT_NE(r.Out.find(c.Expected), std::string::npos) << r.Out;
        else EXPECT_EQ(r.Err, c.Expected);
    }

    // An 8-byte FINF converts like a full one; a glyph index in the padding
    // is beyond the one cell.
    CliResult r;
    for (std::size_t finfBytes : {8, 20}) {
        PutFile(dir / "in.zgly", OneCellFont(finfBytes, {0}));
        r = RunCli(dir, "convert --from-zgly " + Q(dir / "in.zgly") + " --to-zgly " +
                            Q(dir / ("out" + std::to_string(finfBytes) + ".zgly")));
        EXPECT_EQ(r.Status, 0) << r.Err;
    }
    EXPECT_EQ(FileBytes(dir / "out8.zgly"), FileBytes(dir / "out20.zgly"));
    EXPECT_EQ(FileBytes(dir / "out8.zgly").size(), 112u);

    PutFile(dir / "far.zgly", OneCellFont(20, {0, 2}));
    r = RunCli(dir, "convert --from-zgly " + Q(dir / "far.zgly") + " --to-zgly " + Q(dir / "out2.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "ZGLY File Error:\n Glyph index(=2) of code 0x0042 is beyond the glyph cells(=1)\n");
}
