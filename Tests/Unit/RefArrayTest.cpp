// SPDX-License-Identifier: MIT
#include "Helpers/RefArray.h"

#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

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

}  // namespace
