// SPDX-License-Identifier: MIT
#include "Host/PngFile.h"

#include "Tests/Support/PictureTesting.h"
#include "Tests/Support/PngTesting.h"
#include "Tests/Support/RunProgram.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <utility>

namespace tvx::host
{
namespace
{

using test::MakeChunk;
using test::PngMaker;
using test::ScratchFolder;
using Samples = std::vector<unsigned>;

// Reads and writes files in a folder of one test alone.
class PngFile : public testing::Test
{
protected:
    Outcome<Picture> Read(const std::string& bytes) const { return ReadPng(folder_.Write("picture.png", bytes)); }

    // The samples of a file that has to be sound; the picture has so many channels of so many bits.
    Samples ReadSamples(const PngMaker& maker, std::uint32_t channels, std::uint32_t bits) const
    {
        const auto picture = Read(maker.Make());
        EXPECT_TRUE(picture) << picture.GetError().message;
        if (!picture)
            return {};
        EXPECT_EQ(picture->GetFormat(), (PictureFormat{maker.width, maker.height, channels, bits}));
        return test::GetSamples(*picture);
    }

    const ScratchFolder folder_;
};

// One row of pixels, whose samples are the numbers.
PngMaker MakeRow(PngMaker::ColorType type, int bits, const Samples& numbers, std::string before = "")
{
    PngMaker maker;
    maker.type = type;
    maker.bits = static_cast<char>(bits);
    maker.width = static_cast<std::uint32_t>(numbers.size()) / maker.CountChannels();
    maker.height = 1;
    maker.before = std::move(before);
    maker.sample = [numbers, channels = maker.CountChannels()](unsigned x, unsigned, unsigned channel)
    { return numbers[x * channels + channel]; };
    return maker;
}

TEST_F(PngFile, WritesAndReadsBackEveryKindOfPicture)
{
    const auto file = folder_.GetPath() / "picture.png";
    for (const std::uint32_t bits : {8U, 16U})
    {
        for (const std::uint32_t channels : {1U, 3U, 4U})
        {
            for (const auto& [width, height] : {std::pair{1U, 1U}, {7U, 3U}, {1U, 40U}, {300U, 2U}, {100U, 100U}})
            {
                const auto picture = test::MakePicture({width, height, channels, bits});
                const auto written = WritePng(file, picture);
                ASSERT_TRUE(written);
                EXPECT_EQ(*written, std::filesystem::file_size(file));
                const auto read = ReadPng(file);
                ASSERT_TRUE(read);
                EXPECT_EQ(read->GetFormat(), picture.GetFormat());
                EXPECT_TRUE(std::ranges::equal(read->GetPixels(), picture.GetPixels()));
            }
        }
    }
}

TEST_F(PngFile, ReadsSamplesAsTheyAre)
{
    const Samples bytes{0, 1, 127, 128, 254, 255};
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 8, bytes), 1, 8), bytes);
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Color, 8, bytes), 3, 8), bytes);
    const Samples pixels{1, 2, 3, 0, 5, 6, 7, 255};
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::ColorAlpha, 8, pixels), 4, 8), pixels);
}

TEST_F(PngFile, GivesWideSamplesInTheOrderOfTheMachine)
{
    const Samples words{0x0102, 0xFF00, 0x00FF, 0x8000, 0, 0xFFFF};
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 16, words), 1, 16), words);
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Color, 16, words), 3, 16), words);
    const Samples pixels{0x0102, 2, 3, 0x0304};
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::ColorAlpha, 16, pixels), 4, 16), pixels);
}

TEST_F(PngFile, WritesWideSamplesWithTheHighByteFirst)
{
    Picture picture({1, 1, 3, 16});  // the first pixel is the same under every filter
    const std::uint16_t words[] = {0x0102, 0xFE03, 0x0405};
    std::ranges::copy(std::as_bytes(std::span(words)), picture.GetPixels().begin());
    const auto file = folder_.GetPath() / "picture.png";
    ASSERT_TRUE(WritePng(file, picture));
    EXPECT_EQ(test::Inflate(test::detail::ReadAll(file)).substr(1), "\x01\x02\xFE\x03\x04\x05");
}

TEST_F(PngFile, SpreadsGreyOfFewBits)
{
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 1, {0, 1, 1, 0, 1, 0, 0, 0, 1}), 1, 8),
              (Samples{0, 255, 255, 0, 255, 0, 0, 0, 255}));
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 2, {0, 1, 2, 3, 3}), 1, 8), (Samples{0, 85, 170, 255, 255}));
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 4, {0, 1, 15}), 1, 8), (Samples{0, 17, 255}));
}

TEST_F(PngFile, TurnsAPaletteIntoColours)
{
    const auto palette = MakeChunk("PLTE", "\x01\x02\x03\x11\x12\x13");
    for (const int bits : {1, 2, 4, 8})
        EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Palette, bits, {0, 1, 0}, palette), 3, 8),
                  (Samples{1, 2, 3, 17, 18, 19, 1, 2, 3}));
}

TEST_F(PngFile, TurnsAPaletteWithTransparencyIntoColoursWithAlpha)
{
    const auto chunks = MakeChunk("PLTE", "\x01\x02\x03\x11\x12\x13\x21\x22\x23") + MakeChunk("tRNS", "\x07\x7F");
    for (const int bits : {2, 4, 8})
        EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Palette, bits, {2, 1, 0}, chunks), 4, 8),
                  (Samples{33, 34, 35, 255, 17, 18, 19, 127, 1, 2, 3, 7}));
}

TEST_F(PngFile, ShowsBlackForAPixelOutsideThePalette)
{
    const auto palette = MakeChunk("PLTE", "\x01\x02\x03");
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Palette, 8, {0, 1, 255}, palette), 3, 8),
              (Samples{1, 2, 3, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Palette, 4, {15, 0}, palette + MakeChunk("tRNS", "\x09")), 4, 8),
              (Samples{0, 0, 0, 255, 1, 2, 3, 9}));
}

TEST_F(PngFile, TurnsGreyWithAlphaIntoColoursWithAlpha)
{
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::GreyAlpha, 8, {7, 200, 255, 0}), 4, 8),
              (Samples{7, 7, 7, 200, 255, 255, 255, 0}));
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::GreyAlpha, 16, {0x0102, 0x0304}), 4, 16),
              (Samples{0x0102, 0x0102, 0x0102, 0x0304}));
}

TEST_F(PngFile, TurnsATransparentGreyIntoColoursWithAlpha)
{
    const auto second = MakeChunk("tRNS", {"\0\1", 2});
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 1, {0, 1}, second), 4, 8), (Samples{0, 0, 0, 255, 255, 255, 255, 0}));
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 2, {1, 2}, second), 4, 8),
              (Samples{85, 85, 85, 0, 170, 170, 170, 255}));
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 8, {1, 2}, second), 4, 8), (Samples{1, 1, 1, 0, 2, 2, 2, 255}));
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Grey, 16, {1, 257}, second), 4, 16),
              (Samples{1, 1, 1, 0, 257, 257, 257, 65535}));
}

TEST_F(PngFile, TurnsATransparentColourIntoAlpha)
{
    const auto color = MakeChunk("tRNS", {"\0\1\0\2\0\3", 6});
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Color, 8, {1, 2, 3, 1, 2, 4}, color), 4, 8),
              (Samples{1, 2, 3, 0, 1, 2, 4, 255}));
    EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Color, 16, {1, 2, 3, 257, 2, 3}, color), 4, 16),
              (Samples{1, 2, 3, 0, 257, 2, 3, 65535}));
}

// Compares the interlaced file with the one that is not, for one kind of pixel in small sizes, some of which leave passes empty.
void CompareInterlaced(const ScratchFolder& folder, PngMaker maker)
{
    maker.before = maker.type == PngMaker::Palette ? MakeChunk("PLTE", std::string(6, 'x')) : "";
    for (maker.width = 1; maker.width <= 10; maker.width += 3)
    {
        for (maker.height = 1; maker.height <= 10; ++maker.height)
        {
            maker.interlaced = false;
            const auto plain = ReadPng(folder.Write("plain.png", maker.Make()));
            maker.interlaced = true;
            const auto interlaced = ReadPng(folder.Write("interlaced.png", maker.Make()));
            ASSERT_TRUE(plain && interlaced);
            EXPECT_EQ(interlaced->GetFormat(), plain->GetFormat());
            EXPECT_EQ(test::GetSamples(*interlaced), test::GetSamples(*plain));
        }
    }
}

TEST_F(PngFile, ReadsInterlacedPictures)
{
    for (const int bits : {1, 2, 4, 8, 16})
    {
        for (const auto type :
             {PngMaker::Grey, PngMaker::Color, PngMaker::Palette, PngMaker::GreyAlpha, PngMaker::ColorAlpha})
        {
            const bool exists = type == PngMaker::Grey || (type == PngMaker::Palette ? bits <= 8 : bits >= 8);
            PngMaker maker;
            maker.type = type;
            maker.bits = static_cast<char>(bits);
            if (exists)
                CompareInterlaced(folder_, maker);
        }
    }
}

TEST_F(PngFile, SkipsWhatSaysNothingOfThePixels)
{
    const Samples bytes{1, 2, 3, 4, 5, 6};
    for (const auto& chunk :
         {MakeChunk("gAMA", {"\0\0\xB1\x8F", 4}), MakeChunk("gAMA", {"\0\1\x86\xA0", 4}), MakeChunk("sBIT", "\1\1\1"),
          MakeChunk("iCCP", "no profile"), MakeChunk("tEXt", "Title"), MakeChunk("zTXt", "a\0\0no deflate"),
          MakeChunk("bKGD", "wrong length"), MakeChunk("PLTE", "abc"), MakeChunk("quIt", "unknown"),
          MakeChunk("eXIf", ""), MakeChunk("tEXt", std::string(20'000'000, 'x'))})
        EXPECT_EQ(ReadSamples(MakeRow(PngMaker::Color, 8, bytes, chunk), 3, 8), bytes) << chunk.substr(4, 4);
}

TEST_F(PngFile, IgnoresWhatFollowsTheEnd)
{
    EXPECT_TRUE(Read(PngMaker().Make() + "more"));
    EXPECT_TRUE(Read(PngMaker().Make() + PngMaker().Make()));
}

TEST_F(PngFile, JoinsPixelsThatAreCutIntoChunks)
{
    const PngMaker maker;
    const auto packed = test::Deflate(maker.MakePixels());
    std::string chunks;
    for (const char byte : packed)
        chunks += MakeChunk("IDAT", {&byte, 1}) + MakeChunk("IDAT", "");
    const auto picture = Read(test::PngSignature + maker.MakeHeader() + chunks + MakeChunk("IEND", ""));
    ASSERT_TRUE(picture);
    EXPECT_EQ(test::GetSamples(*picture), test::GetSamples(*Read(maker.Make())));
}

TEST_F(PngFile, ReadsThePicturesOfTheLargestSide)
{
    PngMaker maker;
    maker.type = PngMaker::Grey;
    maker.bits = 1;
    maker.height = 1;
    maker.width = MaxPictureSide;
    EXPECT_EQ(ReadSamples(maker, 1, 8).size(), MaxPictureSide);
}

TEST_F(PngFile, ReplacesAFileAsAWhole)
{
    const auto file = folder_.Write("picture.png", std::string(10'000, 'x'));
    const auto picture = test::MakePicture({2, 2, 3, 8});
    ASSERT_TRUE(WritePng(file, picture));
    EXPECT_TRUE(std::ranges::equal(ReadPng(file)->GetPixels(), picture.GetPixels()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.GetPath()), {}), 1);
}

void ExpectUnwritten(const std::filesystem::path& file, const Picture& picture, ErrorKind kind,
                     const std::string& problem)
{
    const auto written = WritePng(file, picture);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.GetError().kind, kind);
    EXPECT_EQ(written.GetError().message, file.string() + problem);
}

TEST_F(PngFile, RefusesToWriteWhereItCannot)
{
    const Picture picture({2, 2, 1, 8});
    ExpectUnwritten(folder_.GetPath(), picture, ErrorKind::CannotRead, " cannot be written: it is not a regular file");
    ExpectUnwritten(folder_.GetPath() / "missing" / "picture.png", picture, ErrorKind::CannotRead,
                    " cannot be written");
}

TEST_F(PngFile, RefusesToWriteWhatIsNoPicture)
{
    const auto file = folder_.Write("picture.png", "old");
    for (const auto& format :
         {PictureFormat{0, 2, 1, 8}, PictureFormat{2, 0, 1, 8}, PictureFormat{2, 2, 0, 8}, PictureFormat{2, 2, 2, 8},
          PictureFormat{2, 2, 5, 8}, PictureFormat{2, 2, 1, 32}, PictureFormat{MaxPictureSide + 1, 1, 1, 8},
          PictureFormat{1, MaxPictureSide + 1, 1, 8}, PictureFormat{10'000, 10'001, 1, 8}})
        ExpectUnwritten(file, Picture(format), ErrorKind::BadPicture, " cannot be written: it would be no picture");
    EXPECT_EQ(test::detail::ReadAll(file), "old");
}

}  // namespace
}  // namespace tvx::host
