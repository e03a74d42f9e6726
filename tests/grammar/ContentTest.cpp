// What a model lets come next, after the children that are there.
#include <gtest/gtest.h>

#include "grammar/WalkText.h"

namespace caretwell {
namespace {

/// The children that may come next in an element of the model after those given.
std::string Next(const std::string& model, std::string_view children) {
    TDTDText definition("<!ELEMENT r - - " + model + "><!ELEMENT (a|b|c|d) - - (#PCDATA)>");
    std::string text = "<r>";
    for (char child : children) text += std::string("<") + child + "/>";
    std::string answer = definition.At(text, true);
    std::string next = answer.substr(0, answer.find('|'));
    if (!next.empty()) next.pop_back();
    return next + (answer.ends_with("| r") ? "." : "");
}

TEST(ContentModel, Next) {
    const struct {
        const char *Model, *Children, *Next;  // "!" required, "." the element may end
    } cases[] = {
        {"(a, b?, c)", "", "a!"},
        {"(a, b?, c)", "a", "c! b"},
        {"(a, b?, c)", "ac", "."},
        {"(a, b)+", "ab", "a."},
        {"(a+, b)", "a", "b! a"},
        {"(a, b+)", "ab", "b."},
        {"(a?, b)+", "b", "a b."},
        {"(a | b)", "", "a! b!"},
        {"(a | (b, c)+)", "b", "c!"},
        {"((a, b)?, c)", "", "c! a"},
        {"(a?)", "", "a."},
        {"((a | b)*, (c, d)?)*", "ac", "d!"},
        {"(a & b? & c)", "b", "a! c!"},
        {"(a & b? & c)", "ca", "b."},
        {"((a, b) & c)", "a", "b!"},  // a member of "&" is not interrupted
        {"((a, b) | (a, c))", "a", "b! c!"},
        {"((a | b)*, a, (a | b))", "a", "a! b!"},
        {"((a | b)*, a, (a | b))", "ab", "a b."},
        {"(#PCDATA | a | (b))*", "a", "a b."},
        {"(#PCDATA)", "", "."},
        {"EMPTY", "", "."},
        {"ANY", "a", "a b c d r."},
        {"(a, b)", "ab", "."},
        {"(a, b)", "b", "."},    // a was missing, and the model goes on after b
        {"(a, b)", "cd", "a!"},  // what does not belong here is as if it were not there
    };
    for (const auto& c : cases)
        EXPECT_EQ(Next(c.Model, c.Children), c.Next) << c.Model << " after " << c.Children;
}

std::string Many(std::string_view text, size_t count) {
    std::string all;
    for (size_t i = 0; i < count; ++i) all += text;
    return all;
}

TEST(ContentModel, WhatIsTooLargeBecomesCoarser) {
    auto chain = [](const char* between, size_t count, const char* mark) {
        std::string model = "(";
        for (size_t i = 0; i < count; ++i)
            model += (i ? between : "") + ("n" + std::to_string(i)) + mark + "\n";
        return "<!ELEMENT r - - " + model + ")>";
    };
    std::string nested = "<!ELEMENT r - - " + Many("(\n", 100'000) + "a, b" + Many(")\n", 100'000) + ">";
    std::string all = TDTDText(chain(" & ", 70, "")).At("<r><n3/>", true);
    std::string sequence = TDTDText(chain(", ", 3000, "?")).At("<r><n2999/>", true);
    for (const std::string& answer : {all, sequence, TDTDText(nested).At("<r><a/>", true)})
        EXPECT_EQ(answer.substr(0, 1) + answer.substr(answer.size() - 4), "~ | r") << answer.size();
    std::string choice = TDTDText(chain(" | ", 5000, "")).At("<r>", true);
    EXPECT_EQ(std::ranges::count(choice, '!'), 5000);
}

// Counts come from an XSD.
TEST(ContentModel, Counts) {
    TContentModels models;
    TTerm element = models.Element(1);
    const struct {
        uint32_t Least, Most;
        int Given;
        const char* Expect;
    } cases[] = {
        {2, 3, 1, "1 more"},
        {2, 3, 2, "0 more"},
        {2, 3, 3, "0 end"},
        {0, 100'000, 300, "0 more"},
        {150, 150, 149, "1 more"},
        {150, 150, 150, "0 end"},
        {5, TContentModels::Unbounded, 9, "0 more"},
        {0, 0, 0, "0 end"},
    };
    for (const auto& c : cases) {
        TState state = models.StateOf(models.Repeat(element, c.Least, c.Most));
        for (int i = 0; i < c.Given; ++i) state = models.Step(state, 1);
        const char* more = models.GetMoves(state).empty() ? " end" : " more";
        EXPECT_EQ(std::to_string(models.Missing(state)) + more, c.Expect) << c.Least << ".." << c.Most;
    }
    EXPECT_TRUE(models.TakeCoarse());
}

}  // namespace
}  // namespace caretwell
