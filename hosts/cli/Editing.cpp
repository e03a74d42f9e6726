#include "cli/Editing.h"

#include "cli/Offer.h"
#include "cli/Text.h"
#include "memory/FileText.h"

namespace caretwell {
namespace {

constexpr const char* DefaultMark = "|";

TJson Describe(TRun& run, TDocument& document) {
    int32_t caret = document.View().CaretOffset();
    TJson place = JsonOf(LinePlaceAt(document.Text(), caret));
    place["offset"] = caret;
    TJson json{{"text", document.Text().Text()}, {"caret", place}, {"open", document.Driver().IsOpen()}};
    if (document.Driver().IsOpen()) json["items"] = JsonOf(GetOffer(run.Engine(), document).Items);
    return json;
}

std::string ShowCaret(TDocument& document, const std::string& mark) {
    std::string text = document.Text().Text();
    text.insert(static_cast<size_t>(document.View().CaretOffset()), mark.empty() ? DefaultMark : mark);
    // A prompt is not to stand after it.
    if (IsTerminal() && !text.ends_with('\n')) text += '\n';
    return text;
}

}  // namespace

TEditing::TEditing(const TArguments& arguments, TPlace place, TDialogAnswers::TAsk ask)
    : FArguments(arguments), FRun(arguments, std::move(ask)), FDocument(FRun.Open(std::move(place))) {}

void TEditing::WriteFile() {
    const std::string& name = FDocument.FileName();
    if (auto problem = WriteFileText(name, FDocument.Text().Text()))
        throw TFailure(esUnreadable, name + ": nothing written: " + *problem);
}

void TEditing::Finish() {
    if (FArguments.InPlace) WriteFile();
    if (FArguments.Json) WriteOutput(JsonLine(Describe(FRun, FDocument)));
    else if (!FArguments.InPlace) WriteOutput(ShowCaret(FDocument, FArguments.Mark));
}

}  // namespace caretwell
