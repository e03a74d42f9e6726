// The lists of the tag model by themselves: entities and values, as a filter leaves them.
#include <gtest/gtest.h>

#include "tagmodel/AsciiCharList.h"
#include "tagmodel/DocumentNodes.h"
#include "tagmodel/HTMLAttribute.h"
#include "tagmodel/HTMLTag.h"

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

// Only a list of one value sticks to it; one of several is narrowed and comes back.
TEST(ValueList, NarrowsAndComesBack) {
    const struct {
        std::vector<std::u16string_view> FValues;
        std::string FShown;
    } cases[] = {
        {{u"color..."}, "color...;color...;color...;color...;"},
        {{u"CDATA"}, "CDATA;CDATA;CDATA;CDATA;"},
        {{u"White", u"color...", u"Black"}, "Black color... White;color...;Black color... White;White;"},
        {{u"ID", u"colored"}, "colored ID;colored;colored ID;;"},
    };
    for (const auto& c : cases) {
        auto attribute = MakeRef<THTMLAttribute>(u"a", 1);
        for (auto value : c.FValues) attribute->AddValue(value);
        std::string shown;
        for (auto filter : {u"", u"col", u"", u"wh"}) {
            attribute->SetFilter(filter);
            for (int32_t i = 0; i < attribute->GetCount(); ++i)
                shown += (i ? " " : "") + ToUtf8(attribute->GetValue(i));
            shown += ";";
        }
        EXPECT_EQ(shown, c.FShown);
    }
}

// A stand-in makes no attributes until it is asked for their number, which is that of all.
TEST(StandIn, CountsWhenAsked) {
    int fills = 0;
    auto tag = MakeRef<THTMLTag>(u"a", nullptr, 1);
    tag->SetAttributeFiller([&fills](THTMLTag& owner) {
        ++fills;
        for (auto name : {u"x", u"y", u"z"}) owner.AddAttribute(MakeRef<THTMLAttribute>(name, NewID()));
    });
    auto standIn = MakeRef<TTagWrapper>(*tag, nullptr, -1);
    EXPECT_EQ(fills, 0);
    tag->SetShowAttributes(true);
    tag->SetFilter(u"x");
    EXPECT_EQ(standIn->GetAttributeCount(), 3);
    EXPECT_EQ(fills, 1);
}

}  // namespace
}  // namespace caretwell
