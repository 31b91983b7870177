// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/ExportTable.h"
#include "Helpers/Singleton.h"
#include "Interfaces/IObject.h"
#include "Platform/Export.h"

namespace tvx::bad
{

// What Plain.plugcfg.xml names: an export that no check knows more of than of any other.
constexpr const char PlainId[] = "com.talvere.test.Plain/1.0";

// An object that keeps every promise.
class Plain final : public ClassImpl<Plain, IObject>, public Singleton<Plain, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;
};

}  // namespace tvx::bad
