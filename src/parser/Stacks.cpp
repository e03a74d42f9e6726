// Open tags: what a tag's beginning and end do to the two stacks. HTML forgives what
// was not closed, XML does not.
#include "parser/MLParser.h"
#include "tagmodel/DocumentNodes.h"

namespace caretwell {
namespace {

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

// The last schema element is kept, so that a run of unknown elements does not lose it.
TRef<INibMLTag> TMLParser::NewUnknownElement(std::string_view name) {
    if (!Supports<INibMLNamedTag>(FCurrentTag)) FLastKnownTag = FCurrentTag;
    return MakeRef<TNamedTag>(ToUtf16(name), &FSymbolManager, -1);
}

void TMLParser::PushTag(int32_t nameOffset) {
    INibMLTag* tag = FScan.ScanTag;
    TNameSlot& slot = FStacks.NeedSlot(FScan.ScanBucket, FTagName);
    PTagEntry inDocument = FStacks.Push(TTagStacks::tsDocument, tag, slot, nameOffset);
    if (FScan.BeforeCaret) FCurrentTagAttrs = &FStacks.Push(TTagStacks::tsOpen, tag, slot, nameOffset)->Attrs;
    // The tag being typed is no parent yet.
    else if (FScan.OpenedBeforeCaret) FCurrentTagAttrs = &inDocument->Attrs;
}

void TMLParser::PopTag(TTagBucket* closing, std::string_view name, bool beforeCaret) {
    TNameSlot* slot = FStacks.FindSlot(closing, name);
    PTagEntry inDocument = FStacks.GetInnermost(TTagStacks::tsDocument, slot);
    if (beforeCaret) {
        if (PTagEntry match = FStacks.GetInnermost(TTagStacks::tsOpen, slot)) {
            // An open tag between is dropped if it does not belong inside the one being
            // closed, or if its closing tag may be left out.
            auto drops = [closing](const TTagEntry& entry) {
                auto inner = closing ? closing->Tag->LookupTag(entry.Tag->GetName()) : nullptr;
                return !inner || !inner->GetRequiresClosingTag();
            };
            if (!FIsXML) FStacks.DropInside(match, drops);
            FStacks.Dispose(TTagStacks::tsOpen, match, true);
        }
        PTagEntry top = GetTagStack();
        FCurrentTag = top ? top->Tag : nullptr;
        FInTag = static_cast<bool>(FCurrentTag);
    }
    if (inDocument) FStacks.Dispose(TTagStacks::tsDocument, inDocument, false);
}

// Behind the ">"; the place that is kept is the ">" itself.
void TMLParser::PushAutoCloseTagPos() {
    FAutoClosePositions.push_back({.Position = {}, .Offset = Offset() - 1});
}

void TMLParser::SetTagOffsetStart(INibMLTag* tag, int32_t offset, bool isClosing, bool beforeCaret) {
    if (!tag) return;
    tag->SetOffsetStart(offset);
    if (!isClosing && beforeCaret && GetTagStack()) GetTagStack()->OffsetStart = offset;
}

void TMLParser::SetTagOffsetEnd(INibMLTag* tag, int32_t offset, bool closes, bool track) {
    if (!tag) return;
    tag->SetOffsetEnd(offset);
    PTagEntry top = GetTagStack();
    if (!track || !top) return;
    if (closes) FCurrentTagAttrs = top->Next ? &top->Next->Attrs : nullptr;
    else top->OffsetEnd = offset;
}

}  // namespace caretwell
