#include "core/codepage.h"

int EncodingCodePage(int encoding) {
    switch (encoding) {
    case EncodingShiftJis: return 932;
    case EncodingCp1252: return 1252;
    default: return -1;
    }
}

uint16_t UnicodeToFileCode(int encoding, char16_t c) {
    const int codePage = EncodingCodePage(encoding);
    return codePage < 0 ? static_cast<uint16_t>(c) : UnicodeToCodePage(codePage, c);
}

char16_t FileCodeToUnicode(int encoding, uint16_t code) {
    const int codePage = EncodingCodePage(encoding);
    return codePage < 0 ? static_cast<char16_t>(code) : CodePageToUnicode(codePage, code);
}

const char* EncodingName(int encoding) {
    switch (encoding) {
    case EncodingUtf8: return "UTF-8";
    case EncodingUtf16: return "UTF-16";
    case EncodingShiftJis: return "Shift_JIS";
    case EncodingCp1252: return "CodePage 1252 (ISO 8859-1)";
    default: return "";
    }
}
