// Kinds of document, as rows: what a file's extension says of how it is read, which schema it
// has unless it names one, and how its names are written. Free XML documents, whose schema is
// mapped to their extension, are not among them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "markup/MLParserUtils.h"

namespace caretwell {

struct TDocumentKind {
    std::string_view Extension = {};  ///< in small letters, with its point
    TKibitzMode Mode = kmHTML;
    bool IsServerPage = false;  ///< server controls may stand in it
    bool KeepsCase = false;     ///< names are written as the schema spells them
    bool IsHandled = true;      ///< the markup manager takes such files
    /// Element that the document is taken to stand in; empty if it begins at the top.
    std::u16string_view Context = {};
    std::string_view DirectiveSchema = {};  ///< file of its directives; empty if it has none
};

/// All kinds that have a row.
std::span<const TDocumentKind> GetDocumentKinds();
/// The row of an extension in small letters; a page of HTML without a row of its own for others.
const TDocumentKind& GetDocumentKind(std::string_view extension);
/// File in the schema folder of documents of that mode that name no schema; empty if there is none.
std::string_view GetDefaultSchema(TKibitzMode mode);

struct TFreeSchema {
    std::string_view Extension;
    std::string_view File;
};
/// The free XML documents that are known from the start.
std::span<const TFreeSchema> GetFreeSchemas();

}  // namespace caretwell
