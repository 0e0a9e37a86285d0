#include <gtest/gtest.h>

#include <sys/stat.h>

#include "child_process.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "robustness_support.h"
#include "sources/lc_font_reader.h"
#include "xmlfiles/test_support.h"
#include "zgly/zgly_info.h"

namespace fs = std::filesystem;

namespace {

struct FileState {
    std::string Bytes;
    timespec Modified{};
};

FileState StateOf(const fs::path& path) {
    struct stat st {};
    ::stat(path.c_str(), &st);
    return FileState{FileBytes(path), st.st_mtim};
}

// The smallest LC Font variant (4 x 8 pixels, 10-byte records) with a few
// full-width letters and zeros after them.
std::string LcFile() {
    std::string bytes(7520, '\0');
    for (int i = 0; i < 26; ++i) {
        std::size_t at = static_cast<std::size_t>(i) * 10;
        bytes[at] = '\x82';
        bytes[at + 1] = static_cast<char>(0x60 + i);
        for (int y = 0; y < 8; ++y) bytes[at + 2 + y] = static_cast<char>(0x60 >> (y % 3));
    }
    return bytes;
}

}  // namespace

// Every reader opens its inputs for reading only: with the files read-only and
// the reader unprivileged every read succeeds, and afterwards the bytes, the
// modification times and the directory are as they were.
TEST(InputsUntouched, ReadingNeverModifiesAnInput) {
    CTempDir dir;
    fs::path zgly = dir / "font.zgly", bmp = dir / "grid.bmp", lc = dir / "font.lc";
    fs::path order = dir.Write("order.xlor", FileBytes(AsciiOrder()));
    fs::path filter = dir.Write("filter.xllt", "<letter-list version=\"1.0\"><body><letter>ABC</letter></body></letter-list>");
    WriteSourceFont(zgly);
    CHeadlessPgCtrl pg;
    ASSERT_EQ(Convert(zgly, bmp, OutputKind::Bmp, pg), ConversionOutcome::Finished);
    std::ofstream(lc, std::ios::binary) << LcFile();

    std::vector<fs::path> inputs{zgly, bmp, lc, order, filter};
    std::vector<FileState> before;
    for (const fs::path& p : inputs) {
        // An old time, so that any rewrite would show even within one clock tick.
        fs::last_write_time(p, fs::last_write_time(p) - std::chrono::hours(24));
        ::chmod(p.c_str(), 0444);
        before.push_back(StateOf(p));
    }
    std::set<std::string> names = Names(dir.Dir);

    int failures = RunInChild({true, 0}, [&] {
        CHeadlessPgCtrl pg;
        g_pPgCtrl = &pg;
        int failed = 0;
        auto attempt = [&](auto&& read) {
            try {
                read();
            } catch (...) {
                ++failed;
            }
        };
        CFontFilter all;
        attempt([&] {
            CZarnicFontReader r(zgly);
            r.CheckParameters();
            CFontData font;
            r.Read(font, all);
        });
        attempt([&] { DescribeZglyFile(zgly); });
        attempt([&] {
            CBmpFontReader r(bmp, order, 2);
            r.CheckParameters();
            CFontData font;
            r.Read(font, all);
        });
        attempt([&] {
            CLcFontReader r(lc, lc, false, true, false);
            r.CheckParameters();
            CFontData font;
            r.Read(font, all);
            if (!font.FindGlyph(u'Ａ')) throw 1;
        });
        attempt([&] {
            CGlyphOrder o;
            o.Load(order);
            CFontFilter f;
            f.Load(filter);
        });
        return failed;
    });
    EXPECT_EQ(failures, 0);
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        SCOPED_TRACE(inputs[i].filename().string());
        FileState after = StateOf(inputs[i]);
        EXPECT_EQ(after.Bytes, before[i].Bytes);
        EXPECT_EQ(after.Modified.tv_sec, before[i].Modified.tv_sec);
        EXPECT_EQ(after.Modified.tv_nsec, before[i].Modified.tv_nsec);
    }
    EXPECT_EQ(Names(dir.Dir), names);
}
