// Asks the grammar at every tag of real documents.
//
//     grammar_check [--schemas FOLDER] [--map .EXT=SCHEMA]... [--dtd FILE] [--xml] [--sets] [--show N]
//     FILE...
//
// In a valid document each element that starts may start there, and each that ends may end
// there: what is not in the answer is shown, up to N (10) of a file. With --dtd the definition
// counts, whatever the document names. With --sets a line for each place, for a judge: offset,
// the path of open elements, the children before the place, and what may start there.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "cli/Engine.h"
#include "cli/Failure.h"
#include "grammar/Answer.h"
#include "grammar/DTDGrammar.h"
#include "grammar/SchemaGrammars.h"
#include "markup/Text.h"
#include "parser/MLParser.h"
#include "schema/DTDParser.h"

using namespace caretwell;

namespace {

struct TOptions {
    TEngineOptions Engine;
    std::string DTD;
    bool IsXML = false, ShowsSets = false;
    int Shown = 10;
    std::vector<std::string> Files;
};

struct TCounts {
    int Files = 0, Starts = 0, Started = 0, Ends = 0, Ended = 0, Exact = 0;
};

bool HasName(const std::vector<std::string>& names, const std::string& name, bool isXML) {
    for (const std::string& known : names)
        if (known == name || (!isXML && SameText(std::string_view(known), std::string_view(name))))
            return true;
    return false;
}

class TCheck {
public:
    TCheck(const TOptions& options, std::string file, TWalk& walk, const TTagLog& log, bool isXML,
           TCounts& counts)
        : FOptions(options), FFile(std::move(file)), FWalk(walk), FLog(log), FIsXML(isXML), FCounts(counts) {}

    void Run() {
        FWalk.ForgetNames();
        FWalk.Begin(FLog, FIsXML, NoName);
        for (size_t i = 0; i < FLog.GetRows().size(); ++i) {
            const TTagLog::TRow& row = FLog.GetRows()[i];
            if (row.Kind != TTagLog::TKind::Empty) Ask(row, i);
            FWalk.Read(FLog, i, i + 1);
        }
    }

private:
    void Ask(const TTagLog::TRow& row, size_t index) {
        const std::string& name = FLog.GetName(row.Name);
        TGrammarAnswer answer = Answer(FWalk, FLog, index);
        if (row.Kind == TTagLog::TKind::Opening) {
            bool isFound = HasName(answer.Now, name, FIsXML);
            ++FCounts.Starts;
            FCounts.Started += isFound;
            FCounts.Exact += answer.IsExact;
            if (!isFound) Show(row, "<" + name, answer);
            if (FOptions.ShowsSets) PrintSet(row, answer);
            return;
        }
        bool isFound = false;
        for (const TClosableElement& element : answer.Closable)
            isFound |= HasName({element.Name}, name, FIsXML);
        ++FCounts.Ends;
        FCounts.Ended += isFound;
        if (!isFound) Show(row, "</" + name, answer);
    }

    std::string Path() {
        std::string path;
        for (const TOpenElement& open : FWalk.GetOpen())
            if (open.Element != RootElement && !open.IsGone) path += "/" + FWalk.GetText(open);
        return path;
    }

    void Show(const TTagLog::TRow& row, const std::string& tag, const TGrammarAnswer& answer) {
        if (FShown++ >= FOptions.Shown) return;
        std::fprintf(stderr, "%s@%d %s in %s%s: now", FFile.c_str(), row.Offset, tag.c_str(), Path().c_str(),
                     answer.IsExact ? "" : " (not exact)");
        for (size_t i = 0; i < answer.Now.size() && i < 8; ++i)
            std::fprintf(stderr, " %s", answer.Now[i].c_str());
        std::fprintf(stderr, "%s\n", answer.Now.size() > 8 ? " ..." : "");
    }

    void PrintSet(const TTagLog::TRow& row, const TGrammarAnswer& answer) {
        std::printf("%s\t%d\t%d\t%s\t", FFile.c_str(), row.Offset, answer.IsExact, Path().c_str());
        for (const std::string& name : answer.Now) std::printf("%s ", name.c_str());
        std::printf("\n");
    }

    const TOptions& FOptions;
    std::string FFile;
    TWalk& FWalk;
    const TTagLog& FLog;
    bool FIsXML;
    TCounts& FCounts;
    int FShown = 0;
};

TOptions ReadOptions(int count, char** words) {
    TOptions options;
    options.Engine.Warn = [](std::string_view) {};
    for (int i = 1; i < count; ++i) {
        std::string word = words[i];
        auto next = [&] { return std::string(i + 1 < count ? words[++i] : ""); };
        if (word == "--schemas") options.Engine.SchemaFolder = std::filesystem::absolute(next()).string();
        else if (word == "--dtd") options.DTD = next();
        else if (word == "--xml") options.IsXML = true;
        else if (word == "--sets") options.ShowsSets = true;
        else if (word == "--show") options.Shown = std::atoi(next().c_str());
        else if (word == "--map") {
            std::string map = next();
            size_t equals = map.find('=');
            options.Engine.Maps.emplace_back(map.substr(0, equals), map.substr(equals + 1));
        } else options.Files.push_back(word);
    }
    return options;
}

void CheckFile(const TOptions& options, const std::string& file, TEngine& engine, TWalk* fixedWalk,
               TCounts& counts) {
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    // A definition of its own needs no more of the engine than the scan of a page.
    TDocument& document = engine.Open(text, fixedWalk ? file + ".html" : file);
    document.View().SetCaretOffset(static_cast<int32_t>(text.size()));
    engine.Markup();
    TSchemaGrammars grammars(engine.Symbols());
    grammars.SetWatching(true);
    engine.Parse(document);
    TWalk* walk = fixedWalk ? fixedWalk : grammars.WalkToCaret();
    if (!walk) return;
    ++counts.Files;
    bool isXML = fixedWalk ? options.IsXML : walk->IsXML();
    TCheck(options, file, *walk, grammars.GetLog(), isXML, counts).Run();
}

}  // namespace

int main(int count, char** words) {
    TOptions options = ReadOptions(count, words);
    TCounts counts;
    TEngine engine(options.Engine);
    TDTDParser parser;
    std::optional<TDTDGrammar> grammar;
    std::optional<TWalk> walk;
    if (!options.DTD.empty()) {
        parser.LoadFromFile(options.DTD);
        grammar.emplace(parser);
        walk.emplace(*grammar);
    }
    for (const std::string& file : options.Files)
        CheckFile(options, file, engine, walk ? &*walk : nullptr, counts);
    auto percent = [](int part, int all) { return all ? 100.0 * part / all : 100.0; };
    std::fprintf(stderr,
                 "%d files: %d starts, %.2f %% in the answer; %d ends, %.2f %% closable; %.2f %% exact\n",
                 counts.Files, counts.Starts, percent(counts.Started, counts.Starts), counts.Ends,
                 percent(counts.Ended, counts.Ends), percent(counts.Exact, counts.Starts));
    return counts.Started == counts.Starts && counts.Ended == counts.Ends ? 0 : 1;
}
