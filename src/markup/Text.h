// The small things that everybody does with text: comparison without regard to case, the two
// string widths, characters of two units, the step over a line break, the bytes of a name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "caretwell/host/CharSet.h"
#include "caretwell/host/Export.h"

namespace caretwell {

namespace detail {
// Code units of either width compare as unsigned numbers.
constexpr uint16_t Unit(char c) { return static_cast<uint8_t>(c); }
constexpr uint16_t Unit(char16_t c) { return c; }
}  // namespace detail

/// Negative, 0 or positive, code unit by code unit without regard to case.
template <class C>
constexpr int CompareText(std::basic_string_view<C> a, std::basic_string_view<C> b) {
    size_t count = a.size() < b.size() ? a.size() : b.size();
    for (size_t i = 0; i < count; ++i) {
        int difference = detail::Unit(ToUpper(a[i])) - detail::Unit(ToUpper(b[i]));
        if (difference) return difference;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}
inline int CompareText(std::u16string_view a, std::u16string_view b) { return CompareText<char16_t>(a, b); }
inline int CompareText(std::string_view a, std::string_view b) { return CompareText<char>(a, b); }

inline bool SameText(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() && CompareText<char16_t>(a, b) == 0;
}
inline bool SameText(std::string_view a, std::string_view b) {
    return a.size() == b.size() && CompareText<char>(a, b) == 0;
}
/// An ASCII or byte-wide name against a 16-bit one, without regard to case.
inline bool SameText(std::string_view a, std::u16string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (detail::Unit(ToUpper(a[i])) != detail::Unit(ToUpper(b[i]))) return false;
    return true;
}

/// Order of a list: without regard to case, and of words alike but for that the small one first.
inline bool ComesBefore(std::u16string_view a, std::u16string_view b) {
    int order = CompareText(a, b);
    return order ? order < 0 : a > b;
}

/// True if text begins with prefix, without regard to case.
template <class C>
constexpr bool StartsWithText(std::basic_string_view<C> text, std::basic_string_view<C> prefix) {
    return text.size() >= prefix.size() && CompareText(text.substr(0, prefix.size()), prefix) == 0;
}
inline bool StartsWithText(std::u16string_view text, std::u16string_view prefix) {
    return StartsWithText<char16_t>(text, prefix);
}
inline bool StartsWithText(std::string_view text, std::string_view prefix) {
    return StartsWithText<char>(text, prefix);
}

/// LF, CR, LF CR and CR LF each are one line break. True if two bytes side by side, the first of
/// which is LF or CR, are one.
constexpr bool IsBreakPair(char first, char next) { return next == (first == '\n' ? '\r' : '\n'); }
/// Place after the line break at p (which is LF or CR), not beyond end.
constexpr const char* SkipLineBreak(const char* p, const char* end) {
    return end - p > 1 && IsBreakPair(p[0], p[1]) ? p + 2 : p + 1;
}

/// Bytes that continue a name; 192 to 254 lead a multi-byte character, which counts whole.
inline constexpr TCharSet NameChars =
    TCharSet("#-.:_").WithRange('0', '9').WithRange('A', 'Z').WithRange('a', 'z').WithRange(0xC0, 0xFE);

constexpr bool IsLeadingSurrogate(char16_t c) { return c >= 0xD800 && c < 0xDC00; }
constexpr bool IsTrailingSurrogate(char16_t c) { return c >= 0xDC00 && c < 0xE000; }
/// 16-bit units of the first character of a text that is not empty: 2 for a surrogate pair.
constexpr size_t FirstLength(std::u16string_view text) {
    return text.size() > 1 && IsLeadingSurrogate(text[0]) && IsTrailingSurrogate(text[1]) ? 2 : 1;
}
/// The first character of a text that is not empty; a lone surrogate as it is.
constexpr char32_t FirstCharacter(std::u16string_view text) {
    if (FirstLength(text) == 1) return text[0];
    return 0x10000 + ((char32_t{text[0]} - 0xD800) << 10) + (char32_t{text[1]} - 0xDC00);
}

/// UTF-8 to 16-bit units. Broken input gives U+FFFD for each byte that fits nowhere.
CARETWELL_API std::u16string ToUtf16(std::string_view utf8);
/// 16-bit units to UTF-8. A lone surrogate gives U+FFFD.
CARETWELL_API std::string ToUtf8(std::u16string_view text);
/// One character; a number beyond the last one gives U+FFFD.
CARETWELL_API std::u16string ToUtf16(char32_t character);
CARETWELL_API std::string ToUtf8(char32_t character);
/// Characters (code points) of UTF-8 text; every byte that fits nowhere counts as one.
int32_t CountCharacters(std::string_view utf8);
/// Characters (code points) of 16-bit text.
int32_t CountCharacters(std::u16string_view text);

/// Length in bytes that a lead byte announces, 1 for anything that is no lead byte.
constexpr int32_t UTF8CharLength(uint8_t lead) {
    return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 1;
}

}  // namespace caretwell
