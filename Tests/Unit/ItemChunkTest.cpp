// SPDX-License-Identifier: MIT
#include "Src/ItemChunk.h"

#include "Tests/Support/FailingMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <new>
#include <random>
#include <vector>

namespace tvx::test
{

namespace
{

constexpr std::uint32_t Seed = 20261121;

// A pointer that is kept only.
IObject* MakePointer(std::uintptr_t number)
{
    return reinterpret_cast<IObject*>(number);
}

std::vector<IObject*> ToVector(const ItemChunk& chunk)
{
    return {chunk.begin(), chunk.end()};
}

ItemChunk MakeChunk(std::size_t count)
{
    ItemChunk made;
    made.Reserve(ItemChunk::MaxSize);
    for (std::size_t number = 1; number <= count; ++number)
        made.Append(MakePointer(number));
    return made;
}

}  // namespace

TEST(ItemChunk, IsBornEmptyAndWithoutRoom)
{
    const ItemChunk chunk;
    EXPECT_EQ(chunk.GetSize(), 0U);
    EXPECT_TRUE(chunk.IsEmpty());
    EXPECT_FALSE(chunk.IsFull());
    EXPECT_FALSE(chunk.HasRoom());
    EXPECT_EQ(chunk.begin(), chunk.end());
}

TEST(ItemChunk, DoublesItsRoomUntilItIsFull)
{
    ItemChunk chunk;
    std::vector<std::size_t> grownAt;
    while (!chunk.IsFull())
    {
        if (!chunk.HasRoom())
        {
            grownAt.push_back(chunk.GetSize());
            chunk.Grow();
        }
        chunk.Append(MakePointer(chunk.GetSize() + 1));
    }
    EXPECT_EQ(grownAt, (std::vector<std::size_t>{0, 8, 16, 32, 64, 128, 256, 512}));
    EXPECT_FALSE(chunk.HasRoom());
    EXPECT_EQ(ToVector(chunk), ToVector(MakeChunk(ItemChunk::MaxSize)));
}

TEST(ItemChunk, HoldsWhatItHeldWhenItFindsNoMemoryToGrow)
{
    ItemChunk chunk;
    chunk.Reserve(3);
    for (std::uintptr_t number = 1; number <= 3; ++number)
        chunk.Append(MakePointer(number));
    {
        const FailingMemory failing({0, true});
        EXPECT_THROW(chunk.Grow(), std::bad_alloc);
    }
    EXPECT_FALSE(chunk.HasRoom());
    EXPECT_EQ(ToVector(chunk), ToVector(MakeChunk(3)));
    chunk.Grow();
    EXPECT_TRUE(chunk.HasRoom());
    EXPECT_EQ(ToVector(chunk), ToVector(MakeChunk(3)));
}

TEST(ItemChunk, IsCutAndPutTogetherAgain)
{
    for (const std::size_t offset : {std::size_t(0), std::size_t(1), std::size_t(99), std::size_t(100)})
    {
        auto lower = MakeChunk(100);
        auto upper = MakeChunk(0);
        upper.AppendFrom(lower, offset);
        lower.Shorten(offset);
        EXPECT_EQ(lower.GetSize(), offset);
        EXPECT_EQ(upper.GetSize(), 100 - offset);
        lower.AppendFrom(upper, 0);
        EXPECT_EQ(ToVector(lower), ToVector(MakeChunk(100)));
    }
}

TEST(ItemChunk, StaysEqualToAVectorOverLongSequences)
{
    std::cout << "seed " << Seed << '\n';
    std::mt19937 random{Seed};
    const auto pick = [&](std::size_t bound) { return static_cast<std::ptrdiff_t>(random() % bound); };
    auto chunk = MakeChunk(0);
    std::vector<IObject*> model;
    for (std::uintptr_t step = 1; step <= 20000 && !testing::Test::HasFailure(); ++step)
    {
        const auto kind = model.empty() ? 0 : pick(4);
        if (kind < 2 && model.size() < ItemChunk::MaxSize)
        {
            const auto to = pick(model.size() + 1);
            chunk.Insert(static_cast<std::size_t>(to), MakePointer(step));
            model.insert(model.begin() + to, MakePointer(step));
        }
        else if (kind == 2)
        {
            const auto from = pick(model.size());
            EXPECT_EQ(chunk.Take(static_cast<std::size_t>(from)), model[static_cast<std::size_t>(from)]);
            model.erase(model.begin() + from);
        }
        else
        {
            const auto from = pick(model.size());
            const auto to = pick(model.size());
            chunk.Move(static_cast<std::size_t>(from), static_cast<std::size_t>(to));
            IObject* const moved = model[static_cast<std::size_t>(from)];
            model.erase(model.begin() + from);
            model.insert(model.begin() + to, moved);
        }
        EXPECT_EQ(ToVector(chunk), model);
    }
}

}  // namespace tvx::test
