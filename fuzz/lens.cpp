// Any bytes with any caret: the lens keeps length and line breaks, and hands out no zero byte.
#include "lens/Lens.h"

#include <cstdint>
#include <cstdlib>

using namespace caretwell;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 3) return 0;
    const std::string_view document(reinterpret_cast<const char*>(data) + 3, size - 3);
    const size_t caret = document.empty() ? 0 : (data[1] * 256u + data[2]) % (document.size() + 1);
    const auto look = LookThrough(document, data[0] & 1 ? lkMarkup : lkStyleSheet, caret);
    if (look.FText.size() != document.size()) std::abort();
    for (size_t i = 0; i < document.size(); ++i) {
        const char was = document[i], is = look.FText[i];
        if ((was == '\n') != (is == '\n') || (was == '\r') != (is == '\r') || is == '\0') std::abort();
    }
    return 0;
}
