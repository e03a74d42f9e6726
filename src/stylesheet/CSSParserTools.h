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

template <class T>
T* TStyleSheetParser::NewNode() {
    T* node = FPool.Make<T>();
    node->FNext = FKibitzNode;
    FKibitzNode = node;
    return node;
}

/// Text of the current token, which is stepped over.
inline std::string_view TStyleSheetParser::TakeText() {
    std::string_view text = KeepText();
    GetToken();
    return text;
}

/// Steps over the token if it is the current one.
inline bool TStyleSheetParser::TakeToken(TStyleSheetToken token) {
    if (FToken != token) return false;
    GetToken();
    return true;
}

}  // namespace caretwell
