// What tags a schema makes: the result of reading it, free of any table.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "schema/XMLSchema.h"
#include "tagmodel/HTMLTag.h"

namespace caretwell {

class TMLSymbolManager;

/// One tag: the element's name, its type and the tags that its content allows.
struct TXSDPlannedTag {
    std::u16string Name;
    TXMLType Type;
    bool IsFirst;      ///< of its name, without regard to case
    size_t Namespace;  ///< of the name, in the plan's list
    std::vector<int32_t> Children;
};

struct TXSDPlan : std::enable_shared_from_this<TXSDPlan> {
    std::string FileName;
    TXMLSchemaLibrary Library{nullptr};
    const TXMLSchema* Schema = nullptr;  ///< of the file
    std::vector<TXSDPlannedTag> Tags;    ///< in the order of their registration
    std::vector<int32_t> Globals;
    std::vector<std::string> Namespaces{""};  ///< in front the one of names without a namespace

    /// Makes the tags and enters them into the manager's table. Their names carry the
    /// prefixes that the manager's document binds.
    void MakeTags(TMLSymbolManager& manager, THTMLTag& root, const std::vector<std::u16string>* parents);
    /// While it lives, messages of the library go to a manager.
    class TMessages {
    public:
        TMessages(TXSDPlan& plan, TMLSymbolManager& manager);
        ~TMessages() { FPlan.Library.SetOnMessage(nullptr); }
        TMessages(const TMessages&) = delete;
        TMessages& operator=(const TMessages&) = delete;

    private:
        TXSDPlan& FPlan;
    };

private:
    std::vector<std::u16string> FollowNamespaces(TMLSymbolManager& manager) const;
    std::vector<TRef<THTMLTag>> EnterTags(TMLSymbolManager& manager);
    TRef<THTMLTag> MakeTag(TMLSymbolManager& manager, const TXSDPlannedTag& planned,
                           const std::u16string& prefix);
    static void Register(TMLSymbolManager& manager, const TRef<THTMLTag>& tag);
    void FillAttributes(TMLSymbolManager& manager, THTMLTag& tag, const TXMLType& type);
    void AddAttributeDef(TMLSymbolManager& manager, THTMLTag& tag, const TXMLDeclaration& definition);
};

}  // namespace caretwell
