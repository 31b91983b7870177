// SPDX-License-Identifier: MIT
#include "Host/PngFile.h"
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
            "\n8. Paint an image.",
            "  GetData without a lock -> null\n",
            "/tvx-tour-picture.png\n",
            "/tvx-tour-picture-turned.png\n",
            "  MakeConst  the width of the image -1, of the one that never changes 256\n",
            "\n9. Log.",
            "  logging.ini holds:\n    [Main]\n    MinLevel=3\n    [Net]\n    MinLevel=1\n    ToStdOut=false\n",
            " INFO  [Tour] on standard output\n"
            "  event  \"MessageLogged\" INFO of Main: on standard output\n"
            "  event  \"MessageLogged\" DEBUG of Main: below the minimum, so heard alone\n"
            "  event  \"MessageLogged\" TRACE of Net: in the file, with all its details\n"
            "  event  \"MessageLogged\" WARN of Net: in the file, in short\n",
            "  goes along with a crash report: ",
            "net.log (Log File)\n  net.log holds:\n",
            " TRACE [Socket] [Connect] [Socket.cpp:120] [ThreadID=",
            "] in the file, with all its details\n",
            " WARN  [Socket] in the file, in short\n",
            "\n10. Serialise the whole map to JSON",
            "\n11. Read it back.",
            "  equal, entry by entry: 25\n",
            "\n12. Let everything go.",
            "\nPlugDLL deleted\n",
            "\nWhat to try next:\n",
            "  tvx settings " + std::string(TVX_SETTINGS_FILE) + " list Display\n",
        }));
}

// The picture of that name that a tour has left below the folder.
host::Picture FindPicture(const ScratchFolder& folder, const std::string& name)
{
    const std::filesystem::directory_iterator made(folder.GetPath());
    return *host::ReadPng(made->path() / name);
}

TEST(TourCommand, PaintsAPictureAndTurnsIt)
{
    const ScratchFolder folder;
    Program program;
    program.environment["TMPDIR"] = folder.GetPath().string();
    ASSERT_EQ(RunTvx({"tour", TVX_SETTINGS_FILE}, program).exitCode, 0);
    const auto painted = FindPicture(folder, "tvx-tour-picture.png");
    const auto turned = FindPicture(folder, "tvx-tour-picture-turned.png");
    EXPECT_EQ(painted.GetFormat(), (host::PictureFormat{256, 128, 3, 8}));
    const auto first = painted.GetPixels().first(3);
    const auto last = painted.GetPixels().last(3);
    EXPECT_EQ(std::vector(first.begin(), first.end()), (std::vector{std::byte{0}, std::byte{0}, std::byte{64}}));
    EXPECT_EQ(std::vector(last.begin(), last.end()), (std::vector{std::byte{254}, std::byte{253}, std::byte{64}}));
    const auto below = turned.GetRow(127).first(3);
    EXPECT_TRUE(std::equal(below.begin(), below.end(), first.rbegin()));
    const auto above = turned.GetRow(0).last(3);
    EXPECT_TRUE(std::equal(above.begin(), above.end(), last.rbegin()));
}

TEST(TourCommand, NeedsAPlaceForItsPictures)
{
    const ScratchFolder folder;
    Program program;
    program.environment["TMPDIR"] = (folder.GetPath() / "missing").string();
    EXPECT_TRUE(Stopped(RunTvx({"tour", TVX_SETTINGS_FILE}, program), 3, "8. Paint an image.",
                        "no folder can be made among the temporary files\n"));
}

TEST(TourCommand, LeavesTheSettingsFileAsItIs)
{
    const ScratchFolder folder;
    const auto text = detail::ReadAll(TVX_SETTINGS_FILE);
    const auto file = folder.Write("settings.json", text);
    EXPECT_EQ(RunTvx({"tour", file.string()}).exitCode, 0);
    EXPECT_EQ(detail::ReadAll(file), text);
}

TEST(TourCommand, TakesItsLogFilesAway)
{
    const ScratchFolder folder;
    Program program;
    program.environment["TMPDIR"] = folder.GetPath().string();
    const auto run = RunTvx({"tour", TVX_SETTINGS_FILE}, program);
    EXPECT_TRUE(HasInOrder(run.output, {"goes along with a crash report: " + folder.GetPath().string() + "/tvx-",
                                        "/net.log (Log File)\n"}));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.GetPath()))
        EXPECT_TRUE(entry.is_directory() || entry.path().extension() == ".png") << entry.path();
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

TEST(TourCommand, BlamesAModuleThatSucceedsWithANull)
{
    struct Row
    {
        const char* call;
        const char* lastChapter;
        const char* complaint;
    };
    for (const auto& row :
         {Row{"GetString Storage\\Notes", "4. Read it typed.", "GetString gives null\n"},
          Row{"GetSubMap Acquisition\\Region", "5. Take a sub-map", "GetSubMap gives null\n"},
          Row{"GetIterator of Acquisition\\Region", "5. Take a sub-map", "the map gives no iterator\n"},
          Row{"GetValue of Acquisition\\Region", "5. Take a sub-map", "the map gives no value for its key \"Key\"\n"},
          Row{"GetSubMap Display\\Zoom", "6. Keep a whole object", "GetSubMap gives null\n"},
          Row{"GetString Presets\\Zoom", "6. Keep a whole object", "GetString gives null\n"},
          Row{"GetObject Presets\\Zoom", "6. Keep a whole object", "GetObject gives null\n"},
          Row{"GetIterator of Display\\Zoom", "6. Keep a whole object", "the object read back differs"},
          Row{"GetName", "7. Put objects together", "the plug-in object gives null\n"},
          Row{"CreateCollection", "7. Put objects together", "CreateCollection gives null\n"},
          Row{"CreateMap", "7. Put objects together", "CreateMap gives null\n"}})
    {
        Program program;
        program.environment["FALSE_SETTINGS"] = row.call;
        const auto run = RunTvx({"tour", "-p", GetTestModule("FalseSettings").string(), TVX_SETTINGS_FILE}, program);
        EXPECT_TRUE(Stopped(run, 4, row.lastChapter, row.complaint)) << row.call;
    }
}

TEST(TourCommand, GoesOnAfterAnEventWithoutItsObject)
{
    Program program;
    program.environment["FALSE_SETTINGS"] = "BatchUpdatingModeChanged";
    const auto run = RunTvx({"tour", "-p", GetTestModule("FalseSettings").string(), TVX_SETTINGS_FILE}, program);
    EXPECT_TRUE(
        HasInOrder(run.output, {"  event  \"BatchUpdatingModeChanged\" of com.talvere.general.tvx.ISimpleMap/1.5\n",
                                "4. Read it typed.", "6. Keep a whole object", "an equal map of 3 entries\n"}));
}

// Its serializers have the contract for their identifier, but do not fulfil it.
TEST(TourCommand, BlamesSerializersThatMakeNothing)
{
    Program program;
    program.environment["FALSE_SETTINGS"] = "nothing that the tour calls";
    const ProgramCopy copy({"TVXGenericPlugins"});
    const auto run = copy.Run({"tour", "-p", GetTestModule("FalseSettings").string(), TVX_SETTINGS_FILE}, program);
    EXPECT_TRUE(
        HasInOrder(run.output, {"  import \"Serializer\" <- com.talvere.serializers.JSONSerializerContract/1.0\n"}));
    EXPECT_TRUE(Stopped(run, 4, "7. Put objects together", "the serializer gives -3 instead of 0\n"));
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
