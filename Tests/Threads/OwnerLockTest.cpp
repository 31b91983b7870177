// SPDX-License-Identifier: MIT
#include "Helpers/OwnerLock.h"
#include "Tests/Threads/RunTogether.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>

namespace tvx::test
{

namespace
{

bool IsFreeForAnother(OwnerLock& lock)
{
    return std::async(std::launch::async,
                      [&lock]
                      {
                          const bool taken = lock.try_lock();
                          if (taken)
                              lock.unlock();
                          return taken;
                      })
        .get();
}

}  // namespace

TEST(OwnerLock, IsTakenAsOftenAsItsOwnerLikesAndFreeAfterAsManyReturns)
{
    OwnerLock lock;
    EXPECT_TRUE(IsFreeForAnother(lock));
    lock.lock();
    lock.lock();
    EXPECT_TRUE(lock.try_lock());
    for (int taken = 3; taken > 0; --taken)
    {
        EXPECT_FALSE(IsFreeForAnother(lock)) << taken;
        lock.unlock();
    }
    EXPECT_TRUE(IsFreeForAnother(lock));
}

TEST(OwnerLock, LetsAnotherThreadWaitUntilItIsGivenBack)
{
    OwnerLock lock;
    lock.lock();
    bool isFree = false;
    auto other = std::async(std::launch::async,
                            [&]
                            {
                                const std::lock_guard<OwnerLock> guard(lock);
                                return isFree;
                            });
    EXPECT_EQ(other.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    isFree = true;
    lock.unlock();
    EXPECT_TRUE(other.get());
}

TEST(OwnerLock, LetsOneThreadInAtATime)
{
    constexpr int rounds = 20000;
    OwnerLock lock;
    int plain = 0;
    RunTogether(
        [&](int)
        {
            for (int round = 0; round < rounds; ++round)
            {
                const std::lock_guard<OwnerLock> outer(lock);
                const std::lock_guard<OwnerLock> inner(lock);
                ++plain;
            }
        });
    EXPECT_EQ(plain, ThreadCount * rounds);
}

}  // namespace tvx::test
