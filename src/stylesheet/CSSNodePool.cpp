#include "stylesheet/CSSNodePool.h"

#include <algorithm>

namespace caretwell {

// A piece begins aligned for anything that new gives memory for.
void* TNodePool::TakeFromNext(size_t size) {
    if (FNextPiece == FPieces.size() || FPieces[FNextPiece].Size < size) {
        size_t wanted = std::max(PieceSize, size);
        TPiece piece{std::unique_ptr<std::byte[]>(new std::byte[wanted]), wanted};
        FPieces.insert(FPieces.begin() + static_cast<std::ptrdiff_t>(FNextPiece), std::move(piece));
    }
    TPiece& piece = FPieces[FNextPiece++];
    FPiece = piece.Bytes.get();
    FSize = piece.Size;
    FUsed = size;
    return FPiece;
}

void TNodePool::Clear() {
    for (const TDestruction& destruction : FToDestroy) destruction.Run(destruction.Object);
    FToDestroy.clear();
    FPieces.resize(std::min(FNextPiece, FPieces.size()));
    FPiece = nullptr;
    FUsed = FSize = FNextPiece = 0;
}

}  // namespace caretwell
