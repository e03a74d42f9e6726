#include "memory/Dialogs.h"

#include <algorithm>

#include "markup/Text.h"

namespace caretwell {
namespace {

class TScriptedURLDialog final : public TSelectURLDialog {
public:
    TScriptedURLDialog(const TDialogAnswers& answers, std::string moduleFileName)
        : FAnswers(answers), FModuleFileName(std::move(moduleFileName)) {}

    std::string GetModuleFileName() const override { return FModuleFileName; }
    void SetInitialFolder(std::string_view) override {}
    bool Execute() override {
        auto answer = FAnswers.Find("uri");
        FURL = answer.value_or("");
        return answer.has_value();
    }
    std::string GetPreviewURL() const override { return FURL; }

private:
    const TDialogAnswers& FAnswers;
    std::string FModuleFileName, FURL;
};

class TScriptedColorDialog final : public TWebColorDlg {
public:
    explicit TScriptedColorDialog(const TDialogAnswers& answers) : FAnswers(answers) {}

    bool Execute() override {
        auto answer = FAnswers.Find("color");
        FColor = answer.value_or("");
        return answer.has_value();
    }
    std::string GetSelectedColor() const override { return FColor; }

private:
    const TDialogAnswers& FAnswers;
    std::string FColor;
};

// Puts the answer into the form's two fields; false if the form cannot hold it.
bool FillIn(TForm& form, const std::string& answer) {
    TFormControl* value = form.Find("ValueEdit");
    TFormControl* unit = form.Find("UnitCombo");
    if (!value) return false;
    if (!unit || unit->Items.empty()) {
        value->Text = answer;
        return true;
    }
    size_t end = answer.find_last_of("0123456789.");
    if (end == std::string::npos) return false;
    std::string_view asked = std::string_view(answer).substr(end + 1);
    if (!asked.empty()) {
        auto item = std::find_if(unit->Items.begin(), unit->Items.end(),
                                 [&](const std::string& text) { return SameText(text, asked); });
        if (item == unit->Items.end()) return false;
        unit->ItemIndex = static_cast<int32_t>(item - unit->Items.begin());
    }
    value->Text = answer.substr(0, end + 1);
    return true;
}

int32_t ResultOf(const TForm& form, bool TFormControl::*role, int32_t otherwise) {
    for (const auto& control : form.Controls)
        if (control.*role) return control.ModalResult;
    return otherwise;
}

}  // namespace

void TDialogAnswers::Set(std::string_view name, std::string value) {
    FAnswers.insert_or_assign(std::string(name), std::move(value));
}

std::optional<std::string> TDialogAnswers::Find(std::string_view name) const {
    if (auto found = FAnswers.find(name); found != FAnswers.end()) return found->second;
    return FAsk ? FAsk(name) : std::nullopt;
}

std::unique_ptr<TSelectURLDialog> MakeScriptedURLDialog(const TDialogAnswers& answers,
                                                        std::string moduleFileName) {
    return std::make_unique<TScriptedURLDialog>(answers, std::move(moduleFileName));
}

std::unique_ptr<TWebColorDlg> MakeScriptedColorDialog(const TDialogAnswers& answers) {
    return std::make_unique<TScriptedColorDialog>(answers);
}

int32_t TScriptedForms::ShowModal(TForm& form) {
    auto answer = FAnswers.Find(form.Purpose);
    bool isConfirmed = answer && FillIn(form, *answer);
    return isConfirmed ? ResultOf(form, &TFormControl::IsDefault, 1)
                       : ResultOf(form, &TFormControl::IsCancel, 2);
}

}  // namespace caretwell
