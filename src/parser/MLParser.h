// Reads a markup document that is by nature half-typed and possibly wrong, and works
// out where the caret stands: in which tag, attribute and value, inside which open
// elements. It never rejects anything.
//
//     <ul><li><a href="x^      in the value of href, on a, inside ul and li
//
// The whole document is read in one pass, and nothing stops at the caret: before it
// the parser keeps what the list is made from, after it only which tags stay open. What
// surrounds a scan (which schema, which list) is the road's business.
//
// One class, several files: Scan (text and tags), Attributes, Regions (comments,
// strings, scripts), Stacks, Observers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "markup/MLBufferProducer.h"
#include "parser/CaretState.h"
#include "parser/DocumentWindow.h"
#include "parser/LineCounter.h"
#include "parser/ScanState.h"
#include "parser/TagStack.h"

namespace caretwell {

class TMLParser;
class TTagLog;
struct TNameKey;
struct TRegionRule;

/// Whoever leads a document from its kind over its scan and schema to a list.
class IDocumentRoad {
public:
    virtual void Parse(TNibEditPos caret, TRef<IMLBufferProducer> producer, TRef<INibMLTag> startTag) = 0;
    virtual void BootStrapDTD(TRef<IMLBufferProducer> producer) = 0;

protected:
    ~IDocumentRoad() = default;
};

class TMLParser : public TCaretState {
public:
    /// Neither is owned; both outlive the parser.
    TMLParser(TElementTable& table, IDocumentRoad& road);
    ~TMLParser();
    TMLParser(const TMLParser&) = delete;
    TMLParser& operator=(const TMLParser&) = delete;

    /// Takes a document the whole road. startTag, or null, is the tag that is taken to enclose
    /// the document. An exception of an observer or of the host ends the parse and passes on.
    /// Without a producer, or from inside a parse or the load of a schema, it does nothing.
    void Parse(TNibEditPos caret, TRef<IMLBufferProducer> producer, TRef<INibMLTag> startTag) {
        FRoad.Parse(caret, std::move(producer), std::move(startTag));
    }
    /// Forces the schema of the schema folder that the document's doctype names, whatever the mode.
    void BootStrapDTD(TRef<IMLBufferProducer> producer) { FRoad.BootStrapDTD(std::move(producer)); }

    /// One pass over the document from the producer's place on: a step of the road, which
    /// looks names up in the table as it is and changes nothing there but places of occurrence.
    void Scan(IMLBufferProducer& producer, TNibEditPos caret, TRef<INibMLTag> startTag);
    /// Forgets the last scan: its tags are gone.
    void Forget();

    /// Where scans note the tags that they meet; null for nowhere. Not owned.
    void SetTagLog(TTagLog* log) { FTagLog = log; }

    // ---- Observers. They are told of what lies before the caret, in document order.

    /// Holds a reference. What is no INibMLElementCallback, or is watching already, is left.
    void AddCallback(IRefCounted* observer);
    void RemoveCallback(IRefCounted* observer);
    void CallbacksInvalidate();

    // ---- Where the caret stands. Valid from the end of a scan to the next.

    TMLParserState GetState() const { return FState; }
    bool GetInAttribute() const { return static_cast<bool>(FCurrentAttribute); }
    bool GetInDocType() const { return FInDocType; }
    int32_t GetCurrentCol() const { return FCurrentCol; }
    /// Offset at which the innermost region left open began, -1 if none.
    int32_t GetContextPos() const { return FContextPos.empty() ? -1 : FContextPos.back(); }
    /// The schema element of that name; null if the schema has none.
    TRef<INibMLTag> FindTag(std::u16string_view name) const;
    PTagEntry GetTagStack() const { return FStacks.GetTop(TTagStacks::tsOpen); }
    PTagEntry GetDocumentTags() const { return FStacks.GetTop(TTagStacks::tsDocument); }

    // ---- Attributes written on the current tag. By name the first one counts; without
    // one the answer is empty, null or 0.

    int32_t GetCurrentTagAttrCount() const { return FCurrentTagAttrs ? FCurrentTagAttrs->GetCount() : 0; }
    INibMLTagAttribute* GetCurrentTagAttrs(int32_t index) const;
    std::u16string_view GetCurrentTagAttrName(int32_t index) const;
    std::u16string GetCurrentTagAttrValue(int32_t index) const;
    /// True if the caret stands in the name, or directly before or after it.
    bool IsCurrentTagAttrAtCaret(int32_t index) const;
    std::u16string GetCurrentTagAttrValueByName(std::u16string_view name) const;
    char GetCurrentTagAttrStrType(std::u16string_view name) const;
    char GetCurrentTagAttrStrTypeEnd(std::u16string_view name) const;
    int32_t GetCurrentTagAttrOffsetStart(std::u16string_view name) const;
    int32_t GetCurrentTagAttrOffsetEnd(std::u16string_view name) const;
    int32_t GetCurrentTagAttrValueOffsetStart(std::u16string_view name) const;

    const std::vector<int32_t>& GetAutoClosePositions() const { return FAutoClosePositions; }
    void ClearAutoCloseTagPosStack() { FAutoClosePositions.clear(); }

private:
    // The attribute being read.
    struct TAttributeScan {
        int32_t Start = 0;
        TRef<INibMLTagAttribute> Symbol;
        bool NameEndBeforeCaret = false;
        bool TouchesCaret = false;  // the caret stands in the name or directly at it
        bool IsLoose = false;       // it may belong to text after a tag that nobody has ended
        bool IsQuoted = false;
        enum class TGap : uint8_t { None, Blanks, Lines } Gap = TGap::None;  // between "=" and the value
        int32_t ValueStart = 0;
    };

    // Scan
    void ScanDocument();
    void FinishScan(const TRef<INibMLTag>& startTag);
    void FinishTags(const TRef<INibMLTag>& startTag);
    TRef<INibMLTag> LastKnown(const TRef<INibMLTag>& startTag) const;
    void FinishValuePos(IMLBufferProducer& producer);
    void ScanByte();
    void ScanOther();
    bool IsPlainText() const;
    void SkipPlainText();
    void ScanEndOfBlock();
    void ScanWhiteSpace();
    void ScanLetter();
    void ScanQuote();
    void ScanSlash();
    void ScanPercent();
    bool EndsUnquotedValue(const char* slash) const;
    void ScanTagEnd(const char* remembered);
    void TellTagEnd();
    bool IsEmptyTag() const;
    void EndTagBeforeCaret(bool endsEmpty);
    void EndCaretTag(int32_t offset);
    void ScanRawContent(TRawContent content);
    void ScanTagStart();
    bool ScanRegion(int32_t start);
    TTagForm ReadTagForm();
    void ScanTagName(const TTagScan& tag);
    void BeginTag(int32_t nameOffset);
    void BeginDocType(const TNameKey& key, std::string_view name, bool nameBeforeCaret, bool isTyped);
    bool FindScanTag(const TNameKey& key, std::string_view name);
    bool FindDirective(std::string_view name);
    void MakeUpTag(TRef<INibMLTag> tag);
    void IgnoreNamelessTag();
    void NoteOutermost(std::string_view name);
    void OpenScanTag();
    static TRawContent RawContentOf(const TNameKey& key);
    void SkipWhiteSpace();
    std::string_view ReadName();

    // Attributes
    void ScanAttribute();
    void BeginAttribute(TAttributeScan& attribute);
    bool ScanAttributeValue(TAttributeScan& attribute, std::string& value);
    void NoteValuePos(const TAttributeScan& attribute);
    bool IsWordAValue(const TAttributeScan& attribute);
    bool ReadAttributeValue(TAttributeScan& attribute, std::string& value);
    void EndAttribute(TAttributeScan& attribute, std::string_view value);
    bool IsBooleanAttribute(INibMLTagAttribute& attribute) const;
    void GetTagAttrValue(bool quoted, std::string& value);
    void AddTagAttr(const TAttributeScan& attribute, std::string_view value);
    TRef<INibMLTagAttribute> NewUnknownAttr(std::string_view name) const;
    TRef<INibMLTagAttribute> FindAttribute(std::string_view name) const;

    // Regions
    void EnterRegion(TParserContexts region);
    void LeaveRegion(TParserContexts region);
    bool SkipTo(std::string_view stops);
    void HandleRegion(const TRegionRule& rule, int32_t start, bool holdsCaret);
    bool SkipEmptyComment();
    bool FindRegionEnd(const TRegionRule& rule);
    bool SkipRegionString(const TRegionRule& rule);
    void SkipNestedComment();
    void ReportRegion(const TRegionRule& rule, int32_t start);
    void HandleString();

    // Stacks
    void PushTag(int32_t nameOffset);
    void PopTag(bool beforeCaret) { PopTag(FScan.Tag.Bucket, FScan.TagName, beforeCaret); }
    void PopTag(TTagBucket* closing, std::string_view name, bool beforeCaret);
    void SetTagOffsetStart(INibMLTag* tag, int32_t offset, bool isClosing, bool beforeCaret);
    void SetTagOffsetEnd(INibMLTag* tag, int32_t offset, bool closes, bool track);
    void PushAutoCloseTagPos();
    void DropAutoCloseTagPos(int32_t offset);

    // Observers
    bool IsObserved() const { return !FCallbacks.empty(); }
    void Callback(INibMLMarkupPos* element, TTagType type, int32_t offsetStart, int32_t offsetEnd) {
        if (IsObserved()) Tell(element, type, offsetStart, offsetEnd);
    }
    void Tell(INibMLMarkupPos* element, TTagType type, int32_t offsetStart, int32_t offsetEnd);
    void ReportText(int32_t offsetEnd);
    void StartText();

    // The window
    bool IsBeforeCaret(const char* p) const { return FWindow.IsBeforeCaret(p); }
    int32_t Offset() const { return FWindow.OffsetOf(FPosition); }
    bool IsAtEnd() const { return FPosition == FWindow.GetEnd(); }
    bool InDocType() const { return FScan.Tag.IsOpen && FScan.Tag.Form == TTagForm::DocType; }
    /// The scan still reads the tag in which the caret stands.
    bool InCaretTag() const { return FInTag && !FScan.PastCaret; }
    bool NextBlock();
    void NeedAhead(int32_t count);
    void ResolveLines(const char* upTo);

    void PopContextPos() {
        if (!FContextPos.empty()) FContextPos.pop_back();
    }

    TElementTable& FTable;
    IDocumentRoad& FRoad;
    TMLParserState FState = mlpsNone;
    std::vector<TRef<INibMLElementCallback>> FCallbacks;

    TTagLog* FTagLog = nullptr;

    // One scan.
    TScan FScan;
    TTagStacks FStacks;
    TTagAttributeList* FCurrentTagAttrs = nullptr;  // of an entry of the stacks
    TDocumentWindow FWindow;
    const char* FPosition = nullptr;
    TLineCounter FLines;
    const char* FLinesAt = nullptr;  // how far lines are counted

    std::string FValue;  // of the attribute being read; kept for its memory alone
};

}  // namespace caretwell
