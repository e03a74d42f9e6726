#include "parser/DocumentNamespaces.h"

#include <algorithm>

namespace caretwell {

void TDocumentNamespaces::Clear() {
    FElementPrefix.clear();
    FBindings.clear();
}

void TDocumentNamespaces::SetElement(std::string_view name) {
    size_t colon = name.find(':');
    FElementPrefix = colon == name.npos ? std::string_view() : name.substr(0, std::min(colon, MaxPrefix));
}

void TDocumentNamespaces::AddAttribute(std::string_view name, std::string_view value) {
    constexpr std::string_view mark = "xmlns";
    if (!name.starts_with(mark)) return;
    name.remove_prefix(mark.size());
    if (!name.empty()) {
        bool isPrefix = name.front() == ':' && name.size() > 1 && name.find(':', 1) == name.npos;
        if (!isPrefix || name.size() > MaxPrefix + 1) return;
        name.remove_prefix(1);
    }
    auto isBound = [name](const TBinding& binding) { return binding.Prefix == name; };
    if (FBindings.size() == MaxBindings || std::any_of(FBindings.begin(), FBindings.end(), isBound)) return;
    FBindings.push_back({std::string(name), std::string(value)});
}

std::string_view TDocumentNamespaces::GetPrefix(std::string_view nameSpace) const {
    const TBinding* chosen = nullptr;
    for (const TBinding& binding : FBindings) {
        if (nameSpace.empty() || binding.Namespace != nameSpace) continue;
        if (binding.Prefix.empty()) return {};
        if (!chosen || binding.Prefix == FElementPrefix) chosen = &binding;
    }
    return chosen ? std::string_view(chosen->Prefix) : std::string_view();
}

std::string_view TDocumentNamespaces::GetNamespace(std::string_view prefix) const {
    for (const TBinding& binding : FBindings)
        if (binding.Prefix == prefix) return binding.Namespace;
    return {};
}

}  // namespace caretwell
