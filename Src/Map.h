// SPDX-License-Identifier: MIT
#pragma once

#include "BasicInterfaceImplementations/Include/Map.h"
#include "Helpers/Singleton.h"
#include "Src/String.h"

namespace tvx
{

using Map = BasicMap<String>;

// The dictionary export: makes dictionaries and reads them back. Keeps no state; any thread.
class MapFactory final : public ClassImpl<MapFactory, IMapFactory, IDeserializable>,
                         public Singleton<MapFactory, IMapFactory>
{
public:
    using Interfaces = InterfaceList<IMapFactory, IObject, IObjectBase, IDeserializable>;

    Result CreateMap(IMap** out) override;

    Result GetFormatId(IString** out) override;

    // Gives -1, with a report, for a failed read and for an item that is null or has no IObject face, and -4, with a
    // report, for a null pointer. An odd last item is ignored; of a key that stands twice the later value stays.
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override;
};

}  // namespace tvx
