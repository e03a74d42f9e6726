// 128-bit interface identifiers, written the way people write them.
#pragma once

#include <cstdint>
#include <string_view>

namespace caretwell {

/// Identity of an interface. Two interfaces with equal identifiers are the same to a query.
struct TGuid {
    uint64_t High = 0;
    uint64_t Low = 0;
    friend constexpr bool operator==(const TGuid&, const TGuid&) = default;
};

/// Reads "99bce3a1-bf8f-40fd-8b3f-b6707bae0561". A wrong text does not compile.
consteval TGuid Guid(std::string_view text) {
    TGuid result;
    int digits = 0;
    for (char c : text) {
        if (c == '-') continue;
        uint64_t value = 0;
        if (c >= '0' && c <= '9') value = static_cast<uint64_t>(c - '0');
        else if (c >= 'a' && c <= 'f') value = static_cast<uint64_t>(c - 'a') + 10;
        else throw "an identifier holds digits, a to f and hyphens";
        uint64_t& half = digits < 16 ? result.High : result.Low;
        half = (half << 4) | value;
        ++digits;
    }
    if (digits != 32) throw "an identifier has 32 digits";
    return result;
}

}  // namespace caretwell
