// SPDX-License-Identifier: MIT
#include "Host/ModuleFile.h"

#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace tvx::host
{
namespace
{

using test::ScratchFolder;

void ExpectNotReadable(const std::filesystem::path& path, const std::string& problem)
{
    const auto file = ModuleFile::Open(path);
    ASSERT_FALSE(file);
    EXPECT_EQ(file.GetError().kind, ErrorKind::CannotRead);
    EXPECT_EQ(file.GetError().message, DisplayName(path) + problem);
}

TEST(ModuleFile, GivesTheBytesAskedForInAnyOrder)
{
    const ScratchFolder folder;
    auto file = ModuleFile::Open(folder.Write("a", "0123456789"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->GetSize(), 10U);
    EXPECT_EQ(*file->Read("part", 8, 2), "89");
    EXPECT_EQ(*file->Read("part", 0, 10), "0123456789");
    EXPECT_EQ(*file->Read("part", 3, 2), "34");
    EXPECT_EQ(*file->Read("part", 10, 0), "");
}

TEST(ModuleFile, RefusesAPathWhereNothingIs)
{
    const ScratchFolder folder;
    ExpectNotReadable(folder.GetPath() / "missing.tvxlib", " does not exist");
    ExpectNotReadable(folder.Write("file", "x") / "below.tvxlib", " does not exist");
    ExpectNotReadable({}, " does not exist");
}

TEST(ModuleFile, RefusesALinkToNothingAndFollowsALinkToAFile)
{
    const ScratchFolder folder;
    std::filesystem::create_symlink(folder.GetPath() / "missing", folder.GetPath() / "dangling");
    ExpectNotReadable(folder.GetPath() / "dangling", " does not exist");
    std::filesystem::create_symlink(folder.Write("file", "x"), folder.GetPath() / "link");
    EXPECT_TRUE(ModuleFile::Open(folder.GetPath() / "link"));
}

TEST(ModuleFile, RefusesAFolder)
{
    const ScratchFolder folder;
    ExpectNotReadable(folder.GetPath(), " is a folder, not a file");
}

TEST(ModuleFile, RefusesADeviceWithoutReadingIt)
{
    ExpectNotReadable("/dev/zero", " is not a regular file");
}

TEST(ModuleFile, RefusesAPathThatTheSystemRefuses)
{
    const auto path = std::filesystem::path(testing::TempDir()) / std::string(5000, 'a');
    const auto message = std::make_error_code(std::errc::filename_too_long).message();
    ExpectNotReadable(path, " cannot be read: " + message);
}

TEST(ModuleFile, RefusesAFileThatTheUserMayNotRead)
{
    const ScratchFolder folder;
    const auto path = folder.Write("secret", "x");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    if (std::ifstream(path))
    {
        GTEST_SKIP() << "this user may read every file";
    }
    ExpectNotReadable(path, " cannot be opened for reading");
}

TEST(ModuleFile, NamesAFileWithLineBreaksInOneLine)
{
    const auto file = ModuleFile::Open("no\nsuch\x1B"
                                       "file");
    ASSERT_FALSE(file);
    EXPECT_EQ(file.GetError().message, "no?such?file does not exist");
}

TEST(ModuleFile, RefusesToReadBeyondTheEnd)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a", "0123456789");
    auto file = ModuleFile::Open(path);
    constexpr std::uint64_t most = UINT64_MAX;
    constexpr std::uint64_t places[][2] = {{0, 11},   {10, 1},   {11, 0},      {5, 6},
                                           {most, 1}, {1, most}, {most, most}, {0, most}};
    for (const auto& [offset, size] : places)
    {
        const auto bytes = file->Read("part", offset, size);
        ASSERT_FALSE(bytes) << offset << ' ' << size;
        EXPECT_EQ(bytes.GetError().kind, ErrorKind::DamagedModule);
        EXPECT_EQ(bytes.GetError().message,
                  DisplayName(path) + " is a damaged module: its part reaches beyond the end of the file");
    }
}

TEST(ModuleFile, ReadsUpToItsLimitAndNoFurther)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a", "");
    std::filesystem::resize_file(path, ModuleFile::MaxRead + 1);
    auto file = ModuleFile::Open(path);
    EXPECT_EQ(file->Read("part", 1, ModuleFile::MaxRead)->size(), ModuleFile::MaxRead);
    const auto bytes = file->Read("part", 0, ModuleFile::MaxRead + 1);
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.GetError().kind, ErrorKind::DamagedModule);
    EXPECT_EQ(bytes.GetError().message, DisplayName(path) + " is a damaged module: its part is larger than 16 MiB");
}

TEST(ModuleFile, NoticesThatTheFileBecameShorter)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a", "0123456789");
    auto file = ModuleFile::Open(path);
    std::filesystem::resize_file(path, 5);
    const auto bytes = file->Read("part", 3, 4);
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.GetError().kind, ErrorKind::CannotRead);
    EXPECT_EQ(bytes.GetError().message, DisplayName(path) + " cannot be read: reading its part failed");
    EXPECT_EQ(*file->Read("part", 3, 2), "34");
}

}  // namespace
}  // namespace tvx::host
