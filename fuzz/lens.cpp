// Any bytes with any caret: the lens keeps length and line breaks and hands out no zero
// byte, and the parser then finds what the lens says.
#include "lens/Lens.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "markup/MLBufferProducer.h"
#include "stylesheet/CSSParser.h"

using namespace caretwell;

namespace {

TKibitzPos Parse(const std::string& text, size_t caret) {
    static TStyleSheetParser parser;
    std::istringstream stream(text);
    parser.SetBufferAndPoint(MakeRef<TMLBufferProducer>(stream, "a.css", 0), static_cast<int32_t>(caret));
    parser.Parse();
    return parser.FKibitzPos;
}

void Check(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 3) return 0;
    const std::string_view document(reinterpret_cast<const char*>(data) + 3, size - 3);
    const size_t caret = (data[1] * 256u + data[2]) % (document.size() + 1);
    const auto look = LookThrough(document, data[0] & 1 ? lkMarkup : lkStyleSheet, caret);
    Check(look.FText.size() == document.size());
    for (size_t i = 0; i < document.size(); ++i) {
        const char was = document[i], is = look.FText[i];
        Check((was == '\n') == (is == '\n') && (was == '\r') == (is == '\r') && is != '\0');
    }
    // Without room for a rule in front of the caret there is no list.
    const auto position = Parse(look.FText, caret);
    const bool hasRule = look.FText.find('{') < caret;
    if (look.FPlace == lpName) Check(position == kpProperty || !hasRule);
    else if (look.FPlace == lpValue) Check(position == kpExpr || !hasRule);
    else Check(position != kpProperty);
    return 0;
}
