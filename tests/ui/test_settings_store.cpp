// The settings file, the path history and the field rules, without a window.
#include <cstdlib>

#include "ui/path_history.h"
#include "settings/settings_store.h"
#include "ui/zarnic_field_rules.h"
#include "window_fixture.h"

TEST(SettingsStore, WhereTheFileIs) {
    EXPECT_EQ(SettingsPathBesideProgram("/a.b/conv.exe"), "/a.b/conv.ini");
    CTempDir dir;
    setenv("GLYPHWRIGHT_SETTINGS", (dir / "sub/x.ini").c_str(), 1);
    EXPECT_EQ(ResolveSettingsPath("/usr/bin/glyphwright"), dir / "sub/x.ini");
    EXPECT_TRUE(std::filesystem::is_directory(dir / "sub"));
    unsetenv("GLYPHWRIGHT_SETTINGS");
    EXPECT_EQ(ResolveSettingsPath(dir / "glyphwright"), dir / "glyphwright.ini");
}

TEST(SettingsStore, ValuesReadBackAsWrittenAndOtherLinesSurvive) {
    CTempDir dir;
    WriteFileText(dir / "s.ini", "; comment\r\n[Other]\r\nKeep = \"quoted value\" \r\n\r\n[Main]\r\nOld=1\r\n");
    CSettingsStore s(dir / "s.ini");
    EXPECT_EQ(s.GetString("Other", "Keep"), "quoted value");
    s.SetInt("Main", "InputSelect", -2147483647 - 1);
    EXPECT_EQ(s.GetInt("main", "inputselect", 2), -2147483647 - 1);  // names ignore case
    EXPECT_TRUE(s.GetBool("Main", "Missing", true));
    // Non-ASCII as \XXXX; what the file's own trimming and quoting would eat survives.
    s.SetString("P", "Path", "C:\\fonts\\\xC3\xA9.bmp");
    EXPECT_NE(ReadFileText(s.Path).find("Path=C:\\\\fonts\\\\\\00E9.bmp"), std::string::npos);
    for (std::string value : {std::string("C:\\fonts\\\xC3\xA9.bmp"), std::string("tab\there\nline\rcr \xF0\x9F\x98\x80 end"),
                              std::string(300, 'x'), std::string(" "), std::string("trail "), std::string("\"quoted\""),
                              std::string("'single'"), std::string("\"")}) {
        s.SetString("P", "Edge", value);
        EXPECT_EQ(s.GetString("P", "Edge"), value);
    }
    EXPECT_EQ(s.GetString("P", "Missing", "Tahoma"), "Tahoma");
    for (auto [written, read] : {std::pair{"\\0041", "A"}, {"a\\qb", "aqb"}, {"end\\", "end"}, {"\\001Fx", "001Fx"}, {"\\41", "A"}})
        EXPECT_EQ(UnescapeSettingString(written), read) << written;
    std::string text = ReadFileText(s.Path);
    EXPECT_EQ(text.rfind("; comment", 0), 0u) << text;
    EXPECT_NE(text.find("Keep = \"quoted value\""), std::string::npos) << text;
    s.DeleteSection("main");
    EXPECT_EQ(s.GetInt("Main", "InputSelect", 9), 9);
    EXPECT_EQ(s.GetString("P", "Path"), "C:\\fonts\\\xC3\xA9.bmp");
}

TEST(PathHistory, CommitAndChooseFollowTheHistoryRules) {
    CTempDir dir;
    CSettingsStore s(dir / "s.ini");
    CPathHistory h(s, "OutBmpPath");
    h.Load();
    EXPECT_EQ(h.Entries(), std::vector<std::string>{std::filesystem::current_path().string()});
    h.Commit("/a");
    h.Commit("/a");
    EXPECT_EQ(h.Entries(), (std::vector<std::string>{"/a", std::filesystem::current_path().string()}));
    for (int i = 0; i < 11; ++i) h.Commit("/p" + std::to_string(i));
    EXPECT_EQ(h.Entries().size(), 13u);  // memory is not trimmed
    EXPECT_EQ(s.GetInt("OutBmpPath", "HistoryNum", 0), 10);
    EXPECT_EQ(s.GetString("OutBmpPath", "9"), "/p1");  // keys 0 to 9 only
    EXPECT_EQ(s.GetString("OutBmpPath", "10"), "");
    EXPECT_EQ(s.GetString("OutBmpPath", "Path"), "/p10");

    CPathHistory again(s, "OutBmpPath");
    again.Load();
    ASSERT_EQ(again.Entries().size(), 10u);
    // Choosing the third entry while another path is shown.
    ASSERT_TRUE(again.Select(2, "/typed"));
    EXPECT_EQ(std::vector<std::string>(again.Entries().begin(), again.Entries().begin() + 4),
              (std::vector<std::string>{"/p8", "/typed", "/p10", "/p9"}));
    EXPECT_EQ(s.GetString("OutBmpPath", "Path"), "/p8");
    EXPECT_FALSE(again.Select(40, "/x"));
    // An empty text is kept in memory but skipped when read back.
    again.Commit("");
    EXPECT_EQ(again.Entries()[0], "");
    CPathHistory third(s, "OutBmpPath");
    third.Load();
    EXPECT_EQ(third.Entries()[0], "/p8");
}

TEST(ZarnicFieldRules, SignedNumberFilter) {
    // {text, selection start, length, typed, accepted}: five characters at most, a minus only in front.
    const std::tuple<const char16_t*, int, int, char16_t, bool> cases[] = {
        {u"", 0, 0, u'-', true}, {u"-", 1, 0, u'5', true}, {u"5", 1, 0, u'-', false}, {u"-5", 0, 0, u'1', false},
        {u"-5", 0, 1, u'-', true}, {u"12345", 5, 0, u'6', false}, {u"-1234", 5, 0, u'5', false},
        {u"1234", 4, 0, u'5', true}, {u"12345", 0, 1, u'6', true}, {u"1", 1, 0, u'a', false}};
    for (const auto& [text, start, length, typed, accepted] : cases)
        EXPECT_EQ(AcceptSignedNumberChar(text, start, length, typed), accepted) << start << " " << static_cast<char>(typed);
}
