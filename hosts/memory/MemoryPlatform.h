// The machine as a test or a command wants it: the real one, with the Ctrl key and
// the question of the main thread in the host's hand.
#pragma once

#include <memory>

#include "host/Platform.h"

namespace caretwell {

class TMemoryPlatform final : public IPlatform {
public:
    explicit TMemoryPlatform(TPlatformOptions options) : FMachine(MakePlatform(std::move(options))) {}

    void SetCtrlDown(bool value) { FIsCtrlDown = value; }
    /// Makes the calls that follow look as if they came from the main thread, or not.
    void SetMainThread(bool value) { FIsMainThread = value; }

    bool IsMainThread() override { return FIsMainThread.value_or(FMachine->IsMainThread()); }
    bool IsCtrlDown() override { return FIsCtrlDown; }
    std::string ExecutablePath() override { return FMachine->ExecutablePath(); }
    std::string SchemaFolder() override { return FMachine->SchemaFolder(); }
    bool FileExists(const std::string& path) override { return FMachine->FileExists(path); }
    std::vector<std::string> ListFolder(const std::string& folder) override {
        return FMachine->ListFolder(folder);
    }
    std::vector<std::string> FontFamilies() override { return FMachine->FontFamilies(); }
    ISettingsStore* Settings() override { return FMachine->Settings(); }
    IFormHost* Forms() override { return FMachine->Forms(); }

private:
    std::unique_ptr<IPlatform> FMachine;
    bool FIsCtrlDown = false;
    std::optional<bool> FIsMainThread;
};

}  // namespace caretwell
