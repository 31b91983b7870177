// SPDX-License-Identifier: MIT
#include "Tests/Support/ElfBuilder.h"
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

namespace tvx::test
{
namespace
{

using Json = nlohmann::json;

constexpr const char NoSerializer[] = "LibManager: NULL object proxy returned for \"Serializer\".";
constexpr const char GaveNull[] =
    "LibManager: Library returned NULL object for \"I\". Probably declared and exported contracts are different or the "
    "library is failed to load.";

// What becomes of the imports of a program's only module.
Json ResolveAll(const ProgramCopy& program, int exitCode)
{
    const auto run = program.Run({"resolve", "--json"});
    EXPECT_EQ(run.exitCode, exitCode);
    EXPECT_EQ(run.errors, "");
    return Json::parse(run.output)["modules"];
}

// A copy of a module in which one text of its document is another one of the same length.
std::string Change(const ScratchFolder& folder, const std::string& module, const std::string& from,
                   const std::string& to)
{
    auto image = detail::ReadAll(GetRealModule(module));
    const auto place = image.find("<contract>" + from);
    EXPECT_NE(place, std::string::npos);
    image.replace(place + std::string("<contract>").size(), from.size(), to);
    return folder.Write("Changed.tvxlib", image).string();
}

// A module of a document alone: an export of a contract, with an import of that name.
std::string Install(const ScratchFolder& folder, const std::string& id, const std::string& needs, bool optional = false)
{
    ElfBuilder elf(ElfClass::Bits64, ElfOrder::Little);
    elf.Add(".plugcfg", "<plugcfg version=\"1\"><export><id>" + id + "</id><contract>" + id +
                            "Contract/1.0</contract><metadata><name>n</name></metadata><import><property>I</property>"
                            "<contract>" +
                            needs + "</contract><optional>" + (optional ? "true" : "false") +
                            "</optional></import></export></plugcfg>");
    return folder.Write(id + ".tvxlib", elf.Finish().GetImage()).string();
}

TEST(ResolveCommand, SaysWhatFulfilsEachImport)
{
    const ProgramCopy program({"TVXGenericPlugins", "TVXJsonSerializer"});
    const auto folder = program.GetFolder().GetPath();
    EXPECT_TRUE(Answered(
        program.Run({"resolve"}),
        (folder / "TVXGenericPlugins.tvxlib").string() +
            "\n"
            "  com.talvere.general.tvx.GenericSimpleMapImplementation/1.1\n"
            "      import Serializer <- com.talvere.serializers.JSONSerializerContract/1.0\n"
            "          satisfied by com.talvere.serializers.JSONSerializer/1.0 of " +
            (folder / "TVXJsonSerializer.tvxlib").string() +
            "\n"
            "  com.talvere.general.tvx.BasicLogger/1.0\n"
            "      import LibManager <- com.talvere.general.tvx.LibManagerContract/1.0\n"
            "          satisfied by the host\n"
            "      import CrashDumpServer <- com.talvere.general.tvx.contract.CrashDumpServer/1.0\n"
            "          optional and missing: LibManager: NULL object proxy returned for \"CrashDumpServer\".\n" +
            (folder / "TVXJsonSerializer.tvxlib").string() +
            "\n"
            "  com.talvere.serializers.JSONSerializer/1.0\n"
            "      import LibManager <- com.talvere.general.tvx.LibManagerContract/1.0\n"
            "          satisfied by the host\n"));
}

TEST(ResolveCommand, SaysWhichRequiredImportIsMissing)
{
    const ProgramCopy program({"TVXGenericPlugins"});
    const auto modules = ResolveAll(program, 1);
    EXPECT_EQ(modules[0]["exports"][2]["imports"],
              Json::parse(R"([{"property": "Serializer", "optional": false, "state": "required and missing",
                               "contract": "com.talvere.serializers.JSONSerializerContract/1.0"}])")
                  .patch(Json::array({{{"op", "add"}, {"path", "/0/message"}, {"value", NoSerializer}}})));
    EXPECT_EQ(modules[0]["exports"][0]["imports"], Json::array());
}

TEST(ResolveCommand, TakesAnotherVersionForAWrongContract)
{
    const ProgramCopy program({"TVXGenericPlugins"});
    const auto changed =
        Change(program.GetFolder(), "TVXJsonSerializer", "com.talvere.serializers.JSONSerializerContract/1.0",
               "com.talvere.serializers.JSONSerializerContract/2.0");
    const auto run = program.Run({"resolve"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(
        HasInOrder(run.output,
                   {"      import Serializer <- com.talvere.serializers.JSONSerializerContract/1.0\n"
                    "          wrong contract (required): LibManager: NULL object proxy returned for \"Serializer\".\n",
                    "          com.talvere.serializers.JSONSerializer/1.0 of " + changed +
                        " fulfils com.talvere.serializers.JSONSerializerContract/2.0\n"}));
}

TEST(ResolveCommand, IsContentWithAWrongContractOfAnOptionalImport)
{
    const ScratchFolder folder;
    const auto asking = Install(folder, "A", "BContract/2.0", true);
    const auto other = Install(folder, "B", "AContract/1.0");
    EXPECT_TRUE(Answered(RunTvx({"resolve", asking, other}),
                         asking +
                             "\n"
                             "  A\n"
                             "      import I <- BContract/2.0\n"
                             "          wrong contract (optional): LibManager: NULL object proxy returned for \"I\".\n"
                             "          B of " +
                             other + " fulfils BContract/1.0\n" + other +
                             "\n"
                             "  B\n"
                             "      import I <- AContract/1.0\n"
                             "          satisfied by A of " +
                             asking + "\n"));
    const auto modules = Json::parse(RunTvx({"resolve", asking, other, "--json"}).output)["modules"];
    EXPECT_EQ(modules[0]["exports"][0]["imports"][0]["optional"], true);
    EXPECT_EQ(modules[0]["exports"][0]["imports"][0]["state"], "wrong contract");
}

TEST(ResolveCommand, SaysWhyAProviderCannotBeHad)
{
    const ScratchFolder folder;
    const auto asking = Install(folder, "A", "BContract/1.0");
    const auto provider = Install(folder, "B", "NobodyContract/1.0");
    const auto run = RunTvx({"resolve", asking, "-p", provider});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, asking +
                              "\n"
                              "  A\n"
                              "      import I <- BContract/1.0\n"
                              "          provider cannot be had (required): " +
                              GaveNull + "\n          B of " + provider +
                              " needs I <- NobodyContract/1.0, which nothing fulfils\n");
    const auto json = Json::parse(RunTvx({"resolve", asking, "-p", provider, "--json"}).output);
    const auto import = json["modules"][0]["exports"][0]["imports"][0];
    EXPECT_EQ(import,
              (Json{{"property", "I"},
                    {"contract", "BContract/1.0"},
                    {"optional", false},
                    {"state", "provider cannot be had"},
                    {"provider", "B of " + provider},
                    {"message", GaveNull},
                    {"missing",
                     Json::array(
                         {{{"export", "B of " + provider}, {"property", "I"}, {"contract", "NobodyContract/1.0"}}})}}));
}

TEST(ResolveCommand, IsContentWithoutTheProviderOfAnOptionalImport)
{
    const ScratchFolder folder;
    const auto asking = Install(folder, "A", "BContract/1.0", true);
    const auto provider = Install(folder, "B", "NobodyContract/1.0");
    const auto run = RunTvx({"resolve", asking, "-p", provider});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(HasInOrder(run.output, {"provider cannot be had (optional): ", GaveNull, "NobodyContract/1.0"}));
}

TEST(ResolveCommand, TellsWhatAProviderThatIsThereGoesWithout)
{
    const ScratchFolder folder;
    const auto asking = Install(folder, "A", "BContract/1.0");
    const auto provider = Install(folder, "B", "CContract/1.0");
    const auto broken = Install(folder, "C", "NobodyContract/1.0");
    const auto lines = "          satisfied by B of " + provider + "\n          B of " + provider +
                       " goes without I <- CContract/1.0\n          C of " + broken +
                       " needs I <- NobodyContract/1.0, which nothing fulfils\n";
    const auto run = RunTvx({"resolve", asking, "-p", folder.GetPath().string()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(HasInOrder(run.output, {lines}));
    EXPECT_EQ(RunTvx({"resolve", asking, provider, "-p", broken}).exitCode, 1);
}

TEST(ResolveCommand, IsContentWithModulesThatImportEachOtherInACircle)
{
    const ScratchFolder folder;
    const auto first = Install(folder, "A", "BContract/1.0");
    const auto second = Install(folder, "B", "CContract/1.0");
    const auto third = Install(folder, "C", "AContract/1.0");
    const auto run = RunTvx({"resolve", first, second, third});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output.find("without"), std::string::npos) << run.output;
}

TEST(ResolveCommand, ResolvesTheModulesGivenAndNoOthers)
{
    const ProgramCopy program({"TVXGenericPlugins", "TVXJsonSerializer"});
    const auto right = GetTestModule("Right").string();
    const auto left = GetTestModule("Left").string();
    const auto run = program.Run({"resolve", right, left});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(HasInOrder(run.output, {right + "\n", "satisfied by test.Left/1.0 of " + left + "\n", left + "\n",
                                        "satisfied by test.Right/1.0 of " + right + "\n"}));
    EXPECT_EQ(run.output.find("GenericSimpleMap"), std::string::npos);
    EXPECT_EQ(program.Run({"resolve", right}).exitCode, 1);
}

TEST(ResolveCommand, RunsNoCodeOfTheModules)
{
    const auto run = RunTvx({"resolve", GetTestModule("Left").string(), GetTestModule("Right").string()});
    EXPECT_EQ(run.output.find("loaded"), std::string::npos) << run.output;
}

TEST(ResolveCommand, ComplainsOfWhatCannotBeRead)
{
    const ScratchFolder folder;
    const auto missing = (folder.GetPath() / "missing.tvxlib").string();
    const auto run =
        RunTvx({"resolve", missing, GetTestModule("Left").string(), "-p", GetTestModule("Right").string()});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.errors, "tvx: " + missing + " does not exist\n");
    EXPECT_NE(run.output.find("test.Left/1.0"), std::string::npos);
}

}  // namespace
}  // namespace tvx::test
