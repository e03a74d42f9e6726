// Any bytes as a document with any caret: the parse and its list keep within the text,
// and a host that has seen another caret before says the same as one that has not.
#include <cstdio>
#include <cstdlib>

#include "Invariants.h"

using namespace caretwell;
using namespace caretwell::test;

namespace {

void Require(const std::string& fault) {
    if (fault.empty()) return;
    std::fprintf(stderr, "fault: %s\n", fault.c_str());
    std::abort();
}

constexpr const char* Names[] = {"page.html", "page.xsl", "page.aspx", "page.ascx", "page.wml", "page.resx"};

/// What observers are told lies in the text and comes in order.
class TSpans final : public TImplements<INibMLElementCallback> {
public:
    explicit TSpans(int32_t size) : FSize(size) {}
    void ElementParsed(void*, INibMLMarkupPos* element, TTagType, int32_t start, int32_t end,
                       bool&) override {
        if (!element) Require("report of nothing");
        if (start < 0 || start > end + 1 || end > FSize) Require("span of a report");
        // The text of a tag that was never ended comes after its attributes.
        if (end + 1 < FLast) Require("order of reports");
        FLast = end;
    }
    void Invalidate() override { FLast = -1; }

private:
    int32_t FSize, FLast = -1;
};

/// Opens the list at a caret and tries what can be done with it. The outcome.
std::string Visit(TTestHost& host, int32_t caret, char16_t trigger, bool isChecked) {
    TEditorDriver& driver = host.Driver();
    host.Document().View().SetCaretOffset(caret);
    if (trigger) driver.OpenListFor(trigger);
    else driver.OpenList();
    std::string outcome = Outcome(host);
    // Typing aids have changed the text since the parse.
    if (isChecked && !host.Document().Text().CanUndo()) Require(FaultOfParse(host));
    if (isChecked && driver.IsOpen()) Require(FaultOfList(host, driver.Filter()));
    int32_t size = host.Document().Text().Size();
    for (int32_t i = 0; isChecked && i < driver.ItemCount(); i += 7)
        for (char16_t key : {u'\0', u' ', u'>'}) Require(FaultOfEdit(host.Manager(), i, key, size));
    driver.Dismiss();
    while (driver.Undo()) continue;
    return outcome;
}

}  // namespace

/// Two bytes each of two carets, one of options, then the document.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 5) return 0;
    std::string text(reinterpret_cast<const char*>(data) + 5, size - 5);
    auto caretAt = [&](int i) {
        return static_cast<int32_t>((data[i] * 256u + data[i + 1]) % (text.size() + 1));
    };
    constexpr char16_t triggers[] = {0, 0, 0, u'<', u'>', u'=', u'&', 0};
    const char* name = Names[data[4] % 6];
    char16_t trigger = triggers[data[4] / 6 % 8];
    bool isAutoQuoted = data[4] & 0x80;

    std::string fresh;
    {
        TTestHost host{THostOptions()};
        host.OpenBytes(text, name);
        host.Manager().SetAutoQuote(isAutoQuoted);
        fresh = Visit(host, caretAt(0), trigger, true);
        auto spans = MakeRef<TSpans>(static_cast<int32_t>(text.size()));
        host.Parser().AddCallback(spans.Get());
        host.Parse();
        host.Parser().RemoveCallback(spans.Get());
    }
    TTestHost host{THostOptions()};
    host.OpenBytes(text, name);
    host.Manager().SetAutoQuote(isAutoQuoted);
    Visit(host, caretAt(2), 0, false);
    std::string again = Visit(host, caretAt(0), trigger, false);
    if (again != fresh) Require("trace of an earlier caret:\n" + fresh + "\n---\n" + again);
    if (host.Document().Text().Text() != text) Require("text after undo");
    return 0;
}
