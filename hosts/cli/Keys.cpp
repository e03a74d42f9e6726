#include "cli/Keys.h"

#include <string>

#include "cli/Failure.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

struct TKeyName {
    std::string_view Name;
    TEditorKey Key;
};
constexpr TKeyName KeyNames[] = {
    {"Enter", ekEnter}, {"Tab", ekTab},   {"Esc", ekEscape},  {"Ctrl+Space", ekCtrlSpace}, {"Up", ekUp},
    {"Down", ekDown},   {"Left", ekLeft}, {"Right", ekRight}, {"Backspace", ekBackspace}};

struct TCloseKey {
    std::string_view Word;
    char32_t Key;
};
constexpr TCloseKey CloseKeys[] = {{"enter", 13}, {"tab", 9}, {"space", ' '}, {"escape", 27}};

// Takes the first character off the text.
char32_t TakeCharacter(std::u16string_view& text) {
    char32_t c = FirstCharacter(text);
    text.remove_prefix(FirstLength(text));
    return c;
}

// What stands in braces, the opening one being past.
TTypedKey TakeNamedKey(std::u16string_view& text) {
    size_t end = text.starts_with(u"{}") ? 1 : text.find(u'}');
    if (end == std::u16string_view::npos)
        throw TFailure(esWords, "--keys: {" + ToUtf8(text) + " has no closing brace; {{} is a brace");
    std::string name = ToUtf8(text.substr(0, end));
    text.remove_prefix(end + 1);
    if (name == "{") return U'{';
    for (const auto& row : KeyNames)
        if (row.Name == name) return row.Key;
    throw TFailure(esWords, "--keys: {" + name + "} is no key");
}

}  // namespace

std::vector<TTypedKey> ReadKeys(std::string_view keys) {
    std::u16string units = ToUtf16(keys);
    std::u16string_view rest = units;
    std::vector<TTypedKey> result;
    while (!rest.empty()) {
        char32_t c = TakeCharacter(rest);
        result.push_back(c == '{' ? TakeNamedKey(rest) : TTypedKey(c));
    }
    return result;
}

char32_t ReadCloseKey(std::string_view word) {
    for (const auto& row : CloseKeys)
        if (row.Word == word) return row.Key;
    std::u16string units = ToUtf16(word);
    std::u16string_view rest = units;
    char32_t c = rest.empty() ? 0 : TakeCharacter(rest);
    if (c == 0 || !rest.empty())
        throw TFailure(esWords, "--close " + std::string(word) +
                                    ": enter, tab, space, escape or one character is wanted");
    return c;
}

}  // namespace caretwell
