// SPDX-License-Identifier: MIT
#include "Host/TextFile.h"

#include "Host/ModuleFile.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <sys/stat.h>

namespace tvx::host
{
namespace
{

using std::filesystem::perms;
using test::ScratchFolder;

void ExpectFailure(const Error& error, const std::filesystem::path& file, const std::string& problem)
{
    EXPECT_EQ(error.kind, ErrorKind::CannotRead);
    EXPECT_EQ(error.message, DisplayName(file) + problem);
}

void ExpectNotRead(const std::filesystem::path& file, const std::string& problem)
{
    const auto text = ReadTextFile(file);
    ASSERT_FALSE(text);
    ExpectFailure(text.GetError(), file, problem);
}

std::size_t CountEntries(const ScratchFolder& folder)
{
    const std::filesystem::directory_iterator entries(folder.GetPath());
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

perms GetPermissions(const std::filesystem::path& file)
{
    return std::filesystem::status(file).permissions();
}

// Whether the rights of files mean anything to this user.
bool MayWriteInto(const std::filesystem::path& folder)
{
    return static_cast<bool>(std::ofstream(folder / "probe"));
}

TEST(TextFile, GivesAllBytesOfAFile)
{
    const ScratchFolder folder;
    const std::string text("a\r\nb\0\xFF\n", 7);
    EXPECT_EQ(*ReadTextFile(folder.Write("file", text)), text);
    EXPECT_EQ(*ReadTextFile(folder.Write("empty", "")), "");
    const std::string large(100000, 'x');
    EXPECT_EQ(*ReadTextFile(folder.Write("large", large)), large);
}

TEST(TextFile, RefusesToReadWhatIsMissing)
{
    const ScratchFolder folder;
    ExpectNotRead(folder.GetPath() / "missing", " does not exist");
    ExpectNotRead(folder.GetPath() / "missing" / "below", " does not exist");
    ExpectNotRead("", " does not exist");
    std::filesystem::create_symlink("missing", folder.GetPath() / "link");
    ExpectNotRead(folder.GetPath() / "link", " does not exist");
}

TEST(TextFile, RefusesToReadAFolder)
{
    const ScratchFolder folder;
    ExpectNotRead(folder.GetPath(), " is a folder");
}

TEST(TextFile, RefusesToReadAFileThatTheUserMayNotRead)
{
    const ScratchFolder folder;
    const auto file = folder.Write("secret", "x");
    std::filesystem::permissions(file, perms::none);
    if (std::ifstream(file))
        GTEST_SKIP() << "this user may read every file";
    ExpectNotRead(file, " cannot be read");
}

TEST(TextFile, ReadsFilesOfUpTo64MiB)
{
    constexpr std::uintmax_t most = 64 * 1024 * 1024;
    const ScratchFolder folder;
    const auto file = folder.Write("file", "");
    std::filesystem::resize_file(file, most);
    EXPECT_EQ(ReadTextFile(file)->size(), most);
    std::filesystem::resize_file(file, most + 1);
    ExpectNotRead(file, " is larger than 64 MiB");
}

TEST(TextFile, RefusesAFileWithoutAnEnd)
{
    ExpectNotRead("/dev/zero", " is larger than 64 MiB");
}

TEST(TextFile, MakesAFile)
{
    const ScratchFolder folder;
    const auto file = folder.GetPath() / "file";
    const std::string text("a\r\n\0\xFF", 5);
    EXPECT_EQ(*WriteTextFile(file, text), 5U);
    EXPECT_EQ(*ReadTextFile(file), text);
    EXPECT_EQ(CountEntries(folder), 1U);
}

TEST(TextFile, ReplacesAFileAsAWhole)
{
    const ScratchFolder folder;
    const auto file = folder.Write("file", "a long old text");
    std::ifstream reader(file);
    EXPECT_EQ(*WriteTextFile(file, "new"), 3U);
    EXPECT_EQ(*ReadTextFile(file), "new");
    std::string seen;
    std::getline(reader, seen);
    EXPECT_EQ(seen, "a long old text");  // who has it open keeps the old file
    EXPECT_EQ(*WriteTextFile(file, ""), 0U);
    EXPECT_EQ(*ReadTextFile(file), "");
    EXPECT_EQ(CountEntries(folder), 1U);
}

TEST(TextFile, KeepsTheRightsOfTheFileThatItReplaces)
{
    const ScratchFolder folder;
    const auto file = folder.Write("file", "old");
    for (const auto rights : {perms::owner_read | perms::owner_write, perms::owner_all | perms::group_read})
    {
        std::filesystem::permissions(file, rights);
        EXPECT_TRUE(WriteTextFile(file, "new"));
        EXPECT_EQ(GetPermissions(file), rights);
    }
}

TEST(TextFile, ReplacesTheTargetOfALinkAndKeepsTheLink)
{
    const ScratchFolder folder;
    const auto target = folder.Write("target", "old");
    const auto link = folder.GetPath() / "link";
    const auto outer = folder.GetPath() / "outer";
    std::filesystem::create_symlink("target", link);
    std::filesystem::create_symlink("link", outer);
    EXPECT_TRUE(WriteTextFile(outer, "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(outer));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_FALSE(std::filesystem::is_symlink(target));
    EXPECT_EQ(*ReadTextFile(target), "new");
    EXPECT_EQ(CountEntries(folder), 3U);
}

TEST(TextFile, RefusesToReplaceWhatIsNoFile)
{
    const ScratchFolder folder;
    const auto written = WriteTextFile(folder.GetPath(), "text");
    ASSERT_FALSE(written);
    ExpectFailure(written.GetError(), folder.GetPath(), " cannot be written: it is not a regular file");
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath().string() + ".new"));
    const auto pipe = folder.GetPath() / "pipe";  // never a device: a user who may do everything would lose it here
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const auto sent = WriteTextFile(pipe, "text");
    ASSERT_FALSE(sent);
    ExpectFailure(sent.GetError(), pipe, " cannot be written: it is not a regular file");
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_EQ(CountEntries(folder), 1U);
}

TEST(TextFile, RefusesToWriteIntoAFolderThatIsMissing)
{
    const ScratchFolder folder;
    const auto file = folder.GetPath() / "missing" / "file";
    const auto written = WriteTextFile(file, "text");
    ASSERT_FALSE(written);
    ExpectFailure(written.GetError(), file, " cannot be written");
    EXPECT_EQ(CountEntries(folder), 0U);
}

TEST(TextFile, LeavesTheFileAsItWasWhenItsFolderMayNotBeWritten)
{
    const ScratchFolder folder;
    const auto closed = folder.GetPath() / "closed";
    std::filesystem::create_directory(closed);
    const auto file = folder.Write("closed/file", "old");
    std::filesystem::permissions(closed, perms::owner_read | perms::owner_exec);
    if (MayWriteInto(closed))
        GTEST_SKIP() << "this user may write into every folder";
    const auto written = WriteTextFile(file, "new");
    std::filesystem::permissions(closed, perms::owner_all);
    ASSERT_FALSE(written);
    ExpectFailure(written.GetError(), file, " cannot be written");
    EXPECT_EQ(*ReadTextFile(file), "old");
    EXPECT_FALSE(std::filesystem::exists(file.string() + ".new"));
}

}  // namespace
}  // namespace tvx::host
