#include "lens/LensView.h"

#include <algorithm>
#include <string>
#include <utility>

#include "host/ViewHandles.h"

namespace caretwell {
namespace {

std::string ReadAll(INibEditBuffer* buffer) {
    constexpr int32_t piece = 1 << 16;
    std::string text;
    const auto reader = buffer ? buffer->CreateReader() : nullptr;
    for (int32_t got = reader ? piece : 0; got > 0;) {
        const size_t size = text.size();
        text.resize(size + piece);
        got = std::max(reader->Read(static_cast<int32_t>(size), text.data() + size, piece), 0);
        text.resize(size + static_cast<size_t>(got));
    }
    return text;
}

class TLensReader final : public TImplements<INibEditReader> {
public:
    explicit TLensReader(std::shared_ptr<const TLensText> text) : FText(std::move(text)) {}

    int32_t Read(int32_t offset, char* dest, int32_t count) override {
        const auto& text = FText->FText;
        const auto start = static_cast<size_t>(std::max(offset, 0));
        if (count <= 0 || start >= text.size()) return 0;
        return static_cast<int32_t>(text.copy(dest, static_cast<size_t>(count), start));
    }

private:
    std::shared_ptr<const TLensText> FText;
};

class TLensBuffer final : public TImplements<INibEditBuffer> {
public:
    TLensBuffer(TRef<INibEditBuffer> buffer, std::shared_ptr<const TLensText> text)
        : FBuffer(std::move(buffer)), FText(std::move(text)) {}

    std::string FileName() override { return FBuffer->FileName(); }
    TRef<INibEditReader> CreateReader() override { return MakeRef<TLensReader>(FText); }
    TRef<INibEditWriter> CreateWriter() override { return FBuffer->CreateWriter(); }

private:
    TRef<INibEditBuffer> FBuffer;
    std::shared_ptr<const TLensText> FText;
};

}  // namespace

const TLensText& TLensView::LensText() {
    if (!FText) {
        const auto text = ReadAll(FView->Buffer().Get());
        const auto caret = static_cast<size_t>(CaretOffsetOf(*FView));
        FText = std::make_shared<const TLensText>(LookThrough(text, FKind, caret));
    }
    return *FText;
}

TRef<INibEditBuffer> TLensView::Buffer() {
    const auto buffer = FView->Buffer();
    if (!buffer) return nullptr;
    LensText();
    return MakeRef<TLensBuffer>(buffer, FText);
}

}  // namespace caretwell
