// SPDX-License-Identifier: MIT
#include "Host/Module.h"

#include "Helpers/Ref.h"
#include "Host/ModuleFile.h"
#include "Interfaces/IFactory.h"
#include "Tests/Host/Modules/TestModuleFiles.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/ElfBuilder.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace tvx::host
{
namespace
{

using test::CaptureOutput;
using test::GetTestModule;

void ExpectNotLoaded(const std::filesystem::path& file, ErrorKind kind, const std::string& problem)
{
    const auto module = Module::Load(file);
    ASSERT_FALSE(module);
    EXPECT_EQ(module.GetError().kind, kind);
    EXPECT_EQ(module.GetError().message, DisplayName(file) + problem);
}

void ExpectNotGiven(const std::string& id, const std::string& problem)
{
    CaptureOutput(
        [&]
        {
            const auto file = GetTestModule("Misbehaving");
            const auto module = Module::Load(file);
            ASSERT_TRUE(module);
            const auto object = module->GetExport(id);
            ASSERT_FALSE(object);
            EXPECT_EQ(object.GetError().kind, ErrorKind::Misbehaved);
            EXPECT_EQ(object.GetError().message, DisplayName(file) + problem);
        });
}

TEST(Module, HasItsDocumentAndGivesItsExports)
{
    const auto output = CaptureOutput(
        []
        {
            const auto module = Module::Load(GetTestModule("Right"));
            ASSERT_TRUE(module);
            EXPECT_EQ(module->GetDocument(), *ReadPluginDocument(GetTestModule("Right")));
            const auto object = module->GetExport("test.Right/1.0");
            ASSERT_TRUE(object);
            EXPECT_EQ((*module->GetExport("test.Right/1.0")).Get(), object->Get());
            EXPECT_TRUE(Query<IFactory>(*object));
        });
    EXPECT_EQ(output, "Right: loaded\nRight: unloaded\n");
}

TEST(Module, StaysMappedUntilItIsDestroyedWhereverItIsMovedTo)
{
    const auto file = GetTestModule("Right");
    CaptureOutput(
        [&]
        {
            {
                auto loaded = Module::Load(file);
                ASSERT_TRUE(loaded);
                const Module moved = std::move(*loaded);
                EXPECT_TRUE(test::IsMapped(file));
                EXPECT_TRUE(moved.GetExport("test.Right/1.0"));
            }
            EXPECT_FALSE(test::IsMapped(file));
        });
}

TEST(Module, IsNotLoadedFromWhatIsNoModule)
{
    const test::ScratchFolder folder;
    ExpectNotLoaded(folder.GetPath() / "missing.tvxlib", ErrorKind::CannotRead, " does not exist");
    ExpectNotLoaded(folder.GetPath(), ErrorKind::CannotRead, " is a folder, not a file");
    const auto text = Module::Load(folder.Write("text.tvxlib", "hello"));
    ASSERT_FALSE(text);
    EXPECT_EQ(text.GetError().kind, ErrorKind::NotAModule);
}

TEST(Module, IsNotLoadedWhenTheSystemRefusesTheFile)
{
    const test::ScratchFolder folder;
    test::ElfBuilder elf(test::ElfClass::Bits64, test::ElfOrder::Little);
    elf.Add(".plugcfg", "<plugcfg version=\"1\"></plugcfg>").Finish();
    const auto module = Module::Load(folder.Write("shell.tvxlib", elf.GetImage()));
    ASSERT_FALSE(module);
    EXPECT_EQ(module.GetError().kind, ErrorKind::CannotLoad);
    const auto begin = DisplayName(folder.GetPath() / "shell.tvxlib") + " cannot be loaded: ";
    EXPECT_TRUE(module.GetError().message.starts_with(begin)) << module.GetError().message;
    EXPECT_GT(module.GetError().message.size(), begin.size());
}

TEST(Module, IsNotUsedWithoutItsEntryPoint)
{
    const auto file = GetTestModule("WithoutGetExport");
    ExpectNotLoaded(file, ErrorKind::Misbehaved, " has no function GetExport");
    EXPECT_FALSE(test::IsMapped(file));
}

TEST(Module, IsBlamedForAnExportThatItDoesNotGive)
{
    ExpectNotGiven("test.Failing/1.0", " does not give its export \"test.Failing/1.0\" (result -7)");
    ExpectNotGiven("test.Unknown/1.0", " does not give its export \"test.Unknown/1.0\" (result -1)");
    ExpectNotGiven("test.Null/1.0", " gives null for its export \"test.Null/1.0\"");
}

TEST(Module, LosesTheObjectThatItGivesWithAFailure)
{
    ExpectNotGiven("test.FailingLate/1.0", " does not give its export \"test.FailingLate/1.0\" (result -1)");
}

}  // namespace
}  // namespace tvx::host
