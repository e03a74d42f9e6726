#include "stylesheet/CSSEditors.h"

#include "host/Dialogs.h"
#include "stylesheet/CSSUnitEditor.h"

namespace caretwell {

bool TCSSEditor::Take(std::optional<std::string> answer) {
    bool isGiven = answer.has_value();
    FResult = std::move(answer).value_or(std::string());
    return isGiven;
}

bool TCSSURIEditor::Execute() { return Take(AskForURL()); }

bool TCSSColorEditor::Execute() { return Take(AskForColor()); }

bool TCSSUnitEditor::Execute() {
    std::string_view purpose = FName;
    TUnitEditorForm form(purpose.substr(0, purpose.find("...")));
    for (int32_t i = 0; i < FUnits.FCount; ++i) form.AddUnit(FUnits.GetItem(i));
    if (form.ShowModal() != TUnitEditorForm::ModalOK) return false;
    FResult = form.GetText();
    return true;
}

}  // namespace caretwell
