// Saving over what the user has: links stay links, FIFOs stay FIFOs, a file
// keeps its permissions and owner, a failed or cancelled save changes
// nothing, and no temporary file outlives its save.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "child_process.h"
#include "cli/cli_progress.h"
#include "core/general_exception.h"
#include "robustness_support.h"
#include "ui/settings_store.h"
#include "xmlfiles/test_support.h"
#include "zgly/binary_file.h"
#include "zgly/save_target.h"

namespace fs = std::filesystem;

namespace {

// Saves the content through CBinaryFile; the error message, or "".
std::string Save(const fs::path& path, const std::string& content) {
    try {
        CBinaryFile file(path);
        file.Open(CBinaryFile::Mode::Write);
        file.Write(content.data(), static_cast<uint32_t>(content.size()));
        file.Close();
    } catch (const CGeneralException& e) {
        return e.Message;
    }
    return "";
}

struct stat Stat(const fs::path& path) {
    struct stat st {};
    ::lstat(path.c_str(), &st);
    return st;
}

void Put(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

const std::string Old = "old content, longer than the new one";
const std::string New = "new content";

}  // namespace

// A link is followed, not replaced: a symbolic link stays (even a dangling
// one), hard links keep sharing one file, a FIFO stays a FIFO, and the
// settings file is saved the same way.
TEST(SaveTarget, LinksAndSpecialFilesStayWhatTheyAre) {
    CTempDir dir;
    fs::create_directories(dir / "real");
    fs::create_directories(dir / "out");

    Put(dir / "real" / "font.zgly", Old);
    fs::create_symlink("../real/font.zgly", dir / "out" / "link.zgly");
    fs::create_symlink("../real/new.zgly", dir / "out" / "dangling.zgly");
    Put(dir / "out" / "hard.zgly", Old);
    fs::create_hard_link(dir / "out" / "hard.zgly", dir / "real" / "hard2.zgly");
    for (const char* name : {"link.zgly", "dangling.zgly", "hard.zgly"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Save(dir / "out" / name, New + name), "");
    }
    EXPECT_TRUE(fs::is_symlink(dir / "out" / "link.zgly"));
    EXPECT_EQ(fs::read_symlink(dir / "out" / "link.zgly"), "../real/font.zgly");
    EXPECT_EQ(FileBytes(dir / "real" / "font.zgly"), New + "link.zgly");
    EXPECT_TRUE(fs::is_symlink(dir / "out" / "dangling.zgly"));
    EXPECT_EQ(FileBytes(dir / "real" / "new.zgly"), New + "dangling.zgly");
    EXPECT_EQ(Stat(dir / "out" / "hard.zgly").st_ino, Stat(dir / "real" / "hard2.zgly").st_ino);
    EXPECT_EQ(Stat(dir / "out" / "hard.zgly").st_nlink, 2u);
    EXPECT_EQ(FileBytes(dir / "real" / "hard2.zgly"), New + "hard.zgly");
    EXPECT_EQ(Names(dir / "out"), (std::set<std::string>{"dangling.zgly", "hard.zgly", "link.zgly"}));
    EXPECT_EQ(Names(dir / "real"), (std::set<std::string>{"font.zgly", "hard2.zgly", "new.zgly"}));

    // A FIFO gets the content as a stream and stays a FIFO.
    fs::path fifo = dir / "out" / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = FileBytes(fifo); });
    EXPECT_EQ(Save(fifo, New), "");
    reader.join();
    EXPECT_EQ(received, New);
    EXPECT_TRUE(S_ISFIFO(Stat(fifo).st_mode));
    EXPECT_EQ(Save("/dev/null", New), "");
    EXPECT_TRUE(S_ISCHR(Stat("/dev/null").st_mode));

    // The settings file behind a link.
    Put(dir / "real" / "glyphwright.ini", "[Main]\nInput=2\n");
    fs::create_symlink("../real/glyphwright.ini", dir / "out" / "glyphwright.ini");
    CSettingsStore(dir / "out" / "glyphwright.ini").SetString("Main", "Path", "p");
    EXPECT_TRUE(fs::is_symlink(dir / "out" / "glyphwright.ini"));
    EXPECT_EQ(FileBytes(dir / "real" / "glyphwright.ini"), "[Main]\nInput=2\nPath=p\n");
}

// Writing in place (a writable file in a read-only folder, a hard-linked
// file) still leaves the old content whole when the save fails or is
// cancelled, and creates no file.
TEST(SaveTarget, InPlaceSavesLoseNothing) {
    CTempDir dir;
    fs::path ro = dir / "ro";
    fs::create_directories(ro);
    Put(ro / "font.zgly", Old);
    Put(ro / "glyphwright.ini", "[Main]\nInput=2\n");
    ::chmod((ro / "font.zgly").c_str(), 0666);
    ::chmod((ro / "glyphwright.ini").c_str(), 0666);
    ::chmod(ro.c_str(), 0555);
    int saved = RunInChild({true, 0}, [&] {
        CSettingsStore(ro / "glyphwright.ini").SetInt("Main", "Input", 3);
        return Save(ro / "font.zgly", New) == "" ? 0 : 1;
    });
    ::chmod(ro.c_str(), 0755);
    EXPECT_EQ(saved, 0);
    EXPECT_EQ(FileBytes(ro / "font.zgly"), New);
    EXPECT_EQ(FileBytes(ro / "glyphwright.ini"), "[Main]\nInput=3\n");
    EXPECT_EQ(Names(ro), (std::set<std::string>{"font.zgly", "glyphwright.ini"}));

    // A hard-linked file: a write that fails (the size limit stands for a
    // full disk) and a save dropped before Close both keep the old content.
    fs::path a = dir / "a.zgly", b = dir / "b.zgly";
    Put(a, Old);
    fs::create_hard_link(a, b);
    const std::string big(8192, 'x');
    int failed = RunInChild({false, 4096}, [&] {
        return Save(a, big) == "Can not write to a file (" + a.string() + ")." ? 0 : 1;
    });
    EXPECT_EQ(failed, 0);
    // The new content complete, then no room for it in the target itself.
    int noRoom = RunInChild({}, [&] {
        CSaveTarget save(a);
        int fd = save.Begin();
        if (fd < 0 || ::pwrite(fd, big.data(), big.size(), 0) != static_cast<ssize_t>(big.size())) return 2;
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{4096, 4096};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return save.InPlace() && !save.Commit() ? 0 : 1;
    });
    EXPECT_EQ(noRoom, 0);
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

// A replaced file keeps its permissions and owner.
TEST(SaveTarget, ReplacedFileKeepsModeAndOwner) {
    CTempDir dir;
    const bool root = ::geteuid() == 0;
    for (mode_t mode : {0600, 0640, 0604, 0755}) {
        SCOPED_TRACE(mode);
        fs::path path = dir / "font.zgly";
        Put(path, Old);
        ::chmod(path.c_str(), mode);
        if (root) {
            ASSERT_EQ(::chown(path.c_str(), 1234, 4321), 0);
        }
        const ino_t before = Stat(path).st_ino;
        ASSERT_EQ(Save(path, New), "");
        EXPECT_EQ(FileBytes(path), New);
        EXPECT_NE(Stat(path).st_ino, before);  // replaced, not written over
        EXPECT_EQ(Stat(path).st_mode & 07777, mode);
        if (root) {
            EXPECT_EQ(Stat(path).st_uid, 1234u);
            EXPECT_EQ(Stat(path).st_gid, 4321u);
        }
        fs::remove(path);
    }
}

// Temporary files of this save's naming older than a minute are what a
// killed run left: the next save to the same path removes them, and no
// other file.
TEST(SaveTarget, StaleTemporaryFilesAreRemoved) {
    CTempDir dir;
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::minutes(2);
    struct Leftover {
        const char* Name;
        bool Old;
        bool Removed;
    };
    const Leftover leftovers[] = {
        {".font.zgly.Ab3dEf", true, true},    {".font.zgly.XyZ789", false, false}, {".font.zgly.Ab3dE", true, false},
        {".font.zgly.Ab3dEf7", true, false},  {".other.zgly.Ab3dEf", true, false}, {"font.zgly.Ab3dEf", true, false},
    };
    for (const Leftover& l : leftovers) {
        Put(dir / l.Name, "left over");
        if (l.Old) fs::last_write_time(dir / l.Name, longAgo);
    }
    ASSERT_EQ(Save(dir / "font.zgly", New), "");
    for (const Leftover& l : leftovers) EXPECT_EQ(fs::exists(dir / l.Name), !l.Removed) << l.Name;
}

// SIGTERM and SIGHUP stop a command-line run as Ctrl-C does: the run ends
// through its cancel path, which removes its temporary file, and only then
// the program ends by that signal.
TEST(SaveTarget, TerminationSignalsRemoveTheTemporaryFile) {
    for (int signal : {SIGTERM, SIGHUP, SIGINT}) {
        SCOPED_TRACE(signal);
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
        if (signal == SIGINT) {
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 130) << status;
        } else {
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        }
        EXPECT_EQ(FileBytes(dir / "font.zgly"), Old);
        EXPECT_EQ(Names(dir.Dir), std::set<std::string>{"font.zgly"});
    }
}
