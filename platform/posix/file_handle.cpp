#include "platform/file_handle.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {
int Fd(std::intptr_t handle) { return static_cast<int>(handle); }
}  // namespace

bool CFileHandle::OpenForReading(const std::filesystem::path& path) {
    Close();
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
        ::close(fd);
        return false;
    }
    Handle = fd;
    return true;
}

bool CFileHandle::OpenAnyForReading(const std::filesystem::path& path) {
    Close();
    Handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    return Handle >= 0;
}

int64_t CFileHandle::Read(void* dst, std::size_t bytes) {
    auto* p = static_cast<uint8_t*>(dst);
    std::size_t done = 0;
    while (done < bytes) {
        ssize_t n = ::read(Fd(Handle), p + done, bytes - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            return -1;
        }
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
    }
    return static_cast<int64_t>(done);
}

int64_t CFileHandle::ReadSome(void* dst, std::size_t bytes) {
    ssize_t n;
    do n = ::read(Fd(Handle), dst, bytes);
    while (n < 0 && errno == EINTR);
    return n;
}

bool CFileHandle::Write(const void* src, std::size_t bytes) {
    const auto* p = static_cast<const uint8_t*>(src);
    std::size_t done = 0;
    while (done < bytes) {
        ssize_t n = ::write(Fd(Handle), p + done, bytes - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += static_cast<std::size_t>(n);
    }
    return true;
}

bool CFileHandle::Seek(uint64_t position) {
    return ::lseek(Fd(Handle), static_cast<off_t>(position), SEEK_SET) >= 0;
}

int64_t CFileHandle::Tell() { return ::lseek(Fd(Handle), 0, SEEK_CUR); }

int64_t CFileHandle::Size() {
    struct stat st {};
    if (::fstat(Fd(Handle), &st) != 0) return -1;
    return static_cast<int64_t>(st.st_size);
}

bool CFileHandle::Close() {
    if (Handle < 0) return true;
    bool ok = ::close(Fd(Handle)) == 0;
    Handle = -1;
    return ok;
}

std::string LastSystemErrorText() { return std::strerror(errno); }
