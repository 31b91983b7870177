// SPDX-License-Identifier: MIT
#include "Src/ItemScan.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <cstdint>
#include <vector>

namespace tvx::test
{

namespace
{

constexpr std::size_t MaxCount = 130;

// A pointer that is compared only. Those that follow one another differ in one half alone, the lower or the upper one.
const IObject* MakePointer(std::uintptr_t number)
{
    constexpr auto half = sizeof(std::uintptr_t) * 4;
    return reinterpret_cast<const IObject*>(number % 2 == 0 ? number << half : number);
}

std::vector<const IObject*> MakePointers(std::size_t count)
{
    std::vector<const IObject*> pointers;
    for (std::size_t number = 1; number <= count; ++number)
        pointers.push_back(MakePointer(number));
    return pointers;
}

// Calls work with the scan of each processor generation in turn, and with the one that is chosen by itself.
template <class Work>
void OnEveryTarget(Work&& work)
{
    for (auto rest = hwy::SupportedTargets(); rest != 0; rest &= rest - 1)
    {
        hwy::SetSupportedTargetsForTest(rest & -rest);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        SCOPED_TRACE(hwy::TargetName(rest & -rest));
        work();
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    work();
}

}  // namespace

TEST(ItemScan, FindsWhatThePlainOneFindsWhereverItBegins)
{
    const auto pointers = MakePointers(MaxCount);
    OnEveryTarget(
        [&]
        {
            for (std::size_t from = 0; from <= 8; ++from)
            {
                for (std::size_t place = 0; place < MaxCount; ++place)
                {
                    const auto* const items = pointers.data() + from;
                    const auto count = MaxCount - from;
                    ASSERT_EQ(FindItem(items, count, pointers[place]), plain::FindItem(items, count, pointers[place]))
                        << place << " from " << from;
                }
            }
        });
}

TEST(ItemScan, LooksAtNothingBehindTheEnd)
{
    const auto pointers = MakePointers(MaxCount);
    OnEveryTarget(
        [&]
        {
            for (std::size_t count = 0; count < MaxCount; ++count)
                ASSERT_EQ(FindItem(pointers.data(), count, pointers[count]), count);
        });
}

TEST(ItemScan, FindsTheFirstPlaceAndNull)
{
    auto pointers = MakePointers(MaxCount);
    OnEveryTarget(
        [&]
        {
            for (const IObject* const twice : {MakePointer(7), static_cast<const IObject*>(nullptr)})
            {
                pointers[40] = pointers[41] = pointers[100] = twice;
                ASSERT_EQ(FindItem(pointers.data() + 10, MaxCount - 10, twice), 30U);
                ASSERT_EQ(FindItem(pointers.data() + 42, MaxCount - 42, twice), 58U);
            }
        });
}

}  // namespace tvx::test
