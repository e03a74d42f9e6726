// Counted interfaces: the root interface, the reference that owns, and the
// template by which a class names the interfaces it answers for.
//
//     class TThing final : public TImplements<INibMLText> { ... };
//     TRef<INibMLText> text = MakeRef<TThing>();
//     if (auto pos = QueryAs<INibMLMarkupPos>(text)) ...
//
// A TRef owns; a raw pointer borrows. Nobody calls AddRef or Release outside
// this file. Counts are plain integers: objects belong to the host's main thread.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

#include "caretwell/host/Guid.h"

namespace caretwell {

/// Root of all interfaces.
struct IRefCounted {
    static constexpr TGuid Id = Guid("00000000-0000-0000-c000-000000000046");
    using Parent = void;

    /// Asks for a sibling interface. On success `*out` holds a pointer to it with
    /// one reference added and the result is true; otherwise `*out` is null.
    virtual bool Query(const TGuid& id, void** out) noexcept = 0;
    virtual void AddRef() noexcept = 0;
    virtual void Release() noexcept = 0;

protected:
    IRefCounted() = default;
    IRefCounted(const IRefCounted&) = default;
    IRefCounted& operator=(const IRefCounted&) = default;
    ~IRefCounted() = default;
};

/// An owning reference to a counted object; null refers to nothing.
template <class I>
class TRef {
public:
    constexpr TRef() noexcept = default;
    constexpr TRef(std::nullptr_t) noexcept {}
    TRef(I* object) noexcept : FObject(object) {
        if (FObject) FObject->AddRef();
    }
    TRef(const TRef& other) noexcept : TRef(other.FObject) {}
    TRef(TRef&& other) noexcept : FObject(std::exchange(other.FObject, nullptr)) {}
    template <class J>
    requires std::is_convertible_v<J*, I*> TRef(const TRef<J>& other)
    noexcept : TRef(static_cast<I*>(other.Get())) {}
    template <class J>
    requires std::is_convertible_v<J*, I*> TRef(TRef<J>&& other)
    noexcept : FObject(other.Detach()) {}
    ~TRef() {
        if (FObject) FObject->Release();
    }
    TRef& operator=(TRef other) noexcept {
        std::swap(FObject, other.FObject);
        return *this;
    }

    I* Get() const noexcept { return FObject; }
    I* operator->() const noexcept { return FObject; }
    I& operator*() const noexcept { return *FObject; }
    explicit operator bool() const noexcept { return FObject != nullptr; }

    /// Gives the reference away without releasing it.
    I* Detach() noexcept { return std::exchange(FObject, nullptr); }
    /// Takes over a reference that was already counted, as a query returns it.
    static TRef Attach(I* object) noexcept {
        TRef result;
        result.FObject = object;
        return result;
    }

    friend bool operator==(const TRef& a, const TRef& b) noexcept { return a.FObject == b.FObject; }
    friend bool operator==(const TRef& a, const I* b) noexcept { return a.FObject == b; }
    friend bool operator==(const TRef& a, std::nullptr_t) noexcept { return !a.FObject; }

private:
    I* FObject = nullptr;
};

/// Asks an object for an interface; null if the object is null or does not support it.
template <class I>
TRef<I> QueryAs(IRefCounted* object) noexcept {
    void* out = nullptr;
    if (object && object->Query(I::Id, &out)) return TRef<I>::Attach(static_cast<I*>(out));
    return nullptr;
}
template <class I, class J>
TRef<I> QueryAs(const TRef<J>& object) noexcept {
    return QueryAs<I>(object.Get());
}

/// True if the object is there and supports the interface.
template <class I, class J>
bool Supports(const J& object) noexcept {
    return static_cast<bool>(QueryAs<I>(object));
}

/// Makes a counted object; the caller gets its first reference.
template <class T, class... Args>
TRef<T> MakeRef(Args&&... args) {
    return TRef<T>(new T(std::forward<Args>(args)...));
}

/// Base of a counted class. It answers for the interfaces listed, for all their
/// ancestors, and (through the first one) for IRefCounted.
template <class First, class... Rest>
class TImplements : public First, public Rest... {
public:
    bool Query(const TGuid& id, void** out) noexcept override {
        *out = nullptr;
        if (!Offer<First, First>(id, out)) (void)(Offer<Rest, Rest>(id, out) || ...);
        if (!*out) return false;
        AddRef();
        return true;
    }
    void AddRef() noexcept override { ++FReferences; }
    void Release() noexcept override {
        if (--FReferences == 0) {
            // A reference taken and given back while the destructor runs must not destroy twice.
            FReferences = 1;
            delete this;
        }
    }

    TImplements(const TImplements&) = delete;
    TImplements& operator=(const TImplements&) = delete;

protected:
    TImplements() = default;
    virtual ~TImplements() = default;

    /// Hands out Via (or the ancestor of it that carries the identifier).
    template <class Via, class I>
    bool Offer(const TGuid& id, void** out) noexcept {
        if (id == I::Id) {
            *out = static_cast<I*>(static_cast<Via*>(this));
            return true;
        }
        if constexpr (!std::is_void_v<typename I::Parent>) return Offer<Via, typename I::Parent>(id, out);
        else return false;
    }

private:
    int32_t FReferences = 0;
};

}  // namespace caretwell
