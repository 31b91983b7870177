// SPDX-License-Identifier: MIT
#include "Helpers/ConfigurableImpl.h"
#include "Helpers/ImportsContainerImpl.h"
#include "Helpers/TVXPluginImpl.h"
#include "Src/SimpleMap.h"
#include "Tests/Abi/AbiTest.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/HostDoubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

using Calls = std::vector<std::string>;

constexpr Result Answer = -42;

class Configured final : public ClassImpl<Configured, ConfigurableImpl<Configured>>
{
public:
    using Interfaces = InterfaceList<IConfigurable, IObject, IObjectBase>;

    Result OnConfigure(IConfiguration* config)
    {
        seen = config;
        return Answer;
    }

    IConfiguration* seen = nullptr;
};

class Plugin final : public ClassImpl<Plugin, TVXPluginImpl>
{
public:
    using Interfaces = InterfaceList<ITVXPlugin, IConstTVXPlugin, IObject, IObjectBase>;
};

// Tells the two notifications apart.
class Importing final : public ClassImpl<Importing, ImportsContainerImpl<Importing>>
{
public:
    using Interfaces = InterfaceList<IImportsContainer, IObject, IObjectBase>;

    Result OnImportsSet() override { return 12; }
    Result OnImportsHook() override { return 13; }
};

}  // namespace

TEST(ConfigurationSlots, ReachTheOperationOfTheirNumber)
{
    const auto config = MakeRef<RecordingConfiguration>(Answer);
    void* const c = ToC<IConfiguration>(config);
    EXPECT_EQ(CallIConfigurationUnusedSlot11(c), Answer);
    EXPECT_EQ(CallIConfigurationGetBool(c, "b", nullptr, 1), Answer);
    EXPECT_EQ(CallIConfigurationGetInt(c, "i", nullptr, 2), Answer);
    EXPECT_EQ(CallIConfigurationUnusedSlot14(c), Answer);
    EXPECT_EQ(CallIConfigurationGetString(c, "s", nullptr, 0xFFFFFFFF), Answer);
    EXPECT_EQ(config->calls,
              (Calls{"UnusedSlot11", "GetBool b 1", "GetInt i 2", "UnusedSlot14", "GetString s 4294967295"}));
}

TEST(ConfigurableSlots, TakeTheConfiguration)
{
    const auto object = MakeRef<Configured>();
    const auto config = MakeRef<RecordingConfiguration>();
    EXPECT_EQ(CallIConfigurableSetConfiguration(ToC<IConfigurable>(object), ToC<IConfiguration>(config)), Answer);
    EXPECT_EQ(object->seen, config.Get());
}

TEST(ImportsContainerSlots, TakeImportsAndNotifications)
{
    const auto importing = MakeRef<Importing>();
    const auto object = MakeRef<BareObject>();
    void* const c = ToC<IImportsContainer>(importing);
    EXPECT_EQ(CallIImportsContainerSetImport(c, "name", ToC<IObjectBase>(object)), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 2u);
    EXPECT_EQ(CallIImportsContainerOnImportsSet(c), 12);
    EXPECT_EQ(CallIImportsContainerOnImportsHook(c), 13);
    EXPECT_EQ(CallIImportsContainerClearImports(c), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST(ExportProxySlots, GiveTheObject)
{
    const auto object = MakeRef<BareObject>();
    const auto proxy = MakeRef<ImportProxy>(object, Answer);
    const auto given = FromC<IObjectBase>(
        [&](void** out) { EXPECT_EQ(CallIExportProxyGetExportObject(ToC<IExportProxy>(proxy), out), Answer); });
    EXPECT_EQ(given.Get(), object.Get());
}

TEST(LibManagerSlots, ReachTheOperationOfTheirNumber)
{
    const auto manager = MakeRef<RecordingLibManager>(Answer);
    EXPECT_EQ(CallILibManagerGetInstalledPluginsVersions(ToC<ILibManager>(manager), nullptr), Answer);
    EXPECT_EQ(manager->calls, Calls{"GetInstalledPluginsVersions"});
}

TEST(CrashDumpServerSlots, ReachTheOperationOfTheirNumber)
{
    const auto server = MakeRef<RecordingCrashDumpServer>(Answer);
    EXPECT_EQ(CallICrashDumpServerAddFile(ToC<ICrashDumpServer>(server), "path", "label"), Answer);
    EXPECT_EQ(server->calls, Calls{"AddFile path label"});
}

TEST(PluginSlots, GiveTheMetadataOfTheirKey)
{
    const auto plugin = MakeRef<Plugin>();
    const auto map = MakeRef<SimpleMap>();
    for (const char* const key : {"id", "name", "subname", "copyright", "version", "comment", "other"})
        map->SetString(key, key);
    void* const c = ToC<ITVXPlugin>(plugin);
    EXPECT_EQ(CallITVXPluginSetMetadataMap(c, ToC<ISimpleMap>(map)), TVX_OK);
    const auto other =
        FromC<IString>([&](void** out) { EXPECT_EQ(CallIConstTVXPluginGetMetadata(c, "other", out), TVX_S_VALUE); });
    EXPECT_STREQ(other->GetText(), "other");
    Calls texts;
    for (const auto get :
         {&CallIConstTVXPluginGetId, &CallIConstTVXPluginGetName, &CallIConstTVXPluginGetSubname,
          &CallIConstTVXPluginGetCopyright, &CallIConstTVXPluginGetVersion, &CallIConstTVXPluginGetComment})
        texts.push_back(FromC<IString>([&](void** out) { get(c, out); })->GetText());
    EXPECT_EQ(texts, (Calls{"id", "name", "subname", "copyright", "version", "comment"}));
}

}  // namespace tvx::test
