#include "tagmodel/AttributeEditors.h"

#include "host/Dialogs.h"

namespace caretwell {
namespace {

TRef<INibMLEditorRegistry>& Registry() {
    static TRef<INibMLEditorRegistry> registry;
    return registry;
}

}  // namespace

bool THTMLURIAttributeEditor::Execute(IRefCounted*, int32_t) { return Take(AskForURL()); }

bool THTMLColorAttributeEditor::Execute(IRefCounted*, int32_t) { return Take(AskForColor()); }

bool TAttributeEditorBase::Take(const std::optional<std::string>& answer) {
    FValue = ToUtf16(answer.value_or(std::string()));
    return answer.has_value();
}

bool TDefaultAttributeEditor::Execute(IRefCounted* context, int32_t value) {
    auto attribute = QueryAs<INibMLTagAttribute>(context);
    if (!attribute) return false;
    FValue = attribute->GetValue(value);
    return true;
}

bool TMLEditorResgistry::RegisterEditorClass(std::string_view editorId, TMLEditorClass editorClass) {
    FClasses.emplace(editorId, std::move(editorClass));
    return true;
}

TRef<INibMLEditor> TMLEditorResgistry::GetEditor(std::string_view editorId) {
    for (const auto& instance : FInstances)
        if (instance->GetEditorId() == editorId) return instance;
    auto row = FClasses.find(std::string(editorId));
    if (row != FClasses.end()) {
        if (auto editor = QueryAs<INibMLEditor>(row->second())) {
            FInstances.push_back(editor);
            return editor;
        }
    }
    return MakeRef<TDefaultAttributeEditor>();
}

TRef<INibMLEditorRegistry> GetMLEditorRegistry() {
    if (!Registry()) Registry() = MakeRef<TMLEditorResgistry>();
    return Registry();
}

void ReleaseMLEditorRegistry() { Registry() = nullptr; }

}  // namespace caretwell
