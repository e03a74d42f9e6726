// From the key that closes a list to the text that it writes, the list that opens behind it
// included: a blank behind an element writes its name and offers its attributes.
#include "bench/Measure.h"
#include "bench/PageGenerator.h"
#include "bench/Session.h"

namespace caretwell::bench {
namespace {

struct TChoice {
    std::string Name;
    std::string Before;   // text of the page in front of which the caret stands
    std::string Typed;    // opens the list
    std::u16string Item;  // is chosen in it; empty: the one that was typed
    char32_t Key;
    bool Reopens;
};

const TChoice Choices[] = {
    {"'img' by a blank, attributes offered", "</p>", "<", u"img", ' ', true},
    {"'type' by '=', values offered", "</p>", "<input type", u"", '=', true},
    {"'span' by Enter", "</p>", "<", u"span", 13, false},
};

void Choose(benchmark::State& state, const TChoice& choice) {
    TPage page = MakePage(pkTagDense, 100'000);
    TSession session;
    TDocument& document = session.Open(page.Text, "page.html", FindInMiddle(page.Text, choice.Before));
    TEditorDriver& driver = document.Driver();
    bool isWritten = true;
    for (auto _ : state) {
        uint64_t revision = document.Text().Revision();
        for (char c : choice.Typed) driver.TypeChar(static_cast<unsigned char>(c));
        isWritten = driver.IsOpen() && (choice.Item.empty() || driver.Select(choice.Item)) && isWritten;
        uint64_t typed = document.Text().Revision();
        {
            TLap lap(state);
            driver.TypeChar(choice.Key);
            if (choice.Reopens) isWritten = driver.IsOpen() && ReadScreen(driver) > 0 && isWritten;
        }
        isWritten = document.Text().Revision() > typed && typed > revision && isWritten;
        while (document.Text().Size() != static_cast<int32_t>(page.Text.size()) && driver.Undo()) {
        }
    }
    if (!isWritten) state.SkipWithError("nothing written, or no list behind it");
    SetYardstick(state, ByteSwitch, TimeSweep(SweepBySwitch, page.Text));
}

}  // namespace

void RegisterChoices() {
    for (const TChoice& choice : Choices)
        Measure({.Group = "key to written text, page of 100 KB", .Name = choice.Name, .Mark = 1},
                [choice](benchmark::State& state) { Choose(state, choice); });
}

}  // namespace caretwell::bench
