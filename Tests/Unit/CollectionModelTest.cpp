// SPDX-License-Identifier: MIT
#include "Tests/Support/CollectionTesting.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <random>

namespace tvx::test
{

namespace
{

constexpr std::uint32_t Seed = 20261121;
constexpr int Steps = 10000;

}  // namespace

// Runs long sequences of operations on a collection and on a plain vector, and compares both after each step: order, results
// and events.
class CollectionModel : public CollectionTest
{
protected:
    CollectionModel() { RecordProperty("seed", static_cast<int>(Seed)); }

    std::uint32_t Pick(std::size_t bound) { return static_cast<std::uint32_t>(random() % bound); }

    char PickName() { return "ABCDEFGHIJ-"[Pick(11)]; }

    std::size_t Find(char name) { return name == '-' ? std::string::npos : model.find(name); }

    void Expect(const char* event, char name)
    {
        expected.push_back(std::string(event) + " " + name);
        expected.push_back(std::string("Updated ") + name);
    }

    void ModelInsert(std::size_t index, char name)
    {
        model.insert(std::min(index, model.size()), 1, name);
        Expect("ItemAdded", name);
    }

    void ModelMove(std::size_t from, std::size_t to)
    {
        const auto target = std::min(to, model.size());
        if (from == target)
            return;
        const char name = model[from];
        model.erase(from, 1);
        model.insert(target > from ? target - 1 : target, 1, name);
        Expect("ItemMoved", name);
    }

    void ModelRemove(std::size_t index)
    {
        Expect("ItemRemoved", model[index]);
        model.erase(index, 1);
    }

    void Insert()
    {
        const auto index = Pick(model.size() + 3);
        const char name = PickName();
        ModelInsert(index, name);
        EXPECT_EQ(collection->Insert(index, Item(name)), TVX_OK);
    }

    void InsertBefore()
    {
        const char name = PickName();
        const char before = PickName();
        const auto index = Find(before);
        if (index != std::string::npos)
            ModelInsert(index, name);
        const auto wanted = before == '-' ? TVX_E_PRECONDITION : index == std::string::npos ? TVX_E_FAIL : TVX_OK;
        EXPECT_EQ(collection->InsertBefore(Item(name), Item(before)), wanted);
    }

    void RemoveAt()
    {
        const auto index = Pick(model.size() + 1);
        const bool there = index < model.size();
        if (there)
            ModelRemove(index);
        EXPECT_EQ(collection->RemoveAt(index), there ? TVX_OK : TVX_E_PRECONDITION);
    }

    void Remove()
    {
        const char name = PickName();
        const auto index = Find(name);
        if (index != std::string::npos)
            ModelRemove(index);
        const auto wanted = name == '-' ? TVX_E_PRECONDITION : index == std::string::npos ? TVX_E_FAIL : TVX_OK;
        EXPECT_EQ(collection->Remove(Item(name)), wanted);
    }

    void Move()
    {
        const auto from = Pick(model.size() + 1);
        const auto to = Pick(model.size() + 3);
        const bool there = from < model.size();
        if (there)
            ModelMove(from, to);
        EXPECT_EQ(collection->Move(from, to), there ? TVX_OK : TVX_E_PRECONDITION);
    }

    void MoveBefore()
    {
        const char name = PickName();
        const char before = PickName();
        const auto to = before == '-' ? model.size() : Find(before);
        const auto from = Find(name);
        const bool there = from != std::string::npos && to != std::string::npos;
        if (there)
            ModelMove(from, to);
        EXPECT_EQ(collection->MoveBefore(Item(name), Item(before)) == TVX_OK, there);
    }

    void Step()
    {
        expected.clear();
        using Operation = void (CollectionModel::*)();
        constexpr Operation operations[] = {&CollectionModel::Insert,   &CollectionModel::InsertBefore,
                                            &CollectionModel::RemoveAt, &CollectionModel::Remove,
                                            &CollectionModel::Move,     &CollectionModel::MoveBefore};
        (this->*operations[Pick(std::size(operations))])();
    }

    // The reports of refused steps are expected; they are shown only beside a failure.
    template <class Body>
    void RunQuietly(Body&& body)
    {
        const auto output = CaptureOutput(
            [&]
            {
                for (int step = 0; step < Steps && !HasFailure(); ++step)
                    body(step);
            });
        if (HasFailure())
            std::cout << output.substr(output.size() - std::min<std::size_t>(output.size(), 4000));
    }

    // The references on an item are as many as its places.
    void CheckCounts()
    {
        for (const auto& [name, item] : items)
            EXPECT_EQ(CountOf(name), std::count(model.begin(), model.end(), name)) << name;
    }

    std::mt19937 random{Seed};
    std::string model;
    Texts expected;
};

TEST_F(CollectionModel, StaysEqualToAVectorOverLongSequences)
{
    Listen();
    RunQuietly(
        [&](int step)
        {
            Step();
            ASSERT_EQ(Order(), model) << "step " << step << ", seed " << Seed;
            ASSERT_EQ(Heard(), expected) << "step " << step << ", seed " << Seed;
        });
    CheckCounts();
}

// Each event may be answered with a further change, two levels deep.
TEST_F(CollectionModel, StaysEqualToAVectorWhenHandlersChangeIt)
{
    int depth = 0;
    handler->action = [&](const SeenEvent&)
    {
        if (depth == 2 || Pick(3) != 0)
            return;
        ++depth;
        Step();
        ASSERT_EQ(Order(), model);
        --depth;
    };
    Listen();
    RunQuietly(
        [&](int step)
        {
            Step();
            ASSERT_EQ(Order(), model) << "step " << step << ", seed " << Seed;
            handler->events.clear();
        });
    CheckCounts();
}

}  // namespace tvx::test
