// SPDX-License-Identifier: MIT
#include "Tool/Checks/IteratorBench.h"

namespace tvx::check
{

namespace
{

bool IsIteratorEnd(Trial& trial, ISimpleMapIterator& iterator)
{
    bool end = iterator.GetKey() != nullptr;  // the false answer, should none come
    trial.Gives("IsEnd", iterator.IsEnd(&end), TVX_OK);
    return end;
}

}  // namespace

Ref<ISimpleMap5> MakeMapOfKeys(Trial& trial, const std::vector<std::string>& keys)
{
    auto map = MakeSimpleMap(trial);
    for (const auto& key : keys)
        trial.Gives("SetString of " + Show(key), map->SetString(key.c_str(), "text"), TVX_OK);
    return map;
}

Ref<ISimpleMapIterator> MakeMapIterator(Trial& trial, const IteratorKind& kind, ISimpleMap& map)
{
    return Make<ISimpleMapIterator>(trial, kind.name, [&](ISimpleMapIterator** out) { return (map.*kind.make)(out); });
}

void IsIteratorAtEnd(Trial& trial, const std::string& when, ISimpleMapIterator& iterator)
{
    trial.Same("GetKey " + when, iterator.GetKey(), nullptr);
    trial.Same("GetValue " + when, iterator.GetValue(), nullptr);
    trial.Equal("IsEnd " + when, IsIteratorEnd(trial, iterator), true);
}

std::vector<std::string> GetIteratorKeys(Trial& trial, ISimpleMapIterator& iterator)
{
    constexpr std::size_t limit = 10000;  // no check has a map as large
    std::vector<std::string> keys;
    while (iterator.GetKey() != nullptr && keys.size() < limit)
    {
        trial.Equal("IsEnd on an entry", IsIteratorEnd(trial, iterator), false);
        keys.push_back(iterator.GetKey());
        const auto came = iterator.Next();
        trial.Gives("Next", came, iterator.GetKey() == nullptr ? TVX_E_FAIL : TVX_OK);
    }
    IsIteratorAtEnd(trial, "behind the last entry", iterator);
    return keys;
}

}  // namespace tvx::check
