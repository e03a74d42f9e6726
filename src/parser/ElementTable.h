// What the scan of a document asks of the language: which element a name means, what kind
// of document this is, which tag stands for the top, and a tag for a name that means
// nothing. Whoever knows a schema fills the table; the scan reads it and knows no more.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "markup/MLParserUtils.h"
#include "parser/NameKey.h"
#include "tagmodel/HTMLTag.h"

namespace caretwell {

struct TTagEntry;

/// The open entries of one name on the parser's two stacks; valid for the parse that
/// stamped it.
struct TNameSlot {
    uint64_t Parse = 0;
    TTagEntry* Top[2] = {nullptr, nullptr};
    int32_t OpenIndex = -1;  ///< place among the names open on the first stack
    const std::string* UnknownName = nullptr;
};

/// One registered tag.
struct TTagBucket {
    TRef<INibMLTag> Tag;
    TRef<INibMLEditor> Editor;
    TNameKey Key;
    std::string Name;  ///< UTF-8, for names that the key does not hold whole
    TNameSlot Slot;
};

/// Elements by name, without regard to case; of one name the newest is found.
class TElementTable {
public:
    explicit TElementTable(ITagContext& context) : FContext(context) {}
    TElementTable(const TElementTable&) = delete;
    TElementTable& operator=(const TElementTable&) = delete;

    /// The element of a name, by its bytes and their key; borrowed, null if there is none.
    TTagBucket* FindBucket(const TNameKey& key, std::string_view name) const;
    TTagBucket* FindBucket(std::u16string_view name) const;
    TKibitzMode GetMode() const { return FMode; }
    THTMLTag* GetRoot() const { return FRoot.Get(); }
    /// A tag for an element that the schema does not know.
    TRef<INibMLTag> NewUnknown(std::string_view name) const;
    /// A tag for a doctype declaration, told to observers.
    TRef<INibMLTag> NewDocType(std::string_view name) const;

    void Add(TRef<INibMLTag> tag);
    void Remove(TTagBucket& bucket);
    void Clear() { FBuckets.Clear(); }
    /// Changes places with another table, the mode apart: that is the document's.
    void Swap(TElementTable& other) {
        std::swap(FBuckets, other.FBuckets);
        std::swap(FRoot, other.FRoot);
    }
    void SetMode(TKibitzMode mode) { FMode = mode; }
    void SetRoot(TRef<THTMLTag> root) { FRoot = std::move(root); }
    template <class TVisit>
    void ForEach(TVisit visit) {
        FBuckets.ForEach([&](const auto& bucket) { visit(*bucket); });
    }

private:
    ITagContext& FContext;
    TNameMap<std::unique_ptr<TTagBucket>> FBuckets;
    TRef<THTMLTag> FRoot;
    TKibitzMode FMode = kmHTML;
};

}  // namespace caretwell
