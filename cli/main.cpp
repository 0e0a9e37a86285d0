// glyphwright-cli: the command line front end. Parses the options, then runs
// the same conversion as the window through the core's front-end interface.
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "cli/cli_front_end.h"
#include "cli/cli_progress.h"
#include "cli/factories.h"
#include "cli/info_command.h"
#include "cli/list_commands.h"
#include "cli/options.h"
#include "core/conversion.h"
#include "xmlfiles/glyph_order_files.h"

namespace {

enum ExitStatus { ExitDone = 0, ExitError = 1, ExitUsage = 2, ExitCanceled = 130 };

int UsageError(const std::string& problem) {
    std::fprintf(stderr, "glyphwright-cli: %s\n%s", problem.c_str(), UsageHint());
    return ExitUsage;
}

int RunConvert(const CliOptions& options) {
    CCliPgCtrl::InstallInterruptHandler();
    CCliFrontEnd frontEnd(options);
    ConversionOutcome outcome;
    {
        CCliPgCtrl pg(stderr, options.Quiet, ::isatty(STDERR_FILENO) != 0);
        outcome = RunConversion(frontEnd, pg);
    }
    switch (outcome) {
    case ConversionOutcome::Finished: return ExitDone;
    case ConversionOutcome::Canceled: return ExitCanceled;
    case ConversionOutcome::Failed: break;
    }
    std::fprintf(stderr, "%s\n", frontEnd.ErrorText().c_str());
    return ExitError;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    CliOptions options;
    try {
        options = ParseCommandLine(args);
    } catch (const CUsageError& e) {
        return UsageError(e.what());
    }
    CXmlPlatform xml;
    switch (options.Command) {
    case CliCommand::Help: std::fputs(HelpText(), stdout); return ExitDone;
    case CliCommand::Version: std::printf("glyphwright-cli %s\n", GLYPHWRIGHT_VERSION); return ExitDone;
    case CliCommand::Info: return RunInfoCommand(options.InfoPath, options.Json, stdout, stderr);
    case CliCommand::Convert: return RunConvert(options);
    case CliCommand::ListOrders: return RunListOrders(options.Json, stdout, stderr);
    case CliCommand::ListFonts: return RunListFonts(options.Json, stdout);
    }
    return ExitUsage;
}
