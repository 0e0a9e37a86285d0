#include "sources/face_file.h"

#include <memory>
#include <string>

#include "platform/file_handle.h"

namespace {

// A FreeType stream over our file handle; FreeType closes it with the face.
struct FileStream {
    FT_StreamRec Stream{};
    CFileHandle File;
};

unsigned long ReadStream(FT_Stream stream, unsigned long offset, unsigned char* buffer, unsigned long count) {
    auto* s = static_cast<FileStream*>(stream->descriptor.pointer);
    // A count of 0 is a seek only; FreeType wants 0 for success then.
    if (!s->File.Seek(offset)) return count == 0 ? 1 : 0;
    if (count == 0) return 0;
    int64_t got = s->File.Read(buffer, count);
    return got < 0 ? 0 : static_cast<unsigned long>(got);
}

void CloseStream(FT_Stream stream) { delete static_cast<FileStream*>(stream->descriptor.pointer); }

bool IsAscii(const std::string& text) {
    for (char c : text)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

}  // namespace

FT_Error OpenFaceFile(FT_Library library, const std::filesystem::path& path, FT_Long index, FT_Face* face) {
    const std::string name = path.string();
    if (IsAscii(name)) return FT_New_Face(library, name.c_str(), index, face);
    auto stream = std::make_unique<FileStream>();
    if (!stream->File.OpenForReading(path)) return FT_Err_Cannot_Open_Resource;
    const int64_t size = stream->File.Size();
    if (size < 0) return FT_Err_Cannot_Open_Resource;
    stream->Stream.size = static_cast<unsigned long>(size);
    stream->Stream.descriptor.pointer = stream.get();
    stream->Stream.read = ReadStream;
    stream->Stream.close = CloseStream;
    FT_Open_Args args{};
    args.flags = FT_OPEN_STREAM;
    args.stream = &stream->Stream;
    // FreeType owns the stream from here on and closes it, also when opening fails.
    stream.release();
    return FT_Open_Face(library, &args, index, face);
}
