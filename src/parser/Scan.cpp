// The scan of text and tags. The switch dispatches on a byte; a routine reads one thing.

#include "parser/ByteClasses.h"
#include "parser/MLParser.h"
#include "tagmodel/DocumentNodes.h"

namespace caretwell {
namespace {

constexpr std::string_view DocTypeName = "DOCTYPE";
constexpr std::string_view XSLTemplateName = "xsl:template";
const TNameKey DocTypeKey = MakeNameKey(DocTypeName);
const TNameKey XSLTemplateKey = MakeNameKey(XSLTemplateName);
const TNameKey TextAreaKey = MakeNameKey("TEXTAREA");
const TNameKey ScriptKey = MakeNameKey("SCRIPT");
const TNameKey StyleKey = MakeNameKey("STYLE");

/// Place behind the name characters from p on.
const char* SkipName(const char* p, const char* end) {
    while (p < end && IsNameByte(*p)) {
        if (static_cast<uint8_t>(*p) < 0x80) {
            ++p;
            continue;
        }
        int32_t length = UTF8CharLength(static_cast<uint8_t>(*p++));
        while (--length > 0 && p < end && (static_cast<uint8_t>(*p) & 0xC0) == 0x80) ++p;
    }
    return p;
}

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
    if (beforeCaret && FScan.HasName) Callback(FScan.ScanTag, ttSingleLine, FScan.TagStart, Offset());
    bool isBehindBeforeCaret = IsBeforeCaret(FPosition);
    if (isBehindBeforeCaret && FCurrentTagAttrs) FCurrentTagAttrs->Clear();
    if (!FScan.PastCaret) {
        SetTagOffsetEnd(FCurrentTag.Get(), Offset(), true, isBehindBeforeCaret);
        if (!isBehindBeforeCaret) FScan.PastCaret = true;
    }
    if (FCurrentTag) {
        if (SameText(XSLTemplateName, FCurrentTag->GetName())) FInXSLTemplate = false;
        PopTag(beforeCaret);
    }
    if (!beforeCaret) return;
    FScan.HasName = false;
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
    if (!FScan.BeforeCaret && FScan.IsDocType) ++FDocTypeMark;
    FScan.BeforeCaret = IsBeforeCaret(FPosition);
    int32_t rememberedOffset = FWindow.OffsetOf(remembered);
    ++FPosition;
    if (FScan.HasName && !FContexts.Has(pcElement)) FUnterminatedTag = true;
    FContexts.Remove(pcElement);
    PopContextPos();
    if (FScan.HasName && FScan.BeforeCaret) {
        TTagType type = FScan.IsClosing     ? ttClose
                        : FInDocType        ? ttDocType
                        : FScan.IsDirective ? ttDirective
                                            : ttOpen;
        if (type == ttDocType) MakeUpTag(MakeRef<TDocTypeTag>(ToUtf16(FTagName), &FSymbolManager, -1));
        Callback(FScan.ScanTag, type, FScan.TagStart, Offset());
    }
    FInDocType = false;
    auto isEmptyTag = [this] {
        const INibMLTag* tag = FScan.ScanTag;
        return tag && FInTag && !tag->GetRequiresClosingTag() && tag->GetEmpty();
    };
    if (FInTag && !FScan.PastCaret) {
        bool isBehindBeforeCaret = IsBeforeCaret(FPosition);
        SetTagOffsetEnd(FCurrentTag.Get(), rememberedOffset, isEmptyTag(), isBehindBeforeCaret);
        if (!isBehindBeforeCaret) FScan.PastCaret = true;
    }
    if (FScan.IsClosing || FScan.IsDirective) PopTag(FScan.BeforeCaret);
    if (FScan.BeforeCaret) EndTagBeforeCaret(isEmptyTag(), rememberedOffset);
    if (!FScan.IsClosing) HandlePendingContent();
}

void TMLParser::EndTagBeforeCaret(bool endsEmpty, int32_t rememberedOffset) {
    if (endsEmpty) {
        if (FIsXML) PushAutoCloseTagPos();
        else if (!FScan.IsClosing) PopTag(true);
    }
    if (FScan.HasName) StartText(rememberedOffset - 1);
    FScan.HasName = FScan.IsDocType = false;
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
    FScan.IsDirective = FScan.IsOutermost = false;
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

/// Reads the name at the position, which moves behind it. The name is a view of the
/// window, good until the window moves on. A multi-byte character counts as a whole, as
/// far as its tail is there: a broken one does not swallow what follows.
std::string_view TMLParser::ReadName() {
    const char* behind = SkipName(FPosition, FWindow.GetEnd());
    if (behind == FWindow.GetEnd()) {
        NeedAhead(static_cast<int32_t>(behind - FPosition) + 1);
        behind = SkipName(FPosition, FWindow.GetEnd());
    }
    std::string_view name(FPosition, static_cast<size_t>(behind - FPosition));
    FPosition = behind;
    return name;
}

void TMLParser::ScanTagName() {
    bool nameBeforeCaret = IsBeforeCaret(FPosition);
    std::string_view name = ReadName();
    int32_t nameOffset = FWindow.OffsetOf(name.data());
    bool hasHeadAhead = FWindow.GetEnd() - name.data() >= 8;
    TNameKey key = MakeNameKey(name.data(), name.size(), hasHeadAhead);
    FScan.BeforeCaret = IsBeforeCaret(FPosition);
    FScan.HasName = !name.empty() || FScan.IsDirective;
    FScan.IsDocType = !FScan.IsDirective && key == DocTypeKey;
    if (!FScan.BeforeCaret && FScan.OpenedBeforeCaret) FCaretInTagName = true;
    if (FScan.IsDocType) return BeginDocType(name, nameBeforeCaret);
    if (!FindScanTag(key, name)) return;
    if (key == XSLTemplateKey && SameText(name, XSLTemplateName)) FInXSLTemplate = !FScan.IsClosing;
    if (!FScan.ScanTag && !FScan.HasName) return IgnoreNamelessTag();
    if (!FScan.ScanTag) MakeUpTag(NewUnknownElement(name));
    if (FScan.BeforeCaret || FScan.OpenedBeforeCaret) FInTag = true;
    if (!FScan.IsClosing) {
        if ((FScan.BeforeCaret && FInTag) || FScan.OpenedBeforeCaret) FCurrentTag = FScan.ScanTag;
        PushTag(nameOffset);
        if (FSymbolManager.GetKibitzMode() == kmHTML) NotePendingContent(key);
        else if (!FScan.HasOutermost) NoteOutermost(name);
    }
    if (!FScan.PastCaret || FScan.OpenedBeforeCaret) OpenScanTag();
}

// A doctype declaration has no tag of its own until its ">", and nothing is pushed.
void TMLParser::BeginDocType(std::string_view name, bool nameBeforeCaret) {
    FScan.ScanBucket = nullptr;
    FTagName = name;
    FInDocType = true;
    if (nameBeforeCaret) ++FDocTypeMark;
}

void TMLParser::MakeUpTag(TRef<INibMLTag> tag) {
    FScan.MadeUpTag = std::move(tag);
    FScan.ScanTag = FScan.MadeUpTag.Get();
}

/// Looks the name up. False if it was a directive that the schema does not have, which
/// is read like a server script.
bool TMLParser::FindScanTag(const TNameKey& key, std::string_view name) {
    if (FScan.IsDirective) return FindDirective(name);
    FScan.ScanBucket = FSymbolManager.FindBucket(key, name);
    FScan.ScanTag = FScan.ScanBucket ? FScan.ScanBucket->Tag.Get() : nullptr;
    if (!FScan.ScanBucket) FTagName = name;
    return true;
}

bool TMLParser::FindDirective(std::string_view name) {
    FTagName = "@ ";
    FTagName += name;
    FScan.ScanBucket = FSymbolManager.FindBucket(MakeNameKey(FTagName), FTagName);
    FScan.ScanTag = FScan.ScanBucket ? FScan.ScanBucket->Tag.Get() : nullptr;
    if (!FScan.ScanTag) {
        HandleServerSideScript();
        StartText(Offset());
    }
    if (IsBeforeCaret(FPosition)) FInScript = false;
    return FScan.ScanTag != nullptr;
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

// The prefixes of a document hold from its first tag on, for the tag's own name too. With
// the caret in front of it the document has bound nothing yet.
void TMLParser::NoteOutermost(std::string_view name) {
    FScan.HasOutermost = true;
    FScan.IsOutermost = FScan.OpenedBeforeCaret && FSymbolManager.GetKibitzMode() == kmXML;
    if (FScan.IsOutermost) FNamespaces.SetElement(name);
}

void TMLParser::OpenScanTag() {
    SetTagOffsetStart(FScan.ScanTag, FScan.TagStart, FScan.IsClosing, FScan.BeforeCaret);
    SkipWhiteSpace();
    bool track = IsBeforeCaret(FPosition) || (FScan.OpenedBeforeCaret && !FScan.IsClosing);
    SetTagOffsetEnd(FScan.ScanTag, Offset(), FScan.IsClosing, track);
}

void TMLParser::NotePendingContent(const TNameKey& key) {
    if (key == TextAreaKey) FScan.PendingTextArea = true;
    else if (key == ScriptKey) FScan.PendingScript = true;
    else if (key == StyleKey) FScan.PendingStyle = true;
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
