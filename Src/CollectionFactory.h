// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Singleton.h"
#include "Helpers/TVXPluginImpl.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/ISerializable.h"

namespace tvx
{

// The collection export: makes collections and reads them back. It is also the module's plug-in object, which tells the
// metadata that the host has given it.
class CollectionFactory final : public ClassImpl<CollectionFactory, ICollectionFactory, TVXPluginImpl, IDeserializable>,
                                public Singleton<CollectionFactory, ICollectionFactory>
{
public:
    using Interfaces =
        InterfaceList<ICollectionFactory, IObject, IObjectBase, IDeserializable, ITVXPlugin, IConstTVXPlugin>;

    // The metadata map is released before "Destroyed" fires.
    ~CollectionFactory();

    Result CreateCollection(ICollection** out) override;

    Result GetFormatId(IString** out) override;

    // Gives -1, with a report, for a failed read and for an item that is null or has no IObject face, and -4, with a
    // report, for a null pointer. An item that the collection cannot grow for is left out, which is no failure here.
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override;
};

}  // namespace tvx
