// Which text a command works on and where in it:  FILE:LINE:COLUMN, or a mark in the text.
#pragma once

#include <string>

#include "cli/Arguments.h"
#include "memory/TextBuffer.h"

namespace caretwell {

/// A text with the name that it goes by.
struct TSource {
    std::string FileName;
    std::string Text;
    bool IsInput = false;  ///< from standard input
};

/// A place as people say it: both from 1, the column in characters. A byte order mark
/// is no character.
struct TLinePlace {
    int32_t Line = 1;
    int32_t Column = 1;
};

struct TPlace {
    TSource Source;      ///< without the mark
    int32_t Offset = 0;  ///< in bytes
};

/// FILE, or "-" for standard input. Raises TFailure if it cannot be read.
TSource ReadSource(const TArguments& arguments, const std::string& file);

/// Reads the place that the call names. Raises TFailure if the words are off, the file
/// cannot be read or the text has no such place.
TPlace ReadPlace(const TArguments& arguments);

TLinePlace LinePlaceAt(const TTextBuffer& text, int32_t offset);

}  // namespace caretwell
