// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"
#include "Interfaces/Ref.h"

namespace tvx
{

// Walks the user data of a container in the order of the names. It holds no reference on the container and must not
// outlive it. There is no identifier for it: it is used through the pointer that the container gave.
class IUserDataIterator : public IObjectBase
{
public:
    // Slot 7. Moves one entry on.
    // Threads: one at a time for a container and its iterators. Fails: -7 with a report when at the end.
    virtual Result Next() = 0;

    // Slot 8. Tells whether the iterator is at the end.
    // Threads: one at a time for a container and its iterators. Fails: never.
    virtual bool IsEnd() = 0;

    // Slot 9. Gives the current name, owned by the container, or null at the end.
    // Threads: one at a time for a container and its iterators. Fails: never.
    virtual const char* GetKey() = 0;

    // Slot 10. Gives the current object.
    //   out  receives one reference, owned by the caller; left untouched on failure
    // Threads: one at a time for a container and its iterators. Fails: -7 with a report when at the end; -4 without one
    // when out is null.
    virtual Result GetObject(IObjectBase** out) = 0;

protected:
    ~IUserDataIterator() = default;
};

// Carries named objects that any client may attach.
class IUserDataContainer : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IUserDataContainer/1.0";

    // Slot 11. Attaches object under name in place of the one before; null removes the entry. Gives 0.
    //   name    borrowed
    //   object  kept with one reference until replaced or removed
    // Threads: one at a time. Fails: -4 when name is null, with a report, or memory is exhausted, without one.
    virtual Result SetUserData(const char* name, IObjectBase* object) = 0;

    // Slot 12. Gives the object under name: 102 when there is one, 101 with a null out when not.
    //   name  borrowed; null counts as absent
    //   out   receives one reference, owned by the caller
    // Threads: one at a time. Fails: -4 with a report when out is null.
    virtual Result GetUserData(const char* name, IObjectBase** out) = 0;

    // Slot 13. Gives the object under name, to look at; else the same as slot 12.
    //   name  borrowed; null counts as absent
    //   out   receives one reference, owned by the caller
    // Threads: one at a time. Fails: -4 with a report when out is null.
    virtual Result GetUserData(const char* name, const IObjectBase** out) = 0;

    // Slot 14. Gives a new iterator in a holder, which is empty when none could be made.
    // Threads: one at a time. Fails: never otherwise.
    virtual Ref<IUserDataIterator> GetUserDataIterator()
    {
        Ref<IUserDataIterator> iterator;
        if (TVX_FAILED(CreateUserDataIterator(iterator.Receive())))
            return Ref<IUserDataIterator>();
        return iterator;
    }

    // Slot 15. Makes an iterator that stands on the first entry.
    //   out  receives one reference, owned by the caller
    // Threads: one at a time. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateUserDataIterator(IUserDataIterator** out) = 0;

    // Slot 16. Removes every entry, releases the objects and gives 0.
    // Threads: one at a time. Fails: never.
    virtual Result ClearUserData() = 0;

protected:
    ~IUserDataContainer() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IUserDataContainer::Id[];
#endif
