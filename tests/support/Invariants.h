// What must hold of a parse and of an open list, whatever the text is and wherever the
// caret stands; and all of it as text, so that two hosts can be compared.
#pragma once

#include <algorithm>
#include <sstream>

#include "parser/TagStack.h"
#include "support/TestHost.h"
#include "tagmodel/HTMLTag.h"

namespace caretwell::test {

// Each of these returns what is wrong, empty if nothing is.

inline std::string FaultOfStacks(TMLParser& parser, int32_t size, int32_t lines) {
    for (PTagEntry top : {parser.GetTagStack(), parser.GetDocumentTags()}) {
        int32_t line = lines;
        for (PTagEntry entry = top; entry; entry = entry->Next) {
            if (entry->Line < 1 || entry->Line > line) return "line of an open tag";
            line = entry->Line;
            if (entry->OffsetStart < 0 || entry->OffsetStart > size || entry->OffsetEnd > size)
                return "span of an open tag";
        }
    }
    return {};
}

inline std::string FaultOfParse(TTestHost& host) {
    TMLParser& parser = host.Parser();
    int32_t size = host.Document().Text().Size(), lines = host.Document().Text().LineAt(size);
    auto isInside = [size](int32_t offset) { return offset >= 0 && offset <= size; };
    for (int32_t i = 0; i < parser.GetCurrentTagAttrCount(); ++i) {
        INibMLTagAttribute& attribute = *parser.GetCurrentTagAttrs(i);
        if (!isInside(attribute.GetOffsetStart()) || !isInside(attribute.GetOffsetEnd()) ||
            !isInside(attribute.GetAttributeValueStartOffset()))
            return "span of an attribute";
    }
    if (parser.FCurrentTag && !isInside(parser.FCurrentTag->GetOffsetEnd())) return "span of the current tag";
    if (parser.FValueOffset > size) return "place of the value";
    if (parser.GetContextPos() < -1 || parser.GetContextPos() > size) return "start of a region";
    for (const auto& place : parser.GetAutoClosePositions())
        if (host.Document().Text().At(place.Offset) != '>') return "end of an empty element";
    auto& manager = MLSymbolManager();
    for (int32_t i = 0; i < manager.GetClosedTagsCount(); ++i) {
        int32_t line = QueryAs<INibMLClosingTag>(manager.GetCloseTags(i))->GetLineNumber();
        if (line < 1 || line > lines) return "line of a closing tag";
    }
    return FaultOfStacks(parser, size, lines);
}

/// Of an item that is neither a closing tag nor begins with the filter, there may be one:
/// the last name stays when the filter sorts behind all names.
inline std::string FaultOfList(TTestHost& host, std::u16string_view filter) {
    TEditorDriver& driver = host.Driver();
    int32_t count = driver.ItemCount(), strangers = 0;
    if (count < 0) return "count below 0";
    bool isTags = host.Manager().GetListKind() == TListKind::Elements;
    std::u16string previous;
    for (int32_t i = 0; i < count; ++i) {
        TListItem item = driver.Item(i);
        if (item.Name.empty()) return "item without a name";
        if (item.IsClosing) {
            if (!isTags || !item.Name.starts_with(u"</") || !item.Type.starts_with(u"line "))
                return "closing tag";
            continue;
        }
        if (CompareText(std::u16string_view(previous), std::u16string_view(item.Name)) > 0)
            return "order of items";
        bool isDialog = IdentIsAttributeEditor(std::u16string_view(item.Name)) ||
                        !IdentIsNotDTDType(std::u16string_view(item.Name));
        if (!isDialog && !StartsWithText(std::u16string_view(item.Name), filter)) ++strangers;
        previous = item.Name;
    }
    bool keepsLast = isTags || host.Manager().GetListKind() == TListKind::Attributes;
    if (strangers > keepsLast) return "item that the filter excludes";
    int32_t index = -1;
    host.Manager().FindSymIndex(filter, index);
    return index < -1 || index > count ? "index of the filter" : std::string();
}

inline std::string FaultOfEdit(const TChoiceEdit& edit, int32_t size) {
    if (edit.Way == TChoiceEdit::ceNothing || edit.Way == TChoiceEdit::ceDialog) return {};
    if (edit.Start < 0 || edit.Start > edit.End || edit.End > size) return "range of an edit";
    auto room = size - (edit.End - edit.Start) + static_cast<int32_t>(ToUtf8(edit.Text).size());
    return edit.CaretOffset < 0 || edit.CaretOffset > room ? "caret behind an edit" : std::string();
}

/// The whole outcome of a parse and of an open list, but for the place of the current tag,
/// which is 0 when this very parse has loaded the schema.
inline std::string Outcome(TTestHost& host) {
    TMLParser& parser = host.Parser();
    auto& manager = MLSymbolManager();
    // A document whose schema is missing was read by the one before.
    if (manager.GetSchemaFile().empty())
        return host.Driver().IsOpen() ? "open without a schema" : "no schema";
    std::ostringstream out;
    auto nameOf = [](const TRef<INibMLTag>& tag) { return tag ? ToUtf8(tag->GetName()) : std::string("-"); };
    out << host.Driver().IsOpen() << ' ' << static_cast<int>(host.Manager().GetListKind());
    bool isEntities = host.Manager().GetListKind() == TListKind::Entities;
    std::u16string previous;
    for (const auto& item : host.Driver().Items()) {
        // Of entities that differ by case only, the first schema of a process keeps both.
        bool isRepeated = isEntities && SameText(item.Name, previous);
        previous = item.Name;
        if (isRepeated) continue;
        // Which of the two stays is the order of the schema.
        std::string name = ToUtf8(item.Name);
        if (isEntities) std::transform(name.begin(), name.end(), name.begin(), ToLower<char>);
        out << ' ' << name << '/' << ToUtf8(item.Type) << '/' << ToUtf8(item.Class);
    }
    out << "\ntag " << parser.FInTag << parser.FInClosingTag << parser.FCaretInTagName << parser.FInScript
        << parser.FInStyle << parser.FInTextArea << parser.GetInDocType() << parser.FIsXML
        << parser.FUnterminatedTag << ' ' << nameOf(parser.FCurrentTag) << ' ' << nameOf(parser.FLastKnownTag)
        << ' ' << nameOf(parser.FCaretParentTag) << ' ' << nameOf(manager.GetListOwner());
    out << "\nvalue "
        << (parser.FCurrentAttribute ? ToUtf8(parser.FCurrentAttribute->GetName()) : std::string("-")) << ' '
        << parser.FValuePos.Line << ':' << parser.FValuePos.Col << ' ' << parser.FValueOffset << ' '
        << parser.GetContextPos() << ' ' << parser.GetCurrentCol() << " regions";
    for (int i = 0; i < 16; ++i) out << parser.FContexts.Has(static_cast<TParserContexts>(i));
    for (PTagEntry top : {parser.GetTagStack(), parser.GetDocumentTags()}) {
        out << "\nopen";
        for (PTagEntry entry = top; entry; entry = entry->Next) {
            out << ' ' << nameOf(entry->Tag) << ':' << entry->Line << ':' << entry->OffsetStart << '-'
                << entry->OffsetEnd;
            if (top == parser.GetTagStack()) out << '(' << entry->Attrs.GetCount() << ')';
        }
    }
    out << "\nwritten";
    for (int32_t i = 0; i < parser.GetCurrentTagAttrCount(); ++i) {
        INibMLTagAttribute& attribute = *parser.GetCurrentTagAttrs(i);
        out << ' ' << ToUtf8(attribute.GetName()) << '=' << ToUtf8(parser.GetCurrentTagAttrValue(i)) << '@'
            << attribute.GetOffsetStart() << '-' << attribute.GetOffsetEnd();
    }
    out << "\nclosing";
    for (int32_t i = 0; i < manager.GetClosedTagsCount(); ++i) out << ' ' << nameOf(manager.GetCloseTags(i));
    for (const auto& place : parser.GetAutoClosePositions()) out << " auto " << place.Offset;
    out << " hidden " << manager.GetHiddenAttrCount() << " schema " << manager.GetSchemaFile();
    return out.str();
}

}  // namespace caretwell::test
