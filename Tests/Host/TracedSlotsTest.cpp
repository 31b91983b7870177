// SPDX-License-Identifier: MIT
#include "Host/TracedSlots.h"

#include "Host/OperationName.h"
#include "Host/TracedInterface.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

namespace tvx::host
{
namespace
{

// Interface and slot, with the operation that stands there.
using Slots = std::map<std::pair<std::string, int>, std::string>;

// Which class the frozen list names where the tracer has an interface for operations behind the published ones, and
// which name it has for an operation that is overloaded.
std::string GetType(std::string_view listed)
{
    if (listed == "SimpleMap" || listed == "Collection")
        return "I" + std::string(listed) + "Events";
    return std::string(listed);
}

std::string GetOperation(std::string_view listed)
{
    return listed == "GetConstUserData" ? "GetUserData" : std::string(listed);
}

Slots GetFrozenSlots()
{
    Slots slots;
    const auto add = [&](const char* type, const char* operation, int slot)
    { slots.emplace(std::pair(GetType(type), slot), GetType(type) + "::" + GetOperation(operation)); };
#define TVX_SLOT(result, type, operation, slot, parameters, arguments) add(#type, #operation, slot);
#define TVX_VOID_SLOT(type, operation, slot, parameters, arguments) add(#type, #operation, slot);
#define TVX_HOLDER_SLOT(type, operation, slot, parameters, arguments) add(#type, #operation, slot);
#include "Tool/Checks/Slots.inc"
    return slots;
}

template <class Interface>
int AddSlots(Slots& slots);

template <class Interface, class Base, auto... Operations>
int AddOwnSlots(Slots& slots, const SlotList<Base, Operations...>&)
{
    int slot = 0;
    if constexpr (!std::is_void_v<Base>)
    {
        Slots ofBase;
        slot = AddSlots<Base>(ofBase);
    }
    const auto type = Platform::GetClassName(typeid(Interface));
    const auto name = type.substr(type.rfind(':') + 1);
    ((slots[{name, ++slot}] = GetOperationName<Operations>()), ...);
    return slot;
}

// Gives the number of the last slot.
template <class Interface>
int AddSlots(Slots& slots)
{
    return AddOwnSlots<Interface>(slots, SlotsOf<Interface>());
}

template <class... Interfaces>
Slots GetTracedSlots(const InterfaceNames<Interfaces...>&)
{
    Slots slots;
    (AddSlots<Interfaces>(slots), ...);
    return slots;
}

TEST(TracedSlots, AreTheFrozenOnes)
{
    EXPECT_EQ(GetTracedSlots(TracedInterfaceNames()), GetFrozenSlots());
}

TEST(TracedSlots, AreFoundByTheIdentifierOfTheInterface)
{
    EXPECT_EQ(*FindTracedInterface(ISimpleMap::Id)->type, typeid(ISimpleMap));
    EXPECT_EQ(*FindTracedInterface(IObjectBase::Id)->type, typeid(IObjectBase));
    EXPECT_TRUE(FindTracedInterface(ICollection2::Id)->IsA(*FindTracedInterface(ICollection::Id)));
    EXPECT_FALSE(FindTracedInterface(ICollection::Id)->IsA(*FindTracedInterface(ICollection2::Id)));
    EXPECT_EQ(FindTracedInterface("com.example.IUnknown/1.0"), nullptr);
}

TEST(TracedSlots, HaveTheTypeInFrontThatTheLanguageLooksFor)
{
    for (const auto* const known : GetTracedInterfaces())
    {
        EXPECT_EQ(known->slots[-1], known->type);
        EXPECT_EQ(known->slots[-2], nullptr);
    }
}

}  // namespace
}  // namespace tvx::host
