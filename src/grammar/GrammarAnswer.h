// What may stand exactly at a caret, by the content models of the schema.
//
//     <table><caption>x</caption>^      now: colgroup, col, thead, tbody, tr ...   and no caption
//     <dl><dt>x^                        now: dd, dt; required: none yet            closable: dt
//
// The lists of code insight show all children of an element, whatever stands in it already;
// this tells more, and of broken text as well.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "caretwell/host/Nibapi.h"

namespace caretwell {

/// An open element that may end at the caret.
struct TClosableElement {
    std::string Name;
    int32_t Offset;  ///< byte offset of its opening tag, or of the tag before which that is left out
};

/// Names are UTF-8, spelled as the schema does, with the prefixes that the document binds.
struct TGrammarAnswer {
    /// False where the schema says less than a model of this place, where a model was too large
    /// to be followed, and in an element that the schema does not know.
    bool IsExact = false;
    /// Elements that may start here, also where tags in between are left out: those that are
    /// required first, then those after which the text after the caret still fits.
    std::vector<std::string> Now;
    std::vector<std::string> Required;       ///< of these, what the content needs next
    std::vector<std::string> Elsewhere;      ///< may stand in the same element, but not here
    std::vector<TClosableElement> Closable;  ///< innermost first
};

/// The grammar, by query from the markup manager. While it is watching, each parse also notes
/// the tags that it meets; that costs a tenth of the parse and nothing else changes.
struct INibGrammar : IRefCounted {
    static constexpr TGuid Id = Guid("7d0f4b53-3a5e-4f0b-9c57-5b1f2a6de3c8");
    using Parent = IRefCounted;
    virtual bool GetWatching() = 0;
    virtual void SetWatching(bool value) = 0;
    /// The answer at the caret of the last parse. False, and an answer without a name, if nobody
    /// watched that, before the first parse, and without a schema.
    virtual bool GetAnswer(TGrammarAnswer& answer) = 0;
};

}  // namespace caretwell
