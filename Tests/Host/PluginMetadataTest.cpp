// SPDX-License-Identifier: MIT
#include "Host/PluginMetadata.h"

#include "Host/LibraryManager.h"
#include "Host/SettingsMap.h"
#include "Interfaces/ITVXPlugin.h"
#include "Src/SimpleMap.h"
#include "Tests/Host/Modules/TestModuleFiles.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/ElfBuilder.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace tvx::host
{
namespace
{

using test::CaptureOutput;
using test::ElfBuilder;
using test::ElfClass;
using test::ElfOrder;
using test::GetRealModule;
using test::GetTestModule;
using test::MakeCatalog;
using test::ScratchFolder;
using test::SectionField;

constexpr const char CollectionExport[] = "com.talvere.general.tvx.GenericCollectionImplementation/1.1";

using Getter = Result (IConstTVXPlugin::*)(IString** out);

std::string Ask(IConstTVXPlugin& plugin, Getter getter)
{
    Ref<IString> text;
    return (plugin.*getter)(text.Receive()) == TVX_S_VALUE ? text->GetText() : "absent";
}

std::string TextUnder(ISimpleMap& map, const char* key)
{
    Ref<IString> text;
    return map.GetString(key, text.Receive()) == TVX_S_VALUE ? text->GetText() : "absent";
}

TEST(PluginMetadata, ComesFromTheDocumentAndTheBuild)
{
    const auto map = MakeRef<SimpleMap>();
    WriteMetadata(*map, {"the id", {"a contract"}, {"the name", "the subname", "the copyright", "a format"}, {}},
                  {"1.2.3", "a comment"});
    EXPECT_EQ(TextUnder(*map, "id"), "the id");
    EXPECT_EQ(TextUnder(*map, "name"), "the name");
    EXPECT_EQ(TextUnder(*map, "subname"), "the subname");
    EXPECT_EQ(TextUnder(*map, "copyright"), "the copyright");
    EXPECT_EQ(TextUnder(*map, "version"), "1.2.3");
    EXPECT_EQ(TextUnder(*map, "comment"), "a comment");
}

TEST(PluginMetadata, StaysAbsentWhereNothingIsSaid)
{
    const auto map = MakeRef<SimpleMap>();
    WriteMetadata(*map, {"the id", {"a contract"}, {"the name", "", "", ""}, {}}, {});
    for (const char* const key : {"subname", "copyright", "version", "comment"})
        EXPECT_EQ(TextUnder(*map, key), "absent") << key;
}

TEST(PluginMetadata, IsAnsweredByTheRealPluginObject)
{
    const auto output = CaptureOutput(
        []
        {
            LibraryManager manager(
                MakeCatalog({GetRealModule("TVXGenericPlugins"), GetRealModule("TVXJsonSerializer")}));
            const auto plugin = manager.GetExportAs<ITVXPlugin>(CollectionExport);
            ASSERT_TRUE(plugin);
            EXPECT_EQ(Ask(**plugin, &IConstTVXPlugin::GetId), CollectionExport);
            EXPECT_EQ(Ask(**plugin, &IConstTVXPlugin::GetName), "TVX Generic Collection Implementation");
            EXPECT_EQ(Ask(**plugin, &IConstTVXPlugin::GetSubname), "absent");
            EXPECT_EQ(Ask(**plugin, &IConstTVXPlugin::GetCopyright), "absent");
            const auto build = ReadBuildInformation(GetRealModule("TVXGenericPlugins"));
            ASSERT_TRUE(build);
            EXPECT_EQ(Ask(**plugin, &IConstTVXPlugin::GetVersion), build->version);
            EXPECT_EQ(Ask(**plugin, &IConstTVXPlugin::GetComment), build->comment);
            EXPECT_FALSE(build->version.empty());
            EXPECT_NE(build->comment.find(" build with "), std::string::npos);
            EXPECT_TRUE(manager.GetImportProblems().empty());
        });
    EXPECT_EQ(output, "PlugDLL created\nPlugDLL deleted\n");
}

// The settings map export needs a serializer; a map of metadata does not.
TEST(PluginMetadata, IsAnsweredAlsoWhereTheSettingsMapExportMissesAnImport)
{
    const auto output = CaptureOutput(
        []
        {
            LibraryManager manager(MakeCatalog({GetRealModule("TVXGenericPlugins")}));
            const auto plugin = manager.GetExportAs<ITVXPlugin>(CollectionExport);
            ASSERT_TRUE(plugin);
            EXPECT_EQ(Ask(**plugin, &IConstTVXPlugin::GetName), "TVX Generic Collection Implementation");
            EXPECT_TRUE(manager.GetImportProblems().empty());
            const auto maps = manager.GetExport(SettingsMapExport);
            ASSERT_FALSE(maps);  // to everybody else it still is an export that misses an import
            EXPECT_EQ(maps.GetError().kind, ErrorKind::MissingImport);
        });
    EXPECT_EQ(output, "PlugDLL created\nPlugDLL deleted\n");
}

TEST(PluginMetadata, LeavesTheSettingsMapExportToBeConnectedLater)
{
    CaptureOutput(
        []
        {
            LibraryManager manager(
                MakeCatalog({GetRealModule("TVXGenericPlugins"), GetRealModule("TVXJsonSerializer")}));
            ASSERT_TRUE(manager.GetExport(CollectionExport));
            const auto map = MakeSettingsMap(manager);
            ASSERT_TRUE(map);
            EXPECT_EQ((*map)->SetObject("copy", map->Get()), TVX_OK);
        });
}

// Without maps plug-ins still work.
TEST(PluginMetadata, IsMissedButNotNeededWhereNobodyMakesSettingsMaps)
{
    CaptureOutput(
        []
        {
            LibraryManager manager(MakeCatalog({GetTestModule("Plugin")}));
            const auto plugin = manager.GetExportAs<ITVXPlugin>("test.Plugin/1.0");
            ASSERT_TRUE(plugin);
            Ref<IString> name;
            EXPECT_EQ((*plugin)->GetName(name.Receive()), TVX_E_PRECONDITION);
            ASSERT_EQ(manager.GetImportProblems().size(), 1U);
            EXPECT_EQ(manager.GetImportProblems().front().kind, ErrorKind::NotExported);
        });
}

TEST(PluginMetadata, IsToldHoweverThePluginObjectIsFirstReached)
{
    const auto reach = {
        +[](LibraryManager& manager) { return manager.GetExport("test.Plugin/1.0"); },
        +[](LibraryManager& manager) { return manager.GetReader("test.PluginFormat/1.0"); },
        +[](LibraryManager& manager) { return manager.GetExport("test.PluginUser/1.0"); },  // fetches it as its import
    };
    for (const auto call : reach)
    {
        const auto output = CaptureOutput(
            [&]
            {
                LibraryManager manager(MakeCatalog({GetTestModule("Plugin"), GetRealModule("TVXGenericPlugins")}));
                ASSERT_TRUE(call(manager));
                const auto plugin = manager.GetExportAs<ITVXPlugin>("test.Plugin/1.0");
                ASSERT_TRUE(plugin);
                EXPECT_EQ(Ask(**plugin, &IConstTVXPlugin::GetName), "Talking plug-in");
                EXPECT_TRUE(manager.GetImportProblems().empty());
            });
        const auto told = output.find("Plugin: SetMetadataMap\n");
        EXPECT_NE(told, std::string::npos) << output;
        EXPECT_EQ(output.find("Plugin: SetMetadataMap\n", told + 1), std::string::npos) << output;
    }
}

TEST(BuildInformation, IsTheTextUpToTheFirstLineEndAndTheRest)
{
    using namespace std::string_literals;
    struct Row
    {
        std::string text;
        std::string version;
        std::string comment;
    };
    for (const auto& row :
         {Row{"1.2.3\na comment", "1.2.3", "a comment"}, Row{"1.2.3", "1.2.3", ""}, Row{"1.2.3\n", "1.2.3", ""},
          Row{"", "", ""}, Row{"\nonly a comment", "", "only a comment"},
          Row{"1\ntwo\n\nthree\n", "1", "two\n\nthree\n"}, Row{"one\0two\nthree\0four"s, "one\0two"s, "three\0four"s}})
    {
        const ScratchFolder folder;
        auto image = ElfBuilder(ElfClass::Bits64, ElfOrder::Little).Add(".plugbuild", row.text).Finish().GetImage();
        const auto build = ReadBuildInformation(folder.Write("module.tvxlib", image));
        ASSERT_TRUE(build) << build.GetError().message;
        EXPECT_EQ(build->version, row.version);
        EXPECT_EQ(build->comment, row.comment);
    }
}

TEST(BuildInformation, IsDamageWhenItReachesBeyondTheEndOfTheFile)
{
    const ScratchFolder folder;
    auto image = ElfBuilder(ElfClass::Bits64, ElfOrder::Little)
                     .Add(".plugbuild", "1.2.3\na comment")
                     .Finish()
                     .Set(1, SectionField::Size, 100000)
                     .GetImage();
    const auto build = ReadBuildInformation(folder.Write("module.tvxlib", image));
    ASSERT_FALSE(build);
    EXPECT_EQ(build.GetError().kind, ErrorKind::DamagedModule);
}

TEST(BuildInformation, IsEmptyForAModuleThatSaysNothingAndAnErrorForNoModule)
{
    const auto none = ReadBuildInformation("/nonexistent.tvxlib");
    ASSERT_FALSE(none);
    EXPECT_EQ(none.GetError().message, "/nonexistent.tvxlib does not exist");
    const auto program = ReadBuildInformation("/proc/self/exe");
    ASSERT_TRUE(program) << program.GetError().message;
    EXPECT_EQ(program->version, "");
    EXPECT_EQ(program->comment, "");
}

}  // namespace
}  // namespace tvx::host
