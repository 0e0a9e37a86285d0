// The build command: recipes refused with their line and key, outputs equal
// to separate convert runs, and the rules that decide what is rebuilt.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

#include <fstream>
#include <functional>
#include <sstream>
#include <map>
#include <string>

#include "cli_runner.h"
#include "synthetic_font.h"

namespace fs = std::filesystem;

namespace {

void WriteText(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// A ZGLY font with ASCII and a few kana: the inputs of the recipes below.
void MakeZgly(const fs::path& path, uint32_t seed) {
    SyntheticFontSpec fontSpec;
    fontSpec.Codes = CodeRange(0x20, 95);
    auto kana = CodeRange(0x3041, 20);
    fontSpec.Codes.insert(fontSpec.Codes.end(), kana.begin(), kana.end());
    fontSpec.Seed = seed;
    WriteSyntheticZgly(*MakeSyntheticFont(fontSpec), path);
}

// The nanosecond change time of each file: anything written gets a new one.
std::map<std::string, long long> Stamps(const CScratchDir& dir, const std::vector<std::string>& names) {
    std::map<std::string, long long> stamps;
    for (const auto& n : names) {
        struct stat st {};
        stamps[n] = ::stat((dir / n).c_str(), &st) == 0 ? st.st_ctim.tv_sec * 1000000000LL + st.st_ctim.tv_nsec : -1;
    }
    return stamps;
}

// Three fonts from two ZGLY inputs, one with its characters from a text file.
const char* ThreeFonts = R"([[font]]
from-zgly = "a.zgly"
to-zgly = "out/a8.zgly"
encoding = "utf-8"
rotation = 90

[[font]]
name = "kana"
to-zgly = "out/kana.zgly"
chars-file = "kana.txt"
[[font.source]]
zgly = "b.zgly"

[[font]]
from-zgly = "b.zgly"
to-bmp = "out/b.bmp"
to-order = "ASCII"
cell = [14, 18]
)";

}  // namespace

TEST(Build, RecipeRefusedWithItsLineAndKeyBeforeAnythingRuns) {
    struct Case {
        const char* Recipe;
        const char* Message;  // after "glyphwright-cli: R:"
    };
    const Case cases[] = {
        {"[[font]]\nfrom-zgly = \"a.zgly\"\ncolour = 3\nto-zgly = \"o.zgly\"\n", "3: unknown key 'colour' in [[font]]"},
        {"[[font]]\nfrom-font = \"DejaVu Sans\"\nsize = \"12\"\nto-zgly = \"o.zgly\"\n", "3: 'size' needs a whole number"},
        {"[[font]]\nfrom-zgly = \"a.zgly\"\nto-zgly = \"o.zgly\"\nno-grid = \"yes\"\n", "4: 'no-grid' needs true or false"},
        {"[[font]]\nto-zgly = \"o.zgly\"\nchars-file = [1, 2]\nfrom-zgly = \"a.zgly\"\n",
         "3: 'chars-file' needs a text or a list of texts"},
        {"[[font]]\nto-zgly = \"o.zgly\"\n[[font.source]]\nfont = \"DejaVu Sans\"\nsize = 12\nlevels = 3\n",
         "6: levels: --levels takes 2|4|8|16, not '3'"},
        {"[[font]]\nto-zgly = \"o.zgly\"\nencoding = \"latin1\"\nfrom-zgly = \"a.zgly\"\n",
         "3: encoding: --encoding takes utf-8|utf-16|shift_jis|cp1252, not 'latin1'"},
        {"[[font]]\nfrom-zgly = \"a.zgly\"\n", "1: [[font]]: convert needs an output (--to-zgly or --to-bmp)"},
        // A complaint about one of several sources points into its own table.
        {"[[font]]\nto-zgly = \"o.zgly\"\n[[font.source]]\nbmp = \"a.bmp\"\nfrom-order = \"ASCII\"\n"
         "[[font.source]]\nbmp = \"b.bmp\"\n",
         "7: bmp: --from-bmp needs --from-order (source 2)"},
        {"[[font]]\nto-zgly = \"o.zgly\"\n[[font.source]]\nzgly = \"a.zgly\"\nto-bmp = \"x.bmp\"\n",
         "5: 'to-bmp' belongs in [[font]], not [[font.source]]"},
        {"[[font]]\nto-zgly = \"o.zgly\"\nsize = 12\n[[font.source]]\nfont = \"DejaVu Sans\"\n",
         "3: 'size' belongs in the [[font.source]] tables of this font"},
        {"[[font]]\nto-zgly = \"o.zgly\"\n[[font.source]]\nzgly = \"a.zgly\"\nbmp = \"b.bmp\"\n",
         "3: a [[font.source]] needs exactly one of font, bmp, zgly and lc"},
        {"[[font]]\nfrom-zgly = \"a.zgly\"\nto-zgly = \"o.zgly\"\n[[font]]\nfrom-zgly = \"b.zgly\"\nto-zgly = \"./o.zgly\"\n",
         "4: [[font]]: o.zgly is also the output of the font at line 1"},
        {"[[font]]\nfrom-zgly = \"a.zgly\"\nto-bmp = \"o.bmp\"\nto-order = \"ASCII\"\ncell = \"8x8\"\nmargins = [1, 1]\n",
         "5: cell: --cell and --margins exclude each other"},
        {"[[font]]\nfrom-zgly = \"a.zgly\"\nto-zgly = \"o.zgly\"\nsettings = \"none.ini\"\n",
         "4: settings: Parameter Error:  Settings file(DIR/none.ini) does not exist."},
        {"fonts = 1\n", "1: unknown key 'fonts' (a recipe holds [[font]] tables)"},
        {"# nothing yet\n", "1: a recipe needs [[font]] tables"},
    };
    for (const Case& c : cases) {
        CScratchDir dir;
        WriteText(dir / "R", c.Recipe);
        auto r = RunCli(dir, "build " + Q(dir / "R"));
        std::string expected = "glyphwright-cli: " + (dir / "R").string() + ":" + c.Message + "\n";
        for (std::size_t at; (at = expected.find("DIR/")) != std::string::npos;)
            expected.replace(at, 3, dir.Path().string());
        EXPECT_EQ(r.Status, 2) << c.Recipe;
        EXPECT_EQ(r.Err, expected) << c.Recipe;
        EXPECT_FALSE(fs::exists(dir / "o.zgly") || fs::exists(dir / ".R.state")) << c.Recipe;
    }
    // A TOML syntax error names its line too.
    CScratchDir dir;
    WriteText(dir / "R", "[[font]]\nto-zgly = \n");
    auto r = RunCli(dir, "build " + Q(dir / "R"));
    EXPECT_EQ(r.Status, 2);
    EXPECT_EQ(r.Err.rfind("glyphwright-cli: " + (dir / "R").string() + ":2: ", 0), 0u) << r.Err;
    // Usage errors of build itself.
    EXPECT_EQ(RunCli(dir, "build --jobs 0 " + Q(dir / "R")).Err.rfind("glyphwright-cli: --jobs takes 1 to 256, not '0'\n", 0),
              0u);
    EXPECT_EQ(RunCli(dir, "build " + Q(dir / "missing.toml")).Err,
              "glyphwright-cli: " + (dir / "missing.toml").string() + ": no such recipe file\n");
}

// Every font equals its convert run byte for byte, whatever the parallelism;
// relative paths are the recipe's, not the caller's.
TEST(Build, OutputsEqualSeparateConvertRuns) {
    CScratchDir dir;
    MakeZgly(dir / "a.zgly", 1);
    MakeZgly(dir / "b.zgly", 2);
    WriteText(dir / "kana.txt", "\xEF\xBB\xBFあいう\nABC\n");
    std::string recipe = std::string(ThreeFonts) + R"(
[[font]]
name = "merged"
to-zgly = "out/merged.zgly"
range = ["U+3041-U+3043", 65]
chars = "xyz"
[[font.source]]
font = "DejaVu Sans"
size = 12
levels = 4
[[font.source]]
font = "IPAGothic"

[[font]]
settings = "window.ini"
to-zgly = "out/window.zgly"
)";
    WriteText(dir / "game.toml", recipe);
    // A window set-up: a ZGLY file re-encoded as UTF-8 turned by 90 degrees.
    WriteText(dir / "window.ini", "[Main]\nInputSelect=1\nOutputSelect=1\n[InZarnicPath]\nPath=a.zgly\n"
                                  "[OutZarnic]\nEncoding=UTF-8\nRotation=90\n");
    fs::create_directories(dir / "ref");
    auto ref = [&](const std::string& args) {
        auto r = RunCli(dir, "convert " + args + " --quiet");
        ASSERT_EQ(r.Status, 0) << args << "\n" << r.Err;
    };
    ref("--from-zgly " + Q(dir / "a.zgly") + " --to-zgly " + Q(dir / "ref/a8.zgly") + " --encoding utf-8 --rotation 90");
    ref("--from-zgly " + Q(dir / "b.zgly") + " --to-zgly " + Q(dir / "ref/kana.zgly") + " --chars-file " +
        Q(dir / "kana.txt"));
    ref("--from-zgly " + Q(dir / "b.zgly") + " --to-bmp " + Q(dir / "ref/b.bmp") + " --to-order ASCII --cell 14x18");
    ref("--from-font 'DejaVu Sans' --size 12 --levels 4 --from-font IPAGothic --to-zgly " + Q(dir / "ref/merged.zgly") +
        " --range U+3041-U+3043 --range 65 --chars xyz");
    for (const char* jobs : {"1", "4"}) {
        fs::remove_all(dir / "out");
        // Run from elsewhere: the recipe's folder is where its paths start.
        auto r = RunCli(dir, "build --force --jobs " + std::string(jobs) + " " + Q(dir / "game.toml"));
        ASSERT_EQ(r.Status, 0) << r.Err;
        for (const char* name : {"a8.zgly", "kana.zgly", "b.bmp", "merged.zgly"}) {
            std::string built = Slurp(dir / "out" / name);
            EXPECT_FALSE(built.empty()) << name;
            EXPECT_EQ(built, Slurp(dir / "ref" / name)) << name << " with --jobs " << jobs;
        }
        // The settings file's set-up is the first font's.
        EXPECT_EQ(Slurp(dir / "out/window.zgly"), Slurp(dir / "ref/a8.zgly"));
        EXPECT_NE(r.Err.find("build: 5 built, 0 up to date, 0 failed\n"), std::string::npos) << r.Err;
    }
}

TEST(Build, RebuildsOnlyWhatChanged) {
    CScratchDir dir;
    MakeZgly(dir / "a.zgly", 1);
    MakeZgly(dir / "b.zgly", 2);
    WriteText(dir / "kana.txt", "あい");
    WriteText(dir / "glyphwright.toml", ThreeFonts);
    const std::vector<std::string> files = {"out/a8.zgly", "out/kana.zgly", "out/b.bmp", ".glyphwright.toml.state"};
    // The recipe's default name, in the current folder.
    auto build = [&](const std::string& options = "") {
        std::string cmd = "cd " + Q(dir.Path()) + " && '" + GLYPHWRIGHT_BIN_DIR + "/glyphwright-cli' build --jobs 2 " +
                          options + " 2>" + Q(dir / "err.txt");
        CliResult r;
        int raw = std::system(cmd.c_str());
        r.Status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
        r.Err = Slurp(dir / "err.txt");
        return r;
    };
    auto lines = [&](const std::string& a, const std::string& b, const std::string& c, const std::string& summary) {
        return std::vector<std::string>{a + "out/a8.zgly", b + "kana", c + "out/b.bmp", summary};
    };
    // The status word of each font, in recipe order, and the summary.
    auto report = [&](const CliResult& r) {
        std::vector<std::string> found(4);
        std::istringstream in(r.Err);
        for (std::string line; std::getline(in, line);) {
            if (line.rfind("  ", 0) == 0) continue;
            if (line.find("a8.zgly") != std::string::npos) found[0] = line;
            else if (line.find("kana") != std::string::npos) found[1] = line;
            else if (line.find("b.bmp") != std::string::npos) found[2] = line;
            else found[3] = line;
        }
        return found;
    };
    auto r = build();
    ASSERT_EQ(r.Status, 0) << r.Err;
    EXPECT_EQ(report(r), lines("built       ", "built       ", "built       ", "build: 3 built, 0 up to date, 0 failed"));

    struct Step {
        const char* What;
        std::function<void()> Change;
        std::string Options;
        std::vector<std::string> Report;
        std::vector<bool> Rewritten;  // per file of `files`
    };
    const std::string upToDate = "up to date  ", built = "built       ";
    const Step steps[] = {
        {"nothing changed", [] {}, "", lines(upToDate, upToDate, upToDate, "build: 0 built, 3 up to date, 0 failed"),
         {false, false, false, false}},
        {"text file edited", [&] { WriteText(dir / "kana.txt", "あいう"); }, "",
         lines(upToDate, built, upToDate, "build: 1 built, 2 up to date, 0 failed"), {false, true, false, true}},
        {"text file rewritten unchanged", [&] { WriteText(dir / "kana.txt", "あいう"); }, "",
         lines(upToDate, upToDate, upToDate, "build: 0 built, 3 up to date, 0 failed"), {false, false, false, false}},
        {"a key changed",
         [&] {
             std::string text = ThreeFonts;
             text.replace(text.find("rotation = 90"), 13, "rotation = 180");
             WriteText(dir / "glyphwright.toml", text);
         },
         "", lines(built, upToDate, upToDate, "build: 1 built, 2 up to date, 0 failed"), {true, false, false, true}},
        {"an output removed", [&] { fs::remove(dir / "out/b.bmp"); }, "",
         lines(upToDate, upToDate, built, "build: 1 built, 2 up to date, 0 failed"), {false, false, true, false}},
        {"a source font replaced", [&] { MakeZgly(dir / "b.zgly", 3); }, "",
         lines(upToDate, built, built, "build: 2 built, 1 up to date, 0 failed"), {false, true, true, true}},
        {"forced", [] {}, "--force", lines(built, built, built, "build: 3 built, 0 up to date, 0 failed"),
         {true, true, true, false}},
        {"dry run after a change", [&] { WriteText(dir / "kana.txt", "あ"); }, "--dry-run", {}, {false, false, false, false}},
    };
    for (const Step& step : steps) {
        step.Change();
        auto before = Stamps(dir, files);
        r = build(step.Options);
        EXPECT_EQ(r.Status, 0) << step.What << "\n" << r.Err;
        if (!step.Report.empty()) {
            EXPECT_EQ(report(r), step.Report) << step.What << "\n" << r.Err;
        }
        auto after = Stamps(dir, files);
        for (std::size_t i = 0; i < files.size(); ++i)
            EXPECT_EQ(before[files[i]] != after[files[i]], step.Rewritten[i]) << step.What << ": " << files[i];
    }
    EXPECT_NE(r.Err.find("would build kana\n  glyphwright-cli convert --from-zgly " + (dir / "b.zgly").string()),
              std::string::npos)
        << r.Err;
}

// A failing font keeps its previous output and does not stop the others;
// its message sits under its own line.
TEST(Build, FailingFontAmongGoodOnes) {
    CScratchDir dir;
    MakeZgly(dir / "a.zgly", 1);
    MakeZgly(dir / "b.zgly", 2);
    WriteText(dir / "kana.txt", "あい");
    WriteText(dir / "R.toml", ThreeFonts);
    ASSERT_EQ(RunCli(dir, "build " + Q(dir / "R.toml")).Status, 0);
    std::string previous = Slurp(dir / "out/kana.zgly");
    fs::remove(dir / "kana.txt");
    MakeZgly(dir / "a.zgly", 5);
    auto r = RunCli(dir, "build --jobs 1 " + Q(dir / "R.toml"));
    EXPECT_EQ(r.Status, 1);
    // Fonts found up to date are reported first, the others as they end.
    const std::string head = "up to date  out/b.bmp\nbuilt       out/a8.zgly\n  Wrote " + (dir / "out/a8.zgly").string();
    const std::string tail = " bytes, 0 warnings\nfailed      kana\n  Parameter Error:\n   Characters file(" +
                             (dir / "kana.txt").string() + ") does not exist.\nbuild: 1 built, 1 up to date, 1 failed\n";
    EXPECT_EQ(r.Err.rfind(head, 0), 0u) << r.Err;
    EXPECT_EQ(r.Err.find(tail), r.Err.size() - tail.size()) << r.Err;
    EXPECT_EQ(Slurp(dir / "out/kana.zgly"), previous);
    // Still failing next time: a failed font is never taken as up to date.
    r = RunCli(dir, "build --quiet " + Q(dir / "R.toml"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err.rfind("failed      kana\n", 0), 0u) << r.Err;
}

// Whether the process catches Ctrl-C yet, and whether it has children running.
bool CatchesInterrupt(pid_t pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(in, line);)
        if (line.rfind("SigCgt:", 0) == 0) return (std::stoull(line.substr(7), nullptr, 16) >> (SIGINT - 1)) & 1;
    return false;
}

bool HasChildren(pid_t pid) {
    std::string p = "/proc/" + std::to_string(pid) + "/task/" + std::to_string(pid) + "/children";
    return !Slurp(p).empty();
}

// Ctrl-C stops every font: exit 130, earlier outputs kept, no partial file.
TEST(Build, InterruptLeavesNoPartialFile) {
    CScratchDir dir;
    WriteText(dir / "R.toml", R"([[font]]
name = "a"
from-font = "IPAGothic"
size = 120
levels = 16
to-zgly = "out/a.zgly"
[[font]]
name = "b"
from-font = "IPAGothic"
size = 110
levels = 16
to-zgly = "out/b.zgly"
)");
    // As soon as the build takes Ctrl-C over, and while its fonts are being made.
    for (bool whileMaking : {false, true}) {
        fs::create_directories(dir / "out");
        WriteText(dir / "out/a.zgly", "old");
        std::string program = std::string(GLYPHWRIGHT_BIN_DIR) + "/glyphwright-cli";
        std::string recipe = (dir / "R.toml").string();
        std::string err = (dir / "err.txt").string();
        pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            std::freopen(err.c_str(), "w", stderr);
            ::execl(program.c_str(), program.c_str(), "build", "--jobs", "2", recipe.c_str(), nullptr);
            ::_exit(127);
        }
        for (int waited = 0; waited < 10000 && !(whileMaking ? HasChildren(pid) : CatchesInterrupt(pid)); ++waited)
            ::usleep(1000);
        if (whileMaking) ::usleep(100 * 1000);
        ::kill(pid, SIGINT);
        int status = 0;
        ::waitpid(pid, &status, 0);
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 130) << whileMaking << "\n" << Slurp(dir / "err.txt");
        std::vector<std::string> left;
        for (const auto& e : fs::directory_iterator(dir / "out")) left.push_back(e.path().filename().string());
        EXPECT_EQ(left, std::vector<std::string>{"a.zgly"});
        EXPECT_EQ(Slurp(dir / "out/a.zgly"), "old");
        std::string text = Slurp(dir / "err.txt");
        EXPECT_EQ(text.substr(text.rfind("build: ")), "build: 0 built, 0 up to date, 0 failed, 2 cancelled\n") << text;
        EXPECT_FALSE(fs::exists(dir / ".R.toml.state"));
    }
}
