#include "zgly/binary_file.h"

#include <string>

#include "core/general_exception.h"

// A save not closed is dropped with Save, which owns its file.
CBinaryFile::~CBinaryFile() = default;

void CBinaryFile::Open(Mode mode) {
    OpenMode = mode;
    if (mode == Mode::Read) {
        if (!ReadFile.OpenForReading(FilePath)) ThrowError("Can not open a file (%s).", FilePath);
        File = &ReadFile;
        return;
    }
    Save = std::make_unique<CSaveTarget>(FilePath);
    File = Save->Begin();
    if (!File) {
        Save.reset();
        ThrowError("Can not open a file (%s).", FilePath);
    }
}

uint32_t CBinaryFile::Read(void* dst, uint32_t bytes) {
    int64_t got = File->Read(dst, bytes);
    if (got < 0) ThrowError("Can not read from a file (%s).", FilePath);
    return static_cast<uint32_t>(got);
}

void CBinaryFile::Write(const void* src, uint32_t bytes) {
    if (!File->Write(src, bytes)) ThrowError("Can not write to a file (%s).", FilePath);
}

void CBinaryFile::Seek(uint32_t position) {
    if (!File->Seek(position)) ThrowError("Seek miss from begin on a file (%s).", FilePath);
}

uint32_t CBinaryFile::Tell() {
    int64_t pos = File->Tell();
    if (pos < 0 || pos > 0xFFFFFFFE) ThrowError("Cant tell the file position (%s).", FilePath);
    return static_cast<uint32_t>(pos);
}

uint64_t CBinaryFile::Size() {
    int64_t size = File->Size();
    if (size < 0) ThrowError("Can not read from a file (%s).", FilePath);
    return static_cast<uint64_t>(size);
}

void CBinaryFile::Close() {
    if (!File) return;
    File = nullptr;
    if (OpenMode == Mode::Read) {
        ReadFile.Close();
        return;
    }
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
