#include <unistd.h>

#include <cstdlib>

#include "temp_dir.h"
#include "ui/path_history.h"
#include "ui/settings_store.h"
#include "ui/zarnic_field_rules.h"

TEST(SettingsStore, PathBesideProgramReplacesOnlyTheNamesExtension) {
    EXPECT_EQ(SettingsPathBesideProgram("/tools/conv.exe"), "/tools/conv.ini");
    EXPECT_EQ(SettingsPathBesideProgram("/a.b/conv"), "/a.b/conv.ini");
    EXPECT_EQ(SettingsPathBesideProgram("/home/u/.local/bin/glyphwright"), "/home/u/.local/bin/glyphwright.ini");
    EXPECT_EQ(SettingsPathBesideProgram("/opt/glyphwright"), "/opt/glyphwright.ini");
    EXPECT_EQ(SettingsPathBesideProgram("/opt/.glyphwright"), "/opt/.glyphwright.ini");
}

TEST(SettingsStore, EnvironmentNamesTheFileAndUnwritableDirectoryFallsBack) {
    CTempDir dir;
    setenv("GLYPHWRIGHT_SETTINGS", (dir / "sub/x.ini").c_str(), 1);
    EXPECT_EQ(ResolveSettingsPath("/usr/bin/glyphwright"), dir / "sub/x.ini");
    EXPECT_TRUE(std::filesystem::is_directory(dir / "sub"));
    unsetenv("GLYPHWRIGHT_SETTINGS");

    EXPECT_EQ(ResolveSettingsPath(dir / "glyphwright"), dir / "glyphwright.ini");
    if (::geteuid() != 0) {  // root writes everywhere
        setenv("XDG_CONFIG_HOME", (dir / "cfg").c_str(), 1);
        EXPECT_EQ(ResolveSettingsPath("/proc/glyphwright"), dir / "cfg/glyphwright/glyphwright.ini");
        unsetenv("XDG_CONFIG_HOME");
    }
}

TEST(SettingsStore, NumbersAndBooleansReadBackAsWritten) {
    CTempDir dir;
    CSettingsStore s(dir / "s.ini");
    EXPECT_FALSE(s.Exists());
    EXPECT_EQ(s.GetInt("Main", "InputSelect", 2), 2);
    s.SetInt("Main", "InputSelect", -2);
    s.SetInt("Main", "Big", -2147483647 - 1);
    EXPECT_TRUE(s.Exists());
    EXPECT_EQ(s.GetInt("Main", "InputSelect", 2), -2);
    EXPECT_EQ(s.GetInt("main", "inputselect", 2), -2);  // names ignore case
    EXPECT_EQ(s.GetInt("Main", "Big", 0), -2147483647 - 1);
    s.SetInt("Main", "UseFilter", -1);
    EXPECT_FALSE(s.GetBool("Main", "UseFilter", true));
    s.SetInt("Main", "UseFilter", 5);
    EXPECT_TRUE(s.GetBool("Main", "UseFilter", false));
    s.SetString("Main", "Text", "abc");
    EXPECT_EQ(s.GetInt("Main", "Text", 7), 0);
    EXPECT_FALSE(s.GetBool("Main", "Missing", false));
    EXPECT_TRUE(s.GetBool("Main", "Missing", true));
}

TEST(SettingsStore, StringsAreEscapedAndReadBackUnchanged) {
    CTempDir dir;
    CSettingsStore s(dir / "s.ini");
    std::string path = "C:\\fonts\\\xC3\xA9.bmp";
    s.SetString("P", "Path", path);
    EXPECT_NE(ReadFileText(s.Path).find("Path=C:\\\\fonts\\\\\\00E9.bmp"), std::string::npos);
    EXPECT_EQ(s.GetString("P", "Path"), path);

    std::string odd = "tab\there\nline\rcr \xF0\x9F\x98\x80 end";  // a character beyond 16 bits too
    s.SetString("P", "Odd", odd);
    EXPECT_EQ(s.GetString("P", "Odd"), odd);
    std::string longText(300, 'x');
    s.SetString("P", "Long", longText);
    EXPECT_EQ(s.GetString("P", "Long"), longText);
    EXPECT_EQ(s.GetString("P", "Missing", "Tahoma"), "Tahoma");
    // What the file's own trimming and quoting would eat.
    for (std::string edge : {" ", " lead", "trail ", "\"quoted\"", "'single'", "\""}) {
        s.SetString("P", "Edge", edge);
        EXPECT_EQ(s.GetString("P", "Edge"), edge);
    }
}

TEST(SettingsStore, HandWrittenValuesUnescapeLeniently) {
    EXPECT_EQ(UnescapeSettingString("\\0041"), "A");
    EXPECT_EQ(UnescapeSettingString("a\\qb"), "aqb");
    EXPECT_EQ(UnescapeSettingString("end\\"), "end");
    EXPECT_EQ(UnescapeSettingString("\\001Fx"), "001Fx");  // below 32: only the backslash goes
    EXPECT_EQ(UnescapeSettingString("\\41"), "A");          // cut short by the end of the text
    EXPECT_EQ(EscapeSettingString("a\\b\t"), "a\\\\b\\t");
}

TEST(SettingsStore, UnknownLinesSurviveAndSectionsCanBeDeleted) {
    CTempDir dir;
    WriteFileText(dir / "s.ini", "; comment\r\n[Other]\r\nKeep = \"quoted value\" \r\n\r\n[Main]\r\nOld=1\r\n");
    CSettingsStore s(dir / "s.ini");
    EXPECT_EQ(s.GetString("Other", "Keep"), "quoted value");
    s.SetInt("Main", "New", 3);
    s.SetInt("Main", "Old", 2);
    s.SetString("Third", "K", "v");
    std::string text = ReadFileText(s.Path);
    EXPECT_NE(text.find("; comment"), std::string::npos);
    EXPECT_NE(text.find("Keep = \"quoted value\""), std::string::npos);
    EXPECT_EQ(s.GetInt("Main", "Old", 0), 2);
    EXPECT_EQ(s.GetInt("Main", "New", 0), 3);
    s.DeleteSection("main");
    EXPECT_EQ(s.GetInt("Main", "Old", 9), 9);
    EXPECT_EQ(s.GetString("Third", "K"), "v");
    // Every write replaces the file whole; no temporary files stay behind.
    int files = 0;
    for (auto& e : std::filesystem::directory_iterator(dir.Dir)) files += e.is_regular_file();
    EXPECT_EQ(files, 1);
}

TEST(PathHistory, CommitAndChooseFollowTheHistoryRules) {
    CTempDir dir;
    CSettingsStore s(dir / "s.ini");
    CPathHistory h(s, "OutBmpPath");
    h.Load();
    ASSERT_EQ(h.Entries().size(), 1u);
    EXPECT_EQ(h.Entries()[0], std::filesystem::current_path().string());

    h.Commit("/a");
    h.Commit("/a");
    EXPECT_EQ(h.Entries(), (std::vector<std::string>{"/a", std::filesystem::current_path().string()}));
    for (int i = 0; i < 11; ++i) h.Commit("/p" + std::to_string(i));
    EXPECT_EQ(h.Entries().size(), 13u);  // memory is not trimmed
    EXPECT_EQ(s.GetInt("OutBmpPath", "HistoryNum", 0), 10);
    EXPECT_EQ(s.GetString("OutBmpPath", "9"), "/p1");  // keys 0 to 9 only
    EXPECT_EQ(s.GetString("OutBmpPath", "10"), "");
    EXPECT_EQ(s.GetString("OutBmpPath", "12"), "");
    EXPECT_EQ(s.GetString("OutBmpPath", "Path"), "/p10");

    CPathHistory again(s, "OutBmpPath");
    again.Load();
    ASSERT_EQ(again.Entries().size(), 10u);
    EXPECT_EQ(again.Entries()[0], "/p10");
    EXPECT_EQ(again.Entries()[9], "/p1");

    // Choosing the third entry while another path is shown.
    ASSERT_TRUE(again.Select(2, "/typed"));
    EXPECT_EQ(again.Entries()[0], "/p8");
    EXPECT_EQ(again.Entries()[1], "/typed");
    EXPECT_EQ(again.Entries()[2], "/p10");
    EXPECT_EQ(again.Entries()[3], "/p9");
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
    EXPECT_TRUE(AcceptSignedNumberChar(u"", 0, 0, u'-'));
    EXPECT_TRUE(AcceptSignedNumberChar(u"-", 1, 0, u'5'));
    EXPECT_FALSE(AcceptSignedNumberChar(u"5", 1, 0, u'-'));
    EXPECT_FALSE(AcceptSignedNumberChar(u"-5", 0, 0, u'1'));  // not in front of the minus
    EXPECT_FALSE(AcceptSignedNumberChar(u"-5", 0, 0, u'-'));
    EXPECT_TRUE(AcceptSignedNumberChar(u"-5", 0, 1, u'-'));   // replaces the selected start
    EXPECT_FALSE(AcceptSignedNumberChar(u"12345", 5, 0, u'6'));  // five characters at most
    EXPECT_TRUE(AcceptSignedNumberChar(u"1234", 4, 0, u'5'));
    EXPECT_TRUE(AcceptSignedNumberChar(u"-123", 4, 0, u'4'));
    EXPECT_FALSE(AcceptSignedNumberChar(u"-1234", 5, 0, u'5'));
    EXPECT_TRUE(AcceptSignedNumberChar(u"12345", 0, 1, u'6'));
    EXPECT_FALSE(AcceptSignedNumberChar(u"1", 1, 0, u'a'));
}
