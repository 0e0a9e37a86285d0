#include "cli/json_text.h"

#include "core/general_exception.h"

std::string JsonString(const std::string& text) {
    std::string out = "\"";
    for (unsigned char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20) {
            out += FormatString("\\u%04X", static_cast<int>(c));
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}
