#include "core/conversion.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"
#include "bmpfont/bmp_test_support.h"

// The table below names only the fields a run changes.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace {

// What the test reader and writer do in one run.
struct Script {
    std::vector<uint16_t> Codes = {'C', 'A', 'B'};
    std::string ReaderCheckError, WriterCheckError, Warning;
    bool ReaderThrowsLibraryError = false, Read = false;
    std::vector<uint16_t> Written;
};

class CTestReader : public CFontReader {
public:
    explicit CTestReader(Script& s) : S(s) {}
    void CheckParameters() override {
        if (!S.ReaderCheckError.empty()) throw CGeneralException(S.ReaderCheckError);
    }
    void Read(CFontData& font, const CFontFilter& filter) override {
        S.Read = true;
        g_pPgCtrl->SetStatus(" Reading Test...");
        g_pPgCtrl->SetProgressRange(static_cast<int>(S.Codes.size()));
        font.Bpp.Set(1);
        for (uint16_t code : S.Codes) {
            g_pPgCtrl->StepProgress(1);
            if (filter.IsExcluded(code)) continue;
            auto g = std::make_unique<CGlyph>();
            g->Bpp = 1;
            g->Ink = InkBox{0, 0, 1, 1};
            g->Pixels = {0x80};
            font.AddGlyph(std::move(g), code);
        }
        if (S.ReaderThrowsLibraryError) throw std::runtime_error("disk gone");
        if (!S.Warning.empty()) ReportWarning(g_pPgCtrl, "%s", S.Warning);
    }
    Script& S;
};

class CTestWriter : public CFontWriter {
public:
    explicit CTestWriter(Script& s) : S(s) {}
    void CheckParameters() override {
        if (!S.WriterCheckError.empty()) throw CGeneralException(S.WriterCheckError);
    }
    void LoadGlyphOrder(CGlyphOrder&) override {}
    void Write(CFontData& font, const CGlyphOrder&) override {
        g_pPgCtrl->SetStatus(" Writing Test...");
        EXPECT_TRUE(font.CellWidth.Specified);  // prepared before writing
        for (const auto& g : font.GetGlyphs()) S.Written.push_back(g->Code);
    }
    Script& S;
};

}  // namespace

TEST(Conversion, OutcomesStatusesAndMessages) {
    using O = ConversionOutcome;
    const struct {
        const char* Name;
        Script Run;
        int CancelAt;
        O Outcome;
        std::string Error;  // the message window's text afterwards
        std::vector<std::string> Statuses;
        std::vector<uint16_t> Written;
    } cases[] = {
        {"plain", {}, 0, O::Finished, "",
         {" Prepairing...", " Order Loading...", " Reading Test...", " Writing Test...", " Finish"}, {'A', 'B', 'C'}},
        {"warning", {.Warning = "odd glyph 100%"}, 0, O::Finished, "", {}, {'A', 'B', 'C'}},
        {"reader check", {.ReaderCheckError = "Parameter Error:\n Font size(0)."}, 0, O::Failed,
         "Parameter Error:\n Font size(0).", {" Prepairing...", " Convert Error"}, {}},
        {"writer check", {.WriterCheckError = "Parameter Error:\n Bad alt."}, 0, O::Failed, "Parameter Error:\n Bad alt.", {}, {}},
        {"empty font", {.Codes = {}}, 0, O::Failed, "Parameter Error:\n No glyphs in output.", {}, {}},
        {"library error", {.ReaderThrowsLibraryError = true}, 0, O::Failed, "Internal Error:\n disk gone", {}, {}},
        {"cancel", {}, 2, O::Canceled, "", {" Prepairing...", " Order Loading...", " Reading Test...", " Canceled"}, {}},
    };
    CPgCtrl* const before = g_pPgCtrl;
    for (const auto& c : cases) {
        Script s = c.Run;
        CTestFrontEnd ui;
        CHeadlessPgCtrl pg;
        ui.MakeReader = [&] { return std::make_unique<CTestReader>(s); };
        ui.MakeWriter = [&] { return std::make_unique<CTestWriter>(s); };
        if (c.CancelAt) pg.CancelAtVisibleStep(c.CancelAt);
        EXPECT_EQ(RunConversion(ui, pg), c.Outcome) << c.Name;
        EXPECT_EQ(ui.Errors, c.Error.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.Error}) << c.Name;
        EXPECT_EQ(ui.Shown, !c.Error.empty()) << c.Name;
        EXPECT_EQ(pg.Warnings, s.Warning.empty() ? std::vector<std::string>{} : std::vector<std::string>{s.Warning});
        if (!c.Statuses.empty()) {
            EXPECT_EQ(pg.Statuses, c.Statuses) << c.Name;
        }
        const bool finished = c.Outcome == O::Finished;
        EXPECT_EQ(pg.Statuses.back(), finished ? " Finish" : c.Outcome == O::Failed ? " Convert Error" : " Canceled")
            << c.Name;
        EXPECT_EQ(s.Written, c.Written) << c.Name;
        EXPECT_EQ(ui.Commits, finished ? 2 : 0) << c.Name;  // the histories keep only paths that worked
        // Parameter errors come before reading.
        EXPECT_EQ(s.Read, finished || c.CancelAt || s.Codes.empty() || s.ReaderThrowsLibraryError) << c.Name;
        // The run hands the progress interface back, also when it failed or was cancelled.
        EXPECT_TRUE(pg.ProgressPos() == 0 && g_pPgCtrl == before) << c.Name;
    }
}

// Reporting never meets a null interface, and a scope left by an exception
// leaves no dangling one behind.
TEST(PgCtrlScope, SilentDefaultAndRestoredOnEveryWayOut) {
    CPgCtrl* const silent = g_pPgCtrl;
    ASSERT_NE(silent, nullptr);
    EXPECT_FALSE(silent->IsCanceled());
    ReportWarning(g_pPgCtrl, "nobody listens");
    CHeadlessPgCtrl outer, inner;
    {
        CPgCtrlScope a(outer);
        try {
            CPgCtrlScope b(inner);
            ReportWarning(g_pPgCtrl, "to inner");
            throw CGeneralException("x");
        } catch (const CGeneralException&) {
        }
        EXPECT_EQ(g_pPgCtrl, &outer);
    }
    EXPECT_EQ(g_pPgCtrl, silent);
    EXPECT_EQ(inner.Warnings, std::vector<std::string>{"to inner"});
    EXPECT_TRUE(outer.Warnings.empty());
}
