// SPDX-License-Identifier: MIT
#include "Platform/LimitedMemory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>

namespace tvx::Platform
{
namespace
{

constexpr std::size_t MegaByte = 1 << 20;

// Whether the process gets so much in one piece. The compiler may not leave out what looks unused.
bool Gets(std::size_t bytes)
{
    void* volatile memory = std::malloc(bytes);
    const bool gets = memory != nullptr;
    std::free(memory);
    return gets;
}

TEST(LimitedMemory, GivesSoMuchAndNoMoreAsLongAsItLives)
{
    if (!LimitedMemory::IsPossible())
        GTEST_SKIP() << "this process does not survive a limit";
    EXPECT_TRUE(Gets(64 * MegaByte));
    {
        const LimitedMemory memory(32 * MegaByte);
        EXPECT_TRUE(Gets(16 * MegaByte));
        EXPECT_FALSE(Gets(64 * MegaByte));
    }
    EXPECT_TRUE(Gets(64 * MegaByte));
}

TEST(LimitedMemory, LetsTheStricterLimitCount)
{
    if (!LimitedMemory::IsPossible())
        GTEST_SKIP() << "this process does not survive a limit";
    const LimitedMemory outer(32 * MegaByte);
    {
        const LimitedMemory wider(512 * MegaByte);
        EXPECT_FALSE(Gets(64 * MegaByte));
    }
    EXPECT_FALSE(Gets(64 * MegaByte));
    {
        const LimitedMemory narrower(8 * MegaByte);
        EXPECT_FALSE(Gets(16 * MegaByte));
    }
    EXPECT_TRUE(Gets(16 * MegaByte));
}

TEST(LimitedMemory, DoesNothingWhereItIsNotPossible)
{
    if (LimitedMemory::IsPossible())
        GTEST_SKIP() << "it is";
    const LimitedMemory memory(0);
    EXPECT_TRUE(Gets(64 * MegaByte));
}

}  // namespace
}  // namespace tvx::Platform
