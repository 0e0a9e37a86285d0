#include "platform/save_target.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Leftovers younger than this may belong to a save still running.
constexpr auto StaleAge = std::chrono::minutes(1);

bool WriteAll(int fd, const uint8_t* data, std::size_t size, off_t at) {
    while (size > 0) {
        ssize_t n = ::pwrite(fd, data, size, at);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        data += n;
        size -= static_cast<std::size_t>(n);
        at += n;
    }
    return true;
}

// Copies size bytes from the start of one file to the start of another.
// Non-seekable targets (FIFOs, devices) are written in order.
bool CopyContent(int from, int to, off_t size, bool seekable) {
    std::vector<uint8_t> buffer(1 << 16);
    off_t at = 0;
    while (at < size) {
        ssize_t n = ::pread(from, buffer.data(), buffer.size(), at);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        if (seekable) {
            if (!WriteAll(to, buffer.data(), static_cast<std::size_t>(n), at)) return false;
        } else {
            for (ssize_t done = 0; done < n;) {
                ssize_t w = ::write(to, buffer.data() + done, static_cast<std::size_t>(n - done));
                if (w < 0 && errno == EINTR) continue;
                if (w <= 0) return false;
                done += w;
            }
        }
        at += n;
    }
    return true;
}

// A file without a name in the temporary folder, gone when closed.
int OpenScratch() {
    std::error_code ec;
    fs::path dir = fs::temp_directory_path(ec);
    if (ec) dir = "/tmp";
    int fd = ::open(dir.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (fd >= 0) return fd;
    std::string pattern = (dir / "glyphwright.XXXXXX").string();
    fd = ::mkostemp(pattern.data(), O_CLOEXEC);
    if (fd >= 0) ::unlink(pattern.c_str());
    return fd;
}

// The path with every symbolic link followed; a dangling link gives the
// file it names, which the save then creates.
fs::path FollowLinks(const fs::path& path) {
    std::error_code ec;
    fs::path at = path;
    // As many links as the system itself follows before giving up.
    for (int hops = 0; hops < 40 && fs::is_symlink(fs::symlink_status(at, ec)); ++hops) {
        fs::path next = fs::read_symlink(at, ec);
        if (ec) return path;
        at = next.is_absolute() ? next : at.parent_path() / next;
    }
    fs::path resolved = fs::weakly_canonical(at, ec);
    return ec ? at : resolved;
}

// Ctrl-C, SIGTERM and SIGHUP wait while the target is being overwritten, so
// that a second one cannot end the program half-way.
class CSignalsHeld {
public:
    CSignalsHeld() {
        sigset_t held;
        sigemptyset(&held);
        for (int s : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, s);
        ::pthread_sigmask(SIG_BLOCK, &held, &Previous);
    }
    ~CSignalsHeld() { ::pthread_sigmask(SIG_SETMASK, &Previous, nullptr); }
    CSignalsHeld(const CSignalsHeld&) = delete;
    CSignalsHeld& operator=(const CSignalsHeld&) = delete;

private:
    sigset_t Previous;
};

bool IsTemporaryName(const std::string& name, const std::string& prefix) {
    if (name.size() != prefix.size() + 6 || name.compare(0, prefix.size(), prefix) != 0) return false;
    for (std::size_t i = prefix.size(); i < name.size(); ++i) {
        char c = name[i];
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))) return false;
    }
    return true;
}

// Removes the temporary files of earlier saves to the path (".NAME.XXXXXX")
// that are older than a minute: what a killed process left behind.
void RemoveStaleTemporaryFiles(const fs::path& target) {
    fs::path dir = target.parent_path();
    if (dir.empty()) dir = ".";
    const std::string prefix = "." + target.filename().string() + ".";
    const auto now = fs::file_time_type::clock::now();
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(dir, ec)) {
        if (!IsTemporaryName(entry.path().filename().string(), prefix)) continue;
        std::error_code e;
        if (!entry.is_regular_file(e) || entry.is_symlink(e)) continue;
        auto written = entry.last_write_time(e);
        if (!e && now - written > StaleAge) fs::remove(entry.path(), e);
    }
}

}  // namespace

CFileHandle* CSaveTarget::Begin() {
    Discard();
    int fd = -1;
    Target = FollowLinks(Path);
    struct stat old {};
    const bool exists = ::stat(Target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) return nullptr;
    WriteInPlace = exists && (!S_ISREG(old.st_mode) || old.st_nlink > 1);
    // A FIFO or device never had temporary files (and /dev is no place to look).
    if (!exists || S_ISREG(old.st_mode)) RemoveStaleTemporaryFiles(Target);

    if (!WriteInPlace) {
        fs::path dir = Target.parent_path();
        std::string pattern = (dir.empty() ? std::string(".") : dir.string()) + "/." +
                              Target.filename().string() + ".XXXXXX";
        fd = ::mkostemp(pattern.data(), O_CLOEXEC);
        if (fd >= 0) {
            File = CFileHandle(fd);
            TempPath = pattern;
            if (exists) {
                // The new file is the old one to everyone else: same owner
                // (where allowed, else at least the group) and permissions.
                if (::fchown(fd, old.st_uid, old.st_gid) != 0) (void)::fchown(fd, static_cast<uid_t>(-1), old.st_gid);
                ::fchmod(fd, old.st_mode & 07777);
            } else {
                mode_t mask = ::umask(0);
                ::umask(mask);
                ::fchmod(fd, 0666 & ~mask);
            }
            return &File;
        }
        // A folder that takes no new files may still hold a writable one.
        if (!exists || (errno != EACCES && errno != EPERM && errno != EROFS)) return nullptr;
        WriteInPlace = true;
    }
    if (::access(Target.c_str(), W_OK) != 0) return nullptr;
    fd = OpenScratch();
    if (fd < 0) return nullptr;
    File = CFileHandle(fd);
    return &File;
}

bool CSaveTarget::Commit() {
    if (!File.IsOpen()) return false;
    bool ok = WriteInPlace ? CommitInPlace() : CommitReplace();
    Discard();
    return ok;
}

bool CSaveTarget::CommitReplace() {
    bool ok = ::fsync(static_cast<int>(File.Handle)) == 0;
    ok = File.Close() && ok;
    if (ok && ::rename(TempPath.c_str(), Target.c_str()) == 0) TempPath.clear();
    else ok = false;
    return ok;
}

bool CSaveTarget::CommitInPlace() {
    const int Fd = static_cast<int>(File.Handle);
    struct stat st {};
    if (::fstat(Fd, &st) != 0) return false;
    const off_t size = st.st_size;
    struct stat target {};
    if (::stat(Target.c_str(), &target) != 0) return false;

    if (!S_ISREG(target.st_mode)) {
        // A FIFO or device takes the content as a stream; nothing to restore.
        int out = ::open(Target.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
        if (out < 0) return false;
        bool ok = CopyContent(Fd, out, size, false);
        return ::close(out) == 0 && ok;
    }

    int out = ::open(Target.c_str(), O_RDWR | O_CLOEXEC);
    if (out < 0) return false;
    CSignalsHeld held;
    const off_t oldSize = target.st_size;
    // The old content is kept aside first, and the room for the new one is
    // claimed before a byte is changed, so a full disk changes nothing.
    int backup = OpenScratch();
    bool ok = backup >= 0 && CopyContent(out, backup, oldSize, true);
    if (ok && size > oldSize) {
        ok = ::posix_fallocate(out, 0, size) == 0;
        if (!ok) (void)::ftruncate(out, oldSize);
    }
    if (ok) {
        ok = CopyContent(Fd, out, size, true) && ::ftruncate(out, size) == 0 && ::fsync(out) == 0;
        if (!ok) {
            // Writing failed half-way: put the old content back.
            (void)CopyContent(backup, out, oldSize, true);
            (void)::ftruncate(out, oldSize);
            (void)::fsync(out);
        }
    }
    if (backup >= 0) ::close(backup);
    return ::close(out) == 0 && ok;
}

bool SaveWholeFile(const fs::path& path, std::string_view content) {
    CSaveTarget save(path);
    CFileHandle* file = save.Begin();
    if (!file || !file->Write(content.data(), content.size())) return false;
    return save.Commit();
}
