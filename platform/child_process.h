// This program run again as a child process, its output collected through a
// pipe. The child has its own process group, so a Ctrl-C at the terminal
// reaches only the parent, which passes it on once; it is interrupted too
// when the parent dies.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

struct ChildEnd {
    bool Exited = false;       // ended by exit(), with Code
    int Code = 0;
    bool ByInterrupt = false;  // ended by Ctrl-C before it could handle it
};

class CChildProcess {
public:
    // Runs the program with args (args[0] is its name) in folder, standard
    // output and error going to the pipe. When the program cannot be run,
    // the child writes failureText to the pipe and exits with 1. Returns
    // nullptr when no child could be started.
    static std::unique_ptr<CChildProcess> StartSelf(const std::vector<std::string>& args,
                                                    const std::filesystem::path& folder,
                                                    const std::string& failureText);
    ~CChildProcess();
    CChildProcess(const CChildProcess&) = delete;
    CChildProcess& operator=(const CChildProcess&) = delete;

    // Sends Ctrl-C.
    void Interrupt();
    // Appends what the child wrote; false once its output has ended.
    bool ReadOutput(std::string& into);
    bool OutputOpen() const { return Pipe >= 0; }
    // Waits for the child to end (its output having ended).
    ChildEnd Wait();

private:
    friend bool WaitForChildOutput(const std::vector<CChildProcess*>&, std::vector<bool>&);
    CChildProcess(std::intptr_t id, std::intptr_t pipe) : Id(id), Pipe(pipe) {}
    void ClosePipe();
    std::intptr_t Id;
    std::intptr_t Pipe;
    bool Waited = false;
};

// Blocks until at least one child has output or closed its output, or a
// cancel signal arrives; ready[i] tells which children to read. False when
// the system cannot wait.
bool WaitForChildOutput(const std::vector<CChildProcess*>& children, std::vector<bool>& ready);
