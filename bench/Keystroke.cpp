// From a key to the list on the screen, on pages of all sizes.
#include "bench/Measure.h"
#include "bench/PageGenerator.h"
#include "bench/Session.h"

namespace caretwell::bench {
namespace {

void AddSweep(benchmark::State& state, std::string_view text) {
    SetYardstick(state, ByteSwitch, TimeSweep(SweepBySwitch, text));
}

// "<" in the text of the page; what was typed goes again before the next one.
void TypeTag(benchmark::State& state, const TPage& page, size_t caret) {
    TSession session;
    TEditorDriver& driver = session.Open(page.Text, "page.html", caret).Driver();
    auto type = [&driver] {
        driver.TypeChar('<');
        return driver.IsOpen() && ReadScreen(driver) > 0;
    };
    bool isShown = type();
    driver.Undo();
    for (auto _ : state) {
        {
            TLap lap(state);
            isShown = type() && isShown;
        }
        driver.Undo();
    }
    if (!isShown) state.SkipWithError("no list");
    AddSweep(state, page.Text);
}

// The user's request among the attributes of a link.
void AskForAttributes(benchmark::State& state, const TPage& page) {
    TSession session;
    size_t caret = FindInMiddle(page.Text, "<a ", true);
    TEditorDriver& driver = session.Open(page.Text, "page.html", caret).Driver();
    auto ask = [&driver] { return driver.OpenList() && ReadScreen(driver) > 0; };
    bool isShown = ask();
    driver.Dismiss();
    for (auto _ : state) {
        {
            TLap lap(state);
            isShown = ask() && isShown;
        }
        driver.Dismiss();
    }
    if (!isShown) state.SkipWithError("no list");
    AddSweep(state, page.Text);
}

// A letter while the list is open only moves its range.
void FilterList(benchmark::State& state, const TPage& page) {
    TSession session;
    TEditorDriver& driver = session.Open(page.Text, "page.html", FindInMiddle(page.Text, "</p>")).Driver();
    driver.TypeChar('<');
    bool isShown = true;
    for (auto _ : state) {
        {
            TLap lap(state);
            driver.TypeChar('d');
            isShown = driver.IsOpen() && ReadScreen(driver) > 0 && isShown;
        }
        driver.PressKey(ekBackspace);
    }
    if (!isShown) state.SkipWithError("no list");
}

struct TSize {
    size_t Bytes;
    const char* Name;
    double Mark;
    const char* People;
};
constexpr TSize Sizes[] = {{10'000, "10 KB", 0, ""},
                           {100'000, "100 KB", 0.6, "18 ms"},
                           {1'000'000, "1 MB", 4, "156 ms"},
                           {10'000'000, "10 MB", 0, ""}};

}  // namespace

void RegisterKeystrokes() {
    TWork work{.Group = "keystroke to list"};
    for (const TSize& size : Sizes) {
        size_t bytes = size.Bytes;
        size_t tags = MakePage(pkTagDense, bytes).Tags;
        std::string what = std::string(" page of ") + size.Name + ", " + std::to_string(tags) + " tags";
        work.Mark = size.Mark;
        work.People = size.People;
        work.Name = "'<' in a" + what;
        Measure(work, [bytes](benchmark::State& state) {
            TPage page = MakePage(pkTagDense, bytes);
            TypeTag(state, page, FindInMiddle(page.Text, "</p>"));
        });
        work.Name = "attributes in a" + what;
        Measure(work,
                [bytes](benchmark::State& state) { AskForAttributes(state, MakePage(pkTagDense, bytes)); });
    }
    TWork others{.Group = work.Group, .Name = "'<' in a text-heavy page of 1 MB"};
    Measure(others, [](benchmark::State& state) {
        TPage page = MakePage(pkTextHeavy, 1'000'000);
        TypeTag(state, page, FindInMiddle(page.Text, "</p>"));
    });
    others.Name = "'<' under 10,000 open tags";
    Measure(others, [](benchmark::State& state) {
        TPage page = MakeOpenTags(10'000);
        TypeTag(state, page, page.Text.size());
    });
    others.Name = "the next letter, page of 1 MB";
    Measure(others, [](benchmark::State& state) { FilterList(state, MakePage(pkTagDense, 1'000'000)); });
}

}  // namespace caretwell::bench
