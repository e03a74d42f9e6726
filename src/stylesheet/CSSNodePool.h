// Memory for the tree of one parse: nodes and texts are laid side by side into large
// pieces and all go at once. A keystroke in a long sheet makes some hundred thousand
// of them.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <vector>

namespace caretwell {

class TNodePool {
public:
    TNodePool() = default;
    ~TNodePool() { Clear(); }
    TNodePool(const TNodePool&) = delete;
    TNodePool& operator=(const TNodePool&) = delete;

    /// Lives until Clear.
    template <class T>
    T* Make() {
        T* object = new (Take<alignof(T)>(sizeof(T))) T();
        if constexpr (!std::is_trivially_destructible_v<T>)
            FToDestroy.push_back({[](void* p) { static_cast<T*>(p)->~T(); }, object});
        return object;
    }

    /// A copy of the text that lives until Clear.
    std::string_view Keep(std::string_view text) {
        if (text.empty()) return {};
        char* copy = static_cast<char*>(Take<1>(text.size()));
        std::memcpy(copy, text.data(), text.size());
        return {copy, text.size()};
    }

    /// Bytes taken, in whole pieces.
    size_t GetSize() const { return FNextPiece * PieceSize; }

    /// Destroys what was made. Memory stays for the next tree, as much as this one took.
    void Clear();

private:
    static constexpr size_t PieceSize = 64 * 1024;

    struct TPiece {
        std::unique_ptr<std::byte[]> Bytes;
        size_t Size;
    };
    struct TDestruction {
        void (*Run)(void*);
        void* Object;
    };

    template <size_t Alignment>
    void* Take(size_t size) {
        size_t at = (FUsed + Alignment - 1) & ~(Alignment - 1);
        if (at + size > FSize) return TakeFromNext(size);
        FUsed = at + size;
        return FPiece + at;
    }
    void* TakeFromNext(size_t size);

    std::byte* FPiece = nullptr;
    size_t FUsed = 0;
    size_t FSize = 0;
    size_t FNextPiece = 0;
    std::vector<TPiece> FPieces;
    std::vector<TDestruction> FToDestroy;
};

}  // namespace caretwell
