#include "platform/child_process.h"

// WebAssembly has no processes: nothing can be started, so a build runs its
// conversions in the program itself.

std::unique_ptr<CChildProcess> CChildProcess::StartSelf(const std::vector<std::string>&, const std::filesystem::path&,
                                                        const std::string&) {
    return nullptr;
}

CChildProcess::~CChildProcess() = default;

void CChildProcess::Interrupt() {}

bool CChildProcess::ReadOutput(std::string&) { return false; }

ChildEnd CChildProcess::Wait() { return {}; }

void CChildProcess::ClosePipe() { Pipe = -1; }

bool WaitForChildOutput(const std::vector<CChildProcess*>&, std::vector<bool>&) { return false; }
