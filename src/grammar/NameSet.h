// A set of element names.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "grammar/ContentModels.h"

namespace caretwell {

class TNameSet {
public:
    bool Has(TName name) const {
        size_t word = name / 64;
        return word < FWords.size() && (FWords[word] >> (name % 64) & 1);
    }
    bool IsEmpty() const {
        return std::ranges::all_of(FWords, [](uint64_t word) { return word == 0; });
    }
    void Add(TName name) {
        if (name / 64 >= FWords.size()) FWords.resize(name / 64 + 1);
        FWords[name / 64] |= uint64_t{1} << (name % 64);
    }
    void Remove(TName name) {
        if (Has(name)) FWords[name / 64] &= ~(uint64_t{1} << (name % 64));
    }
    void AddAll(const TNameSet& other) {
        if (FWords.size() < other.FWords.size()) FWords.resize(other.FWords.size());
        for (size_t i = 0; i < other.FWords.size(); ++i) FWords[i] |= other.FWords[i];
    }
    void RemoveAll(const TNameSet& other) {
        for (size_t i = 0; i < FWords.size() && i < other.FWords.size(); ++i) FWords[i] &= ~other.FWords[i];
    }
    void KeepAll(const TNameSet& other) {
        for (size_t i = 0; i < FWords.size(); ++i) FWords[i] &= i < other.FWords.size() ? other.FWords[i] : 0;
    }
    /// In the order of the numbers.
    template <class TVisit>
    void ForEach(TVisit visit) const {
        for (size_t i = 0; i < FWords.size(); ++i)
            for (uint64_t bits = FWords[i]; bits; bits &= bits - 1)
                visit(static_cast<TName>(i * 64 + static_cast<size_t>(std::countr_zero(bits))));
    }

    friend bool operator==(const TNameSet&, const TNameSet&) = default;

private:
    std::vector<uint64_t> FWords;
};

}  // namespace caretwell
