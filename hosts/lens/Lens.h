// Shows the style sheet manager a text that it can read.
//
// The manager's grammar is that of a plain sheet: rules of declarations, @media,
// @page, @font-face. People write more than that: nested rules, custom properties,
// conditions, prefixes and hacks, SCSS and LESS, and style text inside pages. The
// lens keeps of a document what the question at the caret needs and blanks the rest:
//
//     @supports (gap: 1px) { .a { --x: {}; color: red; &:hover { wid^
//                           a {              x: x    a {         wid
//
// (the kept rule is the innermost one only). Text and document have the same length
// and the same line breaks, so that every offset is the document's own.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace caretwell {

/// What the document is.
enum TLensKind {
    lkStyleSheet,  ///< a style sheet, plain or of a dialect that nests
    lkMarkup       ///< a page: style text stands in style elements and style attributes
};

/// Where the caret stands, as the lens sees it.
enum TLensPlace {
    lpNone,     ///< not in style text
    lpOutside,  ///< between rules, or in a comment: nothing is offered
    lpHead,     ///< in a selector, the head of an at-rule, a string: nothing is offered
    lpName,     ///< where a property's name goes
    lpValue     ///< in a value
};

struct TLensText {
    /// As long as the document, with its line breaks; all blank at lpNone.
    std::string FText;
    TLensPlace FPlace = lpNone;

    bool InStyle() const { return FPlace != lpNone; }
};

/// The document as the style sheet manager is to read it for a caret at this byte
/// offset (after the end counts as the end). Any bytes will do: what cannot be
/// followed is blanked. Time grows with the text in front of the caret.
TLensText LookThrough(std::string_view document, TLensKind kind, size_t caret);

}  // namespace caretwell
