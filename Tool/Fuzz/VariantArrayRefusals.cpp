// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/VariantArrayRefusals.h"

#include "Tool/Checks/Objects.h"
#include "Tool/Checks/SlotChecking.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/Refusals.h"

namespace tvx::fuzz
{

namespace
{

// What an array and its factory are called with to be refused.
struct Subject
{
    struct Outs
    {
        std::uint32_t size;
        IVariant* element;

        bool operator==(const Outs&) const = default;
    };

    IVariantArray& array;
    ISerializable& writing;
    IFactory& factory;
    IDeserializable& reading;
    std::uint32_t size;  // of the array
    Outs outs;
};

constexpr Refusal<Subject> Refused[] = {
    {"GetSize with a null out", NullPointer, TVX_E_POINTER, [](Subject& on) { return on.array.GetSize(nullptr); }},
    {"GetAt of the size", FailIf, TVX_E_FAIL, [](Subject& on) { return on.array.GetAt(on.size, &on.outs.element); }},
    {"GetAt far behind the end", FailIf, TVX_E_FAIL,
     [](Subject& on) { return on.array.GetAt(0xFFFFFFFF, &on.outs.element); }},
    {"GetAt behind the end with a null out", FailIf, TVX_E_FAIL,
     [](Subject& on) { return on.array.GetAt(on.size + 1, nullptr); }},
    {"GetFormatId of an array with a null out", Silent, TVX_E_POINTER,
     [](Subject& on) { return on.writing.GetFormatId(nullptr); }},
    {"GetFormatId of the factory with a null out", Silent, TVX_E_POINTER,
     [](Subject& on) { return on.reading.GetFormatId(nullptr); }},
    {"Create with a null out", Silent, TVX_E_POINTER, [](Subject& on) { return on.factory.Create(nullptr); }},
};

}  // namespace

void TryVariantArrayRefused(check::Trial& trial, const Ref<IVariantArray>& array, std::uint32_t size,
                            std::uint32_t number)
{
    const auto writing = trial.QueryAs<ISerializable>(array, "an array");
    const auto factory = trial.Get<IFactory>(check::VariantArrayExport);
    const auto reading = trial.Get<IDeserializable>(check::VariantArrayExport);
    const Ref<IVariant> mark(MakeRef<check::FixedVariant>(7));
    TryRefused(trial, Refused, number, Subject{*array, *writing, *factory, *reading, size, {number, mark.Get()}});
    CompareCount(trial, "what stood in the outs", *mark, 1);
}

}  // namespace tvx::fuzz
