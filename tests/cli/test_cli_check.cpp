// The coverage check a build runs against its game's text, and the list of
// characters a ZGLY file holds.
#include <gtest/gtest.h>

#include "cli_runner.h"

TEST(CliCheck, ListsWhatTheFontLacksWithItsFirstUse) {
    CScratchDir dir;
    // ASCII and the first four kana, U+3041 to U+3044.
    const auto font = MakeFont(dir, "f.zgly", {0x20, 95, 4});
    WriteText(dir / "ja.txt", "Start\r\n\xE3\x81\x82\xE3\x81\x84 \xE3\x81\x84\xE3\x81\x86\n\xF0\x9F\x98\x80\n");  // あい いう / 😀
    auto r = RunCli(dir, "check " + Q(font) + " --chars-file " + Q(dir / "ja.txt") + " --chars 'Caf\xC3\xA9' --range U+3040-U+3042");
    EXPECT_EQ(r.Status, 1);
    const std::string file = (dir / "ja.txt").string();
    EXPECT_EQ(r.Out, "U+3046\t\xE3\x81\x86\t" + file + ":2:5\n"
                     "U+1F600\t\xF0\x9F\x98\x80\t" + file + ":3:1\n"
                     "U+00E9\t\xC3\xA9\t--chars:1:4\n"
                     "U+3040\t\xE3\x81\x80\t--range U+3040-U+3042\n");
    EXPECT_EQ(r.Err, font.string() + " lacks 4 of the 14 characters checked.\n");

    r = RunCli(dir, "check " + Q(font) + " --chars-file " + Q(dir / "ja.txt") + " --json");
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Out, "{\"file\":\"" + font.string() + "\",\"checked\":9,\"missing\":[{\"code\":\"U+3046\",\"char\":"
                     "\"\xE3\x81\x86\",\"source\":\"" + file + "\",\"line\":2,\"column\":5},{\"code\":\"U+1F600\","
                     "\"char\":\"\xF0\x9F\x98\x80\",\"source\":\"" + file + "\",\"line\":3,\"column\":1}]}\n");

    // Everything there: status 0. Files are read as convert reads them: UTF-16, a UTF-8 byte-order
    // mark that is no character, the code page --chars-encoding names.
    WriteText(dir / "le.txt", std::string("\xFF\xFE" "A\0\x41\x30\n\0", 8));
    WriteText(dir / "bom.txt", "\xEF\xBB\xBF" "A~\n");
    WriteText(dir / "sjis.txt", "\x82\xA0\x82\xA2");  // あい
    for (auto [file, more, count] : {std::tuple{"le.txt", " --range 0x20-0x7E", 96}, {"bom.txt", "", 2},
                                     {"sjis.txt", " --chars-encoding shift_jis", 2}}) {
        r = RunCli(dir, "check " + Q(font) + " --chars-file " + Q(dir / file) + more);
        EXPECT_EQ(r.Status, 0) << file << r.Out << r.Err;
        EXPECT_EQ(r.Out, "");
        EXPECT_EQ(r.Err, font.string() + " lacks 0 of the " + std::to_string(count) + " characters checked.\n");
    }

    // Bad inputs: the reader's and the character options' messages, status 1; usage, status 2.
    r = RunCli(dir, "check " + Q(dir / "none.zgly") + " --chars a");
    EXPECT_EQ(r.Status, 1);
    EXPECT_NE(r.Err.find("none.zgly"), std::string::npos) << r.Err;
    r = RunCli(dir, "check " + Q(font) + " --chars-file " + Q(dir / "none.txt"));
    EXPECT_EQ(r.Err, "Parameter Error:\n Characters file(" + (dir / "none.txt").string() + ") does not exist.\n");
    for (const std::string& bad : {"check " + Q(font), std::string("check --chars a"), "check " + Q(font) + " --chars a --width 3"})
        EXPECT_EQ(RunCli(dir, bad).Status, 2) << bad;
}

TEST(CliCheck, InfoListsTheCharacters) {
    CScratchDir dir;
    const auto font = MakeFont(dir, "f.zgly", {0x41, 2, 1});
    auto r = RunCli(dir, "info " + Q(font) + " --chars");
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(r.Out, "U+0041\tA\nU+0042\tB\nU+3041\t\xE3\x81\x81\n");
    r = RunCli(dir, "info " + Q(font) + " --chars --json");
    EXPECT_EQ(r.Out, "{\"file\":\"" + font.string() + "\",\"chars\":[{\"code\":\"U+0041\",\"char\":\"A\"},"
                     "{\"code\":\"U+0042\",\"char\":\"B\"},{\"code\":\"U+3041\",\"char\":\"\xE3\x81\x81\"}]}\n");
    // A run limited to characters keeps the space.
    ASSERT_EQ(RunCli(dir, "convert --from-font 'DejaVu Sans' --size 12 --chars A --to-zgly " + Q(dir / "a.zgly")).Status, 0);
    EXPECT_EQ(RunCli(dir, "info " + Q(dir / "a.zgly") + " --chars").Out, "U+0020\t \nU+0041\tA\n");
}
