// SPDX-License-Identifier: MIT
#include "Src/PixelMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

namespace tvx::test
{

namespace
{

constexpr std::size_t MegaByte = std::size_t{1024} * 1024;
constexpr std::size_t Sizes[] = {1, 4095, 4 * MegaByte - 1, 4 * MegaByte, 4 * MegaByte + 1, 9 * MegaByte + 77};

bool IsZero(const Pixels& pixels)
{
    return std::all_of(pixels.get(), pixels.get() + pixels.get_deleter().size,
                       [](std::byte byte) { return byte == std::byte{0}; });
}

void Fill(const Pixels& pixels, int byte)
{
    std::memset(pixels.get(), byte, pixels.get_deleter().size);
}

}  // namespace

TEST(PixelMemory, OfAnySizeIsZeroedAndCanBeWrittenToItsEnds)
{
    for (const auto size : Sizes)
    {
        const auto pixels = AllocatePixels(size, Content::Zeros);
        EXPECT_TRUE(IsZero(pixels)) << size;
        Fill(pixels, 0x5A);
        EXPECT_EQ(pixels.get()[size - 1], std::byte{0x5A}) << size;
    }
}

TEST(PixelMemory, IsZeroedAfterOtherPixelsOfThatSizeHaveGone)
{
    for (const auto size : Sizes)
    {
        Fill(AllocatePixels(size, Content::Zeros), 0xFF);
        EXPECT_TRUE(IsZero(AllocatePixels(size, Content::Zeros))) << size;
        Fill(AllocatePixels(size, Content::Anything), 0xFF);
        EXPECT_TRUE(IsZero(AllocatePixels(size, Content::Zeros))) << size;
    }
}

TEST(PixelMemory, ThatIsLargeServesTheNextOfItsSizeThatNeedsNoZeros)
{
    const auto* const before = AllocatePixels(8 * MegaByte, Content::Anything).get();
    const auto other = AllocatePixels(8 * MegaByte + 1, Content::Anything);
    EXPECT_NE(other.get(), before);
    const auto same = AllocatePixels(8 * MegaByte, Content::Anything);
    EXPECT_EQ(same.get(), before);
    EXPECT_NE(AllocatePixels(8 * MegaByte, Content::Anything).get(), before);
}

TEST(PixelMemory, IsTheOwnersAlone)
{
    std::vector<Pixels> all;
    for (int number = 0; number < 5; ++number)
    {
        for (const auto size : Sizes)
        {
            all.push_back(AllocatePixels(size, Content::Anything));
            Fill(all.back(), static_cast<int>(all.size()));
        }
        all.erase(all.begin());
        for (const auto& pixels : all)
            EXPECT_EQ(pixels.get()[0], pixels.get()[pixels.get_deleter().size - 1]);
    }
}

TEST(PixelMemory, ThatNobodyHasIsRefused)
{
    EXPECT_THROW(AllocatePixels(SIZE_MAX, Content::Zeros), std::bad_alloc);
    EXPECT_THROW(AllocatePixels(SIZE_MAX / 2, Content::Anything), std::bad_alloc);
}

TEST(PixelMemory, IsTakenAndGivenBackByThreadsAtOnce)
{
    std::vector<std::thread> threads;
    for (int number = 1; number <= 4; ++number)
    {
        threads.emplace_back(
            [number]
            {
                for (int round = 0; round < 200; ++round)
                {
                    const auto pixels = AllocatePixels(4 * MegaByte, Content::Anything);
                    pixels.get()[0] = pixels.get()[4 * MegaByte - 1] = static_cast<std::byte>(number);
                    std::this_thread::yield();
                    EXPECT_EQ(pixels.get()[0], static_cast<std::byte>(number));
                    EXPECT_EQ(pixels.get()[4 * MegaByte - 1], static_cast<std::byte>(number));
                }
            });
    }
    for (auto& thread : threads)
        thread.join();
}

}  // namespace tvx::test
