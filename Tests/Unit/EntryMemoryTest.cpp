// SPDX-License-Identifier: MIT
#include "Src/EntryMemory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace tvx;

TEST(EntryMemory, RoundsSizesUpToWhatPiecesComeIn)
{
    EXPECT_EQ(EntryMemory::RoundUp(0), 0U);
    EXPECT_EQ(EntryMemory::RoundUp(1), alignof(void*));
    EXPECT_EQ(EntryMemory::RoundUp(alignof(void*)), alignof(void*));
    EXPECT_EQ(EntryMemory::RoundUp(alignof(void*) + 1), 2 * alignof(void*));
}

TEST(EntryMemory, GivesPiecesOfEverySizeThatStayAsTheyAre)
{
    std::mt19937 generator(7);
    EntryMemory memory;
    std::vector<std::pair<char*, std::string>> pieces;
    std::size_t used = 0;
    for (int number = 0; number < 3000; ++number)
    {
        const auto size = EntryMemory::RoundUp(1 + generator() % (number % 500 == 0 ? 200'000 : 100));
        auto* const piece = static_cast<char*>(memory.Allocate(size));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(piece) % alignof(void*), 0U);
        pieces.emplace_back(piece, std::string(size, static_cast<char>(number)));
        std::memcpy(piece, pieces.back().second.data(), size);
        used += size;
        EXPECT_EQ(memory.GetUsed(), used);
    }
    for (const auto& [piece, content] : pieces)
        EXPECT_EQ(std::string_view(piece, content.size()), content);
}

TEST(EntryMemory, TakesWhatWasReservedInOneRun)
{
    EntryMemory memory;
    memory.Allocate(8);
    memory.Reserve(800);
    EXPECT_EQ(memory.GetUsed(), 8U);
    auto* const first = static_cast<char*>(memory.Allocate(8));
    for (std::ptrdiff_t number = 1; number < 100; ++number)
        EXPECT_EQ(memory.Allocate(8), first + 8 * number);
    EXPECT_EQ(memory.GetUsed(), 808U);
}

}  // namespace
