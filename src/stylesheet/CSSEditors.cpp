#include "stylesheet/CSSEditors.h"

#include "host/Nibapi.h"
#include "host/Paths.h"
#include "stylesheet/CSSUnitEditor.h"

namespace caretwell {

bool TCSSURIEditor::Execute() {
    FResult.clear();
    auto services = GetService<INibDialogServices>();
    auto dialog = services ? services->CreateSelectURLDialog() : nullptr;
    if (!dialog) return false;
    dialog->SetInitialFolder(FolderOf(dialog->GetModuleFileName()));
    bool isConfirmed = dialog->Execute();
    if (isConfirmed) FResult = dialog->GetPreviewURL();
    return isConfirmed;
}

bool TCSSColorEditor::Execute() {
    FResult.clear();
    auto services = GetService<INibDialogServices>();
    auto dialog = services ? services->CreateWebColorDlg() : nullptr;
    if (!dialog) return false;
    bool isConfirmed = dialog->Execute();
    if (isConfirmed) FResult = dialog->GetSelectedColor();
    return isConfirmed;
}

bool TCSSUnitEditor::Execute() {
    std::string_view purpose = FName;
    TUnitEditorForm form(purpose.substr(0, purpose.find("...")));
    for (int32_t i = 0; i < FUnits.FCount; ++i) form.AddUnit(FUnits.GetItem(i));
    if (form.ShowModal() != TUnitEditorForm::ModalOK) return false;
    FResult = form.GetText();
    return true;
}

}  // namespace caretwell
