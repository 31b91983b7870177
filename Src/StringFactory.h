// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/IString.h"

namespace tvx
{

// The string export. Keeps no state; any thread.
class StringFactory final : public ClassImpl<StringFactory, IStringFactory>,
                            public Singleton<StringFactory, IStringFactory>
{
public:
    // IObject is left out on purpose, as in the strings themselves.
    using Interfaces = InterfaceList<IStringFactory, IObjectBase>;

    Result CreateString(const char* text, IString** out) override;
};

}  // namespace tvx
