// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/VariantArrayBench.h"

#include <limits>
#include <string>
#include <vector>

namespace tvx::check
{

namespace
{

template <class Value>
using Limits = std::numeric_limits<Value>;

void HasType(Trial& trial, const std::string& append, const Ref<IVariant>& element, std::int32_t expected)
{
    trial.Equal("the type of the variant that " + append + " made", element->GetType(), expected);
}

// Expects that each value is found as a variant of the type, behind those before.
template <class Value>
void Appends(Trial& trial, const std::string& name, Result (IVariantArray::*append)(Value), std::int32_t type,
             Result (IVariant::*get)(Value*), std::initializer_list<Value> values)
{
    const auto array = MakeVariantArray(trial);
    std::uint32_t size = 0;
    for (const Value value : values)
    {
        trial.Gives(name, (array.Get()->*append)(value), TVX_OK);
        const auto element = GetArrayElement(trial, *array, size);
        HasType(trial, name, element, type);
        Value came = value == Value() ? Value(1) : Value();  // another one
        trial.Gives("the getter of the type", (element.Get()->*get)(&came), TVX_OK);
        trial.Equal("the value of the variant that " + name + " made", came, value);
        HasArraySize(trial, *array, ++size);
    }
}

void AppendsInts(Trial& trial)
{
    Appends<std::int32_t>(trial, "AppendInt", &IVariantArray::AppendInt, IVariant::TypeInt, &IVariant::GetInt,
                          {7, 0, -1, Limits<std::int32_t>::max(), Limits<std::int32_t>::min()});
}

void AppendsBools(Trial& trial)
{
    Appends<bool>(trial, "AppendBool", &IVariantArray::AppendBool, IVariant::TypeBool, &IVariant::GetBool,
                  {true, false});
}

void AppendsFloats(Trial& trial)
{
    Appends<float>(trial, "AppendFloat", &IVariantArray::AppendFloat, IVariant::TypeFloat, &IVariant::GetFloat,
                   {0.1f, -1.5f, Limits<float>::max(), Limits<float>::denorm_min(), Limits<float>::infinity()});
}

void AppendsDoubles(Trial& trial)
{
    Appends<double>(trial, "AppendDouble", &IVariantArray::AppendDouble, IVariant::TypeDouble, &IVariant::GetDouble,
                    {0.1, -1.5, Limits<double>::max(), Limits<double>::denorm_min(), Limits<double>::infinity()});
}

void AppendText(Trial& trial, const char* given, const char* expected)
{
    const auto array = MakeVariantArray(trial);
    trial.Gives("AppendString", array->AppendString(given), TVX_OK);
    const auto element = GetArrayElement(trial, *array, 0);
    HasType(trial, "AppendString", element, IVariant::TypeString);
    const auto text = Make<IString>(trial, "GetString of it", [&](IString** out) { return element->GetString(out); });
    trial.Equal("the text of the variant that AppendString made", text->GetText(), expected);
}

void AppendsTexts(Trial& trial)
{
    for (const char* const text : {"text", "", "W\xC3\xB6rter\n"})
        AppendText(trial, text, text);
    AppendText(trial, nullptr, "");
}

void CopiesTexts(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    std::string text = "text";
    trial.Gives("AppendString", array->AppendString(text.c_str()), TVX_OK);
    text = "txet";
    const auto element = GetArrayElement(trial, *array, 0);
    const auto kept = Make<IString>(trial, "GetString of it", [&](IString** out) { return element->GetString(out); });
    trial.Equal("the text of a variant after the caller's was overwritten", kept->GetText(), "text");
}

void AppendsObjects(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    auto array = MakeVariantArray(trial);
    trial.Gives("AppendObject", array->AppendObject(object.Get()), TVX_OK);
    trial.Equal("the references on an object that was appended", object->GetRefCount(), 2u);
    {
        const auto element = GetArrayElement(trial, *array, 0);
        HasType(trial, "AppendObject", element, IVariant::TypeObject);
        const auto kept =
            Make<IObject>(trial, "GetObject of it", [&](IObject** out) { return element->GetObject(out); });
        trial.Same("the object of the variant", kept.Get(), static_cast<IObject*>(object.Get()));
    }
    array = nullptr;
    trial.Equal("the references on an object after the array's death", object->GetRefCount(), 1u);
}

void AppendsANullObject(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    trial.Gives("AppendObject of null", array->AppendObject(nullptr), TVX_OK);
    const auto element = GetArrayElement(trial, *array, 0);
    HasType(trial, "AppendObject of null", element, IVariant::TypeObject);
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    trial.Gives("GetObject of it", element->GetObject(&out), TVX_OK);
    trial.Same("the object of a variant of null", out, nullptr);
}

void KeepsTheOrderOfItsKinds(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    trial.Gives("AppendInt", array->AppendInt(7), TVX_OK);
    trial.Gives("AppendBool", array->AppendBool(true), TVX_OK);
    trial.Gives("AppendString", array->AppendString("text"), TVX_OK);
    trial.Gives("AppendDouble", array->AppendDouble(0.5), TVX_OK);
    trial.Gives("AppendFloat", array->AppendFloat(0.5f), TVX_OK);
    trial.Gives("AppendObject", array->AppendObject(nullptr), TVX_OK);
    std::vector<std::int32_t> types;
    for (std::uint32_t index = 0; index < 6; ++index)
        types.push_back(GetArrayElement(trial, *array, index)->GetType());
    trial.Equal("the types of an int, a bool, a string, a double, a float and an object", types,
                std::vector<std::int32_t>{IVariant::TypeInt, IVariant::TypeBool, IVariant::TypeString,
                                          IVariant::TypeDouble, IVariant::TypeFloat, IVariant::TypeObject});
}

constexpr Check Checks[] = {
    {"value-variant-array-appends-ints", "Ints, the smallest and the largest among them, are appended.",
     "AppendInt gives 0 and appends an int variant of the value.", AppendsInts},
    {"value-variant-array-appends-bools", "Bools are appended.",
     "AppendBool gives 0 and appends a bool variant of the value, not an int one.", AppendsBools},
    {"value-variant-array-appends-floats", "Floats, extreme ones among them, are appended.",
     "AppendFloat gives 0 and appends a float variant of the very value.", AppendsFloats},
    {"value-variant-array-appends-doubles", "Doubles, extreme ones among them, are appended.",
     "AppendDouble gives 0 and appends a double variant of the very value.", AppendsDoubles},
    {"value-variant-array-appends-texts", "Texts, the empty one and null are appended.",
     "AppendString gives 0 and appends a string variant of the text, byte for byte; null counts as the empty text.",
     AppendsTexts},
    {"value-variant-array-copies-texts", "The text is overwritten after AppendString.",
     "The array owns a copy of a text: the caller's is only borrowed for the call.", CopiesTexts},
    {"value-variant-array-appends-objects", "An object is appended, and the array released.",
     "AppendObject gives 0 and appends an object variant with the very object, which it holds by one reference.",
     AppendsObjects},
    {"value-variant-array-appends-a-null-object", "A null object is appended.",
     "AppendObject of null appends an object variant that holds null: the element itself is not null.",
     AppendsANullObject},
    {"value-variant-array-keeps-the-order", "Values of all six kinds are appended.",
     "Elements stand in the order in which they were appended, each of its own type.", KeepsTheOrderOfItsKinds},
};

}  // namespace

extern const Family AppendsToVariantArrayFamily = {"values", VariantArrayExport, Needs::Module, Checks};

}  // namespace tvx::check
