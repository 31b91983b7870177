// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/ImportsContainerImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/ISerializerFactory.h"

namespace tvx::host
{

// The export of the JSON serializer's module: makes writers and readers, and holds the import "LibManager" through
// which every reader finds the factories of the objects that it reads. Any thread.
class JsonSerializerFactory final
    : public ClassImpl<JsonSerializerFactory, ISerializerFactory, ImportsContainerImpl<JsonSerializerFactory>>,
      public Singleton<JsonSerializerFactory, ISerializerFactory>
{
public:
    using Interfaces = InterfaceList<ISerializerFactory, IObject, IObjectBase, IImportsContainer>;

    static constexpr const char ExportId[] = "com.talvere.serializers.JSONSerializer/1.0";

    // The imports are released before "Destroyed" fires.
    ~JsonSerializerFactory();

    // Both give -4 without a line when out is null or memory is exhausted.
    Result CreateSerializer(ISerializer** out) override;
    Result CreateDeserializer(IDeserializer** out) override;
};

}  // namespace tvx::host
