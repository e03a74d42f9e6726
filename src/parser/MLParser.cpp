// A scan from its start to its end, and what can be asked of its outcome.
#include "parser/MLParser.h"

#include <algorithm>

#include "host/ValueScope.h"
#include "parser/ElementTable.h"
#include "parser/TagLog.h"

namespace caretwell {

TMLParser::TMLParser(TElementTable& table, IDocumentRoad& road) : FTable(table), FRoad(road) {}

TMLParser::~TMLParser() = default;

void TMLParser::Forget() {
    static_cast<TCaretState&>(*this) = TCaretState();
    FScan = TScan();
    FStacks.Clear();
    FCurrentTagAttrs = nullptr;
    FLines = TLineCounter();
    FLinesAt = nullptr;
}

void TMLParser::Scan(IMLBufferProducer& producer, TNibEditPos caret, TRef<INibMLTag> startTag) {
    TValueScope<TMLParserState> parsing(FState, mlpsParsing);
    Forget();
    if (FTagLog) FTagLog->Begin(startTag ? ToUtf8(startTag->GetName()) : std::string());
    FCaret = FValuePos = caret;
    FCurrentTag = startTag;
    if (FWindow.Open(producer, caret)) {
        FPosition = FLinesAt = FWindow.GetStart();
        StartText();
        ScanDocument();
        ResolveLines(FWindow.GetEnd());
    }
    FinishScan(startTag);
    FinishValuePos(producer);
}

TRef<INibMLTag> TMLParser::FindTag(std::u16string_view name) const {
    TTagBucket* bucket = FTable.FindBucket(name);
    return bucket ? bucket->Tag : nullptr;
}

namespace {

bool IsUnknown(const TRef<INibMLTag>& tag) { return Supports<INibMLNamedTag>(tag); }

PTagEntry InnermostUnknown(PTagEntry entry) {
    while (entry && !IsUnknown(entry->Tag)) entry = entry->Next;
    return entry;
}

TRef<INibMLTag> InnermostKnown(PTagEntry entry) {
    while (entry && IsUnknown(entry->Tag)) entry = entry->Next;
    return entry ? entry->Tag : nullptr;
}

}  // namespace

void TMLParser::FinishScan(const TRef<INibMLTag>& startTag) {
    // A tag that the document leaves without an end may have text after the caret.
    if (FScan.Tag.IsOpen && InCaretTag() && FCurrentTagAttrs) FCurrentTagAttrs->DropLoose();
    FScan.Tag = TTagScan();
    if (FUnterminatedTag) FContexts.Add(pcElement);
    if (!FCurrentTag) FCurrentTag = startTag;
    FinishTags(startTag);
    bool isNameTyped = FInTag && FCaretInTagName && !FInClosingTag && !FInScript && !FInStyle && !FInTextArea;
    if (isNameTyped && !IsUnknown(FCurrentTag)) {
        PTagEntry top = GetTagStack();
        FCaretParentTag = top ? top->Tag : TRef<INibMLTag>(FTable.GetRoot());
        if (IsUnknown(FCaretParentTag)) {
            FCaretParentTag = InnermostKnown(top);
            if (!FCaretParentTag) FCaretParentTag = startTag ? startTag : TRef<INibMLTag>(FTable.GetRoot());
        }
    }
    FLastKnownTag = LastKnown(startTag);
}

/// The innermost known element around the innermost unknown one that holds the caret; null
/// without an unknown one.
TRef<INibMLTag> TMLParser::LastKnown(const TRef<INibMLTag>& startTag) const {
    PTagEntry entry = GetTagStack();
    if (!IsUnknown(FCurrentTag)) {
        entry = InnermostUnknown(entry);
        if (!entry) return nullptr;
    }
    auto known = InnermostKnown(entry);
    return known ? known : startTag;
}

// A symbol tells of its last occurrence in the document, an entry of its own.
void TMLParser::FinishTags(const TRef<INibMLTag>& startTag) {
    PTagEntry top = GetTagStack();
    if (FCurrentTag && top && SameText(top->Tag->GetName(), FCurrentTag->GetName())) {
        FCurrentTag->SetOffsetEnd(top->OffsetEnd);
        FCurrentTag->SetOffsetStart(top->OffsetStart);
    }
    PTagEntry last = GetDocumentTags();
    if (startTag && last && SameText(last->Tag->GetName(), startTag->GetName())) {
        std::string name = ToUtf8(startTag->GetName());
        PopTag(FTable.FindBucket(startTag->GetName()), name, false);
    }
}

// The view knows characters; without one a column counts bytes.
void TMLParser::FinishValuePos(IMLBufferProducer& producer) {
    FValuePos.Col = FCaret.Col;
    if (FValueOffset < 0) return;
    auto internal = QueryAs<IMLBufferProducerInternal>(&producer);
    INibEditView* view = internal ? internal->GetEditView() : nullptr;
    if (view) FValuePos.Col = view->CharPosToEditPos(view->OffsetToCharPos(FValueOffset)).Col;
    else FValuePos.Col = static_cast<int16_t>(FValueOffset - FScan.ValueLineStart + 1);
}

// ---- the window

bool TMLParser::NextBlock() {
    ResolveLines(FWindow.GetEnd());
    if (!FWindow.Next()) return false;
    FPosition = FLinesAt = FWindow.GetStart();
    return true;
}

/// Makes sure that a token of count bytes is not cut by the end of the block.
void TMLParser::NeedAhead(int32_t count) {
    if (FWindow.GetEnd() - FPosition >= count || !FWindow.IsCutInToken(FPosition)) return;
    ResolveLines(FPosition);
    if (FWindow.Extend(FPosition)) FPosition = FLinesAt = FWindow.GetStart();
}

// Entries pushed in this block that are still open stand together at the tops, so the
// lines are counted once for those who are left.
void TMLParser::ResolveLines(const char* upTo) {
    struct TPoint {
        int32_t Offset;
        PTagEntry Entry = nullptr;
        int32_t* LineStart = nullptr;
    };
    std::vector<TPoint> points;
    for (auto stack : {TTagStacks::tsOpen, TTagStacks::tsDocument})
        for (PTagEntry entry = FStacks.GetTop(stack); entry && !entry->Line; entry = entry->Next)
            points.push_back({.Offset = entry->NameOffset, .Entry = entry});
    int32_t columnStart = -1;
    if (FScan.ColumnOffset >= 0) points.push_back({.Offset = FScan.ColumnOffset, .LineStart = &columnStart});
    if (FValueOffset >= 0 && FScan.ValueLineStart < 0)
        points.push_back({.Offset = FValueOffset, .LineStart = &FScan.ValueLineStart});
    std::sort(points.begin(), points.end(),
              [](const TPoint& a, const TPoint& b) { return a.Offset < b.Offset; });

    const char* at = FLinesAt ? FLinesAt : FWindow.GetStart();
    auto advance = [&](const char* to) {
        if (to <= at) return;
        FLines.Advance(at, to, FWindow.OffsetOf(at));
        at = to;
    };
    for (const TPoint& point : points) {
        advance(FWindow.GetStart() + (point.Offset - FWindow.OffsetOf(FWindow.GetStart())));
        if (point.Entry) point.Entry->Line = FLines.GetLine();
        if (point.LineStart) *point.LineStart = FLines.GetLineStart();
    }
    advance(upTo);
    FLinesAt = at;
    if (FScan.ColumnOffset >= 0) FCurrentCol = FScan.ColumnOffset - columnStart;
    FScan.ColumnOffset = -1;
}

// ---- attributes written on the current tag

INibMLTagAttribute* TMLParser::GetCurrentTagAttrs(int32_t index) const {
    return index >= 0 && index < GetCurrentTagAttrCount() ? FCurrentTagAttrs->Get(index).Attribute.Get()
                                                          : nullptr;
}
std::u16string_view TMLParser::GetCurrentTagAttrName(int32_t index) const {
    INibMLTagAttribute* attribute = GetCurrentTagAttrs(index);
    return attribute ? attribute->GetName() : std::u16string_view();
}
std::u16string TMLParser::GetCurrentTagAttrValue(int32_t index) const {
    return GetCurrentTagAttrs(index) ? ToUtf16(FCurrentTagAttrs->Get(index).Value) : std::u16string();
}

bool TMLParser::IsCurrentTagAttrAtCaret(int32_t index) const {
    return GetCurrentTagAttrs(index) && FCurrentTagAttrs->Get(index).TouchesCaret;
}

namespace {
const TTagAttributeValue* FindIn(const TTagAttributeList* list, std::u16string_view name) {
    return list ? list->Find(name) : nullptr;
}
}  // namespace

std::u16string TMLParser::GetCurrentTagAttrValueByName(std::u16string_view name) const {
    auto* item = FindIn(FCurrentTagAttrs, name);
    return item ? ToUtf16(item->Value) : std::u16string();
}
char TMLParser::GetCurrentTagAttrStrType(std::u16string_view name) const {
    auto* item = FindIn(FCurrentTagAttrs, name);
    return item ? item->QuoteOpen : '\0';
}
char TMLParser::GetCurrentTagAttrStrTypeEnd(std::u16string_view name) const {
    auto* item = FindIn(FCurrentTagAttrs, name);
    return item ? item->QuoteClose : '\0';
}
int32_t TMLParser::GetCurrentTagAttrOffsetStart(std::u16string_view name) const {
    auto* item = FindIn(FCurrentTagAttrs, name);
    return item ? item->Attribute->GetOffsetStart() : 0;
}
int32_t TMLParser::GetCurrentTagAttrOffsetEnd(std::u16string_view name) const {
    auto* item = FindIn(FCurrentTagAttrs, name);
    return item ? item->Attribute->GetOffsetEnd() : 0;
}
int32_t TMLParser::GetCurrentTagAttrValueOffsetStart(std::u16string_view name) const {
    auto* item = FindIn(FCurrentTagAttrs, name);
    return item ? item->Attribute->GetAttributeValueStartOffset() : 0;
}

}  // namespace caretwell
