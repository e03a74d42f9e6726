// Any keys on any page: nothing changes but the words at the caret; the caret stays in the
// text, lists stay whole, and undo takes everything back to the first byte, redo to the last.
#include <cstdio>
#include <cstdlib>

#include "Invariants.h"
#include "support/KeyRules.h"

using namespace caretwell;
using namespace caretwell::test;

namespace {

void Require(const char* what, bool holds) {
    if (holds) return;
    std::fprintf(stderr, "fault: %s\n", what);
    std::abort();
}

std::string Press(TDocument& document, uint8_t key) {
    constexpr TEditorKey named[] = {ekEnter,     ekTab,  ekEscape, ekUp,       ekDown,
                                    ekBackspace, ekLeft, ekRight,  ekCtrlSpace};
    if (key >= 1 && key <= std::size(named)) return PressAndJudge(document, named[key - 1]);
    // From 0xC0 on a character of two to four bytes.
    return TypeAndJudge(document, key < 0xC0 ? key : key * 0x2F1u);
}

constexpr const char* Names[] = {"page.html", "page.xsl", "page.aspx", "page.html"};

}  // namespace

/// Two bytes of the caret, one of options, keys up to a form feed, then the page.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 3) return 0;
    std::string_view rest(reinterpret_cast<const char*>(data) + 3, size - 3);
    std::string_view keys = rest.substr(0, rest.find('\f'));
    std::string page(rest.substr(std::min(keys.size() + 1, rest.size())));
    uint8_t options = data[2];

    THostOptions hostOptions;
    if (options & 4) hostOptions.Answers = {{"color", "#ff0000"}, {"uri", "logo.png"}};
    TTestHost host(std::move(hostOptions));
    host.OpenBytes(page, Names[options % 4]);
    TEditorDriver& driver = host.Driver();
    TTextBuffer& text = host.Document().Text();
    host.Manager().SetAutoQuote(options & 16);
    host.Document().View().SetCaretOffset(
        static_cast<int32_t>((data[0] * 256u + data[1]) % (page.size() + 1)));
    for (char key : keys) {
        std::string change = Press(host.Document(), static_cast<uint8_t>(key));
        Require(change.c_str(), change.empty());
        int32_t caret = host.Document().View().CaretOffset();
        Require("caret outside of the text", caret >= 0 && caret <= text.Size());
        Require("token outside of the text", !driver.IsOpen() || driver.FilterStart() <= caret);
        std::string fault = driver.IsOpen() ? FaultOfList(host, driver.Filter()) : std::string();
        Require(fault.c_str(), fault.empty());
    }
    driver.Dismiss();
    std::string typed = text.Text();
    while (driver.Undo()) continue;
    Require("text after undo", text.Text() == page);
    while (driver.Redo()) continue;
    Require("text after redo", text.Text() == typed);
    return 0;
}
