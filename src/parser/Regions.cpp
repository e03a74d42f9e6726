// Stretches that are not markup: comments, processing instructions, server script,
// strings, and the raw content of script, style and text area elements. A region left
// open at the end of the document stays recorded.
#include "parser/Regions.h"

#include <algorithm>
#include <cstring>

#include "parser/ByteClasses.h"
#include "parser/MLParser.h"
#include "tagmodel/DocumentNodes.h"

namespace caretwell {

void TMLParser::EnterRegion(TParserContexts region) {
    if (region != pcNone) FContexts.Add(region);
    FContextPos.push_back(Offset());
}

void TMLParser::LeaveRegion(TParserContexts region) {
    if (region != pcNone) FContexts.Remove(region);
    PopContextPos();
}

/// Moves to the next of the stop bytes, across blocks. False at the end of the document.
bool TMLParser::SkipTo(std::string_view stops) {
    constexpr int32_t LongestEnd = 3;
    for (;;) {
        const char* end = FWindow.GetEnd();
        if (stops.size() == 1) {
            auto* found = std::memchr(FPosition, stops[0], static_cast<size_t>(end - FPosition));
            FPosition = found ? static_cast<const char*>(found) : end;
        } else {
            FPosition = std::find_first_of(FPosition, end, stops.begin(), stops.end());
        }
        if (!IsAtEnd()) {
            // An end mark is looked at as a whole.
            NeedAhead(LongestEnd);
            return true;
        }
        if (!NextBlock()) return false;
    }
}

/// Reads a region whose beginning was read. start is the offset of its "<"; FScan.BeforeCaret
/// says that the caret lies further in than directly after that.
void TMLParser::HandleRegion(const TRegionRule& rule, int32_t start, bool holdsCaret) {
    EnterRegion(rule.Region);
    if (holdsCaret) {
        FCaretRegion = rule.Region;
        if (rule.CaretFlag) this->*rule.CaretFlag = true;
        if (IsObserved()) FWindow.StartCapture(FPosition);
    }
    if (!FindRegionEnd(rule)) return;
    LeaveRegion(rule.Region);
    bool isLeft = IsBeforeCaret(FPosition - 1);
    if (isLeft) {
        FCaretRegion = pcNone;
        if (rule.CaretFlag) this->*rule.CaretFlag = false;
    }
    if (IsObserved() && isLeft) ReportRegion(rule, start);
    if (isLeft && !FScan.Tag.IsOpen) StartText();
}

bool TMLParser::FindRegionEnd(const TRegionRule& rule) {
    if (rule.Region == pcHTMLComment && SkipEmptyComment()) return true;
    int32_t depth = 0;
    while (SkipTo(rule.Stops)) {
        char stop = *FPosition;
        if (ClassOf(stop) == bcQuote) {
            if (!SkipRegionString(rule)) return false;
            continue;
        }
        if (rule.EndBytes.find(stop) == std::string_view::npos) {
            ++FPosition;
            if (!rule.NestsScripts) SkipNestedComment();
            else if (*FPosition == '%' && !IsAtEnd()) ++depth;
            continue;
        }
        size_t count = 0;
        for (; *FPosition == stop && !IsAtEnd(); ++FPosition) ++count;
        if (rule.Region == pcInternalSubset) return true;
        if (IsAtEnd() && !NextBlock()) return false;
        if (count < rule.EndCount || *FPosition != '>') continue;
        // The end of a server script inside a server comment does not end that.
        if (depth-- > 0) continue;
        ++FPosition;
        return true;
    }
    return false;
}

/// "<!-->" and "<!--->" are comments that have ended.
bool TMLParser::SkipEmptyComment() {
    NeedAhead(2);
    const char* end = *FPosition == '-' ? FPosition + 1 : FPosition;
    if (*end != '>' || end == FWindow.GetEnd()) return false;
    FPosition = end + 1;
    return true;
}

/// Steps over a string, in which an end mark does not count. A quote without its twin on the
/// line, and an apostrophe between letters, is none: <?php // don't ?>
/// False at the end of the document.
bool TMLParser::SkipRegionString(const TRegionRule& rule) {
    const char quote = *FPosition;
    if (rule.Strings == TRegionRule::TStrings::OfAnyLength) {
        ++FPosition;
        if (!SkipTo(std::string_view(&quote, 1))) return false;
        ++FPosition;
        return true;
    }
    bool isAfterLetter = FPosition > FWindow.GetStart() && IsLetter(FPosition[-1]);
    NeedAhead(TDocumentWindow::MaxKept);
    const char* end = FWindow.GetEnd();
    const char* p = ++FPosition;
    bool isBetweenLetters = quote == '\'' && isAfterLetter && p < end && IsLetter(*p);
    if (isBetweenLetters) return true;
    while (p < end && *p != quote && !IsLineBreak(*p)) ++p;
    if (p < end && *p == quote) FPosition = p + 1;
    return true;
}

/// At the "<" of a declaration in an internal subset: quotes and brackets in a comment are text.
void TMLParser::SkipNestedComment() {
    NeedAhead(3);
    if (std::string_view(FPosition, static_cast<size_t>(FWindow.GetEnd() - FPosition)).starts_with("!--")) {
        FPosition += 3;
        while (SkipTo("-")) {
            if (FPosition[1] == '-' && FPosition[2] == '>') return;
            ++FPosition;
        }
    }
}

/// Tells observers of a region that ends before the caret.
void TMLParser::ReportRegion(const TRegionRule& rule, int32_t start) {
    std::string text = FWindow.TakeCapture(FPosition);
    if (rule.EndLength == 0) return;
    text.resize(text.size() - std::min(rule.EndLength, text.size()));
    auto tell = [&](auto node) {
        node->SetOffsetStart(start);
        node->SetOffsetEnd(Offset());
        node->SetText(ToUtf16(text));
        Callback(node.Get(), rule.Type, start, Offset());
    };
    if (rule.Type == ttProcessingInstruction) tell(MakeRef<TMLProcessingInstruction>());
    else if (rule.Type == ttServerScript) tell(MakeRef<TMLServerScript>());
    else tell(MakeRef<TMLComment>());
}

/// A string where no value is read. In a doctype it may name the schema.
void TMLParser::HandleString() {
    EnterRegion(pcString);
    const char quote[2] = {*FPosition, 0};
    ++FPosition;
    int32_t start = Offset();
    const char* stringStart = FPosition;
    std::string text;  // of a string that a block border cuts
    for (;;) {
        auto* close = std::memchr(FPosition, quote[0], static_cast<size_t>(FWindow.GetEnd() - FPosition));
        FPosition = close ? static_cast<const char*>(close) : FWindow.GetEnd();
        if (InDocType()) text.append(stringStart, FPosition);
        if (close) break;
        if (!NextBlock()) return;
        stringStart = FPosition;
    }
    if (InDocType()) {
        FSchemaFile = text;
        auto attribute = NewUnknownAttr(quote + text + quote);
        Callback(attribute.Get(), ttAttribute, start, Offset());
    }
    ++FPosition;
    LeaveRegion(pcString);
}

namespace {

struct TRawContentRule {
    TParserContexts Region;
    std::string_view ClosingTag;
    bool TCaretState::*CaretFlag;
};
constexpr TRawContentRule RawContentRules[] = {
    {pcNone, {}, nullptr},
    {pcScript, "</script>", &TCaretState::FInScript},
    {pcStyle, "</style>", &TCaretState::FInStyle},
    {pcNone, "</textarea>", &TCaretState::FInTextArea},
};

}  // namespace

/// Reads to the closing tag of the element, which the scan then reads as usual.
void TMLParser::ScanRawContent(TRawContent content) {
    if (content == TRawContent::None) return;
    const TRawContentRule& rule = RawContentRules[static_cast<size_t>(content)];
    EnterRegion(rule.Region);
    if (IsBeforeCaret(FPosition)) this->*rule.CaretFlag = true;
    auto length = static_cast<int32_t>(rule.ClosingTag.size());
    while (SkipTo("<")) {
        NeedAhead(length);
        const char* end = FPosition + length;
        if (FWindow.GetEnd() >= end &&
            SameText(std::string_view(FPosition, rule.ClosingTag.size()), rule.ClosingTag)) {
            // A caret directly after the closing tag stands outside.
            if (IsBeforeCaret(end - 1)) this->*rule.CaretFlag = false;
            LeaveRegion(rule.Region);
            return;
        }
        ++FPosition;
    }
}

}  // namespace caretwell
