// Chapter 2. The view.
//
// A user thinks in lines and characters, a text in bytes. The view stands between: it
// tells the engine where the caret is, in three forms, and lends it two handles.
//
//     offset          bytes of the document, from 0
//     TNibCharPos     line from 1, bytes of the line from 0
//     TNibEditPos     line from 1, characters of the line from 1
//
// The two positions hold 16 bits of column. A view that also answers for INibOffsetView
// gives the caret as an offset, and the engine then never needs the others for it.
#pragma once

#include <caretwell/markup/Text.h>

#include <functional>

#include "Page.h"

namespace minimal {

class TPageView : public TImplements<INibEditView, INibOffsetView, INibEditActions> {
public:
    explicit TPageView(TRef<TPage> page) : FPage(std::move(page)) {}
    TPage& Page() { return *FPage; }

    // ---- places

    int32_t LineOf(int32_t offset) const {
        const std::string& text = FPage->Text();
        return 1 + static_cast<int32_t>(std::count(text.begin(), text.begin() + FPage->Inside(offset), '\n'));
    }
    /// Offset at which a line begins; the last one stands for all after it.
    int32_t StartOfLine(int32_t line) const {
        size_t start = 0;
        for (; line > 1; --line) {
            size_t end = FPage->Text().find('\n', start);
            if (end == std::string::npos) break;
            start = end + 1;
        }
        return static_cast<int32_t>(start);
    }
    int32_t EndOfLine(int32_t line) const {
        size_t end = FPage->Text().find('\n', static_cast<size_t>(StartOfLine(line)));
        return end == std::string::npos ? FPage->Size() : static_cast<int32_t>(end);
    }
    // A character begins at every byte that does not go on with another one's.
    bool IsCharStart(int32_t offset) const {
        return (FPage->Text()[static_cast<size_t>(offset)] & 0xC0) != 0x80;
    }
    int32_t NextChar(int32_t offset) const {
        do ++offset;
        while (offset < FPage->Size() && !IsCharStart(offset));
        return std::min(offset, FPage->Size());
    }
    int32_t PreviousChar(int32_t offset) const {
        do --offset;
        while (offset > 0 && !IsCharStart(offset));
        return std::max(offset, 0);
    }
    int32_t ColumnOf(int32_t offset) const {
        int32_t column = 1;
        offset = FPage->Inside(offset);
        for (int32_t i = StartOfLine(LineOf(offset)); i < offset; i = NextChar(i)) ++column;
        return column;
    }
    int32_t OffsetOf(int32_t line, int32_t column) const {
        int32_t offset = StartOfLine(line), end = EndOfLine(line);
        for (; column > 1 && offset < end; --column) offset = NextChar(offset);
        return offset;
    }

    // ---- INibOffsetView
    int32_t CaretOffset() override { return FPage->Caret(); }
    void SetCaretOffset(int32_t offset) override { FPage->SetCaret(offset); }

    // ---- INibEditView
    TNibEditPos CaretPos() override { return CharPosToEditPos(OffsetToCharPos(FPage->Caret())); }
    void SetCaretPos(TNibEditPos position) override {
        FPage->SetCaret(OffsetOf(position.Line, position.Col));
    }
    TNibCharPos OffsetToCharPos(int32_t offset) override {
        int32_t line = LineOf(offset);
        return {Column16(FPage->Inside(offset) - StartOfLine(line)), line};
    }
    int32_t CharPosToOffset(TNibCharPos position) override {
        return std::min(StartOfLine(position.Line) + std::max<int32_t>(position.CharIndex, 0),
                        EndOfLine(position.Line));
    }
    TNibCharPos EditPosToCharPos(TNibEditPos position) override {
        return OffsetToCharPos(OffsetOf(position.Line, position.Col));
    }
    TNibEditPos CharPosToEditPos(TNibCharPos position) override {
        int32_t offset = CharPosToOffset(position);
        return {Column16(ColumnOf(offset)), LineOf(offset)};
    }
    TRef<INibEditBuffer> Buffer() override { return FPage; }
    TRef<INibEditPosition> Position() override;
    TRef<INibEditBlock> Block() override;
    void Repaint() override {}  // nothing is on a screen

    // ---- INibEditActions. The engine asks for the next list from inside the end of this
    // one, so the wish is only noted; the editor of chapter 4 fulfils it.
    void InvokeCompletion(int32_t style) override {
        if (style == CompleteAsUser && OnRequest) OnRequest();
    }
    std::function<void()> OnRequest;

private:
    friend class TPagePosition;
    friend class TPageBlock;
    static int16_t Column16(int32_t column) { return static_cast<int16_t>(std::min(column, 32767)); }

    TRef<TPage> FPage;
    // The handles are made anew for each use, so what they save is kept here.
    std::vector<int32_t> FSavedCarets;
    struct TRange {
        int32_t Start = 0, End = 0;
    };
    TRange FBlock;
    std::vector<TRange> FSavedBlocks;
};

/// Moves the caret, and reads the text next to it.
class TPagePosition final : public TImplements<INibEditPosition> {
public:
    explicit TPagePosition(TRef<TPageView> view) : FView(std::move(view)) {}
    int32_t Row() override { return FView->LineOf(Caret()); }
    int32_t Column() override { return FView->ColumnOf(Caret()); }
    void MoveTo(int32_t row, int32_t column) override { SetCaret(FView->OffsetOf(row, column)); }
    void MoveBy(int32_t rows, int32_t columns) override {
        int32_t line = std::max(Row() + rows, 1);
        MoveTo(line, std::max(Column() + columns, 1));
    }
    void MoveToLineEnd() override { SetCaret(FView->EndOfLine(Row())); }
    void Save() override { FView->FSavedCarets.push_back(Caret()); }
    void Restore() override {
        if (FView->FSavedCarets.empty()) return;
        SetCaret(FView->FSavedCarets.back());
        FView->FSavedCarets.pop_back();
    }
    void DeleteBack(int32_t count) override {
        int32_t start = Caret();
        while (count-- > 0) start = FView->PreviousChar(start);
        FView->Page().Replace(start, Caret(), {});
    }
    void InsertChar(char16_t c) override {
        FView->Page().Replace(Caret(), Caret(), ToUtf8(std::u16string_view(&c, 1)));
    }
    // A character of several bytes belongs to a set if its first byte does.
    std::u16string TakeText(const TCharSet& chars, uint32_t flags) override {
        const std::string& text = FView->Page().Text();
        auto belongs = [&](int32_t at) {
            auto byte = static_cast<uint8_t>(text[static_cast<size_t>(at)]);
            return chars.Contains(byte) ||
                   ((flags & TakeVisible) == TakeVisible && byte > ' ' && byte != 127);
        };
        int32_t start = Caret(), end = start;
        if (flags & TakeBackwards) {
            while (start > 0 && belongs(FView->PreviousChar(start))) start = FView->PreviousChar(start);
        } else {
            while (end < FView->Page().Size() && belongs(end)) end = FView->NextChar(end);
        }
        return ToUtf16(
            std::string_view(text).substr(static_cast<size_t>(start), static_cast<size_t>(end - start)));
    }

private:
    int32_t Caret() { return FView->Page().Caret(); }
    void SetCaret(int32_t offset) { FView->Page().SetCaret(offset); }
    TRef<TPageView> FView;
};

/// A marked range: Start and Finish note where the caret is.
class TPageBlock final : public TImplements<INibEditBlock> {
public:
    explicit TPageBlock(TRef<TPageView> view) : FView(std::move(view)) {}
    void Save() override { FView->FSavedBlocks.push_back(FView->FBlock); }
    void Restore() override {
        if (FView->FSavedBlocks.empty()) return;
        FView->FBlock = FView->FSavedBlocks.back();
        FView->FSavedBlocks.pop_back();
    }
    void Start() override { FView->FBlock.Start = FView->Page().Caret(); }
    void Finish() override { FView->FBlock.End = FView->Page().Caret(); }
    std::u16string Text() override {
        const TPage& page = FView->Page();
        int32_t start = page.Inside(FView->FBlock.Start), end = page.Inside(FView->FBlock.End);
        if (end <= start) return {};
        return ToUtf16(std::string_view(page.Text())
                           .substr(static_cast<size_t>(start), static_cast<size_t>(end - start)));
    }

private:
    TRef<TPageView> FView;
};

inline TRef<INibEditPosition> TPageView::Position() { return MakeRef<TPagePosition>(this); }
inline TRef<INibEditBlock> TPageView::Block() { return MakeRef<TPageBlock>(this); }

}  // namespace minimal
