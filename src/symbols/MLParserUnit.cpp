#include "symbols/MLParserUnit.h"

#include "markup/DocumentKind.h"
#include "symbols/FileToSchemaMapper.h"
#include "symbols/SchemaReaderCache.h"
#include "tagmodel/AttributeEditors.h"

namespace caretwell {
namespace {

template <class TEditor>
TMLEditorClass EditorClass() {
    return [] { return TRef<IRefCounted>(MakeRef<TEditor>()); };
}

}  // namespace

void StartMLParser() {
    auto editors = GetMLEditorRegistry();
    editors->RegisterEditorClass(THTMLURIAttributeEditor::EDITOR_ID, EditorClass<THTMLURIAttributeEditor>());
    editors->RegisterEditorClass("color", EditorClass<THTMLColorAttributeEditor>());
    editors->RegisterEditorClass("default", EditorClass<TDefaultAttributeEditor>());
    auto mapper = GetFileToSchemaMapperService();
    for (const auto& row : GetFreeSchemas()) mapper->RegisterSchema(row.Extension, row.File);
    for (const auto& row : GetDocumentKinds())
        if (!row.DirectiveSchema.empty()) mapper->RegisterDirectiveSchema(row.Extension, row.DirectiveSchema);
}

void EndMLParser() {
    FreeDTDReaders();
    FreeXSDReaders();
    ReleaseMLEditorRegistry();
    ReleaseFileToSchemaMapperService();
}

}  // namespace caretwell
