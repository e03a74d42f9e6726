// How much one schema may put into the table of tags.
#pragma once

#include <cstddef>

namespace caretwell {

class TTagLimits {
public:
    static constexpr size_t MaxTags = 20000;
    static constexpr size_t MaxChildren = 500000;  ///< of all tags together

    /// False if the tag would be one too many; it then does not count.
    bool AdmitTag() { return FTags < MaxTags && ++FTags; }
    bool AdmitChild() { return FChildren < MaxChildren && ++FChildren; }

private:
    size_t FTags = 0;
    size_t FChildren = 0;
};

}  // namespace caretwell
