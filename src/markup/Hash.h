// Bucket of a name, in the tables whose newest entry hides the older ones.
#pragma once

#include <cstdint>
#include <string_view>

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

}  // namespace caretwell
