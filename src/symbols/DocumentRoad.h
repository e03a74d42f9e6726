// The road of one caret, from a document to a list:
//
//     kind of document, scan, schema, once more if the schema is new, fix-ups, closing tags
//
// Each step is somebody else's; their order is here and nowhere else.
#pragma once

#include "parser/MLParser.h"
#include "symbols/SchemaSelection.h"

namespace caretwell {

class TDocumentRoad final : public IDocumentRoad {
public:
    explicit TDocumentRoad(TMLSymbolManager& manager) : FManager(manager) {}

    void Parse(TNibEditPos caret, TRef<IMLBufferProducer> producer, TRef<INibMLTag> startTag) override;
    void BootStrapDTD(TRef<IMLBufferProducer> producer) override;
    /// Another schema, outside of a parse.
    void SetSchemaFile(const std::string& value);

private:
    TRef<INibMLTag> StartTag(INibMLTag* given) const;
    void ProposeClosingTags();

    TMLSymbolManager& FManager;
    bool FIsBusy = false;  // a parse or a load is under way: no observer, reader or host starts another in it
};

}  // namespace caretwell
