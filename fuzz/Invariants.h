// What must hold of a parse and of an open list, whatever the text is and wherever the
// caret stands.
#pragma once

#include "support/Outcome.h"

namespace caretwell::test {

// Each of these returns what is wrong, empty if nothing is.

inline std::string FaultOfParse(TTestHost& host) {
    TParseState state = StateOf(host);
    const TTextBuffer& text = host.Document().Text();
    int32_t size = text.Size(), lines = text.LineAt(size);
    auto isInside = [size](int32_t offset) { return offset >= 0 && offset <= size; };
    for (const auto& attribute : state.Written)
        if (!isInside(attribute.Start) || !isInside(attribute.End) || !isInside(attribute.ValueStart))
            return "span of an attribute";
    if (!isInside(state.TagEnd)) return "span of the current tag";
    if (state.ValueOffset > size) return "place of the value";
    if (state.RegionStart < -1 || state.RegionStart > size) return "start of a region";
    for (int32_t offset : state.AutoClose)
        if (text.At(offset) != '>') return "end of an empty element";
    for (const auto& tag : state.Closing)
        if (tag.Line < 1 || tag.Line > lines) return "line of a closing tag";
    for (const auto* open : {&state.AtCaret, &state.InDocument}) {
        int32_t line = lines;
        for (const auto& tag : *open) {
            if (tag.Line < 1 || tag.Line > line) return "line of an open tag";
            line = tag.Line;
            if (!isInside(tag.Start) || tag.End > size) return "span of an open tag";
        }
    }
    return {};
}

/// Whatever is neither a closing tag nor a dialog begins with the filter.
inline std::string FaultOfList(TTestHost& host, std::u16string_view filter) {
    TEditorDriver& driver = host.Driver();
    int32_t count = driver.ItemCount();
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
        if (!isDialog && !StartsWithText(std::u16string_view(item.Name), filter))
            return "an item that the filter leaves out";
        previous = item.Name;
    }
    int32_t index = -1;
    host.Manager().FindSymIndex(filter, index);
    return index < -1 || index > count ? "index of the filter" : std::string();
}

/// What is wrong with the edit that the item would make; empty if nothing is.
inline std::string FaultOfEdit(INibEditComposer& composer, int32_t index, char16_t key, int32_t size) {
    TNibEdit edit;
    bool isWriting = composer.ComposeChoice(index, key, edit);
    if (!isWriting) return edit.Text.empty() && edit.End == 0 ? std::string() : "edit that is none";
    if (!edit.EditorId.empty() && !edit.Text.empty()) return "text before the dialog";
    if (edit.Start < 0 || edit.Start > edit.End || edit.End > size) return "range of an edit";
    auto room = size - (edit.End - edit.Start) + static_cast<int32_t>(ToUtf8(edit.Text).size());
    return edit.Caret < edit.Start || edit.Caret > room ? "caret behind an edit" : std::string();
}

}  // namespace caretwell::test
