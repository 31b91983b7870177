// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/HandOut.h"
#include "Helpers/Singleton.h"
#include "Src/String.h"

namespace tvx::bad
{

constexpr const char StringId[] = "com.talvere.general.tvx.GenericStringImplementation/1.0";

// The string export of Class, which makes the strings.
template <class Class>
class Strings : public ClassImpl<Class, IStringFactory>, public Singleton<Class, IStringFactory>
{
public:
    using Interfaces = InterfaceList<IStringFactory, IObjectBase>;

protected:
    ~Strings() = default;
};

}  // namespace tvx::bad
