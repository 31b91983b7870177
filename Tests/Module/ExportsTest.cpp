// SPDX-License-Identifier: MIT
#include "Interfaces/ICollection.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/IMap.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IString.h"
#include "Interfaces/IVariant.h"
#include "Interfaces/IVariantArray.h"
#include "Tests/Module/LoadedModule.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Threads/RunTogether.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace tvx::test
{

namespace
{

constexpr const char DictionaryExport[] = "com.talvere.general.tvx.GenericMapImplementation/1.1";
constexpr const char CollectionExport[] = "com.talvere.general.tvx.GenericCollectionImplementation/1.1";
constexpr const char VariantArrayExport[] = "com.talvere.general.tvx.GenericVariantArrayImplementation/1.0";

class ModuleExports : public testing::Test
{
protected:
    // Asks with a marked out: tells whether the answer is a silent -1 and a null out.
    testing::AssertionResult Refuses(const char* id)
    {
        const auto mark = MakeRef<BareObject>();
        IObjectBase* out = mark.Get();
        Result result = TVX_OK;
        const auto output = CaptureOutput([&] { result = module.GetExport(id, &out); });
        if (result == TVX_E_FAIL && out == nullptr && output.empty())
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "result " << result << ", out " << out << ", output \"" << output << '"';
    }

    Ref<ISimpleMap> MakeMap()
    {
        Ref<IObjectBase> made;
        module.Get<IFactory>(SimpleMapExport)->Create(made.Receive());
        return Query<ISimpleMap>(made);
    }

    // The format that an export reads.
    std::string FormatOf(const char* id)
    {
        Ref<IString> format;
        const auto result = module.Get<IDeserializable>(id)->GetFormatId(format.Receive());
        return result == TVX_OK ? format->GetText() : "none";
    }

    LoadedModule module;
};

}  // namespace

TEST_F(ModuleExports, GiveTheSameObjectEachTimeWithOneMoreReference)
{
    for (const char* const id : ServedExports)
    {
        Ref<IObjectBase> first;
        Ref<IObjectBase> second;
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(module.GetExport(id, first.Receive()), TVX_OK) << id; }), "");
        ASSERT_TRUE(first) << id;
        const auto count = first->GetRefCount();
        EXPECT_EQ(module.GetExport(id, second.Receive()), TVX_OK) << id;
        EXPECT_EQ(second.Get(), first.Get()) << id;
        EXPECT_EQ(first->GetRefCount(), count + 1) << id;
        second = nullptr;
        EXPECT_EQ(first->GetRefCount(), count) << id;
    }
}

TEST_F(ModuleExports, AreHeldByTheirSharedInstanceAndTheAskerAlone)
{
    for (const char* const id : ServedExports)
    {
        Ref<IObjectBase> object;
        module.GetExport(id, object.Receive());
        EXPECT_EQ(object->GetRefCount(), 2u) << id;
    }
}

TEST_F(ModuleExports, AreDifferentObjects)
{
    std::set<IObjectBase*> objects;
    for (const char* const id : ServedExports)
        EXPECT_TRUE(objects.insert(module.Get<IObjectBase>(id).Get()).second) << id;
}

TEST_F(ModuleExports, AreFoundByExactlyTheirIdentifier)
{
    for (const std::string id : ServedExports)
    {
        EXPECT_TRUE(Refuses((id + "0").c_str())) << id;
        EXPECT_TRUE(Refuses((id + " ").c_str())) << id;
        EXPECT_TRUE(Refuses(id.substr(0, id.size() - 1).c_str())) << id;
        EXPECT_TRUE(Refuses(id.substr(1).c_str())) << id;
        const auto version = id.rfind('/');
        for (const std::size_t at : {std::size_t{0}, id.rfind('.', version) + 1, version - 1})
        {
            auto other = id;
            other[at] = static_cast<char>(other[at] ^ 0x20);
            EXPECT_TRUE(Refuses(other.c_str())) << other;
        }
    }
}

TEST_F(ModuleExports, AreNotFoundByContractOrFormatOrInterface)
{
    for (const char* const id :
         {"com.talvere.general.tvx.StringContract/1.0", "com.talvere.general.tvx.SimpleMapContract/1.2",
          "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1", IStringFactory::Id, "", "GetExport"})
        EXPECT_TRUE(Refuses(id)) << id;
}

TEST_F(ModuleExports, RefuseANullIdentifier)
{
    EXPECT_TRUE(Refuses(nullptr));
}

TEST_F(ModuleExports, RefuseANullOutAlsoForAKnownIdentifier)
{
    Ref<IObjectBase> object;
    module.GetExport(StringExport, object.Receive());
    const auto count = object->GetRefCount();
    EXPECT_EQ(CaptureOutput(
                  [&]
                  {
                      EXPECT_EQ(module.GetExport(StringExport, nullptr), TVX_E_FAIL);
                      EXPECT_EQ(module.GetExport("unknown", nullptr), TVX_E_FAIL);
                      EXPECT_EQ(module.GetExport(nullptr, nullptr), TVX_E_FAIL);
                  }),
              "");
    EXPECT_EQ(object->GetRefCount(), count);
}

TEST_F(ModuleExports, AreGivenToManyThreadsAtOnce)
{
    RunTogether(
        [&](int number)
        {
            const char* const id = ServedExports[static_cast<std::size_t>(number) % std::size(ServedExports)];
            for (int i = 0; i < 200; ++i)
            {
                Ref<IObjectBase> object;
                EXPECT_EQ(module.GetExport(id, object.Receive()), TVX_OK);
                EXPECT_EQ(module.GetExport("unknown", object.Receive()), TVX_E_FAIL);
            }
        });
    for (const char* const id : ServedExports)
        EXPECT_EQ(module.Get<IObjectBase>(id)->GetRefCount(), 2u) << id;
}

TEST_F(ModuleExports, MakeStrings)
{
    const auto factory = module.Get<IStringFactory>(StringExport);
    Ref<IString> string;
    ASSERT_EQ(factory->CreateString("text", string.Receive()), TVX_OK);
    EXPECT_STREQ(string->GetText(), "text");
    EXPECT_TRUE(string->IsUnique());
}

TEST_F(ModuleExports, MakeVariantsAndDeclareThatTheyReadThem)
{
    const auto factory = module.Get<IVariantFactory>(VariantExport);
    Ref<IVariant> variant;
    ASSERT_EQ(factory->CreateInt(42, variant.Receive()), TVX_OK);
    std::int32_t value = 0;
    EXPECT_EQ(variant->GetInt(&value), TVX_OK);
    EXPECT_EQ(value, 42);
    Ref<IString> format;
    EXPECT_EQ(module.Get<IDeserializable>(VariantExport)->GetFormatId(format.Receive()), TVX_OK);
    EXPECT_STREQ(format->GetText(), "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1");
}

TEST_F(ModuleExports, MakeSettingsMaps)
{
    const auto map = MakeMap();
    EXPECT_EQ(map->SetInt("Camera\\Exposure", 250), TVX_OK);
    Ref<ISimpleMap> below;
    EXPECT_EQ(map->GetSubMap("Camera", below.Receive()), TVX_S_VALUE);
    std::int32_t value = 0;
    EXPECT_EQ(below->GetInt("Exposure", &value), TVX_OK);
    EXPECT_EQ(value, 250);
    EXPECT_TRUE(module.Get<IDeserializable>(SimpleMapExport));
    EXPECT_TRUE(module.Get<IImportsContainer>(SimpleMapExport));
}

TEST_F(ModuleExports, MakeDictionaries)
{
    Ref<IMap> map;
    ASSERT_EQ(module.Get<IMapFactory>(DictionaryExport)->CreateMap(map.Receive()), TVX_OK);
    const auto object = MakeRef<ProbeObject>();
    EXPECT_EQ(map->SetValue("key", object.Get()), TVX_OK);
    Ref<IObject> found;
    EXPECT_EQ(map->GetValue("key", found.Receive()), TVX_S_VALUE);
    EXPECT_EQ(found.Get(), object.Get());
    EXPECT_EQ(FormatOf(DictionaryExport), "com.talvere.general.tvx.GenericMapImplementationFormat/1.1");
}

TEST_F(ModuleExports, MakeCollections)
{
    Ref<ICollection> collection;
    ASSERT_EQ(module.Get<ICollectionFactory>(CollectionExport)->CreateCollection(collection.Receive()), TVX_OK);
    const auto object = MakeRef<ProbeObject>();
    const auto handler = MakeRef<RecordingHandler>();
    collection->SubscribeItemAdded(handler.Get(), 0, true);
    EXPECT_EQ(collection->Add(object.Get()), TVX_OK);
    EXPECT_EQ(handler->GetNames(), std::vector<std::string>{"ItemAdded"});
    Ref<IObject> found;
    EXPECT_EQ(collection->GetItem(0, found.Receive()), TVX_OK);
    EXPECT_EQ(found.Get(), object.Get());
    EXPECT_EQ(FormatOf(CollectionExport), "com.talvere.general.tvx.GenericCollectionImplementationFormat/1.0");
}

TEST_F(ModuleExports, MakeVariantArrays)
{
    Ref<IObjectBase> made;
    ASSERT_EQ(module.Get<IFactory>(VariantArrayExport)->Create(made.Receive()), TVX_OK);
    const auto array = Query<IVariantArray>(made);
    EXPECT_EQ(array->AppendInt(42), TVX_OK);
    Ref<IVariant> element;
    ASSERT_EQ(array->GetAt(0, element.Receive()), TVX_OK);
    std::int32_t value = 0;
    EXPECT_EQ(element->GetInt(&value), TVX_OK);
    EXPECT_EQ(value, 42);
    EXPECT_EQ(FormatOf(VariantArrayExport), "com.talvere.general.tvx.GenericVariantArrayImplementationFormat/1.0");
}

TEST_F(ModuleExports, ReportWithSourcePathsFromTheProjectsRoot)
{
    const auto map = MakeMap();
    const auto own = CaptureOutput([&] { EXPECT_EQ(map->SetString(nullptr, "value"), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(own, "TVX_RETURN_EPOINTER_IF_NULL", "Src/SimpleMap.cpp"));
    const auto imports = module.Get<IImportsContainer>(SimpleMapExport);
    const auto helper = CaptureOutput([&] { EXPECT_EQ(imports->SetImport(nullptr, nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(helper, "TVX_RETURN_EPOINTER_IF_NULL", "Helpers/ImportsContainerImpl.h"));
}

TEST_F(ModuleExports, SayThatAnImportIsMissing)
{
    const auto map = MakeMap();
    map->SetString("key", "an object's document");
    Ref<IObject> object;
    const auto output = CaptureOutput([&] { EXPECT_EQ(map->GetObject("key", object.Receive()), TVX_E_FAIL); });
    const std::string line = "LibManager: NULL object proxy returned for \"Serializer\".\n";
    ASSERT_TRUE(output.starts_with(line)) << output;
    EXPECT_TRUE(IsReport(output.substr(line.size()), "TVX_RETURN_FAIL_IF_NULL", "Src/SimpleMap.cpp"));
}

TEST_F(ModuleExports, ReleaseImportsOfTheHost)
{
    const auto object = MakeRef<ProbeObject>();
    const auto imports = module.Get<IImportsContainer>(SimpleMapExport);
    EXPECT_EQ(imports->SetImport("Serializer", object.Get()), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 2u);
    EXPECT_EQ(imports->ClearImports(), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST(ModuleImports, AreReleasedWhenTheModuleIsUnloaded)
{
    const auto object = MakeRef<ProbeObject>();
    {
        const LoadedModule module;
        module.Get<IImportsContainer>(SimpleMapExport)->SetImport("Serializer", object.Get());
    }
    EXPECT_EQ(object->GetRefCount(), 1u);
}

}  // namespace tvx::test
