#include "settings/ini_file.h"

#include <algorithm>

namespace {

std::string_view Trim(std::string_view s) {
    const char* space = " \t\r\n";
    std::size_t b = s.find_first_not_of(space);
    if (b == std::string_view::npos) return {};
    std::size_t e = s.find_last_not_of(space);
    return s.substr(b, e - b + 1);
}

bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; };
        return lower(x) == lower(y);
    });
}

bool IsHeader(std::string_view line, std::string_view* name = nullptr) {
    line = Trim(line);
    if (line.empty() || line.front() != '[') return false;
    std::size_t close = line.find(']');
    if (close == std::string_view::npos) return false;
    if (name) *name = Trim(line.substr(1, close - 1));
    return true;
}

// Splits a key line; comments and lines without "=" are not keys.
bool SplitKey(std::string_view line, std::string_view& key, std::string_view& value) {
    std::string_view t = Trim(line);
    if (t.empty() || t.front() == ';' || t.front() == '#') return false;
    std::size_t eq = t.find('=');
    if (eq == std::string_view::npos) return false;
    key = Trim(t.substr(0, eq));
    value = Trim(t.substr(eq + 1));
    return true;
}

}  // namespace

CIniText::CIniText(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        std::string_view line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        Lines.emplace_back(line);
        start = end + 1;
    }
}

std::size_t CIniText::FindSection(std::string_view section) const {
    for (std::size_t i = 0; i < Lines.size(); ++i) {
        std::string_view name;
        if (IsHeader(Lines[i], &name) && SameName(name, section)) return i;
    }
    return std::string::npos;
}

std::size_t CIniText::SectionEnd(std::size_t header) const {
    std::size_t i = header + 1;
    while (i < Lines.size() && !IsHeader(Lines[i])) ++i;
    return i;
}

std::size_t CIniText::FindKey(std::size_t header, std::string_view key) const {
    std::size_t end = SectionEnd(header);
    for (std::size_t i = header + 1; i < end; ++i) {
        std::string_view k, v;
        if (SplitKey(Lines[i], k, v) && SameName(k, key)) return i;
    }
    return std::string::npos;
}

std::optional<std::string> CIniText::Get(std::string_view section, std::string_view key) const {
    std::size_t header = FindSection(section);
    if (header == std::string::npos) return std::nullopt;
    std::size_t line = FindKey(header, key);
    if (line == std::string::npos) return std::nullopt;
    std::string_view k, v;
    SplitKey(Lines[line], k, v);
    // Matching quotes around a value are not part of it.
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front()) v = v.substr(1, v.size() - 2);
    return std::string(v);
}

void CIniText::Set(std::string_view section, std::string_view key, std::string_view value) {
    // Reading trims the value and drops matching quotes; quote the values that
    // would lose something by that (a single space, a quoted word).
    bool edgeSpace = !value.empty() && (Trim(value.substr(0, 1)).empty() || Trim(value.substr(value.size() - 1)).empty());
    bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    std::string line = std::string(key) + "=" +
                       (edgeSpace || quoted ? "\"" + std::string(value) + "\"" : std::string(value));
    std::size_t header = FindSection(section);
    if (header == std::string::npos) {
        while (!Lines.empty() && Trim(Lines.back()).empty()) Lines.pop_back();
        if (!Lines.empty()) Lines.emplace_back();
        Lines.push_back("[" + std::string(section) + "]");
        Lines.push_back(std::move(line));
        return;
    }
    std::size_t found = FindKey(header, key);
    if (found != std::string::npos) {
        Lines[found] = std::move(line);
        return;
    }
    // After the section's last non-blank line, so that a blank separator stays.
    std::size_t at = SectionEnd(header);
    while (at > header + 1 && Trim(Lines[at - 1]).empty()) --at;
    Lines.insert(Lines.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
}

void CIniText::DeleteSection(std::string_view section) {
    std::size_t header = FindSection(section);
    if (header == std::string::npos) return;
    std::size_t end = SectionEnd(header);
    Lines.erase(Lines.begin() + static_cast<std::ptrdiff_t>(header), Lines.begin() + static_cast<std::ptrdiff_t>(end));
}

std::string CIniText::Text() const {
    std::string out;
    for (const std::string& line : Lines) {
        out += line;
        out += '\n';
    }
    return out;
}
