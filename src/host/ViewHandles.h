// The handles of a view, which a host promises never to be null. One that is null all the
// same ends the call under way like any other failure of the host.
#pragma once

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "host/Nibapi.h"

namespace caretwell {

inline TRef<INibEditPosition> PositionOf(INibEditView& view) {
    auto position = view.Position();
    if (!position) throw std::runtime_error("The edit view has no position");
    return position;
}

/// Byte offset of the caret, exactly where the view can tell it. Whatever the view says, it
/// lies so that a text may be added to it.
inline int32_t CaretOffsetOf(INibEditView& view) {
    constexpr int32_t Last = std::numeric_limits<int32_t>::max() - (1 << 24);
    auto exact = QueryAs<INibOffsetView>(&view);
    int32_t offset =
        exact ? exact->CaretOffset() : view.CharPosToOffset(view.EditPosToCharPos(view.CaretPos()));
    return std::clamp(offset, 0, Last);
}

inline TRef<INibEditBlock> BlockOf(INibEditView& view) {
    auto block = view.Block();
    if (!block) throw std::runtime_error("The edit view has no block");
    return block;
}

}  // namespace caretwell
