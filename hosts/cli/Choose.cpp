// choose: opens the list, takes an item and shows what that writes.
#include <unistd.h>

#include <cstdio>

#include "cli/Commands.h"
#include "cli/Editing.h"
#include "cli/Keys.h"

namespace caretwell {
namespace {

// Asks for the value of a dialog, where somebody is there to answer. An empty answer cancels.
std::optional<std::string> AskUser(std::string_view name) {
    std::fprintf(stderr, "%.*s: ", static_cast<int>(name.size()), name.data());
    std::string answer;
    for (int c = std::getchar(); c != EOF && c != '\n'; c = std::getchar()) answer += static_cast<char>(c);
    return answer.empty() ? std::nullopt : std::optional(answer);
}

TDialogAnswers::TAsk MakeAsk(const TPlace& place) {
    bool hasUser = !place.Source.IsInput && isatty(STDIN_FILENO) && isatty(STDERR_FILENO);
    return hasUser ? TDialogAnswers::TAsk(AskUser) : TDialogAnswers::TAsk();
}

}  // namespace

TExitStatus RunChoose(const TArguments& arguments) {
    char32_t close = ReadCloseKey(arguments.Close);
    TPlace place = ReadPlace(arguments);
    auto ask = MakeAsk(place);
    TEditing editing(arguments, std::move(place), std::move(ask));
    editing.Run().OpenList(editing.Document());
    TEditorDriver& driver = editing.Driver();
    if (driver.ItemCount() == 0) throw editing.Run().ExplainNothing(editing.Document());
    if (!driver.Select(ToUtf16(arguments.Item)))
        throw TFailure(esNothing,
                       editing.Document().FileName() + ": \"" + arguments.Item + "\" is not in the list");
    driver.TypeChar(close);
    editing.Finish();
    return esDone;
}

}  // namespace caretwell
