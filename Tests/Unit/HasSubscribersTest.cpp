// SPDX-License-Identifier: MIT
#include "Helpers/EventSubscriberList.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/FailingMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <random>

namespace tvx::test
{

namespace
{

class HasSubscribers : public testing::Test
{
protected:
    bool Add(IEventHandler* handler, const char* name = "Changed")
    {
        list.Subscribe("test.ISource/1.0", name, handler, 0);
        return list.HasSubscribers();
    }

    bool Remove(IEventHandler* handler, const char* name = "Changed")
    {
        list.Unsubscribe("test.ISource/1.0", name, handler);
        return list.HasSubscribers();
    }

    EventSubscriberList list;
    Ref<RecordingHandler> first = MakeRef<RecordingHandler>();
    Ref<RecordingHandler> second = MakeRef<RecordingHandler>();
};

}  // namespace

TEST_F(HasSubscribers, SaysNoAtFirst)
{
    EXPECT_FALSE(list.HasSubscribers());
}

TEST_F(HasSubscribers, SaysYesUntilEachWasRemovedAsOftenAsAdded)
{
    EXPECT_TRUE(Add(first.Get()));
    EXPECT_TRUE(Add(first.Get()));
    EXPECT_TRUE(Add(second.Get(), "Moved"));
    EXPECT_TRUE(Remove(first.Get()));
    EXPECT_TRUE(Remove(second.Get()));  // not from that event
    EXPECT_TRUE(Remove(second.Get(), "Moved"));
    EXPECT_TRUE(Remove(second.Get(), "Moved"));  // is not there any more
    EXPECT_FALSE(Remove(first.Get()));
}

TEST_F(HasSubscribers, SaysNoOnceEverybodyIsRemoved)
{
    Add(first.Get());
    Add(second.Get(), "Moved");
    EXPECT_FALSE(Remove(nullptr));
}

TEST_F(HasSubscribers, SaysSoWhileHandlersComeAndGo)
{
    first->action = [&](const SeenEvent&)
    {
        EXPECT_FALSE(Remove(first.Get()));
        EXPECT_TRUE(Add(second.Get()));
        EXPECT_FALSE(Remove(nullptr));
    };
    Add(first.Get());
    list.Fire("test.ISource/1.0", "Changed", nullptr, 0);
    EXPECT_FALSE(list.HasSubscribers());
    EXPECT_EQ(first->events.size(), 1u);
    EXPECT_TRUE(second->events.empty());
}

TEST_F(HasSubscribers, CountsNobodyWhoCouldNotBeAdded)
{
    SweepFailures(
        [&](MemoryFailure failure)
        {
            EventSubscriberList fresh;
            const FailingMemory memory(failure);
            try
            {
                fresh.Subscribe("test.ISource/1.0", "Changed", first.Get(), 0);
            }
            catch (const std::bad_alloc&)
            {
            }
            EXPECT_EQ(fresh.HasSubscribers(), !FailingMemory::HasFailed());
            return FailingMemory::HasFailed();
        });
}

TEST_F(HasSubscribers, CountsAsAListDoes)
{
    std::mt19937 random(7);
    std::list<IEventHandler*> expected;
    for (int step = 0; step < 10000; ++step)
    {
        auto* const handler = (random() % 2 == 0 ? first : second).Get();
        if (random() % 2 == 0)
        {
            expected.push_back(handler);
            ASSERT_TRUE(Add(handler)) << step;
            continue;
        }
        const bool all = random() % 20 == 0;
        const auto found = std::find(expected.begin(), expected.end(), handler);
        if (all)
            expected.clear();
        else if (found != expected.end())
            expected.erase(found);
        ASSERT_EQ(Remove(all ? nullptr : handler), !expected.empty()) << step;
    }
}

}  // namespace tvx::test
