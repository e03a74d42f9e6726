// An attribute of an element: its name, its sorted list of allowed values seen
// through a range, and where the parser last found it in the document.
//
//     <td align="l^   ->   left       (values: center char justify left right)
//
// A list may hold one pseudo value instead, "color..." or "uri...", which stands for
// a dialog and is not narrowed by typing.
#pragma once

#include <string>
#include <vector>

#include "markup/FilteredRange.h"
#include "markup/MLParserUtils.h"

namespace caretwell {

/// The operations of an attribute, over whichever marker interface tells its kind.
template <class I>
class TAttributeBase : public TImplements<I> {
public:
    TAttributeBase(std::u16string_view name, int32_t id) : FName(name), FID(id) {}

    void SetName(std::u16string_view value) { FName = value; }

    int32_t GetID() const override { return FID; }
    int32_t GetOffsetEnd() const override { return FOffsetEnd; }
    int32_t GetOffsetStart() const override { return FOffsetStart; }
    void SetOffsetEnd(int32_t value) override { FOffsetEnd = value; }
    void SetOffsetStart(int32_t value) override { FOffsetStart = value; }
    int32_t GetAttributeValueStartOffset() const override { return FAttributeValueStartOffset; }
    void SetAttributeValueStartOffset(int32_t value) override { FAttributeValueStartOffset = value; }
    std::u16string_view GetName() const override { return FName; }
    bool GetRequired() const override { return FRequired; }
    bool GetFixed() const override { return FFixed; }
    void SetFixed(bool value) override { FFixed = value; }
    std::u16string_view GetFixedValue() const override { return FFixedValue; }
    void SetFixedValue(std::u16string_view value) override { FFixedValue = value; }
    void SetRequired(bool value) override { FRequired = value; }
    int32_t GetCount() override { return FValues.empty() ? 0 : FRange.GetCount(Last() + 1); }
    std::u16string_view GetValue(int32_t index) override;
    void SetValue(int32_t index, std::u16string_view value) override;
    void AddValue(std::u16string_view value) override;
    void SetFilter(std::u16string_view value) override;
    int32_t FindSymbol(std::u16string_view prefix) override;
    std::u16string_view GetFilter() const override { return FRange.Filter; }

private:
    int32_t Last() const { return static_cast<int32_t>(FValues.size()) - 1; }
    bool IsLeftAlone() const;

    std::u16string FName;
    bool FRequired = false;
    std::vector<std::u16string> FValues;  // sorted without regard to case, each once
    bool FFixed = false;
    std::u16string FFixedValue;
    TFilteredRange<char16_t> FRange;
    int32_t FOffsetEnd = 0, FOffsetStart = 0;
    int32_t FID;
    int32_t FAttributeValueStartOffset = 0;
};

class THTMLAttribute final : public TAttributeBase<INibMLTagAttribute> {
    using TAttributeBase::TAttributeBase;
};
/// An event handler.
class THTMLAttributeEvent final : public TAttributeBase<INibMLTagAttributeEvent> {
    using TAttributeBase::TAttributeBase;
};
/// Made up by the parser for an attribute that the element does not declare.
class TUnknownHTMLAttribute final : public TAttributeBase<INibMLUnknownTagAttribute> {
    using TAttributeBase::TAttributeBase;
};
/// Attributes of free XML documents: an id of -1 is replaced by the next NewID.
class TXMLAttribute final : public TAttributeBase<INibMLTagAttribute> {
public:
    TXMLAttribute(std::u16string_view name, int32_t id) : TAttributeBase(name, id == -1 ? NewID() : id) {}
};
class TXMLAttributeEvent final : public TAttributeBase<INibMLTagAttributeEvent> {
public:
    TXMLAttributeEvent(std::u16string_view name, int32_t id)
        : TAttributeBase(name, id == -1 ? NewID() : id) {}
};

extern template class TAttributeBase<INibMLTagAttribute>;
extern template class TAttributeBase<INibMLTagAttributeEvent>;
extern template class TAttributeBase<INibMLUnknownTagAttribute>;

}  // namespace caretwell
