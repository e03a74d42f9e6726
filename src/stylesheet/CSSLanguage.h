// How a host reaches the style sheet manager, which it talks to as to any other.
#pragma once

#include "caretwell/host/Nibapi.h"

namespace caretwell {

/// The manager of the process, made at the first call. Null off the main thread.
CARETWELL_API TRef<INibCodeInsightManager> CSSLanguageManager();

}  // namespace caretwell
