// The build command: recipes refused with their line and key, outputs equal
// to separate convert runs, and the rules that decide what is rebuilt.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <map>
#include <sstream>

#include "cli_runner.h"

namespace fs = std::filesystem;

namespace {

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

// Its inputs: two ZGLY fonts with ASCII and a few kana, and the text file.
void WriteInputs(const CScratchDir& dir, const std::string& kana) {
    MakeFont(dir, "a.zgly", {.Kana = 20, .Seed = 1});
    MakeFont(dir, "b.zgly", {.Kana = 20, .Seed = 2});
    WriteText(dir / "kana.txt", kana);
}

}  // namespace

TEST(Build, RecipeRefusedWithItsLineAndKeyBeforeAnythingRuns) {
    const std::pair<std::string, std::string> cases[] = {  // {recipe, message after "glyphwright-cli: R:"}
        {"[[font]]\nfrom-zgly = \"a.zgly\"\ncolour = 3\nto-zgly = \"o.zgly\"\n", "3: unknown key 'colour' in [[font]]"},
        {"[[font]]\nfrom-zgly = \"a.zgly\"\n", "1: [[font]]: convert needs an output (--to-zgly or --to-bmp)"},
        // A complaint about one of several sources points into its own table.
        {"[[font]]\nto-zgly = \"o.zgly\"\n[[font.source]]\nbmp = \"a.bmp\"\nfrom-order = \"ASCII\"\n"
         "[[font.source]]\nbmp = \"b.bmp\"\n",
         "7: bmp: --from-bmp needs --from-order (source 2)"},
        {"[[font]]\nto-zgly = \"o.zgly\"\n[[font.source]]\nzgly = \"a.zgly\"\nbmp = \"b.bmp\"\n",
         "3: a [[font.source]] needs exactly one of font, bmp, zgly and lc"},
        {"[[font]]\nfrom-zgly = \"a.zgly\"\nto-zgly = \"o.zgly\"\n[[font]]\nfrom-zgly = \"b.zgly\"\nto-zgly = \"./o.zgly\"\n",
         "4: [[font]]: o.zgly is also the output of the font at line 1"},
        {"[[font]]\nfrom-zgly = \"a.zgly\"\nto-zgly = \"o.zgly\"\nsettings = \"none.ini\"\n",
         "4: settings: Parameter Error:  Settings file(DIR/none.ini) does not exist."},
        {"[[font]]\nto-zgly = \n", "2: "},  // TOML syntax: its line, the parser's words
    };
    CScratchDir dir;
    for (const auto& [recipe, message] : cases) {
        WriteText(dir / "R", recipe);
        auto r = RunCli(dir, "build " + Q(dir / "R"));
        std::string expected = "glyphwright-cli: " + (dir / "R").string() + ":" + message;
        if (auto at = expected.find("DIR/"); at != std::string::npos) expected.replace(at, 3, dir.Path().string());
        EXPECT_EQ(r.Status, 2) << recipe;
        EXPECT_EQ(message == "2: " ? r.Err.substr(0, expected.size()) : r.Err, message == "2: " ? expected : expected + "\n")
            << recipe;
        EXPECT_FALSE(fs::exists(dir / "o.zgly") || fs::exists(dir / ".R.state")) << recipe;
    }
    EXPECT_EQ(RunCli(dir, "build " + Q(dir / "missing.toml")).Err,
              "glyphwright-cli: " + (dir / "missing.toml").string() + ": no such recipe file\n");
}

// Every font equals its convert run byte for byte, whatever the parallelism;
// relative paths are the recipe's, not the caller's.
TEST(Build, OutputsEqualSeparateConvertRuns) {
    CScratchDir dir;
    WriteInputs(dir, "\xEF\xBB\xBFあいう\nABC\n");
    WriteText(dir / "game.toml", std::string(ThreeFonts) + R"(
[[font]]
name = "merged"
to-zgly = "out/merged.zgly"
range = ["U+3041-U+3043", 65]
# Characters that read like an option, and the font's own thread count, which
# the build caps at its share of the cores: the bytes stay those of convert.
chars = ["xyz", "--threads", "9"]
threads = 3
[[font.source]]
font = "DejaVu Sans"
size = 12
levels = 4
[[font.source]]
font = "IPAGothic"

[[font]]
settings = "window.ini"
to-zgly = "out/window.zgly"
)");
    // A window set-up: a ZGLY file re-encoded as UTF-8 turned by 90 degrees, as the first font.
    WriteText(dir / "window.ini", "[Main]\nInputSelect=1\nOutputSelect=1\n[InZarnicPath]\nPath=a.zgly\n"
                                  "[OutZarnic]\nEncoding=UTF-8\nRotation=90\n");
    const std::pair<std::string, std::string> refs[] = {
        {"a8.zgly", "--from-zgly a.zgly --to-zgly ref/a8.zgly --encoding utf-8 --rotation 90"},
        {"window.zgly", "--from-zgly a.zgly --to-zgly ref/window.zgly --encoding utf-8 --rotation 90"},
        {"kana.zgly", "--from-zgly b.zgly --to-zgly ref/kana.zgly --chars-file kana.txt"},
        {"b.bmp", "--from-zgly b.zgly --to-bmp ref/b.bmp --to-order ASCII --cell 14x18"},
        {"merged.zgly", "--from-font 'DejaVu Sans' --size 12 --levels 4 --from-font IPAGothic --to-zgly ref/merged.zgly "
                        "--range U+3041-U+3043 --range 65 --chars xyz --chars --threads --chars 9 --threads 1"}};
    fs::create_directories(dir / "ref");
    for (const auto& [name, args] : refs) ASSERT_EQ(RunCli(dir, "convert --quiet " + args, dir.Path().string()).Status, 0) << args;
    for (const char* jobs : {"1", "4"}) {
        fs::remove_all(dir / "out");
        auto r = RunCli(dir, "build --force --jobs " + std::string(jobs) + " " + Q(dir / "game.toml"));
        ASSERT_EQ(r.Status, 0) << r.Err;
        for (const auto& [name, args] : refs) {
            std::string built = Slurp(dir / "out" / name);
            EXPECT_FALSE(built.empty()) << name;
            EXPECT_EQ(built, Slurp(dir / "ref" / name)) << name << " with --jobs " << jobs;
        }
        EXPECT_NE(r.Err.find("build: 5 built, 0 up to date, 0 failed\n"), std::string::npos) << r.Err;
    }
}

TEST(Build, RebuildsOnlyWhatChanged) {
    CScratchDir dir;
    WriteInputs(dir, "あい");
    WriteText(dir / "glyphwright.toml", ThreeFonts);
    const std::vector<std::string> files = {"out/a8.zgly", "out/kana.zgly", "out/b.bmp", ".glyphwright.toml.state"};
    // The status word of each font in recipe order, then the summary; the recipe's default name.
    auto build = [&](const std::string& options, std::vector<std::string>* report) {
        auto r = RunCli(dir, "build --jobs 2 " + options, dir.Path().string());
        EXPECT_EQ(r.Status, 0) << options << "\n" << r.Err;
        std::istringstream in(r.Err);
        for (std::string line; report && std::getline(in, line);) {
            if (line.rfind("  ", 0) == 0) continue;
            const std::size_t at = line.find("a8.zgly") != std::string::npos ? 0 : line.find("kana") != std::string::npos ? 1
                                   : line.find("b.bmp") != std::string::npos ? 2 : 3;
            (*report)[at] = at == 3 ? line : line.substr(0, 12);
        }
        return r.Err;
    };
    const std::string no = "up to date  ", yes = "built       ";
    auto summary = [](int built, int upToDate) {
        return "build: " + std::to_string(built) + " built, " + std::to_string(upToDate) + " up to date, 0 failed";
    };
    std::vector<std::string> report(4);
    const struct {
        const char* What;
        std::function<void()> Change;
        std::string Options;
        std::vector<std::string> Report;
        std::vector<bool> Rewritten;  // per file of `files`
    } steps[] = {
        {"first run", [] {}, "", {yes, yes, yes, summary(3, 0)}, {true, true, true, true}},
        {"nothing changed", [] {}, "", {no, no, no, summary(0, 3)}, {false, false, false, false}},
        {"text file edited", [&] { WriteText(dir / "kana.txt", "あいう"); }, "", {no, yes, no, summary(1, 2)},
         {false, true, false, true}},
        {"text file rewritten unchanged", [&] { WriteText(dir / "kana.txt", "あいう"); }, "", {no, no, no, summary(0, 3)},
         {false, false, false, false}},
        {"a key changed",
         [&] {
             std::string text = ThreeFonts;
             WriteText(dir / "glyphwright.toml", text.replace(text.find("rotation = 90"), 13, "rotation = 180"));
         },
         "", {yes, no, no, summary(1, 2)}, {true, false, false, true}},
        {"a thread count added: the same bytes, nothing to do",
         [&] {
             std::string text = ThreeFonts;
             WriteText(dir / "glyphwright.toml", text.replace(text.find("rotation = 90"), 13, "rotation = 180\nthreads = 3"));
         },
         "", {no, no, no, summary(0, 3)}, {false, false, false, false}},
        {"an output removed", [&] { fs::remove(dir / "out/b.bmp"); }, "", {no, no, yes, summary(1, 2)},
         {false, false, true, false}},
        {"a source font replaced", [&] { MakeFont(dir, "b.zgly", {.Kana = 20, .Seed = 3}); }, "", {no, yes, yes, summary(2, 1)},
         {false, true, true, true}},
        {"forced", [] {}, "--force", {yes, yes, yes, summary(3, 0)}, {true, true, true, false}},
        {"dry run after a change", [&] { WriteText(dir / "kana.txt", "あ"); }, "--dry-run", {}, {false, false, false, false}},
    };
    std::string err;
    for (const auto& step : steps) {
        step.Change();
        auto before = Stamps(dir, files);
        report.assign(4, "");
        err = build(step.Options, step.Report.empty() ? nullptr : &report);
        EXPECT_EQ(report, step.Report.empty() ? std::vector<std::string>(4) : step.Report) << step.What << "\n" << err;
        auto after = Stamps(dir, files);
        for (std::size_t i = 0; i < files.size(); ++i)
            EXPECT_EQ(before[files[i]] != after[files[i]], step.Rewritten[i]) << step.What << ": " << files[i];
    }
    EXPECT_NE(err.find("would build kana\n  glyphwright-cli convert --from-zgly " + (dir / "b.zgly").string()),
              std::string::npos) << err;
}

// A failing font keeps its previous output and does not stop the others;
// its message sits under its own line.
TEST(Build, FailingFontAmongGoodOnes) {
    CScratchDir dir;
    WriteInputs(dir, "あい");
    WriteText(dir / "R.toml", ThreeFonts);
    ASSERT_EQ(RunCli(dir, "build " + Q(dir / "R.toml")).Status, 0);
    std::string previous = Slurp(dir / "out/kana.zgly");
    fs::remove(dir / "kana.txt");
    MakeFont(dir, "a.zgly", {.Kana = 20, .Seed = 5});
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
