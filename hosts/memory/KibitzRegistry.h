// The registry of code insight managers, and which of them takes a file.
#pragma once

#include <functional>

#include "host/Nibapi.h"

namespace caretwell {

class TKibitzRegistry final : public INibKibitzRegistry {
public:
    /// Index for Unregister; -1 for a null manager.
    int32_t Register(TRef<INibCodeInsightManager> manager) override;
    /// An index that was never given out, or was given back, does nothing.
    void Unregister(int32_t index) override;

    /// The manager whose option set the file belongs to, otherwise the first that
    /// handles it; null if none does or it is switched off.
    TRef<INibCodeInsightManager> Find(std::string_view fileName) const;
    /// Called before a manager leaves, so that nobody keeps one that is going away.
    void SetOnUnregister(std::function<void()> callback) { FOnUnregister = std::move(callback); }

private:
    std::vector<TRef<INibCodeInsightManager>> FManagers;
    std::function<void()> FOnUnregister;
};

}  // namespace caretwell
