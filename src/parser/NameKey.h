// A name as a number: how the scan finds an element without comparing strings.
//
// Bit 5 is set in every byte, which folds letters as FoldedHash does; the first eight
// bytes are taken at once.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "markup/NameMap.h"
#include "markup/Text.h"

namespace caretwell {

struct TNameKey {
    uint64_t Head = 0;    ///< the first eight bytes, folded; zero after a shorter name
    uint32_t Length = 0;  ///< in bytes
    uint32_t Hash = 0;    ///< FoldedHash of the name
    bool IsAscii = true;

    /// Two ASCII names of up to eight bytes with equal keys are equal; longer ones are to
    /// be compared.
    bool IsWhole() const { return IsAscii && Length <= sizeof(Head); }
    friend bool operator==(const TNameKey&, const TNameKey&) = default;
};

constexpr uint64_t EachByte(uint64_t byte) { return byte * 0x0101010101010101u; }

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
    uint64_t tail = 0;
    for (size_t i = HeadSize; i < length; ++i) {
        tail = AddToTail(tail, static_cast<uint8_t>(name[i] | 0x20));
        key.IsAscii &= static_cast<uint8_t>(name[i]) < 0x80;
    }
    key.Hash = HashOfHead(key.Head, tail);
    return key;
}
inline TNameKey MakeNameKey(std::string_view name) { return MakeNameKey(name.data(), name.size(), false); }

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the first byte of a name is the lowest of its key");

}  // namespace caretwell
