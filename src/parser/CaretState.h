// What a parse answers about its caret: in which tag it stands, in which attribute and value,
// inside which elements and regions. Made new at the start of each scan, so that nothing of an
// earlier document can stay in it.
//
//     <ul><li><a href="x^      FInTag, FCurrentTag a, FCurrentAttribute href
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "markup/MLParserUtils.h"
#include "parser/DocumentNamespaces.h"
#include "parser/ParserContext.h"

namespace caretwell {

struct TCaretState {
    // ---- The tag at the caret, or the innermost open one.

    bool FInTag = false;           ///< the caret stands inside a tag
    bool FInClosingTag = false;    ///< that tag began with "</"
    bool FCaretInTagName = false;  ///< in its name, directly after that, or directly after a bare "<"
    bool FInDirective = false;     ///< the caret stands in the name of a server directive, "<%@ na^"
    TRef<INibMLTag> FCurrentTag;
    /// Inside an unknown element: the innermost known one around that. Otherwise null.
    TRef<INibMLTag> FLastKnownTag;
    TRef<INibMLTag> FOutermostTag;    ///< the first opening tag before the caret
    TRef<INibMLTag> FCaretParentTag;  ///< parent of the known tag whose name is being typed

    // ---- The value at the caret.

    TRef<INibMLTagAttribute> FCurrentAttribute;  ///< null outside a value
    TNibEditPos FCaret;
    /// The caret, its column moved to the start of the value in a quoted value.
    TNibEditPos FValuePos;
    int32_t FValueOffset = -1;  ///< the same place as a byte offset; -1 outside a quoted value
    /// Where the attribute whose value the caret stands in begins, and the byte after its
    /// "="; -1 without one. The symbol tells of its last occurrence in the document instead.
    int32_t FAttributeStart = -1, FAttributeValueStart = -1;

    // ---- Regions.

    bool FInScript = false;
    bool FInStyle = false;
    bool FInTextArea = false;
    bool FInDocType = false;
    /// The comment, instruction, CDATA section or server script that the caret stands in; pcNone
    /// outside of these.
    TParserContexts FCaretRegion = pcNone;
    TParserContext FContexts = pcNone;  ///< what is still open at the end of the document
    std::vector<int32_t> FContextPos;   ///< byte offsets at which that began, the innermost last

    // ---- The document.

    bool FIsXML = false;                         ///< it has an XML declaration
    bool FUnterminatedTag = false;               ///< a tag began inside another
    std::string FSchemaFile;                     ///< last quoted string of the doctype declaration
    std::string FXSLOutputSchema = "loose.dtd";  ///< what an XSL document writes
    TDocumentNamespaces FNamespaces;             ///< that a free XML document binds
    /// Column in bytes from 0 of the last tag start or attribute end of the scan, -1 if none.
    int32_t FCurrentCol = -1;
    /// Byte offsets of the ">" of empty elements that must be written in the closed form, the last
    /// one of the document at the back.
    std::vector<int32_t> FAutoClosePositions;
};

}  // namespace caretwell
