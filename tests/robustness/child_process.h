// Runs a piece of a test in a forked child under conditions the test process
// itself must not take on: no write permission even for root, or a file size
// limit that makes every large write fail as on a full disk.
#pragma once

#include <functional>

struct ChildLimits {
    // Drop root to nobody, so that directory permissions apply.
    bool Unprivileged = false;
    // RLIMIT_FSIZE in bytes (0: none); SIGXFSZ is ignored so writes fail with EFBIG.
    long FileSizeLimit = 0;
};

// The child's exit code (the body's result), or -1 when it died.
int RunInChild(const ChildLimits& limits, const std::function<int()>& body);
