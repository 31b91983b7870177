// SPDX-License-Identifier: MIT
#include "Tests/Support/CollectionTesting.h"
#include "Tests/Support/SerializerDoubles.h"

namespace tvx::test
{

namespace
{

constexpr const char Source[] = "Src/Collection.cpp";

using Calls = std::vector<std::string>;

}  // namespace

TEST_F(CollectionTest, StartsEmptyWithEventsEnabled)
{
    bool enabled = false;
    EXPECT_EQ(collection->GetCount(), 0U);
    EXPECT_EQ(collection->GetEventsEnabled(&enabled), TVX_OK);
    EXPECT_TRUE(enabled);
    const auto report = CaptureOutput([&] { EXPECT_EQ(collection->GetEventsEnabled(nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(report, "TVX_CHECK_PRECOND", Source));
}

TEST_F(CollectionTest, HoldsOneReferenceForEachPlace)
{
    Fill("AA-B");
    EXPECT_EQ(Order(), "AA-B");
    EXPECT_EQ(CountOf('A'), 2U);
    EXPECT_EQ(CountOf('B'), 1U);
    collection = nullptr;
    EXPECT_EQ(CountOf('A'), 0U);
    EXPECT_EQ(CountOf('B'), 0U);
}

TEST_F(CollectionTest, GivesItemsWithAReferenceAndChecksTheIndexFirst)
{
    Fill("AB-");
    Ref<IObject> item;
    EXPECT_EQ(collection->GetItem(1, item.Receive()), TVX_OK);
    EXPECT_EQ(item.Get(), Item('B'));
    EXPECT_EQ(CountOf('B'), 2U);
    EXPECT_EQ(collection->GetItem(2, item.Receive()), TVX_OK);
    EXPECT_EQ(item.Get(), nullptr);
    IObject* untouched = Item('A');
    for (IObject** const out : {&untouched, static_cast<IObject**>(nullptr)})
    {
        const auto report = CaptureOutput([&] { EXPECT_EQ(collection->GetItem(3, out), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(report, "TVX_RETURN_FAIL_IF", Source));
    }
    EXPECT_EQ(untouched, Item('A'));
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(collection->GetItem(0, nullptr), TVX_E_POINTER); }), "");
}

TEST_F(CollectionTest, AppendsWhatIsInsertedAtOrBehindTheEnd)
{
    Fill("ABC");
    Listen();
    EXPECT_EQ(collection->Insert(99, Item('X')), TVX_OK);
    EXPECT_EQ(Order(), "ABCX");
    EXPECT_EQ(Heard(), (Texts{"ItemAdded X", "Updated X"}));
    EXPECT_EQ(collection->Insert(4, Item('Y')), TVX_OK);
    EXPECT_EQ(collection->Insert(0, Item('Z')), TVX_OK);
    EXPECT_EQ(collection->Insert(2, nullptr), TVX_OK);
    EXPECT_EQ(Order(), "ZA-BCXY");
    EXPECT_EQ(Heard(), (Texts{"ItemAdded Y", "Updated Y", "ItemAdded Z", "Updated Z", "ItemAdded -", "Updated -"}));
    EXPECT_EQ(CountOf('X'), 1U);
}

TEST_F(CollectionTest, CarriesSenderIdentifierAndCookieWithItsEvents)
{
    Listen();
    collection->Add(Item('A'));
    collection->Move(0, 1);
    ASSERT_EQ(handler->events.size(), 4U);
    const std::uint64_t cookies[] = {1, 4, 3, 4};
    for (std::size_t number = 0; number < 4; ++number)
    {
        const auto& event = handler->events[number];
        EXPECT_EQ(event.sender, static_cast<IObject*>(static_cast<ICollection2*>(collection.Get())));
        EXPECT_EQ(event.interfaceId, "com.talvere.general.tvx.ICollection/2.0");
        EXPECT_EQ(event.param, reinterpret_cast<std::uintptr_t>(Item('A')));
        EXPECT_EQ(event.userData, cookies[number]);
    }
}

TEST_F(CollectionTest, FiresWhenTheChangeIsDone)
{
    Fill("AB");
    Listen();
    Texts orders;
    handler->action = [&](const SeenEvent&) { orders.push_back(Order()); };
    collection->Insert(0, Item('C'));
    collection->Move(0, 3);
    collection->RemoveAt(0);
    EXPECT_EQ(orders, (Texts{"CAB", "CAB", "ABC", "ABC", "BC", "BC"}));
}

TEST_F(CollectionTest, KeepsARemovedItemAliveUntilTheHandlersHaveRun)
{
    bool died = false;
    bool diedEarly = false;
    auto object = MakeRef<ProbeObject>(&died);
    collection->Add(object.Get());
    object = nullptr;
    Listen();
    std::vector<std::uint32_t> counts;
    handler->action = [&](const SeenEvent& event)
    {
        diedEarly |= died;
        counts.push_back(reinterpret_cast<IObject*>(event.param)->GetRefCount());
    };
    EXPECT_EQ(collection->RemoveAt(0), TVX_OK);
    EXPECT_EQ(counts, (std::vector<std::uint32_t>{1, 1}));
    EXPECT_FALSE(diedEarly);
    EXPECT_TRUE(died);
}

TEST_F(CollectionTest, HoldsAMovedItemOnceMoreUntilTheHandlersHaveRun)
{
    Listen();
    std::vector<std::uint32_t> counts;
    handler->action = [&](const SeenEvent&) { counts.push_back(CountOf('A')); };
    collection->Add(Item('A'));
    EXPECT_EQ(counts, (std::vector<std::uint32_t>{1, 1}));
    collection->Add(Item('B'));
    counts.clear();
    EXPECT_EQ(collection->Move(0, 2), TVX_OK);
    EXPECT_EQ(counts, (std::vector<std::uint32_t>{2, 2}));
    EXPECT_EQ(CountOf('A'), 1U);
}

TEST_F(CollectionTest, KeepsAMovedItemAliveThatAHandlerRemoves)
{
    bool died = false;
    collection->Add(MakeRef<ProbeObject>(&died).Get());
    Fill("B");
    Listen();
    Texts seen;
    handler->action = [&](const SeenEvent& event)
    {
        seen.push_back(event.eventName + (died ? " dead" : " alive"));
        if (event.eventName == "ItemMoved")
            collection->RemoveAt(1);
    };
    EXPECT_EQ(collection->Move(0, 2), TVX_OK);
    EXPECT_EQ(seen, (Texts{"ItemMoved alive", "ItemRemoved alive", "Updated alive", "Updated alive"}));
    EXPECT_TRUE(died);
    EXPECT_EQ(Order(), "B");
}

TEST_F(CollectionTest, IsEmptyForAnItemThatDiesWithIt)
{
    auto* const dying = collection.Get();
    Texts seen;
    handler->action = [&](const SeenEvent&)
    {
        bool contained = true;
        dying->Contains(Item('A'), &contained);
        seen.push_back(std::to_string(dying->GetCount()) + (contained ? " with A" : " without A"));
    };
    for (int count = 0; count < 2; ++count)
    {
        const auto item = MakeRef<ProbeObject>();
        item->SubscribeDestroyed(handler.Get(), 0);
        collection->Add(item.Get());
    }
    Fill("A");
    collection = nullptr;
    EXPECT_EQ(seen, (Texts{"0 without A", "0 without A"}));
    EXPECT_EQ(CountOf('A'), 0U);
}

TEST_F(CollectionTest, ReportsARemovalBehindTheEnd)
{
    Fill("A");
    Listen();
    auto report = CaptureOutput([&] { EXPECT_EQ(collection->RemoveAt(1), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(report, "TVX_CHECK_PRECOND", Source));
    EXPECT_EQ(collection->RemoveLast(), TVX_OK);
    EXPECT_EQ(Heard(), (Texts{"ItemRemoved A", "Updated A"}));
    report = CaptureOutput([&] { EXPECT_EQ(collection->RemoveLast(), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(report, "TVX_RETURN_FAIL_IF", Source));
    EXPECT_EQ(Heard(), Texts());
}

TEST_F(CollectionTest, MovesInFrontOfWhatStoodAtTheTarget)
{
    struct Row
    {
        std::uint32_t from;
        std::uint32_t to;
        const char* order;
        const char* moved;
    };
    for (const auto& row : {Row{0, 2, "BAC", "A"}, Row{0, 3, "BCA", "A"}, Row{0, 99, "BCA", "A"}, Row{2, 0, "CAB", "C"},
                            Row{1, 1, "ABC", ""}, Row{0, 1, "ABC", "A"}, Row{2, 3, "ABC", "C"}, Row{2, 1, "ACB", "C"}})
    {
        collection = MakeRef<Collection>();
        Fill("ABC");
        Listen();
        EXPECT_EQ(collection->Move(row.from, row.to), TVX_OK);
        EXPECT_EQ(Order(), row.order);
        const auto moved = std::string(row.moved);
        EXPECT_EQ(Heard(), moved.empty() ? Texts() : Texts({"ItemMoved " + moved, "Updated " + moved}));
        EXPECT_EQ(CountOf('A'), 1U);
        EXPECT_EQ(CountOf('C'), 1U);
    }
}

TEST_F(CollectionTest, ReportsAMoveOfNothing)
{
    Fill("A");
    Listen();
    const auto report = CaptureOutput([&] { EXPECT_EQ(collection->Move(1, 0), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(report, "TVX_CHECK_PRECOND", Source));
    EXPECT_EQ(Heard(), Texts());
}

TEST_F(CollectionTest, MovesItemsByWhatTheyAre)
{
    Fill("ABC");
    EXPECT_EQ(collection->MoveItem(Item('C'), 0), TVX_OK);
    EXPECT_EQ(Order(), "CAB");
    EXPECT_EQ(collection->MoveBefore(Item('C'), Item('B')), TVX_OK);
    EXPECT_EQ(Order(), "ACB");
    EXPECT_EQ(collection->MoveBefore(Item('A'), nullptr), TVX_OK);
    EXPECT_EQ(Order(), "CBA");
    Listen();
    const auto report = CaptureOutput([&] { EXPECT_EQ(collection->MoveItem(Item('X'), 0), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(report, "TVX_FORWARD_FAILURE", Source));
    const auto before = CaptureOutput([&] { EXPECT_EQ(collection->MoveBefore(Item('A'), Item('X')), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(before, "TVX_FORWARD_FAILURE", Source));
    EXPECT_EQ(Heard(), Texts());
}

TEST_F(CollectionTest, ReportsOnceThatAnAbsentItemCannotBeMoved)
{
    Fill("AB");
    Listen();
    for (IObject* const before : {Item('A'), static_cast<IObject*>(nullptr)})
    {
        const auto report = CaptureOutput([&] { EXPECT_EQ(collection->MoveBefore(Item('X'), before), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(report, "TVX_FORWARD_FAILURE", Source));
    }
    EXPECT_EQ(Heard(), Texts());
    EXPECT_EQ(Order(), "AB");
}

TEST_F(CollectionTest, MovesBeforeAsStated)
{
    Fill("ABC");
    EXPECT_EQ(collection->MoveBefore(Item('A'), Item('C')), TVX_OK);
    EXPECT_EQ(Order(), "BAC");
    collection = MakeRef<Collection>();
    Fill("ABC");
    EXPECT_EQ(collection->MoveBefore(Item('A'), nullptr), TVX_OK);
    EXPECT_EQ(Order(), "BCA");
}

TEST_F(CollectionTest, FindsTheFirstPlaceByIdentity)
{
    Fill("BAA-");
    std::uint32_t index = 7;
    EXPECT_EQ(collection->IndexOf(Item('A'), &index), TVX_OK);
    EXPECT_EQ(index, 1U);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(collection->IndexOf(Item('X'), &index), TVX_E_FAIL); }), "");
    EXPECT_EQ(index, 0xFFFFFFFFU);
    index = 7;
    auto report = CaptureOutput([&] { EXPECT_EQ(collection->IndexOf(nullptr, &index), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(report, "TVX_CHECK_PRECOND", Source));
    EXPECT_EQ(index, 7U);
    report = CaptureOutput([&] { EXPECT_EQ(collection->IndexOf(Item('A'), nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(report, "TVX_CHECK_PRECOND", Source));
}

TEST_F(CollectionTest, NeverContainsNull)
{
    Fill("-A");
    bool contained = true;
    EXPECT_EQ(collection->Contains(nullptr, &contained), TVX_OK);
    EXPECT_FALSE(contained);
    EXPECT_EQ(collection->Contains(Item('A'), &contained), TVX_OK);
    EXPECT_TRUE(contained);
    EXPECT_EQ(collection->Contains(Item('X'), &contained), TVX_OK);
    EXPECT_FALSE(contained);
    const auto report = CaptureOutput([&] { EXPECT_EQ(collection->Contains(Item('A'), nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(report, "TVX_CHECK_PRECOND", Source));
}

TEST_F(CollectionTest, InsertsAndRemovesByWhatItemsAre)
{
    Fill("ABA");
    Listen();
    EXPECT_EQ(collection->InsertBefore(Item('X'), Item('A')), TVX_OK);
    EXPECT_EQ(collection->InsertBefore(nullptr, Item('B')), TVX_OK);
    EXPECT_EQ(Order(), "XA-BA");
    EXPECT_EQ(collection->Remove(Item('A')), TVX_OK);
    EXPECT_EQ(Order(), "X-BA");
    EXPECT_EQ(Heard(), (Texts{"ItemAdded X", "Updated X", "ItemAdded -", "Updated -", "ItemRemoved A", "Updated A"}));
    auto report = CaptureOutput([&] { EXPECT_EQ(collection->InsertBefore(Item('Y'), Item('Z')), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(report, "TVX_FORWARD_FAILURE", Source));
    report = CaptureOutput([&] { EXPECT_EQ(collection->Remove(Item('Z')), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(report, "TVX_FORWARD_FAILURE", Source));
    EXPECT_EQ(CountOf('Y'), 0U);
    EXPECT_EQ(Heard(), Texts());
}

TEST_F(CollectionTest, ForwardsThePreconditionOfANullItem)
{
    Fill("A-");
    for (const auto& call : {+[](Collection&c, IObject*a) { return c.InsertBefore(a, nullptr); },
                             +[](Collection&c, IObject*) { return c.Remove(nullptr); },
                             +[](Collection&c, IObject*) { return c.MoveItem(nullptr, 0); },
                             +[](Collection&c, IObject*a) { return c.MoveBefore(nullptr, a); }})
    {
        const auto reports = CaptureOutput([&] { EXPECT_EQ(call(*collection, Item('A')), TVX_E_PRECONDITION); });
        const auto secondLine = reports.find('\n') + 1;
        EXPECT_TRUE(IsReport(reports.substr(0, secondLine), "TVX_CHECK_PRECOND", Source));
        EXPECT_TRUE(IsReport(reports.substr(secondLine), "TVX_FORWARD_FAILURE", Source));
    }
    EXPECT_EQ(Order(), "A-");
}

TEST_F(CollectionTest, ClearsFromTheEnd)
{
    Fill("ABC");
    Listen();
    EXPECT_EQ(collection->Clear(), TVX_OK);
    EXPECT_EQ(Heard(),
              (Texts{"ItemRemoved C", "Updated C", "ItemRemoved B", "Updated B", "ItemRemoved A", "Updated A"}));
    EXPECT_EQ(collection->GetCount(), 0U);
    EXPECT_EQ(CountOf('A'), 0U);
    EXPECT_EQ(collection->Clear(), TVX_OK);
}

TEST_F(CollectionTest, EndsClearingWithTheFirstFailure)
{
    Fill("ABC");
    Listen();
    handler->action = [&](const SeenEvent& event)
    {
        if (event.eventName == "ItemRemoved" && collection->GetCount() == 2)
            collection->RemoveAt(0);
    };
    const auto reports = CaptureOutput([&] { EXPECT_EQ(collection->Clear(), TVX_E_FAIL); });
    const auto secondLine = reports.find('\n') + 1;
    EXPECT_TRUE(IsReport(reports.substr(0, secondLine), "TVX_RETURN_FAIL_IF", Source));
    EXPECT_TRUE(IsReport(reports.substr(secondLine), "TVX_FORWARD_FAILURE", Source));
    EXPECT_EQ(collection->GetCount(), 0U);
}

TEST_F(CollectionTest, ClearsByAsManyRemovalsAsThereWereItems)
{
    class Counting final : public Collection
    {
    public:
        Result RemoveLast() override
        {
            ++removals;
            return Collection::RemoveLast();
        }

        int removals = 0;
    };
    const auto counting = MakeRef<Counting>();
    collection = counting;
    Fill("ABC");
    collection->SubscribeItemRemoved(handler.Get(), 0, true);
    handler->action = [&](const SeenEvent&) { collection->Add(Item('X')); };
    EXPECT_EQ(collection->Clear(), TVX_OK);
    EXPECT_EQ(counting->removals, 3);
    EXPECT_EQ(Order(), "ABX");
}

TEST_F(CollectionTest, FiresNothingForChangesWhileEventsAreDisabled)
{
    Listen();
    EXPECT_EQ(collection->SetEventsEnabled(false), TVX_OK);
    bool enabled = true;
    collection->GetEventsEnabled(&enabled);
    EXPECT_FALSE(enabled);
    Fill("AB");
    collection->Move(0, 2);
    collection->RemoveAt(0);
    EXPECT_EQ(Order(), "A");
    EXPECT_EQ(Heard(), Texts());
    EXPECT_EQ(collection->NotifyUpdated(Item('A')), TVX_OK);
    EXPECT_EQ(Heard(), Texts{"Updated A"});
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(collection->NotifyUpdated(Item('B')), TVX_E_FAIL); }), "");
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(collection->NotifyUpdated(nullptr), TVX_E_FAIL); }), "");
    EXPECT_EQ(Heard(), Texts());
    collection->SetEventsEnabled(true);
    collection->Add(Item('C'));
    EXPECT_EQ(Heard(), (Texts{"ItemAdded C", "Updated C"}));
}

TEST_F(CollectionTest, UnsubscribesEachEventOnItsOwn)
{
    Listen();
    collection->SubscribeItemAdded(handler.Get(), 99, false);
    collection->Add(Item('A'));
    EXPECT_EQ(Heard(), Texts{"Updated A"});
    collection->SubscribeUpdated(nullptr, 0, false);
    collection->Move(0, 1);
    collection->RemoveAt(0);
    EXPECT_EQ(Heard(), Texts());
}

TEST_F(CollectionTest, FiresUpdatedAlsoWhenAHandlerDisablesEventsBefore)
{
    Listen();
    handler->action = [&](const SeenEvent&) { collection->SetEventsEnabled(false); };
    collection->Add(Item('A'));
    EXPECT_EQ(Heard(), (Texts{"ItemAdded A", "Updated A"}));
    collection->Add(Item('B'));
    EXPECT_EQ(Heard(), Texts());
}

TEST_F(CollectionTest, LeavesSubscriptionsToItsEndAloneWhenEverybodyIsUnsubscribed)
{
    Listen();
    collection->SubscribeDestroyed(handler.Get(), 7);
    collection->SubscribeItemAdded(nullptr, 0, false);
    collection->Add(Item('A'));
    EXPECT_EQ(Heard(), Texts());
    collection = nullptr;
    EXPECT_EQ(handler->GetNames(), Texts{"Destroyed"});
}

TEST_F(CollectionTest, LetsHandlersChangeItWhileItFires)
{
    Listen();
    handler->action = [&](const SeenEvent& event)
    {
        if (event.eventName == "ItemAdded" && collection->GetCount() < 4)
            collection->Insert(0, Item(static_cast<char>('A' + collection->GetCount())));
    };
    collection->Add(Item('A'));
    EXPECT_EQ(Order(), "DCBA");
    EXPECT_EQ(Heard(), (Texts{"ItemAdded A", "ItemAdded B", "ItemAdded C", "ItemAdded D", "Updated D", "Updated C",
                              "Updated B", "Updated A"}));
}

TEST_F(CollectionTest, GoesThroughTheTableForEveryEvent)
{
    class Quiet final : public Collection
    {
    public:
        void FireItemAdded(IObject*) override { log += "a"; }
        void FireItemRemoved(IObject*) override { log += "r"; }
        void FireItemMoved(IObject*) override { log += "m"; }
        void FireUpdated(IObject*) override { log += "u"; }

        std::string log;
    };
    const auto quiet = MakeRef<Quiet>();
    quiet->Add(Item('A'));
    quiet->Move(0, 1);
    quiet->NotifyUpdated(Item('A'));
    quiet->Clear();
    EXPECT_EQ(quiet->log, "aumuuru");
}

TEST_F(CollectionTest, WritesItsItemsInOrder)
{
    Fill("BA-");
    const auto writer = MakeRef<RecordingWriter>(-9);
    EXPECT_EQ(collection->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Calls{"BeginArray Values", "WriteObject", "WriteObject", "WriteObject", "EndArray"}));
    ASSERT_EQ(writer->objects.size(), 3U);
    EXPECT_EQ(writer->objects[0].Get(), Item('B'));
    EXPECT_EQ(writer->objects[1].Get(), Item('A'));
    EXPECT_EQ(writer->objects[2].Get(), nullptr);
    const auto report = CaptureOutput([&] { EXPECT_EQ(collection->Serialize(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(report, "TVX_RETURN_EPOINTER_IF_NULL", Source));
}

}  // namespace tvx::test
