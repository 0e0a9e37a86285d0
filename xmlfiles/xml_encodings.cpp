#include "xmlfiles/xml_encodings.h"

#include "core/codepage.h"
#include "xmlfiles/xml_frame.h"

namespace {

int CodePageOfName(const char* name) {
    for (const char* sjis : {"shift_jis", "shift-jis", "sjis", "x-sjis", "ms_kanji", "windows-31j", "cp932"})
        if (EqualsIgnoringCase(name, sjis)) return 932;
    for (const char* latin : {"windows-1252", "cp1252"})
        if (EqualsIgnoringCase(name, latin)) return 1252;
    return 0;
}

bool IsShiftJisLead(int b) { return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC); }

int XMLCALL ConvertShiftJis(void*, const char* s) {
    unsigned pair = static_cast<unsigned char>(s[0]) * 256u + static_cast<unsigned char>(s[1]);
    char16_t c = CodePageToUnicode(932, static_cast<uint16_t>(pair));
    return c == NoChar ? -1 : c;
}

}  // namespace

int XMLCALL XmlUnknownEncoding(void*, const XML_Char* name, XML_Encoding* info) {
    int codePage = CodePageOfName(name);
    if (codePage == 0) return XML_STATUS_ERROR;
    for (int b = 0; b < 256; ++b) {
        if (codePage == 932 && IsShiftJisLead(b)) {
            info->map[b] = -2;
            continue;
        }
        char16_t c = b < 0x80 ? static_cast<char16_t>(b) : CodePageToUnicode(codePage, static_cast<uint16_t>(b));
        info->map[b] = c == NoChar ? -1 : c;
    }
    info->data = nullptr;
    info->convert = codePage == 932 ? ConvertShiftJis : nullptr;
    info->release = nullptr;
    return XML_STATUS_OK;
}
