// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

Ref<ScriptedReader> MakeVariantReader(const Ref<IVariant>& first, const Ref<IVariant>& second)
{
    auto reader = MakeRef<ScriptedReader>();
    reader->named = {{"size", 2}, {"param0", Ref<IObjectBase>(first)}, {"param1", Ref<IObjectBase>(second)}};
    return reader;
}

// An array of two variants that its factory read.
struct FilledArray
{
    explicit FilledArray(Trial& trial)
        : array(ReadFrom<IVariantArray>(trial, VariantArrayExport, MakeVariantReader(first, second)))
    {
    }

    Ref<IVariant> first = MakeRef<FixedVariant>(5);
    Ref<IVariant> second = MakeRef<FixedVariant>(6);
    Ref<IVariantArray> array;
    void* c = ToC<IVariantArray>(array);
};

void GetSize(Trial& trial)
{
    const FilledArray filled(trial);
    RoomyOut<std::uint32_t> numbered{7};
    std::uint32_t named = 7;
    trial.Gives("GetSize by its number", CallIVariantArrayGetSize(filled.c, &numbered.value), TVX_OK);
    trial.Equal("the size by slot 11", numbered.value, 2u);
    trial.Gives("GetSize by its name", filled.array->GetSize(&named), TVX_OK);
    trial.Equal("the size by its name", named, 2u);
}

void GetAt(Trial& trial)
{
    const FilledArray filled(trial);
    const auto numbered = Take<IVariant>(trial, "GetAt by its number", TVX_OK,
                                         [&](void** out) { return CallIVariantArrayGetAt(filled.c, 1, out); });
    trial.Same("the variant by slot 12", numbered.Get(), ToC<IVariant>(filled.second));
    Ref<IVariant> named;
    trial.Gives("GetAt by its name", filled.array->GetAt(1, named.Receive()), TVX_OK);
    trial.Same("the variant by its name", named.Get(), ToC<IVariant>(filled.second));
}

// The only element of an array to which one was appended, by what the array serialises.
Ref<IVariant> GetOnly(Trial& trial, const Ref<IVariantArray>& array, std::int32_t type)
{
    const auto writer = WriteOut(trial, array);
    trial.Equal("what the array serialises", writer->calls, Texts{"WriteNamedInt size 1", "WriteNamedObject param0"});
    auto variant = trial.QueryAs<IVariant>(writer->objects.front(), "the element");
    trial.Equal("the type of the element", variant->GetType(), type);
    return variant;
}

// An append by its number and by its name, each to an array of its own, after which the check judges the element.
template <class ByNumber, class ByName, class Judge>
void CheckAppend(Trial& trial, std::int32_t type, ByNumber&& byNumber, ByName&& byName, Judge&& judge)
{
    const auto numbered = MakeVariantArray(trial);
    trial.Gives("the append by its number", byNumber(ToC<IVariantArray>(numbered)), TVX_OK);
    judge(GetOnly(trial, numbered, type));
    const auto named = MakeVariantArray(trial);
    trial.Gives("the append by its name", byName(*named), TVX_OK);
    judge(GetOnly(trial, named, type));
}

// The element holds the value that a getter of variants gives.
template <class Value>
auto Holds(Trial& trial, Result (IVariant::*get)(Value* out), Value expected)
{
    return [&trial, get, expected](const Ref<IVariant>& variant)
    {
        Value came{};
        trial.Gives("the getter of the element", (variant.Get()->*get)(&came), TVX_OK);
        trial.Equal("the value of the element", came, expected);
    };
}

void AppendObject(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    CheckAppend(
        trial, IVariant::TypeObject,
        [&](void* array) { return CallIVariantArrayAppendObject(array, ToC<IObject>(object)); },
        [&](IVariantArray& array) { return array.AppendObject(object.Get()); },
        [&](const Ref<IVariant>& variant)
        {
            Ref<IObject> came;
            trial.Gives("GetObject of the element", variant->GetObject(came.Receive()), TVX_OK);
            trial.Same("the object of the element", came.Get(), object.Get());
        });
}

void AppendString(Trial& trial)
{
    CheckAppend(
        trial, IVariant::TypeString, [](void* array) { return CallIVariantArrayAppendString(array, "text"); },
        [](IVariantArray& array) { return array.AppendString("text"); },
        [&](const Ref<IVariant>& variant)
        {
            const auto text = Make<IString>(trial, "GetString of the element",
                                            [&](IString** out) { return variant->GetString(out); });
            trial.Equal("the text of the element", text->GetText(), "text");
        });
}

void AppendDouble(Trial& trial)
{
    CheckAppend(
        trial, IVariant::TypeDouble, [](void* array) { return CallIVariantArrayAppendDouble(array, 0.1); },
        [](IVariantArray& array) { return array.AppendDouble(0.1); }, Holds(trial, &IVariant::GetDouble, 0.1));
}

void AppendFloat(Trial& trial)
{
    CheckAppend(
        trial, IVariant::TypeFloat, [](void* array) { return CallIVariantArrayAppendFloat(array, 0.1F); },
        [](IVariantArray& array) { return array.AppendFloat(0.1F); }, Holds(trial, &IVariant::GetFloat, 0.1F));
}

void AppendInt(Trial& trial)
{
    CheckAppend(
        trial, IVariant::TypeInt, [](void* array) { return CallIVariantArrayAppendInt(array, -5); },
        [](IVariantArray& array) { return array.AppendInt(-5); }, Holds(trial, &IVariant::GetInt, -5));
}

void AppendBool(Trial& trial)
{
    CheckAppend(
        trial, IVariant::TypeBool, [](void* array) { return CallIVariantArrayAppendBool(array, true); },
        [](IVariantArray& array) { return array.AppendBool(true); }, Holds(trial, &IVariant::GetBool, true));
}

void AppendVariant(Trial& trial)
{
    const auto given = MakeRef<FixedVariant>(5);
    CheckAppend(
        trial, IVariant::TypeInt,
        [&](void* array) { return CallIVariantArrayAppendVariant(array, ToC<IVariant>(given)); },
        [&](IVariantArray& array) { return array.AppendVariant(given.Get()); },
        [&](const Ref<IVariant>& variant) { trial.Same("the element", variant.Get(), ToC<IVariant>(given)); });
}

constexpr Check Checks[] = {
    {"slot-variant-array-11-get-size", "GetSize is called by its number.",
     "Slot 11 of IVariantArray is GetSize: it gives the number of elements by its out.", GetSize},
    {"slot-variant-array-12-get-at", "GetAt is called by its number.",
     "Slot 12 of IVariantArray is GetAt: it gives the element of an index by its out.", GetAt},
    {"slot-variant-array-13-append-object", "AppendObject is called by its number.",
     "Slot 13 of IVariantArray is AppendObject: it appends an object variant.", AppendObject},
    {"slot-variant-array-14-append-string", "AppendString is called by its number.",
     "Slot 14 of IVariantArray is AppendString: it appends a string variant.", AppendString},
    {"slot-variant-array-15-append-double", "AppendDouble is called by its number.",
     "Slot 15 of IVariantArray is AppendDouble: it appends a double variant.", AppendDouble},
    {"slot-variant-array-16-append-float", "AppendFloat is called by its number.",
     "Slot 16 of IVariantArray is AppendFloat: it appends a float variant.", AppendFloat},
    {"slot-variant-array-17-append-int", "AppendInt is called by its number.",
     "Slot 17 of IVariantArray is AppendInt: it appends an integer variant.", AppendInt},
    {"slot-variant-array-18-append-bool", "AppendBool is called by its number.",
     "Slot 18 of IVariantArray is AppendBool: it appends a bool variant.", AppendBool},
    {"slot-variant-array-19-append-variant", "AppendVariant is called by its number.",
     "Slot 19 of IVariantArray is AppendVariant: it appends the variant itself.", AppendVariant},
};

}  // namespace

extern const Family SlotsOfVariantArrayFamily = {"slots", VariantArrayExport, Needs::Module, Checks};

}  // namespace tvx::check
