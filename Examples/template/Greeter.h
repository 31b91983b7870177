// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/ImportsContainerImpl.h"
#include "Helpers/Singleton.h"
#include "IGreeter.h"
#include "Interfaces/IFactory.h"

namespace greeting
{

// Greets in English.
class Greeter final : public tvx::ClassImpl<Greeter, IGreeter>
{
public:
    using Interfaces = tvx::InterfaceList<IGreeter, tvx::IObject, tvx::IObjectBase>;

    tvx::Result Greet(const char* name, tvx::IString** out) override;
};

// The export: makes greeters, and holds the import "Strings" for all of them.
class GreeterFactory final
    : public tvx::ClassImpl<GreeterFactory, tvx::IFactory, tvx::ImportsContainerImpl<GreeterFactory>>,
      public tvx::Singleton<GreeterFactory, tvx::IFactory>
{
public:
    using Interfaces = tvx::InterfaceList<tvx::IFactory, tvx::IObject, tvx::IObjectBase, tvx::IImportsContainer>;

    tvx::Result Create(tvx::IObjectBase** out) override;
};

}  // namespace greeting
