#include "core/conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/headless_pg_ctrl.h"

namespace {

using Calls = std::vector<std::string>;

// What the test reader and writer do; each run's objects share it.
struct Script {
    Calls Log;
    std::vector<uint16_t> Codes = {'C', 'A', 'B'};
    std::vector<uint16_t> OrderCodes;  // the writer's glyph order, none when empty
    bool ReaderCheckFails = false;
    bool WriterCheckFails = false;
    bool CreateWriterFails = false;
    bool ReaderWarns = false;
    bool ReaderThrowsLibraryError = false;
    std::vector<uint16_t> Written;
    int Alive = 0;
};

class CTestReader : public CFontReader {
public:
    explicit CTestReader(Script& s) : S(s) { ++S.Alive; }
    ~CTestReader() override { --S.Alive; S.Log.push_back("~reader"); }
    void CheckParameters() override {
        S.Log.push_back("reader.Check");
        if (S.ReaderCheckFails) ThrowError("Parameter Error:\n Font size(%d) is out of range.", 0);
    }
    void Read(CFontData& font, const CFontFilter& filter) override {
        S.Log.push_back("reader.Read");
        g_pPgCtrl->SetStatus(" Reading Test...");
        g_pPgCtrl->ResetProgress();
        g_pPgCtrl->SetProgressRange(static_cast<int>(S.Codes.size()));
        font.Bpp.Set(1);
        for (uint16_t code : S.Codes) {
            g_pPgCtrl->StepProgress(1);
            if (filter.IsExcluded(code)) continue;
            auto g = std::make_unique<CGlyph>();
            g->Bpp = 1;
            g->Ink = InkBox{0, 0, 1, 1};
            g->Pixels = {0x80};
            g->Ascent = 1;
            g->RightExtent = 1;
            font.AddGlyph(std::move(g), code);
        }
        if (S.ReaderThrowsLibraryError) throw std::runtime_error("disk gone");
        if (S.ReaderWarns) ReportWarning(g_pPgCtrl, "%s", std::string("odd glyph 100%"));
    }

private:
    Script& S;
};

class CTestWriter : public CFontWriter {
public:
    explicit CTestWriter(Script& s) : S(s) { ++S.Alive; }
    ~CTestWriter() override { --S.Alive; S.Log.push_back("~writer"); }
    void CheckParameters() override {
        S.Log.push_back("writer.Check");
        if (S.WriterCheckFails) throw CGeneralException("Parameter Error:\n Invalid alternate character.");
    }
    void LoadGlyphOrder(CGlyphOrder& order) override {
        S.Log.push_back("writer.LoadGlyphOrder");
        if (S.OrderCodes.empty()) return;
        order.Codes = S.OrderCodes;
        order.Width = static_cast<int>(S.OrderCodes.size());
        order.Height = 1;
        order.Loaded = true;
    }
    void Write(CFontData& font, const CGlyphOrder&) override {
        S.Log.push_back("writer.Write");
        g_pPgCtrl->SetStatus(" Writing Test...");
        EXPECT_TRUE(font.CellWidth.Specified);  // prepared before writing
        for (const auto& g : font.GetGlyphs()) S.Written.push_back(g->Code);
    }

private:
    Script& S;
};

class CTestFrontEnd : public CConversionFrontEnd {
public:
    explicit CTestFrontEnd(Script& s) : S(s) {}
    void BeginRun() override { S.Log.push_back("BeginRun"); }
    void LockControls() override { S.Log.push_back("LockControls"); }
    void UnlockControls() override { S.Log.push_back("UnlockControls"); }
    void EndRun() override { S.Log.push_back("EndRun"); }
    bool UseFilter() override { return FilterChecked; }
    std::string FilterPathText() override { return FilterPath; }
    std::string CommitFilterPath() override {
        S.Log.push_back("CommitFilterPath");
        return FilterPath;
    }
    std::unique_ptr<CFontReader> CreateReader() override {
        S.Log.push_back("CreateReader");
        return std::make_unique<CTestReader>(S);
    }
    std::unique_ptr<CFontWriter> CreateWriter() override {
        S.Log.push_back("CreateWriter");
        if (S.CreateWriterFails) throw CGeneralException("Parameter Error:\n Output file is not selected.");
        return std::make_unique<CTestWriter>(S);
    }
    void CommitInputHistory() override { S.Log.push_back("CommitInputHistory"); }
    void CommitOutputHistory() override { S.Log.push_back("CommitOutputHistory"); }
    void ClearMessages() override {
        S.Log.push_back("ClearMessages");
        Text.clear();
    }
    void AppendError(const std::string& text) override {
        S.Log.push_back("AppendError");
        Text += text;
    }
    void ShowMessages() override {
        S.Log.push_back("ShowMessages");
        Shown = true;
    }
    bool MessagesShown() override { return Shown; }
    bool MessagesHaveText() override { return !Text.empty(); }
    void CloseMessages() override {
        S.Log.push_back("CloseMessages");
        Shown = false;
    }

    bool FilterChecked = false;
    std::string FilterPath;
    bool Shown = false;
    std::string Text;

private:
    Script& S;
};

// Warnings land in the message window, as the desktop window does it.
class CTestPgCtrl : public CHeadlessPgCtrl {
public:
    explicit CTestPgCtrl(CTestFrontEnd& ui) : Ui(ui) {}
    void AddWarning(const std::string& text) override {
        CHeadlessPgCtrl::AddWarning(text);
        Ui.Text += text;
        Ui.Shown = true;
    }

private:
    CTestFrontEnd& Ui;
};

class ConversionTest : public testing::Test {
protected:
    ConversionOutcome Run() {
        Pg.Statuses.clear();
        S.Log.clear();
        S.Written.clear();
        auto outcome = RunConversion(Ui, Pg);
        EXPECT_EQ(S.Alive, 0);  // reader and writer destroyed in every outcome
        EXPECT_EQ(Pg.ProgressPos(), 0);
        return outcome;
    }
    bool Called(const std::string& call) const { return std::ranges::find(S.Log, call) != S.Log.end(); }
    void ExpectError(const std::string& text) {
        EXPECT_EQ(Ui.Text, text);
        EXPECT_TRUE(Ui.Shown);
        EXPECT_EQ(Pg.Statuses.back(), " Convert Error");
        EXPECT_FALSE(Called("reader.Read"));
        EXPECT_FALSE(Called("CommitInputHistory"));
    }

    Script S;
    CTestFrontEnd Ui{S};
    CTestPgCtrl Pg{Ui};
};

TEST_F(ConversionTest, SuccessfulRun) {
    EXPECT_EQ(Run(), ConversionOutcome::Finished);
    EXPECT_EQ(Pg.Statuses, (Calls{" Prepairing...", " Order Loading...", " Reading Test...", " Writing Test...",
                                   " Finish"}));
    EXPECT_EQ(S.Log, (Calls{"BeginRun", "LockControls", "ClearMessages", "CreateReader", "CreateWriter",
                            "reader.Check", "writer.Check", "writer.LoadGlyphOrder", "reader.Read", "writer.Write",
                            "CommitInputHistory", "CommitOutputHistory", "~writer", "~reader", "UnlockControls",
                            "EndRun"}));
    EXPECT_EQ(S.Written, (std::vector<uint16_t>{'A', 'B', 'C'}));
    EXPECT_TRUE(Ui.Text.empty());
    EXPECT_EQ(g_pPgCtrl, nullptr);  // restored after the run

    // A writer's glyph order limits the characters read, without a filter file.
    S.OrderCodes = {'C', NoCode, 'A', 'Z'};
    EXPECT_EQ(Run(), ConversionOutcome::Finished);
    EXPECT_EQ(S.Written, (std::vector<uint16_t>{'A', 'C'}));
    EXPECT_TRUE(Pg.Warnings.empty());
}

TEST_F(ConversionTest, WarningsKeepTheWindowUntilACleanRun) {
    S.ReaderWarns = true;
    EXPECT_EQ(Run(), ConversionOutcome::Finished);
    EXPECT_EQ(Pg.Statuses.back(), " Finish");
    EXPECT_EQ(Pg.Warnings, (Calls{"odd glyph 100%"}));
    EXPECT_TRUE(Ui.Shown);
    EXPECT_FALSE(Called("CloseMessages"));

    S.ReaderWarns = false;
    EXPECT_EQ(Run(), ConversionOutcome::Finished);
    EXPECT_TRUE(Called("CloseMessages"));
    EXPECT_FALSE(Ui.Shown);
}

TEST_F(ConversionTest, ParameterErrorsComeBeforeReading) {
    S.ReaderCheckFails = true;
    EXPECT_EQ(Run(), ConversionOutcome::Failed);
    ExpectError("Parameter Error:\n Font size(0) is out of range.");
    EXPECT_FALSE(Called("writer.Check"));
    EXPECT_EQ(S.Log.back(), "EndRun");

    S.ReaderCheckFails = false;
    S.WriterCheckFails = true;
    Ui.Shown = false;
    EXPECT_EQ(Run(), ConversionOutcome::Failed);
    ExpectError("Parameter Error:\n Invalid alternate character.");
    EXPECT_TRUE(Called("reader.Check"));
    EXPECT_FALSE(Called("writer.LoadGlyphOrder"));
    const auto error = std::ranges::find(S.Log, "AppendError");
    EXPECT_LT(error, std::ranges::find(S.Log, "~writer"));

    S.WriterCheckFails = false;
    S.CreateWriterFails = true;
    EXPECT_EQ(Run(), ConversionOutcome::Failed);
    ExpectError("Parameter Error:\n Output file is not selected.");
    EXPECT_TRUE(Called("~reader"));
    EXPECT_FALSE(Called("ShowMessages"));  // already shown
}

TEST_F(ConversionTest, EmptyFontFailsBeforeWriting) {
    S.Codes.clear();
    EXPECT_EQ(Run(), ConversionOutcome::Failed);
    EXPECT_EQ(Ui.Text, "Parameter Error:\n No glyphs in output.");
    EXPECT_EQ(Pg.Statuses.back(), " Convert Error");
    EXPECT_FALSE(Called("writer.Write"));
    EXPECT_FALSE(Called("CommitOutputHistory"));

    S.Codes = {'A'};
    S.ReaderThrowsLibraryError = true;
    EXPECT_EQ(Run(), ConversionOutcome::Failed);
    EXPECT_EQ(Ui.Text, "Internal Error:\n disk gone");
    EXPECT_EQ(S.Log.back(), "EndRun");
}

TEST_F(ConversionTest, CancelDuringRead) {
    Pg.CancelAtVisibleStep(2);
    EXPECT_EQ(Run(), ConversionOutcome::Canceled);
    EXPECT_EQ(Pg.Statuses.back(), " Canceled");
    EXPECT_TRUE(Ui.Text.empty());
    EXPECT_FALSE(Called("AppendError"));
    EXPECT_FALSE(Called("writer.Write"));
    EXPECT_FALSE(Called("CommitInputHistory"));
    EXPECT_TRUE(Called("~writer"));
    Pg.ClearCancel();
}

TEST_F(ConversionTest, FilterPathProblems) {
    Ui.FilterChecked = true;
    EXPECT_EQ(Run(), ConversionOutcome::Failed);
    ExpectError("Parameter Error:\n \"Use Filter\" checked, but filter file path not specified.");
    EXPECT_EQ(Pg.Statuses, (Calls{" Prepairing...", " Order Loading...", " Filter Loading...", " Convert Error"}));
    EXPECT_TRUE(Called("CommitFilterPath"));

    // A missing file fails before the message window is cleared or a reader exists.
    const auto dir = std::filesystem::path(testing::TempDir()) / "glyphwright_conversion_test";
    std::filesystem::create_directories(dir);
    Ui.FilterPath = (dir / "100% missing.xllt").string();
    Ui.Text = "old text ";
    EXPECT_EQ(Run(), ConversionOutcome::Failed);
    ExpectError("old text Parameter Error:\n Filter file(" + Ui.FilterPath + ") not exists");
    EXPECT_FALSE(Called("ClearMessages"));
    EXPECT_FALSE(Called("CreateReader"));

    // An existing file that is no filter file fails while loading.
    Ui.FilterPath = (dir / "broken.xllt").string();
    std::ofstream(Ui.FilterPath) << "not a letter list";
    EXPECT_EQ(Run(), ConversionOutcome::Failed);
    EXPECT_EQ(Ui.Text.rfind("XML Error:", 0), 0u) << Ui.Text;
    EXPECT_FALSE(Called("reader.Read"));
    std::filesystem::remove_all(dir);
}

}  // namespace
