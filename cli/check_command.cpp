#include "cli/check_command.h"

#include <set>

#include "cli/convert_options.h"
#include "cli/json_text.h"
#include "cli/option_words.h"
#include "cli/options.h"
#include "cli/suggestions.h"
#include "core/codepage.h"
#include "core/general_exception.h"
#include "core/text_decoding.h"
#include "core/utf8.h"
#include "preview/text_renderer.h"
#include "zgly/binary_file.h"
#include "zgly/font_block_set.h"
#include "zgly/path_checks.h"
#include "zgly/zgly_format.h"

namespace {

[[noreturn]] void Fail(const std::string& text) { throw CUsageError(text); }

// A character the font lacks and where the text first uses it.
struct Missing {
    uint32_t Code = 0;
    std::string Source;
    int Line = 0, Column = 0;  // 0: a range, which has no place
};

class CCoverage {
public:
    explicit CCoverage(const CFontBlockSet& set)
        : Set(set), CodePage(EncodingCodePage(set.GetBlock(zgly::TagFINF, 0)->Data()[zgly::FinfEncoding])) {}

    bool Has(uint32_t cp) const {
        if (cp > 0xFFFE) return false;  // codes are 16-bit
        const uint16_t code = CodePage < 0 ? static_cast<uint16_t>(cp) : UnicodeToCodePage(CodePage, static_cast<char16_t>(cp));
        return code != NoChar && Set.FindGlyphIndex(code) != 0xFFFF;
    }

    // Every character of UTF-8 text but line ends and a byte-order mark.
    void CheckText(std::string_view text, const std::string& source, const std::string& what) {
        int line = 1, column = 0;
        for (std::size_t at = 0; at < text.size();) {
            char32_t cp = 0;
            const std::size_t len = DecodeUtf8(text, at, cp);
            if (len == 0)
                ThrowError("Parameter Error:\n %s is not valid UTF-8 (at byte offset %d).", what, static_cast<int>(at));
            at += len;
            if (cp == '\n') {
                ++line;
                column = 0;
                continue;
            }
            if (cp == '\r' || (cp == 0xFEFF && line == 1 && column == 0)) continue;
            ++column;
            ++Checked;
            Note(cp, source, line, column);
        }
    }

    void CheckRange(uint32_t first, uint32_t last, const std::string& source) {
        for (uint32_t cp = first; cp <= last; ++cp) {
            if (cp >= 0xD800 && cp <= 0xDFFF) continue;
            ++Checked;
            Note(cp, source, 0, 0);
        }
    }

    std::vector<Missing> Lacking;
    std::size_t Checked = 0;
    std::set<uint32_t> Seen;

private:
    void Note(uint32_t cp, const std::string& source, int line, int column) {
        if (!Seen.insert(cp).second || Has(cp)) return;
        Lacking.push_back({cp, source, line, column});
    }

    const CFontBlockSet& Set;
    int CodePage;
};

// The character itself where it prints, else nothing.
std::string Printable(uint32_t cp) { return cp < 0x20 || cp == 0x7F ? std::string() : CodePointToUtf8(cp); }

std::string CodeText(uint32_t cp) { return FormatString("U+%04X", static_cast<int>(cp)); }

}  // namespace

CheckOptions ParseCheckCommand(const std::vector<std::string>& args) {
    CheckOptions o;
    bool encodingGiven = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i].rfind("-", 0) != 0) {
            if (!o.FontPath.empty()) Fail("check takes one ZGLY file");
            o.FontPath = args[i];
            continue;
        }
        const OptionWord word = ReadOptionWord(args, i, {"--chars", "--chars-file", "--range", "--chars-encoding"}, {"--json"});
        if (word.Name == "--json") {
            if (o.Json) Fail("--json is given twice");
            o.Json = true;
        } else if (word.Name == "--chars-encoding") {
            if (encodingGiven) Fail("--chars-encoding is given twice");
            encodingGiven = true;
            o.TextEncoding = -1;
            for (std::size_t k = 0; k < EncodingChoices.size(); ++k)
                if (SameIgnoringCase(word.Value, EncodingChoices[k])) o.TextEncoding = static_cast<int>(k);
            if (o.TextEncoding < 0)
                Fail("--chars-encoding takes utf-8|utf-16|shift_jis|cp1252, not '" + word.Value + "'" +
                     DidYouMean(word.Value, EncodingChoices));
        } else if (word.Name == "--range") {
            const CliCodeRange r = ParseCodeRange(word.Value);
            o.Texts.push_back({CheckText::Kind::Range, word.Value, r.First, r.Last});
        } else {
            o.Texts.push_back({word.Name == "--chars" ? CheckText::Kind::Chars : CheckText::Kind::File, word.Value});
        }
    }
    if (o.FontPath.empty()) Fail("check needs a ZGLY file");
    if (o.Texts.empty()) Fail("check needs the text to check (--chars, --chars-file or --range)");
    return o;
}

int RunCheckCommand(const CheckOptions& options, std::FILE* out, std::FILE* err) {
    CFontBlockSet set;
    LoadZglyForPreview(options.FontPath, set);
    CCoverage coverage(set);
    for (const CheckText& t : options.Texts) {
        switch (t.From) {
        case CheckText::Kind::Chars: coverage.CheckText(t.Value, "--chars", "The characters text"); break;
        case CheckText::Kind::Range: coverage.CheckRange(t.First, t.Last, "--range " + t.Value); break;
        case CheckText::Kind::File: {
            if (t.Value.empty() || !FileExists(t.Value))
                ThrowError("Parameter Error:\n Characters file(%s) does not exist.", t.Value);
            const std::vector<uint8_t> bytes = ReadWholeFile(t.Value);
            const std::string what = FormatString("Characters file(%s)", t.Value);
            coverage.CheckText(DecodeTextToUtf8(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()),
                                                options.TextEncoding, what),
                               t.Value, what);
            break;
        }
        }
    }
    std::string text = options.Json ? "{\"file\":" + JsonString(options.FontPath) + ",\"checked\":" +
                                          std::to_string(coverage.Seen.size()) + ",\"missing\":["
                                    : "";
    bool first = true;
    for (const Missing& m : coverage.Lacking) {
        if (options.Json) {
            text += std::string(first ? "" : ",") + "{\"code\":" + JsonString(CodeText(m.Code)) +
                    ",\"char\":" + JsonString(Printable(m.Code)) + ",\"source\":" + JsonString(m.Source) +
                    (m.Line ? ",\"line\":" + std::to_string(m.Line) + ",\"column\":" + std::to_string(m.Column) : "") +
                    "}";
        } else {
            text += CodeText(m.Code) + "\t" + Printable(m.Code) + "\t" + m.Source +
                    (m.Line ? ":" + std::to_string(m.Line) + ":" + std::to_string(m.Column) : "") + "\n";
        }
        first = false;
    }
    if (options.Json) text += "]}\n";
    std::fputs(text.c_str(), out);
    if (!options.Json)
        std::fprintf(err, "%s lacks %d of the %d characters checked.\n", options.FontPath.c_str(),
                     static_cast<int>(coverage.Lacking.size()), static_cast<int>(coverage.Seen.size()));
    return coverage.Lacking.empty() ? 0 : 1;
}

void RunInfoChars(const std::string& path, bool json, std::FILE* out) {
    CFontBlockSet set;
    LoadZglyForPreview(path, set);
    CCoverage coverage(set);
    std::string text = json ? "{\"file\":" + JsonString(path) + ",\"chars\":[" : "";
    bool first = true;
    for (uint32_t cp = 0; cp < 0xFFFF; ++cp) {
        if ((cp >= 0xD800 && cp <= 0xDFFF) || !coverage.Has(cp)) continue;
        if (json)
            text += std::string(first ? "" : ",") + "{\"code\":" + JsonString(CodeText(cp)) + ",\"char\":" +
                    JsonString(Printable(cp)) + "}";
        else
            text += CodeText(cp) + "\t" + Printable(cp) + "\n";
        first = false;
    }
    if (json) text += "]}\n";
    std::fputs(text.c_str(), out);
}
