// The kinds of region that a place of a document may stand in. New kinds go to the end: the
// numbers are known to hosts.
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
    pcCDATA,
    pcInternalSubset,
};
using TParserContext = TFlags<TParserContexts, uint16_t>;

}  // namespace caretwell
