// SPDX-License-Identifier: MIT
#include "InterfacesHelpers/UserDataContainer.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"
#include "Tests/Support/SerializerDoubles.h"
#include "Tests/Support/UserDataTesting.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace
{

using namespace tvx;
using namespace tvx::test;

constexpr const char Source[] = "InterfacesHelpers/UserDataContainer.h";

// Attached, it runs the test's action when it dies.
class DyingObject final : public CountedImpl<DyingObject, IObjectBase>
{
public:
    using Interfaces = InterfaceList<IObjectBase>;

    explicit DyingObject(std::function<void()> action) : action_(std::move(action)) {}
    ~DyingObject() { action_(); }

private:
    std::function<void()> action_;
};

// The names in the order in which an iterator finds them.
Texts Names(IUserDataContainer& container)
{
    Texts names;
    for (const auto iterator = container.GetUserDataIterator(); !iterator->IsEnd(); iterator->Next())
        names.push_back(iterator->GetKey());
    return names;
}

TEST(UserData, GivesBackWhatWasAttached)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    EXPECT_EQ(container->SetUserData("name", object.Get()), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 2U);
    Ref<IObjectBase> given;
    EXPECT_EQ(container->GetUserData("name", given.Receive()), TVX_S_VALUE);
    EXPECT_EQ(given.Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 3U);
}

TEST(UserData, GivesBackTheSameByItsSecondForm)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    container->SetUserData("name", object.Get());
    const IObjectBase* given = nullptr;
    EXPECT_EQ(container->GetUserData("name", &given), TVX_S_VALUE);
    EXPECT_EQ(given, object.Get());
    EXPECT_EQ(object->GetRefCount(), 3U);
    object->Release();
    EXPECT_EQ(container->GetUserData("absent", &given), TVX_S_NOKEY);
    EXPECT_EQ(given, nullptr);
}

TEST(UserData, EmptiesOutWhenTheNameIsAbsent)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    container->SetUserData("name", object.Get());
    for (const char* const name : {"nam", "names", "", "NAME", static_cast<const char*>(nullptr)})
    {
        IObjectBase* out = object.Get();
        Result result = TVX_OK;
        EXPECT_EQ(CaptureOutput([&] { result = container->GetUserData(name, &out); }), "");
        EXPECT_EQ(result, TVX_S_NOKEY);
        EXPECT_EQ(out, nullptr);
    }
    EXPECT_EQ(object->GetRefCount(), 2U);
}

TEST(UserData, ReleasesTheFirstObjectForASecondUnderItsName)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto first = MakeRef<BareObject>();
    const auto second = MakeRef<BareObject>();
    container->SetUserData("name", first.Get());
    EXPECT_EQ(container->SetUserData("name", second.Get()), TVX_OK);
    EXPECT_EQ(first->GetRefCount(), 1U);
    EXPECT_EQ(second->GetRefCount(), 2U);
    EXPECT_EQ(Names(*container), Texts{"name"});
}

TEST(UserData, KeepsAnObjectThatIsAttachedAgain)
{
    bool died = false;
    const auto container = MakeRef<RefusingContainer>();
    auto object = MakeRef<ProbeObject>(&died);
    container->SetUserData("name", object.Get());
    ProbeObject& kept = *object;
    object = nullptr;
    EXPECT_EQ(container->SetUserData("name", &kept), TVX_OK);
    EXPECT_FALSE(died);
    EXPECT_TRUE(kept.IsUnique());
}

TEST(UserData, HoldsOneReferenceForEachName)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    container->SetUserData("a", object.Get());
    container->SetUserData("b", object.Get());
    EXPECT_EQ(object->GetRefCount(), 3U);
    container->SetUserData("a", nullptr);
    EXPECT_EQ(object->GetRefCount(), 2U);
}

TEST(UserData, IsRemovedByNull)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    container->SetUserData("name", object.Get());
    EXPECT_EQ(container->SetUserData("absent", nullptr), TVX_OK);
    EXPECT_EQ(Names(*container), Texts{"name"});
    EXPECT_EQ(container->SetUserData("name", nullptr), TVX_OK);
    EXPECT_EQ(Names(*container), Texts());
    EXPECT_TRUE(object->IsUnique());
}

TEST(UserData, ReportsANullName)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    for (IObjectBase* const attached : {static_cast<IObjectBase*>(object.Get()), static_cast<IObjectBase*>(nullptr)})
    {
        const auto output = CaptureOutput([&] { EXPECT_EQ(container->SetUserData(nullptr, attached), TVX_E_POINTER); });
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", Source));
    }
    EXPECT_TRUE(object->IsUnique());
}

TEST(UserData, ReportsANullOut)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    container->SetUserData("name", object.Get());
    for (const char* const name : {"name", "absent", static_cast<const char*>(nullptr)})
    {
        auto output = CaptureOutput(
            [&] { EXPECT_EQ(container->GetUserData(name, static_cast<IObjectBase**>(nullptr)), TVX_E_POINTER); });
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", Source));
        output = CaptureOutput(
            [&] { EXPECT_EQ(container->GetUserData(name, static_cast<const IObjectBase**>(nullptr)), TVX_E_POINTER); });
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", Source));
    }
    EXPECT_EQ(object->GetRefCount(), 2U);
}

TEST(UserData, IsClearedAsAWhole)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    container->SetUserData("a", object.Get());
    container->SetUserData("b", object.Get());
    EXPECT_EQ(container->ClearUserData(), TVX_OK);
    EXPECT_TRUE(object->IsUnique());
    EXPECT_EQ(Names(*container), Texts());
    EXPECT_EQ(container->ClearUserData(), TVX_OK);
}

TEST(UserData, IsAlreadyGoneForAnObjectThatDiesOfIt)
{
    const auto container = MakeRef<RefusingContainer>();
    Texts seen;
    const auto look = [&] { seen.push_back(std::to_string(Names(*container).size())); };
    container->SetUserData("a", MakeRef<DyingObject>(look).Get());
    container->SetUserData("a", nullptr);
    container->SetUserData("a", MakeRef<DyingObject>(look).Get());
    container->SetUserData("a", MakeRef<BareObject>().Get());
    container->SetUserData("b", MakeRef<DyingObject>(look).Get());
    container->ClearUserData();
    EXPECT_EQ(seen, (Texts{"0", "1", "0"}));
}

TEST(UserDataIterator, WalksTheNamesInTheOrderOfTheirBytes)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    for (const char* const name : {"b", "\xff", "ab", "a", "A", ""})
        container->SetUserData(name, object.Get());
    EXPECT_EQ(Names(*container), (Texts{"", "A", "a", "ab", "b", "\xff"}));
}

TEST(UserDataIterator, GivesTheObjectsWithAReference)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto object = MakeRef<BareObject>();
    container->SetUserData("name", object.Get());
    Ref<IUserDataIterator> iterator;
    EXPECT_EQ(container->CreateUserDataIterator(iterator.Receive()), TVX_OK);
    EXPECT_TRUE(iterator->IsUnique());
    EXPECT_TRUE(container->IsUnique());
    EXPECT_FALSE(iterator->IsEnd());
    EXPECT_STREQ(iterator->GetKey(), "name");
    Ref<IObjectBase> given;
    EXPECT_EQ(iterator->GetObject(given.Receive()), TVX_OK);
    EXPECT_EQ(given.Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 3U);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(iterator->GetObject(nullptr), TVX_E_POINTER); }), "");
    EXPECT_EQ(iterator->Next(), TVX_OK);
    EXPECT_TRUE(iterator->IsEnd());
    EXPECT_EQ(iterator->GetKey(), nullptr);
}

TEST(UserDataIterator, ReportsWhatIsAskedOfItAtTheEnd)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto iterator = container->GetUserDataIterator();
    EXPECT_TRUE(iterator->IsEnd());
    const auto object = MakeRef<BareObject>();
    IObjectBase* out = object.Get();
    auto output = CaptureOutput([&] { EXPECT_EQ(iterator->Next(), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", Source));
    output = CaptureOutput([&] { EXPECT_EQ(iterator->GetObject(&out), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", Source));
    output = CaptureOutput([&] { EXPECT_EQ(iterator->GetObject(nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", Source));
    EXPECT_EQ(out, object.Get());
    EXPECT_TRUE(iterator->IsEnd());
}

TEST(UserDataIterator, AnswersNothingButIObjectBase)
{
    const auto container = MakeRef<RefusingContainer>();
    const auto iterator = container->GetUserDataIterator();
    EXPECT_EQ(Query<IObjectBase>(iterator).Get(), iterator.Get());
    EXPECT_FALSE(Query<IObject>(iterator));
    EXPECT_EQ(iterator->QueryInterface(IObjectBase::Id, nullptr), TVX_E_NOINTERFACE);
    EXPECT_TRUE(iterator->IsUnique());
}

TEST(UserDataIterator, IsRefusedForANullOutInSilence)
{
    const auto container = MakeRef<RefusingContainer>();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(container->CreateUserDataIterator(nullptr), TVX_E_POINTER); }), "");
}

TEST(UserDataIterator, IsMadeThroughTheTableForTheHolder)
{
    const auto container = MakeRef<RefusingContainer>();
    EXPECT_TRUE(container->GetUserDataIterator()->IsUnique());
    container->refusal = -42;
    EXPECT_FALSE(container->GetUserDataIterator());
}

TEST(SimpleMap, CarriesUserDataThatIsNoPartOfItsEntries)
{
    const auto map = MakeImmediateMap();
    const auto handler = MakeRef<RecordingHandler>();
    const auto object = MakeRef<BareObject>();
    map->SubscribeChanged(handler.Get(), 0, true);
    EXPECT_EQ(map->SetUserData("name", object.Get()), TVX_OK);
    EXPECT_TRUE(handler->events.empty());
    EXPECT_EQ(Entries(*map), Texts());
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(map->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Texts{"BeginArray Values", "EndArray"}));
}

TEST(SimpleMap, KeepsUserDataAndSubscriptionsOutOfItsClone)
{
    const auto map = MakeImmediateMap();
    const auto handler = MakeRef<RecordingHandler>();
    const auto object = MakeRef<BareObject>();
    map->SetUserData("name", object.Get());
    map->SubscribeChanged(handler.Get(), 0, true);
    Ref<ISimpleMap> clone;
    EXPECT_EQ(map->Clone(clone.Receive()), TVX_OK);
    EXPECT_EQ(Names(*Query<IUserDataContainer>(clone)), Texts());
    EXPECT_EQ(object->GetRefCount(), 2U);
    clone->SetString("a", "1");
    EXPECT_TRUE(handler->events.empty());
}

TEST(SimpleMap, ReleasesItsUserDataAfterDestroyed)
{
    bool died = false;
    auto map = MakeMap({{"a", "1"}});
    map->SetUserData("name", MakeRef<ProbeObject>(&died).Get());
    const auto handler = MakeRef<RecordingHandler>();
    bool diedBefore = true;
    handler->action = [&](const SeenEvent&) { diedBefore = died; };
    map->SubscribeDestroyed(handler.Get(), 7);
    map = nullptr;
    EXPECT_EQ(handler->GetNames(), Texts{"Destroyed"});
    EXPECT_FALSE(diedBefore);
    EXPECT_TRUE(died);
}

}  // namespace
