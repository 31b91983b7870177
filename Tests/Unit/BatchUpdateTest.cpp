// SPDX-License-Identifier: MIT
#include "Helpers/BatchUpdate.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/MemoryTesting.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

using namespace tvx;
using namespace tvx::test;

// A map that cannot tell its mode.
class ModelessMap final : public SimpleMap
{
public:
    Result GetBatchUpdatingMode(bool*) override { return TVX_E_EXCEPTION; }
    Result SetBatchUpdatingMode(bool mode) override
    {
        ++switches;
        return SimpleMap::SetBatchUpdatingMode(mode);
    }

    int switches = 0;
};

class BatchUpdateTest : public testing::Test
{
protected:
    BatchUpdateTest()
    {
        for (auto* const heard : {map.Get(), fresh.Get()})
        {
            heard->SubscribeChanged(handler.Get(), 0, true);
            heard->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
        }
    }

    const Ref<QuietHandler> handler = MakeRef<QuietHandler>();
    const Ref<SimpleMap> map = MakeImmediateMap();
    const Ref<SimpleMap> fresh = MakeMap();
};

TEST_F(BatchUpdateTest, TellsTheWritesOfItsScopeTogether)
{
    {
        const BatchUpdate batch(*map);
        EXPECT_EQ(batch.GetResult(), TVX_OK);
        EXPECT_TRUE(IsBatchUpdating(*map));
        map->SetInt("a", 1);
        map->SetInt("b", 2);
        EXPECT_EQ(handler->heard, Texts{"Mode true"});
    }
    EXPECT_FALSE(IsBatchUpdating(*map));
    EXPECT_EQ(handler->heard, (Texts{"Mode true", "Mode false", "Changed"}));
}

TEST_F(BatchUpdateTest, LeavesANewMapInTheMode)
{
    {
        const BatchUpdate batch(*fresh);
        fresh->SetInt("a", 1);
    }
    EXPECT_TRUE(IsBatchUpdating(*fresh));
    EXPECT_TRUE(handler->heard.empty());
}

TEST_F(BatchUpdateTest, NestsSoThatOnlyTheOuterScopeTells)
{
    {
        const BatchUpdate outer(*map);
        {
            const BatchUpdate inner(*map);
            map->SetInt("a", 1);
        }
        EXPECT_TRUE(IsBatchUpdating(*map));
        map->SetInt("b", 2);
    }
    EXPECT_FALSE(IsBatchUpdating(*map));
    EXPECT_EQ(handler->heard, (Texts{"Mode true", "Mode false", "Changed"}));
}

TEST_F(BatchUpdateTest, GoesBackToTheModeBeforeWhateverItsScopeSets)
{
    {
        const BatchUpdate batch(*fresh);
        fresh->SetBatchUpdatingMode(false);
    }
    EXPECT_TRUE(IsBatchUpdating(*fresh));
    {
        const BatchUpdate batch(*map);
        map->SetBatchUpdatingMode(false);
    }
    EXPECT_FALSE(IsBatchUpdating(*map));
}

TEST_F(BatchUpdateTest, EndsBeforeItsScopeWhenTold)
{
    BatchUpdate batch(*map);
    EXPECT_EQ(batch.End(), TVX_OK);
    EXPECT_FALSE(IsBatchUpdating(*map));
    EXPECT_TRUE(map->IsUnique());
    map->SetBatchUpdatingMode(true);
    EXPECT_EQ(batch.End(), TVX_OK);
    EXPECT_TRUE(IsBatchUpdating(*map)) << "a second end restores nothing";
}

TEST_F(BatchUpdateTest, KeepsTheMapAliveForItsScope)
{
    EXPECT_TRUE(map->IsUnique());
    auto shortLived = MakeImmediateMap();
    shortLived->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    {
        const BatchUpdate batch(*map);
        EXPECT_EQ(map->GetRefCount(), 2U);
        const BatchUpdate last(*shortLived);
        shortLived = nullptr;
        handler->heard.clear();
    }
    EXPECT_EQ(handler->heard, (Texts{"Mode false", "Mode false"}));
    EXPECT_TRUE(map->IsUnique());
}

TEST_F(BatchUpdateTest, LeavesTheModeWhenThereIsNoMemoryToSwitchItOn)
{
    const auto output = CaptureOutput(
        [&]
        {
            const FailingMemory memory({0, true});
            const BatchUpdate batch(*map);
            EXPECT_EQ(batch.GetResult(), TVX_E_POINTER);
        });
    EXPECT_FALSE(IsBatchUpdating(*map));
    EXPECT_TRUE(handler->heard.empty());
    EXPECT_EQ(output, "");
    EXPECT_TRUE(map->IsUnique());
}

TEST_F(BatchUpdateTest, TriesAgainAtTheEndOfItsScopeWhenThereWasNoMemoryToEnd)
{
    {
        BatchUpdate batch(*map);
        {
            const FailingMemory memory({0, true});
            EXPECT_EQ(batch.End(), TVX_E_POINTER);
        }
        EXPECT_TRUE(IsBatchUpdating(*map));
    }
    EXPECT_FALSE(IsBatchUpdating(*map));
    EXPECT_TRUE(map->IsUnique());
}

TEST_F(BatchUpdateTest, SwitchesNothingOnAMapThatCannotTellItsMode)
{
    const auto modeless = MakeRef<ModelessMap>();
    {
        const BatchUpdate batch(*modeless);
        EXPECT_EQ(batch.GetResult(), TVX_E_EXCEPTION);
    }
    EXPECT_EQ(modeless->switches, 0);
    EXPECT_TRUE(modeless->IsUnique());
}

TEST_F(BatchUpdateTest, BelongsToItsScope)
{
    EXPECT_FALSE(std::is_copy_constructible_v<BatchUpdate>);
    EXPECT_FALSE(std::is_move_constructible_v<BatchUpdate>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<BatchUpdate>);
}

}  // namespace
