// Things by name, of which the newest is found first: what every table of the engine is.
//
//     map.Add(FoldedHash(u"UL"), tag)     Find(FoldedHash(u"ul"), has the name)   ->   tag
//
// The owner of a table says by its hash and its test which names are the same. A table
// grows with what is in it, and names that are alike fall into different chains, so that a
// schema of a hundred thousand names is no slower by the name than one of a hundred.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace caretwell {

/// A multiplication by it carries every bit of a number into the upper ones.
inline constexpr uint64_t HashFactor = 0x9E3779B97F4A7C15u;

/// From the first eight bytes of a name and a number for what stands after them.
constexpr uint32_t HashOfHead(uint64_t head, uint64_t tail) {
    return static_cast<uint32_t>(((head ^ tail) * HashFactor) >> 32);
}
constexpr uint64_t AddToTail(uint64_t tail, uint64_t unit) { return ((tail ^ unit) + 1) * HashFactor; }

/// Equal for names that are the same but for the case of their letters, and for an ASCII
/// name in either width. Bit 5, which tells the cases apart, is set in every unit.
template <class C>
constexpr uint32_t FoldedHash(std::basic_string_view<C> name) {
    constexpr size_t HeadSize = 8;
    uint64_t head = 0, tail = 0;
    for (size_t i = 0; i < name.size(); ++i) {
        uint64_t unit = std::make_unsigned_t<C>(name[i]) | 0x20u;
        if (i < HeadSize) head |= (unit & 0xFF) << (8 * i);
        if (i >= HeadSize || unit > 0xFF) tail = AddToTail(tail, unit);
    }
    return HashOfHead(head, tail);
}
constexpr uint32_t FoldedHash(std::u16string_view name) { return FoldedHash<char16_t>(name); }

/// For names whose spelling counts.
inline uint32_t ExactHash(std::string_view name) {
    return static_cast<uint32_t>(std::hash<std::string_view>()(name));
}

inline uint32_t HashOfNumber(uint32_t number) { return HashOfHead(number, 0); }

template <class T>
class TNameMap {
public:
    T& Add(uint32_t hash, T value) {
        if (FNodes.size() == FHeads.size()) Grow();
        FNodes.push_back({std::move(value), hash, None});
        Link(static_cast<int32_t>(FNodes.size()) - 1);
        return FNodes.back().Value;
    }

    /// The newest that passes the test, null if none does. It stays in place until the next
    /// Add or Remove.
    template <class TTest>
    const T* Find(uint32_t hash, TTest test) const {
        if (FHeads.empty()) return nullptr;
        for (int32_t i = FHeads[BucketOf(hash)]; i != None; i = At(i).Next)
            if (At(i).Hash == hash && test(At(i).Value)) return &At(i).Value;
        return nullptr;
    }

    /// Takes out the newest that passes the test; false if none does.
    template <class TTest>
    bool Remove(uint32_t hash, TTest test) {
        const T* found = Find(hash, test);
        if (found) RemoveAt(FindIndex(hash, found));
        return found;
    }
    /// Takes out all that pass the test.
    template <class TTest>
    void RemoveIf(TTest test) {
        for (auto i = static_cast<int32_t>(FNodes.size()) - 1; i >= 0; --i)
            if (test(At(i).Value)) RemoveAt(i);
    }
    void Clear() {
        FNodes.clear();
        FHeads.clear();
        FShift = 32;
    }

    template <class TVisit>
    void ForEach(TVisit visit) const {
        for (const TNode& node : FNodes) visit(node.Value);
    }

private:
    static constexpr int32_t None = -1;
    struct TNode {
        T Value;
        uint32_t Hash;
        int32_t Next;  // an older one
    };
    TNode& At(int32_t i) { return FNodes[static_cast<size_t>(i)]; }
    const TNode& At(int32_t i) const { return FNodes[static_cast<size_t>(i)]; }
    size_t BucketOf(uint32_t hash) const { return hash >> FShift; }
    int32_t FindIndex(uint32_t hash, const T* value) const {
        int32_t i = FHeads[BucketOf(hash)];
        while (&At(i).Value != value) i = At(i).Next;
        return i;
    }
    int32_t& LinkTo(int32_t index) {
        int32_t* link = &FHeads[BucketOf(At(index).Hash)];
        while (*link != index) link = &At(*link).Next;
        return *link;
    }

    void Link(int32_t index) {
        int32_t& head = FHeads[BucketOf(At(index).Hash)];
        At(index).Next = std::exchange(head, index);
    }

    // The last node moves to the free place, so that what comes and goes takes no room.
    void RemoveAt(int32_t index) {
        LinkTo(index) = At(index).Next;
        auto last = static_cast<int32_t>(FNodes.size()) - 1;
        if (index != last) {
            LinkTo(last) = index;
            At(index) = std::move(FNodes.back());
        }
        FNodes.pop_back();
    }

    // Chains are linked anew from their ends, which are the oldest.
    void Grow() {
        FShift = FHeads.empty() ? 29 : FShift - 1;
        std::vector<int32_t> chain, heads(size_t{1} << (32 - FShift), None);
        heads.swap(FHeads);
        for (int32_t i : heads) {
            for (chain.clear(); i != None; i = At(i).Next) chain.push_back(i);
            for (auto place = chain.rbegin(); place != chain.rend(); ++place) Link(*place);
        }
    }

    std::vector<TNode> FNodes;
    std::vector<int32_t> FHeads;  // as many as a power of two, the upper bits of a hash tell which
    int FShift = 32;
};

}  // namespace caretwell
