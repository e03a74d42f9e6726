// What the lens leaves of a document, in tables: '^' is the caret, taken out first.
#include <gtest/gtest.h>

#include "lens/Lens.h"
#include "support/Split.h"

namespace caretwell {
namespace {

bool SameBreaks(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        for (char line : {'\n', '\r'})
            if ((a[i] == line) != (b[i] == line)) return false;
    }
    return true;
}

// The place, and the text with runs of white space as one blank and the caret in it.
std::string Show(std::string_view marked, TLensKind kind) {
    static constexpr const char* Places[] = {"none", "outside", "head", "name", "value"};
    std::string document(marked);
    const size_t caret = document.find('^');
    TLensText look = LookThrough(document.erase(caret, 1), kind, caret);
    EXPECT_TRUE(SameBreaks(document, look.FText)) << marked;
    std::string shown = std::string(Places[look.FPlace]) + ":";
    for (char c : look.FText.insert(caret, "^")) {
        const bool blank = c == ' ' || c == '\n' || c == '\r';
        if (!blank) shown += c;
        else if (shown.back() != ' ') shown += ' ';
    }
    while (shown.back() == ' ') shown.pop_back();
    return shown;
}

struct TCase {
    const char* FText;
    const char* FExpect;
};

template <size_t N>
void Check(const TCase (&cases)[N], TLensKind kind) {
    for (const auto& c : cases) EXPECT_EQ(Show(c.FText, kind), c.FExpect) << c.FText;
}

TEST(Lens, PlainRules) {
    constexpr TCase cases[] = {
        {"^", "outside:^"},
        {"a^", "head:a^"},
        {"h1, h2.x^ { }", "head: a^"},
        {"p {^", "name: a{^"},
        {"p { ^color: red }", "name: a{ ^"},
        {"p { co^lor: red }", "name: a{ co^lor"},
        {"p { color ^", "name: a{ color ^"},
        {"p { color:^", "value: a{ color:^"},
        {"p { color: re^d; }", "value: a{ color: re^d"},
        {"p { margin: 1px -2px ^", "value: a{ margin: ^"},
        {"p { margin: 12-^", "value: a{ margin: ^"},
        {"p { background: rgba(0,0,0,.5) no-re^", "value: a{ background: no-re^"},
        {"p { color: red; top: -1px; width:^", "value: a{ color: red; top: x ; width:^"},
        {"p { color: red } ^", "outside: a{}^"},
        {"@import url(x.css) ^", "head: a^"},
        {"@media print { ^", "outside: a{}^"},
        {"@media print { b { top:^", "value: a{ top:^"},
        {"@font-face { ^", "name: a{ ^"},
        {"@page :first { margin:^", "value: a{ margin:^"},
        {"@property --x { ^", "outside: a{}^"},
        {"@counter-style x { system: ^", "head: a^"},
        {"p { color: #f^", "head: a^"},
        {"p { color: red #^", "head: a^"},
        {"p { transform: rotate(^", "value: a{ all: ^"},
        {"p { transform: rotate(1deg) ma^", "value: a{ transform: ma^"},
        {"b { color: red !^", "head: a^"},
        {"{color:^", "value: color:^"},  // no room for a selector: nothing offered,
    };
    Check(cases, lkStyleSheet);
}

TEST(Lens, SheetsOfToday) {
    constexpr TCase cases[] = {
        {"@supports (gap: 1px) { .a { color: red; &:hover { wid^", "name: a{ wid^"},
        {".a { &:hover { color: red } wid^", "name: a{ wid^"},
        {".a { color: red; .b { top: 0 } left: 1px; width:^", "value: a{ color: red; left: 1px; width:^"},
        {".a { b:hov^er { } }", "head: a^"},
        {".a { b^ { } }", "head: a^"},
        {".a { & > ^", "head: a^"},
        {".a { @media (width > 1px) { top:^", "value: a{ top:^"},
        {"@keyframes k { fr^", "head: a^"},
        {"@-webkit-keyframes k { 50% { top:^", "value: a{ top:^"},
        {"@layer a, b; @layer a { .x { ^", "name: a{ ^"},
        {"@layer a { .x^", "head: a^"},
        {":root { --x: {a:b}; --y:^", "value: a{ all:^"},
        {":root { --y: ^", "value: a{ all: ^"},
        {":root{--y^", "name: a{ ^"},
        {"a { *zoom:^", "value: a{ zoom:^"},
        {"a { _zo^", "name: a{ zo^"},
        {"a{-webkit-box-shadow:^", "value:a{ box-shadow:^"},
        {"a{-webkit-box-sh^", "name:a{ box-sh^"},
        {"a{-^", "name:a{ ^"},
        {"a { color /*:*/ : re^", "value: a{ color : re^"},
        {"a { color: red\n;;top:^", "value: a{ color: red ; top:^"},
        {"a { b { c { top: 0 } } left/**/:^", "value: a{ left :^"},
        {"a { filter: progid:DX.M(a='b;c', d=0); top:^", "value: a{ filter: x ; top:^"},
        {"a { background: url(data:x;base64,//{a) no-repeat; top:^", "value: a{ background: x ; top:^"},
        {"a { background: url(^a.png) }", "head: a^"},
        {"a { content: '}^' }", "head: a^"},
        {"a { content: 'x\ntop:^", "value: a{ content: ^"},
        {"a { /* it's; */ top: /*}*/ ^", "value: a{ top: ^"},
        {"a { /* top:^ */ }", "outside: a{}^"},
        {"a { // it's {\n top:^", "value: a{ top:^"},
        {"a { top: 0; // left:^", "outside: a{}^"},
        {"$w: ^", "value: z: ^"},
        {"$wide: re^", "value:a{all: re^"},
        {"a { $w: 1px; @include m(1) { top:^", "value: a{ top:^"},
        {"@mixin m($a: 1) { top:^", "value: a{ top:^"},
        {"a { @include ^", "head: a^"},
        {"a { @extend .b; top:^", "value: a{ top:^"},
        {"@wide: ^", "value:a{all: ^"},
        {"a { .mixin(); top:^", "value: a{ top:^"},
        {"a-#{$b} { margin-#{$c}: 0; #{$d}-top:^", "value: a{ z:^"},
        {".@{n} { top:^", "value: a{ top:^"},
        {"a { top: 0; } } b { left:^", "value: a{ left:^"},
        {"a { color: red\nb { left:^", "value: a{ left:^"},
        {"a { color: ^\n}\nb { left: 0 }", "value: a{ color: ^"},
        {"<!-- a { top:^", "value: a{ top:^"},
    };
    Check(cases, lkStyleSheet);
}

TEST(Lens, Pages) {
    constexpr TCase cases[] = {
        {"<p>a { top:^", "none: ^"},
        {"<style>^", "outside: a{}^"},
        {"<style>a { top:^</style>", "value: a{ top:^"},
        {"<STYLE media='a>b'>a { top:^", "value: a{ top:^"},
        {"<style>a{}</style><p>^", "none: ^"},
        {"<style>a{}</sty^le>", "none: ^"},
        {"<style>a{}</styles> b { top:^", "value: a{ top:^"},
        {"<style><!-- a { top:^ --></style>", "value: a{ top:^"},
        {"<style>//<![CDATA[\na { top:^ ", "value: a{ top:^"},
        {"<style/>a { top:^", "none: ^"},
        {"<style^>", "none: ^"},
        {"<script>'<style>' + a { top:^", "none: ^"},
        {"<!-- <style>a { top:^", "none: ^"},
        {"<![CDATA[<style>]]><p style='top:^'>", "value: a{top:^"},
        {"<textarea><style>a { top:^", "none: ^"},
        {"<p style=\"^\">", "name: a{^"},
        {"<p style='color: red; top:^", "value: a{color: red; top:^"},
        {"<p STYLE = \"margin: 0 a^uto\">", "value: a{margin: 0 a^uto"},
        {"<p style=top:^ id=a>", "value: a{top:^"},
        {"<p style=^>", "none: ^"},
        {"<p style=\"\"^>", "none: ^"},
        {"<p class=\"^\">", "none: ^"},
        {"<p data-style=\"top:^\">", "none: ^"},
        {"<p title='<p style=\"' style='top:^'>", "value: a{top:^"},
        {"<p style=\"font-family: &quot;A;B&quot;; top:^\">", "value: a{font-family: x ; top:^"},
        {"<p style=\"font-family: &quot;A^\">", "head: a^"},
        {"<p style=\"top: <%= a(\"b;\") %>; left:^\">", "value: a{top: x ; left:^"},
        {"<p style=\"top: <%= a^ %>\">", "none: ^"},
        {"<style>a { top: <%= b; %>; left:^", "value: a{ top: x ; left:^"},
        {"<style>a { top: <% b^", "none: ^"},
        {"<?php a('<style>') ?><p style='top:^'>", "value: a{top:^"},
        {"<? a><? b><p style='top:^'>", "value: a{top:^"},
        {"<% if a < b %><p style='top:^'>", "value: a{top:^"},
        {"<!DOCTYPE html><p a<b style='top:^'>", "value: a{top:^"},
        {"a < b <p/style='top:^'>", "value: a{top:^"},
    };
    Check(cases, lkMarkup);
}

// A name in another's stead stands in its place.
TEST(Lens, OlderNames) {
    constexpr TCase cases[] = {
        {"a{-ms-flex-pack:^", "value:a{ box-pack:^"},
        {"a{-webkit-margin-END :^", "value:a{ margin-right :^"},
        {"a{-x-border-radius-bottomright:^", "value:a{ border-bottom-right-radius:^"},
        {"a{flex-order:^", "value:a{flex-order:^"},
        {"a{-x-mask-attachment:^", "value:a{ mask-attachment:^"},  // no room
        {"a{-webkit-what-ever:^", "value:a{ what-ever:^"},
        {"a{-webkit-:^", "value:a{ z:^"},
        {"a{*-ms-filter:^", "value:a{ filter:^"},
    };
    Check(cases, lkStyleSheet);
}

// Pieces that open, close and hide things, in any order, with the caret everywhere.
TEST(Lens, AnyTextAnyCaret) {
    auto pieces = Split(
        "{ } a : ; ' \" /* */ // ( ) url( #{ @{ \\ --x $a @a *b ! <style> </style> <!-- --> <% %> <? &quot; "
        "\xff -w-c \n \r\n");
    for (std::string piece : {std::string(" "), std::string("<p style="), std::string(1, '\0')})
        pieces.push_back(piece);
    uint32_t random = 1;
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int i = 0; i < 12; ++i) {
            random = random * 1664525 + 1013904223;
            text += pieces[(random >> 16) % pieces.size()];
        }
        for (size_t caret = 0; caret <= text.size() + 1; ++caret) {
            for (auto kind : {lkStyleSheet, lkMarkup}) {
                const auto look = LookThrough(text, kind, caret);
                ASSERT_TRUE(SameBreaks(text, look.FText)) << text;
                ASSERT_EQ(look.FText.find('\0'), std::string::npos) << text;
            }
        }
    }
}

// Much of what might make a scan look back or ahead again and again.
TEST(Lens, TimeGrowsWithTheText) {
    for (std::string_view piece :
         {"#{", "{", "(", "url(", "'", "/*", "<", "<?", "<%", "</", "<p style='", "&", "a:b;"}) {
        std::string text = "a{";
        while (text.size() < 200000) text += piece;
        LookThrough(text, lkStyleSheet, text.size());
        LookThrough("<style>" + text, lkMarkup, text.size());
        LookThrough("<p style='" + text, lkMarkup, text.size());
        LookThrough(text, lkMarkup, text.size());
    }
}

}  // namespace
}  // namespace caretwell
