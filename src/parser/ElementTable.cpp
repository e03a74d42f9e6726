#include "parser/ElementTable.h"

#include "tagmodel/DocumentNodes.h"

namespace caretwell {

TTagBucket* TElementTable::FindBucket(const TNameKey& key, std::string_view name) const {
    if (!key.IsAscii) return FindBucket(ToUtf16(name));
    auto* found = FBuckets.Find(key.Hash, [&](const auto& bucket) {
        return bucket->Key == key && (key.IsWhole() || SameText(name, std::string_view(bucket->Name)));
    });
    return found ? found->get() : nullptr;
}

TTagBucket* TElementTable::FindBucket(std::u16string_view name) const {
    auto* found = FBuckets.Find(
        FoldedHash(name), [name](const auto& bucket) { return SameText(name, bucket->Tag->GetName()); });
    return found ? found->get() : nullptr;
}

TRef<INibMLTag> TElementTable::NewUnknown(std::string_view name) const {
    return MakeRef<TNamedTag>(ToUtf16(name), &FContext, -1);
}

TRef<INibMLTag> TElementTable::NewDocType(std::string_view name) const {
    return MakeRef<TDocTypeTag>(ToUtf16(name), &FContext, -1);
}

void TElementTable::Add(TRef<INibMLTag> tag) {
    auto bucket = std::make_unique<TTagBucket>();
    bucket->Name = ToUtf8(tag->GetName());
    bucket->Key = MakeNameKey(bucket->Name);
    // The hash is that of the 16-bit name, as every look-up by text takes it.
    uint32_t hash = FoldedHash(tag->GetName());
    bucket->Tag = std::move(tag);
    FBuckets.Add(hash, std::move(bucket));
}

void TElementTable::Remove(TTagBucket& bucket) {
    FBuckets.Remove(FoldedHash(bucket.Tag->GetName()),
                    [&bucket](const auto& other) { return other.get() == &bucket; });
}

}  // namespace caretwell
