// Runs convert commands as child processes of this very program, a few at a
// time, each with its messages captured whole so that they can be shown
// together under their font. Ctrl-C reaches every child once; each cancels
// its own run, which leaves no partial file.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

struct BuildJob {
    std::vector<std::string> Args;  // convert's arguments, without the command
};

struct BuildJobResult {
    int Status = -1;       // the child's exit status (130 cancelled); -1 when it died of a signal
    std::string Messages;  // its stdout and stderr, in order
};

// From here on Ctrl-C cancels the build instead of ending the program: no
// job starts after it, and the running ones are cancelled.
void InstallBuildInterruptHandler();

// Runs the jobs in order, at most `parallel` at once, in `folder`. done() is
// called as each one ends (in the order they end). Returns false when Ctrl-C
// stopped the run: the jobs not started then are never called back.
bool RunBuildJobs(const std::vector<BuildJob>& jobs, int parallel, const std::filesystem::path& folder,
                  const std::function<void(std::size_t, const BuildJobResult&)>& done);
