// What the list at a caret shows beside the schema's own entries.
#include "symbols/ContextFixups.h"

#include "parser/MLParser.h"
#include "symbols/MLSymbolManager.h"
#include "tagmodel/DocumentNodes.h"

namespace caretwell {

// ---- the memory of what was changed

void TContextFixups::AddStandIn(INibMLTag& tag, TRef<INibMLTag> standIn) {
    if (tag.LookupTag(standIn->GetName())) return;
    tag.AddTag(standIn);
    FStandIns.push_back({&tag, std::move(standIn)});
}

void TContextFixups::HideAttribute(INibMLTag& tag, std::u16string_view name) {
    if (auto attribute = tag.RemoveAttribute(name)) FHiddenAttrs.push_back({&tag, std::move(attribute)});
}

void TContextFixups::NoteChanged(THTMLTag& tag) {
    if (tag.FIsChanged) return;
    tag.FIsChanged = true;
    FChanged.push_back(&tag);
}

void TContextFixups::Undo() {
    for (auto& entry : FStandIns) entry.Tag->RemoveTag(entry.Child.Get());
    for (auto& entry : FHiddenAttrs) entry.Tag->AddAttribute(entry.Attribute);
    for (auto& entry : FStandIns) entry.Tag->AlphaSort();
    for (auto& entry : FHiddenAttrs) entry.Tag->AlphaSort();
    FStandIns.clear();
    FHiddenAttrs.clear();
}

void TContextFixups::ResetAll() {
    Undo();
    for (auto& tag : FChanged) {
        tag->ResetRange();
        tag->FIsChanged = false;
    }
    FChanged.clear();
}

void TContextFixups::Forget() {
    for (auto& tag : FChanged) tag->FIsChanged = false;
    FChanged.clear();
    FStandIns.clear();
    FHiddenAttrs.clear();
}

TRef<INibMLTagAttribute> TContextFixups::GetHiddenAttr(int32_t index) const {
    bool inside = index >= 0 && index < GetHiddenAttrCount();
    return inside ? FHiddenAttrs[static_cast<size_t>(index)].Attribute : nullptr;
}

TRef<INibMLTagAttribute> TContextFixups::FindHiddenAttr(std::u16string_view name) const {
    for (const auto& entry : FHiddenAttrs)
        if (SameText(entry.Attribute->GetName(), name)) return entry.Attribute;
    return nullptr;
}

// ---- what a parse puts in

namespace {

/// A snapshot of the children in the range: what is added meanwhile does not count.
std::vector<TRef<INibMLTag>> ChildrenOf(INibMLTag& tag) {
    std::vector<TRef<INibMLTag>> children;
    int32_t count = tag.GetTagCount();
    for (int32_t i = 0; i < count; ++i)
        if (auto child = tag.GetTags(i)) children.push_back(std::move(child));
    return children;
}

bool IsUnknown(INibMLTag* tag) { return QueryAs<INibMLNamedTag>(tag) != nullptr; }
bool IsXSLName(std::u16string_view name) { return StartsWithText(name, std::u16string_view(u"xsl:")); }

/// Children of children whose opening tag may be left out may stand here too.
void AddOptionalElements(TContextFixups& fixups, ITagContext& context, INibMLTag& tag, INibMLTag& source) {
    for (const auto& child : ChildrenOf(source)) {
        if (child->GetRequiresOpeningTag()) continue;
        for (const auto& inner : ChildrenOf(*child)) {
            if (!tag.LookupTag(inner->GetName()))
                fixups.AddStandIn(tag, MakeRef<TTagWrapper>(*inner, &context, -1));
        }
    }
}

void InsertOptionalElements(TContextFixups& fixups, TMLSymbolManager& manager, INibMLTag& tag,
                            INibMLTag* parent) {
    if (!manager.GetParser().FInTag || IsUnknown(&tag) || IsUnknown(parent)) {
        AddOptionalElements(fixups, manager, tag, tag);
        if (parent) AddOptionalElements(fixups, manager, tag, *parent);
    }
    tag.AlphaSort();
}

/// Inside an instruction, what the nearest literal element may contain; inside a
/// literal element, what the nearest instruction may contain.
void InsertXSLElements(TContextFixups& fixups, TMLSymbolManager& manager, INibMLTag& tag) {
    TMLParser& parser = manager.GetParser();
    if (manager.GetKibitzMode() != kmXSL || parser.FInTag) return;
    bool isXSL = IsXSLName(tag.GetName());
    const TTagEntry* entry = parser.GetTagStack();
    while (entry && IsXSLName(entry->Tag->GetName()) == isXSL) entry = entry->Next;
    if (!entry) return;
    entry->Tag->SetShowAttributes(false);
    for (const auto& child : ChildrenOf(*entry->Tag)) {
        if (IsXSLName(child->GetName()) != isXSL && !tag.LookupTag(child->GetName()))
            fixups.AddStandIn(tag, MakeRef<TXSLTag>(*child, &manager, -1));
    }
    tag.AlphaSort();
}

void RemoveAlreadyExistingAttrs(TContextFixups& fixups, TMLSymbolManager& manager, INibMLTag& tag) {
    TMLParser& parser = manager.GetParser();
    for (int32_t i = 0; i < parser.GetCurrentTagAttrCount(); ++i)
        fixups.HideAttribute(tag, parser.GetCurrentTagAttrName(i));
    tag.AlphaSort();
}

}  // namespace

void TMLSymbolManager::InsertFixupElements(INibMLTag* tag, INibMLTag* parent) {
    if (!tag) return;
    InsertOptionalElements(FFixups, *this, *tag, parent);
    InsertXSLElements(FFixups, *this, *tag);
    RemoveAlreadyExistingAttrs(FFixups, *this, *tag);
    // What was added comes into view.
    tag->SetFilter({});
}

void TMLSymbolManager::RemoveFixupElements(INibMLTag* tag) {
    FFixups.Undo();
    if (tag) tag->AlphaSort();
}

bool TMLSymbolManager::ContainsChild(INibMLTag& tag, std::u16string_view name) {
    return tag.LookupTag(name) != nullptr;
}

const std::vector<std::u16string>& TMLSymbolManager::GetASPParentTags() {
    static const std::vector<std::u16string> names = {
        u"BODY",     u"INS",        u"DEL",  u"p",        u"DL",     u"DIV",     u"CENTER", u"NOSCRIPT",
        u"NOFRAMES", u"BLOCKQUOTE", u"FORM", u"ISINDEX",  u"HR",     u"TABLE",   u"TD",     u"FIELDSET",
        u"ADDRESS",  u"H1",         u"H2",   u"H3",       u"H4",     u"H5",      u"H6",     u"UL",
        u"OL",       u"DIR",        u"MENU", u"PRE",      u"TT",     u"I",       u"B",      u"U",
        u"S",        u"STRIKE",     u"BIG",  u"SMALL",    u"EM",     u"STRONG",  u"CODE",   u"DFN",
        u"SAMP",     u"KBD",        u"VAR",  u"CITE",     u"ABBR",   u"ACRONYM", u"A",      u"IMG",
        u"APPLET",   u"OBJECT",     u"FONT", u"BASEFONT", u"BR",     u"SCRIPT",  u"MAP",    u"Q",
        u"SUB",      u"SUP",        u"SPAN", u"BDO",      u"IFRAME", u"INPUT",   u"SELECT", u"TEXTAREA",
        u"LABEL",    u"BUTTON"};
    return names;
}

}  // namespace caretwell
