// The one way to the host's settings: a value by name, under the host's own root.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/Nibapi.h"
#include "host/Platform.h"

namespace caretwell {

/// Keys below the root of the host's settings.
inline constexpr std::string_view InsightSettings = "\\Code Insight";
inline constexpr std::string_view HTMLFileSettings = "\\Internet\\File Options\\HTML";

/// Nothing if the value, its key, or the whole store of settings is missing.
inline std::optional<std::string> ReadSetting(std::string_view key, std::string_view name) {
    auto services = GetService<INibServices>();
    ISettingsStore* settings = GetPlatform().Settings();
    if (!services || !settings) return std::nullopt;
    std::string path = services->BaseRegistryKey().append(key);
    return settings->OpenKey(path) ? settings->ReadString(path, name) : std::nullopt;
}

}  // namespace caretwell
