// Counted objects by name without regard to case. The newest of a bucket is found first.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "host/RefCounted.h"
#include "markup/Hash.h"
#include "markup/Text.h"

namespace caretwell {

/// Buckets come in powers of two up to 256 as the table fills, so that the thousands
/// of small elements of a large schema stay small.
template <class I>
class TNameTable {
public:
    void Add(TRef<I> object) {
        if (FNodes.size() >= FHeads.size() && FHeads.size() < HashBuckets) Grow();
        uint32_t hash = Hash(object->GetName());
        FNodes.push_back({std::move(object), hash, -1});
        Link(static_cast<int32_t>(FNodes.size()) - 1);
    }

    /// The object of that name, null if none. Borrowed.
    template <class TText>
    I* Find(TText name, uint32_t hash) const {
        if (FHeads.empty()) return nullptr;
        for (int32_t i = FHeads[Bucket(hash)]; i >= 0; i = FNodes[Index(i)].Next) {
            const TNode& node = FNodes[Index(i)];
            if (node.NameHash == hash && SameText(name, node.Object->GetName())) return node.Object.Get();
        }
        return nullptr;
    }
    I* Find(std::u16string_view name) const { return Find(name, Hash(name)); }

    /// Takes out this very object; nothing if it is not there. Its node stays behind, empty.
    void Remove(const I* object) {
        if (FHeads.empty()) return;
        int32_t* link = &FHeads[Bucket(Hash(object->GetName()))];
        while (*link >= 0 && !(FNodes[Index(*link)].Object == object)) link = &FNodes[Index(*link)].Next;
        if (*link < 0) return;
        TNode& node = FNodes[Index(*link)];
        *link = node.Next;
        node.Object = nullptr;
    }

    void Clear() {
        FNodes.clear();
        FHeads.clear();
    }

private:
    struct TNode {
        TRef<I> Object;
        uint32_t NameHash = 0;
        int32_t Next = -1;
    };
    static size_t Index(int32_t i) { return static_cast<size_t>(i); }
    size_t Bucket(uint32_t hash) const { return hash & (FHeads.size() - 1); }

    void Link(int32_t index) {
        TNode& node = FNodes[Index(index)];
        node.Next = FHeads[Bucket(node.NameHash)];
        FHeads[Bucket(node.NameHash)] = index;
    }
    void Grow() {
        std::erase_if(FNodes, [](const TNode& node) { return !node.Object; });
        FHeads.assign(FHeads.empty() ? 8 : std::min<size_t>(FHeads.size() * 4, HashBuckets), -1);
        for (size_t i = 0; i < FNodes.size(); ++i) Link(static_cast<int32_t>(i));
    }

    std::vector<TNode> FNodes;
    std::vector<int32_t> FHeads;
};

}  // namespace caretwell
