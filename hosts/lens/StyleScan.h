// Follows style text up to the caret: which block, which declaration, which part of it.
#pragma once

#include <string_view>

#include "lens/Lens.h"

namespace caretwell {

/// Where the caret stands. Offsets count from the start of the style text.
struct TStyleCaret {
    TLensPlace FPlace = lpOutside;
    size_t FBlock = 0;      ///< first byte of the block's content
    size_t FStatement = 0;  ///< first byte of the statement, white space and comments passed over
    size_t FColon = std::string_view::npos;  ///< the declaration's colon; none before a value
    bool FIsWordless = false;                ///< in a function that takes no word of the property
};

/// inBlock: the text is the inside of a block already, as in an attribute. caret is
/// at most the text's length.
TStyleCaret ScanStyle(std::string_view text, size_t caret, bool inBlock);

/// One step over the text at a place, as a whole over what hides its inside.
struct TStyleStep {
    size_t FEnd;             ///< after the thing, at least one byte further
    TLensPlace FInside;      ///< where a caret inside it stands; lpNone if it has no inside
    bool FUnclosed = false;  ///< its end is no closing mark: a caret there is inside still
};
TStyleStep StepOver(std::string_view text, size_t at);

/// First byte from at on (at most end) that is neither white space nor a comment.
size_t SkipBlank(std::string_view text, size_t at, size_t end);

constexpr bool IsStyleSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsStyleLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr bool IsStyleDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsStyleWord(char c) { return IsStyleLetter(c) || IsStyleDigit(c) || c == '-'; }

/// Compares without regard to the case of the letters a to z; lower is in small letters.
bool SameWord(std::string_view text, std::string_view lower);

}  // namespace caretwell
