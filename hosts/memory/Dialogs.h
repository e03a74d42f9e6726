// Dialogs of a host without windows: each is answered by the name of what it asks
// for, such as color=#ff0000, uri=logo.png or length=12px. A dialog that has no
// answer was cancelled.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/Nibapi.h"
#include "host/Platform.h"

namespace caretwell {

class TDialogAnswers {
public:
    /// Asks the user at a terminal; nothing if they cancel.
    using TAsk = std::function<std::optional<std::string>(std::string_view name)>;

    void Set(std::string_view name, std::string value);
    /// Called for what has no answer.
    void SetAsk(TAsk ask) { FAsk = std::move(ask); }
    std::optional<std::string> Find(std::string_view name) const;

private:
    std::map<std::string, std::string, std::less<>> FAnswers;
    TAsk FAsk;
};

/// The answers are not owned and outlive the dialog. Answered by "uri".
std::unique_ptr<TSelectURLDialog> MakeScriptedURLDialog(const TDialogAnswers& answers,
                                                        std::string moduleFileName);
/// Answered by "color".
std::unique_ptr<TWebColorDlg> MakeScriptedColorDialog(const TDialogAnswers& answers);

/// Fills a form's ValueEdit and UnitCombo from the answer to its Purpose. The unit is
/// what follows the last digit of the answer; an answer without one leaves the
/// selection, and one whose unit the form does not offer cancels it.
class TScriptedForms final : public IFormHost {
public:
    explicit TScriptedForms(const TDialogAnswers& answers) : FAnswers(answers) {}
    int32_t ShowModal(TForm& form) override;

private:
    const TDialogAnswers& FAnswers;
};

}  // namespace caretwell
