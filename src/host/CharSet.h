// Sets of characters as the host and the scanners use them, 256 bits over bytes, the two
// cases of a letter, the ends of a line.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace caretwell {

/// A set of byte values. A character that is written in several UTF-8 bytes is a
/// member if its first byte is, so a set with 192 to 254 takes in all of them.
class TCharSet {
public:
    constexpr TCharSet() = default;
    constexpr explicit TCharSet(std::string_view members) {
        for (char c : members) Add(static_cast<uint8_t>(c));
    }

    constexpr void Add(uint8_t c) { FBits[c >> 6] |= uint64_t{1} << (c & 63); }
    constexpr bool Contains(uint8_t c) const { return (FBits[c >> 6] >> (c & 63)) & 1; }

    constexpr TCharSet With(std::string_view members) const {
        TCharSet result = *this;
        for (char c : members) result.Add(static_cast<uint8_t>(c));
        return result;
    }
    /// Adds all values from first to last, both included.
    constexpr TCharSet WithRange(uint8_t first, uint8_t last) const {
        TCharSet result = *this;
        for (unsigned c = first; c <= last; ++c) result.Add(static_cast<uint8_t>(c));
        return result;
    }

    friend constexpr bool operator==(const TCharSet&, const TCharSet&) = default;

private:
    std::array<uint64_t, 4> FBits{};
};

/// "a" to "z" as "A" to "Z"; no locale.
template <class C>
constexpr C ToUpper(C c) {
    return c >= 'a' && c <= 'z' ? static_cast<C>(c - 32) : c;
}
template <class C>
constexpr C ToLower(C c) {
    return c >= 'A' && c <= 'Z' ? static_cast<C>(c + 32) : c;
}

constexpr bool IsLineBreak(int c) { return c == '\n' || c == '\r'; }

}  // namespace caretwell
