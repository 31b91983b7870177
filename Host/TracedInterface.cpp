// SPDX-License-Identifier: MIT
#include "Host/TracedInterface.h"

#include "Host/TracedFace.h"
#include "Host/TracedSlots.h"
#include "Platform/OperationTable.h"

#include <algorithm>

namespace tvx::host
{

namespace
{

template <class Interface, class Base, auto... Operations>
const TracedInterface& Describe(const SlotList<Base, Operations...>&);

template <class Interface>
const TracedInterface& DescribeInterface()
{
    return Describe<Interface>(SlotsOf<Interface>());
}

template <class Interface>
constexpr std::size_t CountSlots();

template <class Base, auto... Operations>
constexpr std::size_t CountSlots(const SlotList<Base, Operations...>&)
{
    return CountSlots<Base>() + sizeof...(Operations);
}

template <class Interface>
constexpr std::size_t CountSlots()
{
    if constexpr (std::is_void_v<Interface>)
        return 0;
    else
        return CountSlots(SlotsOf<Interface>());
}

template <class Base>
const TracedInterface* GetBase()
{
    if constexpr (std::is_void_v<Base>)
        return nullptr;
    else
        return &DescribeInterface<Base>();
}

template <class Interface>
constexpr const char* GetId()
{
    return SlotsOf<Interface>::HasId ? Interface::Id : nullptr;
}

// The slots of the base, then those of the interface's own.
template <class Interface, class Base, auto... Operations>
auto MakeTable()
{
    Platform::OperationTable<CountSlots<Interface>()> table = {0, &typeid(Interface), {}};
    auto* place = table.slots.data();
    if constexpr (!std::is_void_v<Base>)
        place = std::copy_n(DescribeInterface<Base>().slots, CountSlots<Base>(), place);
    ((*place++ = TracedFace::GetCode<Operations>()), ...);
    return table;
}

// Nothing here has a destructor: faces may be used until the process has ended.
template <class Interface, class Base, auto... Operations>
const TracedInterface& Describe(const SlotList<Base, Operations...>&)
{
    static const auto table = MakeTable<Interface, Base, Operations...>();
    static const TracedInterface described = {&typeid(Interface), GetId<Interface>(), GetBase<Base>(),
                                              table.slots.data()};
    return described;
}

template <class... Interfaces>
std::span<const TracedInterface* const> ListInterfaces(const InterfaceNames<Interfaces...>&)
{
    static const TracedInterface* const interfaces[] = {&DescribeInterface<Interfaces>()...};
    return interfaces;
}

}  // namespace

template <class Interface>
const TracedInterface& GetTracedInterface()
{
    return DescribeInterface<Interface>();
}

std::span<const TracedInterface* const> GetTracedInterfaces()
{
    return ListInterfaces(TracedInterfaceNames());
}

const TracedInterface* FindTracedInterface(std::string_view id)
{
    const auto interfaces = GetTracedInterfaces();
    const auto isMeant = [id](const TracedInterface* known) { return known->id != nullptr && id == known->id; };
    const auto found = std::find_if(interfaces.begin(), interfaces.end(), isMeant);
    return found == interfaces.end() ? nullptr : *found;
}

}  // namespace tvx::host
