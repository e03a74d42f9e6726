// complete: what may stand at a place.
#include "cli/Commands.h"
#include "cli/Offer.h"
#include "cli/Run.h"
#include "cli/Vocabulary.h"

namespace caretwell {
namespace {

TJson Describe(TRun& run, TDocument& document, const TOffer& offer, TLinePlace place) {
    TJson json{{"file", document.FileName()}, {"line", place.Line}, {"column", place.Column}};
    AddLanguage(json, run.Engine(), document);
    json["opened"] = offer.IsOpen;
    json["list"] = offer.List;
    if (offer.Context) json["context"] = *offer.Context;
    json["filter"] = offer.Filter;
    json["items"] = JsonOf(offer.Items);
    return json;
}

}  // namespace

TExitStatus RunComplete(const TArguments& arguments) {
    TPlace wanted = ReadPlace(arguments);
    TRun run(arguments);
    TDocument& document = run.Open(std::move(wanted));
    TLinePlace place = LinePlaceAt(document.Text(), document.View().CaretOffset());
    run.OpenList(document);
    TOffer offer = GetOffer(run.Engine(), document);
    WriteOutput(arguments.Json ? JsonLine(Describe(run, document, offer, place)) : TextOf(offer.Items));
    if (offer.Items.empty()) throw run.ExplainNothing(document);
    return esDone;
}

}  // namespace caretwell
