#include "memory/EditBuffer.h"

#include <algorithm>

namespace caretwell {
namespace {

class TEditReader final : public TImplements<INibEditReader> {
public:
    explicit TEditReader(TRef<TEditBuffer> buffer) : FBuffer(std::move(buffer)) {}

    int32_t Read(int32_t offset, char* dest, int32_t count) override {
        return FBuffer->Text().Read(offset, dest, count);
    }

private:
    TRef<TEditBuffer> FBuffer;
};

// Offsets that come in count in the text as it was; FShift takes them to the text
// as it is. A writer that somebody else's change has overtaken knows no place any
// more and writes nothing further.
class TEditWriter final : public TImplements<INibEditWriter> {
public:
    explicit TEditWriter(TRef<TEditBuffer> buffer)
        : FBuffer(std::move(buffer)),
          FStep(FBuffer->Text()),
          FSize(FBuffer->Text().Size()),
          FRevision(FBuffer->Text().Revision()) {}

    void CopyTo(int32_t offset) override { FPlace = Ahead(offset); }

    void DeleteTo(int32_t offset) override {
        int32_t end = Ahead(offset);
        if (!Replace(end - FPlace, {})) return;
        FShift -= end - FPlace;
        FPlace = end;
    }

    void Insert(std::string_view utf8) override {
        if (Replace(0, utf8)) FShift += static_cast<int32_t>(utf8.size());
    }

private:
    int32_t Ahead(int32_t offset) const { return std::max(FPlace, std::min(offset, FSize)); }

    bool Replace(int32_t count, std::string_view text) {
        TTextBuffer& buffer = FBuffer->Text();
        bool isDone = buffer.Revision() == FRevision && buffer.Replace(FPlace + FShift, count, text);
        if (isDone) FRevision = buffer.Revision();
        return isDone;
    }

    TRef<TEditBuffer> FBuffer;
    TUndoStep FStep;
    int32_t FSize;
    uint64_t FRevision;
    int32_t FPlace = 0;
    int32_t FShift = 0;
};

}  // namespace

TRef<INibEditReader> TEditBuffer::CreateReader() { return MakeRef<TEditReader>(TRef<TEditBuffer>(this)); }

TRef<INibEditWriter> TEditBuffer::CreateWriter() {
    if (FText.IsReadOnly()) return nullptr;
    return MakeRef<TEditWriter>(TRef<TEditBuffer>(this));
}

TRef<INibEditView> TSourceEditor::View(int32_t index) {
    return index >= 0 && index < ViewCount() ? FViews[static_cast<size_t>(index)] : nullptr;
}

}  // namespace caretwell
