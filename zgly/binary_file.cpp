#include "zgly/binary_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "core/general_exception.h"
#include "zgly/save_target.h"

CBinaryFile::~CBinaryFile() {
    // A save not closed is dropped with Save, which owns its descriptor.
    if (Fd >= 0 && OpenMode == Mode::Read) ::close(Fd);
}

void CBinaryFile::Open(Mode mode) {
    OpenMode = mode;
    if (mode == Mode::Read) {
        Fd = ::open(FilePath.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat st {};
        if (Fd >= 0 && (::fstat(Fd, &st) != 0 || S_ISDIR(st.st_mode))) {
            ::close(Fd);
            Fd = -1;
        }
        if (Fd < 0) ThrowError("Can not open a file (%s).", FilePath);
        return;
    }
    Save = std::make_unique<CSaveTarget>(FilePath);
    Fd = Save->Begin();
    if (Fd < 0) {
        Save.reset();
        ThrowError("Can not open a file (%s).", FilePath);
    }
}

uint32_t CBinaryFile::Read(void* dst, uint32_t bytes) {
    auto* p = static_cast<uint8_t*>(dst);
    uint32_t done = 0;
    while (done < bytes) {
        ssize_t n = ::read(Fd, p + done, bytes - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            ThrowError("Can not read from a file (%s).", FilePath);
        }
        if (n == 0) break;
        done += static_cast<uint32_t>(n);
    }
    return done;
}

void CBinaryFile::Write(const void* src, uint32_t bytes) {
    const auto* p = static_cast<const uint8_t*>(src);
    uint32_t done = 0;
    while (done < bytes) {
        ssize_t n = ::write(Fd, p + done, bytes - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) ThrowError("Can not write to a file (%s).", FilePath);
        done += static_cast<uint32_t>(n);
    }
}

void CBinaryFile::Seek(uint32_t position) {
    if (::lseek(Fd, static_cast<off_t>(position), SEEK_SET) < 0)
        ThrowError("Seek miss from begin on a file (%s).", FilePath);
}

uint32_t CBinaryFile::Tell() {
    off_t pos = ::lseek(Fd, 0, SEEK_CUR);
    if (pos < 0 || pos > 0xFFFFFFFE) ThrowError("Cant tell the file position (%s).", FilePath);
    return static_cast<uint32_t>(pos);
}

uint64_t CBinaryFile::Size() {
    struct stat st {};
    if (::fstat(Fd, &st) != 0) ThrowError("Can not read from a file (%s).", FilePath);
    return static_cast<uint64_t>(st.st_size);
}

void CBinaryFile::Close() {
    if (Fd < 0) return;
    if (OpenMode == Mode::Read) {
        ::close(Fd);
        Fd = -1;
        return;
    }
    Fd = -1;
    bool ok = Save->Commit();
    Save.reset();
    if (!ok) ThrowError("Can not write to a file (%s).", FilePath);
}

std::vector<uint8_t> ReadWholeFile(const std::filesystem::path& path) {
    CBinaryFile file(path);
    file.Open(CBinaryFile::Mode::Read);
    uint64_t size = file.Size();
    if (size > 0xFFFFFFFFull) ThrowError("Can not read from a file (%s).", path);
    std::vector<uint8_t> data(static_cast<std::size_t>(size));
    uint32_t got = file.Read(data.data(), static_cast<uint32_t>(size));
    data.resize(got);
    file.Close();
    return data;
}
