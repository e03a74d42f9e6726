// The text of one document: bytes with lines over them, marks that stay at their
// place while the text changes around them, and undo in whole steps.
//
//     TTextBuffer text("a\nb");
//     { TUndoStep step(text); text.Replace(0, 1, "x"); text.Replace(2, 1, "y"); }
//     text.Undo();   // both at once
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "memory/GapText.h"
#include "memory/LineIndex.h"

namespace caretwell {

class TTextBuffer;

/// A place in a buffer that moves with the text. A mark in text that is deleted
/// ends up where the text was. It must not outlive its buffer.
class TTextMark {
public:
    enum TSide {
        msBefore,  ///< stays in front of text inserted at its place
        msBehind   ///< moves after text inserted at its place, as a caret does
    };
    TTextMark(TTextBuffer& buffer, int32_t offset, TSide side);
    ~TTextMark();
    TTextMark(const TTextMark&) = delete;
    TTextMark& operator=(const TTextMark&) = delete;

    int32_t Offset() const { return FOffset; }
    /// An offset outside the text is moved to its nearer end.
    void MoveTo(int32_t offset);

private:
    friend class TTextBuffer;
    TTextBuffer& FBuffer;
    int32_t FOffset;
    TSide FSide;
};

/// Offsets are bytes from 0, lines count from 1, columns are characters from 1: a
/// code point is one, each byte of broken UTF-8 is one, a tab is one. Every
/// operation takes any number and moves what lies outside the text to its edge.
class TTextBuffer {
public:
    static constexpr int32_t MaximumSize = INT32_MAX;

    /// A text beyond MaximumSize is cut there. A byte order mark is text like any other.
    explicit TTextBuffer(std::string text);
    TTextBuffer(const TTextBuffer&) = delete;
    TTextBuffer& operator=(const TTextBuffer&) = delete;

    int32_t Size() const { return static_cast<int32_t>(FText.Size()); }
    std::string Text() const { return FText.Substring(0, FText.Size()); }
    std::string Substring(int32_t start, int32_t end) const;
    /// Copies at most count bytes from offset on. Returns how many.
    int32_t Read(int32_t offset, char* dest, int32_t count) const;
    /// Byte at offset; 0 outside the text.
    char At(int32_t offset) const;

    // Characters.
    int32_t NextCharacter(int32_t offset) const;
    int32_t PreviousCharacter(int32_t offset) const;
    /// Places between two bytes of a character move to its front.
    int32_t CharacterStart(int32_t offset) const;

    /// As a caret steps: over a character, or over a whole line break.
    int32_t NextPlace(int32_t offset) const;
    int32_t PreviousPlace(int32_t offset) const;

    // Lines.
    int32_t LineAt(int32_t offset) const;
    int32_t LineStart(int32_t line) const;
    int32_t LineStartAt(int32_t offset) const;
    /// Where the text of the line ends, its break excluded.
    int32_t LineEndAt(int32_t offset) const;
    int32_t ColumnAt(int32_t offset) const;
    /// A column after the end of the line gives its end.
    int32_t OffsetOf(int32_t line, int32_t column) const;
    /// The break that the document's first line ends with; LF if it has only one line.
    std::string LineBreak() const;

    // Changes.
    /// Puts text in the place of the bytes from offset to offset + count. False, and
    /// nothing done, if the buffer is read-only or would grow beyond MaximumSize.
    bool Replace(int32_t offset, int32_t count, std::string_view text);
    bool IsReadOnly() const { return FIsReadOnly; }
    void SetReadOnly(bool value) { FIsReadOnly = value; }
    /// Grows with every change, undo and redo included.
    uint64_t Revision() const { return FRevision; }

    // Undo. A change outside of any step is a step of its own.
    bool CanUndo() const { return !FUndo.empty(); }
    /// Takes the last step back, or brings it back; the place for the caret. Nothing if there is none.
    std::optional<int32_t> Undo();
    std::optional<int32_t> Redo();

private:
    friend class TTextMark;
    friend class TUndoStep;
    struct TChange {
        int32_t Offset;
        std::string Removed, Inserted;
    };
    struct TStep {
        std::vector<TChange> Changes;
        std::optional<int32_t> CaretBefore, CaretAfter;
    };

    size_t Clamp(int32_t offset) const;
    int32_t CharacterLength(int32_t offset) const;
    int32_t CountCharactersBetween(int32_t start, int32_t end) const;
    void Apply(int32_t offset, std::string_view removed, std::string_view inserted);
    void MoveMarks(int32_t offset, int32_t removed, int32_t inserted);

    TGapText FText;
    TLineIndex FLines{FText};
    std::vector<TTextMark*> FMarks;
    std::vector<TStep> FUndo, FRedo;
    int32_t FOpenSteps = 0;
    bool FStepHasChange = false;
    bool FIsReadOnly = false;
    uint64_t FRevision = 0;
};

/// Everything changed during its life is undone at once. Steps nest; the outermost counts.
class TUndoStep {
public:
    explicit TUndoStep(TTextBuffer& buffer) : FBuffer(buffer) {
        if (FBuffer.FOpenSteps++ == 0) FBuffer.FStepHasChange = false;
    }
    ~TUndoStep() { --FBuffer.FOpenSteps; }
    /// Where the caret was and is, so that undo and redo put it there. Without a change it
    /// does nothing.
    void NoteCaret(int32_t before, int32_t after);
    TUndoStep(const TUndoStep&) = delete;
    TUndoStep& operator=(const TUndoStep&) = delete;

private:
    TTextBuffer& FBuffer;
};

}  // namespace caretwell
