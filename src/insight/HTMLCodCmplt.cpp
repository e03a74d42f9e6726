// The manager and its list: every operation of the list forwards to what the parser and
// the symbol manager hold.
#include "insight/HTMLCodCmplt.h"

#include <memory>

#include "host/Paths.h"
#include "parser/MLParser.h"
#include "schema/XMLSchema.h"
#include "symbols/FileToSchemaMapper.h"

namespace caretwell {
namespace {

constexpr std::u16string_view AttributeValueClass = u"Attribute Value  ";
constexpr std::u16string_view LineText = u"line ";

// Held by its interface, so that it keeps one reference.
TRef<INibMLCodeInsightManager>& Manager() {
    static TRef<INibMLCodeInsightManager> manager;
    return manager;
}
std::shared_ptr<TMLSymbolManager>& Symbols() {
    static std::shared_ptr<TMLSymbolManager> symbols;
    return symbols;
}

}  // namespace

TRef<INibMLCodeInsightManager> MarkupLanguageManager() {
    if (!TEngineCall().IsAllowed()) return nullptr;
    if (!Manager()) Manager() = MakeRef<TMLKibitzManager>();
    return Manager();
}

TMLSymbolManager& MLSymbolManager() {
    if (!Symbols()) Symbols() = std::make_shared<TMLSymbolManager>();
    return *Symbols();
}

// A host that still holds the manager shares the emptied symbol manager with it.
void ReleaseMarkupLanguageManager() {
    if (Symbols()) Symbols()->Retire();
    Manager() = nullptr;
    Symbols() = nullptr;
}

TMLKibitzManager::TMLKibitzManager() : FSymbols(MLSymbolManager()), FSymbolsOwner(Symbols()) {}

// A parse may raise (a free XML document whose schema is malformed, an observer, a host
// that fails).
void TMLKibitzManager::Report(const std::exception& problem) const {
    if (auto* schema = dynamic_cast<const EXMLSchemaError*>(&problem))
        FSymbols.Error(schema->FFileName, schema->what(), "Failure", schema->FLine, 0);
    else FSymbols.Error(FSymbols.GetSchemaFile(), problem.what(), "Failure", 0, 0);
}

bool TMLKibitzManager::IsASCXFile() { return ExtensionOf(FSymbols.GetFileName()) == ".ascx"; }

void TMLKibitzManager::AddCallback(IRefCounted* observer) {
    Guarded([&] { GetParser().AddCallback(observer); });
}
void TMLKibitzManager::RemoveCallback(IRefCounted* observer) {
    Guarded([&] { GetParser().RemoveCallback(observer); });
}

int32_t TMLKibitzManager::GetCurrentTagAttrCount() { return GetParser().GetCurrentTagAttrCount(); }
void TMLKibitzManager::GetCurrentTagAttrValue(int32_t index, std::u16string& value) {
    value = GetParser().GetCurrentTagAttrValue(index);
}
void TMLKibitzManager::GetCurrentTagAttrName(int32_t index, std::u16string& name) {
    name = GetParser().GetCurrentTagAttrName(index);
}
void TMLKibitzManager::GetCurrentTagAttrValueByName(std::u16string_view name, std::u16string& value) {
    value = GetParser().GetCurrentTagAttrValueByName(name);
}

// ---- which list

TListKind TMLKibitzManager::GetListKind() const {
    const TMLParser& parser = GetParser();
    if (FEntityMode) return TListKind::Entities;
    if (!parser.FInTag || parser.FCaretInTagName) return TListKind::Elements;
    return parser.GetInAttribute() ? TListKind::Values : TListKind::Attributes;
}

// ---- INibCodeInsightSymbolList

int32_t TMLKibitzManager::GetCount() {
    return Guarded(0, [&] {
        auto current = FSymbols.GetCurrentTag();
        bool hasNames = current && !GetParser().FInClosingTag;
        switch (GetListKind()) {
            case TListKind::Entities: return FSymbols.GetCharList().GetCount();
            case TListKind::Values: return GetParser().FCurrentAttribute->GetCount();
            case TListKind::Elements: return hasNames ? FSymbols.GetListOwner()->GetTagCount() : 0;
            case TListKind::Attributes: return hasNames ? current->GetAttributeCount() : 0;
        }
        return 0;
    });
}

bool TMLKibitzManager::GetSymbolIsAbstract(int32_t index) {
    return Guarded(false, [&] {
        return GetListKind() == TListKind::Elements && Supports<INibMLClosingTag>(FSymbols.GetMLTag(index));
    });
}

int32_t TMLKibitzManager::FindIdent(std::u16string_view ident) {
    int32_t index = -1;
    return FindSymIndex(ident, index) ? index : -1;
}

bool TMLKibitzManager::FindSymIndex(std::u16string_view ident, int32_t& index) {
    return Guarded(false, [&] {
        TListKind kind = GetListKind();
        if (kind == TListKind::Entities) {
            auto& entities = FSymbols.GetCharList();
            index = entities.FindIndex(ident);
            return index != -1 && StartsWithText(entities.GetItem(index), ident);
        }
        index = -1;
        if (kind == TListKind::Values) {
            index = GetParser().FCurrentAttribute->FindSymbol(ident);
            return index != -1;
        }
        if (auto owner = FSymbols.GetListOwner()) index = owner->FindSymbol(AsListed(ident));
        if (index != -1) return true;
        if (GetCount() == 0) index = 0;
        return false;
    });
}

void TMLKibitzManager::SetFilter(std::u16string_view text) {
    Guarded([&] {
        TListKind kind = GetListKind();
        if (kind == TListKind::Entities) return FSymbols.GetCharList().SetFilter(text);
        auto owner = FSymbols.GetListOwner();
        if (!owner) return;
        if (kind == TListKind::Values) GetParser().FCurrentAttribute->SetFilter(text);
        else owner->SetFilter(AsListed(text));
    });
}

/// A word of the document as the list of elements spells it: directives have a mark in front.
std::u16string TMLKibitzManager::AsListed(std::u16string_view word) const {
    std::u16string listed = GetParser().FInDirective ? u"@ " : u"";
    return listed.append(word);
}

/// What SetFilter wrote.
std::u16string TMLKibitzManager::GetFilter() const {
    TListKind kind = GetListKind();
    if (kind == TListKind::Entities) return std::u16string(FSymbols.GetCharList().GetFilter());
    auto owner = FSymbols.GetListOwner();
    if (!owner) return {};
    if (kind == TListKind::Values) return std::u16string(GetParser().FCurrentAttribute->GetFilter());
    return std::u16string(owner->GetFilter());
}

std::u16string TMLKibitzManager::GetSymbolText(int32_t index) {
    return Guarded(std::u16string(), [&]() -> std::u16string {
        switch (GetListKind()) {
            case TListKind::Entities: return std::u16string(FSymbols.GetCharList().GetItem(index));
            case TListKind::Values: return {};
            case TListKind::Elements: {
                auto tag = FSymbols.GetMLTag(index);
                return tag ? std::u16string(tag->GetName()) : std::u16string();
            }
            case TListKind::Attributes: {
                auto owner = FSymbols.GetListOwner();
                auto attribute = owner ? owner->GetAttribute(index) : nullptr;
                return attribute ? std::u16string(attribute->GetName()) : std::u16string();
            }
        }
        return {};
    });
}

std::u16string TMLKibitzManager::GetSymbolTypeText(int32_t index) {
    return Guarded(std::u16string(), [&]() -> std::u16string {
        switch (GetListKind()) {
            case TListKind::Entities: return {};
            case TListKind::Values:
                return u" " + std::u16string(GetParser().FCurrentAttribute->GetValue(index));
            case TListKind::Attributes: return u" ";
            case TListKind::Elements: break;
        }
        if (!Supports<INibMLClosingTag>(FSymbols.GetMLTag(index))) return {};
        return std::u16string(LineText) + ToUtf16(std::to_string(FSymbols.GetLineNumber(index)));
    });
}

std::u16string TMLKibitzManager::GetSymbolClassText(int32_t) {
    // The two names of the markup vocabulary, as the list shows them.
    static constexpr std::u16string_view names[] = {_sMLElement, _sMLAttribute};
    switch (GetListKind()) {
        case TListKind::Entities: return {};
        case TListKind::Values: return std::u16string(AttributeValueClass);
        case TListKind::Elements: return std::u16string(names[0]);
        case TListKind::Attributes: return std::u16string(names[1]);
    }
    return {};
}

}  // namespace caretwell
