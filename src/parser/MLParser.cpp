// A parse from its start to its end: reset, scan, fix-ups, closing tags, schema.
#include "parser/MLParser.h"

#include <algorithm>

#include "tagmodel/DocumentNodes.h"

namespace caretwell {

TMLParser::TMLParser(TMLSymbolManager& symbolManager) : FSymbolManager(symbolManager) {}

TMLParser::~TMLParser() = default;

void TMLParser::Parse(TNibEditPos caret, TRef<IMLBufferProducer> producer, TRef<INibMLTag> startTag) {
    if (!producer || !FSymbolManager.BeginParse()) return;
    struct TEndOfParse {
        TMLParser& Parser;
        ~TEndOfParse() {
            Parser.FProducer = nullptr;
            Parser.FState = mlpsNone;
            Parser.FSymbolManager.EndParse();
        }
    } guard{*this};
    FProducer = std::move(producer);
    FSymbolManager.InitParse(FProducer->GetFilename());
    FSymbolManager.SetParser(this);
    Reset(caret, startTag);
    if (FWindow.Open(*FProducer, caret)) {
        FPosition = FWindow.GetStart();
        ParseMLDocument();
    }
    FinishParse(startTag);
    if (FSymbolManager.GetKibitzMode() == kmXML) FSymbolManager.SetNamespaces(FNamespaces);
    else FSymbolManager.SetSchemaFile(FSchemaFile);
}

void TMLParser::Reset(TNibEditPos caret, TRef<INibMLTag> startTag) {
    FState = mlpsParsing;
    FCaret = FValuePos = caret;
    FValueOffset = FValueLineStart = FAttributeStart = FAttributeValueStart = -1;
    FText.clear();
    FTextStart = nullptr;
    FStacks.Clear();
    FAutoClosePositions.clear();
    FResolvedPositions = 0;
    FCurrentTagAttrs = nullptr;
    FLastKnownTag = nullptr;
    FCaretParentTag = nullptr;
    FCurrentCol = FCurrentColOffset = -1;
    FCaretInTagName = false;  // closing tags of the last list may go from the tags' lists
    if (FCurrentTag) FCurrentTag->SetFilter({});
    if (FCurrentAttribute) FCurrentAttribute->SetFilter({});
    FSymbolManager.ResetLists();
    FCurrentTag = std::move(startTag);
    FInTag = FInScript = FInStyle = FInTextArea = FInComment = false;
    FCurrentAttribute = nullptr;
    FXSLOutputSchema = "loose.dtd";
    FSchemaFile.clear();
    FNamespaces.Clear();
    FInDocType = FInXSLTemplate = FInClosingTag = false;
    FSymbolManager.ClearClosedTags();
    FQuoteOpen = FQuoteClose = 0;
    FIsXML = FStop = FUnterminatedTag = false;
    FContexts = pcNone;
    FContextPos.clear();
    FTagName.clear();
    FAttrName.clear();
    FDocTypeMark = 0;
    FScan = TScan();
    FLines = TLineCounter();
    FLinesAt = nullptr;
}

void TMLParser::FinishParse(const TRef<INibMLTag>& startTag) {
    FScan = TScan();
    FState = mlpsNone;
    if (FUnterminatedTag) FContexts.Add(pcElement);
    if (FCurrentTag) {
        FCurrentTag->SetFilter({});
        PTagEntry top = GetTagStack();
        if (top && SameText(top->Tag->GetName(), FCurrentTag->GetName())) {
            FCurrentTag->SetOffsetEnd(top->OffsetEnd);
            FCurrentTag->SetOffsetStart(top->OffsetStart);
        }
    } else {
        FCurrentTag = startTag;
    }
    // An attribute whose list has not been looked at yet begins like any other.
    if (FCurrentAttribute) FCurrentAttribute->SetFilter({});
    InsertFixups();
    PTagEntry outermost = GetDocumentTags();
    if (outermost && startTag && SameText(outermost->Tag->GetName(), startTag->GetName()))
        PopTag(FSymbolManager.FindBucket(startTag->GetName()), ToUtf8(startTag->GetName()), false);
    bool isTypingName =
        FInTag && FCaretInTagName && !FInClosingTag && !FInScript && !FInStyle && !FInTextArea;
    if (isTypingName && !Supports<INibMLNamedTag>(FCurrentTag)) {
        FCaretParentTag =
            GetTagStack() ? GetTagStack()->Tag : TRef<INibMLTag>(FSymbolManager.GetHiddenRootNode());
    }
    ProposeClosingTags();
    FinishValuePos();
}

void TMLParser::InsertFixups() {
    if (FCaretParentTag) FSymbolManager.InsertFixupElements(FCaretParentTag.Get(), FLastKnownTag.Get());
    else if (Supports<INibMLNamedTag>(FCurrentTag))
        FSymbolManager.InsertFixupElements(FLastKnownTag.Get(), FCurrentTag.Get());
    else FSymbolManager.InsertFixupElements(FCurrentTag.Get(), FLastKnownTag.Get());
}

// What is open at the end of the whole document was never closed.
void TMLParser::ProposeClosingTags() {
    for (PTagEntry entry = GetDocumentTags(); entry; entry = entry->Next) {
        if (!entry->Tag->GetRequiresClosingTag() && entry->Tag->GetEmpty()) continue;
        if (entry->Line > FCaret.Line) continue;
        std::u16string name = u"</";
        name.append(entry->Tag->GetName()).append(u">");
        auto closing = MakeRef<TClosingTag>(name, &FSymbolManager, -1);
        closing->SetLineNumber(entry->Line);
        FSymbolManager.AddClosedTag(closing);
    }
}

// The view knows characters; without one a column counts bytes.
void TMLParser::FinishValuePos() {
    FValuePos.Col = FCaret.Col;
    if (FValueOffset < 0) return;
    auto internal = QueryAs<IMLBufferProducerInternal>(FProducer);
    INibEditView* view = internal ? internal->GetEditView() : nullptr;
    if (view) FValuePos.Col = view->CharPosToEditPos(view->OffsetToCharPos(FValueOffset)).Col;
    else FValuePos.Col = static_cast<int16_t>(FValueOffset - FValueLineStart + 1);
}

// ---- the window

bool TMLParser::NextBlock() {
    ResolveLines(FWindow.GetEnd());
    if (!FWindow.Next()) return false;
    FPosition = FLinesAt = FTextStart = FWindow.GetStart();
    return true;
}

/// Makes sure that a token of count bytes is not cut by the end of the block.
void TMLParser::NeedAhead(int32_t count) {
    if (FWindow.GetEnd() - FPosition >= count || !FWindow.IsCutInToken(FPosition)) return;
    CollectText();
    ResolveLines(FPosition);
    if (FWindow.Extend(FPosition)) FPosition = FLinesAt = FTextStart = FWindow.GetStart();
}

// Entries pushed in this block that are still open stand together at the tops, so the
// lines are counted once for those who are left.
void TMLParser::ResolveLines(const char* upTo) {
    struct TPoint {
        int32_t Offset;
        PTagEntry Entry = nullptr;
        TAutoClosePosition* AutoClose = nullptr;
        int32_t* LineStart = nullptr;
    };
    std::vector<TPoint> points;
    for (auto stack : {TTagStacks::tsOpen, TTagStacks::tsDocument})
        for (PTagEntry entry = FStacks.GetTop(stack); entry && !entry->Line; entry = entry->Next)
            points.push_back({.Offset = entry->NameOffset, .Entry = entry});
    for (size_t i = FResolvedPositions; i < FAutoClosePositions.size(); ++i)
        points.push_back({.Offset = FAutoClosePositions[i].Offset, .AutoClose = &FAutoClosePositions[i]});
    FResolvedPositions = FAutoClosePositions.size();
    int32_t columnStart = -1;
    if (FCurrentColOffset >= 0) points.push_back({.Offset = FCurrentColOffset, .LineStart = &columnStart});
    if (FValueOffset >= 0 && FValueLineStart < 0)
        points.push_back({.Offset = FValueOffset, .LineStart = &FValueLineStart});
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
        if (point.AutoClose) {
            int32_t column = point.Offset - FLines.GetLineStart();
            point.AutoClose->Position = {static_cast<int16_t>(std::min(column, 32767)), FLines.GetLine()};
        }
    }
    advance(upTo);
    FLinesAt = at;
    if (FCurrentColOffset >= 0) FCurrentCol = FCurrentColOffset - columnStart;
    FCurrentColOffset = -1;
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
