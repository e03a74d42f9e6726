// The small objects that speak the tag and text interfaces without being elements of
// a schema: a tag for an unknown name, the closing tags offered in a list, the
// doctype, stand-ins for an element in another list, and the text nodes that
// observers are told of.
#pragma once

#include <string>

#include "markup/MLParserUtils.h"
#include "tagmodel/TagContext.h"

namespace caretwell {

/// Answers most questions about a tag with a fixed value. Is lists the interfaces,
/// the one that is a tag first.
template <class... Is>
class TPlainTag : public TImplements<Is...> {
public:
    TPlainTag(std::u16string_view name, ITagContext* context, int32_t id)
        : FName(name), FContext(context), FID(id) {}

    int32_t GetID() const override { return FID; }
    int32_t GetOffsetEnd() const override { return FOffsetEnd; }
    int32_t GetOffsetStart() const override { return FOffsetStart; }
    void SetOffsetEnd(int32_t value) override { FOffsetEnd = value; }
    void SetOffsetStart(int32_t value) override { FOffsetStart = value; }
    std::u16string_view GetName() const override { return FName.Get(FContext.Get()); }
    INibMLTagFlags GetFlags() const override { return FFlags; }
    void SetFlags(INibMLTagFlags value) override { FFlags = value; }

    TRef<INibMLTagAttribute> GetAttribute(int32_t) override { return nullptr; }
    int32_t GetStartIndex() override { return 0; }
    bool GetRequiresClosingTag() const override { return false; }
    bool GetRequiresOpeningTag() const override { return false; }
    TRef<INibMLTag> GetTags(int32_t) override { return nullptr; }
    int32_t GetTagCount() override { return 0; }
    int32_t GetPureTagCount() override { return 0; }
    int32_t GetAttributeCount() override { return 0; }
    bool GetEmpty() const override { return FName.GetSpelled().empty(); }
    std::u16string_view GetEntityName(int32_t) const override { return {}; }
    int32_t GetEntityCount() const override { return 0; }
    bool GetAny() const override { return false; }
    bool GetIsChild() const override { return false; }
    void SetIsChild(bool) override {}
    std::u16string_view GetFilter() const override { return {}; }
    void SetFilter(std::u16string_view) override {}
    TRef<INibMLTagAttribute> FindAttribute(std::u16string_view) override { return nullptr; }
    int32_t FindSymbol(std::u16string_view) override { return -1; }
    bool GetShowAttributes() const override { return false; }
    void SetShowAttributes(bool) override {}
    void AlphaSort() override {}
    void ClearTags() override {}
    void ClearAttrs() override {}
    void AddTag(TRef<INibMLTag>) override {}
    bool RemoveTag(INibMLTag*) override { return false; }
    void AddAttribute(TRef<INibMLTagAttribute>) override {}
    TRef<INibMLTagAttribute> RemoveAttribute(std::u16string_view) override { return nullptr; }
    TRef<INibMLTag> LookupTag(std::u16string_view) override { return nullptr; }

protected:
    TCasedName FName;

private:
    int32_t FOffsetEnd = 0, FOffsetStart = 0;
    TTagContextLink FContext;
    int32_t FID;
    INibMLTagFlags FFlags;
};

/// A plain tag that also knows a line (of INibMLCustomTag or a marker above it).
template <class TTagInterface, class TLineInterface, class... Markers>
class TLinedTag : public TPlainTag<TTagInterface, TLineInterface, Markers...> {
public:
    using TPlainTag<TTagInterface, TLineInterface, Markers...>::TPlainTag;
    int32_t GetLineNumber() const override { return FLineNumber; }
    void SetLineNumber(int32_t value) override { FLineNumber = value; }

private:
    int32_t FLineNumber = 0;
};

using TEmptyTag = TLinedTag<INibMLTag, INibMLCustomTag>;

/// Offered for a tag left open. Its name is the whole text, "</" and ">" included; its
/// line is the line of the opening tag.
class TClosingTag final : public TLinedTag<INibMLTag, INibMLClosingTag> {
    using TLinedTag::TLinedTag;
};

/// A tag for a name that no schema knows: it is expected to be closed.
template <class I>
class TNamedTagBase : public TLinedTag<I, INibMLCustomTag> {
public:
    using TLinedTag<I, INibMLCustomTag>::TLinedTag;
    bool GetRequiresClosingTag() const override { return !this->FName.GetSpelled().empty(); }
    void SetName(std::u16string_view value) override { this->FName.Set(value); }
};
class TNamedTag final : public TNamedTagBase<INibMLNamedTag> {
    using TNamedTagBase::TNamedTagBase;
};
class TDocTypeTag final : public TNamedTagBase<INibMLDocTypeTag> {
public:
    using TNamedTagBase::TNamedTagBase;
    bool GetEmpty() const override { return true; }
};

/// Whatever part of them the element shows (HTMLTag.cpp).
int32_t CountAllAttributes(INibMLTag& tag);

/// Stands for an element in another element's list, by name. The element is asked for its
/// attributes only when somebody asks for their number: to count them is to make them.
template <class I>
class TTagWrapperBase : public TLinedTag<I, INibMLWrapperTag> {
public:
    TTagWrapperBase(INibMLTag& tag, ITagContext* context, int32_t id)
        : TLinedTag<I, INibMLWrapperTag>(tag.GetName(), context, id), FTag(&tag) {}
    int32_t GetAttributeCount() override { return CountAllAttributes(*FTag); }
    bool GetEmpty() const override { return false; }
    bool GetIsChild() const override { return true; }
    int32_t FindSymbol(std::u16string_view) override { return 0; }

private:
    TRef<INibMLTag> FTag;
};
class TTagWrapper final : public TTagWrapperBase<INibMLTag> {
    using TTagWrapperBase::TTagWrapperBase;
};
/// An element of the other language of an XSL document.
class TXSLTag final : public TTagWrapperBase<INibMLXSLTag> {
    using TTagWrapperBase::TTagWrapperBase;
};

/// Text that observers are told of. The creator sets the offsets.
template <class I>
class TTextNodeBase final : public TImplements<I> {
public:
    int32_t GetID() const override { return -1; }
    int32_t GetOffsetEnd() const override { return FOffsetEnd; }
    int32_t GetOffsetStart() const override { return FOffsetStart; }
    void SetOffsetEnd(int32_t value) override { FOffsetEnd = value; }
    void SetOffsetStart(int32_t value) override { FOffsetStart = value; }
    void SetText(std::u16string_view value) override { FText = value; }
    std::u16string_view GetText() const override { return FText; }

private:
    int32_t FOffsetEnd = 0, FOffsetStart = 0;
    std::u16string FText;
};
using TMLTextNode = TTextNodeBase<INibMLTextNode>;
using TMLComment = TTextNodeBase<INibMLComment>;
using TMLText = TTextNodeBase<INibMLText>;
using TMLServerScript = TTextNodeBase<INibMLServerScript>;
using TMLProcessingInstruction = TTextNodeBase<INibMLProcessingInstruction>;
using TMLEntityReference = TTextNodeBase<INibMLEntityReference>;

}  // namespace caretwell
