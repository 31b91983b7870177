// SPDX-License-Identifier: MIT
#include "Helpers/RefArray.h"

#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::test;

class RefArrayOfThree : public testing::Test
{
protected:
    RefArrayOfThree()
    {
        for (const auto& object : objects)
            array.Insert(array.GetSize(), Ref<IObject>(object));
    }

    // The elements as positions in objects.
    std::vector<int> Order() const
    {
        std::vector<int> order;
        for (std::size_t index = 0; index < array.GetSize(); ++index)
        {
            for (int position = 0; position < 3; ++position)
            {
                if (array.Get(index) == objects[static_cast<std::size_t>(position)].Get())
                    order.push_back(position);
            }
        }
        return order;
    }

    std::vector<Ref<ProbeObject>> objects{MakeRef<ProbeObject>(), MakeRef<ProbeObject>(), MakeRef<ProbeObject>()};
    RefArray<IObject> array;
};

TEST_F(RefArrayOfThree, HoldsOneReferenceOnEachElement)
{
    for (const auto& object : objects)
        EXPECT_EQ(object->GetRefCount(), 2U);
}

TEST_F(RefArrayOfThree, InsertsWhereItIsToldWithoutTouchingTheOthers)
{
    array.Insert(1, Ref<IObject>(objects[2]));
    EXPECT_EQ(Order(), (std::vector<int>{0, 2, 1, 2}));
    EXPECT_EQ(objects[0]->GetRefCount(), 2U);
    EXPECT_EQ(objects[1]->GetRefCount(), 2U);
    EXPECT_EQ(objects[2]->GetRefCount(), 3U);
}

TEST_F(RefArrayOfThree, GivesATakenElementWithItsReference)
{
    const auto taken = array.Take(1);
    EXPECT_EQ(taken.Get(), objects[1].Get());
    EXPECT_EQ(objects[1]->GetRefCount(), 2U);
    EXPECT_EQ(Order(), (std::vector<int>{0, 2}));
}

TEST_F(RefArrayOfThree, MovesForwardsAndBackwards)
{
    array.Move(0, 2);
    EXPECT_EQ(Order(), (std::vector<int>{1, 2, 0}));
    array.Move(2, 1);
    EXPECT_EQ(Order(), (std::vector<int>{1, 0, 2}));
    array.Move(1, 1);
    EXPECT_EQ(Order(), (std::vector<int>{1, 0, 2}));
}

TEST_F(RefArrayOfThree, FindsTheFirstPlace)
{
    array.Insert(3, Ref<IObject>(objects[0]));
    EXPECT_EQ(array.Find(objects[0].Get()), 0U);
    EXPECT_EQ(array.Find(objects[2].Get()), 2U);
    EXPECT_EQ(array.Find(nullptr), 4U);
}

TEST(RefArray, KeepsNullAndReleasesEverythingAtTheEnd)
{
    const auto object = MakeRef<ProbeObject>();
    {
        RefArray<IObject> array;
        array.Insert(0, Ref<IObject>());
        array.Insert(1, Ref<IObject>(object));
        EXPECT_EQ(array.Get(0), nullptr);
        EXPECT_EQ(array.Find(nullptr), 0U);
        EXPECT_EQ(object->GetRefCount(), 2U);
    }
    EXPECT_TRUE(object->IsUnique());
}

TEST(RefArray, IsEmptyForAnElementThatDiesWithIt)
{
    auto array = std::make_unique<RefArray<IObject>>();
    const auto* const dying = array.get();
    const auto handler = MakeRef<RecordingHandler>();
    std::vector<std::size_t> sizes;
    std::vector<std::size_t> places;
    handler->action = [&](const SeenEvent&)
    {
        sizes.push_back(dying->GetSize());
        places.push_back(dying->Find(handler.Get()));
    };
    for (int count = 0; count < 2; ++count)
    {
        const auto element = MakeRef<ProbeObject>();
        element->SubscribeDestroyed(handler.Get(), 0);
        array->Insert(0, Ref<IObject>(element));
    }
    array->Insert(2, Ref<IObject>(handler));
    array.reset();
    EXPECT_EQ(sizes, (std::vector<std::size_t>{0, 0}));
    EXPECT_EQ(places, (std::vector<std::size_t>{0, 0}));
    EXPECT_TRUE(handler->IsUnique());
}

// What RefArray asks of its elements, counted call by call.
class CallCounter
{
public:
    std::uint32_t AddRef() { return Count(1); }
    std::uint32_t Release() { return Count(-1); }

    int calls = 0;

private:
    std::uint32_t Count(int step)
    {
        ++calls;
        references_ += step;
        return static_cast<std::uint32_t>(references_);
    }

    int references_ = 0;
};

TEST(RefArray, CallsNothingOfElementsThatOnlyShift)
{
    CallCounter counters[5];
    RefArray<CallCounter> array;
    const auto callsOf = [&]
    {
        std::vector<int> calls;
        for (auto& counter : counters)
            calls.push_back(std::exchange(counter.calls, 0));
        return calls;
    };
    for (std::size_t index = 0; index < 4; ++index)
        array.Insert(index, Ref<CallCounter>(&counters[index]));
    EXPECT_EQ(callsOf(), (std::vector<int>{1, 1, 1, 1, 0}));
    array.Insert(0, Ref<CallCounter>(&counters[4]));  // every other one shifts, and the memory grows
    EXPECT_EQ(callsOf(), (std::vector<int>{0, 0, 0, 0, 1}));
    array.Move(0, 3);
    array.Move(4, 1);
    EXPECT_EQ(callsOf(), (std::vector<int>{0, 0, 0, 0, 0}));
    const auto taken = array.Take(0);
    EXPECT_EQ(taken.Get(), &counters[0]);
    EXPECT_EQ(callsOf(), (std::vector<int>{0, 0, 0, 0, 0}));  // its reference changes hands
}

}  // namespace
