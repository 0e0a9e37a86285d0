// Children of `build` through CreateProcessW. Anonymous pipes cannot be
// waited on together, so a thread per child reads its output into a buffer
// and signals an event; the parent waits for any of those events.
#include "platform/child_process.h"

#include <windows.h>

#include <mutex>
#include <string>

#include "platform/win32/child_cancel.h"
#include "platform/win32/wide_text.h"

namespace {

struct ChildPipe {
    HANDLE Read = nullptr;
    HANDLE Ready = nullptr;   // set while output or its end waits to be taken
    HANDLE Cancel = nullptr;  // the child's request to stop
    HANDLE Reader = nullptr;  // the reading thread
    std::mutex Lock;
    std::string Pending;
    bool Ended = false;
};

ChildPipe* PipeOf(std::intptr_t pipe) { return reinterpret_cast<ChildPipe*>(pipe); }

DWORD WINAPI ReadChildOutput(void* state) {
    auto* p = static_cast<ChildPipe*>(state);
    char buffer[4096];
    for (;;) {
        DWORD got = 0;
        const bool ok = ::ReadFile(p->Read, buffer, sizeof buffer, &got, nullptr) && got > 0;
        std::lock_guard<std::mutex> hold(p->Lock);
        if (ok) p->Pending.append(buffer, got);
        else p->Ended = true;
        ::SetEvent(p->Ready);
        if (!ok) return 0;
    }
}

// Quotes one argument so that CommandLineToArgvW gives it back unchanged.
std::wstring Quoted(const std::wstring& arg) {
    if (!arg.empty() && arg.find_first_of(L" \t\n\v\"") == std::wstring::npos) return arg;
    std::wstring out = L"\"";
    std::size_t backslashes = 0;
    for (wchar_t c : arg) {
        if (c == L'\\') {
            ++backslashes;
            continue;
        }
        out.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        backslashes = 0;
        out += c;
    }
    out.append(backslashes * 2, L'\\');
    return out + L"\"";
}

std::wstring OwnProgram() {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        DWORD n = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (n < name.size()) return name.substr(0, n);
        name.resize(name.size() * 2);
    }
}

}  // namespace

std::unique_ptr<CChildProcess> CChildProcess::StartSelf(const std::vector<std::string>& args,
                                                        const std::filesystem::path& folder,
                                                        const std::string& failureText) {
    (void)failureText;  // CreateProcessW reports a program that cannot run itself
    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE read = nullptr, write = nullptr;
    if (!::CreatePipe(&read, &write, &inherit, 0)) return nullptr;
    ::SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
    HANDLE cancel = ::CreateEventW(&inherit, TRUE, FALSE, nullptr);

    std::wstring commandLine;
    for (const std::string& a : args) commandLine += (commandLine.empty() ? L"" : L" ") + Quoted(WideFromUtf8(a));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = write;
    startup.hStdError = write;
    PROCESS_INFORMATION process{};
    // Children are started one at a time, so the variable reaches only this one.
    ::SetEnvironmentVariableW(WideFromUtf8(ChildCancelVariable).c_str(),
                              std::to_wstring(reinterpret_cast<std::intptr_t>(cancel)).c_str());
    // Its own process group: Ctrl-C in the console reaches the parent only,
    // which passes it on once.
    const bool started = cancel && ::CreateProcessW(OwnProgram().c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                                                    CREATE_NEW_PROCESS_GROUP, nullptr, WidePath(folder).c_str(),
                                                    &startup, &process);
    ::SetEnvironmentVariableW(WideFromUtf8(ChildCancelVariable).c_str(), nullptr);
    ::CloseHandle(write);
    if (!started) {
        ::CloseHandle(read);
        if (cancel) ::CloseHandle(cancel);
        return nullptr;
    }
    ::CloseHandle(process.hThread);
    auto* pipe = new ChildPipe;
    pipe->Read = read;
    pipe->Cancel = cancel;
    pipe->Ready = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    pipe->Reader = ::CreateThread(nullptr, 0, ReadChildOutput, pipe, 0, nullptr);
    return std::unique_ptr<CChildProcess>(new CChildProcess(reinterpret_cast<std::intptr_t>(process.hProcess),
                                                            reinterpret_cast<std::intptr_t>(pipe)));
}

CChildProcess::~CChildProcess() {
    HANDLE process = reinterpret_cast<HANDLE>(Id);
    // Its output ends with it; the reading thread then ends too.
    if (!Waited) ::WaitForSingleObject(process, INFINITE);
    ClosePipe();
    ::CloseHandle(process);
}

void CChildProcess::ClosePipe() {
    if (Pipe < 0) return;
    ChildPipe* p = PipeOf(Pipe);
    ::WaitForSingleObject(p->Reader, INFINITE);
    for (HANDLE h : {p->Reader, p->Read, p->Ready, p->Cancel})
        if (h) ::CloseHandle(h);
    delete p;
    Pipe = -1;
}

void CChildProcess::Interrupt() {
    if (Pipe >= 0) ::SetEvent(PipeOf(Pipe)->Cancel);
}

bool CChildProcess::ReadOutput(std::string& into) {
    if (Pipe < 0) return false;
    ChildPipe* p = PipeOf(Pipe);
    bool ended = false;
    {
        std::lock_guard<std::mutex> hold(p->Lock);
        into += p->Pending;
        const bool had = !p->Pending.empty();
        p->Pending.clear();
        ended = p->Ended && !had;
        if (!p->Ended) ::ResetEvent(p->Ready);
    }
    if (!ended) return true;
    ClosePipe();
    return false;
}

ChildEnd CChildProcess::Wait() {
    HANDLE process = reinterpret_cast<HANDLE>(Id);
    ::WaitForSingleObject(process, INFINITE);
    ClosePipe();
    Waited = true;
    DWORD code = 0;
    ::GetExitCodeProcess(process, &code);
    ChildEnd end;
    end.ByInterrupt = code == static_cast<DWORD>(STATUS_CONTROL_C_EXIT);
    end.Exited = !end.ByInterrupt;
    end.Code = static_cast<int>(code);
    return end;
}

bool WaitForChildOutput(const std::vector<CChildProcess*>& children, std::vector<bool>& ready) {
    std::vector<HANDLE> events;
    for (const CChildProcess* c : children)
        if (c->OutputOpen()) events.push_back(PipeOf(c->Pipe)->Ready);
    ready.assign(children.size(), false);
    if (events.empty()) return true;
    // A short wait, so that a Ctrl-C (seen by the caller's flag) is noticed soon.
    DWORD r = ::WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE, 200);
    if (r == WAIT_FAILED) return false;
    for (std::size_t i = 0; i < children.size(); ++i)
        ready[i] = children[i]->OutputOpen() && ::WaitForSingleObject(PipeOf(children[i]->Pipe)->Ready, 0) == WAIT_OBJECT_0;
    return true;
}
