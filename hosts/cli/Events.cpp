// events: what a parse tells an observer, in order.
#include "cli/Commands.h"
#include "cli/Run.h"
#include "cli/Text.h"
#include "cli/Vocabulary.h"
#include "parser/MLParser.h"

namespace caretwell {
namespace {

/// Keeps what it is told, as the lines to be printed.
class TRecorder final : public TImplements<INibMLElementCallback> {
public:
    explicit TRecorder(bool isJson) : FIsJson(isJson) {}

    void ElementParsed(void*, INibMLMarkupPos* element, TTagType type, int32_t offsetStart, int32_t offsetEnd,
                       bool&) override {
        auto [key, text] = Describe(element);
        if (FIsJson)
            FLines += JsonLine(TJson{
                {"type", NameOf(type)}, {key, std::move(text)}, {"start", offsetStart}, {"end", offsetEnd}});
        else AddTextLine(type, text, offsetStart, offsetEnd);
    }
    void Invalidate() override { FLines.clear(); }

    const std::string& Lines() const { return FLines; }

private:
    struct TDescription {
        const char* Key;
        std::string Text;
    };
    static TDescription Describe(INibMLMarkupPos* element) {
        if (auto tag = QueryAs<INibMLTag>(element)) return {"name", ToUtf8(tag->GetName())};
        if (auto attribute = QueryAs<INibMLTagAttribute>(element))
            return {"name", ToUtf8(attribute->GetName())};
        auto node = QueryAs<INibMLTextNode>(element);
        return {"text", node ? ToUtf8(node->GetText()) : std::string()};
    }

    void AddTextLine(TTagType type, const std::string& text, int32_t start, int32_t end) {
        char columns[64];
        std::string_view name = NameOf(type);
        int length = std::snprintf(columns, sizeof columns, "%8d %8d  %-23.*s  ", start, end,
                                   static_cast<int>(name.size()), name.data());
        FLines.append(columns, static_cast<size_t>(length));
        FLines += ShowText(text) + "\n";
    }

    bool FIsJson;
    std::string FLines;
};

}  // namespace

TExitStatus RunEvents(const TArguments& arguments) {
    TSource source = ReadSource(arguments, arguments.Target);
    TRun run(arguments);
    TDocument& document = run.Open(std::move(source));
    auto manager = document.Driver().Manager();
    if (!manager) throw run.ExplainNothing(document);
    if (IsStyleSheetManager(*manager))
        throw TFailure(esNothing, document.FileName() + ": a style sheet has no elements to tell of");
    run.Engine().Parse(document);
    auto recorder = MakeRef<TRecorder>(arguments.Json);
    TMLParser& parser = run.Engine().Symbols().GetParser();
    parser.AddCallback(recorder.Get());
    run.Engine().Parse(document);
    parser.RemoveCallback(recorder.Get());
    WriteOutput(recorder->Lines());
    run.CheckSchema(document);
    return esDone;
}

}  // namespace caretwell
