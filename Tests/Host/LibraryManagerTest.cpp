// SPDX-License-Identifier: MIT
#include "Host/LibraryManager.h"

#include "Host/Configuration.h"
#include "Host/IFormatReaders.h"
#include "Host/ModuleFile.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ILibManager.h"
#include "Interfaces/ISerializerFactory.h"
#include "Interfaces/ISimpleMap.h"
#include "Tests/Host/Modules/TestModuleFiles.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

using test::CaptureOutput;
using test::GetRealModule;
using test::GetTestModule;
using test::MakeCatalog;

constexpr const char MapExport[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";
constexpr const char MapFormat[] = "com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1";

ModuleCatalog MakeTalkingCatalog()
{
    return MakeCatalog({GetTestModule("Recorder"), GetTestModule("Left"), GetTestModule("Right")});
}

ModuleCatalog MakeRealCatalog()
{
    return MakeCatalog({GetRealModule("TVXGenericPlugins"), GetRealModule("TVXJsonSerializer")});
}

// Has a talking export fetch its imports; what it says of them.
std::string FetchImports(LibraryManager& manager, const char* id)
{
    return CaptureOutput(
        [&]
        {
            const auto imports = manager.GetExportAs<IImportsContainer>(id);
            ASSERT_TRUE(imports);
            (*imports)->OnImportsHook();
        });
}

// What the modules say while an export that cannot be had is asked for, and the error.
std::string GetRefusedExport(LibraryManager& manager, const char* id, std::optional<Error>& error)
{
    return CaptureOutput(
        [&]
        {
            const auto object = manager.GetExport(id);
            ASSERT_FALSE(object);
            error = object.GetError();
        });
}

void ExpectRefused(const std::filesystem::path& module, const char* id, ErrorKind kind, const std::string& message)
{
    CaptureOutput(
        [&]
        {
            LibraryManager manager(MakeCatalog({module}));
            const auto object = manager.GetExport(id);
            ASSERT_FALSE(object);
            EXPECT_EQ(object.GetError().kind, kind);
            EXPECT_EQ(object.GetError().message, message);
        });
}

Ref<ILibManager> GetFace(LibraryManager& manager)
{
    Ref<IObjectBase> face;
    const auto recorder = manager.GetExportAs<IFactory>("test.Recorder/1.0");
    if (recorder)
        (*recorder)->Create(face.Receive());
    return Query<ILibManager>(face);
}

TEST(LibraryManager, LoadsNothingUntilAnExportIsAskedFor)
{
    const auto output = CaptureOutput(
        []
        {
            const LibraryManager manager(MakeTalkingCatalog());
            EXPECT_TRUE(manager.GetLoadedFiles().empty());
            EXPECT_EQ(manager.GetCatalog().GetModules().size(), 3U);
        });
    EXPECT_EQ(output, "");
}

TEST(LibraryManager, GivesTheImportsThenTellsTheExportAndClearsThemInTheEnd)
{
    const auto output = CaptureOutput(
        []
        {
            LibraryManager manager(MakeTalkingCatalog());
            EXPECT_TRUE(manager.GetExport("test.Recorder/1.0"));
            EXPECT_EQ(manager.GetLoadedFiles(), (std::vector{GetTestModule("Recorder")}));
        });
    EXPECT_EQ(output, "Recorder: loaded\n"
                      "Recorder: SetImport Neighbour\n"  // the optional import that nobody fulfils is left out
                      "Recorder: SetImport LibManager\n"
                      "Recorder: OnImportsSet\n"
                      "Recorder: ClearImports\n"
                      "Recorder: unloaded\n");
}

TEST(LibraryManager, GivesTheSameObjectAgainWithoutConnectingItAgain)
{
    const auto output = CaptureOutput(
        []
        {
            LibraryManager manager(MakeTalkingCatalog());
            const auto first = manager.GetExport("test.Recorder/1.0");
            EXPECT_EQ(manager.GetExport("test.Recorder/1.0")->Get(), first->Get());
            EXPECT_EQ(manager.GetReader("test.RecorderFormat/1.0")->Get(), first->Get());
        });
    EXPECT_EQ(output.find("OnImportsSet"), output.rfind("OnImportsSet"));
}

TEST(LibraryManager, LoadsAnImportWhenItIsFirstFetched)
{
    CaptureOutput(
        []
        {
            LibraryManager manager(MakeCatalog({GetTestModule("Right"), GetTestModule("Left")}));
            EXPECT_TRUE(manager.GetExport("test.Right/1.0"));
            EXPECT_EQ(manager.GetLoadedFiles(), (std::vector{GetTestModule("Right")}));
        });
}

TEST(LibraryManager, ConnectsModulesThatImportEachOtherAndUnmapsTheLastLoadedFirst)
{
    const auto output = CaptureOutput(
        []
        {
            LibraryManager manager(MakeTalkingCatalog());
            const auto left = manager.GetExportAs<IImportsContainer>("test.Left/1.0");
            ASSERT_TRUE(left);
            EXPECT_EQ(manager.GetLoadedFiles(), (std::vector{GetTestModule("Left"), GetTestModule("Right")}));
            const auto right = manager.GetExportAs<IImportsContainer>("test.Right/1.0");
            (*right)->OnImportsHook();
            EXPECT_TRUE(manager.GetImportProblems().empty());
        });
    EXPECT_EQ(output, "Left: loaded\n"
                      "Left: SetImport Right\n"
                      "Left: OnImportsSet\n"
                      "Right: loaded\n"
                      "Right: SetImport Left\n"
                      "Right: OnImportsSet\n"
                      "Left: Right is there\n"
                      "Right: Left is there\n"
                      "Left: ClearImports\n"
                      "Right: ClearImports\n"
                      "Right: unloaded\n"
                      "Left: unloaded\n");
}

TEST(LibraryManager, GivesAnExportItselfWhileItIsToldOfItsImports)
{
    const auto output = CaptureOutput(
        []
        {
            LibraryManager manager(MakeTalkingCatalog());
            EXPECT_TRUE(manager.GetExport("test.Selfish/1.0"));
        });
    EXPECT_EQ(output, "Recorder: loaded\n"
                      "Selfish: SetImport Self\n"
                      "Selfish: OnImportsSet\n"
                      "Selfish: Self is there\n"
                      "Selfish: ClearImports\n"
                      "Recorder: unloaded\n");
}

TEST(LibraryManager, SurvivesAModuleThatHasOthersLoadedWhileItIsAsked)
{
    CaptureOutput(
        []
        {
            LibraryManager manager(MakeTalkingCatalog());
            EXPECT_TRUE(manager.GetExport("test.Recorder/1.0"));
            const auto object = manager.GetExport("test.Borrower/1.0");
            ASSERT_FALSE(object);
            EXPECT_EQ(object.GetError().message, DisplayName(GetTestModule("Recorder")) +
                                                     " does not give its export \"test.Borrower/1.0\" (result -11)");
            EXPECT_EQ(manager.GetLoadedFiles().size(), 3U);
        });
}

TEST(LibraryManager, RefusesAnExportWhoseRequiredImportNothingFulfils)
{
    ExpectRefused(GetTestModule("Recorder"), "test.Needy/2.0", ErrorKind::MissingImport,
                  "the export \"test.Needy/2.0\" needs the import \"Nobody\", but no installed module fulfils "
                  "\"test.NobodyContract/1.0\"");
}

TEST(LibraryManager, TellsARefusedExportNothing)
{
    LibraryManager manager(MakeTalkingCatalog());
    std::optional<Error> error;
    EXPECT_EQ(GetRefusedExport(manager, "test.Needy/2.0", error), "Recorder: loaded\n");
    EXPECT_EQ(GetRefusedExport(manager, "test.Needy/2.0", error), "");
    EXPECT_EQ(error->kind, ErrorKind::MissingImport);
}

TEST(LibraryManager, RefusesAnExportThatNoModuleHas)
{
    ExpectRefused(GetTestModule("Left"), "test.Recorder/1.0", ErrorKind::NotExported,
                  "no installed module exports \"test.Recorder/1.0\"");
    const auto reader = LibraryManager(ModuleCatalog()).GetReader("a\nb");
    ASSERT_FALSE(reader);
    EXPECT_EQ(reader.GetError().kind, ErrorKind::NotExported);
    EXPECT_EQ(reader.GetError().message, "no installed module reads the format \"a?b\"");
}

TEST(LibraryManager, BlamesTheModuleThatDoesNotKeepItsPromises)
{
    const auto file = GetTestModule("Misbehaving");
    const auto name = DisplayName(file);
    ExpectRefused(file, "test.Failing/1.0", ErrorKind::Misbehaved,
                  name + " does not give its export \"test.Failing/1.0\" (result -7)");
    ExpectRefused(file, "test.FailingLate/1.0", ErrorKind::Misbehaved,
                  name + " does not give its export \"test.FailingLate/1.0\" (result -1)");
    ExpectRefused(file, "test.Null/1.0", ErrorKind::Misbehaved, name + " gives null for its export \"test.Null/1.0\"");
    ExpectRefused(file, "test.Unconnectable/1.0", ErrorKind::Misbehaved,
                  "the export \"test.Unconnectable/1.0\" refuses the interface "
                  "\"com.talvere.general.tvx.IImportsContainer/1.0\"");
    const auto silent = GetTestModule("WithoutGetExport");
    ExpectRefused(silent, "test.Unreachable/1.0", ErrorKind::Misbehaved,
                  DisplayName(silent) + " has no function GetExport");
}

TEST(LibraryManager, BlamesTheExportThatRefusesTheInterfaceOfItsContract)
{
    CaptureOutput(
        []
        {
            LibraryManager manager(MakeCatalog({GetTestModule("Misbehaving")}));
            EXPECT_TRUE(manager.GetExport("test.Bare/1.0"));
            const auto factory = manager.GetExportAs<IFactory>("test.Bare/1.0");
            ASSERT_FALSE(factory);
            EXPECT_EQ(factory.GetError().kind, ErrorKind::Misbehaved);
            EXPECT_EQ(factory.GetError().message, "the export \"test.Bare/1.0\" refuses the interface "
                                                  "\"com.talvere.general.tvx.IFactory/1.0\"");
            const auto unknown = manager.GetExportAs<IFactory>("test.Unknown/1.0");
            ASSERT_FALSE(unknown);
            EXPECT_EQ(unknown.GetError().kind, ErrorKind::NotExported);
        });
}

TEST(LibraryManager, RecordsWhyAnImportCouldNotBeFetched)
{
    const test::ScratchFolder folder;
    const auto left = folder.GetPath() / "Left.tvxlib";
    std::filesystem::copy_file(GetTestModule("Left"), left);
    CaptureOutput(
        [&]
        {
            LibraryManager manager(MakeCatalog({GetTestModule("Recorder"), left}));
            std::filesystem::remove(left);
            EXPECT_TRUE(manager.GetExport("test.Recorder/1.0"));
            EXPECT_TRUE(manager.GetImportProblems().empty());
            (*manager.GetExportAs<IImportsContainer>("test.Recorder/1.0"))->OnImportsHook();
            (*manager.GetExportAs<IImportsContainer>("test.Recorder/1.0"))->OnImportsHook();
            ASSERT_EQ(manager.GetImportProblems().size(), 2U);
            EXPECT_EQ(manager.GetImportProblems()[0].kind, ErrorKind::CannotRead);
            EXPECT_EQ(manager.GetImportProblems()[0].message, DisplayName(left) + " does not exist");
        });
}

TEST(LibraryManager, TellsAnImporterThatItsImportCannotBeHad)
{
    // Right is missing, which Left needs, which the recorder imports.
    LibraryManager manager(MakeCatalog({GetTestModule("Recorder"), GetTestModule("Left")}));
    EXPECT_EQ(FetchImports(manager, "test.Recorder/1.0"), "Recorder: loaded\n"
                                                          "Recorder: SetImport Neighbour\n"
                                                          "Recorder: SetImport LibManager\n"
                                                          "Recorder: OnImportsSet\n"
                                                          "Recorder: LibManager is there\n"
                                                          "Left: loaded\n"
                                                          "Recorder: Neighbour is null\n");
    ASSERT_EQ(manager.GetImportProblems().size(), 1U);
    EXPECT_EQ(manager.GetImportProblems()[0].kind, ErrorKind::MissingImport);
}

TEST(LibraryManager, PrefersWhatTheHostOffersAndLetsItGoInTheEnd)
{
    bool died = false;
    auto probe = MakeRef<test::ProbeObject>(&died);
    const auto output = CaptureOutput(
        [&]
        {
            LibraryManager manager(MakeTalkingCatalog());
            manager.Offer("test.LeftContract/1.0", Ref<IObjectBase>(probe));
            manager.Offer("test.NobodyContract/1.0", Ref<IObjectBase>(probe));
            EXPECT_TRUE(manager.GetExport("test.Needy/2.0"));
            const auto before = probe->GetRefCount();
            (*manager.GetExportAs<IImportsContainer>("test.Recorder/1.0"))->OnImportsHook();
            EXPECT_EQ(manager.GetLoadedFiles(), (std::vector{GetTestModule("Recorder")}));
            EXPECT_GE(probe->GetRefCount(), before + 2);  // the recorder holds it under two names
        });
    EXPECT_NE(output.find("Recorder: Neighbour is there\nRecorder: Nobody is there\n"), std::string::npos) << output;
    EXPECT_TRUE(probe->IsUnique());
    probe = nullptr;
    EXPECT_TRUE(died);
}

// The logger lists the installed plug-ins when it is told that its imports are set, if the configuration says so.
TEST(LibraryManager, GivesTheConfigurationBeforeTheImports)
{
    const auto connectLogger = [](const ConfigurationEntries& entries)
    {
        LibraryManager manager(
            MakeCatalog({GetTestModule("Recorder"), GetTestModule("Left"), GetRealModule("TVXGenericPlugins")}));
        manager.Configure(Ref<IConfiguration>(MakeRef<Configuration>("file", entries)));
        EXPECT_TRUE(manager.GetExport("test.Recorder/1.0"));  // takes none
        EXPECT_TRUE(manager.GetExport("com.talvere.general.tvx.BasicLogger/1.0"));
    };
    constexpr const char listing[] = " DEBUG [com.talvere.general.tvx.BasicLogger/1.0] Printing installed plugins";
    const ConfigurationEntries low = {{"Main\\MinLevel", {ConfigurationValue::Kind::Number, "2"}}};
    EXPECT_NE(CaptureOutput([&] { connectLogger(low); }).find(listing), std::string::npos);
    EXPECT_EQ(CaptureOutput([&] { connectLogger({}); }).find(listing), std::string::npos);
}

TEST(LibraryManager, LetsGoOfTheConfigurationInTheEnd)
{
    const auto configuration = MakeRef<Configuration>("file", ConfigurationEntries());
    CaptureOutput(
        [&]
        {
            LibraryManager manager(MakeRealCatalog());
            manager.Configure(Ref<IConfiguration>(configuration));
            EXPECT_TRUE(manager.GetExport("com.talvere.general.tvx.BasicLogger/1.0"));
            EXPECT_FALSE(configuration->IsUnique());
        });
    EXPECT_TRUE(configuration->IsUnique());
}

TEST(LibraryManager, TellsAPluginObjectItsMetadataWhenItIsConnectedAndTakesBothBackInTheEnd)
{
    const auto output = CaptureOutput(
        []
        {
            LibraryManager manager(MakeCatalog({GetTestModule("Plugin"), GetRealModule("TVXGenericPlugins")}));
            EXPECT_TRUE(manager.GetExport("test.Plugin/1.0"));
            EXPECT_EQ(manager.GetLoadedFiles(),
                      (std::vector{GetTestModule("Plugin"), GetRealModule("TVXGenericPlugins")}));
        });
    EXPECT_EQ(output, "Plugin: loaded\n"
                      "Plugin: SetImport LibManager\n"
                      "Plugin: OnImportsSet\n"
                      "PlugDLL created\n"
                      "Plugin: SetMetadataMap\n"
                      "Plugin: ClearImports\n"
                      "Plugin: SetMetadataMap null\n"
                      "PlugDLL deleted\n"
                      "Plugin: unloaded\n");
}

TEST(LibraryManager, ListsTheInstalledExportsWithTheirVersions)
{
    constexpr const char listing[] = "Recorder 1.0 (Recorder.tvxlib)\n"
                                     "Needs what nobody has 2.0 (Recorder.tvxlib)\n"
                                     "Imports itself 1.0 (Recorder.tvxlib)\n"
                                     "Uses the imports of the first export and gives nothing 1.0 (Recorder.tvxlib)\n"
                                     "Left 1.0 (Left.tvxlib)\n"
                                     "Right 1.0 (Right.tvxlib)\n";
    CaptureOutput(
        [&]
        {
            LibraryManager manager(MakeTalkingCatalog());
            EXPECT_EQ(manager.DescribeInstalled(), listing);
            Ref<IString> text;
            EXPECT_EQ(GetFace(manager)->GetInstalledPluginsVersions(text.Receive()), TVX_OK);
            EXPECT_STREQ(text->GetText(), listing);
            EXPECT_EQ(GetFace(manager)->GetInstalledPluginsVersions(nullptr), TVX_E_POINTER);
        });
    EXPECT_EQ(LibraryManager(ModuleCatalog()).DescribeInstalled(), "");
}

TEST(LibraryManager, OffersAFaceThatAnswersBothItsInterfacesAndRefusesWhenTheManagerIsGone)
{
    Ref<ILibManager> face;
    CaptureOutput(
        [&]
        {
            LibraryManager manager(MakeTalkingCatalog());
            face = GetFace(manager);
            ASSERT_TRUE(face);
            EXPECT_TRUE(Query<IFormatReaders>(face));
            EXPECT_EQ(Query<IObject>(face).Get(), face.Get());
            EXPECT_FALSE(Query<IImportsContainer>(face));
        });
    EXPECT_TRUE(face->IsUnique());
    Ref<IString> text;
    EXPECT_EQ(face->GetInstalledPluginsVersions(text.Receive()), TVX_E_FAIL);
    EXPECT_FALSE(text);
    Ref<IDeserializable> reader;
    EXPECT_EQ(Query<IFormatReaders>(face)->FindReader(MapFormat, reader.Receive()), TVX_E_FAIL);
    EXPECT_FALSE(reader);
}

TEST(LibraryManager, FindsNoReaderForAFormatThatNobodyReads)
{
    CaptureOutput(
        []
        {
            LibraryManager manager(MakeTalkingCatalog());
            const auto readers = Query<IFormatReaders>(GetFace(manager));
            Ref<IDeserializable> reader;
            EXPECT_EQ(readers->FindReader("nobody's", reader.Receive()), TVX_E_FAIL);
            EXPECT_EQ(readers->FindReader("", reader.Receive()), TVX_E_FAIL);
            // The export says that it reads the format, but its object does not.
            EXPECT_EQ(readers->FindReader("test.RecorderFormat/1.0", reader.Receive()), TVX_E_FAIL);
            EXPECT_EQ(readers->FindReader(nullptr, reader.Receive()), TVX_E_POINTER);
            EXPECT_EQ(readers->FindReader(MapFormat, nullptr), TVX_E_POINTER);
            EXPECT_FALSE(reader);
        });
}

TEST(LibraryManager, FindsTheReaderOfARealFormat)
{
    CaptureOutput(
        []
        {
            LibraryManager manager(
                MakeCatalog({GetTestModule("Recorder"), GetTestModule("Left"), GetRealModule("TVXGenericPlugins"),
                             GetRealModule("TVXJsonSerializer")}));
            const auto readers = Query<IFormatReaders>(GetFace(manager));
            Ref<IDeserializable> reader;
            EXPECT_EQ(readers->FindReader(MapFormat, reader.Receive()), TVX_OK);
            EXPECT_TRUE(Query<IFactory>(reader));
        });
}

TEST(LibraryManager, ConnectsTheRealModulesAndUnmapsThem)
{
    const auto plugins = GetRealModule("TVXGenericPlugins");
    const auto serializer = GetRealModule("TVXJsonSerializer");
    const auto output = CaptureOutput(
        [&]
        {
            LibraryManager manager(MakeRealCatalog());
            const auto factory = manager.GetExportAs<IFactory>(MapExport);
            ASSERT_TRUE(factory);
            EXPECT_TRUE(test::IsMapped(plugins));
            EXPECT_FALSE(test::IsMapped(serializer));
            Ref<IObjectBase> made;
            ASSERT_EQ((*factory)->Create(made.Receive()), TVX_OK);
            const auto map = Query<ISimpleMap>(made);
            map->SetInt("answer", 42);
            EXPECT_EQ(map->SetObject("copy", map.Get()), TVX_OK);
            EXPECT_TRUE(test::IsMapped(serializer));
            Ref<IObject> object;
            EXPECT_EQ(map->GetObject("copy", object.Receive()), TVX_OK);
            const auto copy = Query<ISimpleMap>(object);
            std::int32_t answer = 0;
            EXPECT_EQ(copy->GetInt("answer", &answer), TVX_OK);
            EXPECT_EQ(answer, 42);
            EXPECT_TRUE(manager.GetImportProblems().empty());
        });
    EXPECT_EQ(output, "PlugDLL created\nPlugDLL deleted\n");
    EXPECT_FALSE(test::IsMapped(plugins));
    EXPECT_FALSE(test::IsMapped(serializer));
}

TEST(LibraryManager, LoadsTheRealModulesAnyNumberOfTimes)
{
    for (int i = 0; i < 20; ++i)
    {
        CaptureOutput(
            []
            {
                LibraryManager manager(MakeRealCatalog());
                EXPECT_TRUE(manager.GetExport(MapExport));
                EXPECT_TRUE(manager.GetExportAs<ISerializerFactory>("com.talvere.serializers.JSONSerializer/1.0"));
            });
    }
    EXPECT_FALSE(test::IsMapped(GetRealModule("TVXGenericPlugins")));
}

}  // namespace
}  // namespace tvx::host
