// Feeds the scanners: a document in blocks of at most 16,384 bytes, cut at white
// space, so that a document of any size is scanned in constant memory and a name
// hardly ever straddles two blocks.
#pragma once

#include <cstdint>
#include <istream>
#include <string>

#include "caretwell/host/Nibapi.h"

namespace caretwell {

/// The only way a scanner reads a document.
struct IMLBufferProducer : IRefCounted {
    static constexpr TGuid Id = Guid("d60b4bb1-e995-4135-807f-4120c250e14a");
    using Parent = IRefCounted;
    /// Reads the next block; true if it holds at least one byte.
    virtual bool FillBuffer() = 0;
    /// The result of the last FillBuffer: true means that it delivered data.
    virtual bool Eof() const = 0;
    /// Document offset of a place in the current block, its zero byte included.
    virtual int32_t BufferOffset(const char* position) const = 0;
    /// Pointer to a byte of the block by its index in the block; null after its end.
    virtual const char* BufferAtOffset(int32_t index) const = 0;
    virtual const std::string& GetFilename() const = 0;
};

/// What producers of a view give beside the text.
struct IMLBufferProducerInternal : IMLBufferProducer {
    static constexpr TGuid Id = Guid("e6c5ffd2-9355-466a-9bde-1914051626db");
    using Parent = IMLBufferProducer;
    /// The view that the document is read from; null if there is none.
    virtual INibEditView* GetEditView() const = 0;
};

/// A document that can be read once more: its first parse may find a schema by which it is
/// to be read anew.
struct IMLBufferRewind : IRefCounted {
    static constexpr TGuid Id = Guid("5f0d1c8e-7a52-4b6b-9c1f-3d2ab60c4e97");
    using Parent = IRefCounted;
    /// Goes back to where the producer began. False if the text cannot be had again.
    virtual bool Rewind() = 0;
};

/// A block always ends with a zero byte after it, so a scanner runs until it meets one.
class CARETWELL_API TMLBufferProducer final : public TImplements<IMLBufferProducerInternal, IMLBufferRewind> {
public:
    static constexpr int32_t BlockSize = 16384;  ///< bytes

    /// Reads the text of a view's buffer from offset on.
    TMLBufferProducer(TRef<INibEditView> editView, int32_t offset);
    /// Reads through the first view of the editor that shows its file, or else the editor itself.
    TMLBufferProducer(TRef<INibSourceEditor> sourceEditor, int32_t offset);
    /// Reads UTF-8 from a stream, not owned, from its position offset on. Offsets then
    /// count from that position.
    TMLBufferProducer(std::istream& stream, std::string fileName, int32_t offset);

    bool FillBuffer() override;
    bool Eof() const override { return FHasData; }
    int32_t BufferOffset(const char* position) const override;
    const char* BufferAtOffset(int32_t index) const override;
    const std::string& GetFilename() const override { return FFileName; }
    INibEditView* GetEditView() const override { return FEditView.Get(); }
    bool Rewind() override;

    /// A new reader on the text; null without a view and an editor.
    TRef<INibEditReader> CreateReader() const;

private:
    int32_t ReadBlock();
    void GiveBack(int32_t count);

    bool FHasData = false;
    TRef<INibEditView> FEditView;
    TRef<INibSourceEditor> FSourceEditor;
    std::istream* FStream = nullptr;
    int32_t FCount = 0;
    int32_t FOffset = 0;
    int32_t FStart = 0;  // where it began
    char FBuffer[BlockSize + 1] = {};
    std::string FFileName;
};

}  // namespace caretwell
