// SPDX-License-Identifier: MIT
#include "Tool/Checks/CollectionSlots.h"

namespace tvx::check
{

AbcCollection::AbcCollection(Trial& trial)
    : collection(ReadFrom<ICollection2>(trial, CollectionExport, MakeObjectReader({items[0], items[1], items[2]})))
{
    Need(trial, "Deserialize or Serialize", ShowOrder(trial) == "abc");
}

std::string AbcCollection::ShowOrder(Trial& trial) const
{
    const auto writer = WriteOut(trial, collection);
    std::string order;
    for (const auto& object : writer->objects)
    {
        char letter = '?';
        for (std::size_t index = 0; index < items.size(); ++index)
        {
            if (items[index].Get() == object.Get())
                letter = "abcx"[index];
        }
        order += letter;
    }
    return order;
}

}  // namespace tvx::check
