// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

namespace tvx
{

// Makes objects of one class.
class IFactory : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IFactory/1.0";

    // Slot 11. Makes a new object.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result Create(IObjectBase** out) = 0;

protected:
    ~IFactory() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IFactory::Id[];
#endif
