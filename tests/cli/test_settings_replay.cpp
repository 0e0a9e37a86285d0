// convert --settings: a settings file of the window stands for the options
// of its selected tabs; options given besides it win.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "cli_runner.h"
#include "synthetic_font.h"

namespace fs = std::filesystem;

TEST(SettingsReplay, SameBytesAsTheEquivalentOptions) {
    CScratchDir dir;
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);
    WriteSyntheticZgly(*MakeSyntheticFont(fontSpec), dir / "in.zgly");
    const std::string zglyTab = "[Main]\nInputSelect=1\nOutputSelect=1\n[InZarnicPath]\nPath=" + (dir / "in.zgly").string() +
                                "\n[OutZarnicPath]\nPath=" + (dir / "s.zgly").string() +
                                "\n[OutZarnic]\nEncoding=UTF-8\nLineHeightUseDef=0\nLineHeight=21\n"
                                "DefaultLeftUseDef=1\nDefaultLeft=7\nAlterCharUseDef=0\nAlterChar=\\0021\nRotation=180\n";
    const std::string in = " --from-zgly " + Q(dir / "in.zgly");
    struct Case {
        std::string Ini, Extra, Equivalent;
        fs::path Out;
    };
    const Case cases[] = {
        // Fields left on "Use Default" give nothing; the others their values.
        {zglyTab, "", in + " --to-zgly " + Q(dir / "s.zgly") + " --encoding utf-8 --line-height 21 --alt-char '!' --rotation 180", dir / "s.zgly"},
        {zglyTab, "--encoding shift_jis --line-height=30",
         in + " --to-zgly " + Q(dir / "s.zgly") + " --encoding shift_jis --line-height 30 --alt-char '!' --rotation 180", dir / "s.zgly"},
        // The same kind of output keeps the file's other fields.
        {zglyTab, "--to-zgly " + Q(dir / "t.zgly"),
         in + " --to-zgly " + Q(dir / "t.zgly") + " --encoding utf-8 --line-height 21 --alt-char '!' --rotation 180", dir / "t.zgly"},
        // Another kind replaces the whole output.
        {zglyTab, "--to-bmp " + Q(dir / "t.bmp") + " --to-order ASCII",
         in + " --to-bmp " + Q(dir / "t.bmp") + " --to-order ASCII", dir / "t.bmp"},
        // A glyph grid in cells with an offset, no grid lines; the order by its stored file name.
        {"[Main]\nInputSelect=1\nOutputSelect=0\n[InZarnicPath]\nPath=" + (dir / "in.zgly").string() +
             "\n[OutBmpPath]\nPath=" + (dir / "s.bmp").string() +
             "\n[OutBmp]\nOrder=ASCII.xlor\nSizeType=1\nCenter=0\nWidth=15\nHeight=19\nLeft=2\nTop=1\nGrid=0\n",
         "", in + " --to-bmp " + Q(dir / "s.bmp") + " --to-order ASCII --cell 15x19 --offset 2,1 --no-grid", dir / "s.bmp"},
        // Margins: equal ones mirror the first two, the others are their own.
        {"[Main]\nInputSelect=1\n[InZarnicPath]\nPath=" + (dir / "in.zgly").string() + "\n[OutBmpPath]\nPath=" +
             (dir / "s.bmp").string() + "\n[OutBmp]\nOrder=ASCII.xlor\nSameMargin=0\nMarginLeft=1\nMarginTop=2\n"
             "MarginRight=3\nMarginBottom=4\n",
         "", in + " --to-bmp " + Q(dir / "s.bmp") + " --to-order ASCII --margins 1,2,3,4", dir / "s.bmp"},
        // The font tab with every field, as written by the window.
        {"[Main]\nInputSelect=2\nOutputSelect=1\n[InWin]\nName=DejaVu Sans\nSize=11\nbpp=3\nWidth=3\nFixed=9\n"
         "UseWinSize=0\nSoftAA=0\n[OutZarnicPath]\nPath=" + (dir / "s.zgly").string() + "\n",
         "", " --from-font 'DejaVu Sans' --cell-height 11 --levels 8 --width fixed --fixed-width 9 --no-soft-aa --to-zgly " +
                 Q(dir / "s.zgly"), dir / "s.zgly"},
        {"[Main]\nInputSelect=2\nOutputSelect=1\n[InWin]\nName=DejaVu Sans\nSize=11\n[OutZarnicPath]\nPath=" +
             (dir / "s.zgly").string() + "\n",
         "--size 13 --levels 4", " --from-font 'DejaVu Sans' --size 13 --levels 4 --to-zgly " + Q(dir / "s.zgly"), dir / "s.zgly"},
    };
    for (const Case& c : cases) {
        std::ofstream(dir / "w.ini", std::ios::binary) << c.Ini;
        auto r = RunCli(dir, "convert --quiet --settings " + Q(dir / "w.ini") + " " + c.Extra);
        ASSERT_EQ(r.Status, 0) << c.Extra << "\n" << r.Err;
        std::string replayed = Slurp(c.Out);
        fs::remove(c.Out);
        r = RunCli(dir, "convert --quiet" + c.Equivalent);
        ASSERT_EQ(r.Status, 0) << c.Equivalent << "\n" << r.Err;
        EXPECT_EQ(replayed, Slurp(c.Out)) << c.Ini << c.Extra;
        EXPECT_FALSE(replayed.empty());
    }
    auto r = RunCli(dir, "convert --settings " + Q(dir / "none.ini"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err, "Parameter Error:\n Settings file(" + (dir / "none.ini").string() + ") does not exist.\n");
    std::ofstream(dir / "w.ini", std::ios::binary) << "[Main]\nOutputSelect=1\n[OutZarnic]\nEncoding=EBCDIC\n";
    r = RunCli(dir, "convert --settings " + Q(dir / "w.ini"));
    EXPECT_EQ(r.Err, "Parameter Error:\n Outout encoding is not selected.\n");
    r = RunCli(dir, "convert --settings " + Q(dir / "w.ini") + " --settings=x.ini");
    EXPECT_EQ(r.Status, 2);
    EXPECT_EQ(r.Err.rfind("glyphwright-cli: --settings is given twice\n", 0), 0u);
}
