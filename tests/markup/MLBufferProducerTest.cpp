// Blocks of a document: what a scanner sees has no gap and no overlap.
#include <gtest/gtest.h>

#include <sstream>

#include "markup/MLBufferProducer.h"

namespace caretwell {
namespace {

std::string Blocks(const std::string& text, int32_t offset = 0) {
    std::istringstream stream(text);
    auto producer = MakeRef<TMLBufferProducer>(stream, "a.html", offset);
    std::string sizes, seen;
    while (producer->FillBuffer()) {
        const char* start = producer->BufferAtOffset(0);
        int32_t size = 0;
        while (producer->BufferAtOffset(size)) ++size;
        EXPECT_EQ(producer->BufferOffset(start), static_cast<int32_t>(seen.size()));
        EXPECT_EQ(start[size], 0);
        seen.append(start, static_cast<size_t>(size));
        EXPECT_EQ(producer->BufferOffset(start + size), static_cast<int32_t>(seen.size()));
        sizes += std::to_string(size) + " ";
    }
    EXPECT_EQ(seen, text.substr(static_cast<size_t>(offset)));
    EXPECT_FALSE(producer->Eof());
    EXPECT_EQ(producer->BufferAtOffset(0), nullptr);
    return sizes;
}

TEST(BufferProducer, CutsAtWhiteSpace) {
    std::string exact(16383, 'x');
    std::string spaced(20000, 'x');
    spaced[16000] = ' ';
    const std::string cases[][2] = {
        {"", ""},
        {"a", "1 "},
        {exact + "\n", "16384 "},
        {spaced, "16001 3999 "},
        {std::string(20000, 'x'), "16384 3616 "},  // nowhere to cut
    };
    for (const auto& [text, sizes] : cases) EXPECT_EQ(Blocks(text), sizes);
    EXPECT_EQ(Blocks(std::string(100, 'a') + "bc", 100), "2 ");
}

/// A file that no view shows.
class TUnseenFile final : public TImplements<INibSourceEditor, INibEditReader> {
public:
    std::string FileName() override { return "unseen.html"; }
    int32_t ViewCount() override { return 0; }
    TRef<INibEditView> View(int32_t) override { return nullptr; }
    TRef<INibEditReader> CreateReader() override { return this; }
    int32_t Read(int32_t offset, char* dest, int32_t count) override {
        return static_cast<int32_t>(
            std::string("<p>text").copy(dest, static_cast<size_t>(count), static_cast<size_t>(offset)));
    }
};

TEST(BufferProducer, FileWithoutAView) {
    auto producer = MakeRef<TMLBufferProducer>(TRef<INibSourceEditor>(MakeRef<TUnseenFile>()), 3);
    EXPECT_EQ(producer->GetFilename(), "unseen.html");
    ASSERT_TRUE(producer->FillBuffer());
    EXPECT_STREQ(producer->BufferAtOffset(0), "text");
    EXPECT_EQ(producer->BufferOffset(producer->BufferAtOffset(3)), 6);
    EXPECT_FALSE(producer->FillBuffer());
}

TEST(BufferProducer, EmptyDocument) {
    auto producer = MakeRef<TMLBufferProducer>(TRef<INibEditView>(), 7);
    EXPECT_FALSE(producer->FillBuffer());
    EXPECT_FALSE(producer->Eof());
    EXPECT_EQ(producer->BufferOffset(nullptr), 7);
}

}  // namespace
}  // namespace caretwell
