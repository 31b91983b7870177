// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

// The call on a map with one entry under "key" reports a null pointer and gives -4, and the map stays as it is.
template <class Call>
void ReportsNull(Trial& trial, const std::string& what, Call&& call)
{
    const auto map = MakeFilledMap(trial, {{"key", "5"}});
    trial.Reports(what, "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER, [&] { return call(*map); });
    ExpectEntries(trial, "a map after " + what, *map, {"key=5"});
}

void SetDoubleOfANullKey(Trial& trial)
{
    ReportsNull(trial, "SetDouble with a null key", [](ISimpleMap& map) { return map.SetDouble(nullptr, 1.5); });
}

void SetIntOfANullKey(Trial& trial)
{
    ReportsNull(trial, "SetInt with a null key", [](ISimpleMap& map) { return map.SetInt(nullptr, 1); });
}

void SetStringOfANullKey(Trial& trial)
{
    ReportsNull(trial, "SetString with a null key", [](ISimpleMap& map) { return map.SetString(nullptr, "1"); });
}

void GetDoubleOfANullKey(Trial& trial)
{
    double out = -77.5;
    ReportsNull(trial, "GetDouble with a null key", [&](ISimpleMap& map) { return map.GetDouble(nullptr, &out); });
    trial.Equal("the out of GetDouble with a null key, which stays untouched,", out, -77.5);
}

void GetIntOfANullKey(Trial& trial)
{
    std::int32_t out = -77;
    ReportsNull(trial, "GetInt with a null key", [&](ISimpleMap& map) { return map.GetInt(nullptr, &out); });
    trial.Equal("the out of GetInt with a null key, which stays untouched,", out, -77);
}

void GetStringOfANullKey(Trial& trial)
{
    const auto mark = MakeRef<host::HostString>("mark");
    IString* out = mark.Get();
    ReportsNull(trial, "GetString with a null key", [&](ISimpleMap& map) { return map.GetString(nullptr, &out); });
    trial.Same("the out of GetString with a null key, which stays untouched,", out, mark.Get());
}

// Pointers are looked at before the key is looked up.
template <class Value>
void ReportsNullOut(Trial& trial, const char* operation, Result (ISimpleMap::*get)(const char*, Value*))
{
    const auto what = std::string(operation) + " with a null out";
    ReportsNull(trial, what, [&](ISimpleMap& map) { return (map.*get)("key", nullptr); });
    ReportsNull(trial, what + " of an absent key", [&](ISimpleMap& map) { return (map.*get)("absent", nullptr); });
}

void GetDoubleIntoNull(Trial& trial)
{
    ReportsNullOut(trial, "GetDouble", &ISimpleMap::GetDouble);
}

void GetIntIntoNull(Trial& trial)
{
    ReportsNullOut(trial, "GetInt", &ISimpleMap::GetInt);
}

void GetStringIntoNull(Trial& trial)
{
    ReportsNullOut(trial, "GetString", &ISimpleMap::GetString);
}

constexpr const char NullKeyRule[] =
    "A null key gives -4 with one report line of TVX_RETURN_EPOINTER_IF_NULL, and nothing is written.";
constexpr const char NullOutRule[] =
    "A null out gives -4 with one report line of TVX_RETURN_EPOINTER_IF_NULL, whether the key is present or not.";

constexpr Check Checks[] = {
    {"report-settings-map-set-double-null-key", "SetDouble is called with a null key.", NullKeyRule,
     SetDoubleOfANullKey},
    {"report-settings-map-set-int-null-key", "SetInt is called with a null key.", NullKeyRule, SetIntOfANullKey},
    {"report-settings-map-set-string-null-key", "SetString is called with a null key.", NullKeyRule,
     SetStringOfANullKey},
    {"report-settings-map-get-double-null-key", "GetDouble is called with a null key.", NullKeyRule,
     GetDoubleOfANullKey},
    {"report-settings-map-get-double-null-out", "GetDouble is called with a null out.", NullOutRule, GetDoubleIntoNull},
    {"report-settings-map-get-int-null-key", "GetInt is called with a null key.", NullKeyRule, GetIntOfANullKey},
    {"report-settings-map-get-int-null-out", "GetInt is called with a null out.", NullOutRule, GetIntIntoNull},
    {"report-settings-map-get-string-null-key", "GetString is called with a null key.", NullKeyRule,
     GetStringOfANullKey},
    {"report-settings-map-get-string-null-out", "GetString is called with a null out.", NullOutRule, GetStringIntoNull},
};

}  // namespace

extern const Family ReportsOfSettingsMapFamily = {"report-lines", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
