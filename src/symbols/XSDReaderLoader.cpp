// Turns what TXSDReader read into tags: server controls, directives, ResX.
//
// Tags are built anew at each reload of the table, from the reader that keeps the
// file: the clearing of the table empties its tags, and a tag holds on to the manager
// that it was made for.
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

TSchemaReaderCache<TXSDReader>& Readers() {
    static TSchemaReaderCache<TXSDReader> readers;
    return readers;
}

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
    const TXSDSimpleType* type = reader.LookupSimpleType(source.FTypeName);
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

/// One load of a reader's elements into a table.
class TReaderTags {
public:
    TReaderTags(TMLSymbolManager& manager, TXSDReader& reader, THTMLTag& root,
                const std::vector<std::u16string>* parents, const std::string& fileName)
        : FManager(manager), FReader(reader), FRoot(root), FFileName(fileName) {
        if (!parents) return;
        for (const std::u16string& name : *parents)
            if (auto parent = manager.GetTagFromHashList(name)) FParents.push_back(parent);
    }

    void Load() {
        FReader.FTags.emplace();
        ForEachElement([this](const TXSDElement& element) { MakeTag(element); });
        ForEachElement([this](const TXSDElement& element) { FillTag(element); });
        for (const auto& [tag, types] : FFilled) tag->AlphaSort();
        for (const auto& parent : FParents) parent->AlphaSort();
        FRoot.AlphaSort();
    }

private:
    template <class F>
    void ForEachElement(F work) {
        for (auto* entry = FReader.GetFirstElement(); entry; entry = TXSDReader::GetNextElement(entry))
            work(*static_cast<const TXSDElement*>(entry->Item));
    }

    void MakeTag(const TXSDElement& element) {
        std::u16string name = GetElemName(FReader, element);
        if (FManager.FindBucket(name) || !IdentIsNotDTDType(name)) return;
        if (!FLimits.AdmitTag()) return ReportFull();
        auto tag = MakeRef<THTMLTag>(name, &FManager, -1);
        tag->SetModel({.RequiresClosingTag = !element.FImplicitClosure,
                       .RequiresOpeningTag = true,
                       .Empty = false,
                       .Any = true});
        INibMLTagFlags flags;
        if (element.FLevel == 0) flags.Add(tfGlobal);
        if (element.FDirective) flags.Add(tfASPDirective);
        tag->SetFlags(flags);
        SetAttributes(*tag, GetType(FReader, element));
        FManager.RegisterTag(tag);
        FReader.FTags->push_back(tag);
        if (element.FLevel == 0) Place(tag, element.FDirective);
    }

    void SetAttributes(THTMLTag& tag, const TXSDType* type) {
        if (!type) return;
        tag.SetAttributeFiller([&manager = FManager, &reader = FReader, type](THTMLTag& owner) {
            for (const TXSDAttribute* source : type->FAttributes) {
                auto attribute = MakeAttribute(reader, *source);
                owner.AddAttribute(attribute);
                AddEditor(manager, attribute, source->FBuilder);
            }
        });
    }

    void Place(const TRef<THTMLTag>& tag, bool isDirective) {
        if (isDirective) FRoot.AddTag(tag);
        else
            for (const auto& parent : FParents) parent->AddTag(tag);
    }

    void FillTag(const TXSDElement& element) {
        INibMLTag* tag = FindTag(element);
        if (!tag) return;
        // Many elements of one name have one type, the templates of controls above all.
        const TXSDType* type = GetType(FReader, element);
        if (FFilled[tag].insert(type).second) AddChildren(*tag, type);
    }

    // An element that is not to be offered has its children in its place, and those may
    // be such elements again, the same ones included.
    void AddChildren(INibMLTag& tag, const TXSDType* type) {
        std::vector<std::pair<const TXSDType*, size_t>> path;
        std::unordered_set<const TXSDType*> seen;
        auto enter = [&](const TXSDType* next) {
            if (next && seen.insert(next).second) path.emplace_back(next, 0);
        };
        enter(type);
        while (!path.empty()) {
            auto& [current, next] = path.back();
            if (next == current->FChildren.size() || !HasRoom()) {
                path.pop_back();
                continue;
            }
            const TXSDElement* child = current->FChildren[next++];
            if (!child->FRef.empty()) child = FReader.LookupElement(child->FRef, u"", true, -1);
            if (!child) continue;
            if (child->FNonBrowseable) enter(GetType(FReader, *child));
            else if (INibMLTag* found = FindTag(*child)) tag.AddTag(found);
        }
    }

    bool HasRoom() {
        if (FLimits.AdmitChild()) return true;
        ReportFull();
        return false;
    }

    void ReportFull() {
        if (std::exchange(FIsFull, true)) return;
        FReader.FOnError(&FReader, FFileName, "Too many elements; not all of them are used");
    }

    // The tag of that name, whoever made it. An element is asked for by each type that holds it.
    INibMLTag* FindTag(const TXSDElement& element) {
        auto [row, isNew] = FFound.try_emplace(&element, nullptr);
        if (isNew) row->second = FManager.GetTagFromHashList(GetElemName(FReader, element)).Get();
        return row->second;
    }

    TMLSymbolManager& FManager;
    TXSDReader& FReader;
    THTMLTag& FRoot;
    std::vector<TRef<INibMLTag>> FParents;
    std::string FFileName;
    std::unordered_map<const TXSDElement*, INibMLTag*> FFound;
    std::unordered_map<INibMLTag*, std::unordered_set<const TXSDType*>> FFilled;
    TTagLimits FLimits;
    bool FIsFull = false;
};

}  // namespace

void FreeXSDReaders() {
    FreeXSDPlans();
    std::scoped_lock lock(SchemaReaderLock());
    Readers().Clear();
}

void TMLSymbolManager::LoadXSD(THTMLTag& root, const std::vector<std::u16string>* parents,
                               const std::string& fileName) {
    auto onError = [this](TXSDReader*, const std::string& file, const std::string& message) {
        Error(file, message, "Failure", 0, 0);
    };
    TXSDReader* reader = nullptr;
    {
        std::scoped_lock lock(SchemaReaderLock());
        reader = Readers().Find(fileName);
        bool isNew = !reader;
        if (isNew) reader = &Readers().Add(fileName, std::make_unique<TXSDReader>());
        reader->FOnError = onError;
        if (isNew) reader->LoadFromFile(fileName);
    }
    TReaderTags(*this, *reader, root, parents, fileName).Load();
}

}  // namespace caretwell
