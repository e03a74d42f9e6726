// Turns what TXSDReader read into tags: server controls, directives, ResX.
//
// A file is worked out once into a plan. Tags are built anew from it at each reload of the
// table: its clearing empties them, and a tag holds on to the manager that it was made for.
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "schema/XSDReader.h"
#include "symbols/MLSymbolManager.h"
#include "symbols/SchemaReaderCache.h"
#include "symbols/TagLimits.h"
#include "symbols/XSDLoader.h"
#include "tagmodel/AttributeEditors.h"
#include "tagmodel/HTMLAttribute.h"

namespace caretwell {
namespace {

std::u16string GetElemName(const TXSDReader& reader, const TXSDElement& element) {
    if (element.FUnqualified) return element.FName;
    return std::u16string(reader.GetNamespacePrefix()) + element.FName;
}

TXSDType* GetType(const TXSDReader& reader, const TXSDElement& element) {
    auto* type = dynamic_cast<TXSDType*>(element.FTypeDef);
    return type ? type : reader.LookupType(element.FTypeName);
}

void AddValues(INibMLTagAttribute& attribute, const TXSDSimpleType& type) {
    for (const TXSDRestriction* restriction : type.FRestrictions)
        for (const std::u16string& value : restriction->FEnumerations) attribute.AddValue(value);
}

TRef<INibMLTagAttribute> MakeAttribute(const TXSDReader& reader, const TXSDAttribute& source) {
    TRef<INibMLTagAttribute> attribute;
    if (SameText(source.FTypeName, u"event")) attribute = MakeRef<THTMLAttributeEvent>(source.FName, NewID());
    else attribute = MakeRef<THTMLAttribute>(source.FName, NewID());
    // Simple types inside attributes have no name, and are nobody's but that attribute's.
    const TXSDSimpleType* type =
        source.FTypeName.empty() ? nullptr : reader.LookupSimpleType(source.FTypeName);
    if (type && type->FLevel == 0) AddValues(*attribute, *type);
    for (const TXSDSimpleType* inlineType : source.FValues) AddValues(*attribute, *inlineType);
    return attribute;
}

// An attribute of a builder that nobody knows has no editor.
void AddEditor(TMLSymbolManager& manager, const TRef<INibMLTagAttribute>& attribute,
               std::u16string_view builder) {
    TRef<INibMLEditor> editor;
    if (builder.empty()) {
        editor = MakeRef<TDefaultAttributeEditor>();
    } else if (builder == u"color") {
        attribute->AddValue(u"color...");
        editor = MakeRef<THTMLColorAttributeEditor>();
    } else if (builder == u"uri") {
        attribute->AddValue(u"uri...");
        editor = MakeRef<THTMLURIAttributeEditor>();
    }
    if (editor) manager.RegisterAttributeEditor(attribute, editor);
}

/// A control: what the first element of its name says of it, and what all elements of the
/// name may hold.
struct TPlannedControl {
    std::u16string Name;
    TTagModel Model;
    INibMLTagFlags Flags;
    bool IsTopLevel = false, IsGlobal = false;
    const TXSDType* Type = nullptr;  // null for one without attributes
    std::vector<size_t> Children;    // sorted by name
};
struct TPlannedExtension {
    std::u16string Names;  // of elements, or "*"
    const TXSDType* Type;
};

/// Who holds whom, worked out once from what a reader has read.
class TControlsPlan {
public:
    std::vector<TPlannedControl> Controls;  // one for each name
    std::vector<TPlannedExtension> Extensions;
    bool IsFull = false;  // and the rest left out

    explicit TControlsPlan(const TXSDReader& reader) : FReader(reader) {
        ForEachElement([this](const TXSDElement& element) { PlanElement(element); });
        ForEachElement([this](const TXSDElement& element) { PlanChildren(element); });
        for (TPlannedControl& control : Controls)
            std::sort(control.Children.begin(), control.Children.end(), [this](size_t a, size_t b) {
                return CompareText(std::u16string_view(Controls[a].Name),
                                   std::u16string_view(Controls[b].Name)) < 0;
            });
        FNames.Clear();
        FFilled.clear();
    }

private:
    template <class F>
    void ForEachElement(F work) {
        for (auto* entry = FReader.GetFirstElement(); entry; entry = TXSDReader::GetNextElement(entry))
            work(*static_cast<const TXSDElement*>(entry->Item));
    }

    const size_t* Find(const std::u16string& name) const {
        return FNames.Find(FoldedHash(name), [&](size_t i) { return SameText(Controls[i].Name, name); });
    }

    void PlanElement(const TXSDElement& element) {
        const TXSDType* type = GetType(FReader, element);
        if (!element.FExtends.empty()) return Extensions.push_back({element.FExtends, type});
        std::u16string name = GetElemName(FReader, element);
        if (element.FName.empty() || Find(name) || !IdentIsNotDTDType(name)) return;
        if (!FLimits.AdmitTag()) {
            IsFull = true;
            return;
        }
        TPlannedControl control{.Name = name,
                                .Model = {.RequiresClosingTag = !element.FImplicitClosure,
                                          .RequiresOpeningTag = true,
                                          .Empty = false,
                                          .Any = true},
                                .Flags = {},
                                .IsTopLevel = element.FTopLevel || element.FDirective,
                                .IsGlobal = element.FLevel == 0,
                                .Type = type,
                                .Children = {}};
        if (control.IsGlobal) control.Flags.Add(tfGlobal);
        if (element.FDirective) control.Flags.Add(tfASPDirective);
        FNames.Add(FoldedHash(name), Controls.size());
        Controls.push_back(std::move(control));
    }

    // Many elements of one name have one type, the templates of controls above all.
    void PlanChildren(const TXSDElement& element) {
        const size_t* control = element.FExtends.empty() ? Find(GetElemName(FReader, element)) : nullptr;
        const TXSDType* type = control ? GetType(FReader, element) : nullptr;
        if (type && FFilled[*control].insert(type).second) AddChildren(*control, *type);
    }

    // An element that is not to be offered has its children in its place, and those may
    // be such elements again, the same ones included.
    void AddChildren(size_t control, const TXSDType& type) {
        std::vector<std::pair<const TXSDType*, size_t>> path;
        std::unordered_set<const TXSDType*> seen;
        auto enter = [&](const TXSDType* next) {
            if (next && seen.insert(next).second) path.emplace_back(next, 0);
        };
        enter(&type);
        while (!path.empty()) {
            auto& [current, next] = path.back();
            if (next == current->FChildren.size() || !HasRoom()) {
                path.pop_back();
                continue;
            }
            const TXSDElement* child = Resolve(*current->FChildren[next++]);
            if (!child) continue;
            if (child->FNonBrowseable) enter(GetType(FReader, *child));
            else if (const size_t* found = Find(GetElemName(FReader, *child))) AddChild(control, *found);
        }
    }

    // A reference means a global element; one of its name inside some type is another thing.
    const TXSDElement* Resolve(const TXSDElement& child) const {
        if (child.FRef.empty()) return &child;
        const TXSDElement* global = FReader.LookupElement(child.FRef, u"", false, 0);
        return global ? global : FReader.LookupElement(child.FRef, u"", true, -1);
    }

    void AddChild(size_t control, size_t child) {
        if (FLinks.insert(uint64_t{control} << 32 | child).second)
            Controls[control].Children.push_back(child);
    }

    bool HasRoom() {
        IsFull = IsFull || !FLimits.AdmitChild();
        return !IsFull;
    }

    const TXSDReader& FReader;
    TNameMap<size_t> FNames;
    std::unordered_map<size_t, std::unordered_set<const TXSDType*>> FFilled;
    std::unordered_set<uint64_t> FLinks;
    TTagLimits FLimits;
};

/// A file of controls as it was read, and what was made of it.
struct TControlsSchema {
    TXSDReader Reader;
    std::unique_ptr<TControlsPlan> Plan;
};

TSchemaReaderCache<TControlsSchema>& Schemas() {
    static TSchemaReaderCache<TControlsSchema> schemas;
    return schemas;
}

/// One load of a file's controls into a table. A name that the table has stands for the
/// element that is there.
class TControlTags {
public:
    TControlTags(TMLSymbolManager& manager, TControlsSchema& schema, THTMLTag& root,
                 const std::vector<std::u16string>* parents)
        : FManager(manager), FReader(schema.Reader), FPlan(*schema.Plan), FRoot(root) {
        if (!parents) return;
        for (const std::u16string& name : *parents)
            if (auto parent = manager.GetTagFromHashList(name)) FParents.push_back(parent);
    }

    void Load() {
        for (const TPlannedExtension& extension : FPlan.Extensions) Extend(extension);
        FReader.FTags.emplace();
        std::vector<TRef<INibMLTag>> tags;
        std::vector<THTMLTag*> own;  // null for one that the table had
        for (const TPlannedControl& control : FPlan.Controls) {
            TTagBucket* bucket = FManager.FindBucket(control.Name);
            own.push_back(bucket ? nullptr : MakeTag(control).Get());
            tags.push_back(bucket ? bucket->Tag : TRef<INibMLTag>(own.back()));
        }
        for (size_t i = 0; i < tags.size(); ++i) {
            // A tag of this load has no other children, and the plan names each once.
            for (size_t child : FPlan.Controls[i].Children)
                if (own[i]) own[i]->AppendTag(tags[child]);
                else tags[i]->AddTag(tags[child]);
            tags[i]->AlphaSort();
        }
        for (const auto& parent : FParents) parent->AlphaSort();
        FRoot.AlphaSort();
    }

private:
    TRef<THTMLTag> MakeTag(const TPlannedControl& control) {
        auto tag = MakeRef<THTMLTag>(control.Name, &FManager, -1);
        tag->SetModel(control.Model);
        tag->SetFlags(control.Flags);
        if (control.Type) tag->SetAttributeFiller(FillerOf(*control.Type));
        FManager.AddElement(tag);
        FReader.FTags->push_back(tag);
        if (control.IsTopLevel) FRoot.AddTag(tag);
        else if (control.IsGlobal)
            for (const auto& parent : FParents) parent->AddTag(tag);
        return tag;
    }

    THTMLTag::TAttributeFiller FillerOf(const TXSDType& type) {
        return [&manager = FManager, &reader = FReader, &type](THTMLTag& owner) {
            for (const TXSDAttribute* source : type.FAttributes) {
                if (owner.FindAttribute(source->FName)) continue;
                auto attribute = MakeAttribute(reader, *source);
                owner.AddAttribute(attribute);
                AddEditor(manager, attribute, source->FBuilder);
            }
        };
    }

    // An attribute that the element has already stays as it is.
    void Extend(const TPlannedExtension& extension) {
        if (!extension.Type) return;
        auto extend = [&](INibMLTag* tag) {
            if (auto* element = dynamic_cast<THTMLTag*>(tag))
                element->AddAttributeFiller(FillerOf(*extension.Type));
        };
        if (extension.Names == u"*") {
            for (const auto& tag : FManager.GetTagList()) extend(tag.Get());
            return;
        }
        std::u16string_view names = extension.Names;
        while (!names.empty()) {
            std::u16string_view name = names.substr(0, names.find(u' '));
            names.remove_prefix(std::min(names.size(), name.size() + 1));
            extend(FManager.GetTagFromHashList(name).Get());
        }
    }

    TMLSymbolManager& FManager;
    TXSDReader& FReader;
    const TControlsPlan& FPlan;
    THTMLTag& FRoot;
    std::vector<TRef<INibMLTag>> FParents;
};

}  // namespace

void FreeXSDReaders() {
    FreeXSDPlans();
    std::scoped_lock lock(SchemaReaderLock());
    Schemas().Clear();
}

void TMLSymbolManager::LoadXSD(THTMLTag& root, const std::vector<std::u16string>* parents,
                               const std::string& fileName) {
    auto onError = [this](TXSDReader*, const std::string& file, const std::string& message) {
        Error(file, message, "Failure", 0, 0);
    };
    TControlsSchema* schema = nullptr;
    {
        std::scoped_lock lock(SchemaReaderLock());
        schema = Schemas().Find(fileName);
        bool isNew = !schema;
        if (isNew) schema = &Schemas().Add(fileName, std::make_unique<TControlsSchema>());
        schema->Reader.FOnError = onError;
        if (isNew) schema->Reader.LoadFromFile(fileName);
        if (isNew) schema->Plan = std::make_unique<TControlsPlan>(schema->Reader);
        if (isNew && schema->Plan->IsFull)
            onError(&schema->Reader, fileName, "Too many elements; not all of them are used");
    }
    TControlTags(*this, *schema, root, parents).Load();
}

}  // namespace caretwell
