// Reads a markup document that is by nature half-typed and possibly wrong, and works
// out where the caret stands: in which tag, attribute and value, inside which open
// elements. It never rejects anything.
//
//     <ul><li><a href="x^      in the value of href, on a, inside ul and li
//
// The whole document is read in one pass, and nothing stops at the caret: before it
// the parser keeps what the list is made from, behind it only which tags stay open.
//
// One class, several files: Scan (text and tags), Attributes, Regions (comments,
// strings, scripts), Stacks, Observers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "caretwell/markup/MLBufferProducer.h"
#include "caretwell/markup/MLParserUtils.h"
#include "caretwell/parser/DocumentWindow.h"
#include "caretwell/parser/LineCounter.h"
#include "caretwell/parser/ParserContext.h"
#include "caretwell/parser/TagStack.h"
#include "caretwell/symbols/MLSymbolManager.h"

namespace caretwell {

/// Place of the ">" of an empty element that must be written in the closed form.
struct TAutoClosePosition {
    TNibEditPos Position;  ///< read as a TNibCharPos: line, and index in bytes
    int32_t Offset = 0;    ///< the exact place
};

class TMLParser {
public:
    explicit TMLParser(TMLSymbolManager& symbolManager);
    ~TMLParser();
    TMLParser(const TMLParser&) = delete;
    TMLParser& operator=(const TMLParser&) = delete;

    /// Runs the whole scan. startTag, or null, is the tag that is taken to enclose the
    /// document. An exception of an observer or of the host ends the parse and passes on.
    /// Without a producer, or from inside a parse or the load of a schema, it does nothing.
    void Parse(TNibEditPos caret, TRef<IMLBufferProducer> producer, TRef<INibMLTag> startTag);
    /// Forces the schema that the document's doctype names, whatever the mode.
    void BootStrapDTD(TRef<IMLBufferProducer> producer);

    // ---- Observers. They are told of what lies before the caret, in document order.

    /// Holds a reference. What is no INibMLElementCallback, or is watching already, is left.
    CARETWELL_API void AddCallback(IRefCounted* observer);
    CARETWELL_API void RemoveCallback(IRefCounted* observer);
    void CallbacksInvalidate();

    // ---- Where the caret stands. Valid from the end of a parse to the next.

    bool GetInAttribute() const { return static_cast<bool>(FCurrentAttribute); }
    bool GetInDocType() const { return FDocTypeMark > 0 && FDocTypeMark % 2 == 0; }
    /// Column in bytes from 0 of the last tag start or attribute end of the scan, -1 if none.
    int32_t GetCurrentCol() const { return FCurrentCol; }
    /// Offset at which the innermost region left open began, -1 if none.
    int32_t GetContextPos() const { return FContextPos.empty() ? -1 : FContextPos.back(); }
    /// The schema element of that name; null if the schema has none.
    TRef<INibMLTag> FindTag(std::u16string_view name) const {
        return FSymbolManager.GetTagFromHashList(name);
    }
    PTagEntry GetTagStack() const { return FStacks.GetTop(TTagStacks::tsOpen); }
    PTagEntry GetDocumentTags() const { return FStacks.GetTop(TTagStacks::tsDocument); }

    // ---- Attributes written on the current tag. By name the first one counts; without
    // one the answer is empty, null or 0.

    int32_t GetCurrentTagAttrCount() const { return FCurrentTagAttrs ? FCurrentTagAttrs->GetCount() : 0; }
    INibMLTagAttribute* GetCurrentTagAttrs(int32_t index) const;
    std::u16string_view GetCurrentTagAttrName(int32_t index) const;
    std::u16string GetCurrentTagAttrValue(int32_t index) const;
    std::u16string GetCurrentTagAttrValueByName(std::u16string_view name) const;
    char GetCurrentTagAttrStrType(std::u16string_view name) const;
    char GetCurrentTagAttrStrTypeEnd(std::u16string_view name) const;
    int32_t GetCurrentTagAttrOffsetStart(std::u16string_view name) const;
    int32_t GetCurrentTagAttrOffsetEnd(std::u16string_view name) const;
    int32_t GetCurrentTagAttrValueOffsetStart(std::u16string_view name) const;

    const std::vector<TAutoClosePosition>& GetAutoClosePositions() const { return FAutoClosePositions; }
    void ClearAutoCloseTagPosStack() { FAutoClosePositions.clear(); }

    bool FInTag = false;
    bool FInClosingTag = false;
    TRef<INibMLTag> FCurrentTag;
    TRef<INibMLTagAttribute> FCurrentAttribute;
    bool FInScript = false;
    bool FInStyle = false;
    bool FInTextArea = false;
    bool FInComment = false;       ///< or in a processing instruction
    std::string FSchemaFile;       ///< last quoted string of the doctype declaration
    std::string FXSLOutputSchema;  ///< what an XSL document writes
    TNibEditPos FCaret;
    /// The caret, its column moved to the start of the value in a quoted value.
    TNibEditPos FValuePos;
    int32_t FValueOffset = -1;  ///< the same place exactly; -1 outside a quoted value
    /// Where the attribute whose value the caret stands in begins, and the byte behind its
    /// "="; -1 without one. The symbol tells of its last occurrence in the document instead.
    int32_t FAttributeStart = -1, FAttributeValueStart = -1;
    bool FCaretInTagName = false;
    TMLParserState FState = mlpsNone;
    bool FIsXML = false;
    TRef<INibMLTag> FLastKnownTag;
    TRef<INibMLTag> FCaretParentTag;
    TParserContext FContexts = pcNone;
    bool FUnterminatedTag = false;

private:
    // What the scan keeps for its whole run.
    struct TScan {
        bool BeforeCaret = false;
        bool OpenedBeforeCaret = false;  // this "<" lay before the caret, and no tag holds it in its name yet
        bool PastCaret = false;          // the end of a tag was found behind the caret
        bool IsClosing = false;
        bool IsDirective = false;
        bool HasEnded = false;
        int32_t TagStart = 0;
        int32_t TextOffset = 0;
        INibMLTag* ScanTag = nullptr;      // held by ScanBucket, or else by MadeUpTag
        TTagBucket* ScanBucket = nullptr;  // of ScanTag, if the schema knows it
        TRef<INibMLTag> MadeUpTag;
        bool HasName = false;       // the tag being scanned has a name
        bool IsDocType = false;     // and that is DOCTYPE
        bool HasOutermost = false;  // the document's first opening tag was met
        bool IsOutermost = false;   // it is the one being scanned, and what it binds counts
        bool PendingScript = false, PendingStyle = false, PendingTextArea = false;
    };
    struct TAttributeScan {
        int32_t Start = 0;
        TRef<INibMLTagAttribute> Symbol;
        bool NameEndBeforeCaret = false;
        bool Quoted = false;
        bool HasBlankBefore = false;  // white space between "=" and the value
        const char* ValueStart = nullptr;
        int32_t ValueStartOffset = 0;
    };

    // Parse
    void Reset(TNibEditPos caret, TRef<INibMLTag> startTag);
    void FinishParse(const TRef<INibMLTag>& startTag);
    void InsertFixups();
    void ProposeClosingTags();
    void FinishValuePos();

    // Scan
    void ParseMLDocument();
    void ScanByte();
    bool IsPlainText() const;
    void SkipPlainText();
    void ScanEndOfBlock();
    void ScanWhiteSpace();
    void ScanLetter();
    void ScanQuote();
    void ScanSlash();
    void ScanPercent();
    void ScanTagEnd(const char* remembered);
    void EndTagBeforeCaret(bool endsEmpty, int32_t rememberedOffset);
    void HandlePendingContent();
    void ScanTagStart();
    bool ScanRegion();
    bool ScanServerRegion();
    void ScanTagName();
    void BeginDocType(std::string_view name, bool nameBeforeCaret);
    bool FindScanTag(const TNameKey& key, std::string_view name);
    bool FindDirective(std::string_view name);
    void MakeUpTag(TRef<INibMLTag> tag);
    void IgnoreNamelessTag();
    void NoteOutermost(std::string_view name);
    void OpenScanTag();
    void NotePendingContent(const TNameKey& key);
    void SkipWhiteSpace();
    std::string_view ReadName();

    // Attributes
    void ScanAttribute();
    void BeginAttribute(TAttributeScan& attribute);
    bool ScanAttributeValue(TAttributeScan& attribute, std::string& value);
    void NoteValuePos(const TAttributeScan& attribute);
    bool ReadAttributeValue(TAttributeScan& attribute, std::string& value);
    void EndAttribute(TAttributeScan& attribute, std::string_view value);
    bool IsBooleanAttribute(INibMLTagAttribute& attribute) const;
    void GetTagAttrValue(bool quoted, std::string& value);
    void AddTagAttr(TRef<INibMLTagAttribute> attribute, std::string_view value, char quoteOpen,
                    char quoteClose);
    TRef<INibMLTagAttribute> NewUnknownAttr(std::string_view name) const;
    TRef<INibMLTagAttribute> FindAttribute(std::string_view name) const;

    // Regions
    void EnterRegion(TParserContexts region);
    void LeaveRegion(TParserContexts region);
    void NoteComment(TParserContexts region, bool isInside);
    bool NextRegionBlock(std::string* text, const char*& textStart);
    template <class TNode>
    void ReportRegion(TTagType type, std::string& text, const char* textStart, size_t endMark);
    bool SkipTo(std::string_view stops, std::string* text, const char*& textStart);
    void HandleHTMLComment();
    void HandleProcessingInstruction();
    void HandleServerSideScript();
    void HandleASPComment();
    void HandleString();
    void HandleRawContent(TParserContexts region, std::string_view closingTag, bool& flag);

    // Stacks
    void PushTag(int32_t nameOffset);
    void PopTag(bool beforeCaret) { PopTag(FScan.ScanBucket, FTagName, beforeCaret); }
    void PopTag(TTagBucket* closing, std::string_view name, bool beforeCaret);
    void SetTagOffsetStart(INibMLTag* tag, int32_t offset, bool isClosing, bool beforeCaret);
    void SetTagOffsetEnd(INibMLTag* tag, int32_t offset, bool closes, bool track);
    TRef<INibMLTag> NewUnknownElement(std::string_view name);
    void PushAutoCloseTagPos();

    // Observers
    bool IsObserved() const { return !FCallbacks.empty(); }
    void Callback(INibMLMarkupPos* element, TTagType type, int32_t offsetStart, int32_t offsetEnd) {
        if (IsObserved()) Tell(element, type, offsetStart, offsetEnd);
    }
    void Tell(INibMLMarkupPos* element, TTagType type, int32_t offsetStart, int32_t offsetEnd);
    void ReportText(int32_t offsetEnd);
    void CollectText();
    void StartText(int32_t offset);

    // The window
    bool IsBeforeCaret(const char* p) const { return FWindow.IsBeforeCaret(p); }
    int32_t Offset() const { return FWindow.OffsetOf(FPosition); }
    bool IsAtEnd() const { return FPosition == FWindow.GetEnd(); }
    bool NextBlock();
    void NeedAhead(int32_t count);
    void ResolveLines(const char* upTo);

    void PopContextPos() {
        if (!FContextPos.empty()) FContextPos.pop_back();
    }

    TTagStacks FStacks;
    std::vector<TRef<INibMLElementCallback>> FCallbacks;
    TRef<IMLBufferProducer> FProducer;
    TTagAttributeList* FCurrentTagAttrs = nullptr;
    bool FInDocType = false;
    bool FInXSLTemplate = false;
    char FQuoteOpen = 0;
    char FQuoteClose = 0;
    std::vector<TAutoClosePosition> FAutoClosePositions;  // the last place of the document at the back
    TMLSymbolManager& FSymbolManager;
    bool FStop = false;
    TDocumentNamespaces FNamespaces;  // of a free XML document
    int32_t FDocTypeMark = 0;
    int32_t FCurrentCol = -1;
    int32_t FCurrentColOffset = -1;  // place that FCurrentCol is to tell of, once lines are counted
    std::string FText;               // UTF-8, collected for observers since the last tag
    const char* FTextStart = nullptr;
    std::vector<int32_t> FContextPos;
    std::string FTagName;  // of a tag that the schema does not know
    std::string FAttrName;

    TDocumentWindow FWindow;
    const char* FPosition = nullptr;
    TScan FScan;
    std::string FValue;  // of the attribute being read
    TLineCounter FLines;
    const char* FLinesAt = nullptr;  // how far lines are counted
    size_t FResolvedPositions = 0;   // of FAutoClosePositions
    int32_t FValueLineStart = -1;
};

/// A snapshot of the tags open at the caret, innermost first.
struct ITagStackIterator : IRefCounted {
    static constexpr TGuid Id = Guid("def5fb1c-21b1-4c94-8688-f3c4a3233d6e");
    using Parent = IRefCounted;
    virtual bool HasNext() = 0;
    /// Null behind the last.
    virtual TRef<INibMLTag> Next() = 0;
};
CARETWELL_API TRef<ITagStackIterator> GetTagStackIterator(TMLSymbolManager& manager);

}  // namespace caretwell
