#include "memory/Settings.h"

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "markup/Text.h"
#include "memory/FileText.h"

namespace caretwell {
namespace {

// Settings are written by hand; a file beyond this is something else.
constexpr size_t LargestFile = 1 << 20;

std::string UpperText(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = ToUpper(c);
    return result;
}

// Tries the whole path, then the path without its first part, and so on.
template <class TValues>
const std::string* FindSpelling(const TValues& values, std::string_view path) {
    while (true) {
        if (auto found = values.find(path); found != values.end()) return &found->second;
        size_t separator = path.find('\\');
        if (separator == std::string_view::npos) return nullptr;
        path.remove_prefix(separator + 1);
    }
}

}  // namespace

std::string DefaultSettingsFile() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    if (config && *config) return std::string(config) + "/caretwell/settings.json";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.config/caretwell/settings.json";
}

void TSettingsStore::Override(std::string_view name, std::string value) {
    FOverrides.insert_or_assign(UpperText(name), std::move(value));
}

std::optional<std::string> TSettingsStore::ReadString(std::string_view key, std::string_view name) {
    std::string path = UpperText(key) + "\\" + UpperText(name);
    if (const std::string* value = FindSpelling(FOverrides, path)) return *value;
    if (!FIsLoaded) Load();
    const std::string* value = FindSpelling(FFile, path);
    return value ? std::optional(*value) : std::nullopt;
}

void TSettingsStore::Load() {
    FIsLoaded = true;
    if (std::error_code error; !std::filesystem::exists(FFileName, error)) return;
    auto text = ReadFileText(FFileName, LargestFile);
    if (!text.Text) return Warn(text.Problem);
    auto json = nlohmann::json::parse(*text.Text, nullptr, false);
    if (!json.is_object()) return Warn("is not a JSON object");
    TValues values;
    for (const auto& [name, value] : json.items()) {
        if (!value.is_string()) return Warn("holds a value that is not a string: " + name);
        values.insert_or_assign(UpperText(name), value.template get<std::string>());
    }
    FFile = std::move(values);
}

void TSettingsStore::Warn(std::string_view problem) {
    if (FWarning) FWarning("settings " + FFileName + ": " + std::string(problem));
}

}  // namespace caretwell
