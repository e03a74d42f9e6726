// The kinds of region that a place of a document may stand in.
#pragma once

#include <cstdint>

#include "caretwell/markup/MLParserUtils.h"

namespace caretwell {

enum TParserContexts : uint16_t {
    pcNone,
    pcHTMLComment,
    pcStyle,
    pcScript,
    pcProcessingInstruction,
    pcServerSideScript,
    pcString,
    pcAspComment,
    pcElement,
};
using TParserContext = TFlags<TParserContexts, uint16_t>;

}  // namespace caretwell
