#include "symbols/XSDPlan.h"

#include <algorithm>

#include "symbols/MLSymbolManager.h"
#include "tagmodel/HTMLAttribute.h"

namespace caretwell {
namespace {

std::string_view PrefixOf(TXMLSchemaSeverity severity) {
    switch (severity) {
        case xsError: return "Error";
        case xsWarning: return "Warning";
        case xsHint: return "Hint";
    }
    return "";
}

}  // namespace

TXSDPlan::TMessages::TMessages(TXSDPlan& plan, TMLSymbolManager& manager) : FPlan(plan) {
    plan.Library.SetOnMessage([&manager](const TXMLSchemaMessage& message) {
        manager.Error(message.FileName, message.Text, PrefixOf(message.Severity), message.Line, 0);
    });
}

void TXSDPlan::MakeTags(TMLSymbolManager& manager, THTMLTag& root,
                        const std::vector<std::u16string>* parents) {
    Library.BeginUse();
    std::vector<TRef<THTMLTag>> tags = EnterTags(manager);
    for (size_t i = 0; i < Tags.size(); ++i)
        for (int32_t child : Tags[i].Children) tags[i]->AddTag(tags[static_cast<size_t>(child)]);
    for (int32_t global : Globals) {
        const auto& tag = tags[static_cast<size_t>(global)];
        root.AddTag(tag);
        if (!parents) continue;
        for (const std::u16string& name : *parents)
            if (auto parent = manager.GetTagFromHashList(name)) parent->AddTag(tag);
    }
    // Adding does not move a range; whoever looks at the table without a list sees it all. A
    // filter that comes before the first list needs names in order.
    for (const auto& tag : tags) {
        tag->AlphaSort();
        tag->ResetRange();
    }
    root.ResetRange();
}

// What stands in front of the names of each namespace, colon and all.
std::vector<std::u16string> TXSDPlan::FollowNamespaces(TMLSymbolManager& manager) const {
    std::vector<std::u16string> prefixes;
    for (const std::string& nameSpace : Namespaces) {
        std::u16string prefix = ToUtf16(manager.FollowNamespace(nameSpace));
        prefixes.push_back(prefix.empty() ? prefix : prefix + u":");
    }
    return prefixes;
}

std::vector<TRef<THTMLTag>> TXSDPlan::EnterTags(TMLSymbolManager& manager) {
    std::vector<std::u16string> prefixes = FollowNamespaces(manager);
    bool isPrefixed = !std::all_of(prefixes.begin(), prefixes.end(), [](const auto& p) { return p.empty(); });
    // The plan knows which plain names it repeats; only a table with tags in it, or names
    // that prefixes tell apart, have to be asked for.
    bool isAlone = !isPrefixed && manager.GetTagList().empty();
    std::vector<TRef<THTMLTag>> tags;
    tags.reserve(Tags.size());
    for (const TXSDPlannedTag& planned : Tags) {
        tags.push_back(MakeTag(manager, planned, prefixes[planned.Namespace]));
        const TRef<THTMLTag>& tag = tags.back();
        if (isAlone && planned.IsFirst) manager.AddElement(tag);
        else if (isAlone) manager.KeepTag(tag);
        else Register(manager, tag);
    }
    return tags;
}

TRef<THTMLTag> TXSDPlan::MakeTag(TMLSymbolManager& manager, const TXSDPlannedTag& planned,
                                 const std::u16string& prefix) {
    TRef<THTMLTag> tag = MakeRef<TXMLElement>(prefix + planned.Name, &manager, -1);
    if (planned.Type.IsComplex() && !planned.Type.IsBuiltIn()) {
        tag->SetAttributeFiller([plan = shared_from_this(), &manager, type = planned.Type](THTMLTag& owner) {
            plan->FillAttributes(manager, owner, type);
        });
    }
    return tag;
}

// Of two tags of one name the table holds the first; the other is a child all the same.
void TXSDPlan::Register(TMLSymbolManager& manager, const TRef<THTMLTag>& tag) {
    manager.RegisterTag(tag);
    if (!(manager.GetTagFromHashList(tag->GetName()) == tag.Get())) manager.KeepTag(tag);
}

void TXSDPlan::FillAttributes(TMLSymbolManager& manager, THTMLTag& tag, const TXMLType& type) {
    TMessages messages(*this, manager);
    Library.BeginQuestion();
    for (const auto& definition : type.GetAttributes()) AddAttributeDef(manager, tag, definition);
    for (const auto& group : type.GetAttributeGroups())
        for (const auto& definition : group.GetAttributes()) AddAttributeDef(manager, tag, definition);
}

void TXSDPlan::AddAttributeDef(TMLSymbolManager& manager, THTMLTag& tag, const TXMLDeclaration& definition) {
    std::string_view name = definition.GetName();
    if (name.empty()) return;
    auto attribute = MakeRef<TXMLAttribute>(ToUtf16(name), -1);
    tag.AddAttribute(attribute);
    manager.RegisterAttributeEditor(attribute, manager.GetAttributeEditor("default"));
    for (std::string_view value : definition.GetDataType().GetEnumerations())
        if (!value.empty()) attribute->AddValue(ToUtf16(value));
    attribute->SetRequired(definition.IsRequired());
    if (auto fixed = definition.GetFixed()) {
        attribute->SetFixed(true);
        attribute->SetFixedValue(ToUtf16(*fixed));
    }
}

}  // namespace caretwell
