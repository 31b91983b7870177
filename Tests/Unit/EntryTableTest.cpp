// SPDX-License-Identifier: MIT
#include "Src/EntryTable.h"

#include "Src/EntryPlace.h"
#include "Tests/Support/MemoryTesting.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

using namespace tvx;

// What an entry table does, with the sorted container of the language.
using Oracle = std::map<std::string, std::string, std::less<>>;
using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs Walk(EntryPlace place)
{
    Pairs walked;
    for (; place.Get() != nullptr; place.MoveOn())
        walked.emplace_back(place.Get()->GetKey(), place.Get()->GetValue());
    return walked;
}

Pairs Walk(const EntryTable& table)
{
    return Walk(EntryPlace(table));
}

Pairs ToPairs(const Oracle& oracle)
{
    return {oracle.begin(), oracle.end()};
}

Result SetOrFail(EntryTable& table, std::string_view key, std::string_view value = "value")
try
{
    table.Set(key, value);
    return TVX_OK;
}
catch (const std::bad_alloc&)
{
    return TVX_E_POINTER;
}

TEST(EntryTable, IsEmptyAtFirst)
{
    const EntryTable table;
    EXPECT_EQ(table.GetCount(), 0U);
    EXPECT_EQ(table.Find(""), nullptr);
    EXPECT_EQ(table.GetAt(0), nullptr);
    EXPECT_EQ(table.CountLess("a"), 0U);
    EXPECT_TRUE(Walk(EntryTable(table)).empty());
}

TEST(EntryTable, FindsKeysOfEveryLength)
{
    EntryTable table;
    Oracle oracle;
    std::string key;
    for (int length = 0; length < 70; ++length, key.push_back(static_cast<char>('a' + length % 3)))
    {
        table.Set(key, std::to_string(length));
        oracle[key] = std::to_string(length);
    }
    for (const auto& [wanted, value] : oracle)
    {
        ASSERT_NE(table.Find(wanted), nullptr);
        EXPECT_EQ(table.Find(wanted)->GetValue(), value);
        EXPECT_EQ(table.Find(wanted + "!"), nullptr);
    }
    EXPECT_EQ(Walk(table), ToPairs(oracle));
}

TEST(EntryTable, OrdersKeysByUnsignedBytes)
{
    EntryTable table;
    for (const char* const key : {"\xff", "a", "", "\x80", "ab", "a\\b", "\x7f"})
        table.Set(key, "");
    EXPECT_EQ(Walk(table),
              (Pairs{{"", ""}, {"a", ""}, {"a\\b", ""}, {"ab", ""}, {"\x7f", ""}, {"\x80", ""}, {"\xff", ""}}));
}

TEST(EntryTable, EndsEveryTextWithANul)
{
    EntryTable table;
    for (std::size_t length = 0; length < 100; ++length)
    {
        table.Set("key", std::string(length, 'v'));
        EXPECT_STREQ(table.Find("key")->GetKeyText(), "key");
        EXPECT_EQ(table.Find("key")->GetValueText(), std::string(length, 'v'));
    }
}

TEST(EntryTable, KeepsEntriesAndKeysWhereTheyAre)
{
    EntryTable table;
    table.Set("m", "1");
    const Entry* const entry = table.Find("m");
    const char* const key = entry->GetKeyText();
    const char* const value = entry->GetValueText();
    for (int number = 0; number < 5000; ++number)
        table.Set(std::to_string(number * 7919 % 5000), "other");
    EXPECT_EQ(Walk(table).size(), 5001U);
    EXPECT_EQ(table.Find("m"), entry);
    EXPECT_EQ(entry->GetKeyText(), key);
    EXPECT_EQ(entry->GetValueText(), value);
    EXPECT_STREQ(value, "1");
}

TEST(EntryTable, TakesTextsOfItsOwn)
{
    EntryTable table;
    table.Set("key", "0123456789");
    const Entry* const entry = table.Find("key");
    table.Set(entry->GetKey(), entry->GetValue().substr(3));
    EXPECT_EQ(entry->GetValue(), "3456789");
    table.Set(entry->GetValue(), entry->GetKey());
    EXPECT_EQ(table.Find("3456789")->GetValue(), "key");
    table.Set("key", std::string(40, 'l'));
    table.Set("key", entry->GetValue());
    table.Set("key", entry->GetValue().substr(1));
    EXPECT_EQ(entry->GetValue(), std::string(39, 'l'));
}

TEST(EntryTable, CopyIsAsLargeAndOfItsOwn)
{
    EntryTable table;
    Oracle oracle;
    for (int number = 0; number < 300; ++number)
    {
        const auto key = std::to_string(number * 7919 % 300);
        table.Set(key, "short");
        table.Set(key, std::string(static_cast<std::size_t>(number), 'v'));
        oracle[key] = std::string(static_cast<std::size_t>(number), 'v');
    }
    const EntryTable copy(table);
    for (const auto& [key, value] : oracle)
        table.Set(key, "changed");
    EXPECT_EQ(Walk(copy), ToPairs(oracle));
    EXPECT_EQ(copy.Find("7")->GetValue(), oracle["7"]);
}

TEST(EntryTable, TakesWhatIsBelowAPrefix)
{
    EntryTable table;
    for (const char* const key : {"b\\z", "a", "b\\", "c", "b", "b\\a\\b", "b]"})
        table.Set(key, key);
    EntryPlace place(table);
    place.Seek("b\\");
    EntryTable below;
    below.AddBelow("b\\", place);
    EXPECT_EQ(Walk(below), (Pairs{{"", "b\\"}, {"a\\b", "b\\a\\b"}, {"z", "b\\z"}}));
    EXPECT_STREQ(place.Get()->GetKeyText(), "b\\");
    EntryTable nothing;
    nothing.AddBelow("d", place);
    EXPECT_EQ(nothing.GetCount(), 0U);
}

// At every size, so that each row comes to its end, is made wider and fails to be.
TEST(EntryTable, WritesWhatHasRoomWithoutMemory)
{
    for (int size = 1; size < 130; ++size)
    {
        EntryTable table;
        for (int number = 0; number < size; ++number)
            table.Set(std::to_string(number), "value");
        const auto outcome = test::RunWith({0, true}, [&] { return SetOrFail(table, "0", "other"); });
        EXPECT_FALSE(outcome.failed) << size;
        EXPECT_EQ(table.Find("0")->GetValue(), "other") << size;
    }
}

TEST(EntryTable, StaysAsItIsForWantOfMemory)
{
    for (int size = 0; size < 130; ++size)
    {
        EntryTable table;
        Oracle oracle;
        for (int number = 0; number < size; ++number)
        {
            table.Set(std::to_string(number), "value");
            oracle[std::to_string(number)] = "value";
        }
        const std::string key(70'000, 'k');
        bool failed = true;
        for (std::size_t first = 0; failed; ++first)
        {
            const auto outcome = test::RunWith({first, true}, [&] { return SetOrFail(table, key); });
            failed = outcome.failed;
            EXPECT_EQ(outcome.result, failed ? TVX_E_POINTER : TVX_OK);
            EXPECT_EQ(table.Find(key) == nullptr, failed);
            EXPECT_TRUE(!failed || Walk(table) == ToPairs(oracle)) << size;
        }
        oracle[key] = "value";
        EXPECT_EQ(Walk(table), ToPairs(oracle)) << size;
    }
}

TEST(EntryPlace, StaysAtTheEndForGood)
{
    EntryTable table;
    EntryPlace place(table);
    table.Set("a", "1");
    place.Seek("a");
    EXPECT_EQ(place.Get(), nullptr);
}

TEST(EntryPlace, SeeksForwardsOnly)
{
    EntryTable table;
    for (const char* const key : {"c", "a", "e"})
        table.Set(key, "");
    EntryPlace place(table);
    place.Seek("b");
    EXPECT_STREQ(place.Get()->GetKeyText(), "c");
    place.Seek("a");
    EXPECT_STREQ(place.Get()->GetKeyText(), "c");
    table.Set("d", "");
    place.Seek("d");
    EXPECT_STREQ(place.Get()->GetKeyText(), "d");
    place.Seek("f");
    EXPECT_EQ(place.Get(), nullptr);
}

// The same to a table and to its oracle, at random, with places and iterators alive in between: an iterator of std::map
// sees what is added later exactly as a place has to.
class EntryTableAtRandom : public testing::TestWithParam<int>
{
protected:
    std::size_t Below(std::size_t limit) { return generator_() % limit; }

    std::string Key()
    {
        static constexpr std::string_view alphabet = "aB\\\x7f\x80\xff";
        std::string key;
        for (std::size_t length = Below(12); length > 0; --length)
            key.push_back(alphabet[Below(alphabet.size())]);
        return key;
    }

    void Write()
    {
        const auto key = Key();
        const std::string value(Below(4) == 0 ? Below(200) : Below(18), static_cast<char>('a' + Below(26)));
        table_.Set(key, value);
        oracle_[key] = value;
    }

    void WriteMany()
    {
        for (std::size_t count = Below(40); count > 0; --count)
            Write();
    }

    void Read()
    {
        const auto key = Key();
        const auto expected = oracle_.find(key);
        const Entry* const found = table_.Find(key);
        ASSERT_EQ(found != nullptr, expected != oracle_.end());
        EXPECT_EQ(found == nullptr ? "" : found->GetValue(), found == nullptr ? "" : expected->second);
        const auto less = std::distance(oracle_.begin(), oracle_.lower_bound(key));
        EXPECT_EQ(table_.CountLess(key), static_cast<std::size_t>(less));
    }

    void Begin()
    {
        walks_.resize(std::min<std::size_t>(walks_.size(), 5));
        walks_.emplace_back(std::make_unique<EntryPlace>(table_), oracle_.begin());
    }

    void Move()
    {
        if (walks_.empty())
            return;
        auto& [place, expected] = walks_[Below(walks_.size())];
        for (std::size_t steps = Below(30); steps > 0 && place->Get() != nullptr; --steps, ++expected)
            place->MoveOn();
    }

    void CompareWalks()
    {
        for (const auto& walk : walks_)
        {
            const Entry* const entry = walk.first->Get();
            ASSERT_EQ(entry != nullptr, walk.second != oracle_.end());
            if (entry == nullptr)
                continue;
            EXPECT_EQ(entry->GetKeyText(), walk.second->first);
            EXPECT_EQ(entry->GetValueText(), walk.second->second);
        }
    }

    void Compare()
    {
        EXPECT_EQ(Walk(table_), ToPairs(oracle_));
        EXPECT_EQ(Walk(EntryTable(table_)), ToPairs(oracle_));
    }

    void Step()
    {
        using Operation = void (EntryTableAtRandom::*)();
        static constexpr Operation operations[] = {&EntryTableAtRandom::Write,     &EntryTableAtRandom::Write,
                                                   &EntryTableAtRandom::WriteMany, &EntryTableAtRandom::Read,
                                                   &EntryTableAtRandom::Begin,     &EntryTableAtRandom::Move,
                                                   &EntryTableAtRandom::Move};
        (this->*operations[Below(std::size(operations))])();
        CompareWalks();
    }

private:
    std::mt19937_64 generator_{static_cast<std::uint64_t>(GetParam())};
    EntryTable table_;
    Oracle oracle_;
    std::vector<std::pair<std::unique_ptr<EntryPlace>, Oracle::iterator>> walks_;
};

INSTANTIATE_TEST_SUITE_P(Seeds, EntryTableAtRandom, testing::Range(1, 21));

TEST_P(EntryTableAtRandom, DoesWhatASortedMapDoes)
{
    for (int step = 0; step < 600 && !HasFailure(); ++step)
    {
        Step();
        if (step % 50 == 0)
            Compare();
    }
    Compare();
}

}  // namespace
