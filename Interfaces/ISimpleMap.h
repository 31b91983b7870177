// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ISimpleMapIterator.h"
#include "Interfaces/IString.h"

namespace tvx
{

// A settings map: text keys in byte order, text values, typed reads and writes. A backslash inside a key separates the
// levels of a path; only GetSubMap and SetSubMap know it. A new map is in batch updating mode.
class ISimpleMap : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISimpleMap/1.0";

    // Slot 11. Writes value as text with at most six significant digits, as SetString does.
    //   key  borrowed
    // Threads: one at a time. Fails: as SetString.
    virtual Result SetDouble(const char* key, double value) = 0;

    // Slot 12. Writes value as decimal text, as SetString does.
    //   key  borrowed
    // Threads: one at a time. Fails: as SetString.
    virtual Result SetInt(const char* key, std::int32_t value) = 0;

    // Slot 13. Writes value under key, new or in place of the old one. Every write is a change, also one of the same text:
    // "Changed" fires at once, or in batch updating mode when that is switched off.
    //   key    borrowed
    //   value  borrowed
    // Threads: one at a time. Fails: -4 when key is null, with a report; when value is null or memory is exhausted, without.
    virtual Result SetString(const char* key, const char* value) = 0;

    // Slot 14. Reads the number that the text begins with: 0 when the key is present, 101 when not. A text without a number
    // reads as 0.
    //   key  borrowed
    //   out  receives the number; left untouched when the key is absent
    // Threads: one at a time. Fails: -4 with a report when key or out is null.
    virtual Result GetDouble(const char* key, double* out) = 0;

    // Slot 15. Reads the integer that the text begins with, clamped to 32 bits; else as GetDouble.
    //   key  borrowed
    //   out  receives the number; left untouched when the key is absent
    // Threads: one at a time. Fails: -4 with a report when key or out is null.
    virtual Result GetInt(const char* key, std::int32_t* out) = 0;

    // Slot 16. Reads the text: 102 when the key is present, 101 when not.
    //   key  borrowed
    //   out  receives one reference to a new string, owned by the caller; left untouched when the key is absent
    // Threads: one at a time. Fails: -4 with a report when key or out is null, without one when memory is exhausted.
    virtual Result GetString(const char* key, IString** out) = 0;

    // Slot 17. Makes an iterator over all entries in key order.
    //   out  receives one reference, owned by the caller; the iterator must not outlive the map
    // Threads: one at a time. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result GetIterator(ISimpleMapIterator** out) = 0;

    // Slot 18. Makes a map of all entries below path, their keys without it: 102 when there are any, 101 when not.
    //   path  borrowed; without a backslash at its end
    //   out   receives one reference to a new map, owned by the caller, also when it is empty
    // Threads: one at a time. Fails: -1 with a report when path or out is null; -4 without one when memory is exhausted.
    virtual Result GetSubMap(const char* path, ISimpleMap** out) = 0;

    // Slot 19. Writes every entry of source below path, in batch updating mode, which is restored afterwards, with the events
    // of SetBatchUpdatingMode.
    //   path    borrowed; empty copies the keys unchanged
    //   source  borrowed; may be the map itself
    // Threads: one at a time. Fails: -1 with a report when path or source is null or source gives no iterator, also for
    // want of memory; -4 without one when memory is exhausted elsewhere; a failed write ends it with the write's code. What
    // is written then stays, and the mode is restored also when there is no memory for its event.
    virtual Result SetSubMap(const char* path, ISimpleMap* source) = 0;

    // Slot 20. Reads back the object that SetObject wrote under key; 101 when the key is absent.
    //   key  borrowed
    //   out  receives one reference, owned by the caller; left untouched on failure
    // Threads: one at a time. Fails: -4 with a report when key is null, without one when out is null; -1 with a report when
    // there is no serializer or the object read has no IObject face; the serializer's code, reported, when it fails.
    virtual Result GetObject(const char* key, IObject** out) = 0;

    // Slot 21. Writes a whole object under key with SetString, as the text that the imported serializer makes of it.
    //   key     borrowed
    //   object  borrowed; must answer ISerializable
    // Threads: one at a time. Fails: -1 with a report when object is null or cannot be serialised or there is no
    // serializer; the serializer's or SetString's code, reported. The map is unchanged then.
    virtual Result SetObject(const char* key, IObject* object) = 0;

    // Slot 22. Tells whether key is present, and gives 0.
    //   key  borrowed
    //   out  receives the answer
    // Threads: one at a time. Fails: -7 with a report when out is null; -4 without one when key is null.
    virtual Result HasKey(const char* key, bool* out) = 0;

    // Slot 23. Makes a map with the same entries in the same state of batch updating, without subscriptions and user data.
    //   out  receives one reference, owned by the caller
    // Threads: one at a time. Fails: -7 with a report when out is null; -4 without one when memory is exhausted.
    virtual Result Clone(ISimpleMap** out) = 0;

    // Slot 24. Makes an iterator that, after each entry, skips the entries whose keys begin with that entry's key.
    //   out  receives one reference, owned by the caller; the iterator must not outlive the map
    // Threads: one at a time. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result GetIteratorNoSubMaps(ISimpleMapIterator** out) = 0;

    // Slot 25. Subscribes handler to "Changed" of ISimpleMap/1.5, whose param is 0, or unsubscribes it.
    //   handler  borrowed, kept without a reference; null is ignored, or unsubscribes everybody from all events of the map
    //   cookie   passed back with the event
    //   connect  true subscribes, false unsubscribes
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void SubscribeChanged(IEventHandler* handler, std::uint64_t cookie, bool connect) = 0;

    // Slot 26. Switches batch updating mode and gives 0. A switch fires "BatchUpdatingModeChanged"; switching it off after
    // writes then fires one "Changed". Nothing fires when the mode stays the same.
    //   mode  whether writes are to be told together, when the mode goes off
    // Threads: one at a time. Fails: -4 without a report when memory is exhausted; the mode stays the same then.
    virtual Result SetBatchUpdatingMode(bool mode) = 0;

    // Slot 27. Tells whether batch updating mode is on, and gives 0.
    //   out  receives the answer
    // Threads: one at a time. Fails: -7 with a report when out is null.
    virtual Result GetBatchUpdatingMode(bool* out) = 0;

    // Slot 28. Subscribes handler to "BatchUpdatingModeChanged" of ISimpleMap/1.5, whose param is an IVariant that holds the
    // new mode as a bool, or unsubscribes it.
    //   handler  borrowed, kept without a reference; null is ignored, or unsubscribes everybody from all events of the map
    //   cookie   passed back with the event
    //   connect  true subscribes, false unsubscribes
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void SubscribeBatchUpdatingModeChanged(IEventHandler* handler, std::uint64_t cookie, bool connect) = 0;

protected:
    ~ISimpleMap() = default;
};

// The later versions of the settings map. Each is the same table under an identifier of its own, because hosts ask for the
// version that they were compiled against.
class ISimpleMap1 : public ISimpleMap
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISimpleMap/1.1";

protected:
    ~ISimpleMap1() = default;
};

// The same table as version 1.2.
class ISimpleMap2 : public ISimpleMap1
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISimpleMap/1.2";

protected:
    ~ISimpleMap2() = default;
};

// The same table as version 1.3.
class ISimpleMap3 : public ISimpleMap2
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISimpleMap/1.3";

protected:
    ~ISimpleMap3() = default;
};

// The same table as version 1.4.
class ISimpleMap4 : public ISimpleMap3
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISimpleMap/1.4";

protected:
    ~ISimpleMap4() = default;
};

// The same table as version 1.5. The events of every version belong to it.
class ISimpleMap5 : public ISimpleMap4
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISimpleMap/1.5";

protected:
    ~ISimpleMap5() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::ISimpleMap::Id[];
[[gnu::weak]] constexpr const char tvx::ISimpleMap1::Id[];
[[gnu::weak]] constexpr const char tvx::ISimpleMap2::Id[];
[[gnu::weak]] constexpr const char tvx::ISimpleMap3::Id[];
[[gnu::weak]] constexpr const char tvx::ISimpleMap4::Id[];
[[gnu::weak]] constexpr const char tvx::ISimpleMap5::Id[];
#endif
