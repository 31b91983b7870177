// SPDX-License-Identifier: MIT
#include "Helpers/Subscription.h"

#include "Src/Collection.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MemoryTesting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::test;

// A sender that keeps handlers as it is told to and calls them when the test wants it.
class HandMadeSender final : public ClassImpl<HandMadeSender, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    void SubscribeTold(IEventHandler* handler, std::uint64_t cookie, bool subscribe)
    {
        calls.push_back(subscribe ? "subscribe" : "unsubscribe");
        handler_ = handler;
        cookie_ = cookie;
    }

    Result Tell() { return handler_->OnEvent(this, "test.ISender/1.0", "Told", 0, cookie_); }

    Texts calls;

private:
    IEventHandler* handler_ = nullptr;
    std::uint64_t cookie_ = 0;
};

// Hears itself from its constructor on, when nobody has a reference yet.
class SelfHearing final : public ClassImpl<SelfHearing, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    explicit SelfHearing(int* heard)
        : subscription_(Subscribe(*this, &SelfHearing::SubscribeTold, [heard](const Event&) { ++*heard; }))
    {
    }

    void SubscribeTold(IEventHandler* handler, std::uint64_t cookie, bool subscribe)
    {
        Connect("test.ISelf/1.0", "Told", handler, cookie, subscribe);
    }

    void Tell() { Fire("test.ISelf/1.0", "Told", this, 0); }

private:
    Subscription subscription_;
};

// The faces of a sender whose event belongs to the second.
class IPlain : public IObject
{
public:
    static constexpr const char Id[] = "test.IPlain/1.0";

protected:
    ~IPlain() = default;
};

class ITelling : public IObject
{
public:
    static constexpr const char Id[] = "test.ITelling/1.0";

    virtual void SubscribeTold(IEventHandler* handler, std::uint64_t cookie, bool subscribe) = 0;

protected:
    ~ITelling() = default;
};

class TwoFaced final : public ClassImpl<TwoFaced, IPlain, ITelling>
{
public:
    using Interfaces = InterfaceList<IPlain, ITelling, IObject, IObjectBase>;

    void SubscribeTold(IEventHandler* handler, std::uint64_t cookie, bool subscribe) override
    {
        Connect(ITelling::Id, "Told", handler, cookie, subscribe);
    }
};

// Does not say who it is.
class Nameless final : public ClassImpl<Nameless, ITelling>
{
public:
    using Interfaces = InterfaceList<ITelling>;

    void SubscribeTold(IEventHandler* handler, std::uint64_t cookie, bool subscribe) override
    {
        Connect(ITelling::Id, "Told", handler, cookie, subscribe);
    }

    void Tell() { Fire(ITelling::Id, "Told", this, 0); }
};

class SubscriptionTest : public testing::Test
{
protected:
    // A function that counts its calls and shares token, whose count tells whether the function is gone.
    auto Counting()
    {
        return [this, kept = token](const Event&) { ++heard; };
    }

    Subscription SubscribeCounting() { return Subscribe(*map, &ISimpleMap::SubscribeChanged, Counting()); }

    void Change() { map->SetInt("key", 1); }

    bool IsFunctionGone() const { return token.use_count() == 1; }

    int heard = 0;
    const std::shared_ptr<int> token = std::make_shared<int>();
    Ref<SimpleMap> map = MakeImmediateMap();
};

TEST_F(SubscriptionTest, GivesItsFunctionTheWholeEvent)
{
    std::vector<SeenEvent> events;
    bool mode = false;
    const auto subscription =
        Subscribe(*map, &ISimpleMap::SubscribeBatchUpdatingModeChanged,
                  [&](const Event& event)
                  {
                      events.push_back({event.sender, event.interfaceId, event.eventName, event.param, 0});
                      event.GetObject<IVariant>()->GetBool(&mode);
                  });
    map->SetBatchUpdatingMode(true);
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].sender, SenderOf(*map));
    EXPECT_EQ(events[0].interfaceId, ISimpleMap5::Id);
    EXPECT_EQ(events[0].eventName, "BatchUpdatingModeChanged");
    EXPECT_TRUE(mode);
}

TEST_F(SubscriptionTest, HearsTheEventOfItsOperationOnly)
{
    const auto collection = MakeRef<Collection>();
    const auto item = MakeRef<ProbeObject>();
    Texts names;
    const auto record = [&](const Event& event) { names.push_back(event.eventName); };
    const auto added = Subscribe(*collection, &ICollection::SubscribeItemAdded, record);
    const auto moved = Subscribe(*collection, &ICollection2::SubscribeItemMoved, record);
    collection->Add(item.Get());
    collection->Add(nullptr);
    collection->Move(0, 2);
    collection->Clear();
    EXPECT_EQ(names, (Texts{"ItemAdded", "ItemAdded", "ItemMoved"}));
}

TEST_F(SubscriptionTest, HearsALogger)
{
    const auto logger = MakeRef<CBasicLogger>();
    std::vector<ILogData*> records;
    const auto subscription = Subscribe(*logger, &ILogger::AdviseMessageLogged,
                                        [&](const Event& event) { records.push_back(event.GetObject<ILogData>()); });
    logger->FireMessageLogged(nullptr);
    EXPECT_EQ(records, std::vector<ILogData*>{nullptr});
}

TEST_F(SubscriptionTest, EndsWithItsScope)
{
    {
        const auto subscription = SubscribeCounting();
        EXPECT_TRUE(subscription);
        EXPECT_FALSE(IsFunctionGone());
        Change();
    }
    EXPECT_TRUE(IsFunctionGone());
    Change();
    EXPECT_EQ(heard, 1);
}

TEST_F(SubscriptionTest, EndsWhenTold)
{
    auto subscription = SubscribeCounting();
    subscription.End();
    EXPECT_FALSE(subscription);
    EXPECT_TRUE(IsFunctionGone());
    subscription.End();
    Change();
    EXPECT_EQ(heard, 0);
}

TEST_F(SubscriptionTest, HoldsNoReferenceOnTheSender)
{
    const auto subscription = SubscribeCounting();
    const auto destroyed = SubscribeDestroyed(static_cast<ISimpleMap&>(*map), Counting());
    EXPECT_TRUE(map->IsUnique());
}

TEST_F(SubscriptionTest, LeavesOtherSubscriptionsOfTheSameFunctionAlone)
{
    const auto first = SubscribeCounting();
    auto second = SubscribeCounting();
    Change();
    EXPECT_EQ(heard, 2);
    second.End();
    Change();
    EXPECT_EQ(heard, 3);
}

TEST_F(SubscriptionTest, SurvivesTheSender)
{
    auto subscription = SubscribeCounting();
    map = nullptr;
    EXPECT_FALSE(subscription);
    EXPECT_FALSE(IsFunctionGone());
    subscription.End();
    EXPECT_TRUE(IsFunctionGone());
    EXPECT_EQ(heard, 0);
}

TEST_F(SubscriptionTest, UnsubscribesFromALivingSenderOnly)
{
    auto sender = MakeRef<HandMadeSender>();
    auto subscription = Subscribe(*sender, &HandMadeSender::SubscribeTold, Counting());
    EXPECT_EQ(sender->Tell(), TVX_OK);
    subscription.End();
    EXPECT_EQ(sender->calls, (Texts{"subscribe", "unsubscribe"}));
    EXPECT_EQ(heard, 1);
    EXPECT_TRUE(sender->IsUnique());
}

TEST_F(SubscriptionTest, SurvivesItsEndInsideItsOwnFunction)
{
    Subscription subscription;
    subscription = Subscribe(*map, &ISimpleMap::SubscribeChanged,
                             [this, kept = token, &subscription](const Event&)
                             {
                                 subscription = Subscription();
                                 heard += static_cast<int>(kept.use_count());  // still there, beside the test's
                             });
    Change();
    EXPECT_EQ(heard, 2);
    EXPECT_TRUE(IsFunctionGone());
    Change();
    EXPECT_EQ(heard, 2);
}

TEST_F(SubscriptionTest, IsNotCalledWhenAnotherFunctionEndsItFirst)
{
    Subscription later;
    const auto earlier = Subscribe(*map, &ISimpleMap::SubscribeChanged, [&](const Event&) { later.End(); });
    later = SubscribeCounting();
    Change();
    EXPECT_EQ(heard, 0);
    EXPECT_TRUE(IsFunctionGone());
}

TEST_F(SubscriptionTest, MayBeEndedByAnotherFunctionAfterItsTurn)
{
    auto earlier = SubscribeCounting();
    const auto later = Subscribe(*map, &ISimpleMap::SubscribeChanged, [&](const Event&) { earlier.End(); });
    Change();
    Change();
    EXPECT_EQ(heard, 1);
    EXPECT_TRUE(IsFunctionGone());
}

TEST_F(SubscriptionTest, MayBeginInsideAFunction)
{
    std::optional<Subscription> inner;
    const auto outer = Subscribe(*map, &ISimpleMap::SubscribeChanged,
                                 [&](const Event&)
                                 {
                                     if (!inner)
                                         inner = SubscribeCounting();
                                 });
    Change();
    EXPECT_EQ(heard, 1) << "what is added while firing is called in its turn";
}

TEST_F(SubscriptionTest, KeepsExceptionsToItself)
{
    const auto throwing = Subscribe(*map, &ISimpleMap::SubscribeChanged,
                                    [](const Event&) { throw std::runtime_error("not for the sender"); });
    const auto counting = SubscribeCounting();
    Change();
    Change();
    EXPECT_EQ(heard, 2);
    const auto sender = MakeRef<HandMadeSender>();
    const auto told = Subscribe(*sender, &HandMadeSender::SubscribeTold, [](const Event&) { throw 5; });
    EXPECT_EQ(sender->Tell(), TVX_E_EXCEPTION);
}

TEST_F(SubscriptionTest, MovesWithItsFunction)
{
    auto source = SubscribeCounting();
    Subscription target(std::move(source));
    EXPECT_FALSE(source);  // NOLINT(bugprone-use-after-move): a moved one is inactive
    EXPECT_TRUE(target);
    Change();
    EXPECT_EQ(heard, 1);
    std::vector<Subscription> many;
    many.push_back(std::move(target));
    many.push_back(SubscribeCounting());
    Change();
    EXPECT_EQ(heard, 3);
    many.clear();
    EXPECT_TRUE(IsFunctionGone());
}

TEST_F(SubscriptionTest, EndsWhenAnotherIsMovedOntoIt)
{
    const auto other = MakeImmediateMap();
    auto subscription = Subscribe(*other, &ISimpleMap::SubscribeChanged, Counting());
    subscription = SubscribeCounting();
    other->SetInt("key", 1);
    EXPECT_EQ(heard, 0);
    auto& itself = subscription;
    subscription = std::move(itself);
    Change();
    EXPECT_EQ(heard, 1);
}

TEST_F(SubscriptionTest, CannotBeCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<Subscription>);
    EXPECT_FALSE(std::is_copy_assignable_v<Subscription>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Subscription>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<Subscription>);
}

TEST_F(SubscriptionTest, HearsASenderThatIsStillBeingMade)
{
    auto object = MakeRef<SelfHearing>(&heard);
    EXPECT_TRUE(object->IsUnique());
    object->Tell();
    EXPECT_EQ(heard, 1);
    object = nullptr;
}

TEST_F(SubscriptionTest, IsInactiveForWantOfMemory)
{
    const auto function = Counting();
    Subscription subscription;
    {
        const FailingMemory memory({0, false});
        subscription = Subscribe(*map, &ISimpleMap::SubscribeChanged, function);
    }
    EXPECT_FALSE(subscription);
    EXPECT_EQ(token.use_count(), 2) << "the test's own and its function's";
    Change();
    EXPECT_EQ(heard, 0);
    {
        const FailingMemory memory({0, false});
        subscription = SubscribeDestroyed(static_cast<ISimpleMap&>(*map), function);
    }
    EXPECT_FALSE(subscription);
}

TEST_F(SubscriptionTest, EndsCleanlyWhateverTheSenderHadNoMemoryFor)
{
    SweepFailures(
        [this](MemoryFailure failure)
        {
            heard = 0;
            map = MakeImmediateMap();
            bool failed = false;
            {
                Subscription subscription;
                {
                    const FailingMemory memory(failure);
                    subscription = SubscribeCounting();
                    failed = FailingMemory::HasFailed();
                }
                Change();
                EXPECT_LE(heard, 1);
                EXPECT_TRUE(failed || heard == 1);
                EXPECT_TRUE(subscription || heard == 0);
            }
            EXPECT_TRUE(IsFunctionGone());
            EXPECT_TRUE(map->IsUnique());
            return failed;
        });
}

// While one thread is inside the function, another ends the subscription: it returns when the function has.
TEST_F(SubscriptionTest, EndsAfterTheFunctionOnAnotherThread)
{
    std::promise<void> entered;
    std::promise<void> mayGo;
    std::atomic<bool> left = false;
    auto subscription = Subscribe(*map, &ISimpleMap::SubscribeChanged,
                                  [&](const Event&)
                                  {
                                      entered.set_value();
                                      mayGo.get_future().wait();
                                      left = true;
                                  });
    std::thread firing([this] { Change(); });
    entered.get_future().wait();
    auto ending = std::async(std::launch::async,
                             [&]
                             {
                                 subscription.End();
                                 return left.load();
                             });
    EXPECT_EQ(ending.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    mayGo.set_value();
    EXPECT_TRUE(ending.get());
    firing.join();
}

class DestroyedSubscriptionTest : public SubscriptionTest
{
protected:
    template <class Function>
    Subscription SubscribeToDeath(Function&& function)
    {
        return SubscribeDestroyed(static_cast<ISimpleMap&>(*map), std::forward<Function>(function));
    }
};

TEST_F(DestroyedSubscriptionTest, HearsOfTheSendersDeathOnce)
{
    Texts names;
    auto subscription = SubscribeToDeath([&](const Event& event)
                                         { names.push_back(std::string(event.interfaceId) + " " + event.eventName); });
    EXPECT_TRUE(subscription);
    map = nullptr;
    EXPECT_FALSE(subscription);
    EXPECT_EQ(names, Texts{std::string(IObject::Id) + " Destroyed"});
}

TEST_F(DestroyedSubscriptionTest, HearsNothingOnceItHasEnded)
{
    auto subscription = SubscribeToDeath(Counting());
    subscription.End();
    EXPECT_TRUE(IsFunctionGone());
    map = nullptr;
    EXPECT_EQ(heard, 0);
}

TEST_F(DestroyedSubscriptionTest, SurvivesItsEndInsideItsOwnFunction)
{
    Subscription subscription;
    subscription = SubscribeToDeath(
        [this, kept = token, &subscription](const Event&)
        {
            subscription.End();
            heard += static_cast<int>(kept.use_count());
        });
    map = nullptr;
    EXPECT_EQ(heard, 2);
    EXPECT_TRUE(IsFunctionGone());
}

// The sender is half destroyed: nothing of it may be called, and the subscriptions behind are yet to hear of it.
TEST_F(DestroyedSubscriptionTest, MayEndAllOthersOfTheSender)
{
    std::vector<Subscription> others;
    others.push_back(SubscribeCounting());
    others.push_back(SubscribeToDeath(Counting()));
    const auto subscription = SubscribeToDeath([&](const Event&) { others.clear(); });
    others.push_back(SubscribeCounting());
    others.push_back(SubscribeToDeath(Counting()));
    others.push_back(SubscribeDestroyed(static_cast<IUserDataContainer&>(*map), Counting()));
    map = nullptr;
    EXPECT_EQ(heard, 1) << "the one that heard of it in front";
    EXPECT_TRUE(others.empty());
    EXPECT_TRUE(IsFunctionGone());
}

TEST_F(DestroyedSubscriptionTest, MayEndThoseToAnotherFaceOfTheSender)
{
    auto sender = MakeRef<TwoFaced>();
    Subscription other;
    const auto subscription = SubscribeDestroyed(static_cast<IPlain&>(*sender), [&](const Event&) { other.End(); });
    other = Subscribe(*sender, &ITelling::SubscribeTold, Counting());
    sender = nullptr;
    EXPECT_FALSE(subscription);
    EXPECT_TRUE(IsFunctionGone());
}

TEST_F(DestroyedSubscriptionTest, MayEndThoseOfOtherSenders)
{
    const auto other = MakeImmediateMap();
    auto another = Subscribe(*other, &ISimpleMap::SubscribeChanged, Counting());
    const auto subscription = SubscribeToDeath([&](const Event&) { another.End(); });
    map = nullptr;
    EXPECT_TRUE(IsFunctionGone());
    other->SetInt("key", 1);
    EXPECT_EQ(heard, 0);
}

TEST_F(DestroyedSubscriptionTest, DoesNotTakeSendersForOneThatDoNotSayWhoTheyAre)
{
    auto dying = MakeRef<Nameless>();
    const auto other = MakeRef<Nameless>();
    auto another = Subscribe(*other, &ITelling::SubscribeTold, Counting());
    const auto subscription = SubscribeDestroyed(*dying, [&](const Event&) { another.End(); });
    dying = nullptr;
    EXPECT_TRUE(IsFunctionGone());
    other->Tell();
    EXPECT_EQ(heard, 0);
}

TEST_F(DestroyedSubscriptionTest, MayEndTheLifeOfAnotherSender)
{
    auto other = MakeImmediateMap();
    auto inner = SubscribeDestroyed(static_cast<ISimpleMap&>(*other), Counting());
    std::vector<Subscription> late;
    const auto outer = SubscribeToDeath(
        [&](const Event&)
        {
            other = nullptr;
            late.clear();
        });
    late.push_back(SubscribeCounting());
    map = nullptr;
    EXPECT_EQ(heard, 1);
    inner.End();
    EXPECT_TRUE(IsFunctionGone());
}

}  // namespace
