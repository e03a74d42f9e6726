// What the list at a caret shows beside the schema's own entries.
#include "symbols/ContextFixups.h"

#include <algorithm>

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

bool IsStandIn(INibMLTag* tag) { return QueryAs<INibMLCustomTag>(tag) != nullptr; }
bool IsUnknown(INibMLTag* tag) { return tag && QueryAs<INibMLNamedTag>(tag) != nullptr; }
bool IsXSLName(std::u16string_view name) { return StartsWithText(name, std::u16string_view(u"xsl:")); }

/// Children of children whose opening tag may be left out may stand here too, however many
/// of those lie between.
void AddOptionalElements(TContextFixups& fixups, ITagContext& context, INibMLTag& tag, INibMLTag& source,
                         std::vector<INibMLTag*>& seen) {
    for (const auto& child : ChildrenOf(source)) {
        bool isSeen = std::find(seen.begin(), seen.end(), child.Get()) != seen.end();
        if (isSeen || child->GetRequiresOpeningTag() || IsStandIn(child.Get())) continue;
        seen.push_back(child.Get());
        for (const auto& inner : ChildrenOf(*child))
            if (!IsStandIn(inner.Get()) && !tag.LookupTag(inner->GetName()))
                fixups.AddStandIn(tag, MakeRef<TTagWrapper>(*inner, &context, -1));
        AddOptionalElements(fixups, context, tag, *child, seen);
    }
}

/// The caret asks for attributes: in a tag, past its name.
bool IsAmongAttributes(const TMLParser& parser) { return parser.FInTag && !parser.FCaretInTagName; }

/// At the top of an empty page a person begins with its outermost element. One whose tags are
/// left out is written in a page that has begun with another, or in a name typed there.
bool LacksOutermost(const TMLParser& parser, INibMLTag& root) {
    if (parser.FOutermostTag) return !root.LookupTag(parser.FOutermostTag->GetName());
    return parser.FInTag && parser.FCaretInTagName;
}

void InsertOptionalElements(TContextFixups& fixups, TMLSymbolManager& manager, INibMLTag& tag,
                            INibMLTag* parent) {
    TMLParser& parser = manager.GetParser();
    std::vector<INibMLTag*> seen;
    if (&tag == manager.GetHiddenRootNode() && !LacksOutermost(parser, tag)) return;
    if (!IsAmongAttributes(parser) || IsUnknown(parser.FCurrentTag.Get())) {
        AddOptionalElements(fixups, manager, tag, tag, seen);
        if (parent) AddOptionalElements(fixups, manager, tag, *parent, seen);
    }
    tag.AlphaSort();
}

/// The open tag whose children of the other language may stand in an instruction, or in a
/// literal element: the nearest of the other kind. Where no literal element is open, an
/// instruction lets in what the template around it does.
const TTagEntry* FindXSLSource(const TMLParser& parser, bool isXSL) {
    const TTagEntry* entry = parser.GetTagStack();
    auto isSame = [isXSL](const TTagEntry& open) { return IsXSLName(open.Tag->GetName()) == isXSL; };
    const TTagEntry* other = entry;
    while (other && isSame(*other)) other = other->Next;
    if (other || !isXSL) return other;
    auto hasOther = [](INibMLTag& tag) {
        for (const auto& child : ChildrenOf(tag))
            if (!IsXSLName(child->GetName())) return true;
        return false;
    };
    while (entry && !hasOther(*entry->Tag)) entry = entry->Next;
    return entry;
}

/// What lets an instruction in as its child lets in a literal element too: xsl:if and not xsl:choose.
bool IsTemplate(INibMLTag& tag) { return tag.LookupTag(u"xsl:if") != nullptr; }

void AddOtherElements(TContextFixups& fixups, ITagContext& context, INibMLTag& tag, INibMLTag& source,
                      bool isXSL) {
    source.SetShowAttributes(false);
    for (const auto& child : ChildrenOf(source)) {
        bool isOther = IsXSLName(child->GetName()) != isXSL && !Supports<INibMLClosingTag>(child);
        if (isOther && !tag.LookupTag(child->GetName()))
            fixups.AddStandIn(tag, MakeRef<TXSLTag>(*child, &context, -1));
    }
    std::vector<INibMLTag*> seen;
    if (isXSL) AddOptionalElements(fixups, context, tag, source, seen);
}

void InsertXSLElements(TContextFixups& fixups, TMLSymbolManager& manager, INibMLTag& tag) {
    TMLParser& parser = manager.GetParser();
    if (manager.GetKibitzMode() != kmXSL || IsAmongAttributes(parser)) return;
    bool isXSL = IsXSLName(tag.GetName());
    if (isXSL && !IsTemplate(tag)) return;
    const TTagEntry* entry = FindXSLSource(parser, isXSL);
    // A style sheet may begin with a literal element, and a variable stand outside of templates.
    TRef<INibMLTag> source = entry ? entry->Tag : nullptr;
    if (!entry && parser.GetTagStack()) source = manager.GetTagFromHashList(u"xsl:template");
    if (source && source.Get() != &tag) AddOtherElements(fixups, manager, tag, *source, isXSL);
    tag.AlphaSort();
}

void RemoveAlreadyExistingAttrs(TContextFixups& fixups, TMLSymbolManager& manager, INibMLTag& tag) {
    TMLParser& parser = manager.GetParser();
    // The name at the caret is being written anew.
    for (int32_t i = 0; i < parser.GetCurrentTagAttrCount(); ++i)
        if (!parser.IsCurrentTagAttrAtCaret(i)) fixups.HideAttribute(tag, parser.GetCurrentTagAttrName(i));
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
