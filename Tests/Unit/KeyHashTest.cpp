// SPDX-License-Identifier: MIT
#include "Src/KeyHash.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace
{

using namespace tvx;

TEST(KeyHash, SeesTheBytesOfTheKeyAndNothingAroundThem)
{
    for (std::size_t size = 0; size < 70; ++size)
    {
        const std::string key(size, 'k');
        for (std::size_t before = 0; before < 9; ++before)
        {
            const std::string around = std::string(before, 'x') + key + "behind";
            EXPECT_EQ(HashKey(std::string_view(around).substr(before, size)), HashKey(key)) << size;
        }
    }
}

TEST(KeyHash, ChangesWithEveryByte)
{
    for (std::size_t size = 1; size < 70; ++size)
    {
        for (std::size_t place = 0; place < size; ++place)
        {
            std::string key(size, 'k');
            const auto before = HashKey(key);
            key[place] ^= 1;
            EXPECT_NE(HashKey(key), before) << size << ", byte " << place;
        }
    }
}

TEST(KeyHash, ChangesWithTheLength)
{
    std::set<std::uint32_t> hashes;
    for (std::size_t size = 0; size < 70; ++size)
        hashes.insert(HashKey(std::string(size, '\0')));
    EXPECT_EQ(hashes.size(), 70U);
    EXPECT_FALSE(hashes.contains(0));
}

// As many as half of the places: of random hashes, 79 % would come to places of their own.
TEST(KeyHash, SpreadsNumberedKeysOverThePlaces)
{
    constexpr std::size_t places = std::size_t{1} << 17;
    for (const std::string prefix : {"", "k", "Key", "Section\\Width", "A rather long path\\that goes on\\Key"})
    {
        std::vector<bool> taken(places);
        std::size_t shared = 0;
        for (std::size_t number = 0; number < places / 2; ++number)
        {
            const auto place = HashKey(prefix + std::to_string(number)) % places;
            shared += taken[place] ? 1 : 0;
            taken[place] = true;
        }
        EXPECT_LT(shared, places / 2 * 25 / 100) << prefix;
    }
}

}  // namespace
