// The window's share of a conversion: runs one installed-font conversion
// through RunConversion with the real main window as the progress interface
// (its bar, status line and event processing), and the same run with one that
// draws and pumps nothing (the command line with --quiet). Both run in this
// process, alternately, so the ratio is the cost of the window's redraws and
// event processing alone.
//
// window_progress FONT SIZE LEVELS OUTPUT.zgly [RUNS]   (run with QT_QPA_PLATFORM=offscreen)
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include <QApplication>

#include "core/conversion.h"
#include "core/pg_ctrl.h"
#include "sources/win_font_reader.h"
#include "ui/main_dlg.h"
#include "ui/message_box.h"
#include "zgly/zarnic_font_writer.h"

namespace {

// The command line with --quiet: the same divisor logic, nothing drawn.
class CSilentPgCtrl : public CSteppedPgCtrl {
public:
    bool IsCanceled() override { return false; }
    void SetStatus(const std::string&) override {}
    void AddWarning(const std::string&) override {}

protected:
    void ShowProgress(int, int) override {}
    void PumpEvents() override {}
};

class CBenchFrontEnd : public CConversionFrontEnd {
public:
    CBenchFrontEnd(const char* font, int size, int bpp, const char* output)
        : Font(font), Size(size), Bpp(bpp), Output(output) {}
    void BeginRun() override {}
    void LockControls() override {}
    void UnlockControls() override {}
    void EndRun() override {}
    bool UseFilter() override { return false; }
    std::string FilterPathText() override { return {}; }
    std::string CommitFilterPath() override { return {}; }
    void LoadFilter(CFontFilter&) override {}
    std::unique_ptr<CFontReader> CreateReader() override {
        // The window's defaults: "Use Windows Size", keep-space widths.
        return std::make_unique<CWinFontReader>(Font, -Size, Bpp, 1, 16, false);
    }
    std::unique_ptr<CFontWriter> CreateWriter() override {
        return std::make_unique<CZarnicFontWriter>(Output, ZglyWriterOptions{});
    }
    void CommitInputHistory() override {}
    void CommitOutputHistory() override {}
    void ClearMessages() override {}
    void AppendError(const std::string& text) override { std::fprintf(stderr, "%s\n", text.c_str()); }
    void ShowMessages() override {}
    bool MessagesShown() override { return false; }
    bool MessagesHaveText() override { return false; }
    void CloseMessages() override {}

private:
    std::string Font;
    int Size, Bpp;
    std::string Output;
};

double RunMs(CBenchFrontEnd& frontEnd, CPgCtrl& pg) {
    const auto start = std::chrono::steady_clock::now();
    if (RunConversion(frontEnd, pg) != ConversionOutcome::Finished) std::exit(1);
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 5) {
        std::fprintf(stderr, "usage: %s FONT SIZE LEVELS OUTPUT.zgly [RUNS]\n", argv[0]);
        return 2;
    }
    QApplication app(argc, argv);
    const int levels = std::atoi(argv[3]);
    const int bpp = levels == 2 ? 1 : levels == 4 ? 2 : levels == 8 ? 3 : 4;
    CBenchFrontEnd frontEnd(argv[1], std::atoi(argv[2]), bpp, argv[4]);
    const int runs = argc > 5 ? std::atoi(argv[5]) : 5;

    // The main window on a settings file of its own; no message box may wait.
    SetMessageBoxRunner([](QMessageBox&) {});
    const auto settings = std::filesystem::temp_directory_path() / "window_progress_bench.ini";
    std::filesystem::remove(settings);
    CMainDlg window(settings);
    window.show();
    QCoreApplication::processEvents();
    // The run's own steps (lock, unlock, message window) stay with the bench
    // front end; only the progress interface is the window's.
    CPgCtrl& windowPg = window;
    CSilentPgCtrl silentPg;
    std::vector<double> windowMs, silentMs;
    for (int r = 0; r < runs; ++r) {
        windowMs.push_back(RunMs(frontEnd, windowPg));
        silentMs.push_back(RunMs(frontEnd, silentPg));
    }
    const double w = Median(windowMs), s = Median(silentMs);
    std::printf("window %.1f ms, silent %.1f ms, ratio %.3f\n", w, s, w / s);
    std::filesystem::remove(settings);
    return 0;
}
