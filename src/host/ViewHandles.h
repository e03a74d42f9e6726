// The handles of a view, which a host promises never to be null. One that is null all the
// same ends the call under way like any other failure of the host.
#pragma once

#include <stdexcept>

#include "host/Nibapi.h"

namespace caretwell {

inline TRef<INibEditPosition> PositionOf(INibEditView& view) {
    auto position = view.Position();
    if (!position) throw std::runtime_error("The edit view has no position");
    return position;
}

inline TRef<INibEditBlock> BlockOf(INibEditView& view) {
    auto block = view.Block();
    if (!block) throw std::runtime_error("The edit view has no block");
    return block;
}

}  // namespace caretwell
