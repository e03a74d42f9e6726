// Open tags: what a tag's beginning and end do to the two stacks. HTML forgives what
// was not closed, XML does not.
#include <algorithm>

#include "parser/ElementTable.h"
#include "parser/MLParser.h"

namespace caretwell {

void TMLParser::PushTag(int32_t nameOffset) {
    INibMLTag* tag = FScan.Tag.Tag;
    TNameSlot& slot = FStacks.NeedSlot(FScan.Tag.Bucket, FScan.TagName);
    PTagEntry inDocument = FStacks.Push(TTagStacks::tsDocument, tag, slot, nameOffset);
    if (FScan.BeforeCaret) {
        PTagEntry open = FStacks.Push(TTagStacks::tsOpen, tag, slot, nameOffset);
        TTagStacks::Pair(open, inDocument);
        FCurrentTagAttrs = &open->Attrs;
    } else if (FScan.Tag.OpenedBeforeCaret) {
        // The tag being typed is no parent yet.
        FCurrentTagAttrs = &inDocument->Attrs;
    }
}

void TMLParser::PopTag(TTagBucket* closing, std::string_view name, bool beforeCaret) {
    TNameSlot* slot = FStacks.FindSlot(closing, name);
    PTagEntry inDocument = FStacks.GetInnermost(TTagStacks::tsDocument, slot);
    if (beforeCaret) {
        if (PTagEntry match = FStacks.GetInnermost(TTagStacks::tsOpen, slot)) {
            // An open tag between is dropped if it does not belong inside the one being
            // closed, or if its closing tag may be left out there: what may be left out is
            // a question to the element that holds it.
            auto drops = [closing](const TTagEntry& entry) {
                auto inner = closing ? closing->Tag->LookupTag(entry.Tag->GetName()) : nullptr;
                return !inner || !inner->GetRequiresClosingTag();
            };
            if (!FIsXML) FStacks.DropInside(match, drops);
            FStacks.Dispose(TTagStacks::tsOpen, match, true);
        }
        PTagEntry top = GetTagStack();
        FCurrentTag = top ? top->Tag : nullptr;
        FCurrentTagAttrs = top ? &top->Attrs : nullptr;
        FInTag = static_cast<bool>(FCurrentTag);
    }
    if (!inDocument) return;
    if (inDocument->AutoClose >= 0) DropAutoCloseTagPos(inDocument->AutoClose);
    FStacks.Dispose(TTagStacks::tsDocument, inDocument, false);
}

// Called after the ">"; the place that is kept is the ">" itself.
void TMLParser::PushAutoCloseTagPos() {
    FAutoClosePositions.push_back(Offset() - 1);
    PTagEntry top = GetTagStack();
    if (top && top->Twin) top->Twin->AutoClose = Offset() - 1;
}

// Its own closing tag follows: the element is written out.
void TMLParser::DropAutoCloseTagPos(int32_t offset) {
    auto place = std::find(FAutoClosePositions.rbegin(), FAutoClosePositions.rend(), offset);
    if (place != FAutoClosePositions.rend()) FAutoClosePositions.erase(std::next(place).base());
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
