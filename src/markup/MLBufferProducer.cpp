#include "markup/MLBufferProducer.h"

#include <algorithm>
#include <limits>

#include "markup/Text.h"

namespace caretwell {
namespace {

constexpr bool IsCutPlace(char c) { return c == '\t' || c == '\n' || c == '\r' || c == ' '; }

}  // namespace

TMLBufferProducer::TMLBufferProducer(TRef<INibEditView> editView, int32_t offset)
    : FEditView(std::move(editView)), FOffset(offset), FStart(offset) {
    if (auto buffer = FEditView ? FEditView->Buffer() : nullptr) FFileName = buffer->FileName();
}

TMLBufferProducer::TMLBufferProducer(TRef<INibSourceEditor> sourceEditor, int32_t offset)
    : FOffset(offset), FStart(offset) {
    if (!sourceEditor) return;
    FFileName = sourceEditor->FileName();
    for (int32_t i = 0; i < sourceEditor->ViewCount() && !FEditView; ++i) {
        auto view = sourceEditor->View(i);
        auto buffer = view ? view->Buffer() : nullptr;
        if (buffer && SameText(buffer->FileName(), FFileName)) FEditView = view;
    }
    if (!FEditView) FSourceEditor = std::move(sourceEditor);
}

TMLBufferProducer::TMLBufferProducer(std::istream& stream, std::string fileName, int32_t offset)
    : FStream(&stream), FStart(offset), FFileName(std::move(fileName)) {
    stream.seekg(offset);
}

bool TMLBufferProducer::Rewind() {
    FCount = 0;
    FHasData = false;
    FOffset = FStream ? 0 : FStart;
    if (!FStream) return true;
    FStream->clear();
    FStream->seekg(FStart);
    return FStream->good();
}

TRef<INibEditReader> TMLBufferProducer::CreateReader() const {
    if (FEditView) {
        auto buffer = FEditView->Buffer();
        return buffer ? buffer->CreateReader() : nullptr;
    }
    return FSourceEditor ? FSourceEditor->CreateReader() : nullptr;
}

int32_t TMLBufferProducer::ReadBlock() {
    if (FStream) {
        FStream->read(FBuffer, BlockSize);
        return static_cast<int32_t>(FStream->gcount());
    }
    // Offsets have 31 bits: what lies after them is not read, so that a reader without an
    // end has one here. Nor is a reader believed that claims more than it was asked for.
    if (FOffset > std::numeric_limits<int32_t>::max() - BlockSize) return 0;
    auto reader = CreateReader();
    // A reader over pieces gives what one piece holds; only nothing at all is the end.
    int32_t count = 0;
    while (reader && count < BlockSize) {
        int32_t wanted = BlockSize - count;
        int32_t read = std::clamp(reader->Read(FOffset + count, FBuffer + count, wanted), 0, wanted);
        if (read == 0) break;
        count += read;
    }
    return count;
}

// An editor needs nothing given back: its next read starts where this block ends.
void TMLBufferProducer::GiveBack(int32_t count) {
    if (FStream && count > 0) FStream->seekg(-count, std::ios::cur);
}

bool TMLBufferProducer::FillBuffer() {
    FCount = ReadBlock();
    if (FCount == BlockSize) {
        int32_t end = FCount;
        while (end > 0 && !IsCutPlace(FBuffer[end - 1])) --end;
        if (end > 0) {
            GiveBack(FCount - end);
            FCount = end;
        }
    }
    if (FCount > 0) FBuffer[FCount] = 0;
    FOffset += FCount;
    FHasData = FCount > 0;
    return FHasData;
}

int32_t TMLBufferProducer::BufferOffset(const char* position) const {
    if (FCount == 0) return FOffset;
    return static_cast<int32_t>(position - FBuffer) + FOffset - FCount;
}

const char* TMLBufferProducer::BufferAtOffset(int32_t index) const {
    return index >= 0 && index < FCount ? FBuffer + index : nullptr;
}

}  // namespace caretwell
