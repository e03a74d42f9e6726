// Tokens of definitions, and the line that each one stands on.
#include <gtest/gtest.h>

#include "tests/schema/DTDTestText.h"

namespace caretwell {
namespace {

constexpr const char* KindNames[] = {
    "Eof", "Element", "AttList", "Entity", "Number", "Id", "<", "<![", "]]>", ">",   "!", ".", "/", "+", "#",
    "-",   "?",       "*",       "|",      "&",      ")+", ",", "[",   "]",   "Str", "(", ")", "%", ";"};

/// Kind and text of each token, "Id=a"; of the fixed ones the kind alone. Messages at the end.
std::string Tokens(const std::string& text, TDTDRun& run) {
    std::istringstream stream(text);
    TDTDScanner& scanner = *run.Parser.FScanner;
    scanner.LoadFromStream(stream, {});
    scanner.StartFile();
    std::string result;
    for (scanner.GetToken(); scanner.FToken != tkEof; scanner.GetToken()) {
        std::string kind = KindNames[scanner.FToken];
        bool isFixed = scanner.FTokenText == kind;
        result += (result.empty() ? "" : " ") + kind + (isFixed ? "" : "=" + scanner.FTokenText);
    }
    for (const auto& message : run.Messages) result += " {" + message + "}";
    scanner.Close();
    return result;
}

TEST(DTDScanner, Tokens) {
    const std::string cases[][2] = {
        {"", ""},
        {"<!ELEMENT <!ATTLIST <!ENTITY", "Element=<!ELEMENT AttList=<!ATTLIST Entity=<!ENTITY"},
        {"<!element <!DOCTYPE", "Element=<!element Id=<!DOCTYPE"},
        {"a-1.b:_ :x _y", "Id=a-1.b:_ Id=:x Id=_y"},
        {"\xE9t\xE9 \xD7", "Id=\xE9t Id=\xE9 Id=\xD7 {1: Invalid character in input stream \\xD7}"},
        {"12 1.5 3.x 2x -90", "Number=12 Number=1.5 Number=3.x Number=2x Number=-90"},
        {")+ ) + )*", ")+ ) + ) *"},
        {"! # & ( ) * + , . / ; > ? [ | < -", "! # & ( ) * + , . / ; > ? [ | < -"},
        {"'a\"b' \"c'd\" ''", "Str=a\"b Str=c'd Str="},
        {"'a\r\nb\n\nc'", "Str=abc"},
        {"'cut", "Str=cut"},
        {"<![ ]]> ]] ]",
         "<![ ]]> ] ] ] {1: Invalid character in input stream ]}"
         " {1: Invalid character in input stream ]} {1: Invalid character in input stream ]}"},
        {"a -- not - me -- b", "Id=a Id=b"},
        {"a <!-- b -- c - -> --> d <!---->e", "Id=a Id=d Id=e"},
        {"a <!-- cut", "Id=a {1: Expected --> but found end of file}"},
        {"a -- cut", "Id=a {1: Expected -- but found end of file}"},
        {"<!- <!1 <!",
         "<=<!- <=<! Number=1 <=<!"
         " {1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY, - but found <!-}"
         " {1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY, - but found <!}"
         " {1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY, - but found <!}"},
        {"% %unknown; %", "% %=%unknown ; %"},
        // A bad byte takes the kind before it; the first one must not look like the end.
        {"a ~ , $",
         "Id=a Id=~ , ,=$ {1: Invalid character in input stream ~}"
         " {1: Invalid character in input stream $}"},
        {"~a", "Id=a {1: Invalid character in input stream ~}"},
        {std::string("a\0b 'c\0d'", 9),
         "Id=a Id=b Str=cd {1: Invalid character in input stream \\x00}"
         " {1: Invalid character in input stream \\x00}"},
        {"\xEF\xBB\xBF<!ELEMENT", "Element=<!ELEMENT"},
    };
    for (const auto& [text, expect] : cases) {
        TDTDRun run;
        EXPECT_EQ(Tokens(text, run), expect) << text;
    }
}

TEST(DTDScanner, References) {
    const std::pair<const char*, const char*> entities[] = {
        {"x", "a|b"},     {"e", ""},          {"n", "%x;,%x"}, {"self", "a %self; b"},
        {"r1", "1 %r2;"}, {"r2", "2 %r1; 3"}, {"open", "'p"},  {"half", "--"}};
    const char* const cases[][2] = {
        {"(%x;)", "( Id=a | Id=b )"},
        {"(%x)", "( Id=a | Id=b )"},  // the ";" may be left out
        {"%x;;%e;%e;z", "Id=a | Id=b ; Id=z"},
        {"%n;.", "Id=a | Id=b , Id=a | Id=b ."},  // twice, but not within itself
        {"'%x;'", "Str=%x;"},
        {"%self; c", "Id=a Id=b Id=c {!1: Parameterized entity self expands into itself}"},
        {"%r1; c", "Number=1 Number=2 Number=3 Id=c {!1: Parameterized entity r1 expands into itself}"},
        {"%open; q' r", "Str=p q Id=r"},
        {"%half; a -- b", "Id=b"},
    };
    for (const auto& [text, expect] : cases) {
        TDTDRun run;
        for (auto [name, value] : entities) {
            TDTDSymbol* symbol = run.Parser.EnterSymbol(name, dtParameterizedEntity);
            SymbolAs<TDTDParameterizedEntity>(symbol)->FValue = value;
        }
        EXPECT_EQ(Tokens(text, run), expect) << text;
    }
}

// An entity that another one names has so much room; out of the file itself it is one byte less.
TEST(DTDScanner, ExpansionAtItsLimit) {
    const struct {
        const char* FText;
        size_t FRest, FInner;  // bytes of the outer entity after the reference, and of the inner one
        bool FWorks;
    } cases[] = {{"%outer; z", 0, 16383, true},    {"%outer; z", 0, 16384, true},
                 {"%outer; z", 0, 16385, false},   {"%outer; z", 100, 16284, true},
                 {"%outer; z", 100, 16285, false}, {"%inner; z", 0, 16383, true},
                 {"%inner; z", 0, 16384, false}};
    for (const auto& c : cases) {
        TDTDRun run;
        const std::string inner(c.FInner, 'i'), outer = "%inner;" + std::string(c.FRest, ',');
        for (const auto& [name, value] : {std::pair("inner", inner), {"outer", outer}})
            SymbolAs<TDTDParameterizedEntity>(run.Parser.EnterSymbol(name, dtParameterizedEntity))->FValue =
                value;
        std::string result = Tokens(c.FText, run);
        EXPECT_EQ(result.starts_with("Id=" + inner + " "), c.FWorks) << c.FText << c.FInner;
        EXPECT_NE(result.find("Id=z"), result.npos);
        EXPECT_EQ(run.AllMessages(), c.FWorks ? "" : "!1: Parameterized entity too long");
    }
}

TEST(DTDScanner, BlocksAreCutAtLineBreaks) {
    for (std::string lineBreak : {"\n", "\r", "\r\n", "\n\r"}) {
        // Lines of all lengths, so that every kind of place meets the end of a block.
        std::string text = "'", value;
        int32_t lines = 1;
        for (int i = 0; text.size() < 80000; ++i, ++lines) {
            std::string line(static_cast<size_t>(i * 7919 % 311), 'x');
            text += line + lineBreak;
            value += line;
        }
        TDTDRun run;
        EXPECT_TRUE(Tokens(text + "' ~", run) == "Str=" + value + " Str=~ {" + std::to_string(lines) +
                                                     ": Invalid character in input stream ~}");
    }
    // A break of two bytes at the end of a block, wherever the end falls in it.
    for (int32_t fill = TDTDScanner::BlockSize - 5; fill < TDTDScanner::BlockSize; ++fill)
        for (const char* before : {"", "\n"}) {
            TDTDRun run;
            EXPECT_EQ(Tokens(before + std::string(static_cast<size_t>(fill), ' ') + "\r\n~", run),
                      std::string(*before ? " {3" : " {2") + ": Invalid character in input stream ~}")
                << fill;
        }
    TDTDRun longest;
    EXPECT_EQ(Tokens(std::string(16383, 'x') + "\ny", longest), "Id=" + std::string(16383, 'x') + " Id=y");
    TDTDRun tooLong;
    EXPECT_THROW(Tokens("a\n" + std::string(16384, 'x') + "\ny", tooLong), EDTDParserError);
    EXPECT_EQ(tooLong.Parser.FScanner->FLine, 2);
}

}  // namespace
}  // namespace caretwell
