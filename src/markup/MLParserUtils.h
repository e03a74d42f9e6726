// The shared language of the markup side: every element, attribute, text node,
// value editor and block reader is seen through the interfaces given here.
//
// Interfaces without operations are markers: they exist to be queried for, which is
// how the code tells a closing tag, a made-up tag or a wrapper from a plain element.
//
// String views handed out live until the object they came from is next changed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "caretwell/host/Nibapi.h"
#include "caretwell/markup/Text.h"

namespace caretwell {

/// How element names are shown: as the schema spells them, or folded.
enum TTagCase : uint8_t { tcNormal, tcLowerCase, tcUpperCase };
enum TMLParserState : uint8_t { mlpsNone, mlpsParsing };
enum INibMLTagFlag : uint8_t { tfGlobal, tfASPDirective };
/// The kind of element that an observer is told of.
enum TTagType : uint8_t {
    ttComment,
    ttAttribute,
    ttOpen,
    ttClose,
    ttSingleLine,
    ttServerScript,
    ttProcessingInstruction,
    ttText,
    ttDocType,
    ttDirective,
    ttAspComment,
    ttEntity,
};
/// The kind of a markup document; selects the default schema.
enum TKibitzMode : uint8_t { kmHTML, kmXSL, kmWML, kmResX, kmXML };

/// A set of values of an enumeration, value i at bit i.
template <class E, class Bits>
class TFlags {
public:
    constexpr TFlags() = default;
    constexpr TFlags(E value) : FBits(Bit(value)) {}
    constexpr void Add(E value) { FBits = static_cast<Bits>(FBits | Bit(value)); }
    constexpr void Remove(E value) { FBits = static_cast<Bits>(FBits & ~Bit(value)); }
    constexpr bool Has(E value) const { return (FBits & Bit(value)) != 0; }
    friend constexpr bool operator==(TFlags, TFlags) = default;

private:
    static constexpr Bits Bit(E value) { return static_cast<Bits>(1u << value); }
    Bits FBits = 0;
};
using INibMLTagFlags = TFlags<INibMLTagFlag, uint8_t>;

// Shown in the list's class column; the blanks keep the columns apart.
inline constexpr std::u16string_view _sMLElement = u"Element  ";
inline constexpr std::u16string_view _sMLAttribute = u"Attribute  ";

/// The place of a thing in the document: byte offsets in its UTF-8 text.
struct INibMLMarkupPos : IRefCounted {
    static constexpr TGuid Id = Guid("99bce3a1-bf8f-40fd-8b3f-b6707bae0561");
    using Parent = IRefCounted;
    /// A value of NewID for the symbols of free XML documents, -1 for all others.
    virtual int32_t GetID() const = 0;
    virtual int32_t GetOffsetEnd() const = 0;
    virtual int32_t GetOffsetStart() const = 0;
    virtual void SetOffsetEnd(int32_t value) = 0;
    virtual void SetOffsetStart(int32_t value) = 0;
};

struct INibMLTextNode : INibMLMarkupPos {
    static constexpr TGuid Id = Guid("ce597066-8bdf-4c01-8281-fd15d1166161");
    using Parent = INibMLMarkupPos;
    virtual void SetText(std::u16string_view value) = 0;
    virtual std::u16string_view GetText() const = 0;
};
struct INibMLText : INibMLTextNode {
    static constexpr TGuid Id = Guid("e8129a0f-8307-4278-977f-d2cea1f80014");
    using Parent = INibMLTextNode;
};
struct INibMLComment : INibMLTextNode {
    static constexpr TGuid Id = Guid("85b1143f-bc12-4398-b60e-3b34aafe7d52");
    using Parent = INibMLTextNode;
};
struct INibMLServerScript : INibMLTextNode {
    static constexpr TGuid Id = Guid("705ffd5a-e56c-4ae3-8022-f79ab873fa85");
    using Parent = INibMLTextNode;
};
/// Shares its identifier with INibMLServerScript: a query for either is answered by
/// an object of the other, and only the TTagType told to an observer keeps them apart.
using INibMLProcessingInstruction = INibMLServerScript;
/// Shares its identifier with INibMLUnknownTagAttribute; the two never meet on one object.
struct INibMLEntityReference : INibMLTextNode {
    static constexpr TGuid Id = Guid("4ffab803-9abd-4765-9b00-3154f9e8505f");
    using Parent = INibMLTextNode;
};

/// An attribute of an element with its allowed values, and the record of where it
/// was last found in the document.
struct INibMLTagAttribute : INibMLMarkupPos {
    static constexpr TGuid Id = Guid("9d90964c-e7bd-419e-b9b7-feb2d9871fe5");
    using Parent = INibMLMarkupPos;
    /// Offset at which the value, after the "=", starts.
    virtual int32_t GetAttributeValueStartOffset() const = 0;
    virtual void SetAttributeValueStartOffset(int32_t value) = 0;
    virtual std::u16string_view GetName() const = 0;
    virtual bool GetRequired() const = 0;
    virtual bool GetFixed() const = 0;
    virtual void SetFixed(bool value) = 0;
    virtual std::u16string_view GetFixedValue() const = 0;
    virtual void SetFixedValue(std::u16string_view value) = 0;
    virtual void SetRequired(bool value) = 0;
    /// How many values the filter leaves.
    virtual int32_t GetCount() = 0;
    /// Index counts from the start of the range; empty out of range.
    virtual std::u16string_view GetValue(int32_t index) = 0;
    /// Index counts from the start of the whole list.
    virtual void SetValue(int32_t index, std::u16string_view value) = 0;
    virtual void AddValue(std::u16string_view value) = 0;
    /// Narrows the range to the values that begin with the text.
    virtual void SetFilter(std::u16string_view value) = 0;
    /// Index in the range of the first value that begins with prefix, -1 if none.
    virtual int32_t FindSymbol(std::u16string_view prefix) = 0;
    virtual std::u16string_view GetFilter() const = 0;
};
struct INibMLTagAttributeEvent : INibMLTagAttribute {
    static constexpr TGuid Id = Guid("eb434e45-2b29-43b6-b30e-67983a23815e");
    using Parent = INibMLTagAttribute;
};
/// An attribute that the schema does not know.
struct INibMLUnknownTagAttribute : INibMLTagAttribute {
    static constexpr TGuid Id = Guid("4ffab803-9abd-4765-9b00-3154f9e8505f");
    using Parent = INibMLTagAttribute;
};

/// An element: a symbol of the schema, a tag made up for something that the schema
/// does not know, or a wrapper. Its children and its attributes are seen through one
/// filtered range; GetShowAttributes says to which of the two the range applies.
struct INibMLTag : INibMLMarkupPos {
    static constexpr TGuid Id = Guid("ce942b07-4a6c-4243-be19-482490827d5e");
    using Parent = INibMLMarkupPos;
    /// Index counts from the start of the range; null out of range.
    virtual TRef<INibMLTagAttribute> GetAttribute(int32_t index) = 0;
    virtual int32_t GetStartIndex() = 0;
    /// False means that the closing tag may be left out.
    virtual bool GetRequiresClosingTag() const = 0;
    virtual bool GetRequiresOpeningTag() const = 0;
    /// Child at index, counted from the start of the range; null out of range.
    virtual TRef<INibMLTag> GetTags(int32_t index) = 0;
    virtual int32_t GetTagCount() = 0;
    /// GetTagCount less the closing tags that were put into the child list.
    virtual int32_t GetPureTagCount() = 0;
    virtual int32_t GetAttributeCount() = 0;
    /// The name in the case that the symbol manager's TTagCase asks for.
    virtual std::u16string_view GetName() const = 0;
    /// Declared empty: no content and no closing tag.
    virtual bool GetEmpty() const = 0;
    /// A parameter entity that was under expansion where the schema first met the element.
    virtual std::u16string_view GetEntityName(int32_t index) const = 0;
    virtual int32_t GetEntityCount() const = 0;
    virtual bool GetAny() const = 0;
    /// The element stands in another element's content model.
    virtual bool GetIsChild() const = 0;
    virtual void SetIsChild(bool value) = 0;
    virtual std::u16string_view GetFilter() const = 0;
    virtual void SetFilter(std::u16string_view value) = 0;
    /// By exact name without regard to case; null if none.
    virtual TRef<INibMLTagAttribute> FindAttribute(std::u16string_view name) = 0;
    /// Index in the range of the first entry shown that begins with prefix, -1 if none.
    virtual int32_t FindSymbol(std::u16string_view prefix) = 0;
    virtual bool GetShowAttributes() const = 0;
    virtual void SetShowAttributes(bool value) = 0;
    virtual void AlphaSort() = 0;
    virtual void ClearTags() = 0;
    virtual void ClearAttrs() = 0;
    virtual void AddTag(TRef<INibMLTag> tag) = 0;
    /// False if the tag was no child.
    virtual bool RemoveTag(INibMLTag* tag) = 0;
    virtual void AddAttribute(TRef<INibMLTagAttribute> attribute) = 0;
    /// The attribute that was removed, null if none.
    virtual TRef<INibMLTagAttribute> RemoveAttribute(std::u16string_view name) = 0;
    /// Child by exact name without regard to case; null if none.
    virtual TRef<INibMLTag> LookupTag(std::u16string_view name) = 0;
    virtual INibMLTagFlags GetFlags() const = 0;
    virtual void SetFlags(INibMLTagFlags value) = 0;
};
/// Supported only by tags that were made up for an element unknown to the schema.
struct INibMLNamedTag : INibMLTag {
    static constexpr TGuid Id = Guid("09768f0e-f71a-4e35-864d-4f263b6e6c1c");
    using Parent = INibMLTag;
    virtual void SetName(std::u16string_view value) = 0;
};
struct INibMLDocTypeTag : INibMLNamedTag {
    static constexpr TGuid Id = Guid("45ce7023-7c57-441a-a16e-5e30c27ef527");
    using Parent = INibMLNamedTag;
};
struct INibMLXSLTag : INibMLTag {
    static constexpr TGuid Id = Guid("e07634ad-ead1-4c10-9bb1-6ea33fd1da99");
    using Parent = INibMLTag;
};
struct INibMLCustomTag : IRefCounted {
    static constexpr TGuid Id = Guid("1cd5106f-c8a1-4f93-9b7b-19c8c06a9588");
    using Parent = IRefCounted;
    virtual int32_t GetLineNumber() const = 0;
    virtual void SetLineNumber(int32_t value) = 0;
};
struct INibMLClosingTag : INibMLCustomTag {
    static constexpr TGuid Id = Guid("291b4a0c-256e-44d1-a526-4f3d398dfddf");
    using Parent = INibMLCustomTag;
};
struct INibMLWrapperTag : INibMLCustomTag {
    static constexpr TGuid Id = Guid("5bbc2174-4ee7-4050-9f46-78d1bf8f3441");
    using Parent = INibMLCustomTag;
};

/// Produces an attribute value, by a dialog or otherwise.
struct INibMLEditor : IRefCounted {
    static constexpr TGuid Id = Guid("78a18929-8c73-4edf-afc3-fa1221615d64");
    using Parent = IRefCounted;
    /// True if a value was chosen.
    virtual bool Execute(IRefCounted* context, int32_t value) = 0;
    /// How far the caret is to move after the insertion, in characters.
    virtual int32_t RelativeMoveCaretPos() = 0;
    /// Whether completion is to be invoked again after the insertion.
    virtual bool InvokeCodeCompletion() = 0;
    virtual std::u16string GetValue() = 0;
    virtual std::string GetEditorId() = 0;
};

struct INibCSSProvider : IRefCounted {
    static constexpr TGuid Id = Guid("bac8cbab-149b-4091-a378-1200cd66535d");
    using Parent = IRefCounted;
};

/// The observer of a parse.
struct INibMLElementCallback : IRefCounted {
    static constexpr TGuid Id = Guid("4f012750-e32f-455b-990b-6a5a322ab507");
    using Parent = IRefCounted;
    /// One element was found. sender is the parser's identity, for comparison only.
    /// Setting stop, which is false on entry, is a vote to end the parse.
    virtual void ElementParsed(void* sender, INibMLMarkupPos* element, TTagType type, int32_t offsetStart,
                               int32_t offsetEnd, bool& stop) = 0;
    /// What was told so far no longer holds.
    virtual void Invalidate() = 0;
};

/// A snapshot of the tags open at the caret, innermost first.
struct ITagStackIterator : IRefCounted {
    static constexpr TGuid Id = Guid("def5fb1c-21b1-4c94-8688-f3c4a3233d6e");
    using Parent = IRefCounted;
    virtual bool HasNext() = 0;
    /// Null after the last.
    virtual TRef<INibMLTag> Next() = 0;
};

/// Walks all registered tags.
struct ISymbolManagerIterator : IRefCounted {
    static constexpr TGuid Id = Guid("89453cee-6c8b-49f9-9f19-75255952f06c");
    using Parent = IRefCounted;
    virtual int32_t Count() = 0;  ///< 0 once the symbol manager is gone
    /// In order of registration, from 0; null out of range.
    virtual TRef<INibMLTag> Tags(int32_t index) = 0;
};

/// A process-wide counter; the first result is 0.
int32_t NewID();

/// True unless the word is the name of a schema type such as "CDATA" (case counts).
bool IdentIsNotDTDType(std::string_view ident);
bool IdentIsNotDTDType(std::u16string_view ident);

/// True for "uri..." and "color..." without regard to case: the values by which a
/// schema asks for an editor.
bool IdentIsAttributeEditor(std::string_view ident);
bool IdentIsAttributeEditor(std::u16string_view ident);

/// Maps what a document or a schema says about its schema (a public identifier, a URL,
/// a path, a bare name, nothing) to a path in the schema folder. The file need not
/// exist. A path in name is never honoured.
std::string GetSchemaFileName(std::string_view name, TKibitzMode mode);

}  // namespace caretwell
