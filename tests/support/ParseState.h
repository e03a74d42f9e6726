// What a parse found out, as plain values: tests read the parser's state here and nowhere else,
// so that the parser can keep it as it likes.
#pragma once

#include <string>
#include <vector>

#include "parser/TagStack.h"
#include "support/TestHost.h"
#include "tagmodel/HTMLTag.h"

namespace caretwell::test {

/// Names are UTF-8, "-" for null.
struct TParseState {
    struct TOpen {
        std::string Name;
        int32_t Line, Start, End, Attributes;
    };
    struct TWritten {
        std::string Name, Value;
        int32_t Start, End, ValueStart;
    };
    struct TClosing {
        std::string Name;
        int32_t Line;
    };
    bool InTag, InClosingTag, InTagName, InScript, InStyle, InTextArea, InDocType, InAttribute, IsXML,
        IsUnterminated;
    std::string Tag, LastKnown, Parent, Owner, Attribute;
    int32_t TagEnd, ValueLine, ValueColumn, ValueOffset, RegionStart, Column;
    std::string Regions;                     ///< a digit for each kind
    std::vector<TOpen> AtCaret, InDocument;  ///< innermost first
    std::vector<TWritten> Written;           ///< on the current tag
    std::vector<TClosing> Closing;
    std::vector<int32_t> AutoClose;  ///< offsets
};

inline std::string NameOf(const TRef<INibMLTag>& tag) { return tag ? ToUtf8(tag->GetName()) : "-"; }

inline std::vector<TParseState::TOpen> OpenTags(PTagEntry entry) {
    std::vector<TParseState::TOpen> open;
    for (; entry; entry = entry->Next)
        open.push_back(
            {NameOf(entry->Tag), entry->Line, entry->OffsetStart, entry->OffsetEnd, entry->Attrs.GetCount()});
    return open;
}

inline TParseState StateOf(TTestHost& host) {
    TMLParser& parser = host.Parser();
    auto& manager = MLSymbolManager();
    TParseState state{
        .InTag = parser.FInTag,
        .InClosingTag = parser.FInClosingTag,
        .InTagName = parser.FCaretInTagName,
        .InScript = parser.FInScript,
        .InStyle = parser.FInStyle,
        .InTextArea = parser.FInTextArea,
        .InDocType = parser.GetInDocType(),
        .InAttribute = parser.GetInAttribute(),
        .IsXML = parser.FIsXML,
        .IsUnterminated = parser.FUnterminatedTag,
        .Tag = NameOf(parser.FCurrentTag),
        .LastKnown = NameOf(parser.FLastKnownTag),
        .Parent = NameOf(parser.FCaretParentTag),
        .Owner = NameOf(manager.GetListOwner()),
        .Attribute = parser.FCurrentAttribute ? ToUtf8(parser.FCurrentAttribute->GetName()) : "-",
        .TagEnd = parser.FCurrentTag ? parser.FCurrentTag->GetOffsetEnd() : 0,
        .ValueLine = parser.FValuePos.Line,
        .ValueColumn = parser.FValuePos.Col,
        .ValueOffset = parser.FValueOffset,
        .RegionStart = parser.GetContextPos(),
        .Column = parser.GetCurrentCol(),
        .Regions = {},
        .AtCaret = OpenTags(parser.GetTagStack()),
        .InDocument = OpenTags(parser.GetDocumentTags()),
        .Written = {},
        .Closing = {},
        .AutoClose = {},
    };
    for (int i = 0; i < 16; ++i)
        state.Regions += parser.FContexts.Has(static_cast<TParserContexts>(i)) ? '1' : '0';
    for (int32_t i = 0; i < parser.GetCurrentTagAttrCount(); ++i) {
        INibMLTagAttribute& attribute = *parser.GetCurrentTagAttrs(i);
        state.Written.push_back({ToUtf8(attribute.GetName()), ToUtf8(parser.GetCurrentTagAttrValue(i)),
                                 attribute.GetOffsetStart(), attribute.GetOffsetEnd(),
                                 attribute.GetAttributeValueStartOffset()});
    }
    for (int32_t i = 0; i < manager.GetClosedTagsCount(); ++i) {
        auto tag = manager.GetCloseTags(i);
        state.Closing.push_back({NameOf(tag), QueryAs<INibMLClosingTag>(tag)->GetLineNumber()});
    }
    for (int32_t place : parser.GetAutoClosePositions()) state.AutoClose.push_back(place);
    return state;
}

}  // namespace caretwell::test
