// The markup manager as other packages of the host see it: what it can do beyond the
// interface that all managers share, and how it and its tables are reached.
//
// Interfaces alone: a host that includes this is bound to nothing of the inside.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "caretwell/host/Nibapi.h"
#include "caretwell/markup/MLBufferProducer.h"
#include "caretwell/markup/MLParserUtils.h"
#include "caretwell/parser/ParserContext.h"

namespace caretwell {

class TMLSymbolManager;

/// Gives other packages of the host the symbol tables.
struct ISymbolManagerAccessor : IRefCounted {
    static constexpr TGuid Id = Guid("0d7ce495-e156-439d-986e-f3b914ae6e6d");
    using Parent = IRefCounted;
    /// Not owned; never null, and the same for the life of the manager.
    virtual TMLSymbolManager* GetSymbolManager() = 0;
};

/// What a parse tells whoever watches it, by query from the markup manager. A watcher that the
/// engine has outlived hears nothing any more.
struct INibMLParse : IRefCounted {
    static constexpr TGuid Id = Guid("c2a7a1f6-0b0e-4b59-8f0e-4a4ee7a1d35c");
    using Parent = IRefCounted;
    /// Holds a reference to the observer until it is removed or the package ends. What is no
    /// INibMLElementCallback, or is watching already, is left.
    virtual void AddCallback(IRefCounted* observer) = 0;
    virtual void RemoveCallback(IRefCounted* observer) = 0;
    /// The tags open at the caret of the last parse, innermost first; never null.
    virtual TRef<ITagStackIterator> GetTagStack() = 0;
    /// All elements of the schema in hand; never null.
    virtual TRef<ISymbolManagerIterator> GetElements() = 0;
};

/// What an attribute edit needs to know of the attribute in the document. Offsets are
/// bytes; quotes are 0 where there is none.
struct TAttributeEdit {
    std::u16string AttributeName;
    std::u16string NewValue;  ///< empty takes the attribute away
    std::u16string OldValue;
    int32_t OldLength = -1;  ///< in bytes, where that of OldValue does not tell it; below 0 it does
    int32_t AttributeStart = 0;
    int32_t AttributeEnd = 0;
    int32_t TagEnd = 0;
    int32_t ValueStart = 0;
    TRef<INibEditView> View;
    char OpenQuote = 0;
    char CloseQuote = 0;
    TParserContext Context = pcNone;
    bool ExtendByFilter = false;  ///< the user has typed on since the parse
    bool MoveCaret = false;       ///< to the start of the value
};

/// The manager as other packages of the host see it.
struct INibMLCodeInsightManager : INibCodeInsightManager {
    static constexpr TGuid Id = Guid("5bdc5730-abde-486e-b794-eff2d8696022");
    using Parent = INibCodeInsightManager;
    virtual void GetCurrentTag(TRef<INibMLTag>& tag) = 0;
    virtual bool GetForceDelete() = 0;
    virtual void SetForceDelete(bool value) = 0;
    virtual bool GetIsASPEnabled() = 0;
    virtual void SetIsASPEnabled(bool value) = 0;
    virtual bool IsASCXFile() = 0;
    virtual void GetTagFromHashList(std::u16string_view name, TRef<INibMLTag>& tag) = 0;
    virtual TTagCase GetTagCase() = 0;
    /// True if the buffer was written.
    virtual bool ApplyAttributeValue(const TAttributeEdit& edit) = 0;
    /// Runs the editor of an attribute for the value at index and writes what it gives.
    /// NewValue is not read: it is what the editor gives.
    virtual bool ExecuteAttributeEditor(const TAttributeEdit& edit, int32_t index,
                                        std::u16string_view tagName) = 0;
    virtual void SetTagCase(TTagCase value) = 0;
    virtual TRef<INibMLTag> GetContextTag() = 0;
    virtual void SetContextTag(TRef<INibMLTag> tag) = 0;
    virtual bool GetAutoQuote() = 0;
    virtual void SetAutoQuote(bool value) = 0;
    virtual int32_t GetHiddenAttrCount() = 0;
    virtual void GetHiddenAttrs(int32_t index, TRef<INibMLTagAttribute>& attribute) = 0;
    virtual int32_t GetCurrentTagAttrCount() = 0;
    virtual void GetCurrentTagAttrValue(int32_t index, std::u16string& value) = 0;
    virtual void GetCurrentTagAttrName(int32_t index, std::u16string& name) = 0;
    virtual void GetCurrentTagAttrValueByName(std::u16string_view name, std::u16string& value) = 0;
    virtual void Parse(TNibEditPos position, TRef<IMLBufferProducer> producer,
                       TRef<INibMLTag> contextTag) = 0;
};

/// The one manager of the process, made at the first call. Null off the main thread.
CARETWELL_API TRef<INibMLCodeInsightManager> MarkupLanguageManager();
/// The one symbol manager of the process, made at the first call; not owned.
CARETWELL_API TMLSymbolManager& MLSymbolManager();

}  // namespace caretwell
