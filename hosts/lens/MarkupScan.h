// Finds style text in a page: the style element or style attribute around a caret.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace caretwell {

struct TStyleSpan {
    size_t FStart;    ///< first byte of the style text
    size_t FEnd;      ///< after its last byte; the document's end if it is not closed before the caret
    bool FAttribute;  ///< the value of an attribute, so the inside of a block
};

/// The style text that the caret stands in or at an end of; none in other text, in
/// comments, scripts and server code.
std::optional<TStyleSpan> FindStyleText(std::string_view page, size_t caret);

/// A piece of a page's style text as a style sheet's scan may read it, of the same
/// length: character references as the character (an attribute only), server code as a word.
std::string PlainStyleText(std::string_view piece, bool attribute);

}  // namespace caretwell
