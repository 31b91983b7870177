// SPDX-License-Identifier: MIT
#include "Host/PngFile.h"
#include "Tests/Support/PictureTesting.h"
#include "Tests/Tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <cstring>

namespace tvx::test
{
namespace
{

using Arguments = std::vector<std::string>;
using host::Picture;
using host::PictureFormat;

// Where the bytes of a pixel go to, and which row a row goes to.
struct Change
{
    bool swapped = false;
    bool flipped = false;
};

// Does to the picture what the command is to do, sample by sample.
Picture MakeChanged(const Picture& picture, Change change)
{
    const auto format = picture.GetFormat();
    const auto sample = format.bits / 8;
    Picture changed(format);
    for (std::uint32_t y = 0; y < format.height; ++y)
    {
        const auto from = picture.GetRow(change.flipped ? format.height - 1 - y : y);
        for (std::uint32_t at = 0; at < format.width * format.channels; ++at)
        {
            const auto channel = at % format.channels;
            const auto source = change.swapped ? at - channel + (format.channels - 1 - channel) : at;
            std::memcpy(&changed.GetRow(y)[at * sample], &from[source * sample], sample);
        }
    }
    return changed;
}

bool IsEqual(const Picture& left, const Picture& right)
{
    return left.GetFormat() == right.GetFormat() && std::ranges::equal(left.GetPixels(), right.GetPixels());
}

// Works on files of one test alone.
class ImageCommand : public testing::Test
{
protected:
    std::string GetFile(const std::string& name) const { return (folder_.GetPath() / name).string(); }

    // A PNG file of that format.
    std::string MakeFile(const PictureFormat& format) const
    {
        EXPECT_TRUE(host::WritePng(in_, MakePicture(format)));
        return in_;
    }

    ProgramRun Run(Arguments arguments) const
    {
        arguments.insert(arguments.begin(), "image");
        return RunTvx(std::move(arguments));
    }

    // Whether the command with these options does that change to a picture of the format.
    testing::AssertionResult Changes(const PictureFormat& format, const Arguments& options, Change change) const
    {
        Arguments arguments{MakeFile(format), out_};
        arguments.insert(arguments.end(), options.begin(), options.end());
        if (const auto run = Run(arguments); !Answered(run, ""))
            return Answered(run, "");
        const auto written = host::ReadPng(out_);
        if (!written)
            return testing::AssertionFailure() << written.GetError().message;
        if (IsEqual(*written, MakeChanged(MakePicture(format), change)))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "another picture";
    }

    // Whether a picture of the format is refused so, and nothing is written.
    testing::AssertionResult RefusesToChange(const PictureFormat& format, const Arguments& options,
                                             const std::string& complaint) const
    {
        Arguments arguments{MakeFile(format), out_};
        arguments.insert(arguments.end(), options.begin(), options.end());
        if (std::filesystem::exists(out_))
            return testing::AssertionFailure() << "something was there before";
        const auto run = Run(arguments);
        if (std::filesystem::exists(out_))
            return testing::AssertionFailure() << "something was written";
        return Refused(run, 1, in_ + complaint);
    }

    const ScratchFolder folder_;
    const std::string in_ = GetFile("in.png");
    const std::string out_ = GetFile("out.png");
};

TEST_F(ImageCommand, CopiesEveryKindOfPicture)
{
    for (const std::uint32_t bits : {8U, 16U})
    {
        for (const std::uint32_t channels : {1U, 3U, 4U})
            EXPECT_TRUE(Changes({13, 5, channels, bits}, {}, {})) << bits << ' ' << channels;
    }
}

TEST_F(ImageCommand, ExchangesRedAndBlue)
{
    EXPECT_TRUE(Changes({13, 5, 3, 8}, {"--swap-channels"}, {.swapped = true}));
    EXPECT_TRUE(Changes({13, 5, 3, 16}, {"--swap-channels"}, {.swapped = true}));
    EXPECT_TRUE(Changes({1, 1, 3, 8}, {"--swap-channels"}, {.swapped = true}));
}

TEST_F(ImageCommand, ReversesTheRows)
{
    for (const std::uint32_t bits : {8U, 16U})
    {
        for (const std::uint32_t channels : {1U, 3U, 4U})
            EXPECT_TRUE(Changes({13, 5, channels, bits}, {"--flip"}, {.flipped = true})) << bits << ' ' << channels;
    }
    EXPECT_TRUE(Changes({3, 2, 1, 8}, {"--flip"}, {.flipped = true}));
}

TEST_F(ImageCommand, DoesBothAtOnce)
{
    EXPECT_TRUE(Changes({13, 5, 3, 8}, {"--swap-channels", "--flip"}, {.swapped = true, .flipped = true}));
    EXPECT_TRUE(Changes({13, 6, 3, 16}, {"--flip", "--swap-channels"}, {.swapped = true, .flipped = true}));
}

TEST_F(ImageCommand, ReplacesThePictureThatItReads)
{
    MakeFile({4, 3, 3, 8});
    EXPECT_TRUE(Answered(Run({in_, in_, "--flip"}), ""));
    EXPECT_TRUE(IsEqual(*host::ReadPng(in_), MakeChanged(MakePicture({4, 3, 3, 8}), {.flipped = true})));
}

TEST_F(ImageCommand, TellsWhatTheImageSaysOfItself)
{
    EXPECT_TRUE(Answered(Run({MakeFile({5, 2, 3, 8}), "--info"}), "width: 5\n"
                                                                  "height: 2\n"
                                                                  "channels: 3\n"
                                                                  "bits: 8\n"
                                                                  "pixelSize: 3\n"
                                                                  "stride: 15\n"
                                                                  "colorFormat: 1\n"
                                                                  "dataType: 0\n"
                                                                  "rowOrder: 0\n"));
    EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(ImageCommand, TellsItInJson)
{
    const auto run = Run({"--info", "--json", MakeFile({5, 2, 4, 16})});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(nlohmann::json::parse(run.output),
              nlohmann::json::parse(R"({"width": 5, "height": 2, "channels": 4, "bits": 16, "pixelSize": 8,
                                        "stride": 40, "colorFormat": 2, "dataType": 1, "rowOrder": 0})"));
}

TEST_F(ImageCommand, TellsItAfterTheChanges)
{
    const auto run = Run({MakeFile({5, 2, 3, 8}), out_, "--info", "--flip", "--swap-channels"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(HasInOrder(run.output, {"colorFormat: 3\n", "rowOrder: 1\n"}));
    EXPECT_TRUE(std::filesystem::exists(out_));
}

TEST_F(ImageCommand, SwapsThreeChannelsOnly)
{
    EXPECT_TRUE(RefusesToChange({2, 2, 1, 8}, {"--swap-channels"}, ": only 3 channels can be swapped, not 1"));
    EXPECT_TRUE(RefusesToChange({2, 2, 4, 16}, {"--swap-channels", "--flip", "--info"},
                                ": only 3 channels can be swapped, not 4"));
}

TEST_F(ImageCommand, FlipsNoSingleRow)
{
    EXPECT_TRUE(RefusesToChange({2, 1, 1, 8}, {"--flip"}, ": one row alone cannot be flipped"));
    EXPECT_TRUE(RefusesToChange({2, 1, 3, 8}, {"--flip", "--swap-channels"}, ": one row alone cannot be flipped"));
}

TEST_F(ImageCommand, NeedsSomethingToDo)
{
    EXPECT_TRUE(RefusedInOneLine(Run({MakeFile({2, 2, 1, 8})}), 2, "OUT or --info is required"));
    EXPECT_TRUE(RefusedInOneLine(Run({in_, "--flip"}), 2, "OUT or --info is required"));
    EXPECT_TRUE(RefusedInOneLine(Run({in_, out_, "--json"}), 2, "--json requires --info"));
    EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(ImageCommand, RefusesWhatIsNoPicture)
{
    const auto refuses = [this](const std::string& file, const std::string& problem)
    {
        return RefusedInOneLine(Run({file, out_}), 3, file + problem) &&
               RefusedInOneLine(Run({file, "--info", "--json"}), 3, file + problem);
    };
    EXPECT_TRUE(refuses(GetFile("missing.png"), " does not exist\n"));
    EXPECT_TRUE(refuses(folder_.GetPath().string(), " is a folder\n"));
    EXPECT_TRUE(refuses(folder_.Write("empty.png", "").string(), " is no PNG file\n"));
    EXPECT_TRUE(refuses(folder_.Write("text.png", "no picture").string(), " is no PNG file\n"));
    const auto whole = detail::ReadAll(MakeFile({50, 50, 3, 8}));
    EXPECT_TRUE(refuses(folder_.Write("cut.png", whole.substr(0, whole.size() / 2)).string(),
                        " is a broken PNG file: the file ends too early\n"));
    auto damaged = whole;
    damaged[whole.size() / 2] = static_cast<char>(damaged[whole.size() / 2] ^ 1);
    EXPECT_TRUE(refuses(folder_.Write("damaged.png", damaged).string(), " is a broken PNG file: "));
    EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(ImageCommand, RefusesToWriteWhereItCannot)
{
    MakeFile({2, 2, 1, 8});
    const auto folder = folder_.GetPath().string();
    EXPECT_TRUE(Refused(Run({in_, folder}), 3, folder + " cannot be written: it is not a regular file"));
    const auto below = GetFile("missing") + "/out.png";
    EXPECT_TRUE(Refused(Run({in_, below, "--info"}), 3, below + " cannot be written"));
}

TEST_F(ImageCommand, NeedsTheModule)
{
    const ProgramCopy program({});
    EXPECT_TRUE(RefusedInOneLine(program.Run({"image", MakeFile({2, 2, 1, 8}), out_}), 3,
                                 "no installed module exports "
                                 "\"com.talvere.general.tvx.GenericImageImplementation/1.0\""));
    EXPECT_TRUE(Answered(program.Run({"image", in_, out_, "-p", GetRealModule("TVXGenericPlugins").string()}), ""));
}

TEST_F(ImageCommand, FailsWhenStandardOutputIsFull)
{
    Program full;
    full.output = "/dev/full";
    EXPECT_TRUE(
        Refused(RunTvx({"image", MakeFile({2, 2, 1, 8}), "--info"}, full), 3, "standard output cannot be written to"));
}

}  // namespace
}  // namespace tvx::test
