// Text to tokens.
#include <gtest/gtest.h>

#include "Sheets.h"

namespace caretwell {
namespace {

constexpr size_t MostTokens = 100'000;

/// Each token as its name and, for those that have one of their own, its text.
std::string Scan(std::string_view marked) {
    TSheet sheet(marked);
    TStyleSheetScanner scanner;
    scanner.SetBufferAndPoint(sheet.Read(), sheet.FCaret);
    std::string result;
    for (size_t count = 0; count < MostTokens; ++count) {
        TStyleSheetToken token = scanner.GetToken();
        if (!result.empty()) result += ' ';
        if (token == toEOF) return result + "EOF";
        if (token == toCaret) {
            EXPECT_EQ(scanner.GetToken(), toCaret);
            return result + "^";
        }
        std::string name = TStyleSheetScanner::TokenToStr(token);
        result += name;
        if (scanner.GetTokenStr() != name) result += "(" + std::string(scanner.GetTokenStr()) + ")";
    }
    return "endless";
}

struct TCase {
    std::string_view FText, FExpect;
};

constexpr TCase Cases[] = {
    {"", "EOF"},
    {"^", "^"},
    {"a{col^", "identifier(a) { identifier(col) ^"},
    {"co^lor: red", "identifier(color) ^"},  // begun before the caret
    {"a ^ b", "identifier(a) ^"},
    {"a /* x ^ y */ b", "identifier(a) ^"},  // comments never come, nor what is behind
    {"a/* x **/b/**/c", "identifier(a) identifier(b) identifier(c) EOF"},
    {"a /* open", "identifier(a) EOF"},
    {"a / b/", "identifier(a) / identifier(b) / EOF"},
    {"'a\\'b' \"c'\" 'open", "string('a\\'b') string(\"c'\") string('open) EOF"},
    {"'a\nb' c", "string('a\nb') identifier(c) EOF"},
    {"- -- --> a-b -a", "- -(--) Close SGML Comment(-->) identifier(a-b) - identifier(a) EOF"},
    {"<!-- <!- <", "Open SGML Comment(<!--) <(<!-) < EOF"},
    {"~= ~ |= |", "include(~=) ~ dash match(|=) | EOF"},
    {"12px 12PX 1.5em 2ex 3deg 4GRAD 5ms 6s 7hz 8kHz",
     "length(12px) length(12PX) ems(1.5em) exs(2ex) angle(3deg) angle(4GRAD) time(5ms) time(6s) "
     "frequency(7hz) frequency(8kHz) EOF"},
    {"5x 5% .5 . 1. 1.2.3 5_",
     "dimension(5x) percentage(5%) number(.5) . number(1.) number(1.2) "
     "number(.3) number(5) _ EOF"},
    {"-1+2", "- number(1) + number(2) EOF"},
    {"#f00 #a-b #", "hash(f00) hash(a-b) hash() EOF"},
    {"@IMPORT @page @Media @font-face @charset @foo",
     "import(IMPORT) page media(Media) font-face charset "
     "atkeyword(foo) EOF"},
    {"@", "@() EOF"},
    {"! important !IMPORTANT !foo !", "important important(IMPORTANT) !(foo) !() EOF"},
    {"#{a @{ !}", "hash({a) atkeyword({) !(}) EOF"},  // a name takes its first byte, whatever it is
    {"url( a.png )x url('a)b') URL(", "uri(url) identifier(x) uri(url) uri(URL) EOF"},
    {"url (a)", "identifier(url) ( identifier(a) ) EOF"},
    {"rgb(1) 2px( @media(", "function(rgb) ( number(1) ) function(2px) ( function(media) ( EOF"},
    {"U+26 U+0-7F U u+1",
     "unicode range(U+26) unicode range(U+0-7F) identifier(U) identifier(u) + "
     "number(1) EOF"},
    {"_a \xC3\xA9t\xC3\xA9", "_ identifier(a) identifier(\xC3\xA9t\xC3\xA9) EOF"},
    {"\\41 b \\{c \\\nd", "identifier(\\41 b) identifier(\\{c) identifier(\\) identifier(d) EOF"},
    {"a\fb", "identifier(a) \f identifier(b) EOF"},
    {std::string_view("a\x01 b", 4), "identifier(a) \x02(\x01) identifier(b) EOF"},  // not the caret
    // A zero byte ends its block, and with it here the text.
    {std::string_view("a\0b c", 5), "identifier(a) EOF"},
};

TEST(Scanner, Tokens) {
    for (const TCase& c : Cases) EXPECT_EQ(Scan(c.FText), c.FExpect) << c.FText;
}

// What is read must not depend on where a block ends.
TEST(Scanner, BlockEnds) {
    constexpr std::string_view Rest = "name 12px 'a b' url(x y) /* c */ !important --> #ab @media \r\n z";
    std::string expected = Scan(Rest);
    for (size_t before = TMLBufferProducer::BlockSize - 70; before < TMLBufferProducer::BlockSize + 2;
         ++before) {
        std::string blanks(before, ' ');
        EXPECT_EQ(Scan(blanks + std::string(Rest)), expected) << before;
    }
    // Without white space a block may end in a name: the name is read to its end.
    std::string name(TMLBufferProducer::BlockSize + 10, 'a');
    EXPECT_EQ(Scan(name), "identifier(" + name + ") EOF");
}

TEST(Scanner, Lines) {
    TSheet sheet("a\r\nb\n\rc /* \n */ 'x\ny'\n  d");
    TStyleSheetScanner scanner;
    scanner.SetBufferAndPoint(sheet.Read(), sheet.FCaret);
    while (scanner.GetTokenStr() != "d") scanner.GetToken();
    EXPECT_EQ(scanner.GetLine(), 5);
    EXPECT_EQ(scanner.GetCharIndex(), 3);
    // In a block that is not the first.
    std::string blanks(TMLBufferProducer::BlockSize + 10, ' ');
    TSheet later("a\n" + blanks + "d");
    scanner.SetBufferAndPoint(later.Read(), later.FCaret);
    while (scanner.GetTokenStr() != "d") scanner.GetToken();
    EXPECT_EQ(scanner.GetLine(), 1);
    EXPECT_EQ(scanner.GetCharIndex(), static_cast<int32_t>(blanks.size()) + 1);
}

}  // namespace
}  // namespace caretwell
