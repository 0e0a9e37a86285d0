// One file handle that turns every failed open, read, write or seek into a
// CGeneralException naming the file.
//
// Files opened for writing are saved through CSaveTarget: the new content
// reaches the target only in Close, so a failed or cancelled save never
// leaves a truncated file where the user's file was.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "platform/file_handle.h"
#include "platform/save_target.h"

class CBinaryFile {
public:
    enum class Mode { Read, Write };

    explicit CBinaryFile(std::filesystem::path path) : FilePath(std::move(path)) {}
    virtual ~CBinaryFile();
    CBinaryFile(const CBinaryFile&) = delete;
    CBinaryFile& operator=(const CBinaryFile&) = delete;

    // Read: an existing file. Write: the new content, apart from the target.
    void Open(Mode mode);
    // Returns the count actually read; a short read at the end is no error.
    uint32_t Read(void* dst, uint32_t bytes);
    void Write(const void* src, uint32_t bytes);
    void Seek(uint32_t position);
    uint32_t Tell();
    // Size of the open file in bytes (saturated to 32 bits).
    uint64_t Size();
    // Closes the file; a file opened for writing replaces the target now.
    // Throws "Can not write to a file (%s)." when that fails.
    void Close();
    bool IsOpen() const { return File != nullptr; }
    const std::filesystem::path& Path() const { return FilePath; }

private:
    std::filesystem::path FilePath;
    std::unique_ptr<CSaveTarget> Save;
    CFileHandle ReadFile;
    // The open file: ReadFile, or the save's new content.
    CFileHandle* File = nullptr;
    Mode OpenMode = Mode::Read;
};

// Reads a whole file into memory through CBinaryFile (one read call).
std::vector<uint8_t> ReadWholeFile(const std::filesystem::path& path);
