// The handles by which the engine moves a view's caret, takes the text next to it
// and marks a block. They hold their view and are made for each use.
#pragma once

#include "memory/EditView.h"

namespace caretwell {

class TEditPosition final : public TImplements<INibEditPosition> {
public:
    explicit TEditPosition(TRef<TEditView> view) : FView(std::move(view)) {}

    int32_t Row() override;
    int32_t Column() override;
    void MoveTo(int32_t row, int32_t column) override;
    void MoveBy(int32_t rows, int32_t columns) override;
    void MoveToLineEnd() override;
    void Save() override;
    /// Without a Save it does nothing.
    void Restore() override;
    void DeleteBack(int32_t count) override;
    void InsertChar(char16_t c) override;
    std::u16string TakeText(const TCharSet& chars, uint32_t flags) override;

private:
    TTextBuffer& Text() { return FView->Text(); }
    int32_t Caret() { return FView->CaretOffset(); }
    int32_t StepBack(int32_t from, int32_t count, int32_t stop);
    int32_t StepAhead(int32_t from, int32_t count, int32_t stop);

    TRef<TEditView> FView;
};

class TEditBlock final : public TImplements<INibEditBlock> {
public:
    explicit TEditBlock(TRef<TEditView> view) : FView(std::move(view)) {}

    void Save() override;
    /// Without a Save it does nothing.
    void Restore() override;
    void Start() override;
    void Finish() override;
    std::u16string Text() override;

private:
    TRef<TEditView> FView;
};

}  // namespace caretwell
