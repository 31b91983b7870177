// SPDX-License-Identifier: MIT
#include "Helpers/InterfaceList.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

struct Root
{
    static constexpr const char Id[] = "root";
    int root = 0;
};

struct Left : Root
{
    static constexpr const char Id[] = "left";
    int left = 0;
};

struct Left2 : Left
{
    static constexpr const char Id[] = "left2";
};

struct Right : Root
{
    static constexpr const char Id[] = "right";
    int right = 0;
};

struct Impostor : Root
{
    static constexpr const char Id[] = "left";
    int impostor = 0;
};

struct Both : Left2, Right, Impostor
{
};

void* Find(Both& object, const char* id)
{
    return InterfaceList<Left2, Left, Root, Right>::FindFace(object, id);
}

}  // namespace

TEST(InterfaceList, FindsNothingForAnIdentifierThatIsNotListed)
{
    Both object;
    EXPECT_EQ(Find(object, "impostor"), nullptr);
    EXPECT_EQ(Find(object, ""), nullptr);
}

TEST(InterfaceList, FindsNothingForAPrefixOrALongerText)
{
    Both object;
    EXPECT_EQ(Find(object, "lef"), nullptr);
    EXPECT_EQ(Find(object, "left22"), nullptr);
    EXPECT_EQ(Find(object, "Left"), nullptr);
}

TEST(InterfaceList, GivesTheFaceOfTheInterfaceItself)
{
    Both object;
    EXPECT_EQ(Find(object, "left2"), static_cast<Left2*>(&object));
    EXPECT_EQ(Find(object, "left"), static_cast<Left*>(&object));
    EXPECT_EQ(Find(object, "right"), static_cast<Right*>(&object));
}

TEST(InterfaceList, GivesASharedBaseOfTheFirstListedFace)
{
    Both object;
    EXPECT_EQ(Find(object, "root"), static_cast<Root*>(static_cast<Left*>(&object)));
    EXPECT_EQ((InterfaceList<Right, Root, Left>::FindFace(object, "root")),
              static_cast<Root*>(static_cast<Right*>(&object)));
}

TEST(InterfaceList, AnswersASharedBaseOnlyWhereItIsListed)
{
    Both object;
    EXPECT_EQ((InterfaceList<Left, Right>::FindFace(object, "root")), nullptr);
}

TEST(InterfaceList, TestsInTheOrderOfTheList)
{
    Both object;
    EXPECT_EQ((InterfaceList<Left, Impostor>::FindFace(object, "left")), static_cast<Left*>(&object));
    EXPECT_EQ((InterfaceList<Impostor, Left>::FindFace(object, "left")), static_cast<Impostor*>(&object));
}

TEST(InterfaceList, GivesANamedFaceWhereTheListSaysSo)
{
    Both object;
    using List = InterfaceList<Right, AnsweredBy<Root, Left>, Left>;
    EXPECT_EQ(List::FindFace(object, "root"), static_cast<Root*>(static_cast<Left*>(&object)));
    EXPECT_EQ(List::FindFace(object, "right"), static_cast<Right*>(&object));
    EXPECT_EQ(List::FindFace(object, "roo"), nullptr);
}

TEST(InterfaceList, GivesAFaceThatIsKnownWhenCompiling)
{
    Both object;
    using List = InterfaceList<Right, Left>;
    EXPECT_EQ(List::GetFace<Left2>(object), static_cast<Left2*>(&object));
    EXPECT_EQ(List::GetFace<Root>(object), static_cast<Root*>(static_cast<Right*>(&object)));
}

}  // namespace tvx::test
