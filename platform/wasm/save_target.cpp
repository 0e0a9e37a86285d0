#include "platform/save_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace fs = std::filesystem;

// Emscripten's file systems (the real one under Node, memory in a browser)
// have no links to keep and no owners to carry over: the new content always
// goes to a temporary file beside the target that replaces it in one rename.

CFileHandle* CSaveTarget::Begin() {
    Discard();
    std::error_code ec;
    Target = fs::weakly_canonical(Path, ec);
    if (ec) Target = Path;
    struct stat old {};
    const bool exists = ::stat(Target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) return nullptr;
    if (exists && ::access(Target.c_str(), W_OK) != 0) return nullptr;
    const mode_t mode = exists ? (old.st_mode & 0777) : 0666;
    fs::path dir = Target.parent_path();
    const std::string stem = (dir.empty() ? std::string(".") : dir.string()) + "/." + Target.filename().string() + ".";
    // Six characters as elsewhere; a counter is enough in a single process.
    for (unsigned n = 0; n < 1000; ++n) {
        std::string name = std::to_string(100000 + ::getpid() % 800000 + n);
        fs::path candidate = stem + name.substr(name.size() - 6);
        int fd = ::open(candidate.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (fd >= 0) {
            File = CFileHandle(fd);
            TempPath = candidate;
            return &File;
        }
        if (errno != EEXIST) return nullptr;
    }
    return nullptr;
}

bool CSaveTarget::Commit() {
    if (!File.IsOpen()) return false;
    bool ok = CommitReplace();
    Discard();
    return ok;
}

bool CSaveTarget::CommitReplace() {
    bool ok = File.Close();
    if (ok && ::rename(TempPath.c_str(), Target.c_str()) == 0) TempPath.clear();
    else ok = false;
    return ok;
}

bool CSaveTarget::CommitInPlace() { return CommitReplace(); }

bool SaveWholeFile(const fs::path& path, std::string_view content) {
    CSaveTarget save(path);
    CFileHandle* file = save.Begin();
    if (!file || !file->Write(content.data(), content.size())) return false;
    return save.Commit();
}
