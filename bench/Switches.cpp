// Going from one document to another whose schema differs, both schemas having been read;
// and the first list of a large XML schema.
#include <algorithm>

#include "bench/Folder.h"
#include "bench/Measure.h"
#include "bench/Session.h"
#include "symbols/FileToSchemaMapper.h"
#include "symbols/SchemaReaderCache.h"

namespace caretwell::bench {
namespace {

struct TSmallDocument {
    const char* What;
    const char* Name;
    const char* Text;  // the caret stands at its end
};
constexpr TSmallDocument Loose = {"loose.dtd", "loose.html", "<html><body><p><"};
constexpr TSmallDocument Strict = {
    "strict.dtd", "strict.html",
    "<!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 4.01//EN\" \"strict.dtd\"><html><body><p><"};
constexpr TSmallDocument Stylesheet = {"xsl.dtd", "page.xsl",
                                       "<xsl:stylesheet><xsl:template match=\"/\"><xsl:if test=\"a\"><"};
constexpr TSmallDocument Config = {"DotNetConfig.xsd", "Web.config", "<configuration><"};
constexpr TSmallDocument ServerPage = {"loose.dtd with asp.xsd", "Default.aspx",
                                       "<html><body><form runat=\"server\"><"};
constexpr TSmallDocument DocBook = {"docbook.xsd", "book.xml",
                                    "<book xmlns=\"http://docbook.org/ns/docbook\"><chapter><"};

bool IsDocBook(const TSmallDocument& document) { return document.Name == DocBook.Name; }

TDocument& OpenSmall(TSession& session, const TSmallDocument& document) {
    if (IsDocBook(document)) GetFileToSchemaMapperService()->RegisterSchema(".xml", "docbook.xsd");
    std::string_view text = document.Text;
    return session.Open(std::string(text), document.Name, text.size());
}

bool AskOnce(TSession& session, TDocument& document) {
    session.Host().Activate(document);
    bool isShown = document.Driver().OpenList() && ReadScreen(document.Driver()) > 0;
    document.Driver().Dismiss();
    return isShown;
}

// Of the two ways the slower one counts.
void Switch(benchmark::State& state, const TSmallDocument& a, const TSmallDocument& b) {
    std::string folder = IsDocBook(a) || IsDocBook(b) ? FolderWithDocBook() : SchemaFolder();
    if (folder.empty()) return state.SkipWithError("docbook5-xml is not installed");
    TSession session(folder);
    TDocument* documents[] = {&OpenSmall(session, a), &OpenSmall(session, b)};
    bool isShown = AskOnce(session, *documents[0]) && AskOnce(session, *documents[1]);
    for (auto _ : state) {
        double slower = 0;
        for (TDocument* document : documents) {
            TStopwatch stopwatch;
            isShown = AskOnce(session, *document) && isShown;
            slower = std::max(slower, stopwatch.GetSeconds());
        }
        AddLap(state, slower);
    }
    if (!isShown) state.SkipWithError("no list");
}

void FirstList(benchmark::State& state, const TSmallDocument& wanted) {
    std::string folder = IsDocBook(wanted) ? FolderWithDocBook() : SchemaFolder();
    if (folder.empty()) return state.SkipWithError("docbook5-xml is not installed");
    for (auto _ : state) {
        TSession session(folder);  // of its own, for the sake of the table
        TDocument& document = OpenSmall(session, wanted);
        bool isShown = false;
        {
            TLap lap(state);
            isShown = AskOnce(session, document);
        }
        if (!isShown) state.SkipWithError("no list");
    }
}

}  // namespace

void RegisterSwitches() {
    struct TPair {
        TSmallDocument From, To;
    };
    static constexpr TPair pairs[] = {
        {Loose, Strict}, {Loose, Stylesheet}, {Loose, ServerPage}, {Loose, Config}, {Loose, DocBook}};
    for (const TPair& pair : pairs)
        Measure({.Group = "switch between loaded schemas, list included",
                 .Name = std::string(pair.From.What) + " and " + pair.To.What,
                 .Mark = 2},
                [pair](benchmark::State& state) { Switch(state, pair.From, pair.To); });
    for (const TSmallDocument& document : {Loose, Strict, Stylesheet, ServerPage, Config, DocBook})
        Measure({.Group = "first list in a process that runs, schema cold",
                 .Name = document.What,
                 .Mark = IsDocBook(document) ? 60.0 : 0},
                [document](benchmark::State& state) { FirstList(state, document); });
}

}  // namespace caretwell::bench
