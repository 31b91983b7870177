// SPDX-License-Identifier: MIT
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>

namespace tvx::test
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// Runs a command of the shell and gives what it wrote; a command that fails fails the test.
std::string RunCommand(const std::string& command)
{
    std::string output;
    FILE* const pipe = popen(command.c_str(), "r");
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe))
        output.push_back(static_cast<char>(byte));
    const int status = pclose(pipe);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << command;
    return output;
}

std::string Quote(const std::filesystem::path& path)
{
    return " '" + path.string() + "'";
}

std::string Read(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The lines of text that hold part.
std::vector<std::string> GetLines(const std::string& text, const std::string& part)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
    {
        if (line.find(part) != std::string::npos)
            lines.push_back(line);
    }
    return lines;
}

class ModuleFile : public testing::Test
{
protected:
    // The document as it stands in the section of a module's file.
    std::string TakeDocument(const std::filesystem::path& file) { return TakeSection(".plugcfg", file); }

    std::string TakeSection(const std::string& section, const std::filesystem::path& file)
    {
        const auto taken = scratch.GetPath() / "section";
        RunCommand(TVX_OBJCOPY " -O binary --only-section=" + section + Quote(file) + Quote(taken));
        return Read(taken);
    }

    std::filesystem::path Strip()
    {
        auto stripped = scratch.GetPath() / "stripped.tvxlib";
        RunCommand(TVX_STRIP " --strip-all -o" + Quote(stripped) + Quote(module));
        return stripped;
    }

    const std::filesystem::path module = TVX_MODULE_FILE;
    const std::filesystem::path document = TVX_DOCUMENT_FILE;
    ScratchFolder scratch;
};

}  // namespace

TEST_F(ModuleFile, ExportsOneSymbol)
{
    std::istringstream symbols(RunCommand(TVX_NM " -D --defined-only --format=posix" + Quote(module)));
    std::vector<std::string> names;
    for (std::string line; std::getline(symbols, line);)
        names.push_back(line.substr(0, line.find(' ', line.find(' ') + 1)));
    EXPECT_THAT(names, ElementsAre("GetExport T"));
}

TEST_F(ModuleFile, HasNothingThatPinsIt)
{
    EXPECT_THAT(GetLines(RunCommand(TVX_READELF " -W --dyn-syms" + Quote(module)), "UNIQUE"), ElementsAre());
    const auto dynamic = RunCommand(TVX_READELF " -W -d" + Quote(module));
    EXPECT_THAT(dynamic, HasSubstr("NEEDED"));  // it is the dynamic section that was read
    EXPECT_THAT(dynamic, Not(HasSubstr("NODELETE")));
}

TEST_F(ModuleFile, CarriesTheDocumentByteForByte)
{
    EXPECT_EQ(TakeDocument(module), Read(document));
}

TEST_F(ModuleFile, KeepsTheDocumentWhenStripped)
{
    const auto stripped = Strip();
    EXPECT_LT(std::filesystem::file_size(stripped), std::filesystem::file_size(module));
    EXPECT_EQ(TakeDocument(stripped), Read(document));
}

TEST_F(ModuleFile, KeepsItsVersionAndTheCommentOnItsBuildWhenStripped)
{
    const auto text = TakeSection(".plugbuild", module);
    const std::string version = TVX_VERSION "\n";
    EXPECT_EQ(text.substr(0, version.size()), version);
    EXPECT_THAT(text.substr(std::min(version.size(), text.size())), HasSubstr(" build with "));
    EXPECT_EQ(TakeSection(".plugbuild", Strip()), text);
}

TEST_F(ModuleFile, HasTheDocumentInReadOnlyMemory)
{
    const auto lines = GetLines(RunCommand(TVX_READELF " -W -S" + Quote(module)), " .plugcfg ");
    ASSERT_EQ(lines.size(), 1u);
    std::istringstream fields(lines.front().substr(lines.front().find(" .plugcfg ")));
    std::string name, type, address, offset, size, entrySize, flags;
    fields >> name >> type >> address >> offset >> size >> entrySize >> flags;
    EXPECT_EQ(type, "PROGBITS");
    EXPECT_THAT(flags, HasSubstr("A"));
    EXPECT_THAT(flags, Not(HasSubstr("W")));
    EXPECT_THAT(flags, Not(HasSubstr("X")));
}

}  // namespace tvx::test
