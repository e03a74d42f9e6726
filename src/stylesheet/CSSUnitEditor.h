// The dialog that asks for a value with a unit. The form is data and has no logic of
// its own: the host's form facility shows it.
//
//     Value: [ 12 ]   Units: [ px v ]   OK   Cancel      ->  12px
#pragma once

#include <string>
#include <string_view>

#include "host/Platform.h"

namespace caretwell {

class TUnitEditorForm {
public:
    static constexpr int32_t ModalOK = 1;
    static constexpr int32_t ModalCancel = 2;

    /// Purpose says what is asked for, such as "length".
    explicit TUnitEditorForm(std::string_view purpose);

    /// Adds to the units offered; the first one is selected.
    void AddUnit(std::string_view unit);
    /// Shows the form and returns its modal result; ModalCancel if the host has no forms.
    int32_t ShowModal();
    /// What was typed, untested, and the unit selected; without units the value alone.
    std::string GetText();

    TForm FForm;
};

}  // namespace caretwell
