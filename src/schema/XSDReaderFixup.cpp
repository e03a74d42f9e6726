// What a load does at its end: attribute groups are spread over the groups and types
// that name them, and references to elements are resolved.
#include <unordered_set>

#include "schema/XSDReader.h"

namespace caretwell {

/// Spreads attributes. Groups that name each other twice over would grow without
/// bound, so all steps of one load share one budget.
class TXSDReader::TFixup {
public:
    explicit TFixup(TXSDReader& reader) : FReader(reader) {}

    void FlattenGroup(TXSDAttributeGroup& target) {
        FOpen = {&target};
        FPath = {{&target, 0}};
        while (!FPath.empty() && !FIsSpent) {
            auto& [group, next] = FPath.back();
            if (next < group->FAttrGroups.size()) {
                FollowReference(target, group->FAttrGroups[next++]);
            } else {
                FOpen.erase(group);
                FPath.pop_back();
            }
        }
    }

    void AddGroupsOf(TXSDType& type) {
        for (const std::u16string& name : type.FAttrGroups)
            if (auto* group = FReader.LookupAttrGroup(name)) Append(type, *group);
    }

private:
    void FollowReference(TXSDAttributeGroup& target, const std::u16string& name) {
        TXSDAttributeGroup* group = FReader.LookupAttrGroup(name);
        if (!group) return FReader.Error("Couldn't find attribute group " + ToUtf8(name));
        if (!FOpen.insert(group).second)
            return FReader.Error("Attribute group " + ToUtf8(name) + " contains itself");
        Append(target, *group);
        FPath.push_back({group, 0});
    }

    void Append(TXSDBaseType& target, const TXSDAttributeGroup& group) {
        FSteps += 1 + group.FAttributes.size();
        if (FSteps > MaxGroupSteps) {
            if (!FIsSpent) FReader.Error("Too many attributes in attribute groups; the rest is not used");
            FIsSpent = true;
            return;
        }
        target.FAttributes.insert(target.FAttributes.end(), group.FAttributes.begin(),
                                  group.FAttributes.end());
    }

    TXSDReader& FReader;
    size_t FSteps = 0;
    bool FIsSpent = false;
    std::vector<std::pair<TXSDAttributeGroup*, size_t>> FPath;  // a group and its next reference
    std::unordered_set<TXSDAttributeGroup*> FOpen;              // the groups of FPath
};

void TXSDReader::FixupReferences() {
    TFixup fixup(*this);
    for (TXSDClassEntry* entry = FAttrGroups; entry; entry = entry->Next)
        fixup.FlattenGroup(*static_cast<TXSDAttributeGroup*>(entry->Item));
    for (TXSDClassEntry* entry = FTypes; entry; entry = entry->Next)
        fixup.AddGroupsOf(*static_cast<TXSDType*>(entry->Item));
    for (TXSDClassEntry* entry = FFirstElement; entry; entry = entry->Next)
        FixupElement(*static_cast<TXSDElement*>(entry->Item));
}

void TXSDReader::FixupElement(TXSDElement& element) {
    if (element.FRef.empty()) return;
    const TXSDElement* found = LookupElement(element.FRef, u"", false, -1);
    if (!found) return Error("Unknown reference to element " + ToUtf8(element.FRef));
    element.FName = found->FName;
    element.FTypeName = found->FTypeName;
    element.FTypeDef = found->FTypeDef;
}

}  // namespace caretwell
