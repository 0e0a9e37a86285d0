#include "cli/cli_front_end.h"

#include "cli/factories.h"
#include "xmlfiles/char_selection.h"

std::unique_ptr<CFontReader> CCliFrontEnd::CreateReader() { return ::CreateReader(Options, RunSummary); }

std::unique_ptr<CFontWriter> CCliFrontEnd::CreateWriter() {
    return std::make_unique<CSummaryWriter>(::CreateWriter(Options), RunSummary);
}

void CCliFrontEnd::LoadFilter(CFontFilter& filter) {
    CharSelection selection;
    selection.UseFilterFile = Options.FilterGiven;
    selection.FilterFile = Options.FilterPath;
    selection.Texts = Options.Chars;
    selection.TextFiles.assign(Options.CharsFiles.begin(), Options.CharsFiles.end());
    selection.TextEncoding = Options.CharsEncoding;
    for (const auto& r : Options.Ranges) selection.Ranges.emplace_back(r.First, r.Last);
    LoadCharSelection(filter, selection);
}
