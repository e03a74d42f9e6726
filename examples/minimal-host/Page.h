// Chapter 1. The text.
//
// The engine reads a document as UTF-8 bytes and speaks of places as byte offsets. It asks
// for three things: the name of the file, whose extension chooses the language; readers,
// which copy bytes; and writers, which change the text from front to back in one step that
// the user can undo.
//
// This page is a string with a caret. It has one view, so the caret may live here; an
// editor with several views keeps one in each. Its lines end with "\n".
#pragma once

#include <caretwell/host/Nibapi.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace minimal {

using namespace caretwell;

class TPage : public TImplements<INibEditBuffer> {
public:
    TPage(std::string fileName, std::string text) : FFileName(std::move(fileName)), FText(std::move(text)) {}

    const std::string& Text() const { return FText; }
    int32_t Size() const { return static_cast<int32_t>(FText.size()); }
    int32_t Caret() const { return FCaret; }
    void SetCaret(int32_t offset) { FCaret = Inside(offset); }

    // Offsets come out of the engine's last parse. The user, or another program, may have
    // changed the text since: a place after its end counts as its end.
    int32_t Inside(int32_t offset) const { return std::clamp(offset, 0, Size()); }

    /// Puts text in the place of the bytes from start to end. A caret that stands in them,
    /// or at their end, ends after the text.
    void Replace(int32_t start, int32_t end, std::string_view text) {
        start = Inside(start);
        end = std::max(start, Inside(end));
        if (FOpenSteps == 0 || !FHasSaved) FUndo.push_back({FText, FCaret});
        FHasSaved = FOpenSteps > 0;
        FText.replace(static_cast<size_t>(start), static_cast<size_t>(end - start), text);
        int32_t grown = static_cast<int32_t>(text.size());
        if (FCaret >= end) FCaret += grown - (end - start);
        else if (FCaret > start) FCaret = start + grown;
    }

    // What the engine writes for one key is one step of undo, however many calls it takes.
    void BeginStep() { ++FOpenSteps; }
    void EndStep() {
        if (--FOpenSteps == 0) FHasSaved = false;
    }
    bool Undo() {
        if (FUndo.empty()) return false;
        std::tie(FText, FCaret) = std::move(FUndo.back());
        FUndo.pop_back();
        return true;
    }

    // INibEditBuffer
    std::string FileName() override { return FFileName; }
    TRef<INibEditReader> CreateReader() override;
    TRef<INibEditWriter> CreateWriter() override;

private:
    std::string FFileName, FText;
    int32_t FCaret = 0;
    std::vector<std::pair<std::string, int32_t>> FUndo;
    int FOpenSteps = 0;
    bool FHasSaved = false;
};

class TPageReader final : public TImplements<INibEditReader> {
public:
    explicit TPageReader(TRef<TPage> page) : FPage(std::move(page)) {}
    int32_t Read(int32_t offset, char* dest, int32_t count) override {
        int32_t start = FPage->Inside(offset);
        count = std::clamp(count, 0, FPage->Size() - start);
        std::memcpy(dest, FPage->Text().data() + start, static_cast<size_t>(count));
        return count;
    }

private:
    TRef<TPage> FPage;
};

// CopyTo and DeleteTo count in the text as it was before the writer; FGrown says how far
// the text has moved since.
class TPageWriter final : public TImplements<INibEditWriter> {
public:
    explicit TPageWriter(TRef<TPage> page) : FPage(std::move(page)), FSize(FPage->Size()) {
        FPage->BeginStep();
    }
    ~TPageWriter() override { FPage->EndStep(); }
    void CopyTo(int32_t offset) override { FAt = std::clamp(offset, FAt, std::max(FAt, FSize)); }
    void DeleteTo(int32_t offset) override {
        int32_t start = FAt;
        CopyTo(offset);
        FPage->Replace(start + FGrown, FAt + FGrown, {});
        FGrown -= FAt - start;
    }
    void Insert(std::string_view utf8) override {
        FPage->Replace(FAt + FGrown, FAt + FGrown, utf8);
        FGrown += static_cast<int32_t>(utf8.size());
    }

private:
    TRef<TPage> FPage;
    int32_t FSize, FAt = 0, FGrown = 0;
};

inline TRef<INibEditReader> TPage::CreateReader() { return MakeRef<TPageReader>(this); }
inline TRef<INibEditWriter> TPage::CreateWriter() { return MakeRef<TPageWriter>(this); }

}  // namespace minimal
