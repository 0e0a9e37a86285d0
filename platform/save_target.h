// How a file is saved without ever leaving it half-written.
//
// Usually the new content goes to a temporary file ".NAME.XXXXXX" beside the
// target, which replaces the target in one rename and takes over its
// permissions and owner. A symbolic link is followed, so the link stays and
// its target is replaced. Where a rename would lose something (a file with
// several hard links, a FIFO or device) or is impossible (a writable file in
// a read-only folder), the target is written in place instead: the content
// is first collected complete in a scratch file, and the target is only
// touched by Commit, which restores the old content if writing fails.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "platform/file_handle.h"

class CSaveTarget {
public:
    explicit CSaveTarget(std::filesystem::path path) : Path(std::move(path)) {}
    // Anything not committed is discarded; the target stays as it was.
    ~CSaveTarget() { Discard(); }
    CSaveTarget(const CSaveTarget&) = delete;
    CSaveTarget& operator=(const CSaveTarget&) = delete;

    // Starts the save; returns the file the new content is written to (it
    // can also be read and seeked), nullptr when the target cannot be saved.
    CFileHandle* Begin();
    // Puts the new content in place and closes the file; false when that
    // failed, the target then being as it was.
    bool Commit();

private:
    // Drops the new content.
    void Discard() noexcept {
        File.Close();
        std::error_code ignored;
        if (!TempPath.empty()) std::filesystem::remove(TempPath, ignored);
        TempPath.clear();
    }
    bool CommitReplace();
    bool CommitInPlace();

    std::filesystem::path Path;
    // The file that is replaced or written: the path with links followed.
    std::filesystem::path Target;
    std::filesystem::path TempPath;
    CFileHandle File;
    bool WriteInPlace = false;
};

// Saves a whole text at once; false when that failed (the file then is as it was).
bool SaveWholeFile(const std::filesystem::path& path, std::string_view content);
