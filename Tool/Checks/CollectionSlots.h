// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/SlotChecking.h"

#include <array>
#include <string>

namespace tvx::check
{

// A collection of the objects a, b and c, which its factory read, and a fourth object x.
struct AbcCollection
{
    explicit AbcCollection(Trial& trial);

    // What the collection serialises, by the letters of the objects.
    std::string ShowOrder(Trial& trial) const;

    const std::array<Ref<ProbeObject>, 4> items = {MakeRef<ProbeObject>(), MakeRef<ProbeObject>(),
                                                   MakeRef<ProbeObject>(), MakeRef<ProbeObject>()};
    IObject* const a = items[0].Get();
    IObject* const b = items[1].Get();
    IObject* const c = items[2].Get();
    IObject* const x = items[3].Get();
    const Ref<ICollection2> collection;
    void* const face = ToC<ICollection>(collection);
};

}  // namespace tvx::check
