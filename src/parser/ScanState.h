// What the scan of a document keeps beside the open tags: a part that lasts as long as the
// scan, and a part that is made new at each "<" of a tag. Small, and a copy is a copy: nothing
// here points into the block being read.
#pragma once

#include <cstdint>
#include <string>

#include "markup/MLParserUtils.h"

namespace caretwell {

struct TTagBucket;

/// Content that is not markup, of an element of HTML.
enum class TRawContent : uint8_t { None, Script, Style, TextArea };

enum class TTagForm : uint8_t { Opening, Closing, Directive, DocType };

/// The tag being read.
struct TTagScan {
    int32_t Start = 0;  ///< of its "<"
    TTagForm Form = TTagForm::Opening;
    bool IsOpen = false;             ///< it has a name, and its end was not met
    bool OpenedBeforeCaret = false;  ///< its "<" lies before the caret, and no tag holds that in its name yet
    bool IsOutermost = false;        ///< the document's first, so what it binds counts
    TRawContent Content = TRawContent::None;  ///< begins at its ">"
    INibMLTag* Tag = nullptr;                 ///< held by Bucket, or else by the scan
    TTagBucket* Bucket = nullptr;             ///< of Tag, if the schema knows it; else its name is the scan's

    bool IsClosing() const { return Form == TTagForm::Closing; }
};

struct TScan {
    bool BeforeCaret = false;            ///< whether the place in question lies before the caret
    bool PastCaret = false;              ///< the end of the caret's tag was met after the caret
    bool HasEnded = false;               ///< the document has
    bool HasStopped = false;             ///< the observers have had enough
    bool HasOutermost = false;           ///< the document's first opening tag was met
    bool HasBreakAfterCaret = false;     ///< a line break was passed since the caret, in its tag
    char QuoteOpen = 0, QuoteClose = 0;  ///< of the last value; 0 if there is none
    int32_t TextOffset = 0;              ///< of the text that observers are told of next
    int32_t ColumnOffset = -1;           ///< place that the column is to tell of, once lines are counted
    int32_t ValueLineStart = -1;         ///< of the line of FValueOffset; -1 until lines are counted
    TTagScan Tag;
    // Of a tag that the schema does not know. They mean nothing for one that has a bucket, so
    // they need not be made new with the tag.
    TRef<INibMLTag> MadeUpTag;
    std::string TagName;  ///< UTF-8
};

}  // namespace caretwell
