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

    bool PassAll = true;
    std::map<uint16_t, bool> Letters;
};
