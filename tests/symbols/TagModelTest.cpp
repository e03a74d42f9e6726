// The lists of the tag model by themselves: entities and values, as a filter leaves them.
#include <gtest/gtest.h>

#include "tagmodel/AsciiCharList.h"

namespace caretwell {
namespace {

// Two schemas one after the other, in a second round and on a sorted list too: "|" sorts.
TEST(EntityList, EverySpellingWhateverWasThereBefore) {
    const struct {
        std::u16string FNames, FFilter;
        std::string FShown;
        const char16_t* FWord;
        int32_t FIndex;
    } cases[] = {
        {u"amp Aacute aacute", u"", "aacute Aacute amp", u"Aacute", 1},
        {u"amp aacute Aacute", u"", "aacute Aacute amp", u"aacute", 0},
        {u"Aacute|aacute", u"aa", "aacute Aacute", u"Aa", 1},
        {u"ETA eta|Eta eta", u"", "eta Eta ETA", u"Eta", 1},
        {u"eta etab", u"", "eta etab", u"ETA", 0},
        {u"amp aacute", u"", "aacute amp", u"b", -1},
        {u"amp aacute", u"a", "aacute amp", u"ac", 1},
        {u"amp aacute", u"b", "", u"a", -1},
    };
    TAsciiCharList list;
    for (int round = 0; round < 2; ++round)
        for (const auto& c : cases) {
            list.Clear();
            std::u16string name;
            for (char16_t unit : c.FNames + u"|") {
                bool isName = unit != ' ' && unit != '|';
                if (isName) name += unit;
                else list.AddEntity(std::exchange(name, {}), 0);
                if (unit == '|') list.AlphaSort();
            }
            EXPECT_EQ(list.GetCount(), 1);  // until a filter is set
            list.SetFilter({});
            list.SetFilter(c.FFilter);
            std::string shown;
            for (int32_t i = 0; i < list.GetCount(); ++i) shown += (i ? " " : "") + ToUtf8(list.GetItem(i));
            EXPECT_EQ(shown, c.FShown) << round;
            EXPECT_EQ(list.FindIndex(c.FWord), c.FIndex) << c.FShown << round;
        }
}

}  // namespace
}  // namespace caretwell
