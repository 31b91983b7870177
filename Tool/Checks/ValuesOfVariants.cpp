// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

#include <bit>
#include <limits>

namespace tvx::check
{

namespace
{

template <class Value>
using Limits = std::numeric_limits<Value>;

// The getter of a variant's own type.
template <class Value>
Value GetValue(Trial& trial, const std::string& what, const Ref<IVariant>& variant, Result (IVariant::*get)(Value*))
{
    Value out{};
    trial.Gives(what, (variant.Get()->*get)(&out), TVX_OK);
    return out;
}

void KeepsBools(Trial& trial)
{
    for (const bool value : {true, false})
    {
        bool out = !value;
        trial.Gives("GetBool of a bool variant", MakeBool(trial, value)->GetBool(&out), TVX_OK);
        trial.Equal("the bool of a variant", out, value);
    }
}

void KeepsInts(Trial& trial)
{
    for (const std::int32_t value : {0, 1, -1, 65536, Limits<std::int32_t>::max(), Limits<std::int32_t>::min()})
        trial.Equal("the int of a variant", GetValue(trial, "GetInt", MakeInt(trial, value), &IVariant::GetInt), value);
}

// With its bits, which tell apart what looks alike.
template <class Bits, class Value>
std::string ShowBits(Value value)
{
    return Show(value) + " (bits " + Show(std::bit_cast<Bits>(value)) + ")";
}

template <class Bits, class Value>
void ExpectSameBits(Trial& trial, Value came, Value expected)
{
    trial.Expect(std::bit_cast<Bits>(came) == std::bit_cast<Bits>(expected),
                 "the value of a variant to be " + ShowBits<Bits>(expected), ShowBits<Bits>(came));
}

void KeepsFloats(Trial& trial)
{
    using Of = Limits<float>;
    const auto notANumber = std::bit_cast<float>(0x7FC12345u);
    for (const float value : {1.5f, 0.1f, 0.0f, -0.0f, 16777217.0f, Of::max(), Of::lowest(), Of::min(),
                              Of::denorm_min(), Of::infinity(), -Of::infinity(), notANumber})
    {
        const auto came = GetValue(trial, "GetFloat", MakeFloat(trial, value), &IVariant::GetFloat);
        ExpectSameBits<std::uint32_t>(trial, came, value);
    }
}

void KeepsDoubles(Trial& trial)
{
    using Of = Limits<double>;
    const auto notANumber = std::bit_cast<double>(0x7FF8123456789ABCu);
    for (const double value : {1.5, 0.1, 0.0, -0.0, 3.141592653589793, Of::max(), Of::lowest(), Of::min(),
                               Of::denorm_min(), Of::infinity(), -Of::infinity(), notANumber})
    {
        const auto came = GetValue(trial, "GetDouble", MakeDouble(trial, value), &IVariant::GetDouble);
        ExpectSameBits<std::uint64_t>(trial, came, value);
    }
}

// What GetType has to give for each way to make a variant.
void CarryTheirTags(Trial& trial)
{
    const auto factory = trial.Get<IVariantFactory>(VariantExport);
    const auto text = MakeRef<host::HostString>("text");
    const auto shared =
        Make<IVariant>(trial, "CreateStringFromIString",
                       [&](IVariant** out) { return factory->CreateStringFromIString(text.Get(), out); });
    trial.Equal("GetType of a bool variant", MakeBool(trial, true)->GetType(), 1);
    trial.Equal("GetType of an int variant", MakeInt(trial, 5)->GetType(), 2);
    trial.Equal("GetType of a float variant", MakeFloat(trial, 1.5f)->GetType(), 3);
    trial.Equal("GetType of a double variant", MakeDouble(trial, 1.5)->GetType(), 4);
    trial.Equal("GetType of a variant made by CreateString", MakeText(trial, "text")->GetType(), 5);
    trial.Equal("GetType of a variant made by CreateStringFromIString", shared->GetType(), 5);
    trial.Equal("GetType of an object variant", MakeObject(trial, MakeRef<ProbeObject>().Get())->GetType(), 6);
    trial.Equal("GetType of an object variant of null", MakeObject(trial, nullptr)->GetType(), 6);
}

void AreNewEachTime(Trial& trial)
{
    const auto first = MakeInt(trial, 5);
    const auto second = MakeInt(trial, 5);
    trial.Expect(first.Get() != second.Get(), "CreateInt to make a new variant each time", "the same one twice");
    trial.Equal("GetInt of the first", GetValue(trial, "GetInt", first, &IVariant::GetInt), 5);
}

void BelongToTheirCaller(Trial& trial)
{
    const Ref<IVariant> variants[] = {MakeBool(trial, true),  MakeInt(trial, 5),       MakeFloat(trial, 1.5f),
                                      MakeDouble(trial, 1.5), MakeText(trial, "text"), MakeObject(trial, nullptr)};
    for (const auto& variant : variants)
    {
        const auto what = "the reference count of a new variant of type " + Show(variant->GetType());
        trial.Equal(what, variant->GetRefCount(), 1u);
    }
}

void OverwriteTheirOut(Trial& trial)
{
    const auto factory = trial.Get<IVariantFactory>(VariantExport);
    const auto before = MakeInt(trial, 1);
    IVariant* out = before.Get();
    trial.Gives("CreateInt with an out that holds a pointer", factory->CreateInt(2, &out), TVX_OK);
    trial.Expect(out != nullptr && out != before.Get(), "CreateInt to write a new variant to its out",
                 out == nullptr ? "null" : "what was there");
    const auto made = Ref<IVariant>::Adopt(out);
    trial.Equal("GetInt of the new variant", GetValue(trial, "GetInt", made, &IVariant::GetInt), 2);
    trial.Equal("the reference count of the variant that the out held", before->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"value-variant-keeps-a-bool", "Bool variants are made of both values and read.",
     "GetBool gives 0 and the value that the variant was made of.", KeepsBools},
    {"value-variant-keeps-an-int", "Int variants are made, also of the smallest and the largest value, and read.",
     "GetInt gives 0 and the value that the variant was made of.", KeepsInts},
    {"value-variant-keeps-a-float-bit-for-bit", "Float variants are made, also of -0, infinities and no number.",
     "GetFloat gives 0 and exactly the bits that the variant was made of.", KeepsFloats},
    {"value-variant-keeps-a-double-bit-for-bit", "Double variants are made, also of -0, infinities and no number.",
     "GetDouble gives 0 and exactly the bits that the variant was made of.", KeepsDoubles},
    {"value-variant-type-is-its-tag", "GetType is asked of a variant of each creation.",
     "The tags are 1 bool, 2 int, 3 float, 4 double, 5 string, 6 object: they are stored with the values.",
     CarryTheirTags},
    {"value-variant-is-new-each-time", "Two variants are made of the same value.",
     "Every creation makes an object of its own.", AreNewEachTime},
    {"value-variant-belongs-to-its-caller", "The reference count of a new variant of each type is asked for.",
     "A new variant carries exactly one reference, which the caller owns.", BelongToTheirCaller},
    {"value-variant-out-is-overwritten", "CreateInt is called with an out that holds another variant's pointer.",
     "The out of a creation is a place to write to: what it held is neither used nor released.", OverwriteTheirOut},
};

}  // namespace

extern const Family ValuesOfVariantFamily = {"values", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
