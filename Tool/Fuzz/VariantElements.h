// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/Walk.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tvx::fuzz
{

constexpr std::int32_t OfNothing = 0;
constexpr std::int32_t OfBool = 1;
constexpr std::int32_t OfInt = 2;
constexpr std::int32_t OfFloat = 3;
constexpr std::int32_t OfDouble = 4;
constexpr std::int32_t OfString = 5;
constexpr std::int32_t OfObject = 6;
constexpr std::int32_t OfEmptyString = 7;

// What an element of a variant array was made from.
struct Element
{
    std::int32_t type = OfNothing;
    std::int32_t number = 0;
    std::size_t variant = 0;  // its number; an element that was appended again is the same variant
};

// An element, and the variant that it is, by type and value in the same words.
std::string Describe(const Element& due);
std::string Describe(IVariant& element, const ObjectPool& objects);

// An element that is held outside of the array, or nothing.
struct HeldElement
{
    Ref<IVariant> variant;
    Element element;
};

// A record of a few elements, of which some are missing, no variants, or held ones; and what it is read as.
Ref<check::ScriptedReader> MakeRecord(const Step& step, std::span<const HeldElement> held, const ObjectPool& objects,
                                      std::vector<Element>& due);

// The calls of one reading, and that nothing was kept of the record.
void CompareReading(check::Trial& trial, check::ScriptedReader& record);

}  // namespace tvx::fuzz
