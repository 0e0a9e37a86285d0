// Nothing the user had is lost: failing, cancelled and killed writes leave the
// previous file and no temporary one; links stay links, FIFOs FIFOs; a replaced
// file keeps its permissions and owner.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <set>
#include <thread>

#include "bmpfont/bmp_font_writer.h"
#include "bmpfont/bmp_test_support.h"
#include "cli/cli_progress.h"
#include "core/conversion.h"
#include "core/headless_pg_ctrl.h"
#include "settings/settings_store.h"
#include "xmlfiles/test_support.h"
#include "zgly/binary_file.h"
#include "zgly/synthetic_font.h"
#include "zgly/zarnic_font_reader.h"
#include "zgly/zarnic_font_writer.h"

namespace fs = std::filesystem;

namespace {

std::string FileBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void Put(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

// The names in a directory, so that a left-over temporary file shows.
std::set<std::string> Names(const fs::path& dir) {
    std::set<std::string> names;
    for (const auto& e : fs::directory_iterator(dir)) names.insert(e.path().filename().string());
    return names;
}

struct stat Stat(const fs::path& path) {
    struct stat st {};
    ::lstat(path.c_str(), &st);
    return st;
}

// Runs `body` in a forked child under what the test process itself must not
// take on: no root (so that folder permissions apply) and a file size limit
// that fails large writes as a full disk does. The body's result, or -1.
int RunInChild(bool unprivileged, long fileSizeLimit, const std::function<int()>& body) {
    pid_t pid = ::fork();
    if (pid == 0) {
        if (fileSizeLimit > 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            rlimit r{static_cast<rlim_t>(fileSizeLimit), static_cast<rlim_t>(fileSizeLimit)};
            if (::setrlimit(RLIMIT_FSIZE, &r) != 0) ::_exit(90);
        }
        if (unprivileged && ::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(91);
        int code = 92;
        try {
            code = body();
        } catch (...) {
        }
        ::_exit(code);
    }
    int status = 0;
    return pid > 0 && ::waitpid(pid, &status, 0) == pid && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void WriteSourceFont(const fs::path& path) {
    SyntheticFontShape fontShape;
    fontShape.Codes = CodeRange(0x20, 95);
    WriteSyntheticZgly(*MakeSyntheticFont(fontShape), path);
}

// One whole conversion run from a ZGLY source to a ZGLY file or a glyph grid.
int Convert(const fs::path& source, const fs::path& target, CHeadlessPgCtrl& pg) {
    CTestFrontEnd ui;
    ui.MakeReader = [&] { return std::make_unique<CZarnicFontReader>(source); };
    ui.MakeWriter = [&]() -> std::unique_ptr<CFontWriter> {
        if (target.extension() == ".zgly")
            return std::make_unique<CZarnicFontWriter>(target, ZglyWriterOptions{});
        return std::make_unique<CBmpFontWriter>(target, GLYPHWRIGHT_TEST_DATA "/../data/xlor/ASCII.xlor", true, -1, -1, -1,
                                                -1, 1, 1);
    };
    return static_cast<int>(RunConversion(ui, pg));
}

// Saves the content through CBinaryFile; the error message, or "".
std::string Save(const fs::path& path, const std::string& content) {
    return ErrorOf([&] {
        CBinaryFile file(path);
        file.Open(CBinaryFile::Mode::Write);
        file.Write(content.data(), static_cast<uint32_t>(content.size()));
        file.Close();
    });
}

const std::string Old = "the user's previous file, which must survive";
const std::string New = "new content";
const int Finished = static_cast<int>(ConversionOutcome::Finished);

}  // namespace

// A run that fails half-way (no permission, a full disk) or is cancelled at any
// point keeps the previous file byte for byte and, without one, creates nothing.
TEST(NothingLost, FailedAndCancelledRunsKeepThePreviousFile) {
    CTempDir dir;
    fs::path source = dir / "source.zgly", out = dir / "out";
    WriteSourceFont(source);
    fs::create_directories(out);
    for (const char* name : {"out.zgly", "out.bmp"}) {
        SCOPED_TRACE(name);
        fs::path target = out / name;
        Put(target, Old);
        for (bool readOnly : {true, false}) {
            if (readOnly) ::chmod(out.c_str(), 0555);
            int outcome = RunInChild(readOnly, readOnly ? 0 : 1024, [&] {
                CHeadlessPgCtrl pg;
                return Convert(source, target, pg);
            });
            ::chmod(out.c_str(), 0755);
            EXPECT_EQ(outcome, static_cast<int>(ConversionOutcome::Failed)) << readOnly;
            EXPECT_EQ(FileBytes(target), Old) << readOnly;
            EXPECT_EQ(Names(out), std::set<std::string>{name}) << readOnly;
        }
        // Without the limit the run succeeds: the limit was what failed it.
        CHeadlessPgCtrl pg;
        ASSERT_EQ(Convert(source, out / "full", pg), Finished);
        EXPECT_GT(FileBytes(out / "full").size(), 1024u);
        fs::remove(out / "full");
        const int steps = pg.VisibleSteps;
        ASSERT_GT(steps, 2);
        for (bool withPrevious : {true, false}) {
            if (!withPrevious) fs::remove(target);
            // Early, late, and spread over the reading and the writing.
            for (int n = 1; n <= steps; n += std::max(1, steps / 25)) {
                CHeadlessPgCtrl cancel;
                cancel.CancelAtVisibleStep(n);
                ASSERT_EQ(Convert(source, target, cancel), static_cast<int>(ConversionOutcome::Canceled)) << n;
                EXPECT_EQ(Names(out), withPrevious ? std::set<std::string>{name} : std::set<std::string>{}) << n;
                EXPECT_EQ(FileBytes(target), withPrevious ? Old : "") << n;
            }
        }
    }
}

// A link is followed, not replaced: a symbolic link stays (even a dangling
// one), hard links keep sharing one file, a FIFO stays a FIFO.
TEST(NothingLost, LinksAndSpecialFilesStayWhatTheyAre) {
    CTempDir dir;
    fs::create_directories(dir / "real");
    fs::create_directories(dir / "out");
    Put(dir / "real" / "font.zgly", Old);
    fs::create_symlink("../real/font.zgly", dir / "out" / "link.zgly");
    fs::create_symlink("../real/new.zgly", dir / "out" / "dangling.zgly");
    Put(dir / "out" / "hard.zgly", Old);
    fs::create_hard_link(dir / "out" / "hard.zgly", dir / "real" / "hard2.zgly");
    for (const char* name : {"link.zgly", "dangling.zgly", "hard.zgly"}) EXPECT_EQ(Save(dir / "out" / name, New + name), "");
    EXPECT_EQ(fs::read_symlink(dir / "out" / "link.zgly"), "../real/font.zgly");
    EXPECT_EQ(FileBytes(dir / "real" / "font.zgly"), New + "link.zgly");
    EXPECT_TRUE(fs::is_symlink(dir / "out" / "dangling.zgly"));
    EXPECT_EQ(FileBytes(dir / "real" / "new.zgly"), New + "dangling.zgly");
    EXPECT_EQ(Stat(dir / "out" / "hard.zgly").st_ino, Stat(dir / "real" / "hard2.zgly").st_ino);
    EXPECT_EQ(FileBytes(dir / "real" / "hard2.zgly"), New + "hard.zgly");
    EXPECT_EQ(Names(dir / "out"), (std::set<std::string>{"dangling.zgly", "hard.zgly", "link.zgly"}));
    EXPECT_EQ(Names(dir / "real"), (std::set<std::string>{"font.zgly", "hard2.zgly", "new.zgly"}));

    fs::path fifo = dir / "out" / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = FileBytes(fifo); });
    EXPECT_EQ(Save(fifo, New), "");
    reader.join();
    EXPECT_EQ(received, New);
    EXPECT_TRUE(S_ISFIFO(Stat(fifo).st_mode));
}

// Writing in place (a writable file in a read-only folder, a hard-linked
// file) still leaves the old content whole when the save fails or is
// cancelled, and creates no file.
TEST(NothingLost, InPlaceSavesLoseNothing) {
    CTempDir dir;
    fs::path ro = dir / "ro";
    fs::create_directories(ro);
    Put(ro / "font.zgly", Old);
    Put(ro / "glyphwright.ini", "[Main]\nInput=2\n");
    ::chmod((ro / "font.zgly").c_str(), 0666);
    ::chmod((ro / "glyphwright.ini").c_str(), 0666);
    ::chmod(ro.c_str(), 0555);
    int saved = RunInChild(true, 0, [&] {
        CSettingsStore(ro / "glyphwright.ini").SetInt("Main", "Input", 3);
        return Save(ro / "font.zgly", New) == "" ? 0 : 1;
    });
    ::chmod(ro.c_str(), 0755);
    EXPECT_EQ(saved, 0);
    EXPECT_EQ(FileBytes(ro / "font.zgly"), New);
    EXPECT_EQ(FileBytes(ro / "glyphwright.ini"), "[Main]\nInput=3\n");
    EXPECT_EQ(Names(ro), (std::set<std::string>{"font.zgly", "glyphwright.ini"}));

    // A hard-linked file: a write that fails (a full disk) and a save dropped
    // before Close both keep the old content.
    fs::path a = dir / "a.zgly", b = dir / "b.zgly";
    Put(a, Old);
    fs::create_hard_link(a, b);
    const std::string big(8192, 'x');
    EXPECT_EQ(RunInChild(false, 4096, [&] { return Save(a, big) == "Can not write to a file (" + a.string() + ")." ? 0 : 1; }), 0);
    {
        CBinaryFile dropped(a);
        dropped.Open(CBinaryFile::Mode::Write);
        dropped.Write(big.data(), static_cast<uint32_t>(big.size()));
    }
    EXPECT_EQ(FileBytes(a), Old);
    EXPECT_EQ(FileBytes(b), Old);
    EXPECT_EQ(Stat(a).st_nlink, 2u);
    EXPECT_EQ(Names(dir.Dir), (std::set<std::string>{"a.zgly", "b.zgly", "ro"}));
}

// A replaced output keeps its permissions and owner; a new one gets the usual ones.
TEST(NothingLost, ReplacedFileKeepsModeAndOwner) {
    CTempDir dir;
    const bool root = ::geteuid() == 0;
    fs::path source = dir / "source.zgly";
    WriteSourceFont(source);
    const mode_t mask = ::umask(022);
    for (const char* name : {"font.zgly", "font.bmp"}) {
        fs::path path = dir / name;
        for (mode_t mode : {0600, 0640, 0604, 0755}) {
            Put(path, Old);
            ::chmod(path.c_str(), mode);
            ASSERT_EQ(root ? ::chown(path.c_str(), 1234, 4321) : 0, 0);
            const ino_t before = Stat(path).st_ino;
            CHeadlessPgCtrl pg;
            ASSERT_EQ(Convert(source, path, pg), Finished);
            EXPECT_NE(Stat(path).st_ino, before);  // replaced, not written over
            EXPECT_EQ(Stat(path).st_mode & 07777, mode) << name;
            EXPECT_EQ(Stat(path).st_uid, root ? 1234u : ::geteuid()) << name;
            EXPECT_EQ(Stat(path).st_gid, root ? 4321u : Stat(dir / "source.zgly").st_gid) << name;
        }
        fs::remove(path);
        CHeadlessPgCtrl pg;
        ASSERT_EQ(Convert(source, path, pg), Finished);
        EXPECT_EQ(Stat(path).st_mode & 07777, 0644u) << name;
    }
    ::umask(mask);
}

// Temporary files of this save's naming older than a minute are what a killed
// run left: the next save to the same path removes them, and no other file.
TEST(NothingLost, StaleTemporaryFilesAreRemoved) {
    CTempDir dir;
    const std::pair<const char*, bool> leftovers[] = {  // {name, removed}; all but the second are old
        {".font.zgly.Ab3dEf", true},  {".font.zgly.XyZ789", false}, {".font.zgly.Ab3dE", false},
        {".font.zgly.Ab3dEf7", false}, {".other.zgly.Ab3dEf", false}, {"font.zgly.Ab3dEf", false}};
    for (const auto& [name, removed] : leftovers) {
        Put(dir / name, "left over");
        if (std::string(name) != ".font.zgly.XyZ789")
            fs::last_write_time(dir / name, fs::file_time_type::clock::now() - std::chrono::minutes(2));
    }
    ASSERT_EQ(Save(dir / "font.zgly", New), "");
    for (const auto& [name, removed] : leftovers) EXPECT_EQ(fs::exists(dir / name), !removed) << name;
}

// SIGTERM and SIGHUP stop a command-line run as Ctrl-C does: the run ends
// through its cancel path, which removes its temporary file, and only then
// the program ends by that signal.
TEST(NothingLost, TerminationSignalsRemoveTheTemporaryFile) {
    for (int signal : {SIGTERM, SIGHUP, SIGINT}) {
        CTempDir dir;
        Put(dir / "font.zgly", Old);
        pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            CCliPgCtrl::InstallInterruptHandler();
            {
                CBinaryFile file(dir / "font.zgly");
                file.Open(CBinaryFile::Mode::Write);
                file.Write(New.data(), static_cast<uint32_t>(New.size()));
                ::kill(::getpid(), signal);
                CCliPgCtrl pg(stderr, true, false);
                if (!pg.IsCanceled()) ::_exit(3);
            }
            CCliPgCtrl::EndLikeTheInterruptingSignal();
            ::_exit(130);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(pid, &status, 0), pid);
        EXPECT_TRUE(signal == SIGINT ? WIFEXITED(status) && WEXITSTATUS(status) == 130
                                     : WIFSIGNALED(status) && WTERMSIG(status) == signal) << signal << ": " << status;
        EXPECT_EQ(FileBytes(dir / "font.zgly"), Old) << signal;
        EXPECT_EQ(Names(dir.Dir), std::set<std::string>{"font.zgly"}) << signal;
    }
}
