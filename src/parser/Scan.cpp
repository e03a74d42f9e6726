// The scan of text and tags. The switch dispatches on a byte; a routine reads one thing.

#include "parser/ByteClasses.h"
#include "parser/ElementTable.h"
#include "parser/MLParser.h"
#include "parser/NameKey.h"
#include "parser/Regions.h"
#include "parser/TagLog.h"

namespace caretwell {
namespace {

constexpr std::string_view DocTypeName = "DOCTYPE";
const TNameKey DocTypeKey = MakeNameKey(DocTypeName);
const TNameKey TextAreaKey = MakeNameKey("TEXTAREA");
const TNameKey ScriptKey = MakeNameKey("SCRIPT");
const TNameKey StyleKey = MakeNameKey("STYLE");

/// Place after the name characters from p on.
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

void TMLParser::ScanDocument() {
    while (!FScan.HasStopped && !FScan.HasEnded) {
        if (IsPlainText()) SkipPlainText();
        FScan.BeforeCaret = IsBeforeCaret(FPosition);
        if (IsAtEnd()) ScanEndOfBlock();
        else ScanByte();
    }
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
        case bcOther: return ScanOther();
    }
}

// In text nothing but an angle bracket can change anything. After the tag that holds the
// caret FInTag goes on telling where the caret stands; the text there is text. Nor does the
// inside of a tag after the caret's matter, but for its end.
bool TMLParser::IsPlainText() const { return !InCaretTag() && !InDocType(); }

void TMLParser::SkipPlainText() {
    const char* from = FPosition;
    FPosition = FindAngle(from, FWindow.GetEnd());
    if (FScan.Tag.IsOpen && FPosition > from && FPosition[-1] == '/' && *FPosition == '>') --FPosition;
}

void TMLParser::ScanEndOfBlock() {
    bool beforeCaret = IsBeforeCaret(FPosition - 1);
    if (NextBlock()) return;
    if (beforeCaret && !FScan.Tag.IsOpen) ReportText(Offset());
    FScan.HasEnded = true;
}

// A caret in white space, or after an "=" without a value, is not in an attribute.
void TMLParser::ScanWhiteSpace() {
    if (FScan.BeforeCaret) FCurrentAttribute = nullptr;
    const char* end = FWindow.GetEnd();
    if (IsLineBreak(*FPosition)) {
        FScan.HasBreakAfterCaret |= !FScan.BeforeCaret;
        FPosition = SkipLineBreak(FPosition, end);
        return;
    }
    ++FPosition;
    if (IsBeforeCaret(FPosition)) FCurrentAttribute = nullptr;
    while (FPosition < end && IsBlank(*FPosition)) ++FPosition;
    if (IsBeforeCaret(FPosition)) FCurrentAttribute = nullptr;
}

void TMLParser::ScanLetter() {
    if (InCaretTag() || InDocType()) return ScanAttribute();
    while (FPosition < FWindow.GetEnd() && IsLetter(*FPosition)) ++FPosition;
}

// Only in a tag or a doctype does a quote begin a string: "it's" in text hides nothing.
void TMLParser::ScanQuote() {
    if (InCaretTag() || InDocType()) HandleString();
    else ++FPosition;
    if (IsBeforeCaret(FPosition)) FCurrentAttribute = nullptr;
}

void TMLParser::ScanOther() {
    if (*FPosition != '[' || !InDocType()) {
        ++FPosition;
        return;
    }
    int32_t start = Offset();
    ++FPosition;
    HandleRegion(InternalSubsetRegion, start, FScan.BeforeCaret);
}

/// True if the "/" at slash is the last byte of a value without quotes, <a href=x/>.
bool TMLParser::EndsUnquotedValue(const char* slash) const {
    for (const char* p = slash; p > FWindow.GetStart(); --p) {
        char before = p[-1];
        if (before == '=') return p < slash;
        if (IsBlank(before) || IsLineBreak(before) || ClassOf(before) == bcQuote || before == '<')
            return false;
    }
    return false;
}

// "/>" ends a tag without content.
void TMLParser::ScanSlash() {
    NeedAhead(2);
    const char* slash = FPosition++;
    TTagScan& tag = FScan.Tag;
    if (!tag.IsOpen || tag.Form == TTagForm::DocType || *FPosition != '>' || IsAtEnd()) return;
    // In the caret's tag values have been read as such, elsewhere their text was passed over.
    if (!InCaretTag() && EndsUnquotedValue(slash)) return;
    bool beforeCaret = FScan.BeforeCaret = IsBeforeCaret(FPosition);
    ++FPosition;
    if (!FContexts.Has(pcElement)) FUnterminatedTag = true;
    FContexts.Remove(pcElement);
    PopContextPos();
    if (beforeCaret) Callback(tag.Tag, ttSingleLine, tag.Start, Offset());
    if (FTagLog) FTagLog->AddEmpty(tag.Start, beforeCaret);
    if (InCaretTag()) {
        bool isEndBeforeCaret = IsBeforeCaret(FPosition);
        if (isEndBeforeCaret && FCurrentTagAttrs) FCurrentTagAttrs->Clear();
        SetTagOffsetEnd(FCurrentTag.Get(), Offset(), true, isEndBeforeCaret);
        if (!isEndBeforeCaret) FScan.PastCaret = true;
    }
    PopTag(beforeCaret);
    tag.IsOpen = false;
    if (!beforeCaret) return;
    FInTag = false;
    FCurrentAttribute = nullptr;
    StartText();
}

// "%>" ends a directive.
void TMLParser::ScanPercent() {
    NeedAhead(2);
    const char* percent = FPosition++;
    bool isDirective = FScan.Tag.IsOpen && FScan.Tag.Form == TTagForm::Directive;
    if (isDirective && FInTag && *FPosition == '>') ScanTagEnd(percent);
}

/// Tells observers of the tag that the ">" has ended; a doctype gets its tag here.
void TMLParser::TellTagEnd() {
    const TTagScan& tag = FScan.Tag;
    TTagType type = ttOpen;
    if (tag.IsClosing()) type = ttClose;
    else if (tag.Form == TTagForm::Directive) type = ttDirective;
    else if (tag.Form == TTagForm::DocType) type = ttDocType;
    if (type == ttDocType) MakeUpTag(FTable.NewDocType(FScan.TagName));
    Tell(tag.Tag, type, tag.Start, Offset());
}

bool TMLParser::IsEmptyTag() const {
    const INibMLTag* tag = FScan.Tag.Tag;
    return tag && FInTag && !tag->GetRequiresClosingTag() && tag->GetEmpty();
}

void TMLParser::ScanTagEnd(const char* remembered) {
    TTagScan& tag = FScan.Tag;
    bool beforeCaret = FScan.BeforeCaret = IsBeforeCaret(FPosition);
    int32_t rememberedOffset = FWindow.OffsetOf(remembered);
    ++FPosition;
    bool isEnd = tag.IsOpen;
    if (isEnd && !FContexts.Has(pcElement)) FUnterminatedTag = true;
    FContexts.Remove(pcElement);
    PopContextPos();
    if (isEnd && beforeCaret) {
        if (IsObserved()) TellTagEnd();
        if (tag.Form == TTagForm::DocType) FInDocType = false;
    }
    if (InCaretTag()) {
        bool isEndBeforeCaret = IsBeforeCaret(FPosition);
        SetTagOffsetEnd(FCurrentTag.Get(), rememberedOffset, IsEmptyTag(), isEndBeforeCaret);
        if (!isEndBeforeCaret) FScan.PastCaret = true;
    }
    // A ">" in text ends nothing.
    if (isEnd && (tag.IsClosing() || tag.Form == TTagForm::Directive)) PopTag(beforeCaret);
    tag.IsOpen = false;
    if (beforeCaret) EndTagBeforeCaret(isEnd && IsEmptyTag());
    if (beforeCaret && isEnd && IsObserved()) StartText();
    if (isEnd) ScanRawContent(std::exchange(tag.Content, TRawContent::None));
}

void TMLParser::EndTagBeforeCaret(bool endsEmpty) {
    if (endsEmpty && !FScan.Tag.IsClosing()) {
        if (FIsXML) PushAutoCloseTagPos();
        else PopTag(true);
    }
    FInClosingTag = FInTag = FInScript = FInTextArea = false;
    FCurrentAttribute = nullptr;
}

/// The tag at the caret ends where the next one begins, at offset. Words after the caret may
/// then be text that nobody has put after a ">" yet: <p ^ some text <b>.
void TMLParser::EndCaretTag(int32_t offset) {
    if (FCurrentTagAttrs) FCurrentTagAttrs->DropLoose();
    SetTagOffsetEnd(FCurrentTag.Get(), offset - 1, FInClosingTag, false);
    FScan.PastCaret = true;
}

void TMLParser::ScanTagStart() {
    NeedAhead(LongestMark);
    bool opened = FScan.BeforeCaret && !FCaretInTagName;
    int32_t start = Offset();
    FScan.ColumnOffset = start;
    // Inside a tag there is no text.
    if (IsObserved() && FScan.BeforeCaret && !FScan.Tag.IsOpen) ReportText(start);
    ++FPosition;
    bool isMarkBeforeCaret = FScan.BeforeCaret = IsBeforeCaret(FPosition);
    if (isMarkBeforeCaret) FCurrentAttribute = nullptr;
    if (ScanRegion(start)) return;
    TTagScan tag;
    tag.Start = start;
    tag.OpenedBeforeCaret = opened;
    tag.Form = ReadTagForm();
    if (isMarkBeforeCaret) FInClosingTag = tag.IsClosing();
    ScanTagName(tag);
}

/// Tells an embedded region from a tag. True if it was one and is done with.
bool TMLParser::ScanRegion(int32_t start) {
    std::string_view ahead(FPosition, static_cast<size_t>(FWindow.GetEnd() - FPosition));
    auto handle = [&](const TRegionRule& rule) {
        FPosition += rule.Begin.size();
        HandleRegion(rule, start, FScan.BeforeCaret);
        return true;
    };
    switch (*FPosition) {
        case '!':
        case '?':
            if (ahead.starts_with("?xml") && ahead.size() > 4 && ClassOf(ahead[4]) == bcWhite) FIsXML = true;
            for (const TRegionRule& rule : MarkedRegions)
                if (ahead.starts_with(rule.Begin)) return handle(rule);
            return false;
        case '%':
            if (ahead.starts_with("%@")) return false;
            return handle(ahead.starts_with("%--") ? ServerCommentRegion : ServerScriptRegion);
        default: return false;
    }
}

/// Reads what stands between "<" and the name.
TTagForm TMLParser::ReadTagForm() {
    switch (*FPosition) {
        case '/': ++FPosition; return TTagForm::Closing;
        case '!': ++FPosition; return TTagForm::DocType;
        case '%':
            FPosition += 2;
            SkipWhiteSpace();
            return TTagForm::Directive;
        default: return TTagForm::Opening;
    }
}

/// Reads the name at the position, which moves past it. The name is a view of the
/// window, good until the window moves on. A multi-byte character counts as a whole, as
/// far as its tail is there: a broken one does not swallow what follows.
std::string_view TMLParser::ReadName() {
    const char* end = SkipName(FPosition, FWindow.GetEnd());
    if (end == FWindow.GetEnd()) {
        NeedAhead(static_cast<int32_t>(end - FPosition) + 1);
        end = SkipName(FPosition, FWindow.GetEnd());
    }
    std::string_view name(FPosition, static_cast<size_t>(end - FPosition));
    FPosition = end;
    return name;
}

void TMLParser::ScanTagName(const TTagScan& tag) {
    bool nameBeforeCaret = IsBeforeCaret(FPosition);
    std::string_view name = ReadName();
    int32_t nameOffset = FWindow.OffsetOf(name.data());
    bool hasHeadAhead = FWindow.GetEnd() - name.data() >= 8;
    TNameKey key = MakeNameKey(name.data(), name.size(), hasHeadAhead);
    FScan.BeforeCaret = IsBeforeCaret(FPosition);
    FScan.Tag = tag;
    bool isTyped = !FScan.BeforeCaret && FScan.Tag.OpenedBeforeCaret;
    if (FScan.Tag.Form == TTagForm::DocType) return BeginDocType(key, name, nameBeforeCaret, isTyped);
    if (isTyped) FCaretInTagName = true;
    if (name.empty() && FScan.Tag.Form != TTagForm::Directive) return IgnoreNamelessTag();
    if (!FindScanTag(key, name)) return;
    BeginTag(nameOffset);
    bool isLogged = FTagLog && !isTyped && FScan.Tag.Form != TTagForm::Directive;
    if (isLogged) FTagLog->AddTag(key, name, FScan.Tag.IsClosing(), FScan.Tag.Start, FScan.BeforeCaret);
    if (!FScan.Tag.Tag) MakeUpTag(FTable.NewUnknown(name));
    if (FScan.BeforeCaret || isTyped) FInTag = true;
    if (!FScan.Tag.IsClosing()) {
        if (FScan.BeforeCaret || isTyped) FCurrentTag = FScan.Tag.Tag;
        PushTag(nameOffset);
        if (FScan.BeforeCaret && !FOutermostTag && FScan.Tag.Form == TTagForm::Opening)
            FOutermostTag = FScan.Tag.Tag;
        if (FTable.GetMode() == kmHTML) FScan.Tag.Content = RawContentOf(key);
        else if (!FScan.HasOutermost) NoteOutermost(name);
    }
    if (!FScan.PastCaret || isTyped) OpenScanTag();
}

/// A tag begins, and the one before it may not have ended.
void TMLParser::BeginTag(int32_t nameOffset) {
    if (InCaretTag() && !FScan.Tag.OpenedBeforeCaret) EndCaretTag(FScan.Tag.Start);
    if (FScan.BeforeCaret) FInDocType = false;
    if (FContexts.Has(pcElement)) FUnterminatedTag = true;
    FContexts.Add(pcElement);
    FContextPos.push_back(nameOffset);
    FScan.Tag.IsOpen = true;
}

// A doctype declaration has no tag of its own until its ">", and nothing is pushed. Other
// declarations mean nothing outside of an internal subset.
void TMLParser::BeginDocType(const TNameKey& key, std::string_view name, bool nameBeforeCaret, bool isTyped) {
    FInDocType = nameBeforeCaret || isTyped;
    if (key != DocTypeKey) {
        if (FScan.BeforeCaret) FInDocType = false;
        return IgnoreNamelessTag();
    }
    BeginTag(FWindow.OffsetOf(name.data()));
    FInDocType = nameBeforeCaret || isTyped;
    FScan.TagName = name;
}

void TMLParser::MakeUpTag(TRef<INibMLTag> tag) {
    FScan.MadeUpTag = std::move(tag);
    FScan.Tag.Tag = FScan.MadeUpTag.Get();
}

/// Looks the name up. False if it was a directive that the schema does not have, which
/// is read like a server script.
bool TMLParser::FindScanTag(const TNameKey& key, std::string_view name) {
    if (FScan.Tag.Form == TTagForm::Directive) return FindDirective(name);
    FScan.Tag.Bucket = FTable.FindBucket(key, name);
    if (FScan.Tag.Bucket) FScan.Tag.Tag = FScan.Tag.Bucket->Tag.Get();
    else FScan.TagName = name;
    return true;
}

// With the caret in the name of a directive, known or not, it is names that are asked for.
bool TMLParser::FindDirective(std::string_view name) {
    TTagScan& tag = FScan.Tag;
    FInDirective = FInDirective || (tag.OpenedBeforeCaret && !FScan.BeforeCaret);
    std::string& fullName = FScan.TagName;
    fullName = "@ ";
    fullName += name;
    tag.Bucket = FTable.FindBucket(MakeNameKey(fullName), fullName);
    tag.Tag = tag.Bucket ? tag.Bucket->Tag.Get() : nullptr;
    if (!tag.Tag) HandleRegion(ServerScriptRegion, tag.Start, FScan.BeforeCaret);
    return tag.Tag != nullptr;
}

// This "<" begins no tag.
void TMLParser::IgnoreNamelessTag() {
    FContexts.Remove(pcElement);
    if (!FScan.BeforeCaret) return;
    FInTag = FInClosingTag = FInScript = FInTextArea = false;
    FCurrentAttribute = nullptr;
    StartText();
}

// The prefixes of a document hold from its first tag on, for the tag's own name too. With
// the caret before it the document has bound nothing yet.
void TMLParser::NoteOutermost(std::string_view name) {
    FScan.HasOutermost = true;
    FScan.Tag.IsOutermost = FScan.Tag.OpenedBeforeCaret && FTable.GetMode() == kmXML;
    if (FScan.Tag.IsOutermost) FNamespaces.SetElement(name);
}

void TMLParser::OpenScanTag() {
    const TTagScan& tag = FScan.Tag;
    SetTagOffsetStart(tag.Tag, tag.Start, tag.IsClosing(), FScan.BeforeCaret);
    SkipWhiteSpace();
    bool track = IsBeforeCaret(FPosition) || (tag.OpenedBeforeCaret && !tag.IsClosing());
    SetTagOffsetEnd(tag.Tag, Offset(), tag.IsClosing(), track);
}

TRawContent TMLParser::RawContentOf(const TNameKey& key) {
    if (key == TextAreaKey) return TRawContent::TextArea;
    if (key == ScriptKey) return TRawContent::Script;
    return key == StyleKey ? TRawContent::Style : TRawContent::None;
}

void TMLParser::SkipWhiteSpace() {
    for (;;) {
        const char* end = FWindow.GetEnd();
        for (; FPosition < end && (IsBlank(*FPosition) || IsLineBreak(*FPosition)); ++FPosition)
            if (IsLineBreak(*FPosition) && !IsBeforeCaret(FPosition)) FScan.HasBreakAfterCaret = true;
        if (FPosition < end || !NextBlock()) return;
    }
}

}  // namespace caretwell
