// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

namespace tvx
{

// A dictionary from text keys, in byte order, to objects. A key may be present with null.
class IMap : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IMap/1.0";

    // Slot 11. Stores value under key, new or in place of the old one.
    //   key    borrowed
    //   value  kept with one reference until replaced or the map dies; null is a value
    // Threads: one at a time. Fails: -4 when key is null, with a report, or memory is exhausted, without one.
    virtual Result SetValue(const char* key, IObject* value) = 0;

    // Slot 12. Gives the value under key: 102 when the key is present, 101 with a null out when not.
    //   key  borrowed; null counts as absent
    //   out  receives one reference, owned by the caller, or null
    // Threads: one at a time. Fails: -4 with a report when out is null.
    virtual Result GetValue(const char* key, IObject** out) = 0;

    // Slot 13. Gives the value under key, in every way as GetValue.
    //   key  borrowed; null counts as absent
    //   out  receives one reference, owned by the caller, or null
    // Threads: one at a time. Fails: -4 with a report when out is null.
    virtual Result LookupValue(const char* key, IObject** out) = 0;

protected:
    ~IMap() = default;
};

// Makes dictionaries.
class IMapFactory : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IMapFactory/1.0";

    // Slot 11. Makes an empty dictionary.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateMap(IMap** out) = 0;

protected:
    ~IMapFactory() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IMap::Id[];
[[gnu::weak]] constexpr const char tvx::IMapFactory::Id[];
#endif
