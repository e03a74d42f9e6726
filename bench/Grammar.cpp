// What may stand exactly at a caret, on top of the scan; and compiling all models of a schema.
#include <filesystem>

#include "bench/Measure.h"
#include "bench/PageGenerator.h"
#include "bench/Session.h"
#include "grammar/DTDGrammar.h"
#include "grammar/XSDGrammar.h"
#include "schema/DTDParser.h"
#include "symbols/XSDLoader.h"

namespace caretwell::bench {
namespace {

constexpr const char* DocBook = "/usr/share/xml/docbook/schema/xsd/5.0/";

/// A page with the caret at its end, so that every tag is walked over.
class TWatchedPage {
public:
    explicit TWatchedPage(size_t bytes, bool isWatched) : FPage(MakePage(pkTagDense, bytes)) {
        FDocument = &FSession.Open(FPage.Text, "page.html", FPage.Text.size());
        FManager = MarkupLanguageManager();
        FGrammar = QueryAs<INibGrammar>(FManager);
        FGrammar->SetWatching(isWatched);
        Parse();
    }
    void Parse() {
        TRef<INibEditView> view(&FDocument->View());
        FManager->Parse(view->CaretPos(), MakeRef<TMLBufferProducer>(view, 0), nullptr);
    }
    bool Ask() {
        TGrammarAnswer answer;
        return FGrammar->GetAnswer(answer);
    }
    const std::string& Text() const { return FPage.Text; }

private:
    TSession FSession;
    TPage FPage;
    TDocument* FDocument;
    TRef<INibMLCodeInsightManager> FManager;
    TRef<INibGrammar> FGrammar;
};

void WalkPage(benchmark::State& state, size_t bytes) {
    TWatchedPage page(bytes, true);
    bool isAnswered = page.Ask();
    for (auto _ : state) {
        TLap lap(state);
        isAnswered = page.Ask() && isAnswered;
    }
    if (!isAnswered) state.SkipWithError("no answer");
    SetYardstick(state, ByteSwitch, TimeSweep(SweepBySwitch, page.Text()));
}

void ParsePage(benchmark::State& state, size_t bytes, bool isWatched) {
    TWatchedPage page(bytes, isWatched);
    for (auto _ : state) {
        TLap lap(state);
        page.Parse();
    }
    SetYardstick(state, ByteSwitch, TimeSweep(SweepBySwitch, page.Text()));
}

/// Every declaration with the first state of its model.
size_t CompileAll(TGrammar& grammar) {
    size_t moves = 0;
    for (TElementId id = 0; id < grammar.GetElementCount(); ++id)
        moves += grammar.Models().GetMoves(grammar.Get(id).Start).size();
    return moves;
}

template <class TMake>
void Compile(benchmark::State& state, TMake make) {
    size_t moves = 1;
    for (auto _ : state) {
        TLap lap(state);
        moves = CompileAll(*make());
    }
    if (!moves) state.SkipWithError("nothing was compiled");
}

void CompileDTD(benchmark::State& state) {
    TSession session;
    TDTDParser parser;
    parser.LoadFromFile(SchemaFolder() + "loose.dtd");
    Compile(state, [&] { return std::make_unique<TDTDGrammar>(parser); });
}

void CompileXSD(benchmark::State& state) {
    TSession session(DocBook);
    auto plan = TXSDLoader(MLSymbolManager()).GetPlan(std::string(DocBook) + "docbook.xsd");
    Compile(state, [&] { return std::make_unique<TXSDGrammar>(plan); });
}

struct TSize {
    size_t Bytes;
    const char* Name;
    double Mark;
};
constexpr TSize Sizes[] = {{100'000, "100 KB", 0.3}, {1'000'000, "1 MB", 3}};

}  // namespace

void RegisterGrammar() {
    const std::string group = "what may stand exactly here";
    for (const TSize& size : Sizes) {
        size_t bytes = size.Bytes;
        std::string page = std::string("page of ") + size.Name;
        Measure({.Group = group, .Name = "walk and answer, " + page, .Mark = size.Mark},
                [bytes](benchmark::State& state) { WalkPage(state, bytes); });
        Measure({.Group = group, .Name = "parse, " + page},
                [bytes](benchmark::State& state) { ParsePage(state, bytes, false); });
        Measure({.Group = group, .Name = "parse that notes the tags, " + page},
                [bytes](benchmark::State& state) { ParsePage(state, bytes, true); });
    }
    Measure({.Group = group, .Name = "all models of loose.dtd", .Mark = 1}, CompileDTD);
    if (std::filesystem::exists(std::string(DocBook) + "docbook.xsd"))
        Measure({.Group = group, .Name = "all models of docbook.xsd", .Mark = 5}, CompileXSD);
}

}  // namespace caretwell::bench
