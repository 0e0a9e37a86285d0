#include "xmlfiles/char_selection.h"

#include <set>

#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/pg_ctrl.h"
#include "core/text_decoding.h"
#include "core/utf8.h"
#include "xmlfiles/font_filter_handler.h"
#include "zgly/binary_file.h"
#include "zgly/path_checks.h"

namespace {

constexpr uint16_t Space = 0x0020;

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
    // Returns the number of characters read.
    std::size_t AddText(std::string_view text, const std::string& what) {
        std::size_t at = 0, count = 0;
        if (text.substr(0, 3) == "\xEF\xBB\xBF") at = 3;
        while (at < text.size()) {
            char32_t cp = 0;
            const std::size_t len = DecodeUtf8(text, at, cp);
            if (len == 0)
                ThrowError("Parameter Error:\n %s is not valid UTF-8 (at byte offset %d).", what, static_cast<int>(at));
            if (cp != '\n' && cp != '\r') {
                Add(cp);
                ++count;
            }
            at += len;
        }
        return count;
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

void LoadTextFile(CCharCollector& chars, const std::filesystem::path& path, int encoding) {
    if (path.empty() || !FileExists(path)) ThrowError("Parameter Error:\n Characters file(%s) does not exist.", path);
    const std::vector<uint8_t> bytes = ReadWholeFile(path);
    const std::string what = FormatString("Characters file(%s)", path);
    // A text file cut short in a build must not pass unnoticed.
    const std::string text =
        DecodeTextToUtf8(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()), encoding, what);
    if (chars.AddText(text, what) == 0)
        ReportWarning(g_pPgCtrl, "%s holds no character.", what);
}

// Refuses a selection whose characters are only the space, which a run would
// turn into a font of one blank glyph. names says where the characters came from.
void CheckNotEmpty(const CFontFilter& filter, const std::vector<std::string>& names) {
    for (const auto& [code, in] : filter.Letters)
        if (in && code != Space) return;
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i)
        list += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    ThrowError("Parameter Error:\n Nothing to convert: %s %s no character but the space.", list,
               names.size() == 1 ? "holds" : "hold");
}

bool IsTextFile(const std::filesystem::path& path) {
    std::string ext = path.extension().string();
    for (char& c : ext) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return ext == ".txt";
}

// The filter field's file, read into the filter without the emptiness check.
void LoadFilterInto(CFontFilter& filter, const std::filesystem::path& path, int encoding) {
    if (path.empty())
        throw CGeneralException("Parameter Error:\n \"Use Filter\" checked, but filter file path not specified.");
    if (!IsTextFile(path)) {
        LoadFontFilterFile(filter, path);
        return;
    }
    CCharCollector chars(filter);
    LoadTextFile(chars, path, encoding);
    filter.Letters[Space] = true;
    filter.PassAll = false;
}

}  // namespace

void LoadCharSelection(CFontFilter& filter, const CharSelection& selection) {
    std::vector<std::string> names;
    // A filter file only adds characters, so it is read straight into the union.
    if (selection.UseFilterFile) {
        LoadFilterInto(filter, selection.FilterFile, selection.TextEncoding);
        names.push_back(FormatString("Filter file(%s)", selection.FilterFile.string()));
    }
    CCharCollector chars(filter);
    for (const auto& text : selection.Texts) {
        chars.AddText(text, "The characters text");
        names.push_back(FormatString("the characters text(%s)", text));
    }
    for (const auto& path : selection.TextFiles) {
        LoadTextFile(chars, path, selection.TextEncoding);
        names.push_back(FormatString("Characters file(%s)", path));
    }
    for (const auto& [first, last] : selection.Ranges) {
        chars.AddRange(first, last);
        names.push_back(first == last ? FormatString("the range U+%04X", static_cast<int>(first))
                                      : FormatString("the range U+%04X-U+%04X", static_cast<int>(first),
                                                     static_cast<int>(last)));
    }
    filter.Letters[Space] = true;
    filter.PassAll = false;
    // A filter file alone keeps the window's behaviour, empty or not.
    if (names.size() > 1 || !selection.UseFilterFile || IsTextFile(selection.FilterFile)) CheckNotEmpty(filter, names);
}

void LoadFilterFile(CFontFilter& filter, const std::filesystem::path& path) {
    LoadFilterInto(filter, path, TextEncodingAuto);
    if (IsTextFile(path)) CheckNotEmpty(filter, {FormatString("Filter file(%s)", path)});
}
