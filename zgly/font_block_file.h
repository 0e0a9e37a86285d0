// Loads a ZGLY file into a CFontBlockSet with its header and structure
// checks, and saves a set as a ZGLY file.
#pragma once

#include <cstdint>
#include <functional>

#include "zgly/binary_file.h"
#include "zgly/font_block_set.h"

class CFontBlockFile : public CBinaryFile {
public:
    explicit CFontBlockFile(std::filesystem::path path) : CBinaryFile(std::move(path)) {}

    // Reads the whole file in one call, checks the header, splits the blocks
    // and validates their structure; throws on the first problem.
    void Load(CFontBlockSet& set);
    // Writes FINF, CGLP, every CWDH and every CMAP, each padded to a multiple
    // of 4, behind the header. The target is replaced only when complete.
    void Save(const CFontBlockSet& set);

    // A block whose content is made while it is saved, piece by piece, so a
    // large glyph block never has to be held whole: WriteContent must write
    // exactly Length bytes through the file.
    struct StreamedBlock {
        uint32_t Tag = 0;
        uint32_t Length = 0;
        std::function<void(CBinaryFile&)> WriteContent;
    };
    // As Save, with the streamed block after the set's blocks of its tag.
    void Save(const CFontBlockSet& set, const StreamedBlock& streamed);

private:
    // One block: its header, content must write exactly length bytes, then
    // the padding.
    void WriteBlock(uint32_t tag, uint32_t length, const std::function<void(CBinaryFile&)>& content);

    uint32_t WriteOffset = 0;
    uint16_t WrittenBlocks = 0;
};

// Checks the header fields in their fixed order; throws the first failure.
void CheckZglyHeader(const ZglyFileHeader& header);
// CheckInputFile, then a full load that is thrown away.
void CheckNativeFontFile(const std::filesystem::path& path);
