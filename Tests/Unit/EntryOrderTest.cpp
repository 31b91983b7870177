// SPDX-License-Identifier: MIT
#include "Src/EntryOrder.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace
{

using namespace tvx;

// An order, and a sorted container of the language that is told the same.
class EntryOrderTest : public testing::Test
{
protected:
    void Add(const std::string& key)
    {
        if (!oracle_.insert(key).second)
            return;
        order_.Reserve(oracle_.size());
        order_.Add(Entry::Make(memory_, key, 1, ""));
    }

    void Compare()
    {
        ASSERT_EQ(order_.GetCount(), oracle_.size());
        std::size_t position = 0;
        for (const auto& key : oracle_)
        {
            EXPECT_EQ(order_.CountLess(key), position);
            EXPECT_EQ(order_.GetAt(position++)->GetKey(), key);
        }
        EXPECT_EQ(order_.GetAt(position), nullptr);
        EXPECT_EQ(order_.GetAt(position + 100), nullptr);
        EXPECT_EQ(order_.CountLess("\xff\xff"), position);
    }

    EntryMemory memory_;
    EntryOrder order_;
    std::set<std::string> oracle_;
};

TEST_F(EntryOrderTest, IsEmptyAtFirst)
{
    Compare();
}

TEST_F(EntryOrderTest, TakesWhatComesInOrder)
{
    for (char first = 'a'; first <= 'z'; ++first)
    {
        Add({first, 'b'});
        Add({first, 'd'});
        if (first % 3 == 0)
            Compare();
    }
    Compare();
}

TEST_F(EntryOrderTest, TakesWhatComesBackwards)
{
    for (char first = 'z'; first >= 'a'; --first)
    {
        Add({first, 'd'});
        Add({first, 'b'});
        if (first % 7 == 0)
            Compare();
    }
    Compare();
}

TEST_F(EntryOrderTest, KnowsTheOrderOfWhatIsAddedLast)
{
    for (const char* const key : {"a", "b", "c"})
    {
        order_.AddLast(Entry::Make(memory_, key, 1, ""));
        oracle_.insert(key);
    }
    Compare();
    Add("bb");
    Compare();
}

TEST_F(EntryOrderTest, MergesFewAndManyAtRandom)
{
    std::mt19937 generator(11);
    for (int round = 0; round < 60; ++round)
    {
        for (auto count = generator() % (round % 2 == 0 ? 60 : 6); count > 0; --count)
            Add(std::to_string(generator() % 5000));
        Compare();
    }
}

}  // namespace
