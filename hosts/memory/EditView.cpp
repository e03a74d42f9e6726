#include "memory/EditView.h"

#include <algorithm>

#include "memory/EditPosition.h"

namespace caretwell {
namespace {

constexpr int16_t ToInt16(int32_t value) {
    return static_cast<int16_t>(std::clamp<int32_t>(value, 0, INT16_MAX));
}

}  // namespace

TEditView::TEditView(TRef<TEditBuffer> buffer)
    : FBuffer(std::move(buffer)), FCaret(Text(), 0, TTextMark::msBehind), FBlock(Text(), 0, 0) {}

TNibEditPos TEditView::EditPosAt(int32_t offset) {
    return {ToInt16(Text().ColumnAt(offset)), Text().LineAt(offset)};
}

TNibEditPos TEditView::CaretPos() { return EditPosAt(FCaret.Offset()); }

void TEditView::SetCaretPos(TNibEditPos position) {
    FCaret.MoveTo(Text().OffsetOf(position.Line, position.Col));
}

TNibCharPos TEditView::OffsetToCharPos(int32_t offset) {
    int32_t place = std::clamp(offset, 0, Text().Size());
    return {ToInt16(place - Text().LineStartAt(place)), Text().LineAt(place)};
}

int32_t TEditView::CharPosToOffset(TNibCharPos position) {
    int32_t start = Text().LineStart(position.Line);
    int32_t end = Text().LineEndAt(start);
    return start + std::clamp<int32_t>(position.CharIndex, 0, end - start);
}

TNibCharPos TEditView::EditPosToCharPos(TNibEditPos position) {
    return OffsetToCharPos(Text().OffsetOf(position.Line, position.Col));
}

TNibEditPos TEditView::CharPosToEditPos(TNibCharPos position) { return EditPosAt(CharPosToOffset(position)); }

TRef<INibEditBlock> TEditView::Block() { return MakeRef<TEditBlock>(TRef<TEditView>(this)); }

TRef<INibEditPosition> TEditView::Position() { return MakeRef<TEditPosition>(TRef<TEditView>(this)); }

bool TEditView::GoTo(std::optional<int32_t> place) {
    if (place) FCaret.MoveTo(*place);
    return place.has_value();
}

}  // namespace caretwell
