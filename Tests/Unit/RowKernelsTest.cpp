// SPDX-License-Identifier: MIT
#include "Src/RowKernels.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <algorithm>
#include <vector>

namespace tvx::test
{

namespace
{

using Row = std::vector<std::byte>;

constexpr std::size_t MaxWidth = 130;
constexpr std::size_t LongWidths[] = {191, 192, 193, 255, 256, 257, 320, 383, 384, 385, 1000, 1023};
constexpr std::size_t Misalignments[] = {0, 1, 2, 3, 5, 7};
constexpr std::size_t ElementSizes[] = {1, 2, 4};
constexpr std::size_t Heights[] = {1, 2, 3, 4, 7};
constexpr std::byte Sentinel{0xA5};

// Bytes that differ from their neighbours, between sentinels.
Row MakeRow(std::size_t before, std::size_t size)
{
    Row row(before + size + 64, Sentinel);
    for (std::size_t at = 0; at < size; ++at)
        row[before + at] = static_cast<std::byte>(at * 7 + at / 251);
    return row;
}

// Every processor generation that the library has code for and this processor can run.
std::vector<std::int64_t> GetTargets()
{
    std::vector<std::int64_t> targets;
    for (auto rest = hwy::SupportedTargets(); rest != 0; rest &= rest - 1)
        targets.push_back(rest & -rest);
    return targets;
}

// Calls work with the kernels of each generation in turn, and with those that are chosen by themselves.
template <class Work>
void OnEveryTarget(Work&& work)
{
    for (const auto target : GetTargets())
    {
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        SCOPED_TRACE(hwy::TargetName(target));
        work();
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    work();
}

void CompareChannelReversals(std::size_t width)
{
    for (const auto elementSize : ElementSizes)
    {
        const auto reverse = FindChannelReversal(static_cast<std::int32_t>(elementSize));
        const auto plainly = plain::FindChannelReversal(static_cast<std::int32_t>(elementSize));
        for (const auto misalignment : Misalignments)
        {
            auto row = MakeRow(misalignment * elementSize, 3 * elementSize * width);
            auto expected = row;
            reverse(row.data() + misalignment * elementSize, width);
            plainly(expected.data() + misalignment * elementSize, width);
            ASSERT_EQ(row, expected) << elementSize << " " << width << " " << misalignment;
        }
    }
}

void CompareRowReversals(std::size_t stride)
{
    for (const auto misalignment : Misalignments)
    {
        for (const auto height : Heights)
        {
            auto rows = MakeRow(misalignment, stride * height);
            auto expected = rows;
            ReverseRows(rows.data() + misalignment, stride, height);
            plain::ReverseRows(expected.data() + misalignment, stride, height);
            ASSERT_EQ(rows, expected) << stride << " " << misalignment << " " << height;
        }
    }
}

}  // namespace

TEST(RowKernels, ReverseChannelsAsThePlainOnesDo)
{
    OnEveryTarget(
        []
        {
            for (std::size_t width = 0; width <= MaxWidth; ++width)
                CompareChannelReversals(width);
            for (const auto width : LongWidths)
                CompareChannelReversals(width);
        });
}

// Wherever they begin, as far as bytes stand anywhere: vectors are loaded and stored at addresses of their own.
TEST(RowKernels, ReverseChannelsAtEveryAddressAsThePlainOnesDo)
{
    OnEveryTarget(
        []
        {
            for (std::size_t begin = 0; begin < 64; ++begin)
            {
                auto row = MakeRow(begin, 3 * 300);
                auto expected = row;
                FindChannelReversal(1)(row.data() + begin, 300);
                plain::FindChannelReversal(1)(expected.data() + begin, 300);
                ASSERT_EQ(row, expected) << begin;
            }
        });
}

TEST(RowKernels, ReverseRowsAsThePlainOnesDo)
{
    OnEveryTarget(
        []
        {
            for (std::size_t stride = 0; stride <= MaxWidth; ++stride)
                CompareRowReversals(stride);
            for (const auto stride : LongWidths)
                CompareRowReversals(stride);
        });
}

TEST(RowKernels, AreThereForElementsOfOneTwoAndFourBytesOnly)
{
    for (const std::int32_t elementSize : {-1, 0, 3, 5, 8, 16})
    {
        EXPECT_EQ(FindChannelReversal(elementSize), nullptr);
        EXPECT_EQ(plain::FindChannelReversal(elementSize), nullptr);
    }
}

TEST(PlainRowKernels, ReverseTheThreeChannelsOfEachPixel)
{
    for (const auto elementSize : ElementSizes)
    {
        const std::size_t width = 5;
        const auto row = MakeRow(0, 3 * elementSize * width);
        auto reversed = row;
        plain::FindChannelReversal(static_cast<std::int32_t>(elementSize))(reversed.data(), width);
        for (std::size_t at = 0; at < 3 * elementSize * width; ++at)
        {
            const auto pixel = at / (3 * elementSize);
            const auto channel = at / elementSize % 3;
            const auto from = (pixel * 3 + 2 - channel) * elementSize + at % elementSize;
            EXPECT_EQ(reversed[at], row[from]) << elementSize << " " << at;
        }
        EXPECT_TRUE(std::equal(row.begin() + static_cast<std::ptrdiff_t>(3 * elementSize * width), row.end(),
                               reversed.begin() + static_cast<std::ptrdiff_t>(3 * elementSize * width)));
    }
}

TEST(PlainRowKernels, ReverseTheOrderOfTheRows)
{
    for (const auto height : Heights)
    {
        const std::size_t stride = 3;
        const auto rows = MakeRow(0, stride * height);
        auto reversed = rows;
        plain::ReverseRows(reversed.data(), stride, height);
        for (std::size_t at = 0; at < stride * height; ++at)
            EXPECT_EQ(reversed[at], rows[(height - 1 - at / stride) * stride + at % stride]) << height << " " << at;
    }
}

}  // namespace tvx::test
