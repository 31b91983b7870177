// SPDX-License-Identifier: MIT
#include "Host/TracedInterface.h"
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <set>

namespace tvx::test
{
namespace
{

using Json = nlohmann::json;

// Each identifier that a header declares must be known.
void CheckHeader(const std::filesystem::path& header, std::set<std::string>& declared)
{
    constexpr std::string_view mark = " Id[] = \"";
    const auto text = detail::ReadAll(header);
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at))
    {
        at += mark.size();
        const auto identifier = text.substr(at, text.find('"', at) - at);
        EXPECT_NE(host::FindTracedInterface(identifier), nullptr) << identifier << " of " << header;
        declared.insert(identifier);
    }
}

TEST(KnownInterfaces, AreAllThatTheContractHas)
{
    const auto root = std::filesystem::path(TVX_SETTINGS_FILE).parent_path().parent_path().parent_path();
    std::set<std::string> declared;
    for (const auto& entry : std::filesystem::directory_iterator(root / "Interfaces"))
        CheckHeader(entry.path(), declared);
    for (const auto* const known : host::GetTracedInterfaces())
        EXPECT_TRUE(known->id == nullptr || declared.count(known->id) == 1) << known->id;
    EXPECT_GT(declared.size(), 40U);
}

TEST(ProbeCommand, TellsTheClassAndTheInterfacesOfEveryExport)
{
    const auto file = GetRealModule("TVXJsonSerializer").string();
    EXPECT_TRUE(Answered(RunTvx({"probe", file}), file +
                                                      "\n"
                                                      "  com.talvere.serializers.JSONSerializer/1.0\n"
                                                      "      class tvx::host::JsonSerializerFactory\n"
                                                      "      interface com.talvere.general.tvx.IImportsContainer/1.0\n"
                                                      "      interface com.talvere.general.tvx.IObject/1.0\n"
                                                      "      interface com.talvere.general.tvx.IObjectBase/1.0\n"
                                                      "      interface com.talvere.general.tvx.ISerializerFactory/1.0\n"
                                                      "      references 2\n"));
}

TEST(ProbeCommand, PrintsNothingButJson)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    const auto run = RunTvx({"probe", "--json", file});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    const auto probed = Json::parse(run.output);
    EXPECT_EQ(probed["file"], file);
    ASSERT_EQ(probed["exports"].size(), 8U);
    EXPECT_EQ(probed["exports"][0], Json::parse(R"({"id": "com.talvere.general.tvx.GenericStringImplementation/1.0",
                                                   "class": "tvx::StringFactory",
                                                   "interfaces": ["com.talvere.general.tvx.IObjectBase/1.0",
                                                                  "com.talvere.general.tvx.IStringFactory/1.0"],
                                                   "references": 2})"));
    for (const auto& entry : probed["exports"])
        EXPECT_FALSE(entry.contains("problem")) << entry;
}

TEST(ProbeCommand, NeedsNoImport)
{
    const auto run = RunTvx({"probe", GetTestModule("Right").string()});  // imports what only another module has
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(HasInOrder(run.output, {"  test.Right/1.0\n", "      class tvx::test::TalkingExport\n",
                                        "      interface com.talvere.general.tvx.IImportsContainer/1.0\n"}));
}

TEST(ProbeCommand, ShowsWhatTheModuleWroteBehindTheAnswers)
{
    const auto run = RunTvx({"probe", GetTestModule("Left").string()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(run.output.ends_with("references 2\n"
                                     "  standard output\n"
                                     "      Left: loaded\n"
                                     "  standard output of unloading\n"
                                     "      Left: unloaded\n"))
        << run.output;
    const auto probed = Json::parse(RunTvx({"probe", "--json", GetTestModule("Left").string()}).output);
    EXPECT_EQ(probed["output"], "Left: loaded\n");
}

TEST(ProbeCommand, AsksTheModuleInThisProcessWhenItIsTold)
{
    const auto file = GetTestModule("Left").string();
    const auto there = RunTvx({"probe", file});
    const auto here = RunTvx({"probe", "--in-process", file});
    EXPECT_EQ(here.output, there.output);
    EXPECT_EQ(here.exitCode, 0);
}

TEST(ProbeCommand, NamesEveryExportThatIsNotGiven)
{
    const auto file = GetTestModule("Misbehaving").string();
    const auto run = RunTvx({"probe", file});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, file + "\n"
                                 "  test.Failing/1.0\n"
                                 "      not given\n"
                                 "  test.FailingLate/1.0\n"
                                 "      not given\n"
                                 "  test.Null/1.0\n"
                                 "      not given\n"
                                 "  test.Bare/1.0\n"
                                 "      class tvx::check::BareObject\n"
                                 "      interface com.talvere.general.tvx.IObjectBase/1.0\n"
                                 "      references 2\n"
                                 "  test.Unconnectable/1.0\n"
                                 "      class tvx::check::BareObject\n"
                                 "      interface com.talvere.general.tvx.IObjectBase/1.0\n"
                                 "      references 2\n"
                                 "  standard output\n"
                                 "      Misbehaving: loaded\n"
                                 "  standard output of unloading\n"
                                 "      Misbehaving: unloaded\n");
    EXPECT_EQ(run.errors, "tvx: " + file + " does not give its export \"test.Failing/1.0\" (result -7)\n" +  //
                              "tvx: " + file + " does not give its export \"test.FailingLate/1.0\" (result -1)\n" +
                              "tvx: " + file + " gives null for its export \"test.Null/1.0\"\n");
}

TEST(ProbeCommand, NamesThemInItsJsonToo)
{
    const auto file = GetTestModule("Misbehaving").string();
    const auto run = RunTvx({"probe", "--json", file});
    EXPECT_EQ(run.exitCode, 1);
    const auto exports = Json::parse(run.output)["exports"];
    ASSERT_EQ(exports.size(), 5U);
    EXPECT_EQ(exports[2],
              (Json{{"id", "test.Null/1.0"}, {"problem", file + " gives null for its export \"test.Null/1.0\""}}));
    EXPECT_FALSE(exports[3].contains("problem"));
}

TEST(ProbeCommand, ShowsWhatAModuleWithoutAnEntryPointLacks)
{
    const auto file = GetTestModule("WithoutGetExport").string();
    EXPECT_TRUE(Refused(RunTvx({"probe", file}), 3, file + " has no function GetExport"));
}

TEST(ProbeCommand, RefusesWhatIsNoModule)
{
    const ScratchFolder folder;
    const auto missing = (folder.GetPath() / "missing.tvxlib").string();
    EXPECT_TRUE(Refused(RunTvx({"probe", missing}), 3, missing + " does not exist"));
    EXPECT_TRUE(Refused(RunTvx({"probe", "no\nsuch", "--json"}), 3, "no?such does not exist"));
    const auto text = folder.Write("text.tvxlib", "<plugcfg version=\"1\"></plugcfg>").string();
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"probe", text}), 3, text + " is "));
    const auto path = folder.GetPath().string();
    EXPECT_TRUE(Refused(RunTvx({"probe", path}), 3, path + " is a folder, not a file"));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"probe", TVX_PROGRAM}), 3, std::string(TVX_PROGRAM) + " "));
}

// A document is read whatever processor the module's code is for.
TEST(ProbeCommand, RefusesAModuleThatTheSystemDoesNotLoad)
{
    const ScratchFolder folder;
    auto image = detail::ReadAll(GetTestModule("Right"));
    image[18] = '\x28';  // for another processor
    const auto file = folder.Write("other.tvxlib", image).string();
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"probe", file}), 3, file + " cannot be loaded: "));
}

}  // namespace
}  // namespace tvx::test
