// SPDX-License-Identifier: MIT
#include "Tests/Support/Doubles.h"
#include "Tests/Threads/RunTogether.h"

#include <gtest/gtest.h>

#include <atomic>
#include <utility>

namespace tvx::test
{

namespace
{

// Counts deaths, and writes its own data when it dies: only the last holder may be there.
class Mortal final : public CountedImpl<Mortal, IObjectBase>
{
public:
    using Interfaces = InterfaceList<IObjectBase>;

    explicit Mortal(std::atomic<int>& deaths) : deaths_(deaths) {}
    ~Mortal()
    {
        data_.clear();
        ++deaths_;
    }

    std::size_t GetDataSize() const { return data_.size(); }

private:
    std::atomic<int>& deaths_;
    std::string data_ = "data of the object";
};

}  // namespace

TEST(ReferenceCountThreads, LoseNoReference)
{
    bool died = false;
    auto object = MakeRef<ProbeObject>(&died);
    RunTogether(
        [&](int)
        {
            for (int i = 0; i < 5000; ++i)
            {
                const auto queried = Query<IObject>(object);
                const auto shared = queried;
                EXPECT_GE(shared->GetRefCount(), 3u);
                EXPECT_FALSE(shared->IsUnique());
            }
        });
    EXPECT_TRUE(object->IsUnique());
    EXPECT_FALSE(died);
    object = nullptr;
    EXPECT_TRUE(died);
}

TEST(ReferenceCountThreads, DestroyAnObjectOnceAndAfterEveryUse)
{
    constexpr int rounds = 200;
    std::atomic<int> deaths = 0;
    for (int round = 0; round < rounds; ++round)
    {
        auto object = MakeRef<Mortal>(deaths);
        std::vector<Ref<Mortal>> holders(ThreadCount, object);
        object = nullptr;
        RunTogether(
            [&](int number)
            {
                const auto mine = std::move(holders[static_cast<std::size_t>(number)]);
                EXPECT_NE(mine->GetDataSize(), 0u);
            });
    }
    EXPECT_EQ(deaths, rounds);
}

}  // namespace tvx::test
