// SPDX-License-Identifier: MIT
#include "Tool/Checks/VariantArrayBench.h"

namespace tvx::check
{

void HasArraySize(Trial& trial, IVariantArray& array, std::uint32_t expected)
{
    std::uint32_t size = ~expected;
    trial.Gives("GetSize", array.GetSize(&size), TVX_OK);
    trial.Equal("GetSize", size, expected);
}

Ref<IVariant> GetArrayElement(Trial& trial, IVariantArray& array, std::uint32_t index)
{
    return Make<IVariant>(trial, "GetAt(" + Show(index) + ")", [&](IVariant** out) { return array.GetAt(index, out); });
}

Ref<IVariant> MakeArrayElement(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    trial.Gives("AppendInt", array->AppendInt(1), TVX_OK);
    return GetArrayElement(trial, *array, 0);
}

}  // namespace tvx::check
