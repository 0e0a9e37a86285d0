// An INI text kept line by line, so that comments, unknown sections and keys
// survive every write. Section and key names compare without regard to ASCII
// case, as private-profile files do.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class CIniText {
public:
    explicit CIniText(std::string_view text);

    std::optional<std::string> Get(std::string_view section, std::string_view key) const;
    void Set(std::string_view section, std::string_view key, std::string_view value);
    void DeleteSection(std::string_view section);
    std::string Text() const;

private:
    // Index of the section's header line, or npos.
    std::size_t FindSection(std::string_view section) const;
    // End of the section starting at header (the next header or the end).
    std::size_t SectionEnd(std::size_t header) const;
    std::size_t FindKey(std::size_t header, std::string_view key) const;

    std::vector<std::string> Lines;
};
