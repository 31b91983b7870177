// SPDX-License-Identifier: MIT
#include "InterfacesHelpers/UserDataContainer.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace tvx::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char SourceId[] = "test.IEventSource/1.0";
constexpr std::uint64_t WideValue = 0xFEDCBA9876543210;

// An object with events of its own, which the tests fire.
class EventSource final : public ClassImpl<EventSource, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    explicit EventSource(std::vector<std::string>* log = nullptr) : log_(log) {}
    ~EventSource()
    {
        if (log_ != nullptr)
            log_->push_back("the class's own destructor");
    }

    using ObjectImpl::Connect;
    using ObjectImpl::Fire;

    void Subscribe(const char* eventName, IEventHandler* handler, std::uint64_t userData = 0)
    {
        Connect(SourceId, eventName, handler, userData, true);
    }

    void Unsubscribe(const char* eventName, IEventHandler* handler) { Connect(SourceId, eventName, handler, 0, false); }

    void Fire(const char* eventName, std::uint64_t param = 0) { Fire(SourceId, eventName, this, param); }

    const void* GetIdentity() { return static_cast<ObjectImpl*>(this); }

private:
    std::vector<std::string>* log_;
};

// An object with a face that keeps something.
class Container final : public ClassImpl<Container, UserDataContainerImpl>
{
public:
    using Interfaces = InterfaceList<IUserDataContainer, IObject, IObjectBase>;
};

// Answers every event with a failure.
class RefusingHandler final : public ClassImpl<RefusingHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t) override
    {
        ++calls;
        return TVX_E_FAIL;
    }

    int calls = 0;
};

class EventsTest : public testing::Test
{
protected:
    // A handler that logs name whenever it is called, then runs an action.
    Ref<RecordingHandler> MakeHandler(const std::string& name, std::function<void()> action = {})
    {
        auto handler = MakeRef<RecordingHandler>();
        handler->action = [this, name, action](const SeenEvent&)
        {
            log.push_back(name);
            if (action)
                action();
        };
        return handler;
    }

    std::vector<std::string> log;
    Ref<EventSource> source = MakeRef<EventSource>(&log);
};

}  // namespace

TEST_F(EventsTest, DestroyedTellsItsNamesNoParameterTheUserValueAndAnIdentity)
{
    const auto handler = MakeRef<RecordingHandler>();
    const void* const identity = source->GetIdentity();
    source->SubscribeDestroyed(handler.Get(), WideValue);
    source = nullptr;

    ASSERT_EQ(handler->events.size(), 1u);
    const auto& event = handler->events.front();
    EXPECT_EQ(event.interfaceId, "com.talvere.general.tvx.IObject/1.0");
    EXPECT_EQ(event.eventName, "Destroyed");
    EXPECT_EQ(event.param, 0u);
    EXPECT_EQ(event.userData, WideValue);
    EXPECT_EQ(event.sender, identity);
}

TEST_F(EventsTest, TheIdentityIsNotAnInterfacePointer)
{
    EXPECT_NE(source->GetIdentity(), static_cast<const void*>(static_cast<IObject*>(source.Get())));
}

TEST_F(EventsTest, DestroyedIsFiredAfterTheClassReleasedItsOwnData)
{
    const auto handler = MakeHandler("Destroyed");
    source->SubscribeDestroyed(handler.Get(), 0);
    source = nullptr;
    EXPECT_THAT(log, ElementsAre("the class's own destructor", "Destroyed"));
}

TEST_F(EventsTest, DestroyedIsFiredWhileTheFacesStillHoldWhatTheyKeep)
{
    bool released = false;
    bool releasedBefore = true;
    const auto handler = MakeHandler("Destroyed", [&] { releasedBefore = released; });
    auto container = MakeRef<Container>();
    container->SetUserData("name", MakeRef<ProbeObject>(&released).Get());
    container->SubscribeDestroyed(handler.Get(), 0);
    container = nullptr;
    EXPECT_THAT(log, ElementsAre("Destroyed"));
    EXPECT_FALSE(releasedBefore);
    EXPECT_TRUE(released);
}

TEST_F(EventsTest, AHandlerSubscribedTwiceIsCalledTwiceAndOnceLessForEachUnsubscribing)
{
    const auto twice = MakeRef<RecordingHandler>();
    const auto once = MakeRef<RecordingHandler>();
    for (const auto& handler : {twice, once})
    {
        source->SubscribeDestroyed(handler.Get(), 1);
        source->SubscribeDestroyed(handler.Get(), 2);
    }
    source->UnsubscribeDestroyed(once.Get());
    source = nullptr;
    EXPECT_EQ(twice->events.size(), 2u);
    ASSERT_EQ(once->events.size(), 1u);
    EXPECT_EQ(once->events.front().userData, 2u);  // the oldest went
}

TEST_F(EventsTest, UnsubscribingNullFromDestroyedRemovesEveryHandlerOfItAndNoOther)
{
    const auto handler = MakeRef<RecordingHandler>();
    const auto other = MakeRef<RecordingHandler>();
    source->SubscribeDestroyed(handler.Get(), 0);
    source->SubscribeDestroyed(other.Get(), 0);
    source->Subscribe("Changed", handler.Get());
    source->UnsubscribeDestroyed(nullptr);
    source->Fire("Changed");
    source = nullptr;
    EXPECT_THAT(handler->GetNames(), ElementsAre("Changed"));
    EXPECT_THAT(other->events, IsEmpty());
}

TEST_F(EventsTest, UnsubscribingNullFromOneEventRemovesAllOfTheClassAndLeavesDestroyed)
{
    const auto handler = MakeRef<RecordingHandler>();
    source->SubscribeDestroyed(handler.Get(), 0);
    source->Subscribe("Changed", handler.Get());
    source->Subscribe("Moved", handler.Get());
    source->Connect("test.IOther/1.0", "Gone", handler.Get(), 0, true);
    source->Unsubscribe("Changed", nullptr);
    source->Fire("Changed");
    source->Fire("Moved");
    source->Fire("test.IOther/1.0", "Gone", source.Get(), 0);
    EXPECT_THAT(handler->events, IsEmpty());
    source = nullptr;
    EXPECT_THAT(handler->GetNames(), ElementsAre("Destroyed"));
}

TEST_F(EventsTest, ANullHandlerIsNotSubscribed)
{
    const auto handler = MakeHandler("handler");
    source->SubscribeDestroyed(nullptr, 1);
    source->Subscribe("Changed", nullptr, 1);
    source->Subscribe("Changed", handler.Get());
    source->Subscribe("Changed", nullptr, 2);
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("handler"));
    source = nullptr;
    EXPECT_THAT(log, ElementsAre("handler", "the class's own destructor"));
}

TEST_F(EventsTest, UnsubscribingWhatIsNotThereDoesNothing)
{
    const auto handler = MakeRef<RecordingHandler>();
    const auto stranger = MakeRef<RecordingHandler>();
    source->UnsubscribeDestroyed(handler.Get());  // nobody ever subscribed
    source->UnsubscribeDestroyed(nullptr);
    source->Unsubscribe("Changed", handler.Get());
    source->Unsubscribe("Changed", nullptr);
    source->Subscribe("Changed", handler.Get());
    source->Unsubscribe("Changed", stranger.Get());
    source->Unsubscribe("Moved", handler.Get());
    source->Connect("test.IOther/1.0", "Changed", handler.Get(), 0, false);
    source->Fire("Changed");
    EXPECT_THAT(handler->GetNames(), ElementsAre("Changed"));
}

TEST_F(EventsTest, NeitherHandlerNorSenderGainsOrLosesAReference)
{
    const auto handler = MakeRef<RecordingHandler>();
    source->Subscribe("Changed", handler.Get());
    source->SubscribeDestroyed(handler.Get(), 0);
    EXPECT_TRUE(handler->IsUnique());
    EXPECT_TRUE(source->IsUnique());
    source->Fire("Changed");
    EXPECT_TRUE(handler->IsUnique());
    EXPECT_TRUE(source->IsUnique());
    source->Unsubscribe("Changed", handler.Get());
    source->UnsubscribeDestroyed(handler.Get());
    EXPECT_TRUE(handler->IsUnique());
    EXPECT_TRUE(source->IsUnique());
}

TEST_F(EventsTest, AClassEventCarriesWhatItWasFiredWith)
{
    const auto handler = MakeRef<RecordingHandler>();
    source->Subscribe("Changed", handler.Get(), 5);
    source->Fire("Changed", WideValue);
    ASSERT_EQ(handler->events.size(), 1u);
    const auto& event = handler->events.front();
    EXPECT_EQ(event.sender, static_cast<IObject*>(source.Get()));
    EXPECT_EQ(event.interfaceId, SourceId);
    EXPECT_EQ(event.eventName, "Changed");
    EXPECT_EQ(event.param, WideValue);
    EXPECT_EQ(event.userData, 5u);
}

TEST_F(EventsTest, HandlersAreCalledInTheOrderOfSubscription)
{
    const auto first = MakeHandler("first");
    const auto second = MakeHandler("second");
    source->Subscribe("Changed", second.Get());
    source->Subscribe("Changed", first.Get());
    source->Subscribe("Changed", second.Get());
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("second", "first", "second"));
}

TEST_F(EventsTest, AnEventReachesOnlyHandlersOfExactlyItsInterfaceAndName)
{
    const auto handler = MakeRef<RecordingHandler>();
    source->Subscribe("Changed", handler.Get());
    for (const char* const name : {"", "Change", "Changed ", "Changed2", "changed", "::Changed"})
        source->Fire(name);
    for (const char* const id : {"", "test.IEventSource/1", "test.IEventSource/1.00", "TEST.IEventSource/1.0"})
        source->Fire(id, "Changed", source.Get(), 0);
    EXPECT_THAT(handler->events, IsEmpty());
}

TEST_F(EventsTest, TheKeyIsTheWholeTextOfInterfaceSeparatorAndName)
{
    const auto handler = MakeRef<RecordingHandler>();
    source->Connect("a::b", "c", handler.Get(), 0, true);
    source->Fire("a", "b::c", source.Get(), 0);
    ASSERT_EQ(handler->events.size(), 1u);
    EXPECT_EQ(handler->events.front().interfaceId, "a");  // as fired, not as subscribed
    EXPECT_EQ(handler->events.front().eventName, "b::c");
    source->Connect("a", "b::c", handler.Get(), 0, false);
    source->Fire("a::b", "c", source.Get(), 0);
    EXPECT_EQ(handler->events.size(), 1u);
}

TEST_F(EventsTest, TheKeyIsNoPatternOfColons)
{
    const auto handler = MakeRef<RecordingHandler>();
    source->Connect("ab", "cd", handler.Get(), 0, true);
    source->Fire("a", "b::cd", source.Get(), 0);
    source->Fire("abc", "d", source.Get(), 0);
    source->Fire("ab:", ":cd", source.Get(), 0);
    source->Fire("ab::cd", "", source.Get(), 0);
    source->Connect("aXYb", "c", handler.Get(), 0, true);
    source->Fire("a", "b::c", source.Get(), 0);
    EXPECT_THAT(handler->events, IsEmpty());
}

TEST_F(EventsTest, ASubscriptionRemovedBeforeItsTurnIsNotCalled)
{
    auto second = MakeHandler("second");
    const auto third = MakeHandler("third");
    const auto first = MakeHandler("first",
                                   [&]
                                   {
                                       source->Unsubscribe("Changed", second.Get());
                                       second = nullptr;  // gone for good
                                   });
    for (const auto& handler : {first.Get(), second.Get(), third.Get()})
        source->Subscribe("Changed", handler);
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("first", "third"));
}

TEST_F(EventsTest, ASubscriptionAddedDuringTheFiringIsCalledInIt)
{
    const auto late = MakeHandler("late");
    const auto first = MakeHandler("first", [&] { source->Subscribe("Changed", late.Get()); });
    const auto second = MakeHandler("second");
    source->Subscribe("Changed", first.Get());
    source->Subscribe("Changed", second.Get());
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("first", "second", "late"));
}

TEST_F(EventsTest, ASubscriptionAddedByTheLastHandlerIsStillCalled)
{
    const auto late = MakeHandler("late");
    const auto only = MakeHandler("only", [&] { source->Subscribe("Changed", late.Get()); });
    source->Subscribe("Changed", only.Get());
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("only", "late"));
}

TEST_F(EventsTest, AHandlerMayRemoveItself)
{
    Ref<RecordingHandler> once;
    once = MakeHandler("once", [&] { source->Unsubscribe("Changed", once.Get()); });
    const auto after = MakeHandler("after");
    source->Subscribe("Changed", once.Get());
    source->Subscribe("Changed", after.Get());
    source->Fire("Changed");
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("once", "after", "after"));
}

TEST_F(EventsTest, AHandlerThatRemovesItselfOnceKeepsItsSecondSubscription)
{
    Ref<RecordingHandler> handler;
    bool removed = false;
    handler = MakeHandler("handler",
                          [&]
                          {
                              if (!std::exchange(removed, true))
                                  source->Unsubscribe("Changed", handler.Get());
                          });
    source->Subscribe("Changed", handler.Get(), 1);
    source->Subscribe("Changed", handler.Get(), 2);
    source->Fire("Changed");
    source->Fire("Changed");
    ASSERT_EQ(handler->events.size(), 3u);
    EXPECT_EQ(handler->events[0].userData, 1u);
    EXPECT_EQ(handler->events[1].userData, 2u);
    EXPECT_EQ(handler->events[2].userData, 2u);
}

TEST_F(EventsTest, AHandlerMayRemoveAll)
{
    const auto first = MakeHandler("first", [&] { source->Unsubscribe("Changed", nullptr); });
    const auto second = MakeHandler("second");
    source->Subscribe("Changed", first.Get());
    source->Subscribe("Changed", second.Get());
    source->Fire("Changed");
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("first"));
}

TEST_F(EventsTest, AHandlerMayRemoveAllAndSubscribeAgain)
{
    Ref<RecordingHandler> first;
    bool done = false;
    first = MakeHandler("first",
                        [&]
                        {
                            if (std::exchange(done, true))
                                return;
                            source->Unsubscribe("Changed", nullptr);
                            source->Subscribe("Changed", first.Get());
                        });
    source->Subscribe("Changed", first.Get());
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("first", "first"));
}

TEST_F(EventsTest, AHandlerMayFireAgain)
{
    int depth = 0;
    const auto first = MakeHandler("first",
                                   [&]
                                   {
                                       if (++depth < 3)
                                           source->Fire("Changed");
                                   });
    const auto second = MakeHandler("second");
    source->Subscribe("Changed", first.Get());
    source->Subscribe("Changed", second.Get());
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("first", "first", "first", "second", "second", "second"));
}

TEST_F(EventsTest, WhatAnInnerFiringRemovesTheOuterDoesNotCall)
{
    const auto second = MakeHandler("second");
    const auto inner = MakeHandler("inner", [&] { source->Unsubscribe("Changed", second.Get()); });
    const auto outer = MakeHandler("outer", [&] { source->Fire("Moved"); });
    const auto third = MakeHandler("third");
    source->Subscribe("Moved", inner.Get());
    for (const auto& handler : {outer.Get(), second.Get(), third.Get()})
        source->Subscribe("Changed", handler);
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("outer", "inner", "third"));
}

TEST_F(EventsTest, AHandlerThatThrowsStopsNeitherTheOthersNorLaterEvents)
{
    const auto thrower = MakeHandler("thrower", [] { throw std::runtime_error("a handler's own mistake"); });
    const auto removed = MakeHandler("removed");
    const auto after = MakeHandler("after", [&] { source->Unsubscribe("Changed", removed.Get()); });
    for (const auto& handler : {thrower.Get(), after.Get(), removed.Get()})
        source->Subscribe("Changed", handler);
    EXPECT_EQ(CaptureOutput([&] { source->Fire("Changed"); }), "");
    source->Fire("Changed");
    EXPECT_THAT(log, ElementsAre("thrower", "after", "thrower", "after"));
}

TEST_F(EventsTest, AHandlerThatThrowsOnDestroyedStopsNotTheDestruction)
{
    const auto thrower = MakeHandler("thrower", [] { throw 1; });
    const auto after = MakeHandler("after");
    source->SubscribeDestroyed(thrower.Get(), 0);
    source->SubscribeDestroyed(after.Get(), 0);
    source = nullptr;
    EXPECT_THAT(log, ElementsAre("the class's own destructor", "thrower", "after"));
}

TEST_F(EventsTest, WhatAHandlerAnswersIsIgnored)
{
    const auto refusing = MakeRef<RefusingHandler>();
    const auto after = MakeHandler("after");
    source->Subscribe("Changed", refusing.Get());
    source->Subscribe("Changed", after.Get());
    EXPECT_EQ(CaptureOutput([&] { source->Fire("Changed"); }), "");
    EXPECT_EQ(refusing->calls, 1);
    EXPECT_THAT(log, ElementsAre("after"));
}

TEST_F(EventsTest, AListThatFiresMayBeChangedThroughAnotherEvent)
{
    const auto moved = MakeHandler("moved");
    const auto changed = MakeHandler("changed",
                                     [&]
                                     {
                                         source->Subscribe("Moved", moved.Get());
                                         source->Fire("Moved");
                                         source->Unsubscribe("Moved", moved.Get());
                                     });
    source->Subscribe("Changed", changed.Get());
    source->Fire("Changed");
    source->Fire("Moved");
    EXPECT_THAT(log, ElementsAre("changed", "moved"));
}

TEST_F(EventsTest, FiringAndDyingWithoutSubscribersIsSilent)
{
    EXPECT_EQ(CaptureOutput(
                  [&]
                  {
                      source->Fire("Changed");
                      source = nullptr;
                  }),
              "");
}

// Most objects are never listened to: they carry the place for a pointer, and the number of their thread.
static_assert(sizeof(ObjectImpl) <= 2 * sizeof(void*));

}  // namespace tvx::test
