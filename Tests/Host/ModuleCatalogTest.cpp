// SPDX-License-Identifier: MIT
#include "Host/ModuleCatalog.h"

#include "Host/ModuleFile.h"
#include "Platform/Environment.h"
#include "Tests/Host/Modules/TestModuleFiles.h"
#include "Tests/Support/ElfBuilder.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

using test::ScratchFolder;
using Texts = std::vector<std::string>;

std::string MakeModuleImage(const std::string& id, const std::string& contract, const std::string& serid = "")
{
    test::ElfBuilder elf(test::ElfClass::Bits64, test::ElfOrder::Little);
    elf.Add(".plugcfg", "<plugcfg version=\"1\"><export><id>" + id + "</id><contract>" + contract +
                            "</contract><metadata><name>n</name><serid>" + serid +
                            "</serid></metadata></export></plugcfg>");
    return elf.Finish().GetImage();
}

Texts GetNames(const ModuleCatalog& catalog)
{
    Texts names;
    for (const auto& module : catalog.GetModules())
        names.push_back(module.file.filename().string());
    return names;
}

Texts GetProblems(const ModuleCatalog& catalog)
{
    Texts problems;
    for (const auto& problem : catalog.GetProblems())
        problems.push_back(problem.message);
    return problems;
}

TEST(ModuleCatalog, TakesTheModulesOfAFolderInTheOrderOfTheirNames)
{
    const ScratchFolder folder;
    for (const char* const name : {"c.tvxlib", "a.tvxlib", "B.tvxlib", "b.tvxlib"})
        folder.Write(name, MakeModuleImage(name, "contract"));
    const auto catalog = test::MakeCatalog({folder.GetPath()});
    EXPECT_EQ(GetNames(catalog), (Texts{"B.tvxlib", "a.tvxlib", "b.tvxlib", "c.tvxlib"}));
    EXPECT_EQ(catalog.GetModules()[1].document.exports.at(0).id, "a.tvxlib");
    EXPECT_EQ(GetProblems(catalog), Texts());
}

TEST(ModuleCatalog, PassesOverFilesOfOtherNames)
{
    const ScratchFolder folder;
    for (const char* const name : {"a.so", "a.tvxlib.bak", ".tvxlib", "tvxlib", "a.TVXLIB"})
        folder.Write(name, MakeModuleImage("id", "contract"));
    const auto catalog = test::MakeCatalog({folder.GetPath()});
    EXPECT_EQ(GetNames(catalog), Texts());
    EXPECT_EQ(GetProblems(catalog), Texts());
}

TEST(ModuleCatalog, TakesAFileOfAnyNameThatIsNamedItself)
{
    const ScratchFolder folder;
    const auto catalog = test::MakeCatalog({folder.Write("module.bin", MakeModuleImage("id", "contract"))});
    EXPECT_EQ(GetNames(catalog), (Texts{"module.bin"}));
}

TEST(ModuleCatalog, FindsWhatTheFirstModuleOffers)
{
    const ScratchFolder folder;
    folder.Write("a.tvxlib", MakeModuleImage("id.a", "contract", "format"));
    folder.Write("b.tvxlib", MakeModuleImage("id.b", "contract", "format"));
    const auto catalog = test::MakeCatalog({folder.GetPath() / "b.tvxlib", folder.GetPath()});
    EXPECT_EQ(GetNames(catalog), (Texts{"b.tvxlib", "a.tvxlib"}));
    EXPECT_EQ(catalog.FindByContract("contract").entry->id, "id.b");
    EXPECT_EQ(catalog.FindBySerializationId("format").entry->id, "id.b");
    EXPECT_EQ(catalog.FindById("id.a").module, 1U);
    EXPECT_EQ(catalog.FindById("id.a").entry, &catalog.GetModules()[1].document.exports[0]);
}

TEST(ModuleCatalog, FindsNothingForWhatNobodyOffers)
{
    const ScratchFolder folder;
    folder.Write("a.tvxlib", MakeModuleImage("id", "contract"));
    const auto catalog = test::MakeCatalog({folder.GetPath()});
    EXPECT_EQ(catalog.FindById("contract").entry, nullptr);
    EXPECT_EQ(catalog.FindByContract("id").entry, nullptr);
    EXPECT_EQ(catalog.FindByContract("").entry, nullptr);
    EXPECT_EQ(catalog.FindBySerializationId("").entry, nullptr);  // exports without a format are no readers of ""
}

TEST(ModuleCatalog, PassesOverAFileThatItHasAlready)
{
    const ScratchFolder folder;
    const auto file = folder.Write("a.tvxlib", MakeModuleImage("id", "contract"));
    std::filesystem::create_symlink(file, folder.GetPath() / "link.tvxlib");
    std::filesystem::create_directory(folder.GetPath() / "below");
    std::filesystem::create_directory_symlink(folder.GetPath(), folder.GetPath() / "loop");
    const auto around = folder.GetPath() / "below" / ".." / "a.tvxlib";
    const auto catalog = test::MakeCatalog({folder.GetPath(), file, around, folder.GetPath() / "loop"});
    EXPECT_EQ(GetNames(catalog), (Texts{"a.tvxlib"}));
    EXPECT_EQ(GetProblems(catalog), Texts());
}

TEST(ModuleCatalog, KeepsWhatCannotBeReadAsProblemsAndGoesOn)
{
    const ScratchFolder folder;
    folder.Write("a.tvxlib", "no module");
    folder.Write("c.tvxlib", MakeModuleImage("id", "contract"));
    std::filesystem::create_directory(folder.GetPath() / "b.tvxlib");
    const auto base = DisplayName(folder.GetPath());
    const auto catalog = test::MakeCatalog({folder.GetPath() / "missing", folder.GetPath()});
    EXPECT_EQ(GetNames(catalog), (Texts{"c.tvxlib"}));
    ASSERT_EQ(catalog.GetProblems().size(), 3U);
    EXPECT_EQ(catalog.GetProblems()[0].message, base + "/missing does not exist");
    EXPECT_EQ(catalog.GetProblems()[1].kind, ErrorKind::NotAModule);
    EXPECT_TRUE(catalog.GetProblems()[1].message.starts_with(base + "/a.tvxlib "));
    EXPECT_EQ(catalog.GetProblems()[2].message, base + "/b.tvxlib is a folder, not a file");
}

TEST(ModuleCatalog, KeepsTheSameProblemOnce)
{
    const ScratchFolder folder;
    const auto file = folder.Write("a.tvxlib", "no module");
    const auto missing = folder.GetPath() / "missing";
    const auto catalog = test::MakeCatalog({missing, folder.GetPath(), missing, file, folder.GetPath()});
    EXPECT_EQ(GetProblems(catalog).size(), 2U);
}

TEST(ModuleCatalog, ReportsAFolderThatCannotBeListed)
{
    const ScratchFolder folder;
    const auto closed = folder.GetPath() / "closed";
    std::filesystem::create_directory(closed);
    std::filesystem::permissions(closed, std::filesystem::perms::none);
    std::error_code failed;
    const std::filesystem::directory_iterator listing(closed, failed);
    if (!failed)
        GTEST_SKIP() << "this user may list every folder";
    const auto catalog = test::MakeCatalog({closed});
    EXPECT_EQ(GetProblems(catalog), (Texts{DisplayName(closed) + " cannot be listed: " + failed.message()}));
}

TEST(ModuleCatalog, TakesTheFilledPartsOfASearchPathInTheirOrder)
{
    const ScratchFolder one;
    const ScratchFolder other;
    const ScratchFolder empty;
    one.Write("one.tvxlib", MakeModuleImage("id", "contract"));
    const auto file = other.Write("other.tvxlib", MakeModuleImage("id", "contract"));
    const std::string separator(1, Platform::SearchPathSeparator);
    ModuleCatalog catalog;
    catalog.AddSearchPath(separator + separator + file.string() + separator + separator + empty.GetPath().string() +
                          separator + one.GetPath().string() + separator);
    EXPECT_EQ(GetNames(catalog), (Texts{"other.tvxlib", "one.tvxlib"}));
    EXPECT_EQ(GetProblems(catalog), Texts());
}

TEST(ModuleCatalog, StaysEmptyForASearchPathWithoutParts)
{
    const std::string separator(1, Platform::SearchPathSeparator);
    for (const auto& path : {std::string(), separator, separator + separator})
    {
        ModuleCatalog catalog;
        catalog.AddSearchPath(path);
        EXPECT_TRUE(catalog.GetModules().empty());
        EXPECT_EQ(GetProblems(catalog), Texts());
    }
}

TEST(ModuleCatalog, ReadsTheDocumentsOfTheRealModules)
{
    const auto catalog =
        test::MakeCatalog({test::GetRealModule("TVXGenericPlugins"), test::GetRealModule("TVXJsonSerializer")});
    EXPECT_EQ(GetNames(catalog), (Texts{"TVXGenericPlugins.tvxlib", "TVXJsonSerializer.tvxlib"}));
    EXPECT_EQ(catalog.GetModules()[0].document.exports.size(), 8U);
    EXPECT_EQ(catalog.FindByContract("com.talvere.serializers.JSONSerializerContract/1.0").module, 1U);
}

}  // namespace
}  // namespace tvx::host
