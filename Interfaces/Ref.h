// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <utility>

namespace tvx
{

// Holds one reference on an object, or nothing. One pointer wide: it crosses the binary boundary as a result.
//
// Constructing it from a pointer shares the object (adds a reference); a reference that somebody already added for us is
// taken over only by Adopt or Receive, so the two cannot be confused.
template <class T>
class Ref
{
public:
    // Holds nothing.
    Ref() noexcept : pointer_(nullptr) {}
    Ref(std::nullptr_t) noexcept : pointer_(nullptr) {}

    // Shares the object: adds a reference of its own. Null is nothing.
    explicit Ref(T* pointer) : pointer_(pointer)
    {
        if (pointer_ != nullptr)
            pointer_->AddRef();
    }

    // Shares what other holds.
    Ref(const Ref& other) : Ref(other.pointer_) {}

    // Takes what other holds, which is left empty.
    Ref(Ref&& other) noexcept : pointer_(other.Detach()) {}

    // Shares what a holder of a derived class holds.
    template <class U>
    Ref(const Ref<U>& other) : Ref(static_cast<T*>(other.Get()))
    {
    }

    // Takes what a holder of a derived class holds, which is left empty.
    template <class U>
    Ref(Ref<U>&& other) noexcept : pointer_(other.Detach())
    {
    }

    // Releases what it holds.
    ~Ref()
    {
        if (pointer_ != nullptr)
            pointer_->Release();
    }

    // Holds what other holds. The new value is in place before the old one is released: the release may run code that looks
    // here.
    Ref& operator=(Ref other) noexcept
    {
        std::swap(pointer_, other.pointer_);
        return *this;
    }

    // Takes over a reference that pointer already carries for us.
    static Ref Adopt(T* pointer) noexcept
    {
        Ref adopted;
        adopted.pointer_ = pointer;
        return adopted;
    }

    // Gives the reference away: the caller owns it from now on.
    T* Detach() noexcept
    {
        T* const pointer = pointer_;
        pointer_ = nullptr;
        return pointer;
    }

    // The place for an out parameter, emptied first; what is written there is owned by this holder.
    T** Receive()
    {
        *this = Ref();
        return &pointer_;
    }

    // The object, borrowed; null when empty.
    T* Get() const noexcept { return pointer_; }
    T* operator->() const noexcept { return pointer_; }
    T& operator*() const noexcept { return *pointer_; }

    // Whether it holds an object.
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

private:
    T* pointer_;
};

}  // namespace tvx
