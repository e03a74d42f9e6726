// The namespaces that a free XML document binds, and so how it writes the elements of its
// schema.
//
//     <r:cookbook xmlns:r="urn:example:recipes"><^     urn:example:recipes is written "r:"
//
// Only the outermost element counts: there documents bind, and a name further in means
// the same wherever it stands.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace caretwell {

class TDocumentNamespaces {
public:
    /// Every name of a table gets its prefix in front, so neither may grow without bound;
    /// what goes beyond is no binding.
    static constexpr size_t MaxBindings = 64;
    static constexpr size_t MaxPrefix = 100;  ///< in bytes

    void Clear();
    /// The name of the outermost element, prefix and all.
    void SetElement(std::string_view name);
    /// An attribute of the outermost element, any one. A prefix bound twice is bound once,
    /// to the first.
    void AddAttribute(std::string_view name, std::string_view value);
    /// The prefix that names of a namespace are written with. Empty if it is the default
    /// namespace (even with a prefix beside), if nothing binds it, and for no namespace. Of
    /// several prefixes it is that of the outermost element, or else the first.
    std::string_view GetPrefix(std::string_view nameSpace) const;

    /// What a prefix is bound to; empty if it is not, and the default namespace for none.
    std::string_view GetNamespace(std::string_view prefix) const;

    friend bool operator==(const TDocumentNamespaces&, const TDocumentNamespaces&) = default;

private:
    struct TBinding {
        std::string Prefix;  // empty for the default namespace
        std::string Namespace;
        friend bool operator==(const TBinding&, const TBinding&) = default;
    };
    std::string FElementPrefix;
    std::vector<TBinding> FBindings;  // in the order of the document
};

}  // namespace caretwell
