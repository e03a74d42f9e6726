// What the files of TStyleSheetParser share.
#pragma once

#include "stylesheet/CSSParser.h"

namespace caretwell {

inline void TStyleSheetParser::Note(TKibitzPos position) {
    if (FKibitzPos != kpNone) return;
    FKibitzPos = position;
    FIsInFunction = FFunctionDepth > 0;
}

/// True at the caret, which is noted then.
inline bool TStyleSheetParser::NoteCaret(TKibitzPos position) {
    if (FToken != toCaret) return false;
    Note(position);
    return true;
}

/// Steps over the token if it is the current one.
inline bool TStyleSheetParser::TakeToken(TStyleSheetToken token) {
    if (FToken != token) return false;
    GetToken();
    return true;
}

}  // namespace caretwell
