// The command line as people type it: near misses named, help per command,
// choice words in any case, output names checked, cancels and closed pipes.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "cli_runner.h"

namespace {

const std::string Cli = std::string(GLYPHWRIGHT_BIN_DIR) + "/glyphwright-cli";

// The signals the process catches, from /proc: set once its handler is in.
bool Catches(pid_t pid, int signal) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("SigCgt:", 0) == 0) return (std::stoull(line.substr(7), nullptr, 16) >> (signal - 1)) & 1;
    return false;
}

// Starts glyphwright-cli with stderr on `err`; returns its pid.
pid_t Start(const std::vector<std::string>& args, int err) {
    pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(err, 2);
        std::vector<char*> argv{const_cast<char*>(Cli.c_str())};
        for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        ::execv(Cli.c_str(), argv.data());
        ::_exit(127);
    }
    return pid;
}

}  // namespace

TEST(CliTyping, NearMissesAreNamedInOneLineAndAHint) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly");
    WriteText(dir / "R.toml", "[[font]]\nfrom-zgly = \"in.zgly\"\nto-zgy = \"o.zgly\"\n");
    // {arguments, the problem; the hint names the command}
    const std::pair<std::string, std::string> cases[] = {
        {"", "no command given"},
        {"convert --from-zgly a", "convert needs an output (--to-zgly or --to-bmp)"},
        {"convert --from-zgly a --to-zgly b --rotation 45", "--rotation takes 0|90|180|270, not '45'"},
        {"convert --quiet=1 --from-zgly a --to-zgly b", "--quiet takes no value"},
        {"convert --from-zgly a --to-bmp b --to-order o --cell 8x8 --margins 1,1", "--cell and --margins exclude each other"},
        {"convert font.ttf --to-zgly o",
         "'font.ttf' is not an option. convert needs an input (--from-zgly, --from-bmp, --from-font or --from-lc) and "
         "an output (--to-zgly or --to-bmp), each followed by its file or face"},
        {"convert --from-zgly a --from-bmp b --to-zgly o", "--from-bmp needs --from-order (source 2)"},
        {"convert --from-font F --size 9 --from-zgly a --colors 4 --to-zgly o",
         "--colors does not apply to this input (source 2)"},
        {"convert --from-zgly a --from-font F --to-zgly o", "--from-font needs exactly one of --size and --cell-height (source 2)"},
        {"convert --from-zgly a --to-zgly o --range 0x41-0x40", "--range '0x41-0x40' ends before it starts"},
        {"convert --from-zgly a --to-zgly o --range U+110000", "--range: 'U+110000' is beyond U+10FFFF"},
        {"convert --settings a.ini --settings=x.ini", "--settings is given twice"},
        {"convert --from-zgly a --to-zgly o --filter f.xllt --filter g.xllt", "--filter is given twice"},
        {"convert --to-zgl x.zgly", "unknown option '--to-zgl' (did you mean --to-zgly?)"},
        {"convert --from-zgly in.zgly --sise 16 --to-zgly o.zgly", "unknown option '--sise' (did you mean --size?)"},
        {"convert --from-zgly in.zgly --to-zgly o.zgly --encoding utf-9",
         "--encoding takes utf-8|utf-16|shift_jis|cp1252, not 'utf-9' (did you mean utf-8?)"},
        {"convert --from-zgly in.zgly --to-zgly o.zgly --frobnicate", "unknown option '--frobnicate'"},
        {"foo", "unknown command 'foo'"},
        {"buld", "unknown command 'buld' (did you mean build?)"},
        {"info --jsno in.zgly", "unknown option '--jsno' (did you mean --json?)"},
        {"list-fonts --jason", "unknown option '--jason' (did you mean --json?)"},
        {"check in.zgly --chars A --chars-encdng utf-8", "unknown option '--chars-encdng' (did you mean --chars-encoding?)"},  // two slips
        {"preview in.zgly --text A --out x.bmp", "--out needs a file name ending in .png, not 'x.bmp'"},
        {"preview in.zgly --text A --otu x.png", "unknown option '--otu' (did you mean --out?)"},
        {"convert --from-zgly in.zgly --to-bmp out.jpg --to-order ASCII",
         "--to-bmp needs a file name ending in .bmp or .png, not 'out.jpg'"},
        {"template --order ASCII --cell 8x8 --baseline 6 --out t.gif",
         "--out needs a file name ending in .bmp or .png, not 't.gif'"},
        {"template --order ASCII --cel 8x8", "unknown option '--cel' (did you mean --cell?)"},
        {"build --jobs 0 R.toml", "--jobs takes 1 to 256, not '0'"},
        {"build --jobs 257 R.toml", "--jobs takes 1 to 256, not '257'"},
        {"build -j0 R.toml", "--jobs takes 1 to 256, not '0'"},
        {"build --forse R.toml", "unknown option '--forse' (did you mean --force?)"},
        {"build R.toml", "R.toml:3: unknown key 'to-zgy' in [[font]] (did you mean to-zgly?)"},
    };
    for (const auto& [args, problem] : cases) {
        auto r = RunCli(dir, args, dir.Path().string());
        const std::string command = args.substr(0, args.find(' '));
        const bool known = !command.empty() && command != "foo" && command != "buld";
        // A recipe's problem is its own line, RECIPE:LINE: first.
        const std::string hint = problem.rfind("R.toml", 0) == 0 ? ""
                                 : "Try 'glyphwright-cli " + (known ? command + " " : "") + "--help'.\n";
        EXPECT_EQ(r.Status, 2) << args;
        EXPECT_EQ(r.Err, "glyphwright-cli: " + problem + "\n" + hint) << args;
        EXPECT_EQ(r.Out, "") << args;
    }
    // Checked before any work: nothing is written.
    EXPECT_FALSE(std::filesystem::exists(dir / "x.bmp") || std::filesystem::exists(dir / "out.jpg") ||
                 std::filesystem::exists(dir / "t.gif") || std::filesystem::exists(dir / "o.zgly"));
}

TEST(CliTyping, EveryCommandPrintsItsOwnHelp) {
    CScratchDir dir;
    for (const std::string command : {"build", "info", "check", "preview", "template", "list-orders", "list-fonts"}) {
        for (const char* flag : {"--help", "-h"}) {
            auto r = RunCli(dir, command + " " + flag);
            EXPECT_EQ(r.Status, 0) << command << flag;
            EXPECT_EQ(r.Out.rfind("usage: glyphwright-cli " + command + " ", 0), 0u) << command << flag << r.Out;
            EXPECT_EQ(r.Err, "") << command << flag;
        }
    }
    EXPECT_EQ(RunCli(dir, "--version").Out, "glyphwright-cli 1.1.3\n");
    // convert's help is the whole help, with its examples; also after other options.
    auto r = RunCli(dir, "convert --from-zgly x --help");
    EXPECT_EQ(r.Status, 0);
    EXPECT_EQ(r.Out, RunCli(dir, "--help").Out);
}

TEST(CliTyping, ChoiceWordsAndJobsAsTyped) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly", {0x20, 95, 10});
    auto lower = RunCli(dir, "convert --from-zgly in.zgly --to-zgly a.zgly --encoding shift_jis --quiet", dir.Path().string());
    ASSERT_EQ(lower.Status, 0) << lower.Err;
    auto upper = RunCli(dir, "convert --from-zgly in.zgly --to-zgly b.zgly --encoding SHIFT_JIS --quiet", dir.Path().string());
    ASSERT_EQ(upper.Status, 0) << upper.Err;
    EXPECT_EQ(Slurp(dir / "a.zgly"), Slurp(dir / "b.zgly"));
    EXPECT_EQ(RunCli(dir, "convert --from-zgly in.zgly --to-zgly c.zgly --encoding UTF-8 --quiet", dir.Path().string()).Status, 0);
    // Grid names in any case, as the shipped orders are found.
    EXPECT_EQ(RunCli(dir, "convert --from-zgly in.zgly --to-bmp g.PNG --to-order ascii --quiet", dir.Path().string()).Status, 0);

    WriteText(dir / "R.toml", "[[font]]\nfrom-zgly = \"in.zgly\"\nto-zgly = \"r.zgly\"\n");
    for (const char* jobs : {"-j 1", "-j1", "--jobs=1"}) {
        std::filesystem::remove(dir / "r.zgly");
        auto r = RunCli(dir, std::string("build --force ") + jobs + " R.toml", dir.Path().string());
        EXPECT_EQ(r.Status, 0) << jobs << r.Err;
        EXPECT_TRUE(std::filesystem::exists(dir / "r.zgly")) << jobs;
    }
}

TEST(CliTyping, StylesMatchWithoutCaseAndSpacesAndAreListedWhenWrong) {
    CScratchDir dir;
    auto spaced = RunCli(dir, "convert --from-font 'DejaVu Sans' --style 'extra light' --size 12 --range 0x41 --to-zgly " +
                                  Q(dir / "a.zgly") + " --quiet");
    ASSERT_EQ(spaced.Status, 0) << spaced.Err;
    ASSERT_EQ(RunCli(dir, "convert --from-font 'DejaVu Sans' --style ExtraLight --size 12 --range 0x41 --to-zgly " +
                              Q(dir / "b.zgly") + " --quiet")
                  .Status,
              0);
    EXPECT_EQ(Slurp(dir / "a.zgly"), Slurp(dir / "b.zgly"));
    auto r = RunCli(dir, "convert --from-font 'DejaVu Sans' --style Heavy --size 12 --to-zgly " + Q(dir / "c.zgly"));
    EXPECT_EQ(r.Status, 1);
    EXPECT_EQ(r.Err.rfind("Parameter Error:\n Font(DejaVu Sans) has no style Heavy; its styles are Bold, ", 0), 0u) << r.Err;
    EXPECT_NE(r.Err.find(", ExtraLight, "), std::string::npos) << r.Err;
}

// A cancel says what became of the output, for Ctrl-C, SIGTERM and SIGHUP alike.
TEST(CliTyping, CancelSaysWhatBecameOfTheOutput) {
    CScratchDir dir;
    const std::pair<int, bool> runs[] = {{SIGINT, true}, {SIGTERM, false}, {SIGHUP, true}};  // {signal, output exists}
    for (const auto& [signal, exists] : runs) {
        const auto out = dir / "font.zgly";
        std::filesystem::remove(out);
        if (exists) WriteText(out, "old");
        const int err = ::open((dir / "err.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        // Every glyph of a large font: long enough to be cancelled midway.
        pid_t pid = Start({"convert", "--from-font", "IPAGothic", "--size", "24", "--levels", "16", "--to-zgly", out.string()},
                          err);
        ::close(err);
        for (int i = 0; i < 2000 && !Catches(pid, signal); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(5));
        ::kill(pid, signal);
        int status = 0;
        ASSERT_EQ(::waitpid(pid, &status, 0), pid);
        EXPECT_TRUE(signal == SIGINT ? WIFEXITED(status) && WEXITSTATUS(status) == 130
                                     : WIFSIGNALED(status) && WTERMSIG(status) == signal) << signal;
        const std::string err_text = Slurp(dir / "err.txt");
        const std::string said = "Cancelled; " + out.string() + (exists ? " was left as it was.\n" : " was not created.\n");
        EXPECT_EQ(err_text.substr(err_text.size() - std::min(err_text.size(), said.size())), said) << signal << err_text;
        EXPECT_EQ(exists ? Slurp(out) : "", exists ? "old" : "") << signal;
        EXPECT_EQ(std::filesystem::exists(out), exists) << signal;
    }
}

// A reader of stderr that went away (| head) does not end the run: the
// output is written and the status is that of the run.
TEST(CliTyping, ClosedStderrPipeDoesNotStopTheRun) {
    CScratchDir dir;
    auto in = MakeFont(dir, "in.zgly");
    int fds[2];
    ASSERT_EQ(::pipe(fds), 0);
    ::close(fds[0]);
    // Characters the font lacks: warnings on stderr before the file is written.
    pid_t pid = Start({"convert", "--from-zgly", in.string(), "--range", "0x3041-0x3096", "--to-zgly", (dir / "o.zgly").string()},
                      fds[1]);
    ::close(fds[1]);
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    auto r = RunCli(dir, "convert --from-zgly in.zgly --range 0x3041-0x3096 --to-zgly p.zgly", dir.Path().string());
    EXPECT_EQ(r.Status, 0);
    EXPECT_NE(r.Err.find("Warning: "), std::string::npos);
    EXPECT_EQ(Slurp(dir / "o.zgly"), Slurp(dir / "p.zgly"));
}
