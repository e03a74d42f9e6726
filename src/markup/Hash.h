// Hash, comparison without regard to case, and conversions between the two string
// widths: the small things that every table of the engine shares.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/Export.h"

namespace caretwell {

/// Bucket of a name, 0 to 255. Letters hash alike in either case, since every table
/// keyed by it compares names without regard to case.
constexpr uint32_t Hash(std::u16string_view text) {
    uint32_t sum = 0;
    for (char16_t c : text) sum += static_cast<uint16_t>(c | 0x20);
    return sum & 0xFF;
}
constexpr uint32_t Hash(std::string_view text) {
    uint32_t sum = 0;
    for (char c : text) sum += static_cast<uint8_t>(c | 0x20);
    return sum & 0xFF;
}
inline constexpr uint32_t HashBuckets = 256;  ///< of every table that is keyed by Hash

/// "a" to "z" as "A" to "Z"; no locale.
template <class C>
constexpr C ToUpper(C c) {
    return c >= 'a' && c <= 'z' ? static_cast<C>(c - 32) : c;
}
template <class C>
constexpr C ToLower(C c) {
    return c >= 'A' && c <= 'Z' ? static_cast<C>(c + 32) : c;
}

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

/// UTF-8 to 16-bit units. Broken input gives U+FFFD for each byte that fits nowhere.
CARETWELL_API std::u16string ToUtf16(std::string_view utf8);
/// 16-bit units to UTF-8. A lone surrogate gives U+FFFD.
CARETWELL_API std::string ToUtf8(std::u16string_view text);
/// Characters (code points) of UTF-8 text; every byte that fits nowhere counts as one.
int32_t CountCharacters(std::string_view utf8);
/// Characters (code points) of 16-bit text.
int32_t CountCharacters(std::u16string_view text);

/// Length in bytes that a lead byte announces, 1 for anything that is no lead byte.
constexpr int32_t UTF8CharLength(uint8_t lead) {
    return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 1;
}

}  // namespace caretwell
