// An element of a schema: its name, children and attributes, and a movable range
// over one of the two lists. The list that the user sees is that list itself.
//
//     <ul><^     the tag is ul, its child list is offered, closing tags at its head
//
// Children may form cycles (an element may stand in its own content model), so a tag
// goes away only after its ClearTags.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "markup/FilteredRange.h"
#include "markup/MLParserUtils.h"
#include "tagmodel/NameTable.h"
#include "tagmodel/TagContext.h"

namespace caretwell {

/// What a content model says of an element.
struct TTagModel {
    bool RequiresClosingTag = false;
    bool RequiresOpeningTag = false;
    bool Empty = false;
    bool Any = false;
};

class THTMLTag : public TImplements<INibMLTag> {
public:
    /// context may be null; it is not owned, and may go away before the tag. The id is kept as it comes.
    THTMLTag(std::u16string_view name, ITagContext* context, int32_t id)
        : FName(name), FContext(context), FID(id) {}
    ~THTMLTag() override;

    /// Names of the parameter entities that were under expansion where the element was first met.
    void SetEntityName(const std::vector<std::string>& names);
    void SetModel(const TTagModel& model) { FModel = model; }

    /// Fills the attribute list when somebody first asks for an attribute. A schema
    /// declares tens of attributes for every element, and a document uses few elements.
    /// The filler must not touch other tags; it is dropped by ClearAttrs.
    using TAttributeFiller = std::function<void(THTMLTag&)>;
    void SetAttributeFiller(TAttributeFiller filler) { FFiller = std::move(filler); }
    /// The same for attributes that come on top of those that are there or are to be filled.
    void AddAttributeFiller(TAttributeFiller filler);

    /// Finds a child without making a reference; borrowed.
    INibMLTag* FindChild(std::u16string_view name) const;
    /// Adds a child that the caller knows to be new: a load gives a hundred to each of two
    /// hundred elements, and few of them are ever asked for one by name.
    void AppendTag(TRef<INibMLTag> tag);
    /// Takes out all children that pass the test, in one go.
    template <class TTest>
    void RemoveTagsIf(TTest test) {
        std::erase_if(FTags, test);
        FTagHash.RemoveIf(test);  // which may hold none yet
    }
    /// The whole child list, whatever the range.
    const std::vector<TRef<INibMLTag>>& GetAllTags() const { return FTags; }

    /// The whole attribute list, whatever the range.
    const std::vector<TRef<INibMLTagAttribute>>& GetAllAttributes() {
        FillAttributes();
        return FAttrs;
    }

    /// Back to what the load left: children shown, all of them, nothing filtered, and
    /// no closing tags. Attributes keep their values.
    void ResetRange();
    /// True between a change of range or list and the reset.
    bool FIsChanged = false;

    int32_t GetID() const override { return FID; }
    int32_t GetOffsetEnd() const override { return FOffsetEnd; }
    int32_t GetOffsetStart() const override { return FOffsetStart; }
    void SetOffsetEnd(int32_t value) override { FOffsetEnd = value; }
    void SetOffsetStart(int32_t value) override { FOffsetStart = value; }

    TRef<INibMLTagAttribute> GetAttribute(int32_t index) override;
    int32_t GetStartIndex() override { return FRange.Start; }
    bool GetRequiresClosingTag() const override { return FModel.RequiresClosingTag; }
    bool GetRequiresOpeningTag() const override { return FModel.RequiresOpeningTag; }
    TRef<INibMLTag> GetTags(int32_t index) override;
    int32_t GetTagCount() override { return FRange.GetCount(LastTag() + 1); }
    int32_t GetPureTagCount() override { return GetTagCount() - FExtraTagCount; }
    int32_t GetAttributeCount() override;
    std::u16string_view GetName() const override { return FName.Get(FContext.Get()); }
    bool GetEmpty() const override { return FModel.Empty; }
    std::u16string_view GetEntityName(int32_t index) const override;
    int32_t GetEntityCount() const override { return static_cast<int32_t>(FEntityNames.size()); }
    bool GetAny() const override { return FModel.Any; }
    bool GetIsChild() const override { return FIsChild; }
    void SetIsChild(bool value) override { FIsChild = value; }
    std::u16string_view GetFilter() const override { return FRange.Filter; }
    void SetFilter(std::u16string_view value) override;
    TRef<INibMLTagAttribute> FindAttribute(std::u16string_view name) override;
    int32_t FindSymbol(std::u16string_view prefix) override;
    bool GetShowAttributes() const override { return FShowAttributes; }
    void SetShowAttributes(bool value) override;
    void AlphaSort() override;
    void ClearTags() override;
    void ClearAttrs() override;
    void AddTag(TRef<INibMLTag> tag) override;
    bool RemoveTag(INibMLTag* tag) override;
    void AddAttribute(TRef<INibMLTagAttribute> attribute) override;
    TRef<INibMLTagAttribute> RemoveAttribute(std::u16string_view name) override;
    TRef<INibMLTag> LookupTag(std::u16string_view name) override { return FindChild(name); }
    INibMLTagFlags GetFlags() const override { return FFlags; }
    void SetFlags(INibMLTagFlags value) override { FFlags = value; }

    /// The name as the schema spells it.

private:
    int32_t LastTag() const { return static_cast<int32_t>(FTags.size()) - 1; }
    int32_t LastAttribute() const { return static_cast<int32_t>(FAttrs.size()) - 1; }
    std::u16string_view TagName(int32_t index) const;
    std::u16string_view AttributeName(int32_t index) const;
    void FillAttributes();
    void NarrowTo(std::u16string_view value);

    TCasedName FName;
    TFilteredRange<char16_t> FRange;
    TTagModel FModel;
    std::vector<TRef<INibMLTag>> FTags;  // may hold closing tags that FTagHash does not
    std::vector<TRef<INibMLTagAttribute>> FAttrs;
    mutable TNameTable<INibMLTag> FTagHash;
    mutable bool FIsIndexed = false;  // or FTagHash is empty until a child is asked for
    TNameTable<INibMLTagAttribute> FAttrHash;
    bool FIsChild = false;
    std::vector<std::u16string> FEntityNames;
    bool FShowAttributes = false;
    int32_t FExtraTagCount = 0;  // closing tags that SetFilter put into FTags
    int32_t FOffsetEnd = 0, FOffsetStart = 0;
    TTagContextLink FContext;
    int32_t FID;
    INibMLTagFlags FFlags;
    TAttributeFiller FFiller;
};

/// An element of a free XML document: open to any content, and in need of both tags.
class TXMLElement final : public THTMLTag {
public:
    TXMLElement(std::u16string_view name, ITagContext* context, int32_t id)
        : THTMLTag(name, context, id == -1 ? NewID() : id) {
        SetModel({.RequiresClosingTag = true, .RequiresOpeningTag = true, .Empty = false, .Any = true});
    }
};

}  // namespace caretwell
