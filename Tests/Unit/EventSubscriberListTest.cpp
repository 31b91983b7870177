// SPDX-License-Identifier: MIT
#include "Helpers/EventSubscriberList.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <list>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tvx::test
{

namespace
{

// The same in the plainest form, for one thread: the key of each subscription is a text, and all are compared.
class PlainSubscriberList
{
public:
    void Subscribe(const char* interfaceId, const char* eventName, IEventHandler* handler, std::uint64_t userData)
    {
        subscriptions_.push_back({MakeKey(interfaceId, eventName), handler, userData});
    }

    void Unsubscribe(const char* interfaceId, const char* eventName, const IEventHandler* handler)
    {
        for (auto& subscription : subscriptions_)
        {
            const bool isMeant = subscription.handler == handler && subscription.key == MakeKey(interfaceId, eventName);
            if (handler != nullptr && !isMeant)
                continue;
            subscription.handler = nullptr;
            if (handler != nullptr)
                return;
        }
    }

    void Fire(const char* interfaceId, const char* eventName, IObject* sender, std::uint64_t param)
    {
        for (const auto& subscription : subscriptions_)
        {
            if (subscription.handler != nullptr && subscription.key == MakeKey(interfaceId, eventName))
                subscription.handler->OnEvent(sender, interfaceId, eventName, param, subscription.userData);
        }
    }

private:
    struct Subscription
    {
        std::string key;
        IEventHandler* handler;  // null once removed
        std::uint64_t userData;
    };

    static std::string MakeKey(const char* interfaceId, const char* eventName)
    {
        return std::string(interfaceId) + "::" + eventName;
    }

    std::list<Subscription> subscriptions_;
};

// Changes and fires a list by chance, also from inside its handlers, and notes every call of a handler.
template <class List>
class ChanceOfEvents
{
public:
    explicit ChanceOfEvents(unsigned seed) : random_(seed)
    {
        for (std::size_t number = 0; number < 5; ++number)
        {
            handlers_.push_back(MakeRef<RecordingHandler>());
            handlers_.back()->action = [this, number](const SeenEvent& event) { Hear(number, event); };
        }
    }

    std::vector<std::string> Run(int steps)
    {
        for (int step = 0; step < steps; ++step)
            Act();
        return std::move(log_);
    }

private:
    // Some of them are the same event, said in two ways; some only look alike.
    static constexpr std::pair<const char*, const char*> Events[] = {{"test.ISource/1.0", "Changed"},
                                                                     {"test.ISource/1.0", "Moved"},
                                                                     {"test.ISource/1.0", "ChangedA"},
                                                                     {"test.ISource/1.1", "Changed"},
                                                                     {"a::b", "c"},
                                                                     {"a", "b::c"},
                                                                     {"", "Changed"},
                                                                     {"test.ISource/1.0", ""},
                                                                     {"a:", ":b::c"}};

    unsigned Pick(unsigned bound) { return static_cast<unsigned>(random_() % bound); }

    void Hear(std::size_t number, const SeenEvent& event)
    {
        log_.push_back(std::to_string(number) + " " + event.interfaceId + " " + event.eventName + " " +
                       std::to_string(event.param) + " " + std::to_string(event.userData));
        ++depth_;
        while (depth_ < 4 && Pick(3) == 0)
            Act();
        --depth_;
    }

    void Act()
    {
        const auto [id, name] = Events[Pick(std::size(Events))];
        auto* const handler = handlers_[Pick(5)].Get();
        const auto what = Pick(100);
        if (what < 30)
            list_.Subscribe(id, name, handler, ++count_);
        else if (what < 65)
            list_.Unsubscribe(id, name, handler);
        else if (what < 67)
            list_.Unsubscribe(id, name, nullptr);
        else
            list_.Fire(id, name, nullptr, ++count_);
    }

    std::mt19937 random_;
    List list_;
    std::vector<Ref<RecordingHandler>> handlers_;
    std::vector<std::string> log_;
    std::uint64_t count_ = 0;
    int depth_ = 0;
};

}  // namespace

TEST(EventSubscriberList, CallsAsThePlainListDoesWhateverHandlersDo)
{
    for (unsigned seed = 0; seed < 200; ++seed)
    {
        const auto expected = ChanceOfEvents<PlainSubscriberList>(seed).Run(200);
        EXPECT_EQ(ChanceOfEvents<EventSubscriberList>(seed).Run(200), expected) << "seed " << seed;
    }
}

// The same constant may stand in several places.
TEST(EventSubscriberList, KnowsTheSameTextsAtOtherAddresses)
{
    EventSubscriberList list;
    const auto handler = MakeRef<RecordingHandler>();
    const std::string id = "test.ISource/1.0";
    const std::string name = "Changed";
    const std::string sameId = id;
    const std::string sameName = name;
    const std::string other = "Renamed";
    list.Subscribe(id.c_str(), name.c_str(), handler.Get(), 0);
    list.Fire(id.c_str(), other.c_str(), nullptr, 0);
    EXPECT_TRUE(handler->events.empty());
    list.Fire(sameId.c_str(), name.c_str(), nullptr, 0);
    list.Fire(id.c_str(), sameName.c_str(), nullptr, 0);
    list.Fire(sameId.c_str(), sameName.c_str(), nullptr, 0);
    EXPECT_EQ(handler->events.size(), 3U);
    list.Unsubscribe(sameId.c_str(), sameName.c_str(), handler.Get());
    list.Fire(id.c_str(), name.c_str(), nullptr, 0);
    EXPECT_EQ(handler->events.size(), 3U);
}

TEST(EventSubscriberList, HasNobodyWhoIsNull)
{
    EventSubscriberList list;
    list.Subscribe("test.ISource/1.0", "Changed", nullptr, 0);
    EXPECT_FALSE(list.HasSubscribers());
    list.Fire("test.ISource/1.0", "Changed", nullptr, 0);
}

TEST(EventKeys, KeepsEachEventOnceUntilNobodyUsesIt)
{
    EventKeys keys;
    auto& key = keys.FindOrAdd({"test.ISource/1.0", "Changed"});
    EXPECT_EQ(key.text, "test.ISource/1.0::Changed");
    EXPECT_EQ(&keys.FindOrAdd({"test.ISource/1.0", "Changed"}), &key);
    auto& other = keys.FindOrAdd({"test.ISource/1.0", "Moved"});
    EXPECT_NE(&other, &key);
    ++key.uses;
    keys.DropUnused();
    EXPECT_EQ(keys.Find({"test.ISource/1.0", "Changed"}), &key);
    EXPECT_EQ(keys.Find({"test.ISource/1.0", "Moved"}), nullptr);
}

}  // namespace tvx::test
