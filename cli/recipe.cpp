#include "cli/recipe.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <toml++/toml.h>

#include "cli/convert_options.h"
#include "cli/recipe_keys.h"
#include "cli/suggestions.h"
#include "cli/settings_replay.h"
#include "core/general_exception.h"

namespace fs = std::filesystem;

namespace {

// One key of a [[font]] or [[font.source]] table, where it was written.
struct Entry {
    const RecipeKey* Key;
    const toml::node* Value;
    int Line;
};

struct Origin {
    std::string Key;
    int Line;
};

class CRecipeReader {
public:
    CRecipeReader(const fs::path& path, const fs::path& folder) : Path(path), Folder(folder) {}

    [[noreturn]] void Fail(int line, const std::string& text) const {
        throw CRecipeError(Path.string() + ":" + std::to_string(line) + ": " + text);
    }

    RecipeFont ReadFont(const toml::table& table);

private:
    std::vector<Entry> ReadEntries(const toml::table& table, bool source);
    // sourceLine: the line of the [[font.source]] table the entries come from.
    void AddEntries(std::vector<Entry> entries, RecipeFont& font, int sourceLine = 0);
    void AddValue(const Entry& e, std::vector<std::string>& args) const;
    std::string PathValue(const RecipeKey& key, const std::string& text) const;
    void Check(RecipeFont& font) const;

    fs::path Path;
    fs::path Folder;
    // The last key that gave each option, for mapping convert's complaints.
    std::map<std::string, Origin> Origins;
    // The same for each [[font.source]] table, with the table's own line.
    std::vector<std::pair<std::map<std::string, Origin>, int>> SourceOrigins;
};

int LineOf(const toml::node& node) { return static_cast<int>(node.source().begin.line); }

std::string TypeProblem(OptionValue v) {
    switch (v) {
    case OptionValue::Text: return "needs a text";
    case OptionValue::Number: return "needs a whole number";
    case OptionValue::Flag: return "needs true or false";
    case OptionValue::Texts: return "needs a text or a list of texts";
    case OptionValue::Codes: return "needs a code, a range text or a list of them";
    case OptionValue::Pair: return "needs a text or a list of whole numbers";
    }
    return {};
}

std::vector<Entry> CRecipeReader::ReadEntries(const toml::table& table, bool source) {
    std::vector<Entry> entries;
    const char* where = source ? "[[font.source]]" : "[[font]]";
    for (auto&& [k, v] : table) {
        std::string name(k.str());
        int line = static_cast<int>(k.source().begin.line);
        if (!source && name == "source") continue;
        const RecipeKey* key = FindRecipeKey(name);
        if (!key) Fail(line, "unknown key '" + name + "' in " + where + DidYouMean(name, RecipeKeyNames()));
        if (source && key->Place == RecipePlace::Font) Fail(line, "'" + name + "' belongs in [[font]], not [[font.source]]");
        if (!source && key->Place == RecipePlace::Source)
            Fail(line, "'" + name + "' belongs in a [[font.source]] table (or write from-" + name + ")");
        entries.push_back({key, &v, line});
    }
    return entries;
}

std::string CRecipeReader::PathValue(const RecipeKey& key, const std::string& text) const {
    if (text.empty() || fs::path(text).is_absolute()) return text;
    const std::string& name = key.Name;
    bool orderKey = name == "from-order" || name == "to-order";
    bool fontKey = name == "font" || name == "from-font";
    std::error_code ec;
    // A bare order name is a shipped order, a bare face name an installed family.
    if (orderKey && text.find('/') == std::string::npos && !fs::is_regular_file(Folder / text, ec)) return text;
    if (fontKey && text.find('/') == std::string::npos) return text;
    // "@file" asks for the vertical forms of the face in the file.
    if (fontKey && text[0] == '@') return "@" + PathValue(key, text.substr(1));
    return (Folder / text).lexically_normal().string();
}

void CRecipeReader::AddValue(const Entry& e, std::vector<std::string>& args) const {
    const RecipeKey& key = *e.Key;
    const toml::node& v = *e.Value;
    auto fail = [&] { Fail(e.Line, "'" + key.Name + "' " + TypeProblem(key.Value)); };
    auto text = [&](const toml::node& n) -> std::string {
        if (!n.is_string()) fail();
        std::string s = **n.as_string();
        return key.IsPath ? PathValue(key, s) : s;
    };
    auto code = [&](const toml::node& n) -> std::string {
        if (n.is_integer()) return std::to_string(**n.as_integer());
        return text(n);
    };
    switch (key.Value) {
    case OptionValue::Text: args.insert(args.end(), {key.Option, text(v)}); return;
    case OptionValue::Number:
        if (!v.is_integer()) fail();
        args.insert(args.end(), {key.Option, std::to_string(**v.as_integer())});
        return;
    case OptionValue::Flag:
        if (!v.is_boolean()) fail();
        if (**v.as_boolean()) args.push_back(key.Option);
        return;
    case OptionValue::Texts:
    case OptionValue::Codes:
        if (const toml::array* list = v.as_array()) {
            if (list->empty()) fail();
            for (const toml::node& item : *list)
                args.insert(args.end(), {key.Option, key.Value == OptionValue::Codes ? code(item) : text(item)});
        } else {
            args.insert(args.end(), {key.Option, key.Value == OptionValue::Codes ? code(v) : text(v)});
        }
        return;
    case OptionValue::Pair:
        if (const toml::array* list = v.as_array()) {
            std::string joined;
            for (const toml::node& item : *list) {
                if (!item.is_integer()) fail();
                joined += (joined.empty() ? "" : std::string(1, key.Separator)) + std::to_string(**item.as_integer());
            }
            args.insert(args.end(), {key.Option, joined});
        } else {
            args.insert(args.end(), {key.Option, text(v)});
        }
        return;
    }
}

void CRecipeReader::AddEntries(std::vector<Entry> entries, RecipeFont& font, int sourceLine) {
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return RecipeKeyRank(*a.Key) < RecipeKeyRank(*b.Key); });
    if (sourceLine > 0) SourceOrigins.push_back({{}, sourceLine});
    for (const Entry& e : entries) {
        if (e.Key->Option.empty()) continue;
        AddValue(e, font.Args);
        Origins[e.Key->Option] = {e.Key->Name, e.Line};
        if (sourceLine == 0 && e.Key->StartsSource) SourceOrigins.push_back({{}, e.Line});
        if (e.Key->Place != RecipePlace::Font && !SourceOrigins.empty())
            SourceOrigins.back().first[e.Key->Option] = {e.Key->Name, e.Line};
    }
}

// convert's own parser judges the whole; its complaint names an option,
// which leads back to the key that gave it.
void CRecipeReader::Check(RecipeFont& font) const {
    auto find = [](const std::string& text, const std::map<std::string, Origin>& origins) -> const Origin* {
        for (std::size_t at = text.find("--"); at != std::string::npos; at = text.find("--", at + 2)) {
            std::size_t end = text.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", at + 2);
            if (auto o = origins.find(text.substr(at, end - at)); o != origins.end()) return &o->second;
        }
        return nullptr;
    };
    auto origin = [&](const std::string& text) -> Origin {
        // "(source N)" names the source the complaint is about.
        if (std::size_t at = text.rfind("(source "); at != std::string::npos) {
            std::size_t n = std::strtoul(text.c_str() + at + 8, nullptr, 10);
            if (n >= 1 && n <= SourceOrigins.size()) {
                const auto& [origins, line] = SourceOrigins[n - 1];
                if (const Origin* o = find(text, origins)) return *o;
                return {"[[font.source]]", line};
            }
        }
        if (const Origin* o = find(text, Origins)) return *o;
        if (auto s = Origins.find("--settings"); s != Origins.end()) return s->second;
        return {"[[font]]", font.Line};
    };
    try {
        font.Expanded = ExpandSettingsOption(font.Args);
        font.Options = ParseConvertOptions(font.Expanded);
    } catch (const CUsageError& e) {
        Origin o = origin(e.what());
        Fail(o.Line, o.Key + ": " + e.what());
    } catch (const CGeneralException& e) {
        Origin o = origin(e.Message);
        std::string text = e.Message;
        std::replace(text.begin(), text.end(), '\n', ' ');
        Fail(o.Line, o.Key + ": " + text);
    }
}

RecipeFont CRecipeReader::ReadFont(const toml::table& table) {
    RecipeFont font;
    font.Line = LineOf(table);
    Origins.clear();
    SourceOrigins.clear();
    std::vector<Entry> own = ReadEntries(table, false);
    const toml::node* sources = table.get("source");
    if (sources) {
        const toml::array* list = sources->as_array();
        if (!list || !list->is_array_of_tables()) Fail(LineOf(*sources), "'source' must be [[font.source]] tables");
        for (const Entry& e : own)
            if (e.Key->Place == RecipePlace::Both)
                Fail(e.Line, "'" + e.Key->Name + "' belongs in the [[font.source]] tables of this font");
        // The font's own keys (the output, the characters) go after its sources.
        std::vector<Entry> settings, rest;
        for (const Entry& e : own) (e.Key->Name == "settings" ? settings : rest).push_back(e);
        AddEntries(settings, font);
        for (const toml::node& s : *list) {
            const toml::table& st = *s.as_table();
            std::vector<Entry> entries = ReadEntries(st, true);
            auto starts = std::count_if(entries.begin(), entries.end(), [](const Entry& e) { return e.Key->StartsSource; });
            // An LC source may be its half-width file alone.
            bool halfOnly = starts == 0 && std::any_of(entries.begin(), entries.end(), [](const Entry& e) {
                                return e.Key->Name == "lc-half";
                            });
            if (starts != 1 && !halfOnly) Fail(LineOf(st), "a [[font.source]] needs exactly one of font, bmp, zgly and lc");
            AddEntries(entries, font, LineOf(st));
        }
        AddEntries(rest, font);
    } else {
        AddEntries(own, font);
    }
    for (const Entry& e : own)
        if (e.Key->Name == "name") {
            if (!e.Value->is_string()) Fail(e.Line, "'name' needs a text");
            font.Label = **e.Value->as_string();
        }
    Check(font);
    return font;
}

}  // namespace

Recipe LoadRecipe(const fs::path& path) {
    Recipe recipe;
    recipe.Path = path;
    std::error_code ec;
    recipe.Folder = fs::absolute(path, ec).parent_path();
    if (!fs::is_regular_file(path, ec)) throw CRecipeError(path.string() + ": no such recipe file");
    CRecipeReader reader(path, recipe.Folder);
    toml::table doc;
    try {
        doc = toml::parse_file(path.string());
    } catch (const toml::parse_error& e) {
        reader.Fail(static_cast<int>(e.source().begin.line), std::string(e.description()));
    }
    for (auto&& [k, v] : doc)
        if (k.str() != "font") reader.Fail(static_cast<int>(k.source().begin.line), "unknown key '" + std::string(k.str()) + "' (a recipe holds [[font]] tables)");
    const toml::array* fonts = doc["font"].as_array();
    if (!fonts || !fonts->is_array_of_tables() || fonts->empty()) {
        int line = doc.get("font") ? LineOf(*doc.get("font")) : 1;
        reader.Fail(line, "a recipe needs [[font]] tables");
    }
    std::map<fs::path, int> outputs;
    for (const toml::node& node : *fonts) {
        RecipeFont font = reader.ReadFont(*node.as_table());
        fs::path out = (recipe.Folder / font.Options.OutputPath).lexically_normal();
        if (auto [at, added] = outputs.emplace(out, font.Line); !added)
            reader.Fail(font.Line, "[[font]]: " + out.lexically_proximate(recipe.Folder).string() +
                                       " is also the output of the font at line " +
                                       std::to_string(at->second));
        if (font.Label.empty()) font.Label = out.lexically_proximate(recipe.Folder).string();
        recipe.Fonts.push_back(std::move(font));
    }
    return recipe;
}
