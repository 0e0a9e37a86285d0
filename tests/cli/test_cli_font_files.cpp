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

uint32_t Be32(const std::string& b, std::size_t at) {
    return static_cast<uint32_t>(static_cast<uint8_t>(b[at])) << 24 | static_cast<uint8_t>(b[at + 1]) << 16 |
           static_cast<uint8_t>(b[at + 2]) << 8 | static_cast<uint8_t>(b[at + 3]);
}

void PutBe32(std::string& b, std::size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) b[at + i] = static_cast<char>(v >> (24 - 8 * i));
}

// A font collection of the given TrueType files: each font's table directory,
// then its tables, with the offsets moved to where they now lie.
std::string MakeCollection(const std::vector<std::string>& fonts) {
    std::string out = std::string("ttcf") + std::string("\0\1\0\0", 4) + std::string(4 + 4 * fonts.size(), '\0');
    PutBe32(out, 8, static_cast<uint32_t>(fonts.size()));
    for (std::size_t f = 0; f < fonts.size(); ++f) {
        const std::string& font = fonts[f];
        const std::size_t tables = static_cast<uint8_t>(font[4]) << 8 | static_cast<uint8_t>(font[5]);
        const std::size_t directory = out.size();
        PutBe32(out, 12 + 4 * f, static_cast<uint32_t>(directory));
        out += font.substr(0, 12 + 16 * tables);
        for (std::size_t t = 0; t < tables; ++t) {
            const std::size_t record = 12 + 16 * t;
            while (out.size() % 4) out += '\0';
            PutBe32(out, directory + record + 8, static_cast<uint32_t>(out.size()));
            out += font.substr(Be32(font, record + 8), Be32(font, record + 12));
        }
    }
    return out;
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

    // The size it has, in the measure asked.
    const std::pair<std::string, std::string> refused[] = {
        {"--size 12", "none of size 12; its sizes are 8."},
        {"--cell-height 9", "none of cell height 9; its cell heights are 8."},
    };
    for (const auto& [size, message] : refused) {
        r = RunCli(dir, "convert --from-font " + Q(dir / "jis.bdf") + " " + size + " --chars あ" + ToZgly(dir, "x.zgly"));
        EXPECT_EQ(r.Status, 1);
        EXPECT_EQ(r.Err, "Parameter Error:\n Font(" + (dir / "jis.bdf").string() + ") has bitmap strikes only and " + message + "\n");
    }

    // JIS X 0201: half-width kana, and the yen sign where ASCII has the backslash; Windows-1252: the euro at 0x80.
    const struct {
        const char *Registry, *Encoding;
        std::vector<BdfChar> Chars;
        const char *Text, *Listed;
    } charsets[] = {
        {"JISX0201.1976", "0", {{0xB1, hollow}, {0x5C, cross}, {0x41, hollow}}, "'\xEF\xBD\xB1\xC2\xA5" "A\\'",
         "U+0041\tA\nU+00A5\t\xC2\xA5\nU+FF71\t\xEF\xBD\xB1\n"},
        {"Microsoft", "CP1252", {{0x80, hollow}, {0xE9, cross}}, "'\xE2\x82\xAC\xC3\xA9'", "U+00E9\t\xC3\xA9\nU+20AC\t\xE2\x82\xAC\n"},
    };
    for (const auto& c : charsets) {
        WriteText(dir / "x.bdf", Bdf(c.Registry, c.Encoding, c.Chars));
        r = RunCli(dir, "convert --from-font " + Q(dir / "x.bdf") + " --size 8 --quiet --chars " + c.Text + ToZgly(dir, "x.zgly"));
        ASSERT_EQ(r.Status, 0) << c.Registry << r.Err;
        EXPECT_EQ(RunCli(dir, "info --chars " + Q(dir / "x.zgly")).Out, c.Listed) << c.Registry;
    }

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

// The man page and a recipe know the options (the help is held to docs/cli.md by CliDocInStep).
TEST(CliFontFiles, NewOptionsAreDocumentedAndTakenByRecipes) {
    CScratchDir dir;
    const std::string man = Slurp(GLYPHWRIGHT_TEST_DATA "/../data/man/glyphwright-cli.1");
    for (const char* text : {".BI \\-\\-chars\\-encoding ", ".BI \\-\\-axis ", ".IB FILE.ttc # N", ".SS check\n", ".B info \\-\\-chars\n",
                             ".BI \\-\\-width \" glyph|keep-space|margin|fixed\"",
                             ".BI \\-\\-coverage \" alpha|luminance\""})
        EXPECT_NE(man.find(text), std::string::npos) << text;
    WriteText(dir / "glyphwright.toml", "[[font]]\nto-zgly = \"a.zgly\"\nfrom-font = \"DejaVu Sans\"\nsize = 12\n"
                                        "chars-file = \"s.txt\"\nchars-encoding = \"shift_jis\"\n");
    auto r = RunCli(dir, "build --dry-run", dir.Dir.string());
    EXPECT_NE(r.Err.find("--chars-file " + (dir / "s.txt").string() + " --chars-encoding shift_jis\n"), std::string::npos)
        << r.Out << r.Err;
}

// A face of a collection by path is the face by family name, byte for byte; a
// variable font's named instance is its axis values; wrong numbers list what
// there is.
TEST(CliFontFiles, CollectionFacesAndVariableInstances) {
    CScratchDir dir;
    const std::string bold = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";
    WriteText(dir / "dejavu.ttc", MakeCollection({Slurp(DejaVu), Slurp(bold)}));
    const std::string run = " --size 16 --levels 16 --chars 'Ag@' --quiet --to-zgly ";
    const std::pair<std::string, std::string> same[] = {
        {"--from-font " + Q(dir.Dir.string() + "/dejavu.ttc#1"), "--from-font 'DejaVu Sans' --style Bold"},
        {"--from-font " + Q(dir.Dir.string() + "/dejavu.ttc#0"), "--from-font 'DejaVu Sans'"},
        {"--from-font " + Q(dir.Dir.string() + "/dejavu.ttc"), "--from-font 'DejaVu Sans'"},
    };
    for (const auto& [byPath, byName] : same) {
        ASSERT_EQ(RunCli(dir, "convert " + byPath + run + Q(dir / "path.zgly")).Status, 0) << byPath;
        ASSERT_EQ(RunCli(dir, "convert " + byName + run + Q(dir / "name.zgly")).Status, 0) << byName;
        EXPECT_EQ(FileBytes(dir / "path.zgly"), FileBytes(dir / "name.zgly")) << byPath;
    }
    EXPECT_NE(FileBytes(dir / "path.zgly"), FileBytes(dir / "o.zgly"));
    auto r = RunCli(dir, "convert --from-font " + Q(dir.Dir.string() + "/dejavu.ttc#2") + run + Q(dir / "x.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n Font file(" + (dir / "dejavu.ttc").string() +
                         ") has faces #0 ～ #1; there is no face #2.\n");
    r = RunCli(dir, "convert --from-font " + Q(dir.Dir.string() + "/none.ttc#1") + run + Q(dir / "x.zgly"));
    EXPECT_EQ(r.Err, "Parameter Error:\n Font file(" + (dir / "none.ttc").string() + ") does not exist.\n");

    // Installed (a fontconfig set-up of the collection alone): list-fonts shows
    // what to type, and the family's style found there is that face.
    std::filesystem::create_directory(dir / "fonts");
    std::filesystem::copy_file(dir / "dejavu.ttc", dir / "fonts" / "dejavu.ttc");
    WriteText(dir / "fonts.conf", "<?xml version=\"1.0\"?><fontconfig><dir>" + (dir / "fonts").string() +
                                      "</dir><cachedir>" + (dir / "cache").string() + "</cachedir></fontconfig>\n");
    struct FontConfigFile {
        explicit FontConfigFile(const std::filesystem::path& file) { setenv("FONTCONFIG_FILE", file.c_str(), 1); }
        ~FontConfigFile() { unsetenv("FONTCONFIG_FILE"); }
    };
    auto only = std::make_unique<FontConfigFile>(dir / "fonts.conf");
    r = RunCli(dir, "list-fonts");
    const std::string ttc = (dir / "fonts" / "dejavu.ttc").string();
    EXPECT_EQ(r.Out, "DejaVu Sans\tscalable\t\tBold,Book\t" + ttc + "#0," + ttc + "#1\n");
    EXPECT_NE(RunCli(dir, "list-fonts --json").Out.find("\"faces\":[\"" + ttc + "#0\",\"" + ttc + "#1\"]"),
              std::string::npos);
    ASSERT_EQ(RunCli(dir, "convert --from-font 'DejaVu Sans' --style Bold" + run + Q(dir / "name.zgly")).Status, 0);
    only.reset();
    ASSERT_EQ(RunCli(dir, "convert --from-font " + Q(ttc + "#1") + run + Q(dir / "path.zgly")).Status, 0);
    EXPECT_EQ(FileBytes(dir / "path.zgly"), FileBytes(dir / "name.zgly"));

    const std::string inter = "/usr/share/fonts/truetype/inter-vf/Inter.var.ttf";
    if (!std::filesystem::exists(inter)) GTEST_SKIP() << "fonts-inter-variable is not installed (scripts/setup.sh installs it)";
    const std::pair<std::string, std::string> instances[] = {
        {"--from-font Inter --style Bold", "--from-font " + inter + " --axis wght=700"},
        {"--from-font Inter --style 'Light Italic'", "--from-font " + inter + " --axis slnt=-10 --axis wght=300"},
    };
    for (const auto& [named, axes] : instances) {
        ASSERT_EQ(RunCli(dir, "convert " + named + run + Q(dir / "named.zgly")).Status, 0) << named;
        r = RunCli(dir, "convert " + axes + run + Q(dir / "axes.zgly"));
        ASSERT_EQ(r.Status, 0) << axes << r.Err;
        EXPECT_EQ(FileBytes(dir / "named.zgly"), FileBytes(dir / "axes.zgly")) << named << " / " << axes;
    }
    ASSERT_EQ(RunCli(dir, "convert --from-font " + inter + run + Q(dir / "default.zgly")).Status, 0);
    // Both ends of a range are in it.
    EXPECT_EQ(RunCli(dir, "convert --from-font " + inter + " --axis wght=900 --axis slnt=0" + run + Q(dir / "x.zgly")).Status, 0);
    EXPECT_NE(FileBytes(dir / "default.zgly"), FileBytes(dir / "axes.zgly"));
    const std::pair<std::string, std::string> wrong[] = {
        {"--from-font " + inter + " --axis wght=901", "Axis wght(=901) out of range[100 ～ 900]"},
        {"--from-font " + inter + " --axis slnt=0.5", "Axis slnt(=0.5) out of range[-10 ～ 0]"},
        {"--from-font " + inter + " --axis wdth=80",
         "Font(" + inter + ") has no axis wdth; its axes are wght 100 ～ 900, slnt -10 ～ 0."},
        {"--from-font 'DejaVu Sans' --axis wght=700", "Font(DejaVu Sans) is not a variable font; it has no axis wght."},
    };
    for (const auto& [options, message] : wrong) {
        r = RunCli(dir, "convert " + options + run + Q(dir / "x.zgly"));
        EXPECT_EQ(r.Status, 1) << options;
        EXPECT_EQ(r.Err, "Parameter Error:\n " + message + "\n") << options;
    }
    r = RunCli(dir, "convert --from-font Inter --axis wght" + run + Q(dir / "x.zgly"));
    EXPECT_EQ(r.Status, 2);
    EXPECT_NE(r.Err.find("--axis takes TAG=VALUE (as wght=700), not 'wght'"), std::string::npos) << r.Err;

    r = RunCli(dir, "list-fonts --json");
    EXPECT_NE(r.Out.find("\"axes\":[{\"tag\":\"wght\",\"min\":100,\"default\":400,\"max\":900},"
                         "{\"tag\":\"slnt\",\"min\":-10,\"default\":0,\"max\":0}]"),
              std::string::npos);
    EXPECT_NE(r.Out.find("\"instances\":[\"Black\",\"Black Italic\",\"Bold\","), std::string::npos);
}

// A later font takes the first one's width type and fixed width, as it takes
// its size and levels: its glyphs are those of its own run with them.
TEST(CliFontFiles, LaterFontsInheritTheWidthType) {
    CScratchDir dir;
    const std::string kana = " --chars 'Ag\xE3\x81\x82\xE3\x81\x84' --quiet --to-zgly ";
    for (const std::string width : {"--width margin", "--width fixed --fixed-width 20"}) {
        SCOPED_TRACE(width);
        ASSERT_EQ(RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --levels 4 " + width + " --from-font IPAGothic" +
                                  kana + Q(dir / "m.zgly")).Status, 0);
        ASSERT_EQ(RunCli(dir, "convert --from-font IPAGothic --size 16 --levels 4 " + width + kana + Q(dir / "i.zgly")).Status, 0);
        ASSERT_EQ(RunCli(dir, "convert --from-font IPAGothic --size 16 --levels 4" + kana + Q(dir / "k.zgly")).Status, 0);
        auto merged = ReadZgly(dir / "m.zgly"), own = ReadZgly(dir / "i.zgly"), keep = ReadZgly(dir / "k.zgly");
        for (char16_t c : std::u16string(u"\u3042\u3044")) {
            const CGlyph *g = merged->FindGlyph(c), *w = own->FindGlyph(c), *k = keep->FindGlyph(c);
            ASSERT_TRUE(g && w && k);
            EXPECT_TRUE(g->SameAs(*w)) << static_cast<int>(c);
            EXPECT_NE(g->LeftSpace + g->RightSpace, k->LeftSpace + k->RightSpace) << static_cast<int>(c);
        }
    }
    // Its own width type wins.
    ASSERT_EQ(RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --levels 4 --width margin --from-font IPAGothic "
                          "--width keep-space" + kana + Q(dir / "m.zgly")).Status, 0);
    EXPECT_TRUE(ReadZgly(dir / "m.zgly")->FindGlyph(0x3042)->SameAs(*ReadZgly(dir / "k.zgly")->FindGlyph(0x3042)));
    EXPECT_NE(RunCli(dir, "convert --help").Out.find("margin = the font's own side\n  bearings and advances; fixed = the ink centred"),
              std::string::npos);
}

// A colour bitmap font is drawn at the size asked, in grey levels from its
// coverage, also behind another font; never its strike's 1-bit silhouettes.
TEST(CliFontFiles, ColourFontsAtTheRequestedSizeInGreyLevels) {
    CScratchDir dir;
    if (!std::filesystem::exists("/usr/share/fonts/truetype/noto/NotoColorEmoji.ttf"))
        GTEST_SKIP() << "fonts-noto-color-emoji is not installed (scripts/setup.sh installs it)";
    const std::string emoji = " --chars '\xE2\x98\xBA\xE2\x99\xA5\xE2\x9C\x88\xE2\x9A\xBD'";  // ☺♥✈⚽
    // The bytes are fingerprinted: the strike's scale, its grey levels and the luminance weights all show.
    auto fingerprint = [](const std::filesystem::path& file) {
        uint32_t h = 2166136261u;
        for (uint8_t b : FileBytes(file)) h = (h ^ b) * 16777619u;
        return h;
    };
    for (const auto& [run, bytes] : std::initializer_list<std::pair<std::string, uint32_t>>{
             {"--from-font 'Noto Color Emoji' --size 16 --levels 16", 1427237160u},
             {"--from-font IPAGothic --cell-height 16 --levels 16 --range U+3042 --from-font 'Noto Color Emoji'", 2858719611u}}) {
        SCOPED_TRACE(run);
        auto r = RunCli(dir, "convert " + run + emoji + " --to-zgly " + Q(dir / "e.zgly"));
        ASSERT_EQ(r.Status, 0) << r.Err;
        EXPECT_EQ(fingerprint(dir / "e.zgly"), bytes);
        EXPECT_EQ(r.Err.find("Warning: Font("), std::string::npos) << r.Err;
    }
    // Luminance: the ball's white patches are paper, its black ones ink.
    auto inkOf = [&](const std::string& options, uint32_t bytes = 0) {
        auto r = RunCli(dir, "convert --from-font 'Noto Color Emoji' --size 32 --levels 16 " + options + emoji +
                                 " --quiet --to-zgly " + Q(dir / "l.zgly"));
        EXPECT_EQ(r.Status, 0) << r.Err;
        if (bytes) {
            EXPECT_EQ(fingerprint(dir / "l.zgly"), bytes) << options;
        }
        auto font = ReadZgly(dir / "l.zgly");
        const CGlyph* ball = font->FindGlyph(0x26BD);
        int sum = 0;
        for (int i = 0; i < ball->Ink.Width() * ball->Ink.Height(); ++i)
            sum += static_cast<int>(PeekWideBits(ball->Pixels.data(), static_cast<std::size_t>(i) * 4, 4));
        return sum;
    };
    const int alpha = inkOf("", 3952228195u), luminance = inkOf("--coverage luminance", 2564511309u);
    EXPECT_EQ(inkOf("--coverage alpha"), alpha);
    EXPECT_LT(luminance, alpha * 3 / 4);
    EXPECT_GT(luminance, alpha / 4);
    // Listed (and offered by the window) like an outline font: any size, any levels.
    EXPECT_NE(RunCli(dir, "list-fonts").Out.find("\nNoto Color Emoji\tscalable\t"), std::string::npos);
    auto r = RunCli(dir, "convert --from-font 'Noto Color Emoji' --size 300" + emoji + " --to-zgly " + Q(dir / "big.zgly"));
    EXPECT_EQ(r.Err, "Parameter Error:\n Font Size(=300) out of range[1 ～ 204]\n");
    r = RunCli(dir, "convert --from-font 'DejaVu Sans' --size 16 --coverage luminance --chars a --to-zgly " + Q(dir / "d.zgly"));
    EXPECT_EQ(r.Err.substr(0, r.Err.find('\n')),
              "Warning: Font(DejaVu Sans) has no colour bitmaps: luminance coverage changes nothing.");
}
