// What a byte of a document is to the scan.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "markup/Text.h"

namespace caretwell {

enum TByteClass : uint8_t { bcOther, bcWhite, bcQuote, bcLess, bcGreater, bcPercent, bcSlash, bcLetter };

inline constexpr std::array<TByteClass, 256> ByteClasses = [] {
    std::array<TByteClass, 256> classes{};
    for (char c : {'\t', '\n', '\r', ' ', '='}) classes[static_cast<uint8_t>(c)] = bcWhite;
    classes['"'] = classes['\''] = bcQuote;
    classes['<'] = bcLess;
    classes['>'] = bcGreater;
    classes['%'] = bcPercent;
    classes['/'] = bcSlash;
    for (unsigned c = 'A'; c <= 'Z'; ++c) classes[c] = classes[c + 32] = bcLetter;
    return classes;
}();
constexpr TByteClass ClassOf(char c) { return ByteClasses[static_cast<uint8_t>(c)]; }
constexpr bool IsLetter(char c) { return ClassOf(c) == bcLetter; }
constexpr bool IsBlank(char c) { return c == 9 || c == 32; }

/// NameChars as a table, for the loop over a name.
inline constexpr std::array<bool, 256> NameBytes = [] {
    std::array<bool, 256> bytes{};
    for (unsigned c = 0; c < 256; ++c) bytes[c] = NameChars.Contains(static_cast<uint8_t>(c));
    return bytes;
}();
constexpr bool IsNameByte(char c) { return NameBytes[static_cast<uint8_t>(c)]; }

/// First "<" or ">" from p on, or end. The two differ in one bit, so one test of eight
/// bytes at a time finds both.
inline const char* FindAngle(const char* p, const char* end) {
    constexpr uint64_t Ones = 0x0101010101010101u;
    while (end - p >= 8) {
        uint64_t word;
        std::memcpy(&word, p, 8);
        word = (word | 0x02 * Ones) ^ ('>' * Ones);
        uint64_t zeros = (word - Ones) & ~word & (0x80 * Ones);
        if (zeros) return p + (__builtin_ctzll(zeros) >> 3);
        p += 8;
    }
    while (p < end && *p != '<' && *p != '>') ++p;
    return p;
}

}  // namespace caretwell
