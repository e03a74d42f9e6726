// What one key may change of a text: itself, an item that it takes, and what the engine puts
// in or takes back next to the caret. All else belongs to whoever wrote it.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "markup/Text.h"
#include "memory/HostSession.h"

namespace caretwell::test {

/// Nothing but closing tags, quotes, slashes and the marks that end a word.
inline bool IsEngineText(std::string_view text) {
    for (size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) == "</") i = std::min(text.find_first_of("<>", i + 2), text.size());
        else if (std::string_view(" /\"'=;:>").find(text[i]) == std::string_view::npos) return false;
        if (i < text.size() && text[i] == '<') --i;
    }
    return true;
}

/// What changed between two texts, beyond what they begin and end with.
struct TChangedText {
    TChangedText(std::string_view before, std::string_view after, size_t caret) {
        size_t most = std::min({before.size(), after.size(), caret});
        while (Start < most && before[Start] == after[Start]) ++Start;
        size_t same = 0;
        while (same < std::min(before.size(), after.size()) - Start &&
               before[before.size() - 1 - same] == after[after.size() - 1 - same])
            ++same;
        Removed = before.substr(Start, before.size() - same - Start);
        Inserted = after.substr(Start, after.size() - same - Start);
    }
    size_t Start = 0;
    std::string Removed, Inserted;
};

/// Runs one key and says what is wrong with its change; typed: what it writes by itself.
template <class TAction>
std::string Judge(TDocument& document, bool takes, std::string_view typed, size_t deleted, TAction action) {
    std::string before = document.Text().Text();
    auto caret = static_cast<size_t>(document.View().CaretOffset());
    action();
    TChangedText change(before, document.Text().Text(), caret);
    std::string what = " \"" + change.Removed + "\" -> \"" + change.Inserted + "\"";
    size_t end = change.Start + change.Removed.size();
    if (change.Start > caret || (end + 40 < caret && !change.Removed.empty()))
        return "far from the caret:" + what;
    // A word, a value with its quotes or a tag that is being typed, of one line.
    if (takes) {
        bool isWord =
            change.Removed.find_first_of("\n>") == std::string::npos || IsEngineText(change.Removed);
        return isWord ? std::string() : "more than a word:" + what;
    }
    std::string removed = change.Removed, inserted = change.Inserted;
    // Quotes go in pairs.
    bool isPair = removed == "\"\"" && deleted == 1;
    if (deleted > 0)
        return (isPair || removed.size() <= deleted) && inserted.empty() ? std::string() : "deleted:" + what;
    size_t own = inserted.find(typed);
    if (own != std::string::npos && !typed.empty()) inserted.erase(own, typed.size());
    return IsEngineText(removed) && IsEngineText(inserted) ? std::string() : "not what was typed:" + what;
}

inline std::string TypeAndJudge(TDocument& document, char32_t key) {
    TEditorDriver& driver = document.Driver();
    std::string typed = key == 13 || key == 10 ? document.Text().LineBreak() : key == 27 ? "" : ToUtf8(key);
    return Judge(document, driver.Takes(key == 10 ? 13 : key), typed, 0, [&] { driver.TypeChar(key); });
}

inline std::string PressAndJudge(TDocument& document, TEditorKey key) {
    TEditorDriver& driver = document.Driver();
    if (key == ekEnter || key == ekTab || key == ekEscape)
        return TypeAndJudge(document, key == ekEnter ? 13 : key == ekTab ? 9 : 27);
    int32_t caret = document.View().CaretOffset();
    size_t deleted =
        key == ekBackspace ? static_cast<size_t>(caret - document.Text().PreviousPlace(caret)) : 0;
    return Judge(document, false, {}, deleted, [&] { driver.PressKey(key); });
}

}  // namespace caretwell::test
