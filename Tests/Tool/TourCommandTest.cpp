// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

namespace tvx::test
{
namespace
{

// Whether the tour went as far as its text and ended with the exit code and one complaint.
testing::AssertionResult Stopped(const ProgramRun& run, int exitCode, const std::string& lastChapter,
                                 const std::string& complaint)
{
    const bool went = run.output.find(lastChapter) != std::string::npos;
    const bool ended = run.output.find("What to try next:") != std::string::npos;
    if (run.exitCode == exitCode && went && !ended && run.errors.starts_with("tvx: " + complaint) &&
        std::count(run.errors.begin(), run.errors.end(), '\n') == 1)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "exit code " << run.exitCode << ", output \"" << run.output << "\", errors \""
                                       << run.errors << '"';
}

TEST(TourCommand, GoesThroughAllChaptersOnTheRealSettings)
{
    const ProgramCopy program({"TVXGenericPlugins", "TVXJsonSerializer"});
    const auto run = program.Run({"tour", TVX_SETTINGS_FILE});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(HasInOrder(
        run.output,
        {
            "A tour of TVX Generic Plugins on " + std::string(TVX_SETTINGS_FILE) + "\n",
            "\n1. What is installed?",
            "  TVXGenericPlugins.tvxlib\n    com.talvere.general.tvx.GenericStringImplementation/1.0",
            "  TVXJsonSerializer.tvxlib\n",
            "\n2. Load them.",
            "\nPlugDLL created\n",
            "  loaded TVXGenericPlugins.tvxlib\n  loaded TVXJsonSerializer.tvxlib\n",
            "  import \"Serializer\" <- com.talvere.serializers.JSONSerializer/1.0\n",
            "\n3. Fill a settings map.",
            "  wrote 24 settings; nothing was heard.",
            "  event  \"BatchUpdatingModeChanged\" (false) of com.talvere.general.tvx.ISimpleMap/1.5\n"
            "  event  \"Changed\" of com.talvere.general.tvx.ISimpleMap/1.5\n",
            "  and one more write, told at once:\n  event  \"Changed\" of com.talvere.general.tvx.ISimpleMap/1.5\n",
            "\n4. Read it typed.",
            "Acquisition\\ExposureMicroseconds -> 850\n",
            "Acquisition\\Gain -> 1.25\n",
            "Acquisition\\Colour -> result 101, there is no such key\n",
            "\n5. Take a sub-map",
            "  Height = 1080\n  Left = 128\n  Top = 64\n  Width = 1920\n",
            "\n6. Keep a whole object in one entry",
            "  read back: an equal map of 3 entries\n",
            "\n7. Put objects together",
            "  the plug-in says of itself: TVX Generic Collection Implementation, version 1.0.0\n",
            "  event  \"ItemAdded\" of com.talvere.general.tvx.ICollection/2.0\n"
            "  event  \"ItemAdded\" of com.talvere.general.tvx.ICollection/2.0\n"
            "  event  \"ItemMoved\" of com.talvere.general.tvx.ICollection/2.0\n",
            "bytes of JSON, read back equal: 2 items\n",
            "\n8. Serialise the whole map to JSON",
            "\n9. Read it back.",
            "  equal, entry by entry: 25\n",
            "\n10. Let everything go.",
            "\nPlugDLL deleted\n",
            "\nWhat to try next:\n",
            "  tvx settings " + std::string(TVX_SETTINGS_FILE) + " list Display\n",
        }));
}

TEST(TourCommand, LeavesTheSettingsFileAsItIs)
{
    const ScratchFolder folder;
    const auto text = detail::ReadAll(TVX_SETTINGS_FILE);
    const auto file = folder.Write("settings.json", text);
    EXPECT_EQ(RunTvx({"tour", file.string()}).exitCode, 0);
    EXPECT_EQ(detail::ReadAll(file), text);
}

TEST(TourCommand, StopsAtABadSettingsFile)
{
    const ScratchFolder folder;
    const auto file = folder.Write("bad.json", "{\"a\":").string();
    EXPECT_TRUE(Stopped(RunTvx({"tour", file}), 3, "3. Fill a settings map.", file + " is no settings file: "));
    const auto missing = (folder.GetPath() / "missing.json").string();
    EXPECT_TRUE(Stopped(RunTvx({"tour", missing}), 3, "3. Fill a settings map.", missing + " does not exist\n"));
}

TEST(TourCommand, StopsAtSettingsThatDoNotHaveWhatItShows)
{
    const ScratchFolder folder;
    const auto file = folder.Write("other.json", R"({"Name": "x"})").string();
    EXPECT_TRUE(Stopped(RunTvx({"tour", file}), 3, "4. Read it typed.",
                        file + " does not suit the tour: GetInt finds no key\n"));
}

TEST(TourCommand, NeedsBothModules)
{
    const ProgramCopy plugins({"TVXGenericPlugins"});
    EXPECT_TRUE(Stopped(plugins.Run({"tour", TVX_SETTINGS_FILE}), 3, "2. Load them.",
                        "the export \"" + std::string(SettingsMapExport) + "\" needs the import \"Serializer\""));
    const ProgramCopy serializer({"TVXJsonSerializer"});
    EXPECT_TRUE(Stopped(serializer.Run({"tour", TVX_SETTINGS_FILE}), 3, "2. Load them.",
                        "no installed module exports \"" + std::string(SettingsMapExport) + "\""));
}

TEST(TourCommand, BlamesAModuleThatMisbehaves)
{
    const auto run = RunTvx({"tour", "-p", GetTestModule("FalseSettings").string(), TVX_SETTINGS_FILE});
    EXPECT_TRUE(Stopped(run, 4, "FalseSettings: makes something else\n",
                        "the export \"" + std::string(SettingsMapExport) + "\" makes no settings map (result 0)\n"));
}

TEST(TourCommand, NamesModulesThatCannotBeReadAndGoesOn)
{
    const ProgramCopy program({"TVXGenericPlugins", "TVXJsonSerializer"});
    const auto bad = program.GetFolder().Write("bad.tvxlib", "no module").string();
    const auto run = program.Run({"tour", TVX_SETTINGS_FILE});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(HasInOrder(run.output, {"  not readable: " + bad + " ", "2. Load them.", "What to try next:"}));
}

}  // namespace
}  // namespace tvx::test
