#include "symbols/DocumentRoad.h"

#include "host/Platform.h"
#include "host/ValueScope.h"
#include "symbols/MLSymbolManager.h"
#include "tagmodel/DocumentNodes.h"

namespace caretwell {
namespace {

bool Rewind(IMLBufferProducer& producer) {
    auto again = QueryAs<IMLBufferRewind>(&producer);
    return again && again->Rewind();
}

}  // namespace

void TDocumentRoad::Parse(TNibEditPos caret, TRef<IMLBufferProducer> producer, TRef<INibMLTag> startTag) {
    if (!producer || FIsBusy) return;
    TValueScope<bool> busy(FIsBusy, true);
    TMLParser& parser = FManager.GetParser();
    TSchemaSelection& selection = FManager.GetSelection();
    FManager.BeginDocument(producer->GetFilename());
    selection.Begin(producer->GetFilename());
    parser.Scan(*producer, caret, StartTag(startTag.Get()));
    // A new table takes effect within the same parse: the state that the list is made from has
    // to speak of its tags.
    if (selection.Follow(parser)) {
        parser.Forget();
        parser.CallbacksInvalidate();
        if (Rewind(*producer)) parser.Scan(*producer, caret, StartTag(startTag.Get()));
    }
    FManager.InsertFixupElements(FManager.GetListOwner().Get(), nullptr);
    ProposeClosingTags();
}

/// The tag in which the document is taken to stand: the one given, as the table has it, or
/// that of the kind of document.
TRef<INibMLTag> TDocumentRoad::StartTag(INibMLTag* given) const {
    if (!given) {
        std::u16string_view context = FManager.GetSelection().GetKind().Context;
        return context.empty() ? nullptr : FManager.GetTagFromHashList(context);
    }
    auto known = FManager.GetTagFromHashList(given->GetName());
    return known ? known : TRef<INibMLTag>(given);
}

// What is open at the end of the whole document was never closed.
void TDocumentRoad::ProposeClosingTags() {
    TMLParser& parser = FManager.GetParser();
    for (PTagEntry entry = parser.GetDocumentTags(); entry; entry = entry->Next) {
        if (!entry->Tag->GetRequiresClosingTag() && entry->Tag->GetEmpty()) continue;
        if (entry->Line > parser.FCaret.Line) continue;
        std::u16string name = u"</";
        name.append(entry->Tag->GetName()).append(u">");
        auto closing = MakeRef<TClosingTag>(name, &FManager, -1);
        closing->SetLineNumber(entry->Line);
        FManager.AddClosedTag(closing);
    }
}

void TDocumentRoad::SetSchemaFile(const std::string& value) {
    if (FIsBusy) return;
    TValueScope<bool> busy(FIsBusy, true);
    TMLParser& parser = FManager.GetParser();
    if (!FManager.GetSelection().Select(value, parser.FXSLOutputSchema, false)) return;
    parser.Forget();
    parser.CallbacksInvalidate();
}

// Nothing lies before a caret on line 0, so the scan only finds the doctype. A document names
// no file outside of the schema folder, of whatever kind it is.
void TDocumentRoad::BootStrapDTD(TRef<IMLBufferProducer> producer) {
    Parse(TNibEditPos{0, 0}, std::move(producer), nullptr);
    const std::string& name = FManager.GetParser().FSchemaFile;
    if (FManager.GetKibitzMode() != kmXML) return SetSchemaFile(name);
    std::string file = GetSchemaFileName(name, kmXML);
    std::string folder = GetPlatform().SchemaFolder();
    if (file.starts_with(folder) && file.size() > folder.size()) SetSchemaFile(file);
}

}  // namespace caretwell
