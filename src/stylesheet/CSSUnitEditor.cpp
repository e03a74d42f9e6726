#include "stylesheet/CSSUnitEditor.h"

namespace caretwell {
namespace {

constexpr uint32_t ButtonFaceColor = 15;

TFormControl Control(TFormControl::TKind kind, std::string_view name, int32_t left, int32_t top,
                     int32_t width, int32_t height) {
    TFormControl control;
    control.Name = name;
    control.Kind = kind;
    control.Left = left;
    control.Top = top;
    control.Width = width;
    control.Height = height;
    return control;
}

TFormControl Label(std::string_view name, int32_t left, int32_t width, std::string_view caption) {
    TFormControl label = Control(TFormControl::fcLabel, name, left, 16, width, 13);
    label.Text = caption;
    return label;
}

TFormControl Button(std::string_view name, int32_t left, std::string_view caption, int32_t modalResult,
                    int32_t tabOrder) {
    TFormControl button = Control(TFormControl::fcButton, name, left, 77, 75, 25);
    button.Text = caption;
    button.ModalResult = modalResult;
    button.TabOrder = tabOrder;
    return button;
}

}  // namespace

TUnitEditorForm::TUnitEditorForm(std::string_view purpose) {
    FForm.Name = "TUnitEditorForm";
    FForm.Purpose = purpose;
    FForm.Caption = "Unit";
    FForm.ClientWidth = 283;
    FForm.ClientHeight = 112;
    FForm.Color = ButtonFaceColor;
    FForm.ActiveControl = "ValueEdit";

    FForm.Controls.push_back(Control(TFormControl::fcBevel, "Bevel1", 8, 8, 265, 57));
    FForm.Controls.push_back(Label("Label1", 24, 30, "Value:"));
    FForm.Controls.push_back(Label("Label2", 114, 27, "Units:"));
    FForm.Controls.push_back(Button("OKBtn", 115, "OK", ModalOK, 0));
    FForm.Controls.back().IsDefault = true;
    FForm.Controls.push_back(Button("CancelBtn", 197, "Cancel", ModalCancel, 1));
    FForm.Controls.back().IsCancel = true;

    TFormControl spinner = Control(TFormControl::fcSpinner, "UpDown1", 81, 32, 16, 21);
    spinner.Associate = "ValueEdit";
    spinner.TabOrder = 2;
    FForm.Controls.push_back(spinner);

    TFormControl edit = Control(TFormControl::fcEdit, "ValueEdit", 24, 32, 57, 21);
    edit.Text = "0";
    edit.TabOrder = 3;
    FForm.Controls.push_back(edit);

    TFormControl combo = Control(TFormControl::fcDropDown, "UnitCombo", 112, 32, 145, 21);
    combo.ItemHeight = 13;
    combo.TabOrder = 4;
    FForm.Controls.push_back(combo);
}

void TUnitEditorForm::AddUnit(std::string_view unit) {
    TFormControl& combo = *FForm.Find("UnitCombo");
    combo.Items.emplace_back(unit);
    combo.ItemIndex = 0;
}

int32_t TUnitEditorForm::ShowModal() {
    IFormHost* forms = GetPlatform().Forms();
    return forms ? forms->ShowModal(FForm) : ModalCancel;
}

std::string TUnitEditorForm::GetText() {
    const TFormControl* edit = FForm.Find("ValueEdit");
    const TFormControl* combo = FForm.Find("UnitCombo");
    std::string text = edit ? edit->Text : std::string();
    auto selected = static_cast<size_t>(combo ? combo->ItemIndex : -1);
    if (combo && selected < combo->Items.size()) text += combo->Items[selected];
    return text;
}

}  // namespace caretwell
