// The sets of characters by which the text around the caret is read.
#pragma once

#include "markup/Text.h"

namespace caretwell::tokenchars {

/// A name, and what the list is filtered on.
inline constexpr TCharSet Token = NameChars;
/// What may be typed of a tag up to its name.
inline constexpr TCharSet TagRun = Token.With("%/<@");
inline constexpr TCharSet EntityRun = Token.With(";");

}  // namespace caretwell::tokenchars
