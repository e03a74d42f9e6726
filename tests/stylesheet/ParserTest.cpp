// A sheet with a caret to what is expected there, and of which property.
#include <gtest/gtest.h>

#include "Sheets.h"
#include "support/Cases.h"
#include "support/Split.h"

namespace caretwell {
namespace {

struct TCase {
    std::string_view FText, FExpect;
};

// Each '^' of a text is a caret of its own; R rule, P property, E expression, C comment, N none.
constexpr TCase Positions[] = {
    {"^a^[b^", "E R R"},
    {"a, b.c^ > ^", "R R"},
    {"a:not(^", "R"},
    {"a {^ co^lor^:^ re^d ^/* ^ */; ^} ^", "P P P:color E:color E:color E:color E:color P:color C"},
    {"a { COLOR^: #f^", "P:color E:color"},
    {"a { color: -^", "E:color"},
    {"a { color: rgb(1, ^2, 3) !important ^; margin: 1px 2px, ^", "E:color P:color E:margin"},
    {"a { color: a(b(c(d))) ^} b { margin: ^", "E:color E:margin"},
    {"a { unknown: ^", "E"},
    {"@import ^\"a.css\" ^; ^", "R E C"},
    {"@import url(a) screen, ^", "E"},
    {"@charset ^\"x\"; a { co^", "E P"},
    {"@media ^print {^ a { color: ^red } ^} ^", "E E E:color E:color C"},
    {"@page ^x:first ^{ ^margin: ^", "R R P E:margin"},
    {"@page :first { color: red !important ^", "E:color"},
    {"@font-face ^{ ^color: red !important ^", "R P P:color"},
    {"<!-- ^a { --> b { ^", "C P"},
    {"a { color: red", "N"},  // the caret is elsewhere
    {"a { } } b { ^", "N"},   // a stray token ends the parse
    {"@supports { b { ^", "N"},
};

TEST(Parser, Positions) {
    TSheetParser parser;
    for (const TCase& c : Positions) {
        std::string answers, read;
        for (char next : std::string(c.FText) + (c.FText.find('^') == c.FText.npos ? "$" : "")) {
            if (next != '^' && next != '$') read += next;
            else {
                std::string answer = parser.Answer(next == '^' ? read + "^" : read).substr(2);
                size_t blank = answer.find(' ');
                std::string property = blank == answer.npos ? "" : ":" + answer.substr(blank + 1);
                answers += (answers.empty() ? "" : " ") + answer.substr(0, 1) + property;
            }
        }
        EXPECT_EQ(answers, c.FExpect) << c.FText;
    }
}

// What a mistake may cost: nothing in later rules, and in its own block no more than
// the declaration that it stands in.
const std::vector<std::string> Mistakes = Split(
    "color`color red`color:`color: red 1px -2px`color: calc(1px - 2px)`color: red !`color: #`color: @`color: "
    "! x`color: rgb(1,`color: ((((`color: red,`color: /`color: red blue: green`$x: 1`--x: 1`*zoom: "
    "1`_height: 1px`&:hover { margin: 0 }`b { margin: 0 }`b:hover, c > d { margin: { x: 0 } }`filter: "
    "progid:DX.M(a='b', c=1)`@media print { margin: 0 }`@include x`] ) ( [`\x01",
    '`');

void ExpectKept(TSheetParser& parser, const std::string& mistake) {
    for (std::string around : {"", "@media print { "}) {
        std::string rule = around + "a { " + mistake + " } ";
        EXPECT_EQ(parser.Answer(rule + "b^"), "kpRule") << rule;
        EXPECT_EQ(parser.Answer(rule + "b { margin: 0 } c { width: ^"), "kpExpr width") << rule;
        EXPECT_EQ(parser.Answer(rule + "b { c { } w^").substr(0, 10), "kpProperty") << rule;
    }
    EXPECT_EQ(parser.Answer("a { " + mistake + " } b { } ^"), "kpComment") << mistake;
    EXPECT_EQ(parser.Answer("a { " + mistake + "; width: ^"), "kpExpr width") << mistake;
    EXPECT_EQ(parser.Answer("a { " + mistake + "; wid^").substr(0, 10), "kpProperty") << mistake;
}

// The known ones, and then words in any order, with their braces in pairs.
TEST(Parser, MistakesStayInTheirRule) {
    TSheetParser parser;
    for (const std::string& mistake : Mistakes) ExpectKept(parser, mistake);
    const auto words = Split(
        "a`color`:`;`!`,`(`)`[`]`#`@`-`+`~=`|=`=`1px`.5`5%`$`rgb(`&`_`url(q)`\\41`\\}`!important`@media`@"
        "page`@import`>`<!--`-->`{ ` }`#f`@x`|`.`%`U+1`\xC3\xA9",
        '`');
    uint32_t random = 1;
    auto next = [&random](uint32_t bound) {
        return (random = random * 1664525 + 1013904223) / 65536 % bound;
    };
    for (int round = 0; round < 8'000; ++round) {
        std::string body;
        int depth = 0;
        for (uint32_t count = 1 + next(8); count > 0; --count) {
            std::string word = words[next(static_cast<uint32_t>(words.size()))];
            if (word == " }" && depth == 0) continue;
            depth += word == "{ " ? 1 : word == " }" ? -1 : 0;
            body += word + (next(2) ? " " : "");
        }
        while (depth-- > 0) body += " }";
        ExpectKept(parser, body);
    }
}

// What may stand before "{ width: ^", which is a value all the same.
const std::vector<std::string> Heads = Split(
    "a $ b `a. `a::before `a:not(.b), c `a:nth-child(2n+1) `a[b { color: red } c `a[b='c' i] `a ~ b `a; b `a "
    "} b `@media screen and (min-width: 1px) { a `@media print { @media screen { a { color: red } } b { } } "
    "c `@media print { * { color: red } b `@media print { @import 'x'; b `@media print { a } @media screen { "
    "b `@media print; b `@page { margin: 0 } b `@page a b { margin: 0 } b `@charset utf-8; b `@import 'a' "
    "(x); b `@import 'a' b `@import 'a' b { } c ",
    '`');

constexpr TCase Recovery[] = {
    {"a $ ^", "kpProperty"},
    // Blocks in blocks.
    {"a { b { color: ^", "kpExpr color"},
    {"a { b { color: red } wid^", "kpProperty"},
    {"a { b { color: red } } ^", "kpComment"},
    // With nothing between, the caret still stands in the value.
    {"a { color: ; ^", "kpExpr color"},
    {"a { color: } ^", "kpExpr color"},
    {"a { color: #; ^", "kpExpr color"},
    {"a { color: #^;", "kpExpr color"},
    {"a { color; ^", "kpProperty color"},
    {"a { color red^", "kpExpr color"},
    {"a { color: 1px -2px ^", "kpComment"},
};

TEST(Parser, Recovery) {
    TSheetParser parser;
    for (const std::string& head : Heads)
        EXPECT_EQ(parser.Answer(head + "{ width: ^"), "kpExpr width") << head;
    for (const TCase& c : Recovery) EXPECT_EQ(parser.Answer(c.FText), c.FExpect) << c.FText;
}

TEST(Parser, Messages) {
    constexpr TCase Cases[] = {
        {"a { color: red }", ""},
        {"a { color: rgb(1, 2, 3) !important; margin: 1px 2px / 3px }", ""},
        {"@import 'a'; @media x, y { a { } } @page :first { } @font-face { }", ""},
        {"a { margin: 1px -2px }", "Expected '}' but found '-'"},
        {"a { b c: 1 }", "Expected ':' but found 'c'"},
        {"a { b 'c': 1 }", "Expected ':' but found 'string'"},
        {"a { b", "Expected ':' but found 'End of file'"},
    };
    for (const TCase& c : Cases) {
        TSheetParser parser;
        std::string first;
        parser.FOnParseError = [&](TStyleSheetParser&, const std::string& message) {
            if (first.empty()) first = message;
        };
        parser.ParseSheet(c.FText);
        EXPECT_EQ(first, c.FExpect) << c.FText;
    }
}

// Depth costs neither stack nor more than linear time, and any prefix is a sheet.
TEST(Parser, DeepAndLong) {
    TSheetParser parser;
    constexpr int Depth = 100'000;
    EXPECT_EQ(parser.Answer(Repeat("a { ", Depth) + "width: ^"), "kpExpr width");
    EXPECT_EQ(parser.Answer(Repeat("a { ", Depth) + Repeat("} ", Depth - 1) + "w^"), "kpProperty");
    EXPECT_EQ(parser.Answer(Repeat("a { ", Depth) + Repeat("} ", Depth) + "w^"), "kpRule");
    EXPECT_EQ(parser.Answer("a { width: " + Repeat("b(", Depth) + "^"), "kpExpr width");
    EXPECT_EQ(parser.Answer("a { color: " + Repeat("b(", Depth) + Repeat(")", Depth) + "; width: ^"),
              "kpExpr width");
    EXPECT_EQ(parser.Answer("a { color: " + Repeat("(", Depth) + "; width: ^"), "kpExpr width");
    EXPECT_EQ(parser.Answer(Repeat("a[", Depth) + "^"), "kpRule");
    // The newest declaration does not end with its rule.
    EXPECT_EQ(parser.Answer("@charset 'u'; " + Repeat("a { margin: 0 } ", Depth) + "@media print { ^"),
              "kpExpr margin");
    EXPECT_EQ(parser.Answer("@media " + Numbered("m$,", Depth) + "x { a { width: ^"), "kpExpr width");
}

TEST(Parser, EveryPrefix) {
    TSheetParser parser;
    std::string all;
    for (const TCase& c : Positions) all.append(c.FText).append("\n} ");
    std::erase(all, '^');
    for (const std::string& mistake : Mistakes) all.append("a { ").append(mistake).append(" }\n");
    for (size_t length = 0; length <= all.size(); ++length) {
        parser.ParseSheet(std::string_view(all).substr(0, length));
        parser.Answer(all.substr(0, length) + "^" + all.substr(length));
    }
}

}  // namespace
}  // namespace caretwell
