// SPDX-License-Identifier: MIT
#include "Host/PngFile.h"
#include "Platform/LimitedMemory.h"
#include "Tests/Support/PngTesting.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>

namespace tvx::host
{
namespace
{

using test::BigEndian;
using test::Deflate;
using test::MakeChunk;
using test::PngMaker;
using test::ScratchFolder;

// Reads what is no sound PNG file.
class PngHostile : public testing::Test
{
protected:
    // Whether the bytes are refused in one line that begins with the problem.
    testing::AssertionResult Refused(const std::string& bytes,
                                     const std::string& problem = " is a broken PNG file: ") const
    {
        const auto file = folder_.Write("picture.png", bytes);
        const auto picture = ReadPng(file);
        if (picture)
            return testing::AssertionFailure() << "is read";
        const auto& [kind, message] = picture.GetError();
        if (kind == ErrorKind::BadPicture && message.starts_with(file.string() + problem) && message.size() < 400)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << message;
    }

    testing::AssertionResult RefusedChunks(const std::string& chunks) const
    {
        return Refused(test::PngSignature + chunks);
    }

    const ScratchFolder folder_;
};

const std::string End = MakeChunk("IEND", "");

// A header of any content.
std::string MakeHeader(std::uint32_t width, std::uint32_t height, const std::string& rest = {"\x8\0\0\0\0", 5})
{
    return MakeChunk("IHDR", BigEndian(width) + BigEndian(height) + rest);
}

std::string MakePixels(const std::string& rows)
{
    return MakeChunk("IDAT", Deflate(rows));
}

void ExpectUnreadable(const std::filesystem::path& file, const std::string& problem)
{
    const auto picture = ReadPng(file);
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.GetError().kind, ErrorKind::CannotRead);
    EXPECT_EQ(picture.GetError().message, file.string() + problem);
}

TEST_F(PngHostile, RefusesFilesThatCannotBeRead)
{
    ExpectUnreadable(folder_.GetPath() / "missing.png", " does not exist");
    ExpectUnreadable("", " does not exist");
    ExpectUnreadable(folder_.GetPath(), " is a folder");
    ExpectUnreadable("/proc/self/mem", " cannot be read");  // may be opened, but not read from its beginning
}

TEST_F(PngHostile, RefusesAFileThatTheUserMayNotRead)
{
    const auto file = folder_.Write("secret.png", PngMaker().Make());
    std::filesystem::permissions(file, std::filesystem::perms::none);
    if (std::ifstream(file))
        GTEST_SKIP() << "this user may read every file";
    ExpectUnreadable(file, " cannot be read");
}

TEST_F(PngHostile, RefusesWhatIsNoPngFile)
{
    for (const std::string bytes :
         {"", "x", "no picture at all", "\x89PNG", "\x89PNG\n\x1A\n\n", "\xFF\xD8\xFF\xE0JFIF"})
        EXPECT_TRUE(Refused(bytes, " is no PNG file")) << bytes;
    const auto endless = ReadPng("/dev/zero");
    ASSERT_FALSE(endless);
    EXPECT_EQ(endless.GetError().message, "/dev/zero is no PNG file");
}

TEST_F(PngHostile, RefusesFilesThatAreCutOffAnywhere)
{
    for (const bool interlaced : {false, true})
    {
        PngMaker maker;
        maker.interlaced = interlaced;
        maker.type = PngMaker::Palette;
        maker.before = MakeChunk("PLTE", std::string(30, 'x')) + MakeChunk("tRNS", "abc") + MakeChunk("tEXt", "Title");
        const auto whole = maker.Make();
        ASSERT_FALSE(Refused(whole));
        for (std::size_t length = 8; length < whole.size(); ++length)
            EXPECT_TRUE(Refused(whole.substr(0, length), " is a broken PNG file: the file ends too early")) << length;
    }
}

TEST_F(PngHostile, RefusesFilesWithAWrongBitAnywhere)
{
    PngMaker maker;
    maker.before = MakeChunk("tRNS", {"\0\1\0\2\0\3", 6}) + MakeChunk("tEXt", "Title");
    const auto whole = maker.Make();
    ASSERT_FALSE(Refused(whole));
    for (std::size_t place = 0; place < whole.size(); ++place)
    {
        for (int bit = 0; bit < 8; ++bit)
        {
            auto damaged = whole;
            damaged[place] = static_cast<char>(damaged[place] ^ 1 << bit);
            EXPECT_TRUE(Refused(damaged, place < 8 ? " is no PNG file" : " is a broken PNG file: ")) << place;
        }
    }
}

TEST_F(PngHostile, RefusesHeadersThatMakeNoSense)
{
    const auto pixels = MakePixels(std::string(100, '\0'));
    for (const auto& header : {MakeHeader(0, 1), MakeHeader(1, 0), MakeHeader(0, 0), MakeHeader(0x80000000, 1),
                               MakeHeader(1, 0xFFFFFFFF), MakeHeader(1, 1, "short"), MakeHeader(1, 1, "much too long")})
        EXPECT_TRUE(RefusedChunks(header + pixels + End));
    constexpr char rests[][5] = {{3, 0, 0, 0, 0}, {0, 0, 0, 0, 0},  {-1, 0, 0, 0, 0}, {8, 1, 0, 0, 0}, {8, 5, 0, 0, 0},
                                 {4, 2, 0, 0, 0}, {16, 3, 0, 0, 0}, {8, 0, 1, 0, 0},  {8, 0, 0, 1, 0}, {8, 0, 0, 0, 2}};
    for (const auto& rest : rests)
        EXPECT_TRUE(RefusedChunks(MakeHeader(1, 1, std::string(rest, 5)) + pixels + End));
}

TEST_F(PngHostile, RefusesPicturesThatAreTooLarge)
{
    const auto pixels = MakePixels("few");
    const auto isTooLarge = [&](std::uint32_t width, std::uint32_t height)
    {
        return Refused(test::PngSignature + MakeHeader(width, height, {"\x10\6\0\0\0", 5}) + pixels + End,
                       " has too many pixels: " + std::to_string(width) + " x " + std::to_string(height));
    };
    EXPECT_TRUE(isTooLarge(0x7FFFFFFF, 0x7FFFFFFF));
    EXPECT_TRUE(isTooLarge(0x7FFFFFFF, 1));
    EXPECT_TRUE(isTooLarge(1, 0x7FFFFFFF));
    EXPECT_TRUE(isTooLarge(MaxPictureSide + 1, 1));
    EXPECT_TRUE(isTooLarge(1, MaxPictureSide + 1));
    EXPECT_TRUE(isTooLarge(10'000, 10'001));
}

TEST_F(PngHostile, RefusesALargePictureOfFewBytes)
{
    const auto header = MakeHeader(10'000, 10'000, {"\x10\6\0\0\0", 5});
    EXPECT_TRUE(RefusedChunks(header + MakePixels(std::string(80'001, '\0')) + End));
}

TEST_F(PngHostile, RefusesAPictureThatDoesNotFitIntoMemory)
{
    if (!Platform::LimitedMemory::IsPossible())
        GTEST_SKIP() << "the sanitizers end the program when memory is exhausted";
    const auto header = MakeHeader(10'000, 10'000, {"\x10\6\0\0\0", 5});
    const auto bytes = test::PngSignature + header + MakePixels("few") + End;
    const Platform::LimitedMemory memory(100'000'000);
    EXPECT_TRUE(Refused(bytes, " does not fit into memory"));
}

TEST_F(PngHostile, RefusesPixelsThatAreNone)
{
    const auto header = MakeHeader(4, 2);
    const std::string rows(10, '\0');
    ASSERT_FALSE(RefusedChunks(header + MakePixels(rows) + End));
    EXPECT_TRUE(RefusedChunks(header + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("IDAT", "") + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("IDAT", "no deflate") + End));
    EXPECT_TRUE(RefusedChunks(header + MakePixels("") + End));
    EXPECT_TRUE(RefusedChunks(header + MakePixels(rows.substr(1)) + End));
    EXPECT_TRUE(RefusedChunks(header + MakePixels("\5" + rows.substr(1)) + End));  // there is no such filter
}

TEST_F(PngHostile, RefusesPixelsWhoseOwnChecksumIsWrong)
{
    auto packed = Deflate(std::string(10, '\0'));
    packed.back() = static_cast<char>(packed.back() ^ 1);
    EXPECT_TRUE(RefusedChunks(MakeHeader(4, 2) + MakeChunk("IDAT", packed) + End));
}

TEST_F(PngHostile, RefusesPalettesThatAreNone)
{
    const auto header = MakeHeader(1, 1, {"\x8\3\0\0\0", 5});
    const auto pixels = MakePixels(std::string(2, '\0'));
    ASSERT_FALSE(RefusedChunks(header + MakeChunk("PLTE", "abc") + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("PLTE", "") + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("PLTE", "ab") + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("PLTE", std::string(257 * 3, 'x')) + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("PLTE", "abc") + MakeChunk("PLTE", "abc") + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + pixels + MakeChunk("PLTE", "abc") + End));
}

TEST_F(PngHostile, SurvivesTransparencyThatIsNone)
{
    PngMaker maker;
    maker.type = PngMaker::Palette;
    maker.sample = [](unsigned x, unsigned, unsigned) { return x * 60; };
    for (const auto& content : {std::string(), std::string(2, 'x'), std::string(256, 'x'), std::string(100'000, 'x')})
    {
        maker.before = MakeChunk("PLTE", "abc") + MakeChunk("tRNS", content);
        const auto picture = ReadPng(folder_.Write("picture.png", maker.Make()));
        EXPECT_TRUE(!picture || picture->GetFormat().channels >= 3);
    }
}

TEST_F(PngHostile, RefusesChunksInAnOrderThatMakesNoSense)
{
    const auto header = MakeHeader(4, 2);
    const auto pixels = MakePixels(std::string(10, '\0'));
    EXPECT_TRUE(RefusedChunks(pixels + End));
    EXPECT_TRUE(RefusedChunks(End));
    EXPECT_TRUE(RefusedChunks(pixels + header + End));
    EXPECT_TRUE(RefusedChunks(header + header + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("QUIT", "must be understood") + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("ab1d", "no name") + pixels + End));
    EXPECT_TRUE(RefusedChunks(header + MakeChunk("tRNS", "in a grey picture") + pixels));
}

TEST_F(PngHostile, RefusesChunksThatAnnounceMoreThanThereIs)
{
    const auto header = MakeHeader(4, 2);
    const auto pixels = MakePixels(std::string(10, '\0'));
    for (const std::uint32_t length : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 1'000'000U})
    {
        for (const std::string type : {"tEXt", "iCCP", "PLTE", "tRNS", "IDAT", "IEND", "quIt"})
            EXPECT_TRUE(RefusedChunks(header + BigEndian(length) + type + "little" + pixels + End)) << type << length;
    }
}

TEST_F(PngHostile, SurvivesBytesOfAnyKind)
{
    std::mt19937 random(20260117);
    const auto header = MakeHeader(30, 30, {"\x8\6\0\0\1", 5});
    for (int round = 0; round < 200; ++round)
    {
        std::string bytes(random() % 200, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
        EXPECT_TRUE(RefusedChunks(bytes));
        EXPECT_TRUE(RefusedChunks(header + bytes));
        EXPECT_TRUE(RefusedChunks(header + MakeChunk("IDAT", bytes) + End));
        EXPECT_TRUE(RefusedChunks(header + MakePixels(bytes) + End));
    }
}

}  // namespace
}  // namespace tvx::host
