// SPDX-License-Identifier: MIT
#include "Tests/Support/CollectionTesting.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <iterator>
#include <random>
#include <utility>

namespace tvx::test
{

namespace
{

constexpr std::uint32_t Seed = 20261121;
constexpr int Steps = 10000;

// Tells of each removal at the end, also of those that Clear makes.
class WatchedCollection final : public Collection
{
public:
    Result RemoveLast() override { return watch(); }
    Result RemoveLastUnwatched() { return Collection::RemoveLast(); }

    std::function<Result()> watch;
};

}  // namespace

// Runs long sequences of all operations on a collection and on a plain text of names, and compares both at each step and at
// each event: order, results, and the events that are due, those of changes that handlers make in between among them.
class CollectionModel : public CollectionTest
{
protected:
    CollectionModel()
    {
        watched->watch = [this] { return RemoveLastWatched(); };
        collection = watched;
        handler->action = [this](const SeenEvent& event) { Hear(event); };
        Listen();
    }

    std::uint32_t Pick(std::size_t bound) { return static_cast<std::uint32_t>(random() % bound); }

    char PickName() { return "ABCDEFGHIJ-"[Pick(11)]; }

    std::size_t Find(char name) { return name == '-' ? std::string::npos : model.find(name); }

    // What an operation that looks for an item gives.
    Result ResultFor(char name)
    {
        if (name == '-')
            return TVX_E_PRECONDITION;
        return Find(name) == std::string::npos ? TVX_E_FAIL : TVX_OK;
    }

    std::string Where() const { return "step " + std::to_string(step) + ", seed " + std::to_string(Seed); }

    // Makes a call, and compares its result and its events. The model is what it is after the call.
    template <class Call>
    void Make(Call&& call, Result wanted, const Texts& events = {})
    {
        due.push_back(events);
        EXPECT_EQ(call(), wanted) << Where();
        EXPECT_EQ(due.back(), Texts()) << "due, but not heard, " << Where();
        due.pop_back();
    }

    // The event has to be the next one due for the innermost call. It may be answered with a further change.
    void Hear(const SeenEvent& event)
    {
        const auto heard = event.eventName + " " + NameOf(reinterpret_cast<const void*>(event.param));
        ASSERT_FALSE(due.empty() || due.back().empty()) << heard << " is not due, " << Where();
        EXPECT_EQ(heard, due.back().front()) << Where();
        due.back().erase(due.back().begin());
        EXPECT_EQ(Order(), model) << Where();
        if (depth == deepest || Pick(3) != 0)
            return;
        ++depth;
        Step();
        --depth;
    }

    Texts EventsOf(const char* event, char name) const
    {
        if (!enabled)
            return {};
        return {std::string(event) + " " + name, std::string("Updated ") + name};
    }

    // Each changes the model and gives the events of the change.
    Texts ModelInsert(std::size_t index, char name)
    {
        model.insert(std::min(index, model.size()), 1, name);
        return EventsOf("ItemAdded", name);
    }

    Texts ModelMove(std::size_t from, std::size_t to)
    {
        const auto target = std::min(to, model.size());
        if (from == target)
            return {};
        const char name = model[from];
        model.erase(from, 1);
        model.insert(target > from ? target - 1 : target, 1, name);
        return EventsOf("ItemMoved", name);
    }

    Texts ModelRemove(std::size_t index)
    {
        const char name = model[index];
        model.erase(index, 1);
        return EventsOf("ItemRemoved", name);
    }

    void Add()
    {
        const char name = PickName();
        const auto events = ModelInsert(model.size(), name);
        Make([&] { return collection->Add(Item(name)); }, TVX_OK, events);
    }

    void Insert()
    {
        const auto index = Pick(model.size() + 3);
        const char name = PickName();
        const auto events = ModelInsert(index, name);
        Make([&] { return collection->Insert(index, Item(name)); }, TVX_OK, events);
    }

    void InsertBefore()
    {
        const char name = PickName();
        const char before = PickName();
        const auto wanted = ResultFor(before);
        const auto events = wanted == TVX_OK ? ModelInsert(Find(before), name) : Texts();
        Make([&] { return collection->InsertBefore(Item(name), Item(before)); }, wanted, events);
    }

    void RemoveAt()
    {
        const auto index = Pick(model.size() + 1);
        const bool there = index < model.size();
        const auto events = there ? ModelRemove(index) : Texts();
        Make([&] { return collection->RemoveAt(index); }, there ? TVX_OK : TVX_E_PRECONDITION, events);
    }

    void Remove()
    {
        const char name = PickName();
        const auto wanted = ResultFor(name);
        const auto events = wanted == TVX_OK ? ModelRemove(Find(name)) : Texts();
        Make([&] { return collection->Remove(Item(name)); }, wanted, events);
    }

    void RemoveLast() { static_cast<void>(collection->RemoveLast()); }

    Result RemoveLastWatched()
    {
        const bool there = !model.empty();
        const auto wanted = there ? TVX_OK : TVX_E_FAIL;
        const auto events = there ? ModelRemove(model.size() - 1) : Texts();
        Make([&] { return watched->RemoveLastUnwatched(); }, wanted, events);
        if (tellRemoval)
            tellRemoval(wanted);
        return wanted;
    }

    // Rarely, so that collections come to some size.
    void Clear()
    {
        if (Pick(10) != 0)
            return;
        auto left = model.size();
        auto wanted = TVX_OK;
        tellRemoval = [&](Result removal)
        {
            --left;
            wanted = removal;
        };
        due.emplace_back();
        const auto result = collection->Clear();
        EXPECT_EQ(result, wanted) << Where();
        due.pop_back();
        EXPECT_TRUE(left == 0 || TVX_FAILED(wanted)) << left << " left, " << Where();
    }

    void Move()
    {
        const auto from = Pick(model.size() + 1);
        const auto to = Pick(model.size() + 3);
        const bool there = from < model.size();
        const auto events = there ? ModelMove(from, to) : Texts();
        Make([&] { return collection->Move(from, to); }, there ? TVX_OK : TVX_E_PRECONDITION, events);
    }

    void MoveItem()
    {
        const char name = PickName();
        const auto to = Pick(model.size() + 3);
        const auto wanted = ResultFor(name);
        const auto events = wanted == TVX_OK ? ModelMove(Find(name), to) : Texts();
        Make([&] { return collection->MoveItem(Item(name), to); }, wanted, events);
    }

    void MoveBefore()
    {
        const char name = PickName();
        const char before = PickName();
        const auto found = before == '-' ? TVX_OK : ResultFor(before);
        const auto wanted = TVX_FAILED(found) ? found : ResultFor(name);
        const auto to = before == '-' ? model.size() : Find(before);
        const auto events = wanted == TVX_OK ? ModelMove(Find(name), to) : Texts();
        Make([&] { return collection->MoveBefore(Item(name), Item(before)); }, wanted, events);
    }

    void NotifyUpdated()
    {
        const char name = PickName();
        const bool there = Find(name) != std::string::npos;
        const auto events = there ? Texts{std::string("Updated ") + name} : Texts();
        Make([&] { return collection->NotifyUpdated(Item(name)); }, there ? TVX_OK : TVX_E_FAIL, events);
    }

    void SetEventsEnabled()
    {
        enabled = Pick(4) != 0;
        Make([&] { return collection->SetEventsEnabled(enabled); }, TVX_OK);
        bool told = !enabled;
        Make([&] { return collection->GetEventsEnabled(&told); }, TVX_OK);
        EXPECT_EQ(told, enabled) << Where();
    }

    void IndexOf()
    {
        constexpr std::uint32_t mark = 0xFFFF0000;
        const char name = PickName();
        auto index = mark;
        Make([&] { return collection->IndexOf(Item(name), &index); }, ResultFor(name));
        EXPECT_EQ(index, name == '-' ? mark : static_cast<std::uint32_t>(Find(name))) << Where();
    }

    void Contains()
    {
        const char name = PickName();
        const bool there = Find(name) != std::string::npos;
        bool contained = !there;
        Make([&] { return collection->Contains(Item(name), &contained); }, TVX_OK);
        EXPECT_EQ(contained, there) << Where();
    }

    // Some operations stand more than once, so that collections grow. A step inside a Clear is none of its removals.
    void Step()
    {
        using Model = CollectionModel;
        using Operation = void (Model::*)();
        constexpr Operation operations[] = {
            &Model::Add,           &Model::Add,      &Model::Insert,     &Model::Insert,           &Model::Insert,
            &Model::InsertBefore,  &Model::RemoveAt, &Model::Remove,     &Model::RemoveLast,       &Model::Move,
            &Model::Move,          &Model::MoveItem, &Model::MoveBefore, &Model::SetEventsEnabled, &Model::IndexOf,
            &Model::NotifyUpdated, &Model::Contains, &Model::Clear};
        auto outer = std::exchange(tellRemoval, nullptr);
        (this->*operations[Pick(std::size(operations))])();
        tellRemoval = std::move(outer);
    }

    // The reports of refused steps are expected; they are shown only beside a failure.
    void Run()
    {
        std::cout << "seed " << Seed << '\n';
        const auto output = CaptureOutput(
            [&]
            {
                for (; step < Steps && !HasFailure(); ++step)
                {
                    Step();
                    EXPECT_EQ(Order(), model) << Where();
                    handler->events.clear();
                }
            });
        if (HasFailure())
            std::cout << output.substr(output.size() - std::min<std::size_t>(output.size(), 4000));
        CheckCounts();
    }

    // The references on an item are as many as its places.
    void CheckCounts()
    {
        for (const auto& [name, item] : items)
            EXPECT_EQ(CountOf(name), std::count(model.begin(), model.end(), name)) << name << ", seed " << Seed;
    }

    std::mt19937 random{Seed};
    std::string model;
    bool enabled = true;
    std::vector<Texts> due;  // what is still to be heard, for each call that is being made, the innermost last
    std::function<void(Result)> tellRemoval;
    int step = 0;
    int depth = 0;
    int deepest = 0;  // how many changes may be made one inside the other's events
    Ref<WatchedCollection> watched = MakeRef<WatchedCollection>();
};

TEST_F(CollectionModel, StaysEqualToAVectorOverLongSequences)
{
    Run();
}

TEST_F(CollectionModel, StaysEqualToAVectorWhenHandlersChangeIt)
{
    deepest = 2;
    Run();
}

}  // namespace tvx::test
