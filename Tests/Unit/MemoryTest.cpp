// SPDX-License-Identifier: MIT
#include "Src/CVariantArray.h"
#include "Src/Collection.h"
#include "Src/CollectionFactory.h"
#include "Src/Map.h"
#include "Src/SimpleMapFactory.h"
#include "Src/StringFactory.h"
#include "Src/Variant.h"
#include "Src/VariantFactory.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MemoryTesting.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>

// Operations that fail as a whole for want of memory: silently, with their code, and with everything as it was before.
namespace tvx::test
{

namespace
{

// Too long for what a settings map still has room for, whose shorter entries need no memory of their own.
constexpr auto VastText = []
{
    std::array<char, 1001> text{};
    text.fill('k');
    text.back() = '\0';
    return text;
}();

// What the operations work on, new for every attempt. Arrays are as full as they are large.
struct World
{
    World()
    {
        pending->SetString("key", "value");
        pairs->items = {std::string(LongText), Ref<IObjectBase>(object)};
        texts->items = {std::string(LongText), std::string(OtherText)};
        elements->named = {{"size", 1}, {"param0", Ref<IObjectBase>(static_cast<IVariant*>(variant.Get()))}};
        dictionary->SetValue("key", object.Get());
        collection->Add(object.Get());
        while (collection->GetCount() < 8)  // what it has room for before it grows
            collection->Add(nullptr);
        array->AppendVariant(variant.Get());
        map->SubscribeChanged(handler.Get(), 0, true);
        map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
        pending->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
        collection->SubscribeItemAdded(handler.Get(), 0, true);
        collection->SubscribeUpdated(handler.Get(), 0, true);
    }

    // Everything that an operation might change: contents, modes, events, counts of references.
    std::string Describe()
    {
        std::string text;
        for (SimpleMap* const described : {map.Get(), pending.Get()})
            text += testing::PrintToString(Entries(*described)) + (IsBatchUpdating(*described) ? " batch " : " ");
        text += testing::PrintToString(handler->heard) + DescribeContainers();
        for (IObjectBase* const counted :
             {static_cast<IObjectBase*>(object.Get()), static_cast<IObjectBase*>(string.Get()),
              static_cast<IObjectBase*>(static_cast<IVariant*>(variant.Get())),
              static_cast<IObjectBase*>(static_cast<ISimpleMap5*>(map.Get())),
              static_cast<IObjectBase*>(static_cast<IMap*>(dictionary.Get()))})
            text += " " + std::to_string(counted->GetRefCount());
        return text;
    }

    std::string DescribeContainers()
    {
        Ref<IObject> value;
        Ref<IObject> first;
        std::uint32_t size = 0;
        dictionary->GetValue("key", value.Receive());
        collection->GetItem(0, first.Receive());
        array->GetSize(&size);
        return std::string(value.Get() == object.Get() ? " value" : " no value") +
               (first.Get() == object.Get() ? " first" : " not first") + " of " +
               std::to_string(collection->GetCount()) + " and " + std::to_string(size);
    }

    Ref<ProbeObject> object = MakeRef<ProbeObject>();
    Ref<IString> string = MakeString("text");
    Ref<BoolVariant> variant = MakeRef<BoolVariant>(true);
    Ref<QuietHandler> handler = MakeRef<QuietHandler>();
    Ref<QuietReader> pairs = MakeRef<QuietReader>();
    Ref<QuietReader> texts = MakeRef<QuietReader>();
    Ref<QuietReader> elements = MakeRef<QuietReader>();

    Ref<SimpleMap> map = MakeImmediateMap({{"key", "value"}, {"path\\key", LongText}});
    Ref<SimpleMap> pending = MakeMap();
    Ref<Map> dictionary = MakeRef<Map>();
    Ref<Collection> collection = MakeRef<Collection>();
    Ref<CVariantArray> array = MakeRef<CVariantArray>();

    Ref<StringFactory> strings = MakeRef<StringFactory>();
    Ref<VariantFactory> variants = VariantFactory::GetOrMake();
    Ref<MapFactory> dictionaries = MakeRef<MapFactory>();
    Ref<CSimpleMapFactory> maps = CSimpleMapFactory::GetOrMake();
    Ref<CSimpleMapFactory> importer = MakeRef<CSimpleMapFactory>();
    Ref<CollectionFactory> collections = MakeRef<CollectionFactory>();
    Ref<CVariantArrayFactory> arrays = CVariantArrayFactory::GetOrMake();
};

// An operation, and what it answers without memory and with it.
struct Row
{
    const char* name;
    Result (*call)(World& world);
    Result failed = TVX_E_POINTER;
    Result done = TVX_OK;
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.name;
}

// Calls with a marked place: it must be written to exactly when the call succeeds.
template <class Interface, class Call>
Result Deliver(Call&& call)
{
    MarkedOut<Interface> out;
    const Result result = call(out.Get());
    const OwnMemory memory;
    EXPECT_EQ(out.IsWritten(), !TVX_FAILED(result));
    return result;
}

// A creation operation of factory that takes nothing but the place for what it makes.
template <class Class, class Made, class Interface>
Result Create(const Ref<Class>& factory, Result (Made::*operation)(Interface** out))
{
    return Deliver<Interface>([&](Interface** out) { return (factory.Get()->*operation)(out); });
}

template <class Class>
Result Deserialize(const Ref<Class>& factory, const Ref<QuietReader>& reader)
{
    return Deliver<IObjectBase>([&](IObjectBase** out) { return factory->Deserialize(reader.Get(), out); });
}

template <class Value>
Result CreateVariant(World& world, Result (IVariantFactory::*operation)(Value value, IVariant** out), Value value)
{
    return Deliver<IVariant>([&](IVariant** out) { return (world.variants.Get()->*operation)(value, out); });
}

constexpr Row Rows[] = {
    {"SettingsSetStringOfANewKey", [](World& world) { return world.map->SetString(VastText.data(), LongText); }},
    {"SettingsSetStringOfAnOldKey", [](World& world) { return world.map->SetString("key", LongText); }},
    {"SettingsSetInt", [](World& world) { return world.map->SetInt(VastText.data(), 1); }},
    {"SettingsSetDouble", [](World& world) { return world.map->SetDouble(VastText.data(), 1.5); }},
    {"SettingsGetString",
     [](World& world) { return Deliver<IString>([&](IString** out) { return world.map->GetString("key", out); }); },
     TVX_E_POINTER, TVX_S_VALUE},
    {"SettingsGetIterator", [](World& world) { return Create(world.map, &ISimpleMap::GetIterator); }},
    {"SettingsGetIteratorNoSubMaps", [](World& world) { return Create(world.map, &ISimpleMap::GetIteratorNoSubMaps); }},
    {"SettingsGetSubMap",
     [](World& world)
     { return Deliver<ISimpleMap>([&](ISimpleMap** out) { return world.map->GetSubMap("path", out); }); },
     TVX_E_POINTER, TVX_S_VALUE},
    {"SettingsClone", [](World& world) { return Create(world.map, &ISimpleMap::Clone); }},
    {"SettingsSwitchToBatchUpdating", [](World& world) { return world.map->SetBatchUpdatingMode(true); }},
    {"SettingsSwitchFromBatchUpdating", [](World& world) { return world.pending->SetBatchUpdatingMode(false); }},
    {"SettingsGetFormatId", [](World& world) { return Create(world.map, &ISerializable::GetFormatId); }},
    {"UserDataSet", [](World& world) { return world.map->SetUserData(LongText, world.object.Get()); }},
    {"UserDataCreateIterator",
     [](World& world) { return Create(world.map, &IUserDataContainer::CreateUserDataIterator); }},
    {"UserDataGetIterator", [](World& world) { return world.map->GetUserDataIterator() ? TVX_OK : TVX_E_POINTER; }},
    {"ImportsSet", [](World& world) { return world.importer->SetImport(LongText, world.object.Get()); }},
    {"SettingsFactoryCreate", [](World& world) { return Create(world.maps, &IFactory::Create); }},
    {"SettingsFactoryGetFormatId", [](World& world) { return Create(world.maps, &IDeserializable::GetFormatId); }},
    {"SettingsFactoryDeserialize", [](World& world) { return Deserialize(world.maps, world.texts); }},
    {"StringFactoryCreate", [](World& world)
     { return Deliver<IString>([&](IString** out) { return world.strings->CreateString(LongText, out); }); }},
    {"VariantFactoryCreateBool", [](World& world) { return CreateVariant(world, &IVariantFactory::CreateBool, true); }},
    {"VariantFactoryCreateInt", [](World& world) { return CreateVariant(world, &IVariantFactory::CreateInt, 1); }},
    {"VariantFactoryCreateFloat",
     [](World& world) { return CreateVariant(world, &IVariantFactory::CreateFloat, 1.5F); }},
    {"VariantFactoryCreateDouble",
     [](World& world) { return CreateVariant(world, &IVariantFactory::CreateDouble, 1.5); }},
    {"VariantFactoryCreateStringFromIString",
     [](World& world) { return CreateVariant(world, &IVariantFactory::CreateStringFromIString, world.string.Get()); }},
    {"VariantFactoryCreateString",
     [](World& world) { return CreateVariant(world, &IVariantFactory::CreateString, LongText); }},
    {"VariantFactoryCreateObject",
     [](World& world) { return CreateVariant<IObject*>(world, &IVariantFactory::CreateObject, world.object.Get()); }},
    {"VariantFactoryGetFormatId", [](World& world) { return Create(world.variants, &IDeserializable::GetFormatId); }},
    {"VariantGetFormatId", [](World& world) { return Create(world.variant, &ISerializable::GetFormatId); }},
    {"DictionarySetValueOfANewKey",
     [](World& world) { return world.dictionary->SetValue(LongText, world.object.Get()); }},
    {"DictionaryGetFormatId", [](World& world) { return Create(world.dictionary, &ISerializable::GetFormatId); }},
    {"DictionaryFactoryCreate", [](World& world) { return Create(world.dictionaries, &IMapFactory::CreateMap); }},
    {"DictionaryFactoryGetFormatId",
     [](World& world) { return Create(world.dictionaries, &IDeserializable::GetFormatId); }},
    {"DictionaryFactoryDeserialize", [](World& world) { return Deserialize(world.dictionaries, world.pairs); }},
    {"CollectionAdd", [](World& world) { return world.collection->Add(world.object.Get()); }, TVX_E_FAIL},
    {"CollectionInsert", [](World& world) { return world.collection->Insert(0, nullptr); }, TVX_E_FAIL},
    {"CollectionGetFormatId", [](World& world) { return Create(world.collection, &ISerializable::GetFormatId); }},
    {"CollectionFactoryCreate",
     [](World& world) { return Create(world.collections, &ICollectionFactory::CreateCollection); }},
    {"CollectionFactoryGetFormatId",
     [](World& world) { return Create(world.collections, &IDeserializable::GetFormatId); }},
    {"ArrayAppendVariant", [](World& world) { return world.array->AppendVariant(world.variant.Get()); }},
    {"ArrayGetFormatId", [](World& world) { return Create(world.array, &ISerializable::GetFormatId); }},
    {"ArrayFactoryCreate", [](World& world) { return Create(world.arrays, &IFactory::Create); }},
    {"ArrayFactoryGetFormatId", [](World& world) { return Create(world.arrays, &IDeserializable::GetFormatId); }},
    {"ArrayFactoryDeserialize", [](World& world) { return Deserialize(world.arrays, world.elements); }},
};

class WantOfMemory : public testing::TestWithParam<Row>
{
};

}  // namespace

TEST_P(WantOfMemory, IsASilentFailureThatChangesNothing)
{
    const auto attempt = [](MemoryFailure failure)
    {
        World world;
        const auto before = world.Describe();
        const auto outcome = RunWith(failure, [&] { return GetParam().call(world); });
        EXPECT_EQ(outcome.result, outcome.failed ? GetParam().failed : GetParam().done) << failure.first;
        EXPECT_EQ(outcome.output, "");
        EXPECT_TRUE(!outcome.failed || world.Describe() == before) << world.Describe();
        return outcome.failed;
    };
    SweepFailures(attempt);
}

INSTANTIATE_TEST_SUITE_P(Operations, WantOfMemory, testing::ValuesIn(Rows),
                         [](const testing::TestParamInfo<Row>& row) { return std::string(row.param.name); });

}  // namespace tvx::test
