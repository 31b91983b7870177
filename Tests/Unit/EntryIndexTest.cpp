// SPDX-License-Identifier: MIT
#include "Src/EntryIndex.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace
{

using namespace tvx;

Entry* Find(const EntryIndex& index, const std::string& key, std::uint32_t hash)
{
    return index.GetAt(index.FindPlace(key, hash));
}

TEST(EntryIndex, IsEmptyAtFirst)
{
    const EntryIndex index;
    for (const std::uint32_t hash : {1U, 15U, 16U, 0xFFFF'FFFFU})
        EXPECT_EQ(Find(index, "", hash), nullptr);
}

// The same to an index and to a map, with few hashes, so that many keys share one and many places are taken, and with more.
TEST(EntryIndex, FindsWhatWasAddedWhateverTheHashes)
{
    for (const std::uint32_t hashes : {1U, 3U, 20U, 1000U, 0x7FFF'FFFFU})
    {
        std::mt19937 generator(hashes);
        EntryMemory memory;
        EntryIndex index;
        std::map<std::string, Entry*> oracle;
        const auto hashOf = [&](int number)
        { return 1 + (static_cast<std::uint32_t>(number) * 2'654'435'761U) % hashes; };
        for (int number = 0; number < 400; ++number)
        {
            const auto key = std::to_string(number);
            index.Reserve(oracle.size() + 1);
            const auto place = index.FindPlace(key, hashOf(number));
            ASSERT_EQ(index.GetAt(place), nullptr);
            Entry* const entry = Entry::Make(memory, key, hashOf(number), "");
            if (generator() % 2 == 0)
                index.PutAt(place, entry);
            else
                index.Add(entry);
            oracle[key] = entry;
            for (const auto& [wanted, found] : oracle)
                ASSERT_EQ(Find(index, wanted, hashOf(std::stoi(wanted))), found);
            EXPECT_EQ(Find(index, key + "!", hashOf(number)), nullptr);
        }
    }
}

TEST(EntryIndex, KeepsWhatItHasWhenRoomIsTakenForMany)
{
    EntryMemory memory;
    EntryIndex index;
    Entry* const entry = Entry::Make(memory, "key", 4711, "");
    index.Add(entry);
    for (const std::size_t count : {std::size_t{14}, std::size_t{15}, std::size_t{1000}, std::size_t{100'000}})
    {
        index.Reserve(count);
        EXPECT_EQ(Find(index, "key", 4711), entry) << count;
    }
}

}  // namespace
