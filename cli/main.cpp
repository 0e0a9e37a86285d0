// glyphwright-cli: the command line front end. Parses the options, then runs
// the same conversion as the window through the core's front-end interface.
#include <cstdio>
#include <filesystem>
#include <new>
#include <string>
#include <vector>

#include "cli/build_command.h"
#include "cli/check_command.h"
#include "cli/cli_front_end.h"
#include "cli/cli_progress.h"
#include "cli/command_help.h"
#include "cli/factories.h"
#include "cli/info_command.h"
#include "cli/list_commands.h"
#include "cli/options.h"
#include "cli/preview_command.h"
#include "cli/template_command.h"
#include "core/conversion.h"
#include "core/general_exception.h"
#include "platform/cancel_signals.h"
#include "platform/command_line.h"
#include "platform/terminal.h"

namespace {

enum ExitStatus { ExitDone = 0, ExitError = 1, ExitUsage = 2, ExitCanceled = 130 };

int UsageError(const std::string& command, const std::string& problem) {
    std::fprintf(stderr, "glyphwright-cli: %s\n%s", problem.c_str(), UsageHint(command).c_str());
    return ExitUsage;
}

// What a cancelled run did to its output, so that a cancel is not taken for a crash.
std::string CancelMessage(const std::string& output, bool existed) {
    return "Cancelled; " + output + (existed ? " was left as it was." : " was not created.");
}

int RunConvert(const CliOptions& options) {
    CCliPgCtrl::InstallInterruptHandler();
    std::error_code ec;
    const bool outputExisted = std::filesystem::exists(options.OutputPath, ec);
    CCliFrontEnd frontEnd(options);
    ConversionOutcome outcome;
    int warnings = 0;
    {
        CCliPgCtrl pg(stderr, options.Quiet, StandardErrorIsTerminal());
        outcome = RunConversion(frontEnd, pg);
        warnings = pg.WarningCount();
    }
    if (outcome == ConversionOutcome::Canceled)
        std::fprintf(stderr, "%s\n", CancelMessage(options.OutputPath, outputExisted).c_str());
    CCliPgCtrl::EndLikeTheInterruptingSignal();
    switch (outcome) {
    case ConversionOutcome::Finished:
        if (!options.Quiet) std::fprintf(stderr, "%s\n", SummaryLine(frontEnd.Summary(), options, warnings).c_str());
        return ExitDone;
    case ConversionOutcome::Canceled: return ExitCanceled;
    case ConversionOutcome::Failed: break;
    }
    throw CGeneralException(frontEnd.ErrorText());
}

// Runs a parsed command; failures are thrown with their full text.
int RunCommand(const CliOptions& options) {
    switch (options.Command) {
    case CliCommand::Help: std::fputs(HelpText(), stdout); return ExitDone;
    case CliCommand::Version: std::printf("glyphwright-cli %s\n", GLYPHWRIGHT_VERSION); return ExitDone;
    case CliCommand::Info:
        if (options.InfoChars)
            RunInfoChars(options.InfoPath, options.Json, stdout);
        else
            RunInfoCommand(options.InfoPath, options.Json, stdout);
        return ExitDone;
    case CliCommand::Convert: return RunConvert(options);
    case CliCommand::Preview: RunPreviewCommand(options); return ExitDone;
    case CliCommand::ListOrders: RunListOrders(options.Json, stdout, stderr); return ExitDone;
    case CliCommand::ListFonts: RunListFonts(options.Json, stdout); return ExitDone;
    }
    return ExitUsage;
}

}  // namespace

// Parses and runs one command line; usage errors are thrown as CUsageError,
// failures as CGeneralException.
static int RunCommandLine(const std::vector<std::string>& args) {
    if (!args.empty() && args[0] == "build") return RunBuildCommand({args.begin() + 1, args.end()});
    if (!args.empty() && args[0] == "check") return RunCheckCommand(ParseCheckCommand({args.begin() + 1, args.end()}), stdout, stderr);
    if (!args.empty() && args[0] == "template") {
        RunTemplateCommand(ParseTemplateCommand(args));
        return ExitDone;
    }
    return RunCommand(ParseCommandLine(args));
}

int main(int argc, char** argv) {
    // A reader of stderr that goes away (| head) must not end the run before
    // its output file is written; the writes to the closed pipe just fail.
    IgnoreBrokenPipes();
    const std::vector<std::string> args = CommandLineArguments(argc, argv);
    const std::string command = args.empty() ? "" : args[0];
    // Every failure ends here: its message as the message window shows it, status 1.
    try {
        return RunCommandLine(args);
    } catch (const CHelpRequest&) {
        std::fputs(CommandHelp(command).c_str(), stdout);
        return ExitDone;
    } catch (const CUsageError& e) {
        return UsageError(command, e.what());
    } catch (const CGeneralException& e) {
        std::fprintf(stderr, "%s\n", e.Message.c_str());
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "Internal Error:\n Out of memory.\n");
    }
    return ExitError;
}
