// Several sources read as one font: every character comes from the first
// source that has it, later sources only fill what is still missing.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "core/font_io.h"

class CMergedFontReader : public CFontReader {
public:
    struct Source {
        std::unique_ptr<CFontReader> Reader;
        std::string Name;  // for messages and the run's summary
    };
    // counts, when given, receives the glyphs each source supplied (it must
    // outlive Read).
    CMergedFontReader(std::vector<Source> sources, std::vector<std::size_t>* counts = nullptr);

    void CheckParameters() override;
    // Reads the sources in order. Glyphs keep their own metrics; glyphs of
    // later sources take the first source's grey levels. Font-wide values
    // come from the first source that has them.
    void Read(CFontData& font, const CFontFilter& filter) override;

private:
    std::vector<Source> Sources;
    std::vector<std::size_t>* Counts;
};

// The message for a vertical source among horizontal ones (or the reverse).
std::string MixedDirectionsMessage(const std::string& first, bool firstVertical, const std::string& other);
