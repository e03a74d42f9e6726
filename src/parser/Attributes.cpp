// Attributes as written on a tag: names, values, quotes, and whether the caret stands
// in a value.
//
//     <a href = "x^" class=y>    FCurrentAttribute is href, FValuePos at the x
#include <cstring>

#include "parser/ByteClasses.h"
#include "parser/MLParser.h"
#include "tagmodel/HTMLAttribute.h"

namespace caretwell {
namespace {

// Names are short: most lookups need no memory of their own.
class TWideName {
public:
    explicit TWideName(std::string_view bytes) {
        if (bytes.size() > sizeof(FBuffer) / sizeof(*FBuffer)) {
            Take(ToUtf16(bytes));
            return;
        }
        size_t i = 0;
        for (; i < bytes.size() && static_cast<uint8_t>(bytes[i]) < 0x80; ++i)
            FBuffer[i] = static_cast<char16_t>(bytes[i]);
        if (i == bytes.size()) FView = {FBuffer, i};
        else Take(ToUtf16(bytes));
    }
    std::u16string_view Get() const { return FView; }

private:
    void Take(std::u16string text) {
        FLong = std::move(text);
        FView = FLong;
    }
    char16_t FBuffer[64];
    std::u16string FLong;
    std::u16string_view FView;
};

}  // namespace

TRef<INibMLTagAttribute> TMLParser::NewUnknownAttr(std::string_view name) const {
    return MakeRef<TUnknownHTMLAttribute>(ToUtf16(name), -1);
}

TRef<INibMLTagAttribute> TMLParser::FindAttribute(std::string_view name) const {
    return FCurrentTag && !InDocType() ? FCurrentTag->FindAttribute(TWideName(name).Get()) : nullptr;
}

void TMLParser::AddTagAttr(const TAttributeScan& attribute, std::string_view value) {
    if (!FCurrentTagAttrs || InDocType()) return;
    // A megabyte of names in one tag is no tag: symbols made up for them would take a
    // hundred times the memory of the text.
    constexpr int32_t MostUnknown = 10000;
    bool isTooMany =
        FCurrentTagAttrs->GetCount() >= MostUnknown && Supports<INibMLUnknownTagAttribute>(attribute.Symbol);
    if (isTooMany) return;
    TTagAttributeValue& item = FCurrentTagAttrs->Add(attribute.Symbol, value);
    item.QuoteOpen = FScan.QuoteOpen;
    item.QuoteClose = FScan.QuoteClose;
    item.TouchesCaret = attribute.TouchesCaret;
    item.IsLoose = attribute.IsLoose;
}

// A boolean attribute written without a value means true.
bool TMLParser::IsBooleanAttribute(INibMLTagAttribute& attribute) const {
    return attribute.GetCount() == 2 && attribute.FindSymbol(u"true") >= 0 &&
           attribute.FindSymbol(u"false") >= 0;
}

void TMLParser::ScanAttribute() {
    TAttributeScan attribute;
    BeginAttribute(attribute);
    SkipWhiteSpace();
    std::string& value = FValue;
    value.clear();
    if (*FPosition == '=' && !IsAtEnd()) {
        if (!ScanAttributeValue(attribute, value)) return;
    } else {
        // After a bare name the next name is completed, and not a value that has no "=".
        if (attribute.NameEndBeforeCaret) FCurrentAttribute = nullptr;
        if (attribute.Symbol && IsBooleanAttribute(*attribute.Symbol)) value = "true";
        attribute.IsLoose = !FScan.BeforeCaret;
    }
    EndAttribute(attribute, value);
}

void TMLParser::BeginAttribute(TAttributeScan& attribute) {
    attribute.Start = Offset();
    FScan.QuoteOpen = FScan.QuoteClose = 0;
    if (FScan.BeforeCaret) {
        FCurrentAttribute = nullptr;
        FValueOffset = FAttributeStart = FAttributeValueStart = -1;
    }
    bool isByteBeforeNameBeforeCaret = IsBeforeCaret(FPosition - 1);
    std::string_view name = ReadName();
    attribute.NameEndBeforeCaret = IsBeforeCaret(FPosition);
    attribute.TouchesCaret = isByteBeforeNameBeforeCaret && !attribute.NameEndBeforeCaret;
    attribute.IsLoose = !FScan.BeforeCaret && FScan.HasBreakAfterCaret;
    if (FScan.Tag.IsClosing()) return;
    attribute.Symbol = FindAttribute(name);
    if (!attribute.Symbol) attribute.Symbol = NewUnknownAttr(name);
    // With the caret in the name itself, or directly after it, names are completed.
    if (isByteBeforeNameBeforeCaret && attribute.NameEndBeforeCaret) FCurrentAttribute = attribute.Symbol;
}

/// Reads from the "=" on. False if the attribute is dropped or the document has ended.
bool TMLParser::ScanAttributeValue(TAttributeScan& attribute, std::string& value) {
    ++FPosition;
    const char* afterEquals = FPosition;
    attribute.ValueStart = Offset();
    if (attribute.Symbol) attribute.Symbol->SetOffsetEnd(attribute.ValueStart);
    int32_t offset = Offset();
    SkipWhiteSpace();
    if (Offset() != offset) {
        // Blanks over the border of a block count as lines: who writes so many means no value.
        bool isBlank = FPosition - afterEquals == Offset() - offset &&
                       std::none_of(afterEquals, FPosition, [](char c) { return IsLineBreak(c); });
        attribute.Gap = isBlank ? TAttributeScan::TGap::Blanks : TAttributeScan::TGap::Lines;
    }
    if (attribute.Symbol) attribute.Symbol->SetAttributeValueStartOffset(attribute.ValueStart);
    NoteValuePos(attribute);
    char first = *FPosition;
    attribute.IsQuoted = first == '"' || first == '\'';
    FScan.QuoteOpen = attribute.IsQuoted ? first : '\0';
    FScan.QuoteClose = 0;
    bool hasValue = !IsAtEnd() && first != '<' && first != '>';
    if (hasValue) {
        NeedAhead(2);
        if (first == '/' && FPosition[1] == '>') return false;
        if (!ReadAttributeValue(attribute, value)) return false;
    }
    char next = *FPosition;
    bool isSlash = next == '/' && !IsBeforeCaret(FPosition);  // between "/" and ">" stands no value
    bool isTagEnding = IsAtEnd() ? !attribute.IsQuoted : isSlash || next == '<' || next == '>';
    // A caret directly after an unquoted value is still in it: the word may go on.
    bool isWordAtCaret = !attribute.IsQuoted && !value.empty() && !IsBeforeCaret(FPosition);
    if (IsBeforeCaret(FPosition - 1) && !isTagEnding && !isWordAtCaret) {
        FCurrentAttribute = nullptr;
        FValueOffset = -1;
    }
    if (next == '<' && !FScan.PastCaret && IsBeforeCaret(FPosition)) {
        // A new tag begins without the last one having ended.
        SetTagOffsetEnd(FCurrentTag.Get(), Offset() - 1, FScan.Tag.IsClosing(), true);
    }
    return true;
}

// An unquoted value leaves the place to the caret.
void TMLParser::NoteValuePos(const TAttributeScan& attribute) {
    if (!attribute.NameEndBeforeCaret) return;
    FAttributeStart = attribute.Start;
    FAttributeValueStart = attribute.ValueStart;
    bool isQuote = *FPosition == '"' || *FPosition == '\'';
    if (FValueOffset >= 0 || !isQuote) return;
    FValueOffset = Offset() + 1;
    FScan.ValueLineStart = -1;
}

/// A word that blanks keep from its "=" is the value if the caret has gone past its beginning and it
/// does not have a "=" of its own: <p align = left>. A word that the caret stands before is the next
/// name, since the value may be still to come.
bool TMLParser::IsWordAValue(const TAttributeScan& attribute) {
    if (attribute.Gap != TAttributeScan::TGap::Blanks || !IsBeforeCaret(FPosition)) return false;
    NeedAhead(TDocumentWindow::MaxKept);
    const char* end = FWindow.GetEnd();
    const char* p = FPosition;
    while (p < end && !IsBlank(*p) && !IsLineBreak(*p) && *p != '=' && *p != '>' && *p != '<') ++p;
    while (p < end && IsBlank(*p)) ++p;
    return p == end || *p != '=';
}

/// An unquoted word after white space is mostly no value: it is read as the next name.
/// False if the document ended inside the value.
bool TMLParser::ReadAttributeValue(TAttributeScan& attribute, std::string& value) {
    INibMLTagAttribute* symbol = attribute.Symbol.Get();
    bool isRead =
        attribute.IsQuoted || attribute.Gap == TAttributeScan::TGap::None || IsWordAValue(attribute);
    if (isRead) GetTagAttrValue(attribute.IsQuoted, value);
    if (symbol) symbol->SetOffsetEnd(isRead ? Offset() : attribute.ValueStart);
    if (!IsAtEnd() || NextBlock()) return true;
    if (symbol) {
        symbol->SetOffsetStart(attribute.Start);
        symbol->SetOffsetEnd(Offset() - 1);
        AddTagAttr(attribute, {});
    }
    FScan.HasEnded = true;
    return false;
}

void TMLParser::EndAttribute(TAttributeScan& attribute, std::string_view value) {
    if (INibMLTagAttribute* symbol = attribute.Symbol.Get()) {
        AddTagAttr(attribute, value);
        if (FScan.Tag.IsOutermost) FNamespaces.AddAttribute(ToUtf8(symbol->GetName()), value);
        symbol->SetOffsetStart(attribute.Start);
        if (!value.empty()) symbol->SetOffsetEnd(Offset());
        Callback(symbol, ttAttribute, attribute.Start, Offset());
    }
    FScan.ColumnOffset = Offset();
    SetTagOffsetEnd(FCurrentTag.Get(), Offset(), FScan.Tag.IsClosing(), IsBeforeCaret(FPosition));
}

/// Reads a value of any length at the position. A quoted one that is never closed runs
/// to the end of the document, and the string stays recorded as open.
void TMLParser::GetTagAttrValue(bool quoted, std::string& value) {
    char openQuote = 0;
    const char* run = FPosition;
    auto takeRun = [&] { value.append(run, FPosition); };
    for (;;) {
        if (IsAtEnd()) {
            takeRun();
            if (!NextBlock()) return;
            run = FPosition;
            continue;
        }
        char c = *FPosition;
        bool isQuote = c == '"' || c == '\'';
        if (isQuote && !openQuote) {
            takeRun();
            EnterRegion(pcString);
            openQuote = FScan.QuoteOpen = c;
            FScan.QuoteClose = 0;
            run = ++FPosition;
        } else if (isQuote && c == openQuote) {
            takeRun();
            FScan.QuoteClose = c;
            ++FPosition;
            LeaveRegion(pcString);
            return;
        } else if (!quoted && (c == '>' || IsBlank(c) || IsLineBreak(c))) {
            takeRun();
            return;
        } else if (quoted && openQuote) {
            // Nothing but its own quote ends a quoted value.
            auto* close =
                std::memchr(FPosition, openQuote, static_cast<size_t>(FWindow.GetEnd() - FPosition));
            FPosition = close ? static_cast<const char*>(close) : FWindow.GetEnd();
        } else {
            ++FPosition;
        }
    }
}

}  // namespace caretwell
