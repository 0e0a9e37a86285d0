#include "zgly/font_block_file.h"

#include <vector>

#include "core/general_exception.h"
#include "zgly/path_checks.h"
#include "zgly/zgly_format.h"

using namespace zgly;

void CheckZglyHeader(const ZglyFileHeader& h) {
    if (h.Magic != Magic) throw CGeneralException("ZGLY File Error:\n The file is not ZGLY file");
    if (h.ByteOrderMark == SwappedByteOrderMark)
        throw CGeneralException("ZGLY File Error:\n Little endian byte order support only");
    if (h.ByteOrderMark != ByteOrderMark) throw CGeneralException("ZGLY File Error:\n The file is not ZGLY file");
    if (h.Version != Version && h.Version != OldVersion)
        ThrowError("ZGLY File Error:\n Unsupported version(=%04X, supports %04X, %04X)", h.Version, Version,
                   OldVersion);
    if (h.HeaderSize != HeaderSize)
        ThrowError("ZGLY File Error:\n Unknown header size(=%d, must be %d)", h.HeaderSize, HeaderSize);
    if (h.BlockCount < 2) ThrowError("ZGLY File Error:\n Number of blocks is too small(=%d)", h.BlockCount);
}

void CFontBlockFile::Load(CFontBlockSet& set) {
    Open(Mode::Read);
    uint64_t fileSize = Size();
    if (fileSize > 0xFFFFFFFFull) ThrowError("Can not read from a file (%s).", Path());
    std::vector<uint8_t> buffer(static_cast<std::size_t>(fileSize));
    buffer.resize(Read(buffer.data(), static_cast<uint32_t>(fileSize)));
    Close();

    // A file too short for a header cannot start with the magic either.
    if (buffer.size() < HeaderSize) throw CGeneralException("ZGLY File Error:\n The file is not ZGLY file");
    const uint8_t* p = buffer.data();
    set.Header = ZglyFileHeader{GetU32(p), GetU16(p + 4), GetU16(p + 6), GetU32(p + 8), GetU16(p + 12),
                                GetU16(p + 14)};
    CheckZglyHeader(set.Header);

    std::size_t pos = set.Header.HeaderSize, end = buffer.size();
    while (pos < end) {
        if (end - pos < BlockHeaderSize)
            ThrowError("ZGLY File Error:\n The block at offset %d is cut off by the end of the file(size=%d)",
                       static_cast<long long>(pos), static_cast<long long>(end));
        uint32_t tag = GetU32(p + pos), size = GetU32(p + pos + 4);
        if (size < BlockHeaderSize)
            ThrowError("ZGLY File Error:\n The block at offset %d has an invalid size(=%d, must be at least %d)",
                       static_cast<long long>(pos), size, BlockHeaderSize);
        if (size > end - pos)
            ThrowError("ZGLY File Error:\n The block at offset %d runs past the end of the file(block size=%d, file "
                       "size=%d)",
                       static_cast<long long>(pos), size, static_cast<long long>(end));
        set.AddBlock(tag, p + pos + BlockHeaderSize, size - BlockHeaderSize);
        pos += size;
    }
    set.Validate();
}

void CFontBlockFile::WriteBlock(uint32_t tag, uint32_t length, const std::function<void(CBinaryFile&)>& content) {
    const uint32_t padded = PaddedBlockSize(length);
    uint8_t head[BlockHeaderSize];
    PutU32(head, tag);
    PutU32(head + 4, padded);
    Write(head, BlockHeaderSize);
    const uint32_t start = Tell();
    content(*this);
    if (Tell() - start != length)
        ThrowError("Internal Error:\n Block content of %d bytes written as %d.", static_cast<long long>(length),
                   static_cast<long long>(Tell() - start));
    static const uint8_t zeros[4] = {};
    Write(zeros, padded - BlockHeaderSize - length);
    WriteOffset += padded;
    ++WrittenBlocks;
}

void CFontBlockFile::Save(const CFontBlockSet& set) { Save(set, StreamedBlock{}); }

void CFontBlockFile::Save(const CFontBlockSet& set, const StreamedBlock& streamed) {
    Open(Mode::Write);
    WriteOffset = HeaderSize;
    WrittenBlocks = 0;
    Seek(HeaderSize);
    for (uint32_t tag : {TagFINF, TagCGLP, TagCWDH, TagCMAP}) {
        for (uint32_t i = 0; const CFontBlock* b = set.GetBlock(tag, i); ++i)
            WriteBlock(tag, b->Length(), [b](CBinaryFile& file) { file.Write(b->Data(), b->Length()); });
        if (streamed.WriteContent && streamed.Tag == tag) WriteBlock(tag, streamed.Length, streamed.WriteContent);
    }

    uint8_t header[HeaderSize];
    PutU32(header, Magic);
    PutU16(header + 4, ByteOrderMark);
    PutU16(header + 6, Version);
    PutU32(header + 8, WriteOffset);
    PutU16(header + 12, HeaderSize);
    PutU16(header + 14, WrittenBlocks);
    Seek(0);
    Write(header, HeaderSize);
    Close();
}

void CheckNativeFontFile(const std::filesystem::path& path) {
    CheckInputFile(path);
    CFontBlockSet set;
    CFontBlockFile(path).Load(set);
}
