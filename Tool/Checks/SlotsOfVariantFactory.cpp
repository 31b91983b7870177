// SPDX-License-Identifier: MIT
#include "Tool/Checks/VariantSlots.h"

namespace tvx::check
{

namespace
{

// What shows that a variant is the right one: its own getter, or what it writes. One of them is enough, so that a wrong table of
// IVariant or of ISerializable is not taken for one of the factory.
struct Evidence
{
    std::string (*ask)(void* variant);
    std::string answer;
    std::vector<std::string> lines;
};

template <class Value>
Ref<IVariant> ExpectCreation(Trial& trial, const std::string& slot, const Evidence& evidence,
                             std::int32_t (*create)(void* object, Value value, void** out), Value value)
{
    const std::string what = "slot " + slot + " of IVariantFactory";
    const auto factory = trial.Get<IVariantFactory>(VariantExport);
    const auto object = TakeFromC<IVariant>(
        trial, what, TVX_OK, [&](void** out) { return create(ToC<IVariantFactory>(factory), value, out); });
    auto variant = trial.QueryAs<IVariant>(object, "what " + what + " gives");
    const auto answer = evidence.ask(ToC<IVariant>(variant));
    if (answer != evidence.answer && answer != UnreadableString)
        trial.Equal("what is written of what " + what + " gives", WriteVariant(trial, variant), evidence.lines);
    return variant;
}

void CreatesBools(Trial& trial)
{
    const Evidence evidence = {AskBoolSlot, "0 true", {"WriteNamedInt type 1", "WriteNamedBool value true"}};
    ExpectCreation(trial, "11 (CreateBool)", evidence, CallIVariantFactoryCreateBool, true);
}

void CreatesInts(Trial& trial)
{
    const Evidence evidence = {AskIntSlot, "0 -5", {"WriteNamedInt type 2", "WriteNamedInt value -5"}};
    ExpectCreation(trial, "12 (CreateInt)", evidence, CallIVariantFactoryCreateInt, -5);
}

void CreatesFloats(Trial& trial)
{
    const Evidence evidence = {AskFloatSlot, "0 0.5", {"WriteNamedInt type 3", "WriteNamedDouble value 0.5"}};
    ExpectCreation(trial, "13 (CreateFloat)", evidence, CallIVariantFactoryCreateFloat, 0.5F);
}

void CreatesDoubles(Trial& trial)
{
    const Evidence evidence = {AskDoubleSlot, "0 0.25", {"WriteNamedInt type 4", "WriteNamedDouble value 0.25"}};
    ExpectCreation(trial, "14 (CreateDouble)", evidence, CallIVariantFactoryCreateDouble, 0.25);
}

// The string is shared, which tells this operation from the one that copies a text.
void CreatesStringsFromStrings(Trial& trial)
{
    const Evidence evidence = {AskStringSlot, "0 shared", {"WriteNamedInt type 5", "WriteNamedString value shared"}};
    const auto string = MakeRef<host::HostString>("shared");
    const auto variant = ExpectCreation(trial, "15 (CreateStringFromIString)", evidence,
                                        CallIVariantFactoryCreateStringFromIString, ToC<IString>(string));
    trial.Equal("the references on the string that slot 15 (CreateStringFromIString) shares", string->GetRefCount(),
                2u);
}

void CreatesStrings(Trial& trial)
{
    const Evidence evidence = {AskStringSlot, "0 copied", {"WriteNamedInt type 5", "WriteNamedString value copied"}};
    ExpectCreation(trial, "16 (CreateString)", evidence, CallIVariantFactoryCreateString, "copied");
}

void CreatesObjects(Trial& trial)
{
    const Evidence evidence = {AskObjectSlot, "0 an object", {"WriteNamedInt type 6", "WriteNamedObject value"}};
    const auto object = MakeRef<ProbeObject>();
    const auto variant =
        ExpectCreation(trial, "17 (CreateObject)", evidence, CallIVariantFactoryCreateObject, ToC<IObject>(object));
    trial.Equal("the references on the object that slot 17 (CreateObject) shares", object->GetRefCount(), 2u);
}

constexpr Check Checks[] = {
    {"slot-variant-factory-11-create-bool", "CreateBool of the variant factory is called by its number.",
     "Slot 11 of IVariantFactory is CreateBool: it makes a variant of type 1.", CreatesBools},
    {"slot-variant-factory-12-create-int", "CreateInt of the variant factory is called by its number.",
     "Slot 12 of IVariantFactory is CreateInt: it makes a variant of type 2.", CreatesInts},
    {"slot-variant-factory-13-create-float", "CreateFloat of the variant factory is called by its number.",
     "Slot 13 of IVariantFactory is CreateFloat: it makes a variant of type 3 of a number of 32 bits.", CreatesFloats},
    {"slot-variant-factory-14-create-double", "CreateDouble of the variant factory is called by its number.",
     "Slot 14 of IVariantFactory is CreateDouble: it makes a variant of type 4 of a number of 64 bits.",
     CreatesDoubles},
    {"slot-variant-factory-15-create-string-from-i-string",
     "CreateStringFromIString of the variant factory is called by its number with a string of the caller's.",
     "Slot 15 of IVariantFactory is CreateStringFromIString: it makes a variant of type 5 that shares the string.",
     CreatesStringsFromStrings},
    {"slot-variant-factory-16-create-string", "CreateString of the variant factory is called by its number.",
     "Slot 16 of IVariantFactory is CreateString: it makes a variant of type 5 with a copy of a text.", CreatesStrings},
    {"slot-variant-factory-17-create-object",
     "CreateObject of the variant factory is called by its number with an object of the caller's.",
     "Slot 17 of IVariantFactory is CreateObject: it makes a variant of type 6 that shares the object.",
     CreatesObjects},
};

}  // namespace

extern const Family SlotsOfVariantFactoryFamily = {"slots", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
