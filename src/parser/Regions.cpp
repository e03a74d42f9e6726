// Stretches that are not markup: comments, processing instructions, server script,
// strings, and the raw content of script, style and text area elements. A region left
// open at the end of the document stays recorded.
#include <cstring>

#include "parser/ByteClasses.h"
#include "parser/MLParser.h"
#include "tagmodel/DocumentNodes.h"

namespace caretwell {

void TMLParser::EnterRegion(TParserContexts region) {
    if (region != pcNone) FContexts.Add(region);
    NoteComment(region, true);
    FContextPos.push_back(Offset());
}

void TMLParser::LeaveRegion(TParserContexts region) {
    if (region != pcNone) FContexts.Remove(region);
    NoteComment(region, false);
    PopContextPos();
}

/// The position stands behind the mark that begins or ends a region.
void TMLParser::NoteComment(TParserContexts region, bool isInside) {
    bool isComment = region == pcHTMLComment || region == pcAspComment || region == pcProcessingInstruction;
    if (isComment && IsBeforeCaret(FPosition - 1)) FInComment = isInside;
}

/// Moves to the next block inside a region, collecting what was passed for observers:
/// into text, or with the text of the document if that is null.
/// False at the end of the document.
bool TMLParser::NextRegionBlock(std::string* text, const char*& textStart) {
    if (!text) CollectText();
    else if (IsObserved()) text->append(textStart, FPosition);
    if (!NextBlock()) {
        textStart = FPosition;
        return false;
    }
    textStart = FPosition;
    return true;
}

/// Moves to the next of one or two stop bytes, across blocks. False at the end of the document.
bool TMLParser::SkipTo(std::string_view stops, std::string* text, const char*& textStart) {
    for (;;) {
        const char* end = FWindow.GetEnd();
        auto find = [&](char stop) {
            auto* found = std::memchr(FPosition, stop, static_cast<size_t>(end - FPosition));
            return found ? static_cast<const char*>(found) : end;
        };
        const char* nearest = end;
        if (stops.size() == 1) {
            nearest = find(stops[0]);
        } else {
            nearest = FPosition;
            while (nearest < end && stops.find(*nearest) == std::string_view::npos) ++nearest;
        }
        FPosition = nearest;
        if (!IsAtEnd()) {
            // An end mark is looked at as a whole.
            if (FWindow.GetEnd() - FPosition < 2 && FWindow.IsCutInToken(FPosition)) {
                if (text && IsObserved()) text->append(textStart, FPosition);
                NeedAhead(2);
                textStart = FPosition;
            }
            return true;
        }
        if (!NextRegionBlock(text, textStart)) return false;
    }
}

/// Tells observers of a region that ends before the caret; its end mark of so many
/// bytes is no part of its text.
template <class TNode>
void TMLParser::ReportRegion(TTagType type, std::string& text, const char* textStart, size_t endMark) {
    if (!IsObserved() || !IsBeforeCaret(FPosition)) return;
    text.append(textStart, FPosition);
    text.resize(text.size() - std::min(endMark, text.size()));
    auto node = MakeRef<TNode>();
    node->SetOffsetStart(FScan.TagStart);
    node->SetOffsetEnd(Offset());
    node->SetText(ToUtf16(text));
    Callback(node.Get(), type, FScan.TagStart, Offset());
}

// A single "-" before ">" ends a comment too, unlike the standard.
void TMLParser::HandleHTMLComment() {
    EnterRegion(pcHTMLComment);
    std::string text;
    const char* textStart = FPosition;
    while (SkipTo("-", &text, textStart)) {
        while (*FPosition == '-' && !IsAtEnd()) ++FPosition;
        if (IsAtEnd() && !NextRegionBlock(&text, textStart)) return;
        if (*FPosition != '>') continue;
        ++FPosition;
        LeaveRegion(pcHTMLComment);
        ReportRegion<TMLComment>(ttComment, text, textStart, 3);
        return;
    }
}

void TMLParser::HandleProcessingInstruction() {
    EnterRegion(pcProcessingInstruction);
    std::string text;
    const char* textStart = FPosition;
    while (SkipTo("\"'?/", &text, textStart)) {
        if (ClassOf(*FPosition) == bcQuote) {
            // An end mark inside a string does not count.
            if (IsObserved()) text.append(textStart, FPosition);
            std::string string;
            FTextStart = FPosition;
            HandleString();
            if (IsObserved() && FTextStart) text.append(FTextStart, FPosition);
            textStart = FPosition;
            continue;
        }
        ++FPosition;
        if (*FPosition != '>' || IsAtEnd()) continue;
        ++FPosition;
        LeaveRegion(pcProcessingInstruction);
        ReportRegion<TMLProcessingInstruction>(ttProcessingInstruction, text, textStart, 2);
        return;
    }
}

void TMLParser::HandleServerSideScript() {
    EnterRegion(pcServerSideScript);
    std::string text;
    const char* textStart = FPosition;
    while (SkipTo("%", &text, textStart)) {
        ++FPosition;
        if (*FPosition != '>' || IsAtEnd()) continue;
        ++FPosition;
        LeaveRegion(pcServerSideScript);
        ReportRegion<TMLServerScript>(ttServerScript, text, textStart, 2);
        return;
    }
}

// A server script inside a server comment does not end it.
void TMLParser::HandleASPComment() {
    EnterRegion(pcAspComment);
    std::string text;
    const char* textStart = FPosition;
    int32_t depth = 0;
    while (SkipTo("<%", &text, textStart)) {
        bool isLess = *FPosition == '<';
        ++FPosition;
        if (isLess) {
            if (*FPosition == '%' && !IsAtEnd()) ++depth;
            continue;
        }
        if (*FPosition != '>' || IsAtEnd()) continue;
        if (depth > 0) {
            --depth;
            continue;
        }
        ++FPosition;
        LeaveRegion(pcAspComment);
        ReportRegion<TMLComment>(ttAspComment, text, textStart, 2);
        return;
    }
}

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
        if (FInDocType) text.append(stringStart, FPosition);
        if (close) break;
        if (!NextBlock()) return;
        stringStart = FPosition;
    }
    if (FInDocType) {
        FSchemaFile = text;
        FAttrName = quote + text + quote;
        auto attribute = NewUnknownAttr(FAttrName);
        Callback(attribute.Get(), ttAttribute, start, Offset());
    }
    ++FPosition;
    LeaveRegion(pcString);
}

/// Reads to the closing tag of the element, which the scan then reads as usual.
void TMLParser::HandleRawContent(TParserContexts region, std::string_view closingTag, bool& flag) {
    EnterRegion(region);
    if (IsBeforeCaret(FPosition)) flag = true;
    const char* textStart = FPosition;
    while (SkipTo("<", nullptr, textStart)) {
        NeedAhead(static_cast<int32_t>(closingTag.size()));
        auto ahead = static_cast<size_t>(FWindow.GetEnd() - FPosition);
        if (ahead >= closingTag.size() &&
            SameText(std::string_view(FPosition, closingTag.size()), closingTag)) {
            if (IsBeforeCaret(FPosition + closingTag.size())) flag = false;
            LeaveRegion(region);
            return;
        }
        ++FPosition;
    }
}

}  // namespace caretwell
