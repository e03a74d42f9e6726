// The sequence of numbers and the words that generated documents are made of.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace caretwell::bench {

/// SplitMix64. The standard library's engines are fixed, its distributions are not; a
/// choice here is one multiplication, the same everywhere.
class TRandom {
public:
    explicit TRandom(uint64_t seed) : FState(seed) {}

    uint64_t Next() {
        uint64_t z = FState += 0x9E3779B97F4A7C15;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return z ^ (z >> 31);
    }
    /// From 0 to below bound, which is not 0.
    uint32_t Below(uint32_t bound) { return static_cast<uint32_t>(((Next() >> 32) * bound) >> 32); }
    uint32_t Between(uint32_t first, uint32_t last) { return first + Below(last - first + 1); }
    bool OneIn(uint32_t count) { return Below(count) == 0; }
    template <class T, size_t N>
    const T& Of(const std::array<T, N>& choices) {
        return choices[Below(static_cast<uint32_t>(N))];
    }
    std::string_view Of(std::initializer_list<std::string_view> choices) {
        return choices.begin()[Below(static_cast<uint32_t>(choices.size()))];
    }

private:
    uint64_t FState;
};

// A few carry letters of two bytes, as text does.
inline constexpr std::array<std::string_view, 48> Words = {
    "the",   "of",      "and",    "a",        "in",        "harbour",  "winter",     "letter",
    "table", "morning", "stone",  "between",  "caf\u00e9", "river",    "paper",      "answer",
    "light", "summer",  "north",  "question", "without",   "garden",   "na\u00efve", "street",
    "to",    "that",    "which",  "under",    "silver",    "window",   "number",     "evening",
    "bread", "copper",  "island", "journey",  "market",    "mountain", "pencil",     "quarter",
    "it's",  "road",    "signal", "timber",   "valley",    "wheel",    "cr\u00e8me", "yellow"};

/// That many words with blanks between them.
inline std::string MakeWords(TRandom& random, uint32_t count) {
    std::string text;
    for (uint32_t i = 0; i < count; ++i) {
        if (i) text += ' ';
        text += random.Of(Words);
    }
    return text;
}

}  // namespace caretwell::bench
