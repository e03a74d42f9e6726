// The host's settings: a JSON object of strings in a file of the user's, and values
// given for one run that win over it.
//
// A value is asked for by key and name, as in "Software\Tarnwell\Code Insight" and
// "Auto Code Completions". The file may spell as much of that path as it likes:
// "Auto Code Completions", "Code Insight\Auto Code Completions" and the whole of it
// all answer, and the longest spelling wins. Case does not matter.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "host/Platform.h"

namespace caretwell {

/// $XDG_CONFIG_HOME/caretwell/settings.json, or under ~/.config without that variable.
std::string DefaultSettingsFile();

class TSettingsStore final : public ISettingsStore {
public:
    using TWarning = std::function<void(std::string_view)>;

    /// The file is read when the first value is asked for. If it is missing the
    /// store is empty; if it is no JSON object of strings, the warning is called once too.
    explicit TSettingsStore(std::string fileName, TWarning warning = {})
        : FFileName(std::move(fileName)), FWarning(std::move(warning)) {}

    /// For this run: wins over every value of the file.
    void Override(std::string_view name, std::string value);

    bool OpenKey(std::string_view) override { return true; }
    std::optional<std::string> ReadString(std::string_view key, std::string_view name) override;

private:
    // Upper-case spelling to value.
    using TValues = std::map<std::string, std::string, std::less<>>;

    void Load();
    void Warn(std::string_view problem);

    std::string FFileName;
    TWarning FWarning;
    TValues FOverrides, FFile;
    bool FIsLoaded = false;
};

}  // namespace caretwell
