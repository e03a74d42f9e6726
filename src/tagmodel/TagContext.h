// What a tag needs of the symbol manager: the case of names, and the closing tags
// that are put at the head of its child list while the user looks at it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "markup/MLParserUtils.h"

namespace caretwell {

class THTMLTag;

class ITagContext {
public:
    virtual TTagCase GetTagCase() const = 0;
    /// The name in the case that is asked for.
    virtual std::u16string CaseTag(std::u16string_view name) = 0;
    /// Takes closing tags out of a child list; how many.
    virtual int32_t RemoveCustomElements(std::vector<TRef<INibMLTag>>& list, THTMLTag& tag) = 0;
    /// Puts the closing tags of the document at the tag's start index; how many.
    virtual int32_t InsertCustomElements(std::vector<TRef<INibMLTag>>& list, THTMLTag& tag) = 0;
    /// The tag's range or list is about to differ from what the schema load left.
    virtual void NoteChanged(THTMLTag& tag) = 0;

    ITagContext() = default;
    ITagContext(const ITagContext&) = delete;
    ITagContext& operator=(const ITagContext&) = delete;

protected:
    ~ITagContext() { *FSelf = nullptr; }

private:
    friend class TTagContextLink;
    const std::shared_ptr<ITagContext*> FSelf = std::make_shared<ITagContext*>(this);
};

/// A tag's way to its context, null once that is gone: a host may hold an element for
/// longer than the engine lives.
class TTagContextLink {
public:
    explicit TTagContextLink(ITagContext* context) {
        if (context) FContext = context->FSelf;
    }
    ITagContext* Get() const { return FContext ? *FContext : nullptr; }
    ITagContext* operator->() const { return *FContext; }
    explicit operator bool() const { return Get() != nullptr; }

private:
    std::shared_ptr<ITagContext*> FContext;
};

/// A name that is shown in the case of the moment; the folded form is kept.
class TCasedName {
public:
    explicit TCasedName(std::u16string_view name) : FName(name) {}
    const std::u16string& GetSpelled() const { return FName; }
    void Set(std::u16string_view name) {
        FName = name;
        FHasShown = false;
    }
    std::u16string_view Get(ITagContext* context) const {
        if (!context) return FName;
        TTagCase wanted = context->GetTagCase();
        if (wanted == tcNormal) return FName;
        if (!FHasShown || FShownCase != wanted) {
            FShown = context->CaseTag(FName);
            FShownCase = wanted;
            FHasShown = true;
        }
        return FShown;
    }

private:
    std::u16string FName;
    mutable std::u16string FShown;
    mutable TTagCase FShownCase = tcNormal;
    mutable bool FHasShown = false;
};

}  // namespace caretwell
