// SPDX-License-Identifier: MIT
#include "Helpers/InterfaceList.h"

#include <gtest/gtest.h>

#include <string>

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

// Identifiers that are longer than what is looked at first, and one of just that length.
struct Long
{
    static constexpr const char Id[] = "com.example.ILong/1.0";
    int value = 0;
};

struct LongOther
{
    static constexpr const char Id[] = "com.example.IGong/1.0";
    int value = 0;
};

struct LongNewer
{
    static constexpr const char Id[] = "com.example.ILong/1.1";
    int value = 0;
};

struct Eight
{
    static constexpr const char Id[] = "long/1.0";
    int value = 0;
};

struct Longs : Long, LongOther, LongNewer, Eight
{
};

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

TEST(InterfaceList, TellsIdentifiersApartByEveryByte)
{
    Longs object;
    using List = InterfaceList<Long, LongOther, LongNewer, Eight>;
    EXPECT_EQ(List::FindFace(object, Long::Id), static_cast<Long*>(&object));
    EXPECT_EQ(List::FindFace(object, LongOther::Id), static_cast<LongOther*>(&object));
    EXPECT_EQ(List::FindFace(object, LongNewer::Id), static_cast<LongNewer*>(&object));
    EXPECT_EQ(List::FindFace(object, Eight::Id), static_cast<Eight*>(&object));
    for (const std::string id : {Long::Id, LongOther::Id, LongNewer::Id, Eight::Id})
    {
        for (std::size_t place = 0; place < id.size(); ++place)
        {
            auto changed = id;
            changed[place] = '*';
            EXPECT_EQ(List::FindFace(object, changed), nullptr) << changed;
        }
        for (std::size_t length = 0; length < id.size(); ++length)
            EXPECT_EQ(List::FindFace(object, id.substr(0, length)), nullptr) << id << ", " << length;
        EXPECT_EQ(List::FindFace(object, id + "0"), nullptr);
    }
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
