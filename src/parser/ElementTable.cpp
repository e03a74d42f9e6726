#include "parser/ElementTable.h"

#include "tagmodel/DocumentNodes.h"

namespace caretwell {

TTagBucket* TElementTable::FindBucket(const TNameKey& key, std::string_view name) const {
    if (!key.IsAscii) return FindBucket(ToUtf16(name));
    const auto& chain = FBuckets[key.Bucket];
    for (auto it = chain.rbegin(); it != chain.rend(); ++it)
        if ((*it)->Key == key && (key.IsWhole() || SameText(name, std::string_view((*it)->Name))))
            return it->get();
    return nullptr;
}

TTagBucket* TElementTable::FindBucket(std::u16string_view name) const {
    const auto& chain = FBuckets[Hash(name)];
    for (auto it = chain.rbegin(); it != chain.rend(); ++it)
        if (SameText(name, (*it)->Tag->GetName())) return it->get();
    return nullptr;
}

TRef<INibMLTag> TElementTable::NewUnknown(std::string_view name) const {
    return MakeRef<TNamedTag>(ToUtf16(name), &FContext, -1);
}

void TElementTable::Add(TRef<INibMLTag> tag) {
    auto bucket = std::make_unique<TTagBucket>();
    bucket->Name = ToUtf8(tag->GetName());
    bucket->Key = MakeNameKey(bucket->Name);
    // The chain is that of the 16-bit name, as every look-up by text takes it.
    auto& chain = FBuckets[Hash(tag->GetName())];
    bucket->Tag = std::move(tag);
    chain.push_back(std::move(bucket));
}

void TElementTable::Remove(TTagBucket& bucket) {
    auto& chain = FBuckets[Hash(bucket.Tag->GetName())];
    std::erase_if(chain, [&bucket](const auto& entry) { return entry.get() == &bucket; });
}

void TElementTable::Clear() {
    for (auto& chain : FBuckets) chain.clear();
}

}  // namespace caretwell
