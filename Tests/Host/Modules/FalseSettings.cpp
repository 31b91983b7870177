// SPDX-License-Identifier: MIT
#include "Helpers/TVXPluginImpl.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISerializerFactory.h"
#include "Platform/Export.h"
#include "Src/Collection.h"
#include "Src/Map.h"
#include "Tests/Host/Modules/FalseMap.h"
#include "Tests/Host/Modules/TestModule.h"
#include "Tests/Support/Doubles.h"

namespace
{

using namespace tvx;
using test::GivesNull;

// The export of settings maps makes objects of another sort, or, when a call of its maps is to go wrong, such maps.
class FalseFactory final : public ClassImpl<FalseFactory, IFactory>
{
public:
    using Interfaces = InterfaceList<IFactory, IObject, IObjectBase>;

    Result Create(IObjectBase** out) override
    {
        if (test::GetFalseCall() != nullptr)
        {
            HandOut(static_cast<ISimpleMap*>(MakeRef<test::FalseMap>().Get()), out);
            return TVX_OK;
        }
        Platform::WriteLine({"FalseSettings: makes something else"});
        HandOut(MakeRef<test::BareObject>().Get(), out);
        return TVX_OK;
    }
};

class FalseCollections final : public ClassImpl<FalseCollections, ICollectionFactory, TVXPluginImpl>
{
public:
    using Interfaces = InterfaceList<ICollectionFactory, IObject, IObjectBase, ITVXPlugin, IConstTVXPlugin>;

    Result CreateCollection(ICollection** out) override
    {
        return GivesNull("CreateCollection") ? TVX_OK : HandOutNew<Collection>(out);
    }
    Result GetName(IString** out) override { return GivesNull("GetName") ? TVX_S_VALUE : TVXPluginImpl::GetName(out); }
};

class FalseDictionaries final : public ClassImpl<FalseDictionaries, IMapFactory>
{
public:
    using Interfaces = InterfaceList<IMapFactory, IObject, IObjectBase>;

    Result CreateMap(IMap** out) override { return GivesNull("CreateMap") ? TVX_OK : HandOutNew<Map>(out); }
};

// Makes nothing at all, and says that it did.
class FalseSerializers final : public ClassImpl<FalseSerializers, ISerializerFactory>
{
public:
    using Interfaces = InterfaceList<ISerializerFactory, IObject, IObjectBase>;

    Result CreateSerializer(ISerializer**) override { return TVX_OK; }
    Result CreateDeserializer(IDeserializer**) override { return TVX_OK; }
};

test::TestModule testModule(
    "FalseSettings",
    {{"com.talvere.general.tvx.GenericSimpleMapImplementation/1.1", test::Always(MakeRef<FalseFactory>())},
     {"com.talvere.general.tvx.GenericCollectionImplementation/1.1",
      test::Always(Ref<ICollectionFactory>(MakeRef<FalseCollections>()))},
     {"com.talvere.general.tvx.GenericMapImplementation/1.1", test::Always(MakeRef<FalseDictionaries>())},
     {"com.talvere.serializers.JSONSerializerContract/1.0", test::Always(MakeRef<FalseSerializers>())}});

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return testModule.GetExport(id, out);
}
