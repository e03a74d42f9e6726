#include "symbols/MLParserUnit.h"

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
    mapper->RegisterSchema(".config", "DotNetConfig.xsd");
    mapper->RegisterSchema(".sitemap", "SiteMapSchema.xsd");
    mapper->RegisterDirectiveSchema(".aspx", "page_directives.xsd");
    mapper->RegisterDirectiveSchema(".ascx", "control_directives.xsd");
    mapper->RegisterDirectiveSchema(".asax", "asax_directives.xsd");
    mapper->RegisterDirectiveSchema(".ashx", "ashx_directives.xsd");
    mapper->RegisterDirectiveSchema(".master", "master_directives.xsd");
}

void EndMLParser() {
    FreeDTDReaders();
    FreeXSDReaders();
    ReleaseMLEditorRegistry();
    ReleaseFileToSchemaMapperService();
}

}  // namespace caretwell
