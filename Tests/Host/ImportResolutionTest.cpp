// SPDX-License-Identifier: MIT
#include "Host/ImportResolution.h"

#include "Host/LibraryManager.h"
#include "Host/ModuleFile.h"
#include "Host/SettingsMap.h"
#include "Tests/Host/Modules/TestModuleFiles.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/ElfBuilder.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

using test::GetTestModule;
using test::MakeCatalog;
using Texts = std::vector<std::string>;

constexpr const char NotSet[] = "LibManager: NULL object proxy returned for \"I\".";
constexpr const char GaveNull[] = "LibManager: Library returned NULL object for \"I\". Probably declared and exported "
                                  "contracts are different or the library is failed to load.";

// An import named I.
std::string Needs(const std::string& contract, bool optional = false)
{
    return "<import><property>I</property><contract>" + contract + "</contract>" +
           (optional ? "<optional>true</optional>" : "") + "</import>";
}

std::string MakeExport(const std::string& id, const std::string& contract, const std::string& imports = "")
{
    return "<export><id>" + id + "</id><contract>" + contract + "</contract><metadata><name>n</name></metadata>" +
           imports + "</export>";
}

class ImportResolution : public testing::Test
{
protected:
    // Modules of documents alone, a.tvxlib, b.tvxlib and so on, each of these exports.
    void Install(const std::vector<std::string>& modules)
    {
        char name = 'a';
        for (const auto& exports : modules)
        {
            test::ElfBuilder elf(test::ElfClass::Bits64, test::ElfOrder::Little);
            elf.Add(".plugcfg", "<plugcfg version=\"1\">" + exports + "</plugcfg>");
            catalog_.Add(folder_.Write(std::string(1, name++) + ".tvxlib", elf.Finish().GetImage()));
        }
    }

    // What becomes of the imports of a module's first export.
    std::vector<ResolvedImport> ResolveAll(std::size_t module) const
    {
        return ResolveImports(catalog_, module).at(0).imports;
    }

    // And of the first import of the first module.
    ResolvedImport Resolve() const { return ResolveAll(0).at(0); }

    // An export as messages name it.
    std::string Name(const std::string& id, const std::string& module) const
    {
        return id + " of " + DisplayName(folder_.GetPath() / (module + ".tvxlib"));
    }

    // A module that can be loaded, with another text of the same length in its document.
    std::filesystem::path Change(const std::filesystem::path& module, const std::string& from,
                                 const std::string& to) const
    {
        std::ifstream stream(module, std::ios::binary);
        std::string image{std::istreambuf_iterator<char>(stream), {}};
        const auto place = image.find("<contract>" + from);
        EXPECT_NE(place, std::string::npos);
        EXPECT_EQ(from.size(), to.size());
        image.replace(place, 10 + from.size(), "<contract>" + to);
        return folder_.Write(module.filename().string(), image);
    }

    test::ScratchFolder folder_;
    ModuleCatalog catalog_;
};

void ExpectMissing(const MissingImport& missing, const std::string& exportName, const std::string& contract)
{
    EXPECT_EQ(missing.exportName, exportName);
    EXPECT_EQ(missing.import->contract, contract);
}

TEST_F(ImportResolution, IsSatisfiedByWhatFulfilsTheContractAndByTheHostFirst)
{
    Install({MakeExport("A", "A/1.0", Needs("B/1.0")), MakeExport("B", "B/1.0", Needs(LibManagerContract)),
             MakeExport("M", LibManagerContract, Needs("X/1.0"))});
    EXPECT_EQ(Resolve().state, ImportState::Satisfied);
    EXPECT_EQ(Resolve().provider, Name("B", "b"));
    EXPECT_EQ(Resolve().message, "");
    EXPECT_TRUE(Resolve().missing.empty());
    const auto host = ResolveAll(1).at(0);
    EXPECT_EQ(host.state, ImportState::Satisfied);
    EXPECT_EQ(host.provider, "the host");
}

TEST_F(ImportResolution, TellsRequiredImportsThatNothingFulfilsFromOptionalOnes)
{
    Install({MakeExport("A", "A/1.0", Needs("X/1.0") + Needs("Y/1.0", true))});
    const auto imports = ResolveAll(0);
    EXPECT_EQ(imports[0].state, ImportState::RequiredMissing);
    EXPECT_TRUE(IsRequiredAndMissing(imports[0]));
    EXPECT_EQ(imports[1].state, ImportState::OptionalMissing);
    EXPECT_FALSE(IsRequiredAndMissing(imports[1]));
    for (const auto& import : imports)
        EXPECT_EQ(import.message, NotSet);
}

TEST_F(ImportResolution, SaysOfAProviderThatCannotBeHadWhatItNeeds)
{
    for (const bool optional : {false, true})
    {
        SCOPED_TRACE(optional);
        catalog_ = ModuleCatalog();
        Install({MakeExport("A", "A/1.0", Needs("B/1.0", optional)),
                 MakeExport("B", "B/1.0", Needs("A/1.0") + Needs("Y/1.0", true) + Needs("X/1.0"))});
        const auto resolved = Resolve();
        EXPECT_EQ(resolved.state, ImportState::ProviderMissing);
        EXPECT_EQ(resolved.provider, Name("B", "b"));
        EXPECT_EQ(resolved.message, GaveNull);
        ASSERT_EQ(resolved.missing.size(), 1U);
        ExpectMissing(resolved.missing[0], Name("B", "b"), "X/1.0");
        EXPECT_EQ(IsRequiredAndMissing(resolved), !optional);
    }
}

TEST_F(ImportResolution, TakesAProviderWithoutItsOptionalImports)
{
    Install({MakeExport("A", "A/1.0", Needs("B/1.0")), MakeExport("B", "B/1.0", Needs("X/1.0", true))});
    EXPECT_EQ(Resolve().state, ImportState::Satisfied);
    EXPECT_TRUE(Resolve().missing.empty());
}

// A provider that needs another version of what is there needs what is not there.
TEST_F(ImportResolution, TakesAWrongContractOfTheProviderForAMissingOne)
{
    Install({MakeExport("A", "A/1.0", Needs("B/1.0")), MakeExport("B", "B/1.0", Needs("A/2.0"))});
    EXPECT_EQ(Resolve().state, ImportState::ProviderMissing);
}

// B is there and has a proxy for C; that nothing comes of this one is B's own affair.
TEST_F(ImportResolution, NamesWhatIsMissingBelowAProviderThatIsThere)
{
    Install({MakeExport("A", "A/1.0", Needs("B/1.0")), MakeExport("B", "B/1.0", Needs("C/1.0")),
             MakeExport("C", "C/1.0", Needs("D/1.0")), MakeExport("D", "D/1.0", Needs("X/1.0"))});
    const auto resolved = Resolve();
    EXPECT_EQ(resolved.state, ImportState::Satisfied);
    EXPECT_EQ(resolved.message, "");
    EXPECT_FALSE(IsRequiredAndMissing(resolved));
    ASSERT_EQ(resolved.missing.size(), 2U);
    ExpectMissing(resolved.missing[0], Name("C", "c"), "D/1.0");
    ExpectMissing(resolved.missing[1], Name("D", "d"), "X/1.0");
}

TEST_F(ImportResolution, IsSatisfiedInACircle)
{
    Install({MakeExport("A", "A/1.0", Needs("B/1.0")), MakeExport("B", "B/1.0", Needs("C/1.0")),
             MakeExport("C", "C/1.0", Needs("A/1.0") + Needs("C/1.0"))});
    for (std::size_t module = 0; module < 3; ++module)
    {
        for (const auto& import : ResolveAll(module))
        {
            EXPECT_EQ(import.state, ImportState::Satisfied);
            EXPECT_TRUE(import.missing.empty());
        }
    }
}

TEST_F(ImportResolution, TakesAnotherVersionAndTheIdentifierOfAnExportForAWrongContract)
{
    const Texts providers = {MakeExport("B", "B/2.0"), MakeExport("B/1.0", "C/1.0")};
    const Texts offered = {"B/2.0", "C/1.0"};
    for (std::size_t i = 0; i < providers.size(); ++i)
    {
        for (const bool optional : {false, true})
        {
            catalog_ = ModuleCatalog();
            Install({MakeExport("A", "A/1.0", Needs("B/1.0", optional)), providers[i]});
            EXPECT_EQ(Resolve().state, ImportState::WrongContract);
            EXPECT_EQ(Resolve().message, NotSet);
            EXPECT_EQ(Resolve().offeredContract, offered[i]);
            EXPECT_EQ(IsRequiredAndMissing(Resolve()), !optional);
        }
    }
}

// The manager remembers the identifier of what fulfils a contract, so it fetches the first export of that name.
TEST_F(ImportResolution, TakesTheFirstExportOfTheProvidersIdentifier)
{
    Install({MakeExport("A", "A/1.0", Needs("B/1.0")), MakeExport("B", "Other/1.0", Needs("X/1.0")),
             MakeExport("B", "B/1.0")});
    EXPECT_EQ(Resolve().state, ImportState::ProviderMissing);
    EXPECT_EQ(Resolve().provider, Name("B", "b"));
}

// What a talking module says of an import when it has asked for it, or why its export cannot be had. Nothing is connected
// before: the manager is a new one.
std::string Try(const ModuleCatalog& catalog, const std::string& id, const std::string& property)
{
    std::string problem;
    const auto output = test::CaptureOutput(
        [&]
        {
            LibraryManager manager(catalog);
            const auto imports = manager.GetExportAs<IImportsContainer>(id);
            if (imports)
                (*imports)->OnImportsHook();
            else
                problem = imports.GetError().message;
        });
    if (!problem.empty())
        return problem.find("needs the import \"" + property + "\"") == std::string::npos ? problem : "refused";
    if (output.find(": " + property + " is there\n") != std::string::npos)
        return "there";
    return output.find(": " + property + " is null\n") == std::string::npos ? "not set" : "null";
}

// What is foreseen, in the same words.
std::string Foresee(const ResolvedImport& resolved)
{
    if (resolved.state == ImportState::Satisfied)
        return "there";
    if (resolved.state == ImportState::ProviderMissing)
        return "null";
    return resolved.import->optional ? "not set" : "refused";
}

// What is foreseen of the imports of the first module, in their order. The manager has to do the same.
Texts ForeseeAndTry(std::initializer_list<std::filesystem::path> places)
{
    Texts foreseen;
    const auto catalog = MakeCatalog(places);
    for (const auto& resolved : ResolveImports(catalog, 0))
    {
        for (const auto& import : resolved.imports)
        {
            foreseen.push_back(Foresee(import));
            EXPECT_EQ(Try(catalog, resolved.entry->id, import.import->property), foreseen.back());
        }
    }
    return foreseen;
}

TEST_F(ImportResolution, ForeseesWhatTheManagerDoes)
{
    const auto recorder = GetTestModule("Recorder");
    const auto left = GetTestModule("Left");
    const auto right = GetTestModule("Right");
    // Of Recorder: Neighbour (fulfilled by Left), Nobody (optional), LibManager; of Needy: Nobody; of Selfish: itself.
    EXPECT_EQ(ForeseeAndTry({recorder, left, right}), (Texts{"there", "not set", "there", "refused", "there"}));
    EXPECT_EQ(ForeseeAndTry({recorder, left}), (Texts{"null", "not set", "there", "refused", "there"}));
    EXPECT_EQ(ForeseeAndTry({left, right}), (Texts{"there"}));
    EXPECT_EQ(ForeseeAndTry({left}), (Texts{"refused"}));
}

// Right needs what nothing fulfils. Left cannot have it, and is there all the same.
TEST_F(ImportResolution, ForeseesThatAChainBreaksWhereTheManagerBreaksIt)
{
    const auto right = Change(GetTestModule("Right"), "test.LeftContract/1.0", "test.LeftContract/9.0");
    EXPECT_EQ(ForeseeAndTry({GetTestModule("Left"), right}), (Texts{"null"}));
    EXPECT_EQ(ForeseeAndTry({GetTestModule("Recorder"), GetTestModule("Left"), right}).front(), "there");
    const auto catalog = MakeCatalog({GetTestModule("Recorder"), GetTestModule("Left"), right});
    const auto neighbour = ResolveImports(catalog, 0)[0].imports[0];
    ASSERT_EQ(neighbour.missing.size(), 2U);
    ExpectMissing(neighbour.missing[0], "test.Left/1.0 of " + DisplayName(GetTestModule("Left")),
                  "test.RightContract/1.0");
    ExpectMissing(neighbour.missing[1], "test.Right/1.0 of " + DisplayName(right), "test.LeftContract/9.0");
}

// The serializer module cannot be had, so a map that is to keep an object asks in vain.
TEST_F(ImportResolution, SaysTheWordsThatAModuleWritesAtRunTime)
{
    const auto serializer = Change(test::GetRealModule("TVXJsonSerializer"), LibManagerContract,
                                   "com.talvere.general.tvx.LibManagerContract/9.0");
    const auto catalog = MakeCatalog({test::GetRealModule("TVXGenericPlugins"), serializer});
    const auto output = test::CaptureOutput(
        [&]
        {
            LibraryManager manager(catalog);
            const auto map = MakeSettingsMap(manager);
            ASSERT_TRUE(map);
            EXPECT_TRUE(TVX_FAILED((*map)->SetObject("object", map->Get())));
        });
    for (const auto& resolved : ResolveImports(catalog, 0))
    {
        if (resolved.entry->id != SettingsMapExport)
            continue;
        EXPECT_EQ(resolved.imports.at(0).state, ImportState::ProviderMissing);
        EXPECT_NE(output.find("\n" + resolved.imports[0].message + "\n"), std::string::npos) << output;
    }
}

// To the manager another version is nothing: it sets no proxy, and takes no notice when the import is optional.
TEST_F(ImportResolution, ForeseesThatAnImportOfAWrongContractIsNotSet)
{
    Install({MakeExport("N", "test.NobodyContract/2.0")});
    const auto recorder = GetTestModule("Recorder");
    const auto other = folder_.GetPath() / "a.tvxlib";
    const auto left = GetTestModule("Left");
    const auto right = GetTestModule("Right");
    EXPECT_EQ(ForeseeAndTry({recorder, left, right, other}), (Texts{"there", "not set", "there", "refused", "there"}));
    const auto catalog = MakeCatalog({recorder, left, right, other});
    const auto nobody = ResolveImports(catalog, 0)[0].imports[1];
    EXPECT_EQ(nobody.state, ImportState::WrongContract);
    EXPECT_FALSE(IsRequiredAndMissing(nobody));
}

}  // namespace
}  // namespace tvx::host
