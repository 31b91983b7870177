// SPDX-License-Identifier: MIT
#include "Tests/Support/FailingMemory.h"
#include "Tests/Support/ImageTesting.h"
#include "Tests/Support/Worker.h"

namespace tvx::test
{

namespace
{

using ImageMemory = ImageTest;

}  // namespace

TEST_F(ImageMemory, IsWantedByNewImagesAsAFailureThatChangesNothing)
{
    SweepFailures(
        [&](MemoryFailure failure)
        {
            Ref<IImage> image;
            const FailingMemory memory(failure);
            const auto made = factory->Create(2, 2, 0, 0, 0, image.Receive());
            EXPECT_EQ(made, FailingMemory::HasFailed() ? TVX_E_EXCEPTION : TVX_OK);
            EXPECT_EQ(static_cast<bool>(image), !FailingMemory::HasFailed());
            return FailingMemory::HasFailed();
        });
}

TEST_F(ImageMemory, IsWantedByMovesThatLeaveThePixelsWhereTheyWere)
{
    SweepFailures(
        [&](MemoryFailure failure)
        {
            const auto image = MakeCounting(2, 2);
            Ref<IConstImage> view;
            bool failed = false;
            {
                const FailingMemory memory(failure);
                const auto moved = factory->MakeConst(image.Get(), view.Receive());
                failed = FailingMemory::HasFailed();
                EXPECT_EQ(moved, failed ? TVX_E_EXCEPTION : TVX_OK);
            }
            EXPECT_EQ(static_cast<bool>(view), !failed);
            EXPECT_EQ(Read(image), failed ? (Bytes{0, 1, 2, 3}) : Bytes());
            return failed;
        });
    SweepFailures(
        [&](MemoryFailure failure)
        {
            Ref<IConstImage> view;
            factory->MakeConst(MakeCounting(2, 2).Get(), view.Receive());
            Ref<IImage> image;
            bool failed = false;
            {
                const FailingMemory memory(failure);
                const auto moved = factory->MakeMutable(view.Get(), image.Receive());
                failed = FailingMemory::HasFailed();
                EXPECT_EQ(moved, failed ? TVX_E_EXCEPTION : TVX_OK);
            }
            EXPECT_EQ(static_cast<bool>(image), !failed);
            EXPECT_EQ(Read(view), failed ? (Bytes{0, 1, 2, 3}) : Bytes());
            return failed;
        });
}

TEST_F(ImageMemory, IsNotWantedByAThreadThatHasLockedBefore)
{
    const auto first = Make(1, 1);
    first->LockRead();
    first->Unlock();
    const auto second = Make(1, 1);
    for (const auto lock : {&IImage::LockRead, &IImage::LockWrite})
    {
        const auto work = [&]
        {
            ((*second).*lock)();
            EXPECT_TRUE(second->IsLocked());
            second->Unlock();
        };
        EXPECT_EQ(CountAllocations(work), 0u);
    }
}

TEST_F(ImageMemory, ThatIsMissingForAHoldBesideAnotherLeavesTheImageToThat)
{
    SweepFailures(
        [&](MemoryFailure failure)
        {
            const auto image = Make(1, 1);
            Worker reader;
            reader.Do([&] { image->LockRead(); });
            bool failed = false;
            {
                const FailingMemory memory(failure);
                image->LockRead();
                failed = FailingMemory::HasFailed();
                EXPECT_EQ(image->IsLocked(), !failed);
            }
            reader.Do(
                [&]
                {
                    EXPECT_TRUE(image->IsLocked());
                    image->Unlock();
                    EXPECT_FALSE(image->IsLocked());
                });
            image->LockWrite();  // waits for nobody
            EXPECT_TRUE(image->IsWriteLocked());
            return failed;
        });
}

// A thread that lives on keeps nothing of images that died while it held them.
TEST_F(ImageMemory, OfImagesThatDiedLockedIsNotKeptByTheThreadThatHeldThem)
{
    Make(1, 1)->LockRead();
    const auto lockAndDie = [&]
    {
        for (int count = 0; count < 100; ++count)
            Make(1, 1)->LockRead();
    };
    EXPECT_EQ(CountAllocations(lockAndDie), 100u);  // the images themselves
}

}  // namespace tvx::test
