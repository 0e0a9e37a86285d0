#include "sources/bitmap_charset.h"

#include <algorithm>
#include <cctype>

#include FT_BDF_H

#include "core/codepage.h"
#include "core/general_exception.h"

namespace {

std::string Lower(const char* text) {
    std::string s = text ? text : "";
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

enum class Charset { None, Jis0208, Jis0201, Cp1252 };

Charset Identify(const std::string& registry, const std::string& encoding) {
    if (registry.rfind("jisx0208", 0) == 0 && encoding == "0") return Charset::Jis0208;
    if (registry.rfind("jisx0201", 0) == 0 && encoding == "0") return Charset::Jis0201;
    if (registry == "microsoft" && encoding == "cp1252") return Charset::Cp1252;
    return Charset::None;
}

uint16_t CodeIn(Charset charset, char16_t u) {
    switch (charset) {
    case Charset::Jis0208: {
        const uint16_t sjis = UnicodeToCodePage(932, u);
        return sjis > 0xFF && sjis != NoChar ? ShiftJisToJis(sjis) : 0;
    }
    case Charset::Jis0201: {
        // JIS Roman has the yen sign and the overline where ASCII has the
        // backslash and the tilde.
        if (u == u'\\' || u == u'~') return 0;
        if (u == 0x00A5) return 0x5C;
        if (u == 0x203E) return 0x7E;
        const uint16_t b = UnicodeToCodePage(932, u);
        return b < 0x80 || (b >= 0xA1 && b <= 0xDF) ? b : 0;
    }
    case Charset::Cp1252: {
        const uint16_t b = UnicodeToCodePage(1252, u);
        return b < 0x100 ? b : 0;
    }
    case Charset::None: break;
    }
    return 0;
}

}  // namespace

uint16_t ShiftJisToJis(uint16_t sjis) {
    const int lead = sjis >> 8, trail = sjis & 0xFF;
    if (lead < 0x81 || (lead > 0x9F && lead < 0xE0) || lead > 0xEF) return 0;
    if (trail < 0x40 || trail == 0x7F || trail > 0xFC) return 0;
    // Each lead byte holds two rows: the trail bytes below 0x9F the first.
    int row = (lead < 0xE0 ? lead - 0x81 : lead - 0xC1) * 2 + 1;
    int cell;
    if (trail >= 0x9F) {
        ++row;
        cell = trail - 0x9E;
    } else {
        cell = trail - (trail > 0x7F ? 0x40 : 0x3F);
    }
    return static_cast<uint16_t>((row + 0x20) << 8 | (cell + 0x20));
}

std::unique_ptr<CCharsetMap> CCharsetMap::ForFace(FT_Face face, const std::string& name) {
    for (int i = 0; i < face->num_charmaps; ++i)
        if (face->charmaps[i]->encoding == FT_ENCODING_UNICODE) return nullptr;
    const char* encodingId = nullptr;
    const char* registryId = nullptr;
    if (face->num_charmaps < 1 || FT_Get_BDF_Charset_ID(face, &encodingId, &registryId) != 0) return nullptr;
    const std::string registry = Lower(registryId), encoding = Lower(encodingId);
    const Charset charset = Identify(registry, encoding);
    if (charset == Charset::None)
        ThrowError("Parameter Error:\n Font(%s) numbers its characters in %s-%s, which can not be mapped to Unicode; "
                   "fonts in Unicode (ISO10646-1), ISO8859-1, JISX0208, JISX0201 or Microsoft-CP1252 can.",
                   name, registryId ? registryId : "", encodingId ? encodingId : "");
    FT_Set_Charmap(face, face->charmaps[0]);
    auto map = std::make_unique<CCharsetMap>();
    map->Codes.resize(0x10000);
    for (uint32_t u = 0; u < 0xFFFF; ++u) map->Codes[u] = CodeIn(charset, static_cast<char16_t>(u));
    return map;
}
