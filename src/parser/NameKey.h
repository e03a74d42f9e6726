// A name as a number: how the scan finds an element without comparing strings.
//
// Bit 5 is set in every byte, which folds letters as Hash does; the hash is then the sum
// of the bytes, taken eight at a time.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "markup/Text.h"

namespace caretwell {

struct TNameKey {
    uint64_t Head = 0;    ///< the first eight bytes, folded; zero behind a shorter name
    uint32_t Length = 0;  ///< in bytes
    uint32_t Bucket = 0;  ///< Hash of the name
    bool IsAscii = true;

    /// Two ASCII names of up to eight bytes with equal keys are equal; longer ones are to
    /// be compared.
    bool IsWhole() const { return IsAscii && Length <= sizeof(Head); }
    friend bool operator==(const TNameKey&, const TNameKey&) = default;
};

constexpr uint64_t EachByte(uint64_t byte) { return byte * 0x0101010101010101u; }

constexpr uint32_t SumOfBytes(uint64_t bytes) {
    constexpr uint64_t Lanes = 0x00FF00FF00FF00FFu;
    uint64_t pairs = (bytes & Lanes) + ((bytes >> 8) & Lanes);
    return static_cast<uint32_t>((pairs * 0x0001000100010001u) >> 48);
}

/// Key of [name, name + length); more says that eight bytes may be read there anyway.
inline TNameKey MakeNameKey(const char* name, size_t length, bool more) {
    TNameKey key;
    key.Length = static_cast<uint32_t>(length);
    constexpr size_t HeadSize = sizeof(key.Head);
    size_t head = length < HeadSize ? length : HeadSize;
    if (head == 0) return key;
    std::memcpy(&key.Head, name, more ? HeadSize : head);
    key.Head |= EachByte(0x20);
    key.Head &= ~uint64_t{0} >> (8 * (HeadSize - head));
    key.IsAscii = (key.Head & EachByte(0x80)) == 0;
    uint32_t sum = SumOfBytes(key.Head);
    for (size_t i = HeadSize; i < length; ++i) {
        sum += static_cast<uint8_t>(name[i] | 0x20);
        key.IsAscii &= static_cast<uint8_t>(name[i]) < 0x80;
    }
    key.Bucket = sum & 0xFF;
    return key;
}
inline TNameKey MakeNameKey(std::string_view name) { return MakeNameKey(name.data(), name.size(), false); }

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the first byte of a name is the lowest of its key");

}  // namespace caretwell
