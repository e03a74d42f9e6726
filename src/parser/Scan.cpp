// The scan of text and tags. The switch dispatches on a byte; a routine reads one thing.
#include <cstring>

#include "parser/ByteClasses.h"
#include "parser/MLParser.h"
#include "tagmodel/DocumentNodes.h"

namespace caretwell {
namespace {

constexpr std::string_view DocTypeName = "DOCTYPE";
constexpr uint32_t DocTypeHash = Hash(DocTypeName);
constexpr std::string_view XSLTemplateName = "xsl:template";
constexpr uint32_t XSLTemplateHash = Hash(XSLTemplateName);

// The longest mark that the scan looks for from one place, "</textarea>".
constexpr int32_t LongestMark = 12;

}  // namespace

void TMLParser::ParseMLDocument() {
    FLinesAt = FTextStart = FPosition;
    while (!FStop && !FScan.HasEnded) {
        if (IsPlainText()) SkipPlainText();
        FScan.BeforeCaret = IsBeforeCaret(FPosition);
        if (IsAtEnd()) ScanEndOfBlock();
        else ScanByte();
    }
    ResolveLines(FWindow.GetEnd());
}

void TMLParser::ScanByte() {
    switch (ClassOf(*FPosition)) {
        case bcWhite: return ScanWhiteSpace();
        case bcQuote: return ScanQuote();
        case bcLess: return ScanTagStart();
        case bcGreater: return ScanTagEnd(FPosition);
        case bcPercent: return ScanPercent();
        case bcSlash: return ScanSlash();
        case bcLetter: return ScanLetter();
        case bcOther: ++FPosition;
    }
}

// In text nothing but an angle bracket can change anything. Behind the tag that holds
// the caret FInTag goes on telling where the caret stands; the text there is text.
bool TMLParser::IsPlainText() const { return !FInDocType && !FInXSLTemplate && (!FInTag || FScan.PastCaret); }

void TMLParser::SkipPlainText() {
    const char* from = FPosition;
    FPosition = FindAngle(from, FWindow.GetEnd());
    // Only with FInTag does "/>" end a tag of its own.
    if (FInTag && FPosition > from && FPosition[-1] == '/' && *FPosition != '<') --FPosition;
}

void TMLParser::ScanEndOfBlock() {
    bool beforeCaret = FScan.BeforeCaret;
    if (beforeCaret) CollectText();
    if (NextBlock()) return;
    if (beforeCaret) ReportText(Offset());
    FScan.HasEnded = true;
}

// A caret in white space, or behind an "=" without a value, is not in an attribute.
void TMLParser::ScanWhiteSpace() {
    if (FScan.BeforeCaret) FCurrentAttribute = nullptr;
    const char* end = FWindow.GetEnd();
    if (IsLineBreak(*FPosition)) {
        FPosition = SkipLineBreak(FPosition, end);
        return;
    }
    ++FPosition;
    if (IsBeforeCaret(FPosition)) FCurrentAttribute = nullptr;
    while (FPosition < end && IsBlank(*FPosition)) ++FPosition;
    if (IsBeforeCaret(FPosition)) FCurrentAttribute = nullptr;
}

void TMLParser::ScanLetter() {
    bool isAttribute = !FScan.PastCaret && (FInTag || FInXSLTemplate || FInDocType);
    if (isAttribute) return ScanAttribute();
    while (FPosition < FWindow.GetEnd() && IsLetter(*FPosition)) ++FPosition;
}

// Behind the tag that holds the caret an apostrophe is one: "it's" begins no string
// that would hide the tags up to the next.
void TMLParser::ScanQuote() {
    bool isString = (FInTag && !FScan.PastCaret) || FInDocType || FInXSLTemplate;
    if (isString) HandleString();
    else ++FPosition;
    if (IsBeforeCaret(FPosition)) FCurrentAttribute = nullptr;
}

void TMLParser::ScanSlash() {
    NeedAhead(2);
    ++FPosition;
    if (!FInTag || *FPosition != '>') return;
    bool beforeCaret = FScan.BeforeCaret = IsBeforeCaret(FPosition);
    ++FPosition;
    if (!FContexts.Has(pcElement)) FUnterminatedTag = true;
    FContexts.Remove(pcElement);
    PopContextPos();
    if (beforeCaret && !FTagName.empty())
        Callback(FScan.ScanTag.Get(), ttSingleLine, FScan.TagStart, Offset());
    bool isBehindBeforeCaret = IsBeforeCaret(FPosition);
    if (isBehindBeforeCaret && FCurrentTagAttrs) FCurrentTagAttrs->Clear();
    if (!FScan.PastCaret) {
        SetTagOffsetEnd(FCurrentTag.Get(), Offset(), true, isBehindBeforeCaret);
        if (!isBehindBeforeCaret) FScan.PastCaret = true;
    }
    if (FCurrentTag) {
        if (SameText(XSLTemplateName, FCurrentTag->GetName())) FInXSLTemplate = false;
        PopTag(FTagName, beforeCaret);
    }
    if (!beforeCaret) return;
    FTagName.clear();
    FInTag = false;
    FCurrentAttribute = nullptr;
    StartText(Offset());
}

// "%>" ends a directive.
void TMLParser::ScanPercent() {
    NeedAhead(2);
    const char* percent = FPosition++;
    if (FScan.IsDirective && FInTag && *FPosition == '>') ScanTagEnd(percent);
}

void TMLParser::ScanTagEnd(const char* remembered) {
    if (!FScan.BeforeCaret && SameText(std::string_view(FTagName), DocTypeName)) ++FDocTypeMark;
    FScan.BeforeCaret = IsBeforeCaret(FPosition);
    int32_t rememberedOffset = FWindow.OffsetOf(remembered);
    ++FPosition;
    if (!FTagName.empty() && !FContexts.Has(pcElement)) FUnterminatedTag = true;
    FContexts.Remove(pcElement);
    PopContextPos();
    if (!FTagName.empty() && FScan.BeforeCaret) {
        TTagType type = FScan.IsClosing     ? ttClose
                        : FInDocType        ? ttDocType
                        : FScan.IsDirective ? ttDirective
                                            : ttOpen;
        if (type == ttDocType) FScan.ScanTag = MakeRef<TDocTypeTag>(ToUtf16(FTagName), &FSymbolManager, -1);
        Callback(FScan.ScanTag.Get(), type, FScan.TagStart, Offset());
    }
    FInDocType = false;
    auto isEmptyTag = [this] {
        const auto& tag = FScan.ScanTag;
        return tag && FInTag && !tag->GetRequiresClosingTag() && tag->GetEmpty();
    };
    if (FInTag && !FScan.PastCaret) {
        bool isBehindBeforeCaret = IsBeforeCaret(FPosition);
        SetTagOffsetEnd(FCurrentTag.Get(), rememberedOffset, isEmptyTag(), isBehindBeforeCaret);
        if (!isBehindBeforeCaret) FScan.PastCaret = true;
    }
    if (FScan.IsClosing || FScan.IsDirective) PopTag(FTagName, FScan.BeforeCaret);
    if (FScan.BeforeCaret) EndTagBeforeCaret(isEmptyTag(), rememberedOffset);
    if (!FScan.IsClosing) HandlePendingContent();
}

void TMLParser::EndTagBeforeCaret(bool endsEmpty, int32_t rememberedOffset) {
    if (endsEmpty) {
        if (FIsXML) PushAutoCloseTagPos();
        else if (!FScan.IsClosing) PopTag(FTagName, true);
    }
    if (!FTagName.empty()) StartText(rememberedOffset - 1);
    FTagName.clear();
    FInClosingTag = FInTag = FInScript = FInTextArea = false;
    FCurrentAttribute = nullptr;
}

void TMLParser::HandlePendingContent() {
    if (FScan.PendingScript) {
        FTextStart = FPosition;
        HandleRawContent(pcScript, "</SCRIPT>", FInScript);
        FScan.PendingScript = false;
    } else if (FScan.PendingStyle) {
        FTextStart = FPosition;
        HandleRawContent(pcStyle, "</style>", FInStyle);
        FScan.PendingStyle = false;
    } else if (FScan.PendingTextArea) {
        FTextStart = FPosition;
        HandleRawContent(pcNone, "</TEXTAREA>", FInTextArea);
        FScan.PendingTextArea = false;
    }
}

void TMLParser::ScanTagStart() {
    NeedAhead(LongestMark);
    FScan.TagStart = FCurrentColOffset = Offset();
    FScan.OpenedBeforeCaret = FScan.BeforeCaret && !FCaretInTagName;
    FScan.IsDirective = false;
    if (FScan.BeforeCaret && IsObserved()) {
        CollectText();
        if (!FText.empty()) ReportText(FScan.TagStart - 1);
    }
    ++FPosition;
    FTextStart = FPosition;
    FScan.BeforeCaret = IsBeforeCaret(FPosition);
    if (FScan.BeforeCaret) FCurrentAttribute = nullptr;
    FScan.IsClosing = *FPosition == '/';
    if (FScan.BeforeCaret) FInClosingTag = FScan.IsClosing;
    if (FScan.IsClosing) ++FPosition;
    if (ScanRegion()) return;
    if (FContexts.Has(pcElement)) FUnterminatedTag = true;
    FContexts.Add(pcElement);
    FContextPos.push_back(Offset());
    ScanTagName();
}

/// Tells an embedded region from a tag. True if it was one and is done with.
bool TMLParser::ScanRegion() {
    switch (*FPosition) {
        case '!':
            ++FPosition;
            if (*FPosition != '-') return false;
            if (*++FPosition != '-') return false;
            ++FPosition;
            HandleHTMLComment();
            StartText(Offset());
            return true;
        case '%': return ScanServerRegion();
        case '?':
            ++FPosition;
            for (char c : {'x', 'm', 'l'}) {
                if (*FPosition != c) break;
                ++FPosition;
                if (c == 'l' && (IsBlank(*FPosition) || IsLineBreak(*FPosition))) FIsXML = true;
            }
            HandleProcessingInstruction();
            StartText(Offset());
            return true;
        default: return false;
    }
}

bool TMLParser::ScanServerRegion() {
    if (IsBeforeCaret(FPosition)) FInScript = true;
    ++FPosition;
    if (*FPosition == '@') {
        FScan.IsDirective = true;
        ++FPosition;
        SkipWhiteSpace();
        return false;
    }
    if (*FPosition == '-') {
        if (*++FPosition != '-') return true;
        ++FPosition;
        HandleASPComment();
        StartText(Offset());
        if (IsBeforeCaret(FPosition)) FInScript = false;
        return true;
    }
    HandleServerSideScript();
    if (IsBeforeCaret(FPosition)) {
        StartText(Offset());
        FInScript = false;
    }
    return true;
}

/// Reads name characters at the position into name. A multi-byte character counts as a
/// whole, as far as its tail is there: a broken one does not swallow what follows.
const char* TMLParser::ReadName(std::string& name) {
    auto scan = [this] {
        const char* p = FPosition;
        const char* end = FWindow.GetEnd();
        while (p < end && NameChars.Contains(static_cast<uint8_t>(*p))) {
            int32_t length = UTF8CharLength(static_cast<uint8_t>(*p++));
            while (--length > 0 && p < end && (static_cast<uint8_t>(*p) & 0xC0) == 0x80) ++p;
        }
        return p;
    };
    const char* behind = scan();
    if (behind == FWindow.GetEnd()) {
        NeedAhead(static_cast<int32_t>(behind - FPosition) + 1);
        behind = scan();
    }
    name.assign(FPosition, behind);
    return behind;
}

void TMLParser::ScanTagName() {
    bool nameBeforeCaret = IsBeforeCaret(FPosition);
    int32_t nameOffset = Offset();
    FPosition = ReadName(FTagName);
    uint32_t hash = Hash(std::string_view(FTagName));
    if (FScan.IsDirective) FTagName.insert(0, "@ ");
    FScan.BeforeCaret = IsBeforeCaret(FPosition);
    if (!FScan.BeforeCaret && FScan.OpenedBeforeCaret) FCaretInTagName = true;
    if (hash == DocTypeHash && SameText(std::string_view(FTagName), DocTypeName)) {
        BeginDocType(nameBeforeCaret);
        return;
    }
    if (!FindScanTag()) return;
    if (hash == XSLTemplateHash && SameText(std::string_view(FTagName), XSLTemplateName))
        FInXSLTemplate = !FScan.IsClosing;
    if (!FScan.ScanTag && FTagName.empty()) return IgnoreNamelessTag();
    if (!FScan.ScanTag) FScan.ScanTag = NewUnknownElement(FTagName);
    if (FScan.BeforeCaret || FScan.OpenedBeforeCaret) FInTag = true;
    if (!FScan.IsClosing) {
        if ((FScan.BeforeCaret && FInTag) || FScan.OpenedBeforeCaret) FCurrentTag = FScan.ScanTag;
        PushTag(FScan.ScanTag, nameOffset);
    }
    if (!FScan.PastCaret || FScan.OpenedBeforeCaret) OpenScanTag();
    if (!FScan.IsClosing && FSymbolManager.GetKibitzMode() == kmHTML) NotePendingContent();
}

// A doctype declaration has no tag of its own until its ">", and nothing is pushed.
void TMLParser::BeginDocType(bool nameBeforeCaret) {
    FInDocType = true;
    if (nameBeforeCaret) ++FDocTypeMark;
}

/// Looks the name up. False if it was a directive that the schema does not have, which
/// is read like a server script.
bool TMLParser::FindScanTag() {
    std::string_view name = FTagName;
    FScan.ScanBucket = FSymbolManager.FindBucket(name, Hash(name));
    FScan.ScanTag = FScan.ScanBucket ? FScan.ScanBucket->Tag : nullptr;
    if (!FScan.IsDirective) return true;
    if (!FScan.ScanTag) {
        HandleServerSideScript();
        StartText(Offset());
    }
    if (IsBeforeCaret(FPosition)) FInScript = false;
    return static_cast<bool>(FScan.ScanTag);
}

// This "<" begins no tag.
void TMLParser::IgnoreNamelessTag() {
    if (FScan.BeforeCaret) {
        FInTag = false;
        FCurrentAttribute = nullptr;
        StartText(Offset());
    }
    FInClosingTag = FInScript = FInTextArea = false;
    FContexts.Remove(pcElement);
    PopContextPos();
}

void TMLParser::OpenScanTag() {
    SetTagOffsetStart(FScan.ScanTag.Get(), FScan.TagStart, FScan.IsClosing, FScan.BeforeCaret);
    SkipWhiteSpace();
    bool track = IsBeforeCaret(FPosition) || (FScan.OpenedBeforeCaret && !FScan.IsClosing);
    SetTagOffsetEnd(FScan.ScanTag.Get(), Offset(), FScan.IsClosing, track);
}

void TMLParser::NotePendingContent() {
    std::string_view name = FTagName;
    if (SameText(name, std::string_view("TEXTAREA"))) FScan.PendingTextArea = true;
    else if (SameText(name, std::string_view("SCRIPT"))) FScan.PendingScript = true;
    else if (SameText(name, std::string_view("STYLE"))) FScan.PendingStyle = true;
}

void TMLParser::SkipWhiteSpace() {
    for (;;) {
        const char* end = FWindow.GetEnd();
        while (FPosition < end && (IsBlank(*FPosition) || IsLineBreak(*FPosition))) ++FPosition;
        if (FPosition < end) return;
        if (IsBeforeCaret(FPosition)) CollectText();
        if (!NextBlock()) return;
    }
}

}  // namespace caretwell
