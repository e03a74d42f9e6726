// The table of elements, editors, closing tags and messages.
#include "symbols/MLSymbolManager.h"

#include <algorithm>

#include "host/Messages.h"
#include "host/Platform.h"
#include "parser/MLParser.h"
#include "tagmodel/AttributeEditors.h"

namespace caretwell {
namespace {

bool IsClosingTag(const TRef<INibMLTag>& tag) { return Supports<INibMLClosingTag>(tag); }

class TSymbolManagerIterator final : public TImplements<ISymbolManagerIterator> {
public:
    explicit TSymbolManagerIterator(TMLSymbolManager& manager) : FManager(manager), FLink(&manager) {}
    int32_t Count() override { return FLink ? static_cast<int32_t>(FManager.GetTagList().size()) : 0; }
    TRef<INibMLTag> Tags(int32_t index) override {
        return index >= 0 && index < Count() ? FManager.GetTagList()[static_cast<size_t>(index)] : nullptr;
    }

private:
    TMLSymbolManager& FManager;
    TTagContextLink FLink;  // whether there still is one
};

class TTagStackIteration final : public TImplements<ITagStackIterator> {
public:
    explicit TTagStackIteration(PTagEntry entry) {
        for (; entry; entry = entry->Next) FTags.push_back(entry->Tag);
    }
    bool HasNext() override { return FIndex < FTags.size(); }
    TRef<INibMLTag> Next() override { return HasNext() ? FTags[FIndex++] : nullptr; }

private:
    std::vector<TRef<INibMLTag>> FTags;
    size_t FIndex = 0;
};

}  // namespace

TRef<ITagStackIterator> GetTagStackIterator(TMLSymbolManager& manager) {
    return MakeRef<TTagStackIteration>(manager.GetParser().GetTagStack());
}

TRef<ISymbolManagerIterator> GetSymbolManagerIterator(TMLSymbolManager& manager) {
    return MakeRef<TSymbolManagerIterator>(manager);
}

TMLSymbolManager::TMLSymbolManager() : FParser(std::make_unique<TMLParser>(FTable, FRoad)) {}

TMLSymbolManager::~TMLSymbolManager() {
    FParser.reset();
    ForgetTables();
}

void TMLSymbolManager::Retire() {
    FIsRetired = true;
    ForgetTables();
    FSelection.Forget();
    FClosedTags.clear();
    FParser = std::make_unique<TMLParser>(FTable, FRoad);
}

void TMLSymbolManager::BeginDocument(const std::string& fileName) {
    FFileName = fileName;
    FParser->FCaretInTagName = false;  // closing tags of the last list may go from the tags' lists
    ResetLists();
    ClearClosedTags();
}

void TMLSymbolManager::ResetLists() {
    if (FParser->FCurrentTag) FParser->FCurrentTag->SetFilter({});
    if (FParser->FCurrentAttribute) FParser->FCurrentAttribute->SetFilter({});
    FCharList.SetFilter({});
    FFixups.ResetAll();
}

// ---- the table

struct TMLSymbolManager::TKeptTable {
    TKeptTable(std::string key, ITagContext& context) : Key(std::move(key)), Table(context) {}

    std::string Key;
    std::vector<TRef<INibMLTag>> Tags, LooseTags;
    TElementTable Table;
    TNameMap<TTagAttributeBucket> AttrEditors;
    TAsciiCharList CharList;
};

void TMLSymbolManager::SwapTable(TKeptTable& kept) {
    std::swap(FTagList, kept.Tags);
    std::swap(FLooseTags, kept.LooseTags);
    FTable.Swap(kept.Table);
    std::swap(FAttrEditors, kept.AttrEditors);
    std::swap(FCharList, kept.CharList);
}

void TMLSymbolManager::PutTableAway(const std::string& key) {
    constexpr size_t MostKept = 4;
    ResetLists();
    FFixups.Forget();
    auto table = std::make_unique<TKeptTable>(key, *this);
    // The font of entities is the host's and not the schema's.
    table->CharList.SetFontName(FCharList.GetFontName());
    SwapTable(*table);
    FKept.push_front(std::move(table));
    if (FKept.size() <= MostKept) return;
    SwapTable(*FKept.back());
    ClearTags();
    FCharList.Clear();
    SetHiddenRootNode(nullptr);
    FKept.pop_back();
}

bool TMLSymbolManager::TakeTableBack(const std::string& key) {
    auto row = std::find_if(FKept.begin(), FKept.end(), [&](const auto& kept) { return kept->Key == key; });
    if (row == FKept.end()) return false;
    SwapTable(**row);
    FKept.erase(row);
    return true;
}

// Tags hold each other: what goes is taken apart.
void TMLSymbolManager::ClearTags() {
    FFixups.Forget();
    FAttrEditors.Clear();
    auto tags = std::exchange(FTagList, {});
    tags.insert(tags.end(), FLooseTags.begin(), FLooseTags.end());
    FLooseTags.clear();
    for (auto& tag : tags) {
        tag->ClearTags();
        tag->ClearAttrs();
    }
    FTable.Clear();
    if (THTMLTag* root = GetHiddenRootNode()) {
        root->ClearTags();
        root->ClearAttrs();
    }
}

void TMLSymbolManager::ForgetTables() {
    for (ClearTags(); !FKept.empty(); FKept.pop_front()) {
        SwapTable(*FKept.front());
        ClearTags();
    }
    SetHiddenRootNode(nullptr);
    FCharList.Clear();
}

void TMLSymbolManager::AddElement(TRef<INibMLTag> tag) {
    if (!IsClosingTag(tag)) FTable.Add(tag);
    FTagList.push_back(std::move(tag));
}

void TMLSymbolManager::RemoveElement(INibMLTag* tag) {
    TRef<INibMLTag> found = tag;
    if (!Supports<INibMLClosingTag>(found)) {
        TTagBucket* bucket = FindBucket(tag->GetName());
        if (!bucket) return;
        found = bucket->Tag;
        FTable.Remove(*bucket);
    }
    auto last = std::find(FTagList.rbegin(), FTagList.rend(), found.Get());
    if (last != FTagList.rend()) FTagList.erase(std::next(last).base());
}

void TMLSymbolManager::RegisterTag(TRef<INibMLTag> tag) {
    if (!FindBucket(tag->GetName())) AddElement(std::move(tag));
}

TRef<INibMLTag> TMLSymbolManager::GetTagFromHashList(std::u16string_view name) const {
    TTagBucket* bucket = FindBucket(name);
    return bucket ? bucket->Tag : nullptr;
}

// ---- editors

void TMLSymbolManager::RegisterEditor(TRef<INibMLTag> tag, TRef<INibMLEditor> editor) {
    if (IsClosingTag(tag)) return;
    RegisterTag(tag);
    if (TTagBucket* bucket = FindBucket(tag->GetName())) bucket->Editor = std::move(editor);
}

void TMLSymbolManager::UnRegisterEditor(INibMLEditor* editor) {
    FTable.ForEach([editor](TTagBucket& bucket) {
        if (bucket.Editor == editor) bucket.Editor = nullptr;
    });
}

TRef<INibMLEditor> TMLSymbolManager::GetTagEditorFromHashList(std::u16string_view name) const {
    TTagBucket* bucket = FindBucket(name);
    return bucket ? bucket->Editor : nullptr;
}

TRef<INibMLEditor> TMLSymbolManager::GetAttributeEditor(std::string_view name) const {
    return GetMLEditorRegistry()->GetEditor(name);
}

void TMLSymbolManager::RegisterAttributeEditor(TRef<INibMLTagAttribute> attribute,
                                               TRef<INibMLEditor> editor) {
    uint32_t hash = HashOfNumber(static_cast<uint32_t>(attribute->GetID()));
    FAttrEditors.Add(hash, {std::move(attribute), std::move(editor)});
}

void TMLSymbolManager::UnRegisterAttributeEditor(INibMLEditor* editor) {
    FAttrEditors.RemoveIf([editor](const TTagAttributeBucket& bucket) { return bucket.Editor == editor; });
}

// The id of an attribute, not its name, tells apart the same name on different elements.
TRef<INibMLEditor> TMLSymbolManager::GetAttributeEditorFromHashList(std::u16string_view attributeName,
                                                                    TRef<INibMLTagAttribute>& attribute,
                                                                    std::u16string_view tagName) const {
    attribute = nullptr;
    auto tag = GetTagFromHashList(tagName);
    if (!tag) return nullptr;
    auto known = tag->FindAttribute(attributeName);
    if (!known) known = FindHiddenAttr(attributeName);
    if (!known) return nullptr;
    int32_t id = known->GetID();
    auto* bucket = FAttrEditors.Find(HashOfNumber(static_cast<uint32_t>(id)), [&](const auto& row) {
        return row.Attribute->GetID() == id && SameText(row.Attribute->GetName(), attributeName);
    });
    if (!bucket) return nullptr;
    attribute = bucket->Attribute;
    return bucket->Editor;
}

// ---- the parser's view

TRef<INibMLTag> TMLSymbolManager::GetCurrentTag() const {
    const auto& tag = FParser->FCurrentTag;
    bool isTopLevel = !tag || (!FParser->FLastKnownTag && Supports<INibMLNamedTag>(tag));
    return isTopLevel ? TRef<INibMLTag>(GetHiddenRootNode()) : tag;
}

TRef<INibMLTag> TMLSymbolManager::GetListOwner() const {
    // Directives are known at the top, wherever they are written.
    if (FParser->FInDirective) return GetHiddenRootNode();
    auto tag = GetCurrentTag();
    if (!tag) return nullptr;
    if (FParser->FLastKnownTag && Supports<INibMLNamedTag>(tag)) return FParser->FLastKnownTag;
    return FParser->FCaretParentTag ? FParser->FCaretParentTag : tag;
}

TRef<INibMLTag> TMLSymbolManager::GetMLTag(int32_t index) const {
    auto owner = GetListOwner();
    return owner ? owner->GetTags(index) : nullptr;
}

int32_t TMLSymbolManager::GetLineNumber(int32_t index) const {
    auto closing = QueryAs<INibMLClosingTag>(GetMLTag(index));
    return closing ? closing->GetLineNumber() : 0;
}

bool TMLSymbolManager::FindTagAttr(const INibMLTagAttribute* attribute) const {
    for (int32_t i = 0; i < FParser->GetCurrentTagAttrCount(); ++i)
        if (FParser->GetCurrentTagAttrs(i) == attribute) return true;
    return false;
}

// ---- case

std::u16string TMLSymbolManager::CaseTag(std::u16string_view name) {
    std::u16string result(name);
    switch (FTagCase) {
        case tcNormal: break;
        case tcLowerCase:
            std::transform(result.begin(), result.end(), result.begin(), ToLower<char16_t>);
            break;
        case tcUpperCase:
            std::transform(result.begin(), result.end(), result.begin(), ToUpper<char16_t>);
            break;
        default: Error(FFileName, "Unknown tag case requested", "", 0, 0);
    }
    return result;
}

// ---- closing tags

TRef<INibMLTag> TMLSymbolManager::GetCloseTags(int32_t index) const {
    bool inside = index >= 0 && index < GetClosedTagsCount();
    return inside ? FClosedTags[static_cast<size_t>(index)] : nullptr;
}

void TMLSymbolManager::DeleteClosedTag(int32_t index) {
    if (index >= 0 && index < GetClosedTagsCount()) FClosedTags.erase(FClosedTags.begin() + index);
}

int32_t TMLSymbolManager::RemoveCustomElements(std::vector<TRef<INibMLTag>>& list, THTMLTag&) {
    if (FParser->FCaretInTagName) return 0;
    return static_cast<int32_t>(std::erase_if(list, IsClosingTag));
}

// Each goes in front of the one before, so the last of FClosedTags, the outermost, comes first.
int32_t TMLSymbolManager::InsertCustomElements(std::vector<TRef<INibMLTag>>& list, THTMLTag& tag) {
    if (FParser->FCaretInTagName || FParser->GetState() == mlpsParsing) return 0;
    auto at = std::clamp<std::ptrdiff_t>(tag.GetStartIndex(), 0, static_cast<std::ptrdiff_t>(list.size()));
    list.insert(list.begin() + at, FClosedTags.rbegin(), FClosedTags.rend());
    return GetClosedTagsCount();
}

// ---- messages

void TMLSymbolManager::Error(std::string_view fileName, std::string_view message, std::string_view prefix,
                             int32_t line, int32_t column) {
    if (!GetPlatform().IsMainThread()) return;
    ShowMessage(fileName, message, prefix, line, column);
}

}  // namespace caretwell
