#include "cli/settings_replay.h"

#include <algorithm>
#include <array>
#include <set>

#include "cli/convert_options.h"
#include "core/codepage.h"
#include "core/general_exception.h"
#include "settings/settings_store.h"
#include "xmlfiles/glyph_order_files.h"

namespace fs = std::filesystem;

namespace {

struct ReplayedOption {
    std::string Name;   // "--size"
    std::string Value;
    bool HasValue = true;
};

// The options in three groups, so that the user's own options can replace a
// whole input or output or single options of it.
struct ReplayedSettings {
    std::vector<ReplayedOption> Input;
    std::vector<ReplayedOption> Output;
    std::vector<ReplayedOption> Common;
};

// A levels list selects its stored entry, or none for a value out of range;
// no selection counts as the first entry.
std::string Levels(const CSettingsStore& s, const char* section) {
    int bpp = s.GetInt(section, "bpp", 1);
    return LevelChoices[bpp >= 1 && bpp <= 4 ? bpp - 1 : 0];
}

std::string FieldPath(const CSettingsStore& s, const char* section) { return s.GetString(section, "Path"); }

// The order list holds the shipped orders; the stored file name selects one
// of them by its stem, anything else leaves the first one selected. The list
// is read at the first use and kept for the other tab.
std::string ShippedOrder(const CSettingsStore& s, const char* section, std::vector<GlyphOrderInfo>& orders) {
    if (orders.empty()) FindGlyphOrderFiles(orders);
    if (orders.empty()) throw CGeneralException("Parameter Error:\n Order file is not selected.");
    std::string stem = fs::path(s.GetString(section, "Order", "Latin1.xlor")).stem().string();
    for (const GlyphOrderInfo& info : orders)
        if (info.Path.stem().string() == stem) return info.Path.string();
    return orders.front().Path.string();
}

std::string Str(int v) { return std::to_string(v); }

std::vector<ReplayedOption> InputOptions(const CSettingsStore& s, std::vector<GlyphOrderInfo>& orders) {
    switch (std::clamp(s.GetInt("Main", "InputSelect", 2), 0, 3)) {
    case 0:
        return {{"--from-bmp", FieldPath(s, "InBmpPath")},
                {"--from-order", ShippedOrder(s, "InBmp", orders)},
                {"--colors", Levels(s, "InBmp")}};
    case 1: return {{"--from-zgly", FieldPath(s, "InZarnicPath")}};
    case 2: {
        std::vector<ReplayedOption> o = {{"--from-font", s.GetString("InWin", "Name", "Tahoma")}};
        int size = s.GetInt("InWin", "Size", 16);
        o.push_back({s.GetBool("InWin", "UseWinSize", true) ? "--size" : "--cell-height", Str(size)});
        o.push_back({"--levels", Levels(s, "InWin")});
        int width = s.GetInt("InWin", "Width", 1);
        o.push_back({"--width", WidthChoices[width >= 0 && width <= 3 ? width : 0]});
        o.push_back({"--fixed-width", Str(s.GetInt("InWin", "Fixed", 16))});
        if (!s.GetBool("InWin", "SoftAA", true)) o.push_back({"--no-soft-aa", "", false});
        return o;
    }
    default: {
        std::vector<ReplayedOption> o = {{"--from-lc", FieldPath(s, "InLcMainPath")},
                                         {"--lc-half", FieldPath(s, "InLcSubPath")}};
        if (!s.GetBool("InLc", "MainFixed", true)) o.push_back({"--lc-proportional", "", false});
        if (!s.GetBool("InLc", "SubFixed", true)) o.push_back({"--lc-half-proportional", "", false});
        if (s.GetBool("InLc", "Vertical", false)) o.push_back({"--vertical", "", false});
        return o;
    }
    }
}

std::vector<ReplayedOption> BmpOutputOptions(const CSettingsStore& s, std::vector<GlyphOrderInfo>& orders) {
    std::vector<ReplayedOption> o = {{"--to-bmp", FieldPath(s, "OutBmpPath")}, {"--to-order", ShippedOrder(s, "OutBmp", orders)}};
    if (!s.GetBool("OutBmp", "Grid", true)) o.push_back({"--no-grid", "", false});
    auto get = [&](const char* key) { return Str(s.GetInt("OutBmp", key, 0)); };
    if (s.GetBool("OutBmp", "SizeType", false)) {
        o.push_back({"--cell", get("Width") + "x" + get("Height")});
        if (!s.GetBool("OutBmp", "Center", true)) o.push_back({"--offset", get("Left") + "," + get("Top")});
    } else if (s.GetBool("OutBmp", "SameMargin", true)) {
        o.push_back({"--margins", get("MarginLeft") + "," + get("MarginTop")});
    } else {
        o.push_back({"--margins", get("MarginLeft") + "," + get("MarginTop") + "," + get("MarginRight") + "," +
                                      get("MarginBottom")});
    }
    return o;
}

std::vector<ReplayedOption> ZglyOutputOptions(const CSettingsStore& s) {
    const char* section = "OutZarnic";
    std::vector<ReplayedOption> o = {{"--to-zgly", FieldPath(s, "OutZarnicPath")}};
    std::string encoding = s.GetString(section, "Encoding", "UTF-16");
    int chosen = -1;
    for (int e = 0; e < EncodingCount; ++e)
        if (encoding == EncodingName(e)) chosen = e;
    if (chosen < 0) throw CGeneralException("Parameter Error:\n Outout encoding is not selected.");
    o.push_back({"--encoding", EncodingChoices[chosen]});
    // A field left on "Use Default" gives the font's own value.
    if (!s.GetBool(section, "AlterCharUseDef", true)) o.push_back({"--alt-char", s.GetString(section, "AlterChar")});
    const std::array<std::pair<const char*, const char*>, 4> numbers = {
        {{"LineHeight", "--line-height"}, {"DefaultLeft", "--default-left"}, {"DefaultWidth", "--default-width"},
         {"DefaultRight", "--default-right"}}};
    const std::array<int, 4> defaults = {16, 0, 16, 0};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (!s.GetBool(section, std::string(numbers[i].first) + "UseDef", true))
            o.push_back({numbers[i].second, Str(s.GetInt(section, numbers[i].first, defaults[i]))});
    int rotation = s.GetInt(section, "Rotation", 0);
    if (rotation == 90 || rotation == 180 || rotation == 270) o.push_back({"--rotation", Str(rotation)});
    return o;
}

std::string OptionName(const std::string& arg) {
    if (arg.rfind("--", 0) != 0) return {};
    return arg.substr(0, arg.find('='));
}

// Options that exclude each other: giving one replaces the file's others.
const std::vector<std::set<std::string>> ExclusiveGroups = {
    {"--size", "--cell-height"}, {"--cell", "--offset", "--margins"}};

bool Replaced(const std::string& name, const std::set<std::string>& given) {
    if (given.count(name)) return true;
    for (const auto& group : ExclusiveGroups)
        if (group.count(name))
            for (const auto& other : group)
                if (given.count(other)) return true;
    return false;
}

void Append(std::vector<std::string>& out, const std::vector<ReplayedOption>& options, const std::set<std::string>& given) {
    for (const ReplayedOption& o : options) {
        if (Replaced(o.Name, given)) continue;
        out.push_back(o.Name);
        if (o.HasValue) out.push_back(o.Value);
    }
}

// Throws CGeneralException ("Parameter Error:") when the file is missing or
// names no encoding or glyph order the window could select.
ReplayedSettings ReadWindowSettings(const fs::path& ini) {
    std::error_code ec;
    if (!fs::is_regular_file(ini, ec)) ThrowError("Parameter Error:\n Settings file(%s) does not exist.", ini.string());
    CSettingsStore s(ini);
    ReplayedSettings r;
    std::vector<GlyphOrderInfo> orders;
    r.Input = InputOptions(s, orders);
    r.Output = s.GetInt("Main", "OutputSelect", 0) >= 1 ? ZglyOutputOptions(s) : BmpOutputOptions(s, orders);
    if (s.GetBool("Main", "UseFilter", false)) r.Common.push_back({"--filter", FieldPath(s, "FilterPath")});
    return r;
}

}  // namespace

std::vector<std::string> ExpandSettingsOption(const std::vector<std::string>& args) {
    std::vector<std::string> rest;
    std::string ini;
    bool found = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--settings" || a.rfind("--settings=", 0) == 0) {
            if (found) throw CUsageError("--settings is given twice");
            found = true;
            if (a == "--settings") {
                if (i + 1 >= args.size()) throw CUsageError("--settings needs a value");
                ini = args[++i];
            } else {
                ini = a.substr(11);
            }
            continue;
        }
        rest.push_back(a);
    }
    if (!found) return args;
    ReplayedSettings settings = ReadWindowSettings(ini);
    std::set<std::string> given;
    for (const auto& a : rest)
        if (std::string name = OptionName(a); !name.empty()) given.insert(name);
    // Another kind of input or output replaces the file's whole one; the
    // same kind only the options given.
    auto otherKind = [&](const std::vector<ReplayedOption>& group, OptionGroup starters) {
        for (const ConvertOption& o : ConvertOptionTable())
            if (o.Group == starters && given.count(o.Name) && group.front().Name != o.Name) return true;
        return false;
    };
    bool ownInput = otherKind(settings.Input, OptionGroup::Input);
    bool ownOutput = otherKind(settings.Output, OptionGroup::Output);
    std::vector<std::string> out;
    if (!ownInput) Append(out, settings.Input, given);
    // The user's options stay right after the input, where source options belong.
    out.insert(out.end(), rest.begin(), rest.end());
    if (!ownOutput) Append(out, settings.Output, given);
    Append(out, settings.Common, given);
    return out;
}
