// SPDX-License-Identifier: MIT
#include "Platform/DynamicLibrary.h"
#include "Platform/Environment.h"
#include "Platform/MappedFiles.h"
#include "Platform/Threads.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <thread>

namespace tvx::test
{
namespace
{

constexpr const char ModuleFile[] = TVX_TEST_MODULE_FOLDER "/Plugin.tvxlib";

Platform::DynamicLibrary Load(const std::filesystem::path& file)
{
    std::string reason;
    auto library = Platform::DynamicLibrary::Load(file.string(), reason);
    EXPECT_TRUE(library) << reason;
    return library;
}

TEST(MappedFiles, HoldAFileAsLongAsItIsLoaded)
{
    EXPECT_FALSE(Platform::IsMapped(ModuleFile));
    {
        const auto library = Load(ModuleFile);
        EXPECT_TRUE(Platform::IsMapped(ModuleFile));
    }
    EXPECT_FALSE(Platform::IsMapped(ModuleFile));
}

TEST(MappedFiles, KnowAFileByEveryPathToIt)
{
    const ScratchFolder folder;
    const auto file = folder.GetPath() / "name with spaces.tvxlib";
    const auto link = folder.GetPath() / "link.tvxlib";
    std::filesystem::copy_file(ModuleFile, file);
    std::filesystem::create_symlink(file, link);
    const auto library = Load(link);
    EXPECT_TRUE(Platform::IsMapped(file));
    EXPECT_TRUE(Platform::IsMapped(link));
    EXPECT_TRUE(Platform::IsMapped(folder.GetPath() / "." / "link.tvxlib"));
    EXPECT_FALSE(Platform::IsMapped(ModuleFile));
}

TEST(MappedFiles, HoldNothingThatIsNotThere)
{
    EXPECT_FALSE(Platform::IsMapped("no such file"));
    EXPECT_FALSE(Platform::IsMapped({}));
}

TEST(MappedFiles, AreAsManyAsBeforeWhenAFileIsUnloaded)
{
    static_cast<void>(Load(ModuleFile));  // what the system itself needs for the first one stays
    const auto before = Platform::CountMappings();
    {
        const auto library = Load(ModuleFile);
        EXPECT_GT(Platform::CountMappings(), before);
    }
    EXPECT_EQ(Platform::CountMappings(), before);
}

// A sanitizer starts a thread of its own together with the first one, so it is the second that is looked at.
TEST(Threads, AreCountedWhileTheyLive)
{
    std::promise<void> end;
    const auto live = [ended = end.get_future().share()] { ended.wait(); };
    std::thread first(live);
    const auto before = Platform::CountThreads();
    EXPECT_GE(before, 2u);
    std::thread second(live);
    EXPECT_EQ(Platform::CountThreads(), before + 1);
    end.set_value();
    first.join();
    second.join();
}

TEST(EnvironmentVariables, AreNamesWithValues)
{
    ASSERT_EQ(setenv("TVX_TEST_VARIABLE", "a=b c", 1), 0);
    EXPECT_THAT(Platform::GetVariables(), testing::Contains("TVX_TEST_VARIABLE=a=b c"));
    ASSERT_EQ(unsetenv("TVX_TEST_VARIABLE"), 0);
    EXPECT_THAT(Platform::GetVariables(), testing::Not(testing::Contains("TVX_TEST_VARIABLE=a=b c")));
}

}  // namespace
}  // namespace tvx::test
