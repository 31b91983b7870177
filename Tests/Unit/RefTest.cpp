// SPDX-License-Identifier: MIT
#include "Helpers/TailAllocated.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

namespace tvx::test
{

namespace
{

// A holder crosses the binary boundary as a result: one pointer, given through a hidden place because it is not trivial.
static_assert(sizeof(Ref<IObject>) == sizeof(void*));
static_assert(!std::is_trivially_copyable_v<Ref<IObject>>);

// Sharing is spelled out, so that a reference is never added by accident.
static_assert(!std::is_convertible_v<IObject*, Ref<IObject>>);
static_assert(std::is_convertible_v<Ref<ProbeObject>, Ref<IObjectBase>>);
static_assert(std::is_nothrow_move_constructible_v<Ref<IObject>>);

// Looks at its holder when it dies.
class Looker final : public CountedImpl<Looker, IObjectBase>
{
public:
    using Interfaces = InterfaceList<IObjectBase>;

    Looker(const Ref<IObjectBase>& holder, IObjectBase*& seen) : holder_(holder), seen_(seen) {}
    ~Looker() { seen_ = holder_.Get(); }

private:
    const Ref<IObjectBase>& holder_;
    IObjectBase*& seen_;
};

// Keeps bytes behind itself.
class Tailed final : public CountedImpl<Tailed, IObjectBase>, public TailAllocated
{
public:
    using Interfaces = InterfaceList<IObjectBase>;

    Tailed(std::size_t bytes, char fill)
    {
        for (std::size_t i = 0; i < bytes; ++i)
            reinterpret_cast<char*>(this + 1)[i] = fill;
    }

    char GetTail(std::size_t i) { return reinterpret_cast<char*>(this + 1)[i]; }

    static TailSize GetTailSize(std::size_t bytes, char) { return {bytes}; }
};

}  // namespace

TEST(Ref, IsEmptyByItselfAndMadeOfNull)
{
    const Ref<IObject> byItself;
    const Ref<IObject> ofNull = nullptr;
    const Ref<IObject> ofNullPointer(static_cast<IObject*>(nullptr));
    EXPECT_FALSE(byItself);
    EXPECT_FALSE(ofNull);
    EXPECT_FALSE(ofNullPointer);
    EXPECT_EQ(ofNullPointer.Get(), nullptr);
}

TEST(Ref, SharesTheObjectOfAPointer)
{
    const auto object = MakeRef<ProbeObject>();
    {
        const Ref<IObject> second(object.Get());
        EXPECT_TRUE(second);
        EXPECT_EQ(object->GetRefCount(), 2u);
    }
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST(Ref, AddsAReferenceWhenCopiedAndNoneWhenMoved)
{
    auto object = MakeRef<ProbeObject>();
    auto copy = object;
    EXPECT_EQ(copy->GetRefCount(), 2u);
    const auto moved = std::move(copy);
    EXPECT_EQ(moved->GetRefCount(), 2u);
    EXPECT_FALSE(copy);  // NOLINT(bugprone-use-after-move): a moved-from holder is empty
}

TEST(Ref, ConvertsToAHolderOfABase)
{
    auto object = MakeRef<ProbeObject>();
    const Ref<IObjectBase> copied = object;
    EXPECT_EQ(copied->GetRefCount(), 2u);
    const Ref<IObjectBase> moved = std::move(object);
    EXPECT_EQ(moved->GetRefCount(), 2u);
    EXPECT_EQ(moved.Get(), copied.Get());
}

TEST(Ref, ReleasesWhatItHeldWhenAssigned)
{
    bool died = false;
    auto holder = MakeRef<ProbeObject>(&died);
    const auto other = MakeRef<ProbeObject>();
    holder = other;
    EXPECT_TRUE(died);
    EXPECT_EQ(other->GetRefCount(), 2u);
    holder = nullptr;
    EXPECT_EQ(other->GetRefCount(), 1u);
}

TEST(Ref, SurvivesBeingAssignedToItself)
{
    auto holder = MakeRef<ProbeObject>();
    const auto& same = holder;
    holder = same;
    EXPECT_EQ(holder->GetRefCount(), 1u);
}

TEST(Ref, HasItsNewValueBeforeTheOldOneIsReleased)
{
    const auto next = MakeRef<BareObject>();
    IObjectBase* seen = nullptr;
    Ref<IObjectBase> holder;
    holder = MakeRef<Looker>(holder, seen);
    holder = next;
    EXPECT_EQ(seen, next.Get());
}

TEST(Ref, TakesOverAReferenceByAdoption)
{
    auto* const object = new ProbeObject;
    object->AddRef();
    const auto holder = Ref<ProbeObject>::Adopt(object);
    EXPECT_EQ(holder->GetRefCount(), 1u);
}

TEST(Ref, GivesItsReferenceAway)
{
    auto holder = MakeRef<ProbeObject>();
    ProbeObject* const object = holder.Detach();
    EXPECT_FALSE(holder);
    EXPECT_EQ(object->GetRefCount(), 1u);
    object->Release();
}

TEST(Ref, IsEmptiedBeforeItReceives)
{
    bool died = false;
    auto holder = MakeRef<ProbeObject>(&died);
    ProbeObject** const place = holder.Receive();
    EXPECT_TRUE(died);
    EXPECT_EQ(*place, nullptr);
    *place = MakeRef<ProbeObject>().Detach();
    EXPECT_EQ(holder->GetRefCount(), 1u);
}

TEST(Ref, ReachesTheObject)
{
    const auto holder = MakeRef<ProbeObject>();
    EXPECT_EQ(&*holder, holder.Get());
    EXPECT_EQ(holder->GetRefCount(), 1u);
}

TEST(MakeRef, HoldsTheOneReferenceOfTheNewObject)
{
    bool died = false;
    {
        const auto object = MakeRef<ProbeObject>(&died);
        EXPECT_TRUE(object->IsUnique());
    }
    EXPECT_TRUE(died);
}

TEST(MakeRef, GivesAClassTheBytesItWantsBehindItself)
{
    const auto object = MakeRef<Tailed>(std::size_t{1000}, 'x');
    EXPECT_EQ(object->GetTail(0), 'x');
    EXPECT_EQ(object->GetTail(999), 'x');
}

TEST(Query, GivesTheInterfaceWithAReferenceOfItsOwn)
{
    const auto object = MakeRef<ProbeObject>();
    const auto answer = Query<IObject>(object);
    EXPECT_EQ(answer.Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 2u);
}

TEST(Query, IsEmptyForARefusalAndForNull)
{
    const auto object = MakeRef<BareObject>();
    EXPECT_FALSE(Query<IObject>(object));
    EXPECT_FALSE(Query<IObject>(nullptr));
    EXPECT_FALSE(Query<IObject>(Ref<IObjectBase>()));
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST(HandOut, GivesOneReference)
{
    const auto object = MakeRef<ProbeObject>();
    IObjectBase* out = nullptr;
    HandOut(object.Get(), &out);
    EXPECT_EQ(out, object.Get());
    EXPECT_EQ(object->GetRefCount(), 2u);
    out->Release();
}

TEST(HandOut, GivesNullAsNull)
{
    const auto object = MakeRef<ProbeObject>();
    IObjectBase* out = object.Get();
    HandOut(static_cast<ProbeObject*>(nullptr), &out);
    EXPECT_EQ(out, nullptr);
}

}  // namespace tvx::test
