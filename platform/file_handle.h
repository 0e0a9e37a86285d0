// An open file of the operating system: plain byte reads and writes with
// positions, no messages. The binary file layer turns failures into errors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>

class CFileHandle {
public:
    CFileHandle() = default;
    // These rest on Close() and Handle alone, the same on every system.
    ~CFileHandle() { Close(); }
    CFileHandle(CFileHandle&& other) noexcept : Handle(std::exchange(other.Handle, -1)) {}
    CFileHandle& operator=(CFileHandle&& other) noexcept {
        if (this != &other) {
            Close();
            Handle = std::exchange(other.Handle, -1);
        }
        return *this;
    }
    CFileHandle(const CFileHandle&) = delete;
    CFileHandle& operator=(const CFileHandle&) = delete;

    // An existing file for reading; false for a missing file or a directory.
    bool OpenForReading(const std::filesystem::path& path);
    // The same, but a folder opens too (its reads then fail, "Is a directory").
    bool OpenAnyForReading(const std::filesystem::path& path);
    bool IsOpen() const { return Handle >= 0; }
    // Fills the buffer up to the end of the file; the count read, -1 on failure.
    int64_t Read(void* dst, std::size_t bytes);
    // At most one read call of the system: the count read, 0 at the end, -1 on failure.
    int64_t ReadSome(void* dst, std::size_t bytes);
    bool Write(const void* src, std::size_t bytes);
    bool Seek(uint64_t position);
    // -1 on failure.
    int64_t Tell();
    int64_t Size();
    // False when the system reports the close failed.
    bool Close();

private:
    friend class CSaveTarget;
    explicit CFileHandle(std::intptr_t handle) : Handle(handle) {}
    std::intptr_t Handle = -1;
};

// The system's text for the last failed call ("No such file or directory").
std::string LastSystemErrorText();
