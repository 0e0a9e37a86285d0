#include "cli/build_runner.h"

#include <memory>

#include "core/general_exception.h"
#include "platform/cancel_signals.h"
#include "platform/child_process.h"

namespace {

constexpr const char* StartFailure = "Internal Error:\n Can not start a conversion.";

struct Child {
    std::size_t Job;
    std::unique_ptr<CChildProcess> Process;
    BuildJobResult Result;
    bool Interrupted = false;
};

bool BuildInterrupted() { return ReceivedCancelSignal() != CancelSignal::None; }

Child Start(std::size_t index, const BuildJob& job, const std::filesystem::path& folder) {
    std::vector<std::string> args = {"glyphwright-cli", "convert"};
    args.insert(args.end(), job.Args.begin(), job.Args.end());
    auto process = CChildProcess::StartSelf(args, folder, std::string(StartFailure) + "\n");
    if (!process) throw CGeneralException(StartFailure);
    return Child{index, std::move(process), {}};
}

void InterruptAll(std::vector<Child>& running) {
    for (Child& c : running)
        if (!c.Interrupted) {
            c.Process->Interrupt();
            c.Interrupted = true;
        }
}

}  // namespace

void InstallBuildInterruptHandler() { CatchCancelSignals(CancelCatch::Build); }

bool RunBuildJobs(const std::vector<BuildJob>& jobs, int parallel, const std::filesystem::path& folder,
                  const std::function<void(std::size_t, const BuildJobResult&)>& done) {

    std::vector<Child> running;
    std::size_t next = 0;
    while (next < jobs.size() || !running.empty()) {
        if (BuildInterrupted()) InterruptAll(running);
        while (!BuildInterrupted() && next < jobs.size() && static_cast<int>(running.size()) < parallel) {
            running.push_back(Start(next, jobs[next], folder));
            ++next;
        }
        if (running.empty()) break;
        std::vector<CChildProcess*> processes;
        for (const Child& c : running) processes.push_back(c.Process.get());
        std::vector<bool> ready;
        if (!WaitForChildOutput(processes, ready)) break;
        for (std::size_t i = 0; i < ready.size(); ++i) {
            if (!ready[i]) continue;
            Child& c = running[i];
            if (c.Process->ReadOutput(c.Result.Messages)) continue;
            const ChildEnd end = c.Process->Wait();
            c.Result.Status = end.Exited ? end.Code : -1;
            // Interrupted before it could take Ctrl-C over itself: it had
            // written nothing yet, and counts as cancelled.
            if (end.ByInterrupt) c.Result.Status = 130;
        }
        for (auto it = running.begin(); it != running.end();) {
            if (it->Process->OutputOpen()) {
                ++it;
                continue;
            }
            done(it->Job, it->Result);
            it = running.erase(it);
        }
    }
    return !BuildInterrupted();
}
