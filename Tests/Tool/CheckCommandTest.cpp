// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <pugixml.hpp>
#include <regex>
#include <set>

namespace tvx::test
{
namespace
{

using Json = nlohmann::json;
using Arguments = std::vector<std::string>;

// Two checks of the string, which are quick.
constexpr const char Pattern[] = "value-string-*-text";

ProgramRun Check(const std::string& file, Arguments arguments)
{
    arguments.insert(arguments.begin(), {"check", file});
    return RunTvx(std::move(arguments));
}

// Where temporary files go.
Program WithTemporaryFolder(const std::filesystem::path& folder)
{
    Program program;
    program.environment["TMPDIR"] = folder.string();
    return program;
}

std::set<std::string> GetNames(const Json& report)
{
    std::set<std::string> names;
    for (const auto& check : report["checks"])
        names.insert(check["name"].get<std::string>());
    return names;
}

TEST(CheckCommand, PrintsALineForEachCheckAndASummary)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    const auto run = Check(file, {"--only", "slot-string-1?-*"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(std::regex_match(
        run.output, std::regex("(passed   slot-string-1[0-9a-z-]+ \\([0-9.]+ s\\)\n)+" + file +
                               ": [0-9]+ checks in [0-9.]+ s: [0-9]+ passed, 0 failed, 0 crashed, 0 skipped, "
                               "0 with a warning \\(seed 1\\)\n")))
        << run.output;
}

TEST(CheckCommand, RunsWhatIsMeantAndNotWhatIsLeftOut)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    const auto all = GetNames(Json::parse(Check(file, {"--json", "--only", "exports"}).output));
    EXPECT_GT(all.size(), 5U);
    const auto left = *all.begin();
    auto some = all;
    some.erase(left);
    EXPECT_EQ(GetNames(Json::parse(Check(file, {"--json", "--only", "export*", "--exclude", left}).output)), some);
}

TEST(CheckCommand, SkipsWhatTheModuleDoesNotOffer)
{
    const auto file = GetRealModule("TVXJsonSerializer").string();
    const auto run = Check(file, {"--json", "--only", Pattern});
    EXPECT_EQ(run.exitCode, 0);
    const auto report = Json::parse(run.output);
    for (const auto& check : report["checks"])
    {
        EXPECT_EQ(check["result"], "skipped");
        EXPECT_EQ(check["message"],
                  "the module does not offer com.talvere.general.tvx.GenericStringImplementation/1.0");
    }
}

TEST(CheckCommand, FindsTheSameInThisProcess)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    auto here = Json::parse(Check(file, {"--json", "--only", "exports", "--in-process"}).output);
    auto there = Json::parse(Check(file, {"--json", "--only", "exports", "--jobs", "1"}).output);
    EXPECT_EQ(here["summary"], there["summary"]);
    EXPECT_EQ(GetNames(here), GetNames(there));
}

TEST(CheckCommand, SaysWhatWasExpectedAndWhatCame)
{
    const auto run = Check(GetTestModule("Misbehaving").string(), {"--only", "export-every-listed-id-is-given"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(HasInOrder(
        run.output, {"failed   export-every-listed-id-is-given", "         expected ", ", came ", "         rule: "}));
}

TEST(CheckCommand, TellsAModuleThatCannotBeLoaded)
{
    const auto run =
        Check(GetTestModule("WithoutGetExport").string(), {"--only", "load-succeeds", "--only", "exports"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(HasInOrder(run.output, {"failed   load-succeeds", "the function GetExport, came none"}));
}

TEST(CheckCommand, ListsItsChecksWithoutAModule)
{
    const auto run = RunTvx({"check", "--list", "--only", "document"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.output.starts_with("document-")) << run.output;
    const auto all = Json::parse(RunTvx({"check", "--list", "--json"}).output)["checks"];
    EXPECT_GE(all.size(), 250U);
    std::set<std::string> names;
    for (const auto& check : all)
        EXPECT_TRUE(names.insert(check["name"].get<std::string>()).second) << check["name"] << " is there twice";
}

TEST(CheckCommand, NamesItsChecksInOneWay)
{
    const std::regex kebab("[a-z0-9]+(-[a-z0-9]+)+");
    const auto list = Json::parse(RunTvx({"check", "--list", "--json"}).output);
    for (const auto& check : list["checks"])
    {
        EXPECT_TRUE(std::regex_match(check["name"].get<std::string>(), kebab)) << check["name"];
        EXPECT_TRUE(check["description"].get<std::string>().ends_with(".")) << check["name"];
        EXPECT_TRUE(check["rule"].get<std::string>().ends_with(".")) << check["name"];
    }
}

TEST(CheckCommand, WritesWhatSystemsThatShowTestsRead)
{
    const ScratchFolder folder;
    const auto file = folder.GetPath() / "check.xml";
    const auto run =
        Check(GetRealModule("TVXGenericPlugins").string(), {"--only", "exports", "--junit", file.string()});
    EXPECT_EQ(run.exitCode, 0);
    const auto xml = detail::ReadAll(file);
    EXPECT_TRUE(HasInOrder(xml, {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "<testsuites tests=", "failures=\"0\"",
                                 "<testcase classname=\"exports\" name=\"export-", "</testsuites>"}));
}

// Before anything is run: minutes later it would be too late.
TEST(CheckCommand, RefusesAtOnceAFileThatItsReportCannotBeWrittenTo)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    EXPECT_TRUE(
        RefusedInOneLine(Check(file, {"--junit", "/no/such/folder/check.xml"}), 3, "/no/such/folder/check.xml "));
}

TEST(CheckCommand, LeavesNothingBehind)
{
    const ScratchFolder folder;
    const auto file = GetRealModule("TVXGenericPlugins").string();
    const auto run = RunTvx({"check", file, "--only", "logger", "--only", "load-works-under-another-name"},
                            WithTemporaryFolder(folder.GetPath()));
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_TRUE(std::filesystem::is_empty(folder.GetPath()));
}

TEST(CheckCommand, BlamesNoModuleForItsOwnSurroundings)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"check", file, "--only", "logger"}, WithTemporaryFolder("/no/such/folder")), 3,
                                 "no folder can be made in the folder for temporary files: "));
}

TEST(CheckCommand, RefusesWhatIsNoFile)
{
    const ScratchFolder folder;
    const auto missing = (folder.GetPath() / "missing.tvxlib").string();
    EXPECT_TRUE(Refused(Check(missing, {}), 3, missing + " does not exist"));
    EXPECT_TRUE(
        Refused(Check(folder.GetPath().string(), {}), 3, folder.GetPath().string() + " is a folder, not a file"));
}

TEST(CheckCommand, RefusesWrongUsageInOneLine)
{
    const auto file = GetRealModule("TVXGenericPlugins").string();
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"check"}), 2, "FILE is required"));
    EXPECT_TRUE(RefusedInOneLine(Check(file, {"--only", "no-such-check"}), 2, "no check has a name or a class"));
    EXPECT_TRUE(RefusedInOneLine(Check(file, {"--exclude", "*"}), 2, "no check has a name or a class"));
    EXPECT_TRUE(RefusedInOneLine(Check(file, {"--jobs", "0"}), 2, "--jobs: "));
    EXPECT_TRUE(RefusedInOneLine(Check(file, {"--timeout", "x"}), 2, ""));
    EXPECT_TRUE(RefusedInOneLine(Check(file, {"--seed", "-1"}), 2, "--seed: "));
    EXPECT_TRUE(RefusedInOneLine(Check(file, {"--list"}), 2, ""));
}

TEST(CheckCommand, WritesWellFormedXmlWhateverTheModuleIsCalled)
{
    const ScratchFolder folder;
    const auto module = folder.GetPath() / "\xFF<&\x01\".tvxlib";
    std::filesystem::copy(GetTestModule("Right"), module);
    const auto file = folder.GetPath() / "check.xml";
    Check(module.string(), {"--only", "exports", "--junit", file.string()});
    pugi::xml_document document;
    EXPECT_TRUE(document.load_file(file.c_str()));
    const auto xml = detail::ReadAll(file);
    EXPECT_EQ(xml.find('\x01'), std::string::npos);
    EXPECT_EQ(xml.find("&#01;"), std::string::npos);
    EXPECT_EQ(xml.find('\xFF'), std::string::npos);
}

TEST(CheckCommand, SaysOfATextFileThatItIsNoModule)
{
    const ScratchFolder folder;
    const auto file = folder.Write("text.tvxlib", "no module").string();
    const auto run = Check(file, {"--only", "document", "--only", "load-succeeds", "--only", "exports"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(HasInOrder(run.output, {"failed   document-"}));
}

}  // namespace
}  // namespace tvx::test
