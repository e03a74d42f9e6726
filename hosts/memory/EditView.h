// A view of a buffer: a caret, a marked block, and the positions of the contract in
// both of its forms. The caret is kept as a byte offset that moves with the text,
// so that it is exact on lines of any length; only CaretPos is cut to 16 bits.
#pragma once

#include <functional>
#include <vector>

#include "host/Nibapi.h"
#include "memory/EditBuffer.h"

namespace caretwell {

class TEditView final : public TImplements<INibEditView, INibOffsetView, INibEditActions> {
public:
    explicit TEditView(TRef<TEditBuffer> buffer);

    TTextBuffer& Text() { return FBuffer->Text(); }
    /// A view that the user has closed. It stays usable for those who still hold it.
    void Close() { FIsOpen = false; }
    bool IsOpen() const { return FIsOpen; }
    /// Called by InvokeCompletion. None: the call does nothing.
    void SetCompletion(std::function<void(int32_t style)> completion) { FCompletion = std::move(completion); }
    /// Undo and redo with the caret at the place of the change. False if there is nothing to do.
    bool Undo() { return GoTo(Text().Undo()); }
    bool Redo() { return GoTo(Text().Redo()); }

    // The exact caret, in bytes.
    int32_t CaretOffset() override { return FCaret.Offset(); }
    void SetCaretOffset(int32_t offset) override { FCaret.MoveTo(offset); }

    TNibEditPos CaretPos() override;
    void SetCaretPos(TNibEditPos position) override;
    // A place outside of the text is taken to its nearest place inside.
    TNibCharPos OffsetToCharPos(int32_t offset) override;
    int32_t CharPosToOffset(TNibCharPos position) override;
    TNibCharPos EditPosToCharPos(TNibEditPos position) override;
    TNibEditPos CharPosToEditPos(TNibCharPos position) override;
    TRef<INibEditBlock> Block() override;
    TRef<INibEditBuffer> Buffer() override { return FBuffer; }
    TRef<INibEditPosition> Position() override;
    void Repaint() override {}

    void InvokeCompletion(int32_t style) override {
        if (FCompletion) FCompletion(style);
    }

private:
    friend class TEditBlock;
    friend class TEditPosition;

    // Every Position() and Block() is another handle on these, since callers fetch
    // them anew between Save and Restore.
    struct TBlockMarks {
        TBlockMarks(TTextBuffer& buffer, int32_t start, int32_t end)
            : Start(buffer, start, TTextMark::msBefore), End(buffer, end, TTextMark::msBefore) {}
        TTextMark Start, End;
    };

    TNibEditPos EditPosAt(int32_t offset);
    bool GoTo(std::optional<int32_t> place);

    TRef<TEditBuffer> FBuffer;
    TTextMark FCaret;
    TBlockMarks FBlock;
    std::vector<std::unique_ptr<TTextMark>> FSavedCarets;
    std::vector<std::unique_ptr<TBlockMarks>> FSavedBlocks;
    std::function<void(int32_t)> FCompletion;
    bool FIsOpen = true;
};

}  // namespace caretwell
