// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/ImportsContainerImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializerFactory.h"

namespace tvx
{

// The settings map export: makes maps, reads them back, and holds the import "Serializer" that every map uses to keep whole
// objects in entries.
class CSimpleMapFactory final
    : public ClassImpl<CSimpleMapFactory, IFactory, IDeserializable, ImportsContainerImpl<CSimpleMapFactory>>,
      public Singleton<CSimpleMapFactory, IFactory>
{
public:
    // The imports face answers only its own identifier.
    using Interfaces = InterfaceList<IImportsContainer, AnsweredBy<IObjectBase, IFactory>,
                                     AnsweredBy<IObject, IFactory>, IFactory, IDeserializable>;

    // The name of the one sequence in a settings map's document.
    static constexpr const char ValuesName[] = "Values";

    // The imports are released before "Destroyed" fires.
    ~CSimpleMapFactory();

    Result Create(IObjectBase** out) override;

    Result GetFormatId(IString** out) override;

    // Gives -1, with a report, when a read fails, and -4, with a report, for a null pointer. An odd last item is ignored.
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override;
};

}  // namespace tvx
