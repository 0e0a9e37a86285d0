#include "child_process.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

int RunInChild(const ChildLimits& limits, const std::function<int()>& body) {
    pid_t pid = ::fork();
    if (pid < 0) return -1;
    if (pid == 0) {
        if (limits.FileSizeLimit > 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            rlimit r{static_cast<rlim_t>(limits.FileSizeLimit), static_cast<rlim_t>(limits.FileSizeLimit)};
            if (::setrlimit(RLIMIT_FSIZE, &r) != 0) ::_exit(90);
        }
        if (limits.Unprivileged && ::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(91);
        int code = 92;
        try {
            code = body();
        } catch (...) {
        }
        ::_exit(code);
    }
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}
