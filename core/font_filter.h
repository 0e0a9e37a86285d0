// The set of characters a conversion is limited to.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>

class CFontData;
class CGlyphOrder;

class CFontFilter {
public:
    bool IsExcluded(uint16_t code) const {
        if (PassAll) return false;
        auto it = Letters.find(code);
        return it == Letters.end() || !it->second;
    }
    void RestrictToOrder(const CGlyphOrder& order);
    void ReportMissingLetters(const CFontData& font) const;
    // Reads an .xllt file (implemented with the XML files); throws on failure.
    void Load(const std::filesystem::path& path);

    bool PassAll = true;
    std::map<uint16_t, bool> Letters;
};
