// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IString.h"

namespace tvx
{

// A host's configuration: typed reads by key paths such as Default\MinLevel. A read of an absent key leaves out untouched.
class IConfiguration : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IConfiguration/1.0";

    // Slot 11. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot11() = 0;

    // Slot 12. Reads a bool.
    //   key    borrowed
    //   out    receives the value; left untouched when the key is absent
    //   flags  the host's; the module passes 0
    // Threads: one at a time. Fails: as the host says.
    virtual Result GetBool(const char* key, bool* out, std::uint32_t flags) = 0;

    // Slot 13. Reads a 32-bit integer.
    //   key    borrowed
    //   out    receives the value; left untouched when the key is absent
    //   flags  the host's; the module passes 0
    // Threads: one at a time. Fails: as the host says.
    virtual Result GetInt(const char* key, std::int32_t* out, std::uint32_t flags) = 0;

    // Slot 14. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot14() = 0;

    // Slot 15. Reads a text.
    //   key    borrowed
    //   out    receives one reference, owned by the caller; left untouched when the key is absent
    //   flags  the host's; the module passes 0
    // Threads: one at a time. Fails: as the host says; negative when the key is absent.
    virtual Result GetString(const char* key, IString** out, std::uint32_t flags) = 0;

protected:
    ~IConfiguration() = default;
};

// Takes its configuration from the host.
class IConfigurable : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IConfigurable/1.0";

    // Slot 11. Gives the object its configuration, which it reads from at once and later.
    //   config  kept with one reference until replaced, even when the object cannot use it
    // Threads: one at a time, before the object is used. Fails: -4 with a report when config is null, and the current
    // configuration stays; else as the class says.
    virtual Result SetConfiguration(IConfiguration* config) = 0;

protected:
    ~IConfigurable() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IConfiguration::Id[];
[[gnu::weak]] constexpr const char tvx::IConfigurable::Id[];
#endif
