// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

namespace tvx
{

// An 8-bit text that never changes. No encoding is assumed.
class IString : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IString/1.0";

    // Slot 11. Gives the NUL-terminated text, valid as long as the string lives; never null.
    // Threads: any. Fails: never.
    virtual const char* GetText() = 0;

    // Slot 12. Gives the number of bytes of the text, without the NUL.
    // Threads: any. Fails: never.
    virtual std::uint32_t GetLength() = 0;

protected:
    ~IString() = default;
};

// Makes strings.
class IStringFactory : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IStringFactory/1.0";

    // Slot 11. Makes a string holding a copy of text up to its first NUL.
    //   text  borrowed; null counts as the empty text
    //   out   receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateString(const char* text, IString** out) = 0;

protected:
    ~IStringFactory() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IString::Id[];
[[gnu::weak]] constexpr const char tvx::IStringFactory::Id[];
#endif
