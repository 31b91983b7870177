// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/ImportsContainerImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISerializable.h"

namespace counting
{

// The export: makes counters and reads them back, with the help of the imports "SettingsMaps", "Logger" and "Strings".
class CounterFactory final : public tvx::ClassImpl<CounterFactory, tvx::IFactory, tvx::IDeserializable,
                                                   tvx::ImportsContainerImpl<CounterFactory>>,
                             public tvx::Singleton<CounterFactory, tvx::IFactory>
{
public:
    using Interfaces =
        tvx::InterfaceList<tvx::IFactory, tvx::IObject, tvx::IObjectBase, tvx::IDeserializable, tvx::IImportsContainer>;

    // The format identifier, as counters and this factory give it.
    static tvx::Result MakeFormatId(tvx::IString** out);

    // All fail with -1 and a report without the import that they need.
    tvx::Result Create(tvx::IObjectBase** out) override;
    tvx::Result GetFormatId(tvx::IString** out) override;
    tvx::Result Deserialize(tvx::IDeserializer* reader, tvx::IObjectBase** out) override;
};

}  // namespace counting
