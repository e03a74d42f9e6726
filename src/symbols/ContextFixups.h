// Everything that a parse changes in the table for the time of one list, remembered
// so that it can be undone whichever tags it touched.
//
//     <tr><^    td, and what else the document allows here: wrappers for children of
//               elements whose opening tag may be left out, the other language of an
//               XSL document, no attribute that is already written
#pragma once

#include <string_view>
#include <vector>

#include "markup/MLParserUtils.h"
#include "tagmodel/HTMLTag.h"

namespace caretwell {

class TContextFixups {
public:
    /// Adds a stand-in to a tag's children, unless it has a child of that name.
    void AddStandIn(INibMLTag& tag, TRef<INibMLTag> standIn);
    /// Takes an attribute off a tag until the next Undo.
    void HideAttribute(INibMLTag& tag, std::u16string_view name);
    /// A tag's range differs from what the schema load left.
    void NoteChanged(THTMLTag& tag);

    /// Takes the stand-ins out and puts the hidden attributes back. Ranges stay.
    void Undo();
    /// Also puts the ranges of all tags back.
    void ResetAll();
    /// Drops everything without touching a tag, when the table itself goes.
    void Forget();

    int32_t GetHiddenAttrCount() const { return static_cast<int32_t>(FHiddenAttrs.size()); }
    TRef<INibMLTagAttribute> GetHiddenAttr(int32_t index) const;
    TRef<INibMLTagAttribute> FindHiddenAttr(std::u16string_view name) const;

private:
    struct TStandIn {
        TRef<INibMLTag> Tag;
        TRef<INibMLTag> Child;
    };
    struct THiddenAttribute {
        TRef<INibMLTag> Tag;
        TRef<INibMLTagAttribute> Attribute;
    };
    std::vector<TStandIn> FStandIns;
    std::vector<THiddenAttribute> FHiddenAttrs;
    std::vector<TRef<THTMLTag>> FChanged;
};

}  // namespace caretwell
