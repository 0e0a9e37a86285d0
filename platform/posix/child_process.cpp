#include "platform/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

std::unique_ptr<CChildProcess> CChildProcess::StartSelf(const std::vector<std::string>& args,
                                                        const std::filesystem::path& folder,
                                                        const std::string& failureText) {
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return nullptr;
    std::vector<std::string> copy = args;
    std::vector<char*> argv;
    for (auto& a : copy) argv.push_back(a.data());
    argv.push_back(nullptr);
    pid_t parent = ::getpid();
    pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        return nullptr;
    }
    if (pid == 0) {
        // Its own process group: a Ctrl-C at the terminal reaches the parent
        // only, which passes it on exactly once (a second one would kill the
        // child before it cleans up).
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGINT);
        if (::getppid() != parent) ::_exit(130);
        ::dup2(fds[1], STDOUT_FILENO);
        ::dup2(fds[1], STDERR_FILENO);
        if (::chdir(folder.c_str()) != 0) ::_exit(127);
        ::execv("/proc/self/exe", argv.data());
        (void)!::write(STDERR_FILENO, failureText.data(), failureText.size());
        ::_exit(1);
    }
    ::close(fds[1]);
    return std::unique_ptr<CChildProcess>(new CChildProcess(pid, fds[0]));
}

CChildProcess::~CChildProcess() {
    ClosePipe();
    if (!Waited) {
        int status = 0;
        while (::waitpid(static_cast<pid_t>(Id), &status, 0) < 0 && errno == EINTR) {
        }
    }
}

void CChildProcess::ClosePipe() {
    if (Pipe >= 0) ::close(static_cast<int>(Pipe));
    Pipe = -1;
}

void CChildProcess::Interrupt() { ::kill(static_cast<pid_t>(Id), SIGINT); }

bool CChildProcess::ReadOutput(std::string& into) {
    if (Pipe < 0) return false;
    char buffer[4096];
    ssize_t n = ::read(static_cast<int>(Pipe), buffer, sizeof buffer);
    if (n > 0) {
        into.append(buffer, static_cast<std::size_t>(n));
        return true;
    }
    if (n < 0 && errno == EINTR) return true;
    ClosePipe();
    return false;
}

ChildEnd CChildProcess::Wait() {
    ClosePipe();
    int status = 0;
    while (::waitpid(static_cast<pid_t>(Id), &status, 0) < 0 && errno == EINTR) {
    }
    Waited = true;
    ChildEnd end;
    end.Exited = WIFEXITED(status);
    end.Code = end.Exited ? WEXITSTATUS(status) : 0;
    end.ByInterrupt = WIFSIGNALED(status) && WTERMSIG(status) == SIGINT;
    return end;
}

bool WaitForChildOutput(const std::vector<CChildProcess*>& children, std::vector<bool>& ready) {
    std::vector<pollfd> fds;
    for (const CChildProcess* c : children)
        fds.push_back({c->OutputOpen() ? static_cast<int>(c->Pipe) : -1, POLLIN, 0});
    ready.assign(children.size(), false);
    if (::poll(fds.data(), fds.size(), -1) < 0) return errno == EINTR;
    for (std::size_t i = 0; i < fds.size(); ++i) ready[i] = (fds[i].revents & (POLLIN | POLLHUP | POLLERR)) != 0;
    return true;
}
