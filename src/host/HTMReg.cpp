#include "host/HTMReg.h"

#include <iterator>

#include "insight/HTMLCodCmplt.h"
#include "stylesheet/CSSCodCmplt.h"
#include "symbols/FileToSchemaMapper.h"
#include "symbols/SchemaReaderCache.h"
#include "tagmodel/AttributeEditors.h"

namespace caretwell {
namespace {

constexpr int32_t NotRegistered = -1;
int32_t FMarkupIndex = NotRegistered;
int32_t FStyleIndex = NotRegistered;
bool IsLoaded = false;

template <class TEditor>
TMLEditorClass EditorClass() {
    return [] { return TRef<IRefCounted>(MakeRef<TEditor>()); };
}

// ---- what the units do at start and end

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

void EndHTMReg() {
    auto* registry = GlobalKibitzManager();
    for (int32_t* index : {&FMarkupIndex, &FStyleIndex}) {
        if (*index != NotRegistered && registry) registry->Unregister(*index);
        *index = NotRegistered;
    }
}

struct TUnit {
    void (*Start)();
    void (*End)();
};
// In the order of their start. Units with nothing of their own to do are not listed.
constexpr TUnit Units[] = {
    {StartMLParser, EndMLParser},
    {nullptr, ReleaseMarkupLanguageManager},
    {nullptr, ReleaseCSSLanguageManager},
    {nullptr, EndHTMReg},
};

}  // namespace

void Initialize() {
    if (IsLoaded) return;
    IsLoaded = true;
    for (const TUnit& unit : Units)
        if (unit.Start) unit.Start();
}

void IDERegister() {
    if (!IsLoaded || FMarkupIndex != NotRegistered) return;
    auto* registry = GlobalKibitzManager();
    TRef<INibCodeInsightManager> markup = MarkupLanguageManager();
    if (registry) FMarkupIndex = registry->Register(markup);
    TRef<INibCodeInsightManager> style = CSSLanguageManager();
    if (registry) FStyleIndex = registry->Register(style);
}

void Finalize() {
    if (!IsLoaded) return;
    for (auto unit = std::rbegin(Units); unit != std::rend(Units); ++unit)
        if (unit->End) unit->End();
    IsLoaded = false;
}

}  // namespace caretwell
