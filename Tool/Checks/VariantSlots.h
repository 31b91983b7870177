// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/SlotsOfObjects.h"

#include <string>
#include <vector>

// The operations of IVariant, called by their numbers, with the answer as a text: the result, and the value when there is one.
namespace tvx::check
{

std::string AskTypeSlot(void* variant);
std::string AskBoolSlot(void* variant);
std::string AskIntSlot(void* variant);
std::string AskFloatSlot(void* variant);
std::string AskDoubleSlot(void* variant);
std::string AskStringSlot(void* variant);
std::string AskObjectSlot(void* variant);

// The values of the variants that are asked, each in the form in which it is told. A bool and an integer that change places are
// the same, and those of numbers with a fraction cannot be taken for the address of an object.
constexpr std::int32_t IntSample = 1;
constexpr float FloatSample = 0.1F;
constexpr double DoubleSample = 0.1;
constexpr const char TextSample[] = "text";

// What AskStringSlot tells of a string whose own table is wrong: that has checks of its own.
constexpr const char UnreadableString[] = "0 a string without a text";

// A variant of a type with its sample for a value, read back by the factory, or made by it; null when it gives none.
Ref<IVariant> ReadSample(Trial& trial, std::int32_t type);
Ref<IVariant> MakeSample(Trial& trial, std::int32_t type);

// One of the two; fails the check when neither can be had.
Ref<IVariant> GetSample(Trial& trial, std::int32_t type);

// What a variant writes. Skips the check when it calls the writer for nothing.
std::vector<std::string> WriteVariant(Trial& trial, const Ref<IVariant>& variant);

}  // namespace tvx::check
