#include "markup/Text.h"

#include <utf8.h>

#include <iterator>

namespace caretwell {

std::u16string ToUtf16(std::string_view utf8) {
    std::u16string result;
    result.reserve(utf8.size());
    for (auto it = utf8.begin(); it != utf8.end();) {
        auto valid = utf8::find_invalid(it, utf8.end());
        utf8::utf8to16(it, valid, std::back_inserter(result));
        it = valid;
        if (it != utf8.end()) {
            result.push_back(u'\xFFFD');
            ++it;
        }
    }
    return result;
}

std::string ToUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (; !text.empty(); text.remove_prefix(FirstLength(text))) {
        char32_t c = FirstCharacter(text);
        utf8::append(c >= 0xD800 && c < 0xE000 ? 0xFFFD : static_cast<uint32_t>(c),
                     std::back_inserter(result));
    }
    return result;
}

std::u16string ToUtf16(char32_t character) {
    if (character > 0x10FFFF) character = 0xFFFD;
    if (character < 0x10000) return {static_cast<char16_t>(character)};
    char32_t rest = character - 0x10000;
    return {static_cast<char16_t>(0xD800 + (rest >> 10)), static_cast<char16_t>(0xDC00 + (rest & 0x3FF))};
}

std::string ToUtf8(char32_t character) { return ToUtf8(ToUtf16(character)); }

int32_t CountCharacters(std::string_view utf8) {
    int32_t count = 0;
    for (auto it = utf8.begin(); it != utf8.end();) {
        auto valid = utf8::find_invalid(it, utf8.end());
        count += static_cast<int32_t>(utf8::distance(it, valid));
        it = valid;
        if (it != utf8.end()) {
            ++count;
            ++it;
        }
    }
    return count;
}

int32_t CountCharacters(std::u16string_view text) {
    int32_t count = 0;
    for (; !text.empty(); text.remove_prefix(FirstLength(text))) ++count;
    return count;
}

}  // namespace caretwell
