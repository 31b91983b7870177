// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

// A type of variant: how one is made, and its getter called with a null out.
struct Type
{
    const char* getter;
    Ref<IVariant> (*make)(Trial& trial);
    Result (*getNothing)(IVariant& variant);
};

constexpr Type Types[] = {
    {"GetBool", [](Trial& trial) { return MakeBool(trial, true); },
     [](IVariant& variant) { return variant.GetBool(nullptr); }},
    {"GetInt", [](Trial& trial) { return MakeInt(trial, 5); },
     [](IVariant& variant) { return variant.GetInt(nullptr); }},
    {"GetFloat", [](Trial& trial) { return MakeFloat(trial, 1.5f); },
     [](IVariant& variant) { return variant.GetFloat(nullptr); }},
    {"GetDouble", [](Trial& trial) { return MakeDouble(trial, 1.5); },
     [](IVariant& variant) { return variant.GetDouble(nullptr); }},
    {"GetString", [](Trial& trial) { return MakeText(trial, "text"); },
     [](IVariant& variant) { return variant.GetString(nullptr); }},
    {"GetObject", [](Trial& trial) { return MakeObject(trial, nullptr); },
     [](IVariant& variant) { return variant.GetObject(nullptr); }},
};

template <std::size_t Index>
void ReportsItsNullOut(Trial& trial)
{
    constexpr Type type = Types[Index];
    const auto variant = type.make(trial);
    trial.Reports(std::string(type.getter) + " of its own type with a null out", "TVX_RETURN_EPOINTER_IF_NULL",
                  TVX_E_POINTER, [&] { return type.getNothing(*variant); });
}

void RefusesOtherNullOutsSilently(Trial& trial)
{
    for (const auto& held : Types)
    {
        const auto variant = held.make(trial);
        for (const auto& asked : Types)
        {
            if (&asked != &held)
                trial.Gives(std::string(asked.getter) + " with a null out of a variant for " + held.getter,
                            asked.getNothing(*variant), TVX_E_FAIL);
        }
    }
}

void CreatesNothingSilently(Trial& trial)
{
    const auto factory = trial.Get<IVariantFactory>(VariantExport);
    const auto text = MakeRef<host::HostString>("text");
    trial.Gives("CreateBool with a null out", factory->CreateBool(true, nullptr), TVX_E_POINTER);
    trial.Gives("CreateInt with a null out", factory->CreateInt(5, nullptr), TVX_E_POINTER);
    trial.Gives("CreateFloat with a null out", factory->CreateFloat(1.5f, nullptr), TVX_E_POINTER);
    trial.Gives("CreateDouble with a null out", factory->CreateDouble(1.5, nullptr), TVX_E_POINTER);
    trial.Gives("CreateStringFromIString with a null out", factory->CreateStringFromIString(text.Get(), nullptr),
                TVX_E_POINTER);
    trial.Gives("CreateString with a null out", factory->CreateString("text", nullptr), TVX_E_POINTER);
    trial.Gives("CreateObject with a null out", factory->CreateObject(nullptr, nullptr), TVX_E_POINTER);
}

constexpr const char OwnGetterRule[] =
    "The getter of the variant's own type gives -4 for a null out, with one report line of "
    "TVX_RETURN_EPOINTER_IF_NULL: the caller made a programming error.";

constexpr Check Checks[] = {
    {"report-variant-get-bool-null-out", "GetBool of a bool variant is called with a null out.", OwnGetterRule,
     ReportsItsNullOut<0>},
    {"report-variant-get-int-null-out", "GetInt of an int variant is called with a null out.", OwnGetterRule,
     ReportsItsNullOut<1>},
    {"report-variant-get-float-null-out", "GetFloat of a float variant is called with a null out.", OwnGetterRule,
     ReportsItsNullOut<2>},
    {"report-variant-get-double-null-out", "GetDouble of a double variant is called with a null out.", OwnGetterRule,
     ReportsItsNullOut<3>},
    {"report-variant-get-string-null-out", "GetString of a string variant is called with a null out.", OwnGetterRule,
     ReportsItsNullOut<4>},
    {"report-variant-get-object-null-out", "GetObject of an object variant is called with a null out.", OwnGetterRule,
     ReportsItsNullOut<5>},
    {"report-variant-other-getters-stay-silent", "Every getter of another type is called with a null out.",
     "A getter of another type gives -1 without a report, whatever its out: the type is tested first.",
     RefusesOtherNullOutsSilently},
    {"report-variant-creations-stay-silent", "Every creation of the factory is called with a null out.",
     "A null out of a creation gives -4 without a report line.", CreatesNothingSilently},
};

}  // namespace

extern const Family ReportsOfVariantFamily = {"report-lines", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
