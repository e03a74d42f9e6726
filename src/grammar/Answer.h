// From a walk to the answer at its end.
#pragma once

#include "grammar/GrammarAnswer.h"
#include "grammar/Walk.h"

namespace caretwell {

/// Rows of the log from `after` on stand after the caret.
TGrammarAnswer Answer(TWalk& walk, const TTagLog& log, size_t after);

}  // namespace caretwell
