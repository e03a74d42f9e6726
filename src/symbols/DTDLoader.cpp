// Turns what a TDTDParser read into the tags of the table: who may stand in whom, with
// which attributes and values, and the character entities.
//
//     <!ELEMENT ul - - (li)+>      ul gets the child li, and li leaves the root
//
// Attributes are made when somebody first asks for those of an element: a schema gives
// a hundred to each of two hundred elements, and a document uses few of them.
#include <algorithm>
#include <exception>
#include <unordered_set>

#include "schema/DTDParser.h"
#include "symbols/MLSymbolManager.h"
#include "symbols/SchemaReaderCache.h"
#include "tagmodel/AttributeEditors.h"
#include "tagmodel/HTMLAttribute.h"

namespace caretwell {
namespace {

// Bounds for one load, far above any definition in use: a name group may give one
// large content model to thousands of elements. What was linked until then stands.
constexpr size_t MaxChildren = 250'000;
constexpr size_t MaxSteps = 4'000'000;

TSchemaReaderCache<TDTDParser>& Parsers() {
    static TSchemaReaderCache<TDTDParser> parsers;
    return parsers;
}

uint64_t Generation = 0;  // of the readers in the cache

void ReadFile(TMLSymbolManager& manager, TDTDParser& parser, const std::string& fileName) {
    try {
        parser.LoadFromFile(fileName);
    } catch (const std::exception& error) {
        const TDTDScanner& scanner = *parser.FScanner;
        manager.DTDParserError(&parser, peFailure, error.what(), scanner.FLine, scanner.FFileName);
    }
}

// ---- attributes

bool IsEvent(const TDTDAttribute& attribute, const TDTDExprNode* values) {
    return StartsWithText(attribute.FName, std::string_view("on")) && values && values->Symbol &&
           SameText(values->Symbol->FName, std::string_view("CDATA"));
}

/// "selected (selected)": the schema's way to write a boolean attribute.
bool IsBoolean(const TDTDAttribute& attribute, const TDTDExprNode& values) {
    return values.Symbol && SameText(values.Symbol->FName, attribute.FName) &&
           IdentIsNotDTDType(values.Symbol->FName) && (!values.Left || !values.Right);
}

void AddValues(INibMLTagAttribute& target, const TDTDAttribute& attribute, TDTDExprNode* values) {
    if (!attribute.FEditor.empty()) {
        target.AddValue(ToUtf16(attribute.FEditor));
    } else if (IsBoolean(attribute, *values)) {
        target.AddValue(u"false");
        target.AddValue(u"true");
    } else {
        TDTDExprWalk walk(values);
        while (TDTDExprNode* node = walk.Next())
            if (node->Symbol && IdentIsNotDTDType(node->Symbol->FName))
                target.AddValue(ToUtf16(node->Symbol->FName));
    }
}

/// The points after value 0 mark it as a pseudo value, the sign of a dialog.
TRef<INibMLEditor> TakeEditor(TMLSymbolManager& manager, INibMLTagAttribute& target, std::string_view word) {
    bool isColor = SameText(word, std::string_view("color"));
    bool isUri = word == "uri";
    if (isColor || isUri) {
        target.SetValue(0, std::u16string(target.GetValue(0)) + u"...");
        return manager.GetAttributeEditor(isColor ? "color" : THTMLURIAttributeEditor::EDITOR_ID);
    }
    bool hasValue = target.GetCount() > 0 && IdentIsNotDTDType(target.GetValue(0));
    return hasValue ? manager.GetAttributeEditor("default") : nullptr;
}

TRef<INibMLTagAttribute> MakeAttribute(TMLSymbolManager& manager, const TDTDAttribute& attribute,
                                       TDTDExprNode* values) {
    std::u16string name = ToUtf16(attribute.FName);
    TRef<INibMLTagAttribute> target;
    if (IsEvent(attribute, values)) target = MakeRef<THTMLAttributeEvent>(name, NewID());
    else target = MakeRef<THTMLAttribute>(name, NewID());
    if (values) {
        AddValues(*target, attribute, values);
        if (auto editor = TakeEditor(manager, *target, attribute.FEditor))
            manager.RegisterAttributeEditor(target, std::move(editor));
    }
    if (const TAttrAttributes* attrs = attribute.FAttrs) {
        target->SetRequired(attrs->Required);
        target->SetFixed(attrs->Fixed);
        target->SetFixedValue(ToUtf16(attrs->FixedValue));
    }
    return target;
}

/// Entry 0 is the content model; the attributes stand after it.
void AddAttributes(TMLSymbolManager& manager, THTMLTag& tag, const TDTDExprList& list) {
    for (int32_t i = 1; i < list.GetCount(); ++i) {
        TDTDExprNode* node = list.GetExpr(i);
        auto* attribute = SymbolAs<TDTDAttribute>(node->Symbol);
        if (attribute) tag.AddAttribute(MakeAttribute(manager, *attribute, node->Right));
    }
}

// ---- elements

/// Every word of a content model is an element to the reader, the two words for
/// "nothing" and "everything" too.
bool IsElementName(const TDTDElement& element) {
    bool isContentWord = SameText(element.FName, std::string_view("EMPTY")) ||
                         SameText(element.FName, std::string_view("ANY"));
    return IdentIsNotDTDType(element.FName) && (element.FIsDeclared || !isContentWord);
}

/// One load of a parser's symbols into the table.
class TDTDTags {
public:
    TDTDTags(TMLSymbolManager& manager, TDTDParser& parser, THTMLTag& root)
        : FManager(manager),
          FParser(parser),
          FRoot(root),
          FEntries(static_cast<size_t>(parser.GetElementCount())) {}

    /// False if the schema is too large to be linked whole.
    bool Load() {
        ForEachSymbol([this](TDTDSymbol& symbol) { Register(symbol); });
        AddEntities();
        FRoot.SetShowAttributes(false);
        FRoot.AlphaSort();
        ForEachSymbol([this](TDTDSymbol& symbol) {
            auto* element = SymbolAs<TDTDElement>(&symbol);
            if (element && EntryOf(*element).Own) Fill(*element);
        });
        FRoot.RemoveTagsIf([this](const TRef<INibMLTag>& tag) { return FOffRoot.contains(tag.Get()); });
        return FChildren <= MaxChildren && FSteps <= MaxSteps;
    }

private:
    /// What the load knows of an element. The marks belong to the element that is being
    /// filled and to its exclusions, which the elements of a name group share.
    struct TEntry {
        INibMLTag* Tag = nullptr;  // the registered tag of the name, if it was looked for
        THTMLTag* Own = nullptr;   // if this load has made it
        bool IsLookedUp = false;
        int32_t ChildOf = -1;
        const TDTDExprNode* ExcludedBy = nullptr;
    };

    template <class F>
    void ForEachSymbol(F visit) {
        for (int32_t i = 0; i < FParser.FSymbolCount; ++i) visit(*FParser.GetSymbol(i));
    }
    TEntry& EntryOf(const TDTDElement& element) { return FEntries[static_cast<size_t>(element.FOrdinal)]; }

    void Register(TDTDSymbol& symbol) {
        if (auto* entity = SymbolAs<TDTDEntity>(&symbol)) FEntities.push_back(entity);
        auto* element = SymbolAs<TDTDElement>(&symbol);
        if (!element || !IsElementName(*element)) return;
        std::u16string name = ToUtf16(element->FName);
        if (FManager.FindBucket(name)) return;
        auto tag = MakeTag(*element, name);
        EntryOf(*element) = {.Tag = tag.Get(), .Own = tag.Get()};
        FManager.AddElement(tag);
        FRoot.AppendTag(tag);
    }

    // A list that is sorted already puts every entity in its place: in the order of their
    // names that is nearly always the end.
    void AddEntities() {
        std::stable_sort(FEntities.begin(), FEntities.end(), [](const TDTDEntity* a, const TDTDEntity* b) {
            return CompareText(std::string_view(a->FName), std::string_view(b->FName)) < 0;
        });
        TAsciiCharList& list = FManager.GetCharList();
        for (const TDTDEntity* entity : FEntities)
            list.AddEntity(ToUtf16(entity->FName), entity->GetValues(0));
        list.AlphaSort();
    }

    TRef<THTMLTag> MakeTag(TDTDElement& element, const std::u16string& name) {
        auto tag = MakeRef<THTMLTag>(name, &FManager, -1);
        std::vector<std::string> entityNames;
        for (std::string_view entity : element.GetEntity()) entityNames.emplace_back(entity);
        tag->SetEntityName(entityNames);
        tag->SetModel({.RequiresClosingTag = element.FRequiresEndTag,
                       .RequiresOpeningTag = element.FRequiresStartTag,
                       .Empty = element.FEmpty,
                       .Any = element.FAny});
        if (TDTDExprList* list = element.FExprList.get())
            tag->SetAttributeFiller(
                [&manager = FManager, list](THTMLTag& owner) { AddAttributes(manager, owner, *list); });
        return tag;
    }

    void Fill(TDTDElement& element) {
        if (element.FAny) return AddAllTags(element);
        if (element.FEmpty) return;
        MarkExclusions(element);
        if (element.FExprList) AddChildren(element, element.FExprList->GetExpr(0));
        AddChildren(element, element.FInclusions);
    }

    /// These children stay under the root.
    void AddAllTags(TDTDElement& element) {
        THTMLTag& tag = *EntryOf(element).Own;
        ForEachSymbol([&](TDTDSymbol& symbol) {
            auto* child = FChildren <= MaxChildren ? SymbolAs<TDTDElement>(&symbol) : nullptr;
            if (!child || !EntryOf(*child).Own) return;
            ++FChildren;
            tag.AppendTag(EntryOf(*child).Tag);
        });
    }

    void MarkExclusions(const TDTDElement& element) {
        if (FMarkedExclusions == element.FExclusions) return;
        FMarkedExclusions = element.FExclusions;
        TDTDExprWalk walk(element.FExclusions);
        while (TDTDExprNode* node = walk.Next()) {
            if (++FSteps > MaxSteps) return;
            if (auto* excluded = SymbolAs<TDTDElement>(node->Symbol))
                EntryOf(*excluded).ExcludedBy = FMarkedExclusions;
        }
    }

    bool IsExcluded(const TDTDElement& word) {
        return FMarkedExclusions && EntryOf(word).ExcludedBy == FMarkedExclusions;
    }

    /// Goes on into the content of a child whose opening tag may be left out: what
    /// stands in it may then stand here.
    void AddChildren(TDTDElement& element, TDTDExprNode* content) {
        TDTDExprWalk walk(content);
        while (TDTDExprNode* node = walk.Next()) {
            if (++FSteps > MaxSteps) return;
            auto* word = SymbolAs<TDTDElement>(node->Symbol);
            if (!word || IsExcluded(*word)) continue;
            if (AddChild(element, *word) && word->FExprList) walk.Push(word->FExprList->GetExpr(0));
        }
    }

    /// True if the child is new to the element and need not be written.
    bool AddChild(TDTDElement& element, const TDTDElement& word) {
        TEntry& entry = EntryOf(word);
        INibMLTag* child = LookUp(word, entry);
        if (!child) return false;
        child->SetIsChild(true);
        if (entry.ChildOf == element.FOrdinal || ++FChildren > MaxChildren) return false;
        entry.ChildOf = element.FOrdinal;
        THTMLTag& tag = *EntryOf(element).Own;
        if (FHasTwins && tag.FindChild(child->GetName())) return false;
        tag.AppendTag(child);
        FOffRoot.insert(child);
        return !child->GetRequiresOpeningTag();
    }

    // A word that no tag was made for may mean one all the same: of another load, or of an
    // element whose name differs by case only.
    INibMLTag* LookUp(const TDTDElement& word, TEntry& entry) {
        if (!entry.Tag && !std::exchange(entry.IsLookedUp, true)) {
            TTagBucket* bucket = FManager.FindBucket(ToUtf16(word.FName));
            entry.Tag = bucket ? bucket->Tag.Get() : nullptr;
        }
        FHasTwins = FHasTwins || (entry.Tag && !entry.Own);
        return entry.Tag;
    }

    TMLSymbolManager& FManager;
    TDTDParser& FParser;
    THTMLTag& FRoot;
    std::vector<TEntry> FEntries;  // by the ordinal of the element
    std::vector<TDTDEntity*> FEntities;
    std::unordered_set<const INibMLTag*> FOffRoot;  // children of some element
    bool FHasTwins = false;                         // two words may mean one tag
    const TDTDExprNode* FMarkedExclusions = nullptr;
    size_t FChildren = 0;
    size_t FSteps = 0;
};

}  // namespace

void TMLSymbolManager::LoadDTD(THTMLTag& root, const std::string& fileName) {
    TDTDParser* parser = nullptr;
    bool isFirstRead = false;
    {
        std::lock_guard lock(SchemaReaderLock());
        parser = Parsers().Find(fileName);
        isFirstRead = !parser;
        if (!parser) parser = &Parsers().Add(fileName, std::make_unique<TDTDParser>());
        parser->FKibitzMode = GetKibitzMode();
        if (isFirstRead) {
            parser->OnError = [this](TDTDParser* sender, TParseError kind, const std::string& message,
                                     int32_t line, const std::string& file) {
                DTDParserError(sender, kind, message, line, file);
            };
            ReadFile(*this, *parser, fileName);
            parser->OnError = nullptr;  // it may outlive this manager, and has said all that it will
        }
    }
    bool isWhole = TDTDTags(*this, *parser, root).Load();
    if (!isWhole && isFirstRead)
        DTDParserError(parser, peFailure, "Schema too large, some children are left out", 1, fileName);
}

void TMLSymbolManager::DTDParserError(TDTDParser*, TParseError kind, const std::string& message, int32_t line,
                                      const std::string& fileName) {
    static constexpr std::string_view Prefixes[] = {"Failure", "Error", "Warning", "Hint"};
    Error(fileName, message, Prefixes[kind], line, 0);
}

void FreeDTDReaders() {
    std::lock_guard lock(SchemaReaderLock());
    Parsers().Clear();
    ++Generation;
}

const TDTDParser* FindDTDReader(const std::string& fileName) {
    std::lock_guard lock(SchemaReaderLock());
    return Parsers().Find(fileName);
}

uint64_t GetDTDReaderGeneration() { return Generation; }

}  // namespace caretwell
