// The bytes of a document as one block with a hole where the last change was:
// reading is copying, and typing on at one place moves nothing.
#pragma once

#include <string>
#include <string_view>

namespace caretwell {

/// Offsets are bytes from 0 and must lie within the text; its owner checks them.
class TGapText {
public:
    TGapText() = default;
    explicit TGapText(std::string text) : FBytes(std::move(text)), FGap(FBytes.size()) {}

    size_t Size() const { return FBytes.size() - FGapSize; }
    char At(size_t offset) const { return FBytes[offset < FGap ? offset : offset + FGapSize]; }

    /// The longest stretch without the hole that begins at offset; empty at the end.
    std::string_view Run(size_t offset) const;
    /// Copies count bytes, which must be there.
    void Copy(size_t offset, size_t count, char* dest) const;
    std::string Substring(size_t offset, size_t count) const;

    void Replace(size_t offset, size_t count, std::string_view text);

private:
    void MoveGap(size_t offset);
    void GrowGap(size_t needed);

    std::string FBytes;
    size_t FGap = 0;
    size_t FGapSize = 0;
};

}  // namespace caretwell
