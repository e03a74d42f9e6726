// How much one schema may put into the table of tags. A look-up walks a bucket of the
// table, so names made to fall into one bucket count as much as names without number.
#pragma once

#include <array>
#include <string_view>

#include "markup/Hash.h"

namespace caretwell {

class TTagLimits {
public:
    static constexpr size_t MaxTags = 20000;
    static constexpr size_t MaxTagsOfBucket = 1000;
    static constexpr size_t MaxChildren = 500000;  ///< of all tags together

    /// False if the tag would be one too many; it then does not count.
    bool AdmitTag(std::u16string_view name) {
        size_t& crowd = FCrowds[Hash(name)];
        if (FTags == MaxTags || crowd == MaxTagsOfBucket) return false;
        ++FTags;
        ++crowd;
        return true;
    }
    bool AdmitChild() { return FChildren < MaxChildren && ++FChildren; }

private:
    size_t FTags = 0;
    size_t FChildren = 0;
    std::array<size_t, HashBuckets> FCrowds{};
};

}  // namespace caretwell
