// type: types into a document as a user would, list and all.
#include "cli/Commands.h"
#include "cli/Editing.h"
#include "cli/Keys.h"

namespace caretwell {

TExitStatus RunType(const TArguments& arguments) {
    auto keys = ReadKeys(arguments.Keys);
    TEditing editing(arguments, ReadPlace(arguments));
    TEditorDriver& driver = editing.Driver();
    for (const TTypedKey& key : keys) {
        if (auto* named = std::get_if<TEditorKey>(&key)) driver.PressKey(*named);
        else driver.TypeChar(std::get<char32_t>(key));
    }
    editing.Finish();
    return esDone;
}

}  // namespace caretwell
