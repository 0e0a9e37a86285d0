#include "core/general_exception.h"

#include <algorithm>
#include <cstdio>

#include "core/pg_ctrl.h"
#include "core/utf8.h"

std::string CutMessage(std::string text) {
    // No more bytes than the limit means no more characters either.
    if (text.size() <= MaxMessageChars) return text;
    std::size_t chars = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
            if (chars == MaxMessageChars) {
                text.resize(i);
                return text;
            }
            ++chars;
        }
    }
    return text;
}

std::string FormatStringList(std::string_view format, std::initializer_list<CFormatArg> args) {
    std::string out;
    auto next = args.begin();
    for (std::size_t i = 0; i < format.size(); ++i) {
        char ch = format[i];
        if (ch != '%') {
            // The plain text up to the next conversion in one piece.
            const std::size_t end = std::min(format.find('%', i), format.size());
            out.append(format.substr(i, end - i));
            i = end - 1;
            continue;
        }
        // %[flags][width][.precision][length]conversion
        std::size_t start = i++;
        while (i < format.size() && std::string_view("-+ #0").find(format[i]) != std::string_view::npos) ++i;
        while (i < format.size() && format[i] >= '0' && format[i] <= '9') ++i;
        if (i < format.size() && format[i] == '.') {
            ++i;
            while (i < format.size() && format[i] >= '0' && format[i] <= '9') ++i;
        }
        while (i < format.size() && (format[i] == 'l' || format[i] == 'h')) ++i;
        if (i >= format.size()) {
            out.append(format.substr(start));
            break;
        }
        char conv = format[i];
        if (conv == '%') {
            out += '%';
            continue;
        }
        std::string directive(format.substr(start, i - start));
        // Drop length modifiers; the value is passed as long long.
        while (!directive.empty() && (directive.back() == 'l' || directive.back() == 'h')) directive.pop_back();
        const CFormatArg* arg = next != args.end() ? &*next++ : nullptr;
        char buf[128];
        switch (conv) {
        case 's':
            if (arg && arg->IsText) out.append(arg->Text);
            else if (!arg) out += "(null)";
            else out += std::to_string(arg->Number);
            break;
        case 'c':
            if (arg && !arg->IsText) out += CodePointToUtf8(static_cast<char16_t>(arg->Number & 0xFFFF));
            else if (arg) out.append(arg->Text);
            break;
        case 'd': case 'i': case 'u': case 'x': case 'X': case 'o': {
            long long v = arg && !arg->IsText ? arg->Number : 0;
            if (conv == 'x' || conv == 'X' || conv == 'o' || conv == 'u') {
                // Unsigned conversions of negative ints print as 32-bit values, as printf does.
                unsigned long long u = v < 0 && v >= INT32_MIN ? static_cast<uint32_t>(v) : static_cast<unsigned long long>(v);
                std::snprintf(buf, sizeof buf, (directive + "ll" + conv).c_str(), u);
            } else {
                std::snprintf(buf, sizeof buf, (directive + "ll" + conv).c_str(), v);
            }
            out += buf;
            break;
        }
        default:
            out.append(format.substr(start, i - start + 1));
            break;
        }
    }
    return CutMessage(std::move(out));
}

void ReportWarningList(CPgCtrl* pgCtrl, std::string_view format, std::initializer_list<CFormatArg> args) {
    if (!pgCtrl) return;
    try {
        pgCtrl->AddWarning(FormatStringList(format, args));
    } catch (...) {
        // A warning never fails towards its caller.
    }
}
