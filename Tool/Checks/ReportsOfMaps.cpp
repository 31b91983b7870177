// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

constexpr const char Macro[] = "TVX_RETURN_EPOINTER_IF_NULL";

void ReportsANullKey(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    trial.Reports("SetValue of a null key", Macro, TVX_E_POINTER, [&] { return map->SetValue(nullptr, object.Get()); });
    trial.Reports("SetValue of a null key with null", Macro, TVX_E_POINTER,
                  [&] { return map->SetValue(nullptr, nullptr); });
    trial.Equal("the references on a refused value", object->GetRefCount(), 1u);
    Ref<IObject> out;
    trial.Gives("GetValue of the empty key after it", map->GetValue("", out.Receive()), TVX_S_NOKEY);
}

// Whether the key is present, absent or null.
void ReportsANullOut(Trial& trial, const std::string& name, Result (IMap::*lookUp)(const char* key, IObject** out))
{
    const auto object = MakeRef<ProbeObject>();
    const auto map = MakeMap(trial);
    trial.Gives("SetValue", map->SetValue("present", object.Get()), TVX_OK);
    for (const char* const key : {"present", "absent", "", static_cast<const char*>(nullptr)})
        trial.Reports(name + " of " + Show(key) + " with a null out", Macro, TVX_E_POINTER,
                      [&] { return (map.Get()->*lookUp)(key, nullptr); });
    trial.Equal("the references on a value after lookups with a null out", object->GetRefCount(), 2u);
}

void GetValueReportsANullOut(Trial& trial)
{
    ReportsANullOut(trial, "GetValue", &IMap::GetValue);
}

void LookupValueReportsANullOut(Trial& trial)
{
    ReportsANullOut(trial, "LookupValue", &IMap::LookupValue);
}

constexpr Check Checks[] = {
    {"report-map-null-key", "SetValue is called with a null key.",
     "SetValue of a null key gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, and the value is not kept.",
     ReportsANullKey},
    {"report-map-get-value-null-out", "GetValue is called with a null out for present, absent and null keys.",
     "A null out gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, whatever the key.", GetValueReportsANullOut},
    {"report-map-lookup-value-null-out", "LookupValue is called with a null out for present, absent and null keys.",
     "A null out gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, whatever the key.", LookupValueReportsANullOut},
};

}  // namespace

extern const Family ReportsOfMapFamily = {"report-lines", MapExport, Needs::Module, Checks};

}  // namespace tvx::check
