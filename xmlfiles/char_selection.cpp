#include "xmlfiles/char_selection.h"

#include <set>

#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/pg_ctrl.h"
#include "xmlfiles/font_filter_handler.h"
#include "zgly/binary_file.h"
#include "zgly/path_checks.h"

namespace {

constexpr uint16_t Space = 0x0020;

// Decodes one UTF-8 sequence at text[at]; returns its length, or 0 when the
// bytes there are not valid UTF-8 (overlong forms and surrogates included).
std::size_t DecodeUtf8(std::string_view text, std::size_t at, uint32_t& cp) {
    const auto b = static_cast<unsigned char>(text[at]);
    std::size_t len;
    uint32_t min;
    if (b < 0x80) { cp = b; return 1; }
    if ((b & 0xE0) == 0xC0) { len = 2; cp = b & 0x1F; min = 0x80; }
    else if ((b & 0xF0) == 0xE0) { len = 3; cp = b & 0x0F; min = 0x800; }
    else if ((b & 0xF8) == 0xF0) { len = 4; cp = b & 0x07; min = 0x10000; }
    else return 0;
    if (at + len > text.size()) return 0;
    for (std::size_t k = 1; k < len; ++k) {
        const auto c = static_cast<unsigned char>(text[at + k]);
        if ((c & 0xC0) != 0x80) return 0;
        cp = (cp << 6) | (c & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
    return len;
}

// Adds characters to a filter; a character the 16-bit codes cannot hold is
// reported once however often it occurs.
class CCharCollector {
public:
    explicit CCharCollector(CFontFilter& filter) : Filter(filter) {}

    void Add(uint32_t cp) {
        if (cp <= 0xFFFF) {
            // Surrogate halves and the no-character code are never characters.
            if (cp < 0xD800 || (cp > 0xDFFF && cp < 0xFFFF)) Filter.Letters[static_cast<uint16_t>(cp)] = true;
        } else if (Warned.insert(cp).second) {
            ReportWarning(g_pPgCtrl,
                          "A char ('%s': U+%04X) is above U+FFFF and is skipped; character codes are 16-bit.",
                          CodePointToUtf8(cp), static_cast<int>(cp));
        }
    }

    // Every character of UTF-8 text but a byte-order mark and line ends.
    // what names the text in the message for bytes that are not UTF-8.
    void AddText(std::string_view text, const std::string& what) {
        std::size_t at = 0;
        if (text.substr(0, 3) == "\xEF\xBB\xBF") at = 3;
        while (at < text.size()) {
            uint32_t cp = 0;
            const std::size_t len = DecodeUtf8(text, at, cp);
            if (len == 0)
                ThrowError("Parameter Error:\n %s is not valid UTF-8 (at byte offset %d).", what, static_cast<int>(at));
            if (cp != '\n' && cp != '\r') Add(cp);
            at += len;
        }
    }

    void AddRange(uint32_t first, uint32_t last) {
        if (last > 0xFFFF) {
            ReportWarning(g_pPgCtrl,
                          "The range U+%04X-U+%04X goes above U+FFFF; the codes above it are skipped, character codes "
                          "are 16-bit.",
                          static_cast<int>(first), static_cast<int>(last));
            last = 0xFFFF;
        }
        for (uint32_t cp = first; cp <= last; ++cp) Add(cp);
    }

private:
    CFontFilter& Filter;
    std::set<uint32_t> Warned;
};

void LoadTextFile(CCharCollector& chars, const std::filesystem::path& path) {
    if (path.empty() || !FileExists(path)) ThrowError("Parameter Error:\n Characters file(%s) does not exist.", path.string());
    const std::vector<uint8_t> bytes = ReadWholeFile(path);
    chars.AddText(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()),
                  FormatString("Characters file(%s)", path.string()));
}

bool IsTextFile(const std::filesystem::path& path) {
    std::string ext = path.extension().string();
    for (char& c : ext) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return ext == ".txt";
}

}  // namespace

void LoadCharSelection(CFontFilter& filter, const CharSelection& selection) {
    // A filter file only adds characters, so it is read straight into the union.
    if (selection.UseFilterFile) LoadFilterFile(filter, selection.FilterFile);
    CCharCollector chars(filter);
    for (const auto& text : selection.Texts) chars.AddText(text, "The characters text");
    for (const auto& path : selection.TextFiles) LoadTextFile(chars, path);
    for (const auto& [first, last] : selection.Ranges) chars.AddRange(first, last);
    filter.Letters[Space] = true;
    filter.PassAll = false;
}

void LoadFilterFile(CFontFilter& filter, const std::filesystem::path& path) {
    if (path.empty())
        throw CGeneralException("Parameter Error:\n \"Use Filter\" checked, but filter file path not specified.");
    if (!IsTextFile(path)) {
        LoadFontFilterFile(filter, path);
        return;
    }
    CCharCollector chars(filter);
    LoadTextFile(chars, path);
    filter.Letters[Space] = true;
    filter.PassAll = false;
}
