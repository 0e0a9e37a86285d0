#include <gtest/gtest.h>

#include <sys/stat.h>

#include "child_process.h"
#include "robustness_support.h"
#include "ui/settings_store.h"
#include "xmlfiles/test_support.h"

namespace fs = std::filesystem;

namespace {

const std::string Previous = "the user's previous file, which must survive";

struct OutputCase {
    OutputKind Kind;
    const char* Name;
};
const OutputCase Outputs[] = {{OutputKind::Zgly, "out.zgly"}, {OutputKind::Bmp, "out.bmp"}};

int Outcome(ConversionOutcome o) { return static_cast<int>(o); }

}  // namespace

// A write that fails half-way (no permission, a full disk) ends the run with a
// message and leaves the previous file byte for byte and no temporary file.
TEST(NothingLost, FailedWritesKeepThePreviousFile) {
    CTempDir dir;
    fs::path source = dir / "source.zgly";
    WriteSourceFont(source);
    fs::path out = dir / "out";
    fs::create_directories(out);
    for (const OutputCase& c : Outputs) {
        SCOPED_TRACE(c.Name);
        fs::path target = out / c.Name;
        std::ofstream(target, std::ios::binary) << Previous;

        // A read-only directory, then a full disk: every output is larger than
        // the size limit, so that failure comes from write().
        for (bool readOnly : {true, false}) {
            SCOPED_TRACE(readOnly ? "read-only directory" : "full disk");
            if (readOnly) ::chmod(out.c_str(), 0555);
            int outcome = RunInChild({readOnly, readOnly ? 0 : 1024}, [&] {
                CHeadlessPgCtrl pg;
                return Outcome(Convert(source, target, c.Kind, pg));
            });
            ::chmod(out.c_str(), 0755);
            EXPECT_EQ(outcome, Outcome(ConversionOutcome::Failed));
            EXPECT_EQ(FileBytes(target), Previous);
            EXPECT_EQ(Names(out), std::set<std::string>{c.Name});
        }

        // The same run without the limit succeeds: the limit was what failed it.
        CHeadlessPgCtrl pg;
        ASSERT_EQ(Convert(source, target, c.Kind, pg), ConversionOutcome::Finished);
        EXPECT_GT(FileBytes(target).size(), 1024u);
        EXPECT_EQ(Names(out), std::set<std::string>{c.Name});
        fs::remove(target);
    }
}

// Cancelling at any point of a run keeps the previous file and, without one,
// creates nothing.
TEST(NothingLost, CancelledRunsKeepThePreviousFileAndCreateNothing) {
    CTempDir dir;
    fs::path source = dir / "source.zgly";
    WriteSourceFont(source);
    fs::path out = dir / "out";
    fs::create_directories(out);
    for (const OutputCase& c : Outputs) {
        SCOPED_TRACE(c.Name);
        fs::path target = out / c.Name;
        CHeadlessPgCtrl pg;
        ASSERT_EQ(Convert(source, out / "full", c.Kind, pg), ConversionOutcome::Finished);
        fs::remove(out / "full");
        int steps = pg.VisibleSteps;
        ASSERT_GT(steps, 2);
        for (bool withPrevious : {true, false}) {
            if (withPrevious) std::ofstream(target, std::ios::binary) << Previous;
            // Early, late, and spread over the reading and the writing.
            for (int n = 1; n <= steps; n += std::max(1, steps / 25)) {
                CHeadlessPgCtrl cancel;
                cancel.CancelAtVisibleStep(n);
                ASSERT_EQ(Convert(source, target, c.Kind, cancel), ConversionOutcome::Canceled) << "step " << n;
                if (withPrevious) {
                    EXPECT_EQ(FileBytes(target), Previous) << "step " << n;
                    EXPECT_EQ(Names(out), std::set<std::string>{c.Name}) << "step " << n;
                } else {
                    EXPECT_TRUE(Names(out).empty()) << "step " << n;
                }
            }
            fs::remove(target);
        }
    }
}

// The settings file is replaced whole or not at all.
TEST(NothingLost, FailedSettingsWritesKeepThePreviousFile) {
    CTempDir dir;
    fs::path cfg = dir / "cfg";
    fs::create_directories(cfg);
    fs::path ini = cfg / "glyphwright.ini";
    const std::string before = "; kept\n[Main]\nInput=2\n[InWin]\nFace=IPAGothic\n";
    std::ofstream(ini, std::ios::binary) << before;
    std::string longValue(4096, 'x');

    ::chmod(cfg.c_str(), 0555);
    int readOnly = RunInChild({true, 0}, [&] {
        CSettingsStore(ini).SetString("Main", "Path", "y");
        return 0;
    });
    ::chmod(cfg.c_str(), 0755);
    EXPECT_EQ(readOnly, 0);
    EXPECT_EQ(FileBytes(ini), before);
    EXPECT_EQ(Names(cfg), std::set<std::string>{"glyphwright.ini"});

    int diskFull = RunInChild({false, 1024}, [&] {
        CSettingsStore(ini).SetString("Main", "Path", longValue);
        return 0;
    });
    EXPECT_EQ(diskFull, 0);
    EXPECT_EQ(FileBytes(ini), before);
    EXPECT_EQ(Names(cfg), std::set<std::string>{"glyphwright.ini"});

    CSettingsStore(ini).SetString("Main", "Path", longValue);
    EXPECT_EQ(CSettingsStore(ini).GetString("Main", "Path"), longValue);
    EXPECT_EQ(CSettingsStore(ini).GetString("InWin", "Face"), "IPAGothic");
    EXPECT_EQ(Names(cfg), std::set<std::string>{"glyphwright.ini"});
}

// Replacing an output keeps its permissions; a new one gets the usual ones.
TEST(NothingLost, ReplacedOutputsKeepTheirPermissions) {
    CTempDir dir;
    fs::path source = dir / "source.zgly";
    WriteSourceFont(source);
    const mode_t mask = ::umask(022);
    for (const OutputCase& c : Outputs) {
        fs::path target = dir / c.Name;
        for (mode_t mode : {0640, 0604}) {
            std::ofstream(target, std::ios::binary) << Previous;
            ::chmod(target.c_str(), mode);
            CHeadlessPgCtrl pg;
            ASSERT_EQ(Convert(source, target, c.Kind, pg), ConversionOutcome::Finished);
            struct stat st {};
            ASSERT_EQ(::stat(target.c_str(), &st), 0);
            EXPECT_EQ(st.st_mode & 07777, mode) << c.Name;
            EXPECT_NE(FileBytes(target), Previous);
        }
        fs::remove(target);
        CHeadlessPgCtrl pg;
        ASSERT_EQ(Convert(source, target, c.Kind, pg), ConversionOutcome::Finished);
        struct stat st {};
        ASSERT_EQ(::stat(target.c_str(), &st), 0);
        EXPECT_EQ(st.st_mode & 07777, 0644u) << c.Name;
    }
    ::umask(mask);
}
