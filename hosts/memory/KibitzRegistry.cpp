#include "memory/KibitzRegistry.h"

namespace caretwell {

int32_t TKibitzRegistry::Register(TRef<INibCodeInsightManager> manager) {
    if (!manager) return -1;
    FManagers.push_back(std::move(manager));
    return static_cast<int32_t>(FManagers.size()) - 1;
}

void TKibitzRegistry::Unregister(int32_t index) {
    if (index < 0 || static_cast<size_t>(index) >= FManagers.size()) return;
    if (FOnUnregister) FOnUnregister();
    FManagers[static_cast<size_t>(index)] = nullptr;
}

TRef<INibCodeInsightManager> TKibitzRegistry::Find(std::string_view fileName) const {
    TRef<INibCodeInsightManager> first;
    auto options = GetService<INibOptionServices>();
    for (const auto& manager : FManagers) {
        if (!manager || !manager->GetEnabled() || !manager->HandlesFile(fileName)) continue;
        if (!first) first = manager;
        if (!options) continue;
        // A set of options that names the file's extension knows the language better
        // than a manager that would also take the file.
        std::string extensions = options->GetExtensionsForTypeID(manager->GetOptionSetName());
        if (options->MatchExtensions(fileName, extensions)) return manager;
    }
    return first;
}

}  // namespace caretwell
