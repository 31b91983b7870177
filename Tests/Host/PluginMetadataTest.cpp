// SPDX-License-Identifier: MIT
#include "Host/PluginMetadata.h"

#include "Host/LibraryManager.h"
#include "Interfaces/ITVXPlugin.h"
#include "Src/SimpleMap.h"
#include "Tests/Host/Modules/TestModuleFiles.h"
#include "Tests/Support/CaptureOutput.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tvx::host
{
namespace
{

using test::CaptureOutput;
using test::GetRealModule;
using test::MakeCatalog;

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

// The settings map export needs a serializer; without one the collections still work.
TEST(PluginMetadata, IsMissedButNotNeededWhereNobodyMakesSettingsMaps)
{
    CaptureOutput(
        []
        {
            LibraryManager manager(MakeCatalog({GetRealModule("TVXGenericPlugins")}));
            const auto plugin = manager.GetExportAs<ITVXPlugin>(CollectionExport);
            ASSERT_TRUE(plugin);
            Ref<IString> name;
            EXPECT_EQ((*plugin)->GetName(name.Receive()), TVX_E_PRECONDITION);
            ASSERT_EQ(manager.GetImportProblems().size(), 1U);
            EXPECT_EQ(manager.GetImportProblems().front().kind, ErrorKind::MissingImport);
        });
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
