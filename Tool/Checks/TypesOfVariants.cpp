// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

// A getter that is not of the variant's type gives -1 and leaves the mark in its out.
template <class Value>
void Refuses(Trial& trial, IVariant& variant, const std::string& what, Result (IVariant::*get)(Value*), Value mark)
{
    Value out = mark;
    trial.Gives(what, (variant.*get)(&out), TVX_E_FAIL);
    const auto place = "the out of a refused " + what + ", which stays untouched,";
    if constexpr (std::is_pointer_v<Value>)
        trial.Same(place, out, mark);
    else
        trial.Equal(place, out, mark);
}

void RefusesOthers(Trial& trial, const std::string& held, const Ref<IVariant>& variant, IVariant::Type own)
{
    const auto string = MakeRef<host::HostString>("mark");
    const auto object = MakeRef<ProbeObject>();
    const auto of = " of " + held;
    if (own != IVariant::TypeBool)
    {
        Refuses(trial, *variant, "GetBool" + of, &IVariant::GetBool, true);
        Refuses(trial, *variant, "GetBool" + of, &IVariant::GetBool, false);
    }
    if (own != IVariant::TypeInt)
        Refuses(trial, *variant, "GetInt" + of, &IVariant::GetInt, -77);
    if (own != IVariant::TypeFloat)
        Refuses(trial, *variant, "GetFloat" + of, &IVariant::GetFloat, -77.5f);
    if (own != IVariant::TypeDouble)
        Refuses(trial, *variant, "GetDouble" + of, &IVariant::GetDouble, -77.5);
    if (own != IVariant::TypeString)
        Refuses<IString*>(trial, *variant, "GetString" + of, &IVariant::GetString, string.Get());
    if (own != IVariant::TypeObject)
        Refuses<IObject*>(trial, *variant, "GetObject" + of, &IVariant::GetObject, object.Get());
}

void BoolRefusesOthers(Trial& trial)
{
    RefusesOthers(trial, "a bool variant", MakeBool(trial, true), IVariant::TypeBool);
    RefusesOthers(trial, "a bool variant of false", MakeBool(trial, false), IVariant::TypeBool);
}

void IntRefusesOthers(Trial& trial)
{
    RefusesOthers(trial, "an int variant", MakeInt(trial, 1), IVariant::TypeInt);
    RefusesOthers(trial, "an int variant of 0", MakeInt(trial, 0), IVariant::TypeInt);
}

void FloatRefusesOthers(Trial& trial)
{
    RefusesOthers(trial, "a float variant", MakeFloat(trial, 1.5f), IVariant::TypeFloat);
}

void DoubleRefusesOthers(Trial& trial)
{
    RefusesOthers(trial, "a double variant", MakeDouble(trial, 1.5), IVariant::TypeDouble);
}

void StringRefusesOthers(Trial& trial)
{
    RefusesOthers(trial, "a string variant of a number", MakeText(trial, "1"), IVariant::TypeString);
    RefusesOthers(trial, "a string variant of a word", MakeText(trial, "true"), IVariant::TypeString);
}

void ObjectRefusesOthers(Trial& trial)
{
    const auto inner = MakeInt(trial, 1);
    RefusesOthers(trial, "an object variant", MakeObject(trial, MakeRef<ProbeObject>().Get()), IVariant::TypeObject);
    RefusesOthers(trial, "an object variant of null", MakeObject(trial, nullptr), IVariant::TypeObject);
    RefusesOthers(trial, "an object variant of an int variant", MakeObject(trial, inner.Get()), IVariant::TypeObject);
}

constexpr Check Checks[] = {
    {"value-variant-bool-answers-get-bool-only", "Every other getter is asked of a bool variant.",
     "A bool is neither a number nor a text: the other getters give -1 without a report and leave out untouched.",
     BoolRefusesOthers},
    {"value-variant-int-answers-get-int-only", "Every other getter is asked of an int variant.",
     "An int converts neither to bool nor to float or double: the other getters give -1 without a report and leave out "
     "untouched.",
     IntRefusesOthers},
    {"value-variant-float-answers-get-float-only", "Every other getter is asked of a float variant.",
     "A float does not answer GetDouble either: the other getters give -1 without a report and leave out untouched.",
     FloatRefusesOthers},
    {"value-variant-double-answers-get-double-only", "Every other getter is asked of a double variant.",
     "A double is never narrowed: the other getters give -1 without a report and leave out untouched.",
     DoubleRefusesOthers},
    {"value-variant-string-answers-get-string-only", "Every other getter is asked of string variants.",
     "A text is not parsed, nor given as an object: the other getters give -1 without a report and leave out "
     "untouched.",
     StringRefusesOthers},
    {"value-variant-object-answers-get-object-only", "Every other getter is asked of object variants.",
     "Not even null or another variant is converted: the other getters give -1 without a report and leave out "
     "untouched.",
     ObjectRefusesOthers},
};

}  // namespace

extern const Family TypesOfVariantFamily = {"values", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
