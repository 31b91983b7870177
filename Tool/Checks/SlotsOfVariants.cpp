// SPDX-License-Identifier: MIT
#include "Tool/Checks/VariantSlots.h"

namespace tvx::check
{

namespace
{

using Answers = std::vector<std::string>;
using Ask = std::string (*)(void* variant);

Ref<IObject> MakeVariantObject(Trial& trial)
{
    return GetSample(trial, IVariant::TypeInt);
}

// What the variants of type 1 to 6 answer.
Answers AskAll(Trial& trial, Ref<IVariant> (*make)(Trial&, std::int32_t), Ask ask)
{
    Answers answers;
    for (std::int32_t type = IVariant::TypeBool; type <= IVariant::TypeObject; ++type)
    {
        const auto variant = make(trial, type);
        answers.push_back(variant ? ask(ToC<IVariant>(variant)) : "no variant");
    }
    return answers;
}

// The variants are read, and made by the factory if that does not do: so a wrong table of either way is not taken for one of
// IVariant.
void ExpectAnswers(Trial& trial, const std::string& slot, Ask ask, const Answers& expected)
{
    auto answers = AskAll(trial, ReadSample, ask);
    if (answers != expected)
        answers = AskAll(trial, MakeSample, ask);
    trial.Equal("slot " + slot + " of the variants of type 1 to 6", answers, expected);
}

// Of a getter: the value of its own type, and -1 of all others.
void ExpectOwnValue(Trial& trial, const std::string& slot, Ask ask, std::int32_t type, const std::string& value)
{
    Answers expected(IVariant::TypeObject, "-1");
    expected[static_cast<std::size_t>(type) - 1] = "0 " + value;
    ExpectAnswers(trial, slot, ask, expected);
}

void GivesType(Trial& trial)
{
    ExpectAnswers(trial, "11 (GetType)", AskTypeSlot, {"1", "2", "3", "4", "5", "6"});
}

void GivesBool(Trial& trial)
{
    ExpectOwnValue(trial, "12 (GetBool)", AskBoolSlot, IVariant::TypeBool, "true");
}

void GivesInt(Trial& trial)
{
    ExpectOwnValue(trial, "13 (GetInt)", AskIntSlot, IVariant::TypeInt, Show(IntSample));
}

void GivesFloat(Trial& trial)
{
    ExpectOwnValue(trial, "14 (GetFloat)", AskFloatSlot, IVariant::TypeFloat, Show(FloatSample));
}

void GivesDouble(Trial& trial)
{
    ExpectOwnValue(trial, "15 (GetDouble)", AskDoubleSlot, IVariant::TypeDouble, Show(DoubleSample));
}

void GivesString(Trial& trial)
{
    ExpectOwnValue(trial, "16 (GetString)", AskStringSlot, IVariant::TypeString, TextSample);
}

void GivesObject(Trial& trial)
{
    ExpectOwnValue(trial, "17 (GetObject)", AskObjectSlot, IVariant::TypeObject, "an object");
}

constexpr Check Checks[] = {
    {"slot-variant-11-get-type", "GetType is called by its number on a variant of each type.",
     "Slot 11 of IVariant is GetType: it gives the tag of the type, 1 to 6.", GivesType},
    {"slot-variant-12-get-bool", "GetBool is called by its number on a variant of each type.",
     "Slot 12 of IVariant is GetBool: it gives the value of a bool, and -1 for every other type.", GivesBool},
    {"slot-variant-13-get-int", "GetInt is called by its number on a variant of each type.",
     "Slot 13 of IVariant is GetInt: it gives the value of an integer, and -1 for every other type.", GivesInt},
    {"slot-variant-14-get-float", "GetFloat is called by its number on a variant of each type.",
     "Slot 14 of IVariant is GetFloat: it gives the value of a float, and -1 for every other type.", GivesFloat},
    {"slot-variant-15-get-double", "GetDouble is called by its number on a variant of each type.",
     "Slot 15 of IVariant is GetDouble: it gives the value of a double, and -1 for every other type.", GivesDouble},
    {"slot-variant-16-get-string", "GetString is called by its number on a variant of each type.",
     "Slot 16 of IVariant is GetString: it hands out the string of a string variant, and gives -1 for every other "
     "type.",
     GivesString},
    {"slot-variant-17-get-object", "GetObject is called by its number on a variant of each type.",
     "Slot 17 of IVariant is GetObject: it hands out the object of an object variant, and gives -1 for every other "
     "type.",
     GivesObject},
};

}  // namespace

extern const Family SlotsOfVariantFamily = {"slots", VariantExport, Needs::Module, Checks};
extern const Family SlotsOfVariantObjectFamily = {"slots", VariantExport, Needs::Module,
                                                  ObjectSlots<"variant", MakeVariantObject>};

}  // namespace tvx::check
