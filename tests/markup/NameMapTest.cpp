// The one table of the engine: order, growth, and room.
#include <gtest/gtest.h>

#include <string>

#include "markup/NameMap.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

TEST(NameMap, AHashPerNameWhateverItsCaseAndWidth) {
    for (std::string_view name : {"", "ul", "BlockQuote", "textarea", "xsl:Apply-Templates"}) {
        std::string upper(name);
        for (char& c : upper) c = ToUpper(c);
        EXPECT_EQ(FoldedHash<char>(name), FoldedHash<char>(upper)) << name;
        EXPECT_EQ(FoldedHash<char>(name), FoldedHash(ToUtf16(upper))) << name;
    }
    EXPECT_NE(FoldedHash(u"\u0441olor"), FoldedHash(u"\u0541olor"));
    EXPECT_NE(FoldedHash(u"list-item"), FoldedHash(u"list-itme"));  // anagrams
}

// Each step does the same to a list of (key, value), newest last.
TEST(NameMap, FindsTheNewestThroughGrowthAndRemoval) {
    TNameMap<int> map;
    std::vector<std::pair<uint32_t, int>> list;
    uint32_t random = 7;
    for (int value = 0; value < 3000; ++value) {
        random = random * 1664525 + 1013904223;
        uint32_t key = HashOfNumber(random >> 24), other = HashOfNumber((random >> 16) & 0xFF);
        map.Add(key, value);
        list.emplace_back(key, value);
        auto isIt = [value](int v) { return v % 3 != value % 3; };
        auto last = std::find_if(list.rbegin(), list.rend(),
                                 [&](const auto& row) { return row.first == other && isIt(row.second); });
        const int* found = map.Find(other, isIt);
        ASSERT_EQ(found ? *found : -1, last == list.rend() ? -1 : last->second) << value;
        ASSERT_EQ(map.Remove(other, isIt), last != list.rend());
        if (last != list.rend()) list.erase(std::next(last).base());
        auto isOld = [value](int v) { return v % 7 == 0 && v < value - 100; };
        if (value % 100 == 0) {
            map.RemoveIf(isOld);
            std::erase_if(list, [&](const auto& row) { return isOld(row.second); });
        }
    }
    size_t count = 0;
    map.ForEach([&](int) { ++count; });
    EXPECT_EQ(count, list.size());
}

}  // namespace
}  // namespace caretwell
