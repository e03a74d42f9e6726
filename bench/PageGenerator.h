// Documents to measure on, made rather than collected, so that the same bytes come out on
// every machine and a figure of today can be put beside one of next year.
//
//     TPage page = MakePage(pkTagDense, 100'000);   // exactly 100,000 bytes
//     page.Tags                                     // about 4,500
//
// No page depends on a library's distributions or on the time of day: the generator has its
// own sequence of numbers, and Checksum tells whether two machines measured the same thing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace caretwell::bench {

enum TPageKind {
    pkTagDense,   ///< tables, lists, forms, nested sections: a tag every 23 bytes
    pkTextHeavy,  ///< long paragraphs with a link now and then
};

enum TSheetKind {
    skPlain,  ///< rules, @media, @font-face, comments: the grammar of CSS2
    skToday,  ///< the same with nesting, custom properties, conditions and functions of today
};

struct TPage {
    std::string Text;
    size_t Tags = 0;  ///< opening and closing ones; 0 in a style sheet
};

/// A document of HTML with a doctype, of exactly that many bytes (at least 4,000), whose
/// elements are all closed.
TPage MakePage(TPageKind kind, size_t bytes);
/// A style sheet of exactly that many bytes (at least 1,000), its last rule closed.
TPage MakeSheet(TSheetKind kind, size_t bytes);
/// A page with that many div elements open at its end, each in the one before.
TPage MakeOpenTags(size_t count);

/// 64 bits of FNV-1a.
uint64_t Checksum(std::string_view text);

}  // namespace caretwell::bench
