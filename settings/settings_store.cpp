#include "settings/settings_store.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>

#include "core/general_exception.h"
#include "core/utf8.h"
#include "platform/paths.h"
#include "platform/save_target.h"
#include "settings/ini_file.h"

namespace fs = std::filesystem;

namespace {

std::string ReadText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return {};
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool DirectoryWritable(const fs::path& dir) {
    return IsWritableDirectory(dir);
}

// Creates every missing directory above the file; stops quietly at the first
// failure, as nothing depends on it.
void CreateParentDirectories(const fs::path& file) {
    std::error_code ec;
    fs::create_directories(file.parent_path(), ec);
}

}  // namespace

int CSettingsStore::GetInt(std::string_view section, std::string_view key, int def) const {
    std::optional<std::string> v = CIniText(ReadText(Path)).Get(section, key);
    if (!v) return def;
    const std::string& s = *v;
    std::size_t i = 0;
    bool negative = false;
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) negative = s[i++] == '-';
    long long n = 0;
    for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
        n = n * 10 + (s[i] - '0');
        if (n > 0xFFFFFFFFLL) n = 0xFFFFFFFFLL;
    }
    return static_cast<int>(static_cast<uint32_t>(negative ? -n : n));
}

bool CSettingsStore::GetBool(std::string_view section, std::string_view key, bool def) const {
    return GetInt(section, key, def ? 1 : 0) > 0;
}

std::string CSettingsStore::GetString(std::string_view section, std::string_view key, std::string_view def) const {
    std::optional<std::string> v = CIniText(ReadText(Path)).Get(section, key);
    return UnescapeSettingString(v ? std::string_view(*v) : def);
}

void CSettingsStore::SetInt(std::string_view section, std::string_view key, int value) const {
    CIniText ini(ReadText(Path));
    ini.Set(section, key, std::to_string(value));
    SaveWholeFile(Path, ini.Text());
}

void CSettingsStore::SetString(std::string_view section, std::string_view key, std::string_view value) const {
    CIniText ini(ReadText(Path));
    ini.Set(section, key, EscapeSettingString(value));
    SaveWholeFile(Path, ini.Text());
}

void CSettingsStore::DeleteSection(std::string_view section) const {
    CIniText ini(ReadText(Path));
    ini.DeleteSection(section);
    SaveWholeFile(Path, ini.Text());
}

bool CSettingsStore::Exists() const {
    std::error_code ec;
    return fs::exists(Path, ec);
}

std::string EscapeSettingString(std::string_view text) {
    std::string out;
    std::u16string units = Utf8ToUtf16(text);
    for (std::size_t i = 0; i < units.size(); ++i) {
        char16_t c = units[i];
        // The file's reader trims spaces around a value; spaces at its ends
        // are kept as escapes.
        if (c == u' ' && (i == 0 || i + 1 == units.size())) {
            out += "\\0020";
            continue;
        }
        switch (c) {
            case u'\t': out += "\\t"; break;
            case u'\n': out += "\\n"; break;
            case u'\r': out += "\\r"; break;
            case u'\\': out += "\\\\"; break;
            default:
                if (c >= 128) out += FormatString("\\%04X", static_cast<unsigned>(c));
                else out += static_cast<char>(c);
        }
    }
    return out;
}

std::string UnescapeSettingString(std::string_view text) {
    std::u16string out;
    std::size_t i = 0;
    while (i < text.size()) {
        char c = text[i++];
        if (c != '\\') {
            // Plain bytes may be UTF-8 typed in by hand; collect them whole.
            std::size_t start = i - 1;
            while (i < text.size() && text[i] != '\\') ++i;
            out += Utf8ToUtf16(text.substr(start, i - start));
            continue;
        }
        if (i >= text.size()) break;  // a lone backslash at the end is dropped
        char n = text[i];
        if (n == '\\') out += u'\\', ++i;
        else if (n == 'n') out += u'\n', ++i;
        else if (n == 'r') out += u'\r', ++i;
        else if (n == 't') out += u'\t', ++i;
        else {
            std::size_t avail = std::min<std::size_t>(4, text.size() - i);
            unsigned value = 0;
            for (std::size_t k = 0; k < avail; ++k) {
                int h = HexValue(text[i + k]);
                if (h < 0) break;
                value = value * 16 + static_cast<unsigned>(h);
            }
            if (value >= 32) {
                out += static_cast<char16_t>(value);
                i += avail;
            }
            // Otherwise the backslash is dropped and the next character is
            // taken as an ordinary one by the next round.
        }
    }
    return Utf16ToUtf8(out);
}

fs::path SettingsPathBesideProgram(const fs::path& program) {
    std::string s = program.string();
    if (s.size() > 259) s.resize(259);
    // Only the file name's own extension goes: a dot in a directory name
    // (~/.local/bin/glyphwright) must not cut the path there.
    std::size_t nameStart = s.rfind('/');
    nameStart = nameStart == std::string::npos ? 0 : nameStart + 1;
    std::size_t dot = s.rfind('.');
    if (dot != std::string::npos && dot > nameStart) s.resize(dot);
    return fs::path(s + ".ini");
}

fs::path ResolveSettingsPath(const fs::path& program) {
    fs::path path;
    if (const char* env = std::getenv("GLYPHWRIGHT_SETTINGS"); env && *env) {
        path = env;
    } else {
        path = SettingsPathBesideProgram(program);
        CreateParentDirectories(path);
        if (!DirectoryWritable(path.parent_path())) {
            const char* xdg = std::getenv("XDG_CONFIG_HOME");
            const char* home = std::getenv("HOME");
            fs::path base = (xdg && *xdg) ? fs::path(xdg) : fs::path(home ? home : ".") / ".config";
            path = base / "glyphwright" / "glyphwright.ini";
        }
    }
    CreateParentDirectories(path);
    return path;
}
