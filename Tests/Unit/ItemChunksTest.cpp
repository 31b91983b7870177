// SPDX-License-Identifier: MIT
#include "Src/ItemChunks.h"

#include "Tests/Support/Doubles.h"
#include "Tests/Support/FailingMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <random>
#include <vector>

namespace tvx::test
{

namespace
{

constexpr std::size_t ChunkSize = ItemChunks::ChunkSize;
constexpr std::uint32_t Seed = 20261121;

}  // namespace

// A list in chunks beside a plain vector, changed in the same way; a few objects stand at all places.
class ItemChunksTest : public testing::Test
{
protected:
    std::size_t Pick(std::size_t bound) { return random() % bound; }

    IObject* PickItem() { return Pick(20) == 0 ? nullptr : objects[Pick(objects.size())].Get(); }

    void Insert(std::size_t index)
    {
        IObject* const item = PickItem();
        index == model.size() && Pick(2) == 0 ? chunks->Append(item) : chunks->Insert(index, item);
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(index), item);
    }

    void Take(std::size_t index)
    {
        EXPECT_EQ(chunks->Take(index).Get(), model[index]);
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(index));
    }

    void Move(std::size_t from, std::size_t to)
    {
        chunks->Move(from, to);
        IObject* const item = model[from];
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(from));
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(to), item);
    }

    void Fill(std::size_t count)
    {
        while (model.size() < count)
            Insert(model.size());
    }

    void Clear()
    {
        while (!model.empty())
            Take(model.size() - 1);
    }

    void Refill(std::size_t count)
    {
        Clear();
        chunks = std::make_unique<ItemChunks>();
        Fill(count);
    }

    // Makes the call that puts the first object at index, and tells whether there was memory for it.
    template <class Call>
    bool TryInsert(Call&& call, std::size_t index, MemoryFailure failure)
    {
        try
        {
            const FailingMemory failing(failure);
            call();
        }
        catch (const std::bad_alloc&)
        {
            return false;
        }
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(index), objects[0].Get());
        return true;
    }

    // Mostly about where a chunk begins or ends when all are full.
    std::size_t PickIndex(std::size_t bound)
    {
        if (Pick(2) == 0)
            return Pick(bound);
        const auto border = Pick(bound / ChunkSize + 1) * ChunkSize;
        return std::min(bound - 1, border + Pick(5) - std::min<std::size_t>(border, 2));
    }

    void Step()
    {
        const auto kind = Pick(10);
        if (kind < 4 || model.empty())
            Insert(PickIndex(model.size() + 1));
        else if (kind < 7)
            Take(PickIndex(model.size()));
        else
            Move(PickIndex(model.size()), PickIndex(model.size()));
    }

    // Every item at its index, forwards and at places far from each other, and the first place of each object.
    void Compare()
    {
        ASSERT_EQ(chunks->GetSize(), model.size());
        for (std::size_t index = 0; index < model.size(); ++index)
            ASSERT_EQ(chunks->Get(index), model[index]) << index;
        for (std::size_t count = 0; count < 100 && !model.empty(); ++count)
        {
            const auto index = Pick(model.size());
            ASSERT_EQ(chunks->Get(index), model[index]) << index;
        }
        for (const auto& object : objects)
            ASSERT_EQ(chunks->Find(object.Get()), FindInModel(object.Get()));
        ASSERT_EQ(chunks->Find(nullptr), FindInModel(nullptr));
        CompareCounts();
    }

    std::size_t FindInModel(const IObject* item) const
    {
        return static_cast<std::size_t>(std::find(model.begin(), model.end(), item) - model.begin());
    }

    void CompareCounts()
    {
        for (const auto& object : objects)
        {
            const auto places = std::count(model.begin(), model.end(), object.Get());
            ASSERT_EQ(object->GetRefCount(), static_cast<std::uint32_t>(places) + 1);
        }
    }

    static std::vector<Ref<ProbeObject>> MakeObjects()
    {
        std::vector<Ref<ProbeObject>> made(50);
        for (auto& object : made)
            object = MakeRef<ProbeObject>();
        return made;
    }

    std::mt19937 random{Seed};
    const std::vector<Ref<ProbeObject>> objects = MakeObjects();
    std::vector<IObject*> model;
    std::unique_ptr<ItemChunks> chunks = std::make_unique<ItemChunks>();
};

TEST_F(ItemChunksTest, StaysEqualToAVectorAtEverySizeAboutTheBorders)
{
    for (const std::size_t size : {std::size_t(0), std::size_t(1), std::size_t(2), ChunkSize - 1, ChunkSize,
                                   ChunkSize + 1, 2 * ChunkSize - 1, 2 * ChunkSize, 2 * ChunkSize + 1, 5 * ChunkSize})
    {
        SCOPED_TRACE(size);
        Fill(size);
        Compare();
        Insert(size / 2);
        Insert(0);
        Compare();
        Move(0, size + 1);
        Move(size + 1, 0);
        Compare();
        Clear();
        Compare();
    }
}

TEST_F(ItemChunksTest, StaysEqualToAVectorOverLongSequences)
{
    std::cout << "seed " << Seed << '\n';
    for (const std::size_t size : {std::size_t(0), ChunkSize, 3 * ChunkSize, 6 * ChunkSize})
    {
        Fill(size);
        for (int round = 0; round < 20 && !HasFatalFailure(); ++round)
        {
            for (int step = 0; step < 200; ++step)
                Step();
            Compare();
        }
    }
    Clear();
    Compare();
}

TEST_F(ItemChunksTest, StaysEqualToAVectorThatShrinksAnywhere)
{
    Fill(5 * ChunkSize);
    while (!model.empty() && !HasFatalFailure())
    {
        for (std::size_t count = std::min<std::size_t>(model.size(), 100); count > 0; --count)
            Take(PickIndex(model.size()));
        Compare();
    }
}

TEST_F(ItemChunksTest, StaysEqualToAVectorThatGrowsAtItsFront)
{
    while (model.size() < 3 * ChunkSize)
        Insert(0);
    Compare();
    while (!model.empty())
        Take(0);
    Compare();
}

// Without memory for a further chunk all chunks between give an item on.
TEST_F(ItemChunksTest, MovesBetweenFullChunksWithoutMemory)
{
    Fill(4 * ChunkSize);
    for (const std::size_t border : {std::size_t(0), ChunkSize, 2 * ChunkSize, 3 * ChunkSize, 4 * ChunkSize - 2})
    {
        for (const std::size_t other : {std::size_t(1), ChunkSize - 1, 2 * ChunkSize + 5, 4 * ChunkSize - 1})
        {
            for (const auto& [from, to] : {std::pair(border, other), std::pair(other, border)})
            {
                {
                    const FailingMemory failing({0, true});
                    chunks->Move(from, to);
                }
                IObject* const item = model[from];
                model.erase(model.begin() + static_cast<std::ptrdiff_t>(from));
                model.insert(model.begin() + static_cast<std::ptrdiff_t>(to), item);
                Compare();
            }
        }
    }
}

// At each of these sizes all memory is in use.
TEST_F(ItemChunksTest, HoldsWhatItHeldWhenAnInsertFindsNoMemory)
{
    for (const std::size_t size : {std::size_t(0), std::size_t(8), ChunkSize / 2, ChunkSize, 3 * ChunkSize})
    {
        for (const std::size_t index : {std::size_t(0), size / 2, size})
        {
            SweepFailures(
                [&](MemoryFailure failure)
                {
                    Refill(size);
                    const bool failed = !TryInsert([&] { chunks->Insert(index, objects[0].Get()); }, index, failure);
                    Compare();
                    return failed;
                });
        }
    }
}

TEST_F(ItemChunksTest, HoldsWhatItHeldWhenAnAppendFindsNoMemory)
{
    for (const std::size_t size : {std::size_t(0), std::size_t(8), ChunkSize / 2, ChunkSize, 3 * ChunkSize})
    {
        SweepFailures(
            [&](MemoryFailure failure)
            {
                Refill(size);
                const bool failed = !TryInsert([&] { chunks->Append(objects[0].Get()); }, size, failure);
                Compare();
                return failed;
            });
    }
}

TEST_F(ItemChunksTest, IsEmptyForAnItemThatDiesWithIt)
{
    const auto* const dying = chunks.get();
    const auto handler = MakeRef<RecordingHandler>();
    std::vector<std::size_t> seen;
    handler->action = [&](const SeenEvent&) { seen.push_back(dying->GetSize() + dying->Find(handler.Get())); };
    Fill(ChunkSize);
    for (int count = 0; count < 2; ++count)
    {
        const auto item = MakeRef<ProbeObject>();
        item->SubscribeDestroyed(handler.Get(), 0);
        chunks->Append(item.Get());
    }
    chunks.reset();
    EXPECT_EQ(seen, (std::vector<std::size_t>{0, 0}));
    model.clear();
    CompareCounts();
}

}  // namespace tvx::test
