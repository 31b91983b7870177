// SPDX-License-Identifier: MIT
#include "Tests/Support/ElfBuilder.h"
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <random>

namespace tvx::test
{
namespace
{

using Json = nlohmann::json;

std::string MakeModuleImage(const std::string& document)
{
    ElfBuilder elf(ElfClass::Bits64, ElfOrder::Little);
    return elf.Add(".plugcfg", document).Finish().GetImage();
}

TEST(InfoCommand, ShowsTheDocumentOfAModuleWithoutRunningItsCode)
{
    const auto file = GetTestModule("Recorder").string();
    const auto run = RunTvx({"info", file});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(run.output.starts_with(file + "\n"
                                              "  test.Recorder/1.0\n"
                                              "      name Recorder\n"
                                              "      contract test.RecorderContract/1.0\n"
                                              "      format test.RecorderFormat/1.0\n"
                                              "      import Neighbour <- test.LeftContract/1.0\n"
                                              "      import Nobody <- test.NobodyContract/1.0 (optional)\n"))
        << run.output;
    EXPECT_EQ(run.output.find("loaded"), std::string::npos);
}

TEST(InfoCommand, PrintsNothingButJson)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    const auto run = RunTvx({"info", "--json", file});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    const auto module = Json::parse(run.output);
    EXPECT_EQ(module["file"], file);
    EXPECT_EQ(module["version"], "1");
    EXPECT_EQ(module["exports"].size(), 8U);
    EXPECT_EQ(module["exports"][7]["imports"][1]["optional"], true);
}

TEST(InfoCommand, PrintsJsonAlsoForADocumentThatIsNoUtf8)
{
    const ScratchFolder folder;
    const auto file = folder.Write("latin.tvxlib", MakeModuleImage("<plugcfg version=\"1\"><export><id>i</id>"
                                                                   "<contract>c</contract><metadata><name>\xE4</name>"
                                                                   "</metadata></export></plugcfg>"));
    const auto run = RunTvx({"info", "--json", file.string()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Json::parse(run.output)["exports"][0]["metadata"]["name"], "\xEF\xBF\xBD");
}

TEST(InfoCommand, RefusesWhatIsNotThere)
{
    const ScratchFolder folder;
    const auto missing = (folder.GetPath() / "missing.tvxlib").string();
    EXPECT_TRUE(Refused(RunTvx({"info", missing}), 3, missing + " does not exist"));
    EXPECT_TRUE(Refused(RunTvx({"info", missing, "--json"}), 3, missing + " does not exist"));
    EXPECT_TRUE(Refused(RunTvx({"info", "no\nsuch"}), 3, "no?such does not exist"));
}

TEST(InfoCommand, RefusesAFolderAndADevice)
{
    const ScratchFolder folder;
    const auto path = folder.GetPath().string();
    EXPECT_TRUE(Refused(RunTvx({"info", path}), 3, path + " is a folder, not a file"));
    EXPECT_TRUE(Refused(RunTvx({"info", "/dev/zero"}), 3, "/dev/zero is not a regular file"));
}

TEST(InfoCommand, RefusesAModuleThatIsCutOffAnywhere)
{
    const ScratchFolder folder;
    const auto whole = detail::ReadAll(GetRealModule("TVXGenericPlugins"));
    const auto size = whole.size();
    for (const auto length : {std::size_t{0}, std::size_t{1}, std::size_t{4}, std::size_t{16}, std::size_t{52},
                              std::size_t{63}, std::size_t{64}, size / 4, size / 2, size - 2000, size - 65, size - 1})
    {
        const auto file = folder.Write("cut.tvxlib", whole.substr(0, length)).string();
        EXPECT_TRUE(RefusedInOneLine(RunTvx({"info", file}), 3, file + " is ")) << length;
    }
}

TEST(InfoCommand, RefusesBytesThatAreNoModule)
{
    const ScratchFolder folder;
    std::mt19937 random(20260117);
    for (const std::size_t size : {10U, 1000U, 100000U})
    {
        std::string bytes(size, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
        const auto file = folder.Write("random.tvxlib", bytes).string();
        EXPECT_TRUE(RefusedInOneLine(RunTvx({"info", file}), 3, file + " is "));
        bytes.replace(0, 7, "\177ELF\2\1\1");
        folder.Write("random.tvxlib", bytes);
        EXPECT_TRUE(RefusedInOneLine(RunTvx({"info", file}), 3, file + " "));
    }
    const auto text = folder.Write("text.tvxlib", "<plugcfg version=\"1\"></plugcfg>").string();
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"info", text}), 3, text + " is "));
}

TEST(InfoCommand, RefusesAProgramWithoutADocument)
{
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"info", TVX_PROGRAM}), 3, std::string(TVX_PROGRAM) + " "));
}

TEST(InfoCommand, RefusesABadDocumentAndNamesTheLine)
{
    const ScratchFolder folder;
    const auto file = folder.Write("bad.tvxlib", MakeModuleImage("<plugcfg version=\"1\">\n<export>\n</plugcfg>"));
    const auto run = RunTvx({"info", file.string()});
    EXPECT_TRUE(RefusedInOneLine(run, 3, file.string()));
    EXPECT_NE(run.errors.find("line "), std::string::npos) << run.errors;
}

}  // namespace
}  // namespace tvx::test
