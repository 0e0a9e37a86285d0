#include "ui/path_history.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "core/general_exception.h"
#include "settings/settings_store.h"

void CPathHistory::Load() {
    Items.clear();
    for (int i = 0; i < Capacity; ++i) {
        std::string entry = Settings.GetString(Section, std::to_string(i));
        if (!entry.empty()) Items.push_back(std::move(entry));
    }
    if (Items.empty()) {
        std::error_code ec;
        std::filesystem::path cwd = std::filesystem::current_path(ec);
        if (ec) throw CGeneralException("Internal Error:\n Fail to GetCurrentDirectory.");
        Items.push_back(cwd.string());
    }
}

void CPathHistory::Save() const {
    std::size_t n = std::min<std::size_t>(Items.size(), Capacity);
    Settings.DeleteSection(Section);
    for (std::size_t i = 0; i < n; ++i) Settings.SetString(Section, std::to_string(i), Items[i]);
    Settings.SetInt(Section, "HistoryNum", Capacity);
}

void CPathHistory::MoveToFront(const std::string& text) {
    auto it = std::find(Items.begin(), Items.end(), text);
    if (it != Items.end()) Items.erase(it);
    Items.insert(Items.begin(), text);
}

void CPathHistory::Commit(const std::string& text) {
    MoveToFront(text);
    Save();
    StorePath(text);
}

bool CPathHistory::Select(int i, const std::string& current) {
    if (i < 0 || i >= static_cast<int>(Items.size())) return false;
    std::string selected = Items[static_cast<std::size_t>(i)];
    Items.erase(Items.begin() + i);
    if (!current.empty()) MoveToFront(current);
    if (selected != current) Items.insert(Items.begin(), selected);
    Save();
    StorePath(selected);
    return true;
}

std::string CPathHistory::StoredPath() const { return Settings.GetString(Section, "Path"); }

void CPathHistory::StorePath(const std::string& text) const { Settings.SetString(Section, "Path", text); }
