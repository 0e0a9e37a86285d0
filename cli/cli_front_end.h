// The command line as the front end of a conversion run: options instead of
// panels, stderr instead of the message window.
#pragma once

#include <string>

#include "cli/options.h"
#include "cli/run_summary.h"
#include "core/conversion.h"

class CCliFrontEnd : public CConversionFrontEnd {
public:
    explicit CCliFrontEnd(const CliOptions& options) : Options(options) {}

    void BeginRun() override {}
    void LockControls() override {}
    void UnlockControls() override {}
    void EndRun() override {}

    bool UseFilter() override { return Options.SelectsChars(); }
    std::string FilterPathText() override { return Options.FilterPath; }
    std::string CommitFilterPath() override { return Options.FilterPath; }
    // The union of --filter, --chars, --chars-file and --range.
    void LoadFilter(CFontFilter& filter) override;

    std::unique_ptr<CFontReader> CreateReader() override;
    std::unique_ptr<CFontWriter> CreateWriter() override;
    void CommitInputHistory() override {}
    void CommitOutputHistory() override {}

    void ClearMessages() override { Error.clear(); }
    void AppendError(const std::string& text) override { Error += text; }
    void ShowMessages() override {}
    bool MessagesShown() override { return false; }
    bool MessagesHaveText() override { return !Error.empty(); }
    void CloseMessages() override {}

    // The error of the run, as the message window would show it.
    const std::string& ErrorText() const { return Error; }
    // What the finished run wrote.
    const CRunSummary& Summary() const { return RunSummary; }

private:
    const CliOptions& Options;
    std::string Error;
    CRunSummary RunSummary;
};
