// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/HandOut.h"
#include "Src/Collection.h"
#include "Src/CollectionFactory.h"

namespace tvx::bad
{

constexpr const char CollectionId[] = "com.talvere.general.tvx.GenericCollectionImplementation/1.1";

// The collection export, with collections of the class Made and what a class derived from Plugin says of itself. What is read
// back is real ones.
template <class Made, class Plugin = TVXPluginImpl>
class CollectionsOf final : public ClassImpl<CollectionsOf<Made, Plugin>, ICollectionFactory, Plugin, IDeserializable>,
                            public Singleton<CollectionsOf<Made, Plugin>, ICollectionFactory>
{
public:
    using Interfaces =
        InterfaceList<ICollectionFactory, IObject, IObjectBase, IDeserializable, ITVXPlugin, IConstTVXPlugin>;

    ~CollectionsOf() { Plugin::SetMetadataMap(nullptr); }

    Result CreateCollection(ICollection** out) override { return HandOutNew<Made>(out); }
    Result GetFormatId(IString** out) override { return CollectionFactory::GetOrMake()->GetFormatId(out); }
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override
    {
        return CollectionFactory::GetOrMake()->Deserialize(reader, out);
    }
};

}  // namespace tvx::bad
