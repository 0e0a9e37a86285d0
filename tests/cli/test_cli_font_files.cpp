// Fonts and text files as users have them: unreadable files, sizes no ZGLY
// holds, bitmap fonts at sizes or levels they lack, JIS-numbered bitmap
// fonts, empty selections and text files in other encodings.
#include <gtest/gtest.h>

#include <sstream>

#include "cli_runner.h"
#include "core/bit_stream.h"

namespace {

const std::string DejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

struct BdfChar {
    unsigned Code;
    const char* Rows;  // eight rows of two hex digits
};

// An 8-pixel BDF font in the given character set, one 8 x 8 cell a character.
std::string Bdf(const std::string& registry, const std::string& encoding, const std::vector<BdfChar>& chars) {
    std::ostringstream out;
    out << "STARTFONT 2.1\nFONT -test-GwJis-medium-r-normal--8-80-75-75-c-80-" << registry << "-" << encoding
        << "\nSIZE 8 75 75\nFONTBOUNDINGBOX 8 8 0 -1\nSTARTPROPERTIES 5\nPIXEL_SIZE 8\nFONT_ASCENT 7\nFONT_DESCENT 1\n"
        << "CHARSET_REGISTRY \"" << registry << "\"\nCHARSET_ENCODING \"" << encoding << "\"\nENDPROPERTIES\nCHARS "
        << chars.size() << "\n";
    for (const auto& c : chars) {
        out << "STARTCHAR c" << c.Code << "\nENCODING " << c.Code << "\nSWIDTH 1000 0\nDWIDTH 8 0\nBBX 8 8 0 -1\nBITMAP\n";
        for (int i = 0; i < 8; ++i) out << std::string(c.Rows + i * 2, 2) << "\n";
        out << "ENDCHAR\n";
    }
    out << "ENDFONT\n";
    return out.str();
}

std::string ToZgly(const CScratchDir& dir, const std::string& name = "o.zgly") { return " --to-zgly " + Q(dir / name); }

}  // namespace

TEST(CliFontFiles, UnreadableFilesAndOversizedCells) {
    CScratchDir dir;
    const std::string whole = Slurp(DejaVu);
    WriteText(dir / "trunc.ttf", whole.substr(0, 600));
    WriteText(dir / "garbage.ttf", "this is no font at all\n");
    const std::pair<std::string, std::string> cases[] = {
        {"--from-font " + Q(dir / "trunc.ttf") + " --size 16",
         "Font file(" + (dir / "trunc.ttf").string() + ") cannot be read as a font: unknown file format."},
        {"--from-font " + Q(dir / "garbage.ttf") + " --size 16",
         "Font file(" + (dir / "garbage.ttf").string() + ") cannot be read as a font: unknown file format."},
        {"--from-font 'DejaVu Sans' --cell-height 256", "Font Size(=256) out of range[1 ～ 255]"},
        {"--from-font 'DejaVu Sans' --size 4000", "Font Size(=4000) out of range[1 ～ 219]"},
    };
    for (const auto& [options, message] : cases) {
        auto r = RunCli(dir, "convert " + options + " --chars A" + ToZgly(dir));
        EXPECT_EQ(r.Status, 1) << options;
        EXPECT_EQ(r.Err, "Parameter Error:\n " + message + "\n") << options;
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "o.zgly"));
    // The ranges' upper edges render (a full stop keeps the baseline in a byte).
    for (const std::string size : {"--cell-height 255", "--size 219"}) {
        auto r = RunCli(dir, "convert --from-font 'DejaVu Sans' " + size + " --chars . --quiet" + ToZgly(dir));
        EXPECT_EQ(r.Status, 0) << size << r.Err;
    }
}

// A JIS X 0208 font's characters come out under their Unicode codes: あ is
// JIS 0x2422 and 亜 0x3021; the glyph at JIS 0x3042 is not U+3042.
TEST(CliFontFiles, BitmapFontsAtTheirOwnSizesLevelsAndCodes) {
    CScratchDir dir;
    const char* hollow = "FF818181818181FF";
    const char* cross = "1818FF1818FF1818";
    WriteText(dir / "jis.bdf", Bdf("JISX0208.1983", "0", {{0x2422, hollow}, {0x3021, cross}, {0x3042, "FFFFFFFFFFFFFFFF"}}));
    auto r = RunCli(dir, "convert --from-font " + Q(dir / "jis.bdf") + " --size 8 --chars 'あ亜い'" + ToZgly(dir));
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Err, "Warning: A char (' ': U+0020) included in the Filter is not include in the INPUT font.\n"
                     "Warning: A char ('い': U+3044) included in the Filter is not include in the INPUT font.\n"
                     "Wrote " + (dir / "o.zgly").string() + ": 2 glyphs, cell 8x8, 1 bit per pixel, 132 bytes, 2 warnings\n");
    auto font = ReadZgly(dir / "o.zgly");
    ASSERT_EQ(font->GlyphCount(), 2u);
    const CGlyph* a = font->FindGlyph(0x3042);
    const CGlyph* kanji = font->FindGlyph(0x4E9C);
    ASSERT_TRUE(a && kanji);
    auto row = [](const CGlyph* g, int y) { return PeekWideBits(g->Pixels.data(), static_cast<std::size_t>(y) * 8, 8); };
    EXPECT_EQ(row(a, 0), 0xFFu);
    EXPECT_EQ(row(a, 1), 0x81u);
    EXPECT_EQ(row(kanji, 2), 0xFFu);
    EXPECT_EQ(row(kanji, 0), 0x18u);

    // The size it has, in the measure asked; more levels than it has, told once.
    const std::pair<std::string, std::string> refused[] = {
        {"--size 12", "none of size 12; its sizes are 8."},
        {"--cell-height 9", "none of cell height 9; its cell heights are 8."},
    };
    for (const auto& [size, message] : refused) {
        r = RunCli(dir, "convert --from-font " + Q(dir / "jis.bdf") + " " + size + " --chars あ" + ToZgly(dir, "x.zgly"));
        EXPECT_EQ(r.Status, 1);
        EXPECT_EQ(r.Err, "Parameter Error:\n Font(" + (dir / "jis.bdf").string() + ") has bitmap strikes only and " + message + "\n");
    }
    r = RunCli(dir, "convert --from-font " + Q(dir / "jis.bdf") + " --cell-height 8 --levels 16 --chars 亜" + ToZgly(dir, "x.zgly"));
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Err.substr(0, r.Err.find('\n')), "Warning: Font(" + (dir / "jis.bdf").string() +
                                                   ") has bitmap strikes only: it is read at 1 bit per pixel (2 levels), not 16 levels.");
    EXPECT_NE(r.Err.find(", 1 bit per pixel, "), std::string::npos) << r.Err;

    // A character set without a table: one message, no output.
    WriteText(dir / "ksc.bdf", Bdf("KSC5601.1987", "0", {{0x2422, hollow}}));
    r = RunCli(dir, "convert --from-font " + Q(dir / "ksc.bdf") + " --size 8 --chars あ" + ToZgly(dir, "k.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n Font(" + (dir / "ksc.bdf").string() +
                         ") numbers its characters in KSC5601.1987-0, which can not be mapped to Unicode; fonts in "
                         "Unicode (ISO10646-1), ISO8859-1, JISX0208, JISX0201 or Microsoft-CP1252 can.\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "k.zgly"));
}

TEST(CliFontFiles, EmptySelectionsAreRefused) {
    CScratchDir dir;
    WriteText(dir / "empty.txt", "");
    WriteText(dir / "ends.txt", "\xEF\xBB\xBF\r\n\n");
    WriteText(dir / "abc.txt", "abc");
    const std::string font = "convert --from-font 'DejaVu Sans' --size 12 ";
    const std::string none = "Warning: Characters file(" + (dir / "empty.txt").string() + ") holds no character.\n";
    const std::string ends = "Warning: Characters file(" + (dir / "ends.txt").string() + ") holds no character.\n";
    const std::pair<std::string, std::string> cases[] = {
        {"--chars-file " + Q(dir / "empty.txt"),
         none + "Parameter Error:\n Nothing to convert: Characters file(" + (dir / "empty.txt").string() +
             ") holds no character but the space.\n"},
        {"--chars ' ' --chars-file " + Q(dir / "ends.txt") + " --range U+D800-U+DFFF",
         ends + "Parameter Error:\n Nothing to convert: the characters text( ), Characters file(" +
             (dir / "ends.txt").string() + ") and the range U+D800-U+DFFF hold no character but the space.\n"},
        {"--filter " + Q(dir / "ends.txt"),
         ends + "Parameter Error:\n Nothing to convert: Filter file(" + (dir / "ends.txt").string() +
             ") holds no character but the space.\n"},
    };
    for (const auto& [options, message] : cases) {
        auto r = RunCli(dir, font + options + ToZgly(dir));
        EXPECT_EQ(r.Status, 1) << options;
        EXPECT_EQ(r.Err, message) << options;
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "o.zgly"));
    // An empty file beside others only warns.
    auto r = RunCli(dir, font + "--chars-file " + Q(dir / "empty.txt") + " --chars-file " + Q(dir / "abc.txt") + ToZgly(dir));
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Err.substr(0, none.size()), none);
}

// A translator's file in UTF-16 (either byte order, with its mark), Shift_JIS
// or Windows-1252 gives the font its UTF-8 twin gives.
TEST(CliFontFiles, TextFilesInOtherEncodings) {
    CScratchDir dir;
    const std::string text = "Caf\xC3\xA9 \xE3\x81\x82\xE4\xBA\x9C\n";  // Café あ亜
    WriteText(dir / "utf8.txt", text);
    WriteText(dir / "le.txt", std::string("\xFF\xFE" "C\0a\0f\0\xE9\0 \0\x42\x30\x9C\x4E\n\0", 18));
    WriteText(dir / "be.txt", std::string("\xFE\xFF" "\0C\0a\0f\0\xE9\0 \x30\x42\x4E\x9C\0\n", 18));
    WriteText(dir / "sjis.txt", "Caf \x82\xA0\x88\x9F\r\n");
    WriteText(dir / "cp1252.txt", "Caf\xE9\n");
    const std::string run = "convert --from-font IPAGothic --size 12 --quiet --chars-file ";
    ASSERT_EQ(RunCli(dir, run + Q(dir / "utf8.txt") + ToZgly(dir, "utf8.zgly")).Status, 0);
    const std::string files[] = {"le.txt", "be.txt", "sjis.txt --chars-encoding shift_jis --chars é",
                                 "cp1252.txt --chars-encoding cp1252 --chars 'あ亜'"};
    for (const auto& file : files) {
        auto r = RunCli(dir, run + Q(dir / file.substr(0, file.find(' '))) + file.substr(std::min(file.size(), file.find(' '))) +
                                 ToZgly(dir, "other.zgly"));
        ASSERT_EQ(r.Status, 0) << file << r.Err;
        EXPECT_EQ(FileBytes(dir / "other.zgly"), FileBytes(dir / "utf8.zgly")) << file;
    }
    // Bytes that are not the encoding keep the byte-offset message.
    WriteText(dir / "odd.txt", std::string("\xFF\xFE" "A\0B", 5));
    WriteText(dir / "bad-sjis.txt", "ab\x82\x20");
    const std::pair<std::string, std::string> bad[] = {
        {Q(dir / "odd.txt"), "Characters file(" + (dir / "odd.txt").string() + ") is not valid UTF-16 (at byte offset 4)."},
        {Q(dir / "bad-sjis.txt") + " --chars-encoding shift_jis",
         "Characters file(" + (dir / "bad-sjis.txt").string() + ") is not valid Shift_JIS (at byte offset 2)."},
        {Q(dir / "sjis.txt"), "Characters file(" + (dir / "sjis.txt").string() + ") is not valid UTF-8 (at byte offset 4)."},
    };
    for (const auto& [options, message] : bad) {
        auto r = RunCli(dir, run + options + ToZgly(dir, "bad.zgly"));
        EXPECT_EQ(r.Status, 1) << options;
        EXPECT_EQ(r.Err, "Parameter Error:\n " + message + "\n") << options;
    }
    auto r = RunCli(dir, run + Q(dir / "utf8.txt") + " --chars-encoding latin1" + ToZgly(dir));
    EXPECT_EQ(r.Status, 2);
    EXPECT_NE(r.Err.find("--chars-encoding takes utf-8|utf-16|shift_jis|cp1252, not 'latin1'"), std::string::npos) << r.Err;
}

// --help, the man page and a recipe know the option.
TEST(CliFontFiles, CharsEncodingIsDocumentedAndTakenByRecipes) {
    CScratchDir dir;
    EXPECT_NE(RunCli(dir, "--help").Out.find("--chars-encoding utf-8|utf-16|shift_jis|cp1252"), std::string::npos);
    EXPECT_NE(Slurp(GLYPHWRIGHT_TEST_DATA "/../data/man/glyphwright-cli.1").find(".BI \\-\\-chars\\-encoding "),
              std::string::npos);
    WriteText(dir / "glyphwright.toml", "[[font]]\nto-zgly = \"a.zgly\"\nfrom-font = \"DejaVu Sans\"\nsize = 12\n"
                                        "chars-file = \"s.txt\"\nchars-encoding = \"shift_jis\"\n");
    auto r = RunCli(dir, "build --dry-run", dir.Dir.string());
    EXPECT_NE(r.Err.find("--chars-file " + (dir / "s.txt").string() + " --chars-encoding shift_jis\n"), std::string::npos)
        << r.Out << r.Err;
}
