// The bare scan: TMLParser over a page of 1 MB, with nothing behind it but the table.
#include <istream>
#include <streambuf>

#include "bench/Measure.h"
#include "bench/PageGenerator.h"
#include "bench/Session.h"

namespace caretwell::bench {
namespace {

constexpr size_t PageSize = 1'000'000;

struct TCaret {
    const char* Name;
    size_t Offset;
};
constexpr TCaret Carets[] = {{"end", PageSize}, {"middle", PageSize / 2}, {"start", 0}};

// A stream over bytes that stay where they are; a string stream would copy them.
class TMemoryStream final : std::streambuf, public std::istream {
public:
    explicit TMemoryStream(std::string& text) : std::istream(this) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    std::streambuf::pos_type seekoff(std::streambuf::off_type offset, std::ios_base::seekdir from,
                                     std::ios_base::openmode) override {
        char* base = from == std::ios_base::beg ? eback() : from == std::ios_base::cur ? gptr() : egptr();
        setg(eback(), base + offset, egptr());
        return gptr() - eback();
    }
    std::streambuf::pos_type seekpos(std::streambuf::pos_type place, std::ios_base::openmode mode) override {
        return seekoff(place, std::ios_base::beg, mode);
    }
};

void AddSweeps(benchmark::State& state, std::string_view text) {
    state.counters[BytesCounter] = static_cast<double>(text.size());
    SetYardstick(state, ByteSwitch, TimeSweep(SweepBySwitch, text));
    SetYardstick(state, "memchr", TimeSweep(SweepByMemchr, text));
}

void ScanView(benchmark::State& state, TPageKind kind, size_t caret) {
    TPage page = MakePage(kind, PageSize);
    TSession session;
    TRef<INibEditView> view = &session.Open(page.Text, "page.html", caret).View();
    auto scan = [&] {
        session.Parser().Parse(view->CaretPos(), MakeRef<TMLBufferProducer>(view, 0), nullptr);
    };
    scan();  // reads the schema
    for (auto _ : state) {
        TLap lap(state);
        scan();
    }
    AddSweeps(state, page.Text);
}

void ScanStream(benchmark::State& state, TPageKind kind) {
    TPage page = MakePage(kind, PageSize);
    TSession session;
    TNibEditPos caret = session.Open(page.Text, "page.html", PageSize).View().CaretPos();
    auto scan = [&] {
        TMemoryStream stream(page.Text);
        session.Parser().Parse(caret, MakeRef<TMLBufferProducer>(stream, "page.html", 0), nullptr);
    };
    scan();
    for (auto _ : state) {
        TLap lap(state);
        scan();
    }
    AddSweeps(state, page.Text);
}

}  // namespace

void RegisterScans() {
    struct TKind {
        TPageKind Kind;
        const char* Name;
        double Mark, SwitchShare;
        const char* People;
    };
    for (const TKind& row : {TKind{pkTagDense, "tag-dense", 400, 0.5, "20 to 60"},
                             TKind{pkTextHeavy, "text-heavy", 2000, 0, "90 to 160"}}) {
        TWork work{.Group = std::string("scan of a ") + row.Name + " page of 1 MB",
                   .Unit = tuMegabytesPerSecond,
                   .Mark = row.Mark,
                   .SwitchShare = row.SwitchShare,
                   .People = row.People};
        TPageKind kind = row.Kind;
        for (const TCaret& caret : Carets) {
            work.Name = std::string("a view, caret at the ") + caret.Name;
            Measure(work, [kind, caret](benchmark::State& state) { ScanView(state, kind, caret.Offset); });
        }
        work.Name = "a stream, caret at the end";
        Measure(work, [kind](benchmark::State& state) { ScanStream(state, kind); });
    }
}

}  // namespace caretwell::bench
