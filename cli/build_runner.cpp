#include "cli/build_runner.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "core/general_exception.h"

namespace {

volatile std::sig_atomic_t g_BuildInterrupted = 0;

void OnBuildInterrupt(int) { g_BuildInterrupted = 1; }

struct Child {
    std::size_t Job;
    pid_t Pid;
    int Fd;
    BuildJobResult Result;
    bool Interrupted = false;
};

Child Start(std::size_t index, const BuildJob& job, const std::filesystem::path& folder) {
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) throw CGeneralException("Internal Error:\n Can not start a conversion.");
    std::vector<std::string> args = {"glyphwright-cli", "convert"};
    args.insert(args.end(), job.Args.begin(), job.Args.end());
    std::vector<char*> argv;
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    pid_t parent = ::getpid();
    pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        throw CGeneralException("Internal Error:\n Can not start a conversion.");
    }
    if (pid == 0) {
        // Its own process group: a Ctrl-C at the terminal reaches the build
        // only, which passes it on exactly once (a second one would kill
        // the child before it cleans up).
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGINT);
        if (::getppid() != parent) ::_exit(130);
        ::dup2(fds[1], STDOUT_FILENO);
        ::dup2(fds[1], STDERR_FILENO);
        if (::chdir(folder.c_str()) != 0) ::_exit(127);
        ::execv("/proc/self/exe", argv.data());
        const char* text = "Internal Error:\n Can not start a conversion.\n";
        (void)!::write(STDERR_FILENO, text, std::strlen(text));
        ::_exit(1);
    }
    ::close(fds[1]);
    return Child{index, pid, fds[0], {}};
}

void InterruptAll(std::vector<Child>& running) {
    for (Child& c : running)
        if (!c.Interrupted) {
            ::kill(c.Pid, SIGINT);
            c.Interrupted = true;
        }
}

}  // namespace

void InstallBuildInterruptHandler() {
    // No SA_RESTART: a Ctrl-C wakes the wait for the children at once.
    struct sigaction sa {};
    sa.sa_handler = OnBuildInterrupt;
    sigemptyset(&sa.sa_mask);
    ::sigaction(SIGINT, &sa, nullptr);
}

bool RunBuildJobs(const std::vector<BuildJob>& jobs, int parallel, const std::filesystem::path& folder,
                  const std::function<void(std::size_t, const BuildJobResult&)>& done) {

    std::vector<Child> running;
    std::size_t next = 0;
    while (next < jobs.size() || !running.empty()) {
        if (g_BuildInterrupted) InterruptAll(running);
        while (!g_BuildInterrupted && next < jobs.size() && static_cast<int>(running.size()) < parallel) {
            running.push_back(Start(next, jobs[next], folder));
            ++next;
        }
        if (running.empty()) break;
        std::vector<pollfd> fds;
        for (const Child& c : running) fds.push_back({c.Fd, POLLIN, 0});
        if (::poll(fds.data(), fds.size(), -1) < 0 && errno != EINTR) break;
        for (std::size_t i = 0; i < fds.size(); ++i) {
            if (!(fds[i].revents & (POLLIN | POLLHUP | POLLERR))) continue;
            Child& c = running[i];
            char buffer[4096];
            ssize_t n = ::read(c.Fd, buffer, sizeof buffer);
            if (n > 0) {
                c.Result.Messages.append(buffer, static_cast<std::size_t>(n));
                continue;
            }
            if (n < 0 && errno == EINTR) continue;
            ::close(c.Fd);
            c.Fd = -1;
            int status = 0;
            while (::waitpid(c.Pid, &status, 0) < 0 && errno == EINTR) {
            }
            c.Result.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            // Interrupted before it could take Ctrl-C over itself: it had
            // written nothing yet, and counts as cancelled.
            if (WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) c.Result.Status = 130;
        }
        for (auto it = running.begin(); it != running.end();) {
            if (it->Fd >= 0) {
                ++it;
                continue;
            }
            done(it->Job, it->Result);
            it = running.erase(it);
        }
    }
    return !g_BuildInterrupted;
}
