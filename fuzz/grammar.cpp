// Any definition with any document, at any caret: the walk and its answer end, name only what
// the grammar knows, and depend on nothing that was asked before.
#include <cstdio>
#include <cstdlib>
#include <set>

#include "grammar/WalkText.h"

using namespace caretwell;

namespace {

void Require(bool holds, const char* fault) {
    if (holds) return;
    std::fprintf(stderr, "fault: %s\n", fault);
    std::abort();
}

TGrammarAnswer AnswerAt(TWalk& walk, const TTagLog& log, bool isXML) {
    walk.Begin(log, isXML, NoName);
    walk.Read(log, 0, log.GetCountBeforeCaret());
    Require(walk.GetOpen().size() <= log.GetCountBeforeCaret() * 5 + 1,
            "more open elements than tags can open");
    return Answer(walk, log, log.GetCountBeforeCaret());
}

void CheckAnswer(const TGrammarAnswer& answer, size_t size) {
    std::set<std::string> now(answer.Now.begin(), answer.Now.end());
    Require(now.size() == answer.Now.size(), "a name twice");
    for (const std::string& name : answer.Required)
        Require(now.contains(name), "required, and may not start");
    for (const std::string& name : answer.Elsewhere) Require(!now.contains(name), "here and elsewhere");
    for (const TClosableElement& element : answer.Closable)
        Require(element.Offset >= 0 && static_cast<size_t>(element.Offset) < size, "an element of nowhere");
}

}  // namespace

/// The definition, a zero byte, a byte of options and the document, whose "^" is the caret.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    size_t split = text.find('\0');
    if (split == text.npos || split + 2 >= size) return 0;
    bool isXML = text[split + 1] & 1;
    std::string_view document = text.substr(split + 2);
    TDTDParser parser;
    std::istringstream stream{std::string(text.substr(0, split))};
    try {
        parser.LoadFromStream(stream);
    } catch (const std::exception&) {
        // What was read until then counts.
    }
    parser.MakeSymArray();
    TDTDGrammar grammar(parser);
    TTagLog log, other;
    LogTags(log, document);
    LogTags(other, "<a><b/><c>^");
    TWalk walk(grammar), fresh(grammar);
    TGrammarAnswer first = AnswerAt(walk, log, isXML);
    CheckAnswer(first, document.size());
    AnswerAt(walk, other, !isXML);
    Require(Show(AnswerAt(walk, log, isXML)) == Show(first), "an answer depends on the one before");
    Require(Show(AnswerAt(fresh, log, isXML)) == Show(first), "an answer depends on the walk");
    return 0;
}
