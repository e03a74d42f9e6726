// A text buffer as the engine sees it: a file name, readers that copy bytes, and
// writers that change them from front to back in one undoable step.
#pragma once

#include "host/Nibapi.h"
#include "memory/TextBuffer.h"

namespace caretwell {

class TEditBuffer final : public TImplements<INibEditBuffer> {
public:
    TEditBuffer(std::string text, std::string fileName)
        : FText(std::move(text)), FFileName(std::move(fileName)) {}

    TTextBuffer& Text() { return FText; }
    std::string FileName() override { return FFileName; }
    TRef<INibEditReader> CreateReader() override;
    /// Null if the buffer is read-only.
    TRef<INibEditWriter> CreateWriter() override;

private:
    TTextBuffer FText;
    std::string FFileName;
};

/// A file with its views, for those who ask by file and not by view.
class TSourceEditor final : public TImplements<INibSourceEditor> {
public:
    explicit TSourceEditor(TRef<TEditBuffer> buffer) : FBuffer(std::move(buffer)) {}

    void AddView(TRef<INibEditView> view) { FViews.push_back(std::move(view)); }

    std::string FileName() override { return FBuffer->FileName(); }
    int32_t ViewCount() override { return static_cast<int32_t>(FViews.size()); }
    /// Null if there is no view of that index.
    TRef<INibEditView> View(int32_t index) override;
    TRef<INibEditReader> CreateReader() override { return FBuffer->CreateReader(); }

private:
    TRef<TEditBuffer> FBuffer;
    std::vector<TRef<INibEditView>> FViews;
};

}  // namespace caretwell
