// SPDX-License-Identifier: MIT
#include "Src/Entry.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

using namespace tvx;

struct Destroy
{
    void operator()(Entry* entry) const noexcept { std::destroy_at(entry); }
};

// An entry with what it has outside of the memory.
using Owned = std::unique_ptr<Entry, Destroy>;

TEST(Entry, HoldsCopiesOfBothTextsWithANulBehind)
{
    EntryMemory memory;
    for (std::size_t size = 0; size < 50; ++size)
    {
        const std::string key(size, 'k');
        const std::string value(50 - size, 'v');
        const Owned entry(Entry::Make(memory, key, 4711, value));
        EXPECT_EQ(entry->GetKeyText(), key);
        EXPECT_EQ(entry->GetValueText(), value);
        EXPECT_EQ(entry->GetKey(), key);
        EXPECT_EQ(entry->GetValue(), value);
        EXPECT_EQ(entry->GetHash(), 4711U);
        EXPECT_TRUE(entry->HasKey(key));
        EXPECT_FALSE(entry->HasKey(key + "k"));
    }
}

TEST(Entry, HasRoomForWordsAndForEveryValueItHad)
{
    EntryMemory memory;
    const Owned entry(Entry::Make(memory, "key", 1, ""));
    EXPECT_TRUE(entry->HasRoomFor("-1.23457e-308"));
    EXPECT_FALSE(entry->HasRoomFor(std::string(100, 'v')));
    entry->SetValue(std::string(100, 'v'));
    EXPECT_TRUE(entry->HasRoomFor(std::string(100, 'v')));
    entry->SetValue("short");
    EXPECT_TRUE(entry->HasRoomFor(std::string(100, 'v')));
    EXPECT_STREQ(entry->GetValueText(), "short");
}

TEST(Entry, TakesAPartOfItsOwnValue)
{
    EntryMemory memory;
    const Owned entry(Entry::Make(memory, "key", 1, "0123456789"));
    entry->SetValue(entry->GetValue().substr(2));
    EXPECT_STREQ(entry->GetValueText(), "23456789");
    entry->SetValue(std::string(60, 'a') + "b");
    entry->SetValue(entry->GetValue().substr(59));
    EXPECT_STREQ(entry->GetValueText(), "ab");
}

TEST(Entry, CopyIsOfItsOwn)
{
    EntryMemory memory;
    EntryMemory otherMemory;
    for (const std::size_t length : {std::size_t{0}, std::size_t{4}, std::size_t{15}, std::size_t{200}})
    {
        const Owned entry(Entry::Make(memory, "key", 4711, "1"));
        entry->SetValue(std::string(length, 'v'));
        const Owned copy(Entry::MakeCopy(otherMemory, *entry));
        entry->SetValue("changed");
        EXPECT_EQ(copy->GetValueText(), std::string(length, 'v'));
        EXPECT_STREQ(copy->GetKeyText(), "key");
        EXPECT_EQ(copy->GetHash(), 4711U);
        copy->SetValue(std::string(300, 'c'));
        EXPECT_STREQ(entry->GetValueText(), "changed");
    }
}

}  // namespace
