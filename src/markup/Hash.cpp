#include "markup/Hash.h"

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
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        bool isLead = c >= 0xD800 && c < 0xDC00;
        bool isPair = isLead && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
        if (isPair) c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
        else if (c >= 0xD800 && c < 0xE000) c = 0xFFFD;
        utf8::append(static_cast<uint32_t>(c), std::back_inserter(result));
    }
    return result;
}

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
    for (size_t i = 0; i < text.size(); ++i) {
        bool isTail = text[i] >= 0xDC00 && text[i] < 0xE000;
        bool isPaired = isTail && i > 0 && text[i - 1] >= 0xD800 && text[i - 1] < 0xDC00;
        if (!isPaired) ++count;
    }
    return count;
}

}  // namespace caretwell
