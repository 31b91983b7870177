// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/VariantArrayBench.h"

namespace tvx::check
{

namespace
{

void IsNull(Trial& trial, IVariantArray& array, std::uint32_t index)
{
    const auto mark = MakeArrayElement(trial);
    IVariant* out = mark.Get();
    trial.Gives("GetAt of a null element", array.GetAt(index, &out), TVX_OK);
    trial.Same("the out of GetAt of a null element", out, nullptr);
}

void IsBornEmpty(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    trial.Equal("the references on a new array", array->GetRefCount(), 1u);
    HasArraySize(trial, *array, 0);
}

void SharesAppendedVariants(Trial& trial)
{
    const auto variant = MakeArrayElement(trial);
    auto array = MakeVariantArray(trial);
    for (const std::uint32_t index : {0u, 1u})
    {
        trial.Gives("AppendVariant", array->AppendVariant(variant.Get()), TVX_OK);
        trial.Equal("the references on a variant that was appended", variant->GetRefCount(), index + 2);
        trial.Same("the element", GetArrayElement(trial, *array, index).Get(), variant.Get());
    }
    array = nullptr;
    trial.Equal("the references on a variant after the array's death", variant->GetRefCount(), 1u);
}

void TakesNullVariants(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    trial.Gives("AppendInt", array->AppendInt(1), TVX_OK);
    trial.Gives("AppendVariant of null", array->AppendVariant(nullptr), TVX_OK);
    HasArraySize(trial, *array, 2);
    IsNull(trial, *array, 1);
}

void GivesElementsWithAReference(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    trial.Gives("AppendInt", array->AppendInt(1), TVX_OK);
    const auto first = GetArrayElement(trial, *array, 0);
    trial.Equal("the references on an element that was asked for", first->GetRefCount(), 2u);
    const auto second = GetArrayElement(trial, *array, 0);
    trial.Same("an element that is asked for again", second.Get(), first.Get());
    trial.Equal("the references on an element that was asked for twice", first->GetRefCount(), 3u);
}

void RefusesANullOutForAnElement(Trial& trial)
{
    const auto variant = MakeArrayElement(trial);
    const auto array = MakeVariantArray(trial);
    trial.Gives("AppendVariant", array->AppendVariant(variant.Get()), TVX_OK);
    trial.Gives("AppendVariant of null", array->AppendVariant(nullptr), TVX_OK);
    for (const std::uint32_t index : {0u, 1u})
        trial.Gives("GetAt of an element with a null out", array->GetAt(index, nullptr), TVX_E_POINTER);
    trial.Equal("the references on an element that nobody received", variant->GetRefCount(), 2u);
}

void GrowsToAThousand(Trial& trial)
{
    constexpr std::int32_t count = 1000;
    const auto array = MakeVariantArray(trial);
    for (std::int32_t value = 0; value < count; ++value)
        trial.Equal("AppendInt of one of a thousand", array->AppendInt(value), TVX_OK);
    HasArraySize(trial, *array, count);
    for (std::int32_t value = 0; value < count; ++value)
    {
        std::int32_t came = -1;
        Ref<IVariant> element;
        array->GetAt(static_cast<std::uint32_t>(value), element.Receive());
        if (element)
            element->GetInt(&came);
        trial.Equal("one of a thousand ints", came, value);
    }
}

void LetsElementsOutliveIt(Trial& trial)
{
    auto array = MakeVariantArray(trial);
    trial.Gives("AppendString", array->AppendString("text"), TVX_OK);
    const auto element = GetArrayElement(trial, *array, 0);
    array = nullptr;
    trial.Equal("the references on an element after the array's death", element->GetRefCount(), 1u);
    const auto text = Make<IString>(trial, "GetString of it", [&](IString** out) { return element->GetString(out); });
    trial.Equal("the text of an element after the array's death", text->GetText(), "text");
}

void SharesNothingWithOthers(Trial& trial)
{
    const auto first = MakeVariantArray(trial);
    const auto second = MakeVariantArray(trial);
    trial.Gives("AppendInt", first->AppendInt(1), TVX_OK);
    HasArraySize(trial, *first, 1);
    HasArraySize(trial, *second, 0);
}

void RefusesANullOut(Trial& trial)
{
    const auto factory = trial.Get<IFactory>(VariantArrayExport);
    trial.Gives("Create of an array with a null out", factory->Create(nullptr), TVX_E_POINTER);
}

void ReportsANullOutOfGetSize(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    trial.Reports("GetSize with a null out", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                  [&] { return array->GetSize(nullptr); });
}

void ReportsGetAtBeyondTheEnd(Trial& trial)
{
    const auto mark = MakeArrayElement(trial);
    const auto array = MakeVariantArray(trial);
    for (const std::uint32_t size : {0u, 1u, 2u, 3u})
    {
        for (const std::uint32_t index : {size, size + 1, 0xFFFFFFFFu})
        {
            IVariant* out = mark.Get();
            trial.Reports("GetAt(" + Show(index) + ") of " + Show(size), "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                          [&] { return array->GetAt(index, &out); });
            trial.Same("the out of GetAt beyond the end, which is left alone,", out, mark.Get());
        }
        trial.Gives("AppendInt", array->AppendInt(1), TVX_OK);
    }
}

void LooksAtTheIndexBeforeOut(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    for (const std::int32_t value : {1, 2, 3})
        trial.Gives("AppendInt", array->AppendInt(value), TVX_OK);
    trial.Reports("GetAt(5) of 3 with a null out", "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                  [&] { return array->GetAt(5, nullptr); });
}

constexpr Check Checks[] = {
    {"value-variant-array-is-born-empty", "A new array is asked for its size.",
     "Create gives an array without elements, with the caller's one reference.", IsBornEmpty},
    {"value-variant-array-shares-appended-variants", "A variant is appended twice, and the array released.",
     "AppendVariant gives 0 and appends the variant itself, not a copy, with one reference for each place.",
     SharesAppendedVariants},
    {"value-variant-array-takes-null-variants", "A null variant is appended.",
     "AppendVariant of null appends a null element: GetAt gives 0 and writes null.", TakesNullVariants},
    {"value-variant-array-get-at-adds-a-reference", "An element is asked for twice.",
     "GetAt gives 0, the very variant each time, and one reference for the caller.", GivesElementsWithAReference},
    {"value-variant-array-get-at-refuses-null-out", "GetAt of an element is called with a null out.",
     "For an index that is there a null out gives -4 without a report.", RefusesANullOutForAnElement},
    {"value-variant-array-grows-to-a-thousand", "A thousand ints are appended and read.",
     "An array grows as elements come, and keeps their order.", GrowsToAThousand},
    {"value-variant-array-elements-outlive-it", "An array is released before one of its elements.",
     "The array releases each element once when it is destroyed; those held elsewhere live on.", LetsElementsOutliveIt},
    {"value-variant-array-arrays-are-independent", "Two arrays are made and one of them is appended to.",
     "Each Create makes an array of its own.", SharesNothingWithOthers},
    {"value-variant-array-factory-refuses-null-out", "Create is called with a null out.",
     "A null out gives -4 without a report.", RefusesANullOut},
};

constexpr Check ReportChecks[] = {
    {"report-variant-array-get-size-null-out", "GetSize is called with a null out.",
     "A null out gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL.", ReportsANullOutOfGetSize},
    {"report-variant-array-get-at-beyond-the-end", "GetAt is called with indices that are not there.",
     "An index not below the size gives -1 with a report of TVX_RETURN_FAIL_IF, and out is left alone.",
     ReportsGetAtBeyondTheEnd},
    {"report-variant-array-get-at-checks-the-index-first", "GetAt is called beyond the end with a null out.",
     "The index is checked before out: -1 with a report, not the silent -4 of a null out.", LooksAtTheIndexBeforeOut},
};

}  // namespace

extern const Family ValuesOfVariantArrayFamily = {"values", VariantArrayExport, Needs::Module, Checks};
extern const Family ReportsOfVariantArrayFamily = {"report-lines", VariantArrayExport, Needs::Module, ReportChecks};

}  // namespace tvx::check
