// Counted objects by name without regard to case; the newest is found first.
#pragma once

#include <string_view>

#include "host/RefCounted.h"
#include "markup/NameMap.h"
#include "markup/Text.h"

namespace caretwell {

template <class I>
class TNameTable {
public:
    void Add(TRef<I> object) {
        uint32_t hash = FoldedHash(object->GetName());
        FObjects.Add(hash, std::move(object));
    }
    /// The object of that name, null if none. Borrowed.
    I* Find(std::u16string_view name) const {
        auto* found = FObjects.Find(
            FoldedHash(name), [name](const TRef<I>& object) { return SameText(name, object->GetName()); });
        return found ? found->Get() : nullptr;
    }
    /// Takes out this very object; nothing if it is not there.
    void Remove(const I* object) {
        FObjects.Remove(FoldedHash(object->GetName()),
                        [object](const TRef<I>& other) { return other == object; });
    }
    template <class TTest>
    void RemoveIf(TTest test) {
        FObjects.RemoveIf(test);
    }
    void Clear() { FObjects.Clear(); }

private:
    TNameMap<TRef<I>> FObjects;
};

}  // namespace caretwell
