// SPDX-License-Identifier: MIT
#include "Tool/Checks/MapBench.h"

namespace tvx::check
{

void SetInMap(Trial& trial, IMap& map, const char* key, IObject* value)
{
    trial.Gives("SetValue of " + Show(key), map.SetValue(key, value), TVX_OK);
}

void FindsInMap(Trial& trial, IMap& map, const char* key, IObject* value, MapLookup lookUp)
{
    const auto what = "the lookup of " + Show(key);
    const auto mark = MakeRef<ProbeObject>();
    const auto before = value == nullptr ? 0 : value->GetRefCount();
    IObject* out = mark.Get();
    trial.Gives(what, (map.*lookUp)(key, &out), TVX_S_VALUE);
    trial.Same("the out of " + what, out, value);
    if (value == nullptr)
        return;
    trial.Equal("the references after " + what, value->GetRefCount(), before + 1);
    const auto owned = Ref<IObject>::Adopt(out);
}

void MissesInMap(Trial& trial, IMap& map, const char* key, MapLookup lookUp)
{
    const auto what = "the lookup of " + Show(key) + ", which is absent,";
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    trial.Gives(what, (map.*lookUp)(key, &out), TVX_S_NOKEY);
    trial.Same("the out of " + what, out, nullptr);
}

void HasMapReferences(Trial& trial, const std::string& what, const Ref<ProbeObject>& object, std::uint32_t expected)
{
    trial.Equal("the map's references on " + what, object->GetRefCount() - 1, expected);
}

}  // namespace tvx::check
