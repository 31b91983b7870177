// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

namespace tvx
{

// An ordered list of objects with events. An item may be null and may stand more than once; items are the same when their
// pointers are. After a change that succeeded, and while events are enabled, the event of the change fires and then
// "Updated", both on the thread that made the change. The events belong to ICollection/2.0; their param is the item.
class ICollection : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ICollection/1.1";

    // Slot 11. Gives the item at index.
    //   index  from 0
    //   out    receives one reference, owned by the caller, or null; left untouched on failure
    // Threads: one at a time. Fails: -1 with a report when index is not below the count, then -4 without one when out is null.
    virtual Result GetItem(std::uint32_t index, IObject** out) = 0;

    // Slot 12. Gives the number of items; it is no result code.
    // Threads: one at a time. Fails: never.
    virtual std::uint32_t GetCount() = 0;

    // Slot 13. Appends item and fires "ItemAdded".
    //   item  kept with one reference until removed; may be null
    // Threads: one at a time. Fails: -1 without a report when the list cannot grow.
    virtual Result Add(IObject* item) = 0;

    // Slot 14. Removes the last item and fires "ItemRemoved".
    // Threads: one at a time. Fails: -1 with a report when there is none.
    virtual Result RemoveLast() = 0;

    // Slot 15. Inserts item and fires "ItemAdded".
    //   index  where the item will stand; at or behind the end appends
    //   item   kept with one reference until removed; may be null
    // Threads: one at a time. Fails: -1 without a report when the list cannot grow.
    virtual Result Insert(std::uint32_t index, IObject* item) = 0;

    // Slot 16. Removes the item at index and fires "ItemRemoved"; the item lives until the handlers have run.
    //   index  from 0
    // Threads: one at a time. Fails: -7 with a report when index is not below the count.
    virtual Result RemoveAt(std::uint32_t index) = 0;

    // Slot 17. Tells whether changes fire events, and gives 0. They do in a new collection.
    //   out  receives the answer
    // Threads: one at a time. Fails: -7 with a report when out is null.
    virtual Result GetEventsEnabled(bool* out) = 0;

    // Slot 18. Switches the events of changes on or off, and gives 0.
    // Threads: one at a time. Fails: never.
    virtual Result SetEventsEnabled(bool enabled) = 0;

    // Slot 19. Inserts item in front of before and fires "ItemAdded".
    //   item    kept with one reference until removed; may be null
    //   before  borrowed; its first place counts
    // Threads: one at a time. Fails: as IndexOf for before, with a report of its own, and as Insert.
    virtual Result InsertBefore(IObject* item, IObject* before) = 0;

    // Slot 20. Subscribes handler to "ItemAdded", or unsubscribes it.
    //   handler    borrowed, kept without a reference; null is ignored, or unsubscribes everybody from all events
    //   cookie     passed back with the event
    //   subscribe  true subscribes, false unsubscribes
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void SubscribeItemAdded(IEventHandler* handler, std::uint64_t cookie, bool subscribe) = 0;

    // Slot 21. Removes the first place of item and fires "ItemRemoved".
    //   item  borrowed
    // Threads: one at a time. Fails: as IndexOf, with a report of its own, and as RemoveAt.
    virtual Result Remove(IObject* item) = 0;

    // Slot 22. Subscribes handler to "ItemRemoved", or unsubscribes it.
    //   handler    borrowed, kept without a reference; null is ignored, or unsubscribes everybody from all events
    //   cookie     passed back with the event
    //   subscribe  true subscribes, false unsubscribes
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void SubscribeItemRemoved(IEventHandler* handler, std::uint64_t cookie, bool subscribe) = 0;

    // Slot 23. Moves the item at from in front of the one that stands at to now, and fires "ItemMoved", also when the order
    // stays the same because to is the next place; nothing happens when both are the same.
    //   from  from 0
    //   to    at or behind the end moves to the end
    // Threads: one at a time. Fails: -7 with a report when from is not below the count.
    virtual Result Move(std::uint32_t from, std::uint32_t to) = 0;

    // Slot 24. Moves the first place of item as Move does.
    //   item  borrowed
    //   to    as in Move
    // Threads: one at a time. Fails: as IndexOf, with a report of its own.
    virtual Result MoveItem(IObject* item, std::uint32_t to) = 0;

    // Slot 25. Moves item in front of before, or to the end when before is null, as Move does.
    //   item    borrowed
    //   before  borrowed
    // Threads: one at a time. Fails: as IndexOf for both, with a report of its own.
    virtual Result MoveBefore(IObject* item, IObject* before) = 0;

    // Slot 26. Subscribes handler to "ItemMoved", or unsubscribes it.
    //   handler    borrowed, kept without a reference; null is ignored, or unsubscribes everybody from all events
    //   cookie     passed back with the event
    //   subscribe  true subscribes, false unsubscribes
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void SubscribeItemMoved(IEventHandler* handler, std::uint64_t cookie, bool subscribe) = 0;

    // Slot 27. Gives the index of the first place of item.
    //   item  borrowed
    //   out   receives the index, or 0xFFFFFFFF when the item is not there
    // Threads: one at a time. Fails: -1 without a report when the item is not there; -7 with one when item or out is null.
    virtual Result IndexOf(IObject* item, std::uint32_t* out) = 0;

    // Slot 28. Removes as many items as there are now, the last first, each with the events of RemoveLast.
    // Threads: one at a time. Fails: with the code of the first removal that fails, reported; those before it stand.
    virtual Result Clear() = 0;

    // Slot 29. Fires "Updated" for item, also while events are disabled.
    //   item  borrowed
    // Threads: one at a time. Fails: -1 without a report when the item is not there.
    virtual Result NotifyUpdated(IObject* item) = 0;

    // Slot 30. Tells whether item is there, and gives 0.
    //   item  borrowed; null is never found
    //   out   receives the answer
    // Threads: one at a time. Fails: -7 with a report when out is null.
    virtual Result Contains(IObject* item, bool* out) = 0;

    // Slot 31. Subscribes handler to "Updated", or unsubscribes it.
    //   handler    borrowed, kept without a reference; null is ignored, or unsubscribes everybody from all events
    //   cookie     passed back with the event
    //   subscribe  true subscribes, false unsubscribes
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void SubscribeUpdated(IEventHandler* handler, std::uint64_t cookie, bool subscribe) = 0;

protected:
    ~ICollection() = default;
};

// The later version of the collection: the same table under an identifier of its own.
class ICollection2 : public ICollection
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ICollection/2.0";

protected:
    ~ICollection2() = default;
};

// Makes collections.
class ICollectionFactory : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ICollectionFactory/1.0";

    // Slot 11. Makes an empty collection with events enabled.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateCollection(ICollection** out) = 0;

protected:
    ~ICollectionFactory() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::ICollection::Id[];
[[gnu::weak]] constexpr const char tvx::ICollection2::Id[];
[[gnu::weak]] constexpr const char tvx::ICollectionFactory::Id[];
#endif
