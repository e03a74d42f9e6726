// Style sheets: values and properties at the end of the sheet, where all of it lies before
// the caret. Through the lens, as the command sees them, and plain.
#include "bench/Measure.h"
#include "bench/PageGenerator.h"
#include "bench/Session.h"

namespace caretwell::bench {
namespace {

struct TPlace {
    const char* Name;
    std::string_view Behind;  // text that the caret stands behind
    char Key;                 // typed there; 0: the user's request
};
constexpr TPlace ValuePlace = {"':'", "p.last {\n  color", ':'};
constexpr TPlace NamePlace = {"properties", "p.last {\n  ", 0};

void AskInSheet(benchmark::State& state, TSheetKind kind, size_t bytes, bool usesLens, TPlace place) {
    TPage sheet = MakeSheet(kind, bytes);
    TSession session(SchemaFolder(), usesLens);
    size_t caret = sheet.Text.rfind(place.Behind) + place.Behind.size();
    if (place.Key) sheet.Text.erase(caret, 1);  // the key puts it back
    TEditorDriver& driver = session.Open(sheet.Text, "sheet.css", caret).Driver();
    bool isShown = true;
    for (auto _ : state) {
        {
            TLap lap(state);
            if (place.Key) driver.TypeChar(static_cast<unsigned char>(place.Key));
            else driver.OpenList();
            isShown = driver.IsOpen() && ReadScreen(driver) > 0 && isShown;
        }
        if (place.Key) driver.Undo();
        else driver.Dismiss();
    }
    if (!isShown) state.SkipWithError("no list");
    SetYardstick(state, ByteSwitch, TimeSweep(SweepBySwitch, sheet.Text));
}

struct TSize {
    size_t Bytes;
    const char* Name;
    double Mark;
    const char* People;
};
constexpr TSize Sizes[] = {
    {10'000, "10 KB", 0, ""}, {100'000, "100 KB", 0.6, ""}, {1'000'000, "1 MB", 5, "1,000 ms"}};

}  // namespace

void RegisterSheets() {
    struct TWay {
        TSheetKind Kind;
        bool UsesLens;
        TPlace Place;
        const char* Name;
    };
    static constexpr TWay ways[] = {
        {skToday, true, ValuePlace, ", sheet of today through the lens"},
        {skPlain, true, ValuePlace, ", plain sheet through the lens"},
        {skPlain, false, ValuePlace, ", plain sheet without lens"},
        {skToday, true, NamePlace, ", sheet of today through the lens"},
    };
    for (const TSize& size : Sizes)
        for (const TWay& way : ways)
            Measure({.Group = "keystroke to list, style sheet",
                     .Name = std::string(size.Name) + ", " + way.Place.Name + way.Name,
                     .Mark = size.Mark,
                     .People = size.People},
                    [way, size](benchmark::State& state) {
                        AskInSheet(state, way.Kind, size.Bytes, way.UsesLens, way.Place);
                    });
}

}  // namespace caretwell::bench
