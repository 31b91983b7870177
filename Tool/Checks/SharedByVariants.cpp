// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

Ref<IVariant> MakeShared(Trial& trial, IString* string)
{
    const auto factory = trial.Get<IVariantFactory>(VariantExport);
    return Make<IVariant>(trial, "CreateStringFromIString",
                          [&](IVariant** out) { return factory->CreateStringFromIString(string, out); });
}

Ref<IString> GetString(Trial& trial, const Ref<IVariant>& variant)
{
    return Make<IString>(trial, "GetString of a string variant",
                         [&](IString** out) { return variant->GetString(out); });
}

void ExpectCount(Trial& trial, const std::string& when, IObjectBase& object, std::uint32_t expected)
{
    trial.Equal("the reference count of what a variant shares, " + when + ",", object.GetRefCount(), expected);
}

void CopiesATextFromCharacters(Trial& trial)
{
    std::string text = "before \xFF";
    const auto variant = MakeText(trial, text.c_str());
    text = "behind \x01";
    trial.Equal("the text of a variant whose maker wrote over it", GetString(trial, variant)->GetText(), "before \xFF");
}

void TakesNullAsTheEmptyText(Trial& trial)
{
    const auto text = GetString(trial, MakeText(trial, nullptr));
    trial.Equal("the text of a variant made of a null text", text->GetText(), "");
    trial.Equal("its length", text->GetLength(), 0u);
}

void SharesAString(Trial& trial)
{
    const auto string = MakeRef<host::HostString>("text");
    const auto variant = MakeShared(trial, string.Get());
    trial.Same("the string of a variant", GetString(trial, variant).Get(), string.Get());
    trial.Same("the string of a variant, asked for again,", GetString(trial, variant).Get(), string.Get());
}

void CountsItsString(Trial& trial)
{
    const auto string = MakeRef<host::HostString>("text");
    auto variant = MakeShared(trial, string.Get());
    ExpectCount(trial, "while it lives", *string, 2);
    auto given = GetString(trial, variant);
    ExpectCount(trial, "after GetString", *string, 3);
    given = nullptr;
    variant = nullptr;
    ExpectCount(trial, "after its end", *string, 1);
}

void LeavesItsStringBehind(Trial& trial)
{
    auto variant = MakeText(trial, "stays");
    const auto text = GetString(trial, variant);
    ExpectCount(trial, "held by it and by the caller", *text, 2);
    variant = nullptr;
    ExpectCount(trial, "after its end", *text, 1);
    trial.Equal("the text, after the end of the variant,", text->GetText(), "stays");
}

void SharesAnObject(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto variant = MakeObject(trial, object.Get());
    const auto came = Make<IObject>(trial, "GetObject", [&](IObject** out) { return variant->GetObject(out); });
    trial.Same("the object of a variant", came.Get(), static_cast<IObject*>(object.Get()));
}

void CountsItsObject(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    auto variant = MakeObject(trial, object.Get());
    ExpectCount(trial, "while it lives", *object, 2);
    auto given = Make<IObject>(trial, "GetObject", [&](IObject** out) { return variant->GetObject(out); });
    ExpectCount(trial, "after GetObject", *object, 3);
    given = nullptr;
    variant = nullptr;
    ExpectCount(trial, "after its end", *object, 1);
}

void KeepsItsObjectAlive(Trial& trial)
{
    bool died = false;
    auto variant = MakeObject(trial, MakeRef<ProbeObject>(&died).Get());
    trial.Equal("the end of an object that only a variant holds", died, false);
    variant = nullptr;
    trial.Equal("the end of an object whose variant is gone", died, true);
}

void HoldsAnotherVariant(Trial& trial)
{
    auto inner = MakeInt(trial, 5);
    auto outer = MakeObject(trial, inner.Get());
    ExpectCount(trial, "a variant itself", *inner, 2);
    outer = nullptr;
    ExpectCount(trial, "a variant itself, after its end", *inner, 1);
}

void HoldsNull(Trial& trial)
{
    const auto variant = MakeObject(trial, nullptr);
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    trial.Gives("GetObject of an object variant of null", variant->GetObject(&out), TVX_OK);
    trial.Same("the object of an object variant of null", out, nullptr);
}

void LeavesNothingBehindForANullOut(Trial& trial)
{
    const auto factory = trial.Get<IVariantFactory>(VariantExport);
    const auto string = MakeRef<host::HostString>("text");
    const auto object = MakeRef<ProbeObject>();
    trial.Gives("CreateStringFromIString with a null out", factory->CreateStringFromIString(string.Get(), nullptr),
                TVX_E_POINTER);
    trial.Gives("CreateObject with a null out", factory->CreateObject(object.Get(), nullptr), TVX_E_POINTER);
    ExpectCount(trial, "a string, never made", *string, 1);
    ExpectCount(trial, "an object, never made", *object, 1);
}

constexpr Check Checks[] = {
    {"value-variant-copies-a-text", "The text that CreateString was given is written over afterwards.",
     "CreateString makes a string of its own that holds a copy of the text.", CopiesATextFromCharacters},
    {"value-variant-null-text-is-the-empty-text", "CreateString is called with a null text.",
     "A null text counts as the empty text.", TakesNullAsTheEmptyText},
    {"value-variant-shares-its-string", "GetString is asked of a variant made by CreateStringFromIString.",
     "The variant shares the very string that it was given, also one of another module: it makes no copy.",
     SharesAString},
    {"value-variant-counts-its-string", "The references of a shared string are counted, also after the variant's end.",
     "A variant holds exactly one reference on its string, adds one for each caller of GetString, and releases its "
     "own.",
     CountsItsString},
    {"value-variant-string-outlives-it", "A string is read after the variant that gave it is gone.",
     "What GetString gives belongs to the caller and outlives the variant.", LeavesItsStringBehind},
    {"value-variant-shares-its-object", "GetObject is asked of an object variant.",
     "The variant gives the very object that it was made of, by the same face.", SharesAnObject},
    {"value-variant-counts-its-object", "The references of an object are counted, also after the variant's end.",
     "A variant holds exactly one reference on its object, adds one for each caller of GetObject, and releases its "
     "own.",
     CountsItsObject},
    {"value-variant-keeps-its-object-alive", "The only other reference on an object is released.",
     "An object lives as long as its variant, and no longer when nobody else holds it.", KeepsItsObjectAlive},
    {"value-variant-holds-another-variant", "An object variant is made of an int variant.",
     "Every IObject is a value, also another variant.", HoldsAnotherVariant},
    {"value-variant-holds-null", "An object variant is made of null and read.",
     "Null is a value of an object variant: GetObject gives 0 and writes null to its out.", HoldsNull},
    {"value-variant-null-out-leaves-no-reference", "Creations that share are called with a null out.",
     "A variant that cannot be handed out is given up, together with its reference on what it shares.",
     LeavesNothingBehindForANullOut},
};

}  // namespace

extern const Family SharedByVariantFamily = {"values", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
