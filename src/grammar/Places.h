// What an element's place adds to its model: exceptions of the elements around it, and for a
// transparent element what these hold.
//
//     <a><em>^           no a: an exclusion reaches down to all that is held
//     <p><ins>^          what p holds, and no block, whatever ins can hold elsewhere
//
// Both are numbers that open elements share, made when they first come up.
#pragma once

#include <deque>

#include "grammar/Grammar.h"

namespace caretwell {

/// The exceptions at a place.
struct TExceptions {
    TNameSet Excluded, Included;
    std::vector<TLikeness> Likenesses;
    friend bool operator==(const TExceptions&, const TExceptions&) = default;
};
using TExceptionsId = uint32_t;

/// The names that the elements around a transparent one let in.
using TLimitId = uint32_t;
inline constexpr TLimitId NoLimit = 0;

class TPlaces {
public:
    /// Beyond these a place adds what its parent's adds.
    static constexpr size_t MaxKept = 2'000;

    explicit TPlaces(TGrammar& grammar);

    /// Inside an element that stands in a place with the exceptions given.
    TExceptionsId Enter(TExceptionsId outer, TElementId element);
    const TExceptions& GetExceptions(TExceptionsId id) const { return FExceptions[id]; }
    /// Of a transparent element in a holder that has the limit given itself.
    TLimitId Limit(TLimitId ofHolder, TElementId holder);
    /// Null for NoLimit.
    const TNameSet* GetLimit(TLimitId id) const { return id == NoLimit ? nullptr : &FLimits[id]; }

private:
    static uint64_t Key(uint32_t a, uint32_t b) { return uint64_t{a} << 32 | b; }

    TGrammar& FGrammar;
    std::deque<TExceptions> FExceptions;
    std::deque<TNameSet> FLimits;
    std::unordered_map<uint64_t, uint32_t> FEntered, FLimited;
};

}  // namespace caretwell
