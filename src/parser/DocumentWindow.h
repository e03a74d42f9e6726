// The stretch of the document that the scan stands in, and the answer to the question
// that is asked everywhere: does this byte lie before the caret?
//
// The scan works on pointers into the block of the producer. A token that the end of a
// block cuts in two is put together again in a small buffer of the window's own.
#pragma once

#include <cstdint>
#include <string>

#include "markup/MLBufferProducer.h"
#include "parser/LineCounter.h"

namespace caretwell {

class TDocumentWindow {
public:
    /// Starts a run. The producer is borrowed. False if the document is empty.
    bool Open(IMLBufferProducer& producer, TNibEditPos caret);

    const char* GetStart() const { return FStart; }
    const char* GetEnd() const { return FEnd; }  ///< the zero byte after the block
    int32_t OffsetOf(const char* p) const { return FOffset + static_cast<int32_t>(p - FStart); }

    /// p may be the zero byte after the block (which lies before a caret that stands
    /// just there, unless the document is known to end) or the byte before the block.
    bool IsBeforeCaret(const char* p) const { return p < FCaret; }

    /// Moves to the next block. False at the end of the document, where the window stays.
    bool Next();
    /// True if the end of the block may cut a token that begins at p, and the token is short
    /// enough to be kept.
    bool IsCutInToken(const char* p) const { return !FHasEnded && FEnd - p <= MaxKept; }
    /// Moves on while keeping the bytes from p to the end of the block:
    /// the window then begins with them. False, and the block stays, unless IsCutInToken,
    /// or if the document ends. A caret there is then known to stand at its end.
    bool Extend(const char* p);
    static constexpr int32_t MaxKept = 1024;

    /// Keeps the bytes from p on, across blocks, until they are taken: text for observers, which
    /// costs nothing while nobody watches. A capture under way is given up.
    void StartCapture(const char* p) {
        FCaptured.clear();
        FCaptureFrom = p;
    }
    /// The bytes up to p, and the end of the capture; empty if there is none.
    std::string TakeCapture(const char* p);

private:
    void KeepCapture(const char* upTo) {
        if (FCaptureFrom) FCaptured.append(FCaptureFrom, upTo);
    }
    bool Fill();
    void SetBlock(const char* start, const char* end, int32_t offset);
    void PlaceCaret();
    void LocateCaretByView(INibEditView& view, TNibEditPos caret);
    void LocateCaretByLine();

    IMLBufferProducer* FProducer = nullptr;
    bool FHasEnded = false;
    const char* FStart = nullptr;
    const char* FEnd = nullptr;
    int32_t FOffset = 0;
    std::string FStitched;
    std::string FCaptured;
    const char* FCaptureFrom = nullptr;  // what of the window is to be kept; null without a capture

    int32_t FCaretOffset = -1;
    const char* FCaret = nullptr;  // bytes below it are before the caret
    // Without a view the caret is found by its line and its column in bytes.
    bool FIsCaretKnown = true;
    TNibEditPos FCaretPos;
    TLineCounter FLines;
};

}  // namespace caretwell
