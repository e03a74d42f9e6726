// A view through the lens: what the style sheet manager reads is the lens's text, what
// it writes goes to the real document. Made for any host:
//
//     view = MakeRef<TLensView>(view, lkMarkup);   // where CurrentEditView answers
//
// Made for one request: the text is taken at the first read and kept.
#pragma once

#include <memory>

#include "host/Nibapi.h"
#include "lens/Lens.h"

namespace caretwell {

class TLensView final : public TImplements<INibEditView> {
public:
    /// view must not be null; it is held.
    TLensView(TRef<INibEditView> view, TLensKind kind) : FView(std::move(view)), FKind(kind) {}

    /// The document as the lens shows it for the view's caret. A document that cannot be read is empty.
    const TLensText& LensText();

    /// Interfaces beside the view's own (offsets, actions) are those of the real view.
    bool Query(const TGuid& id, void** out) noexcept override {
        return TImplements::Query(id, out) || FView->Query(id, out);
    }

    TNibEditPos CaretPos() override { return FView->CaretPos(); }
    void SetCaretPos(TNibEditPos position) override { FView->SetCaretPos(position); }
    TNibCharPos OffsetToCharPos(int32_t offset) override { return FView->OffsetToCharPos(offset); }
    int32_t CharPosToOffset(TNibCharPos position) override { return FView->CharPosToOffset(position); }
    TNibCharPos EditPosToCharPos(TNibEditPos position) override { return FView->EditPosToCharPos(position); }
    TNibEditPos CharPosToEditPos(TNibCharPos position) override { return FView->CharPosToEditPos(position); }
    TRef<INibEditBlock> Block() override { return FView->Block(); }
    TRef<INibEditBuffer> Buffer() override;
    TRef<INibEditPosition> Position() override { return FView->Position(); }
    void Repaint() override { FView->Repaint(); }

private:
    TRef<INibEditView> FView;
    TLensKind FKind;
    std::shared_ptr<const TLensText> FText;
};

}  // namespace caretwell
