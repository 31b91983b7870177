// SPDX-License-Identifier: MIT
#include "Tool/Checks/BoundedWorker.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/ImageBench.h"

namespace tvx::check
{

namespace
{

enum class Hold
{
    None,
    Reading,
    Writing,
};

constexpr Hold Holds[] = {Hold::None, Hold::Reading, Hold::Writing};

const char* Name(Hold hold)
{
    constexpr const char* names[] = {"an unlocked image", "a reader", "the writer"};
    return names[static_cast<int>(hold)];
}

void Take(IImage& image, Hold hold)
{
    if (hold == Hold::Reading)
        image.LockRead();
    if (hold == Hold::Writing)
        image.LockWrite();
}

// The step of one thread alone, which nobody else keeps waiting.
using Step = void (IImage::*)();

// Every hold, the step, and the hold that is there afterwards. Then one Unlock and a lock for writing by another thread show
// that nothing of the holds before was left behind.
void ExpectSteps(Trial& trial, const std::string& name, Step step, Hold after)
{
    for (const Hold before : Holds)
    {
        const auto what = name + " of " + Name(before);
        const auto image = MakeImage(trial, {});
        ImageView view = {};
        BoundedWorker worker;
        BoundedWorker other;
        worker.Do(trial, what,
                  [&, held = image]
                  {
                      Take(*held, before);
                      (held.Get()->*step)();
                      view = LookAt(*held);
                  });
        trial.Equal("IsLocked after " + what, view.isLocked, after != Hold::None);
        trial.Equal("IsWriteLocked after " + what, view.isWriteLocked, after == Hold::Writing);
        worker.Do(trial, "Unlock after " + what, [held = image] { held->Unlock(); });
        other.Do(trial, "LockWrite of another thread after all that", [held = image] { host::WriteLock lock(*held); });
    }
}

void BecomesAReader(Trial& trial)
{
    ExpectSteps(trial, "LockRead", &IImage::LockRead, Hold::Reading);
}

void BecomesTheWriter(Trial& trial)
{
    ExpectSteps(trial, "LockWrite", &IImage::LockWrite, Hold::Writing);
}

void BecomesUnlocked(Trial& trial)
{
    ExpectSteps(trial, "Unlock", &IImage::Unlock, Hold::None);
}

void DoesNotCountLocks(Trial& trial)
{
    for (const Hold hold : {Hold::Reading, Hold::Writing})
    {
        const auto image = MakeImage(trial, {});
        ImageView view = {};
        BoundedWorker worker;
        const auto work = [&, held = image]
        {
            for (int count = 0; count < 3; ++count)
                Take(*held, hold);
            held->Unlock();
            view = LookAt(*held);
        };
        worker.Do(trial, "three locks and one Unlock", work);
        trial.Equal("IsLocked after three locks and one Unlock", view.isLocked, false);
    }
}

void GivesPixelsByTheHold(Trial& trial)
{
    const auto image = MakeImage(trial, {});
    ExpectUnlocked(trial, "an unlocked image", *image);
    const host::ReadLock reading(*image);
    const auto read = LookAt(*image);
    trial.Expect(read.data != nullptr, "GetData under a read lock to give the pixels", "null");
    trial.Same("GetWritableData under a read lock", read.writableData, nullptr);
    const host::WriteLock writing(*image);
    const auto written = LookAt(*image);
    trial.Same("GetData under the write lock", written.data, read.data);
    trial.Same("GetWritableData under the write lock", written.writableData, read.data);
}

void KeepsPixelsBetweenLocks(Trial& trial)
{
    const ImageShape shape = {7, 5, 1, 1, 0};
    const auto image = MakeCountingImage(trial, shape);
    for (int count = 0; count < 2; ++count)
        ExpectPixels(trial, "the pixels under a later lock", ReadPixels(trial, image, shape), CountBytes(shape));
}

void LocksEachImageForItself(Trial& trial)
{
    const auto first = MakeImage(trial, {});
    const auto second = MakeImage(trial, {});
    const host::WriteLock lock(*first);
    ExpectUnlocked(trial, "another image than the locked one", *second);
    const host::ReadLock reading(*second);
    second->Unlock();
    trial.Equal("IsWriteLocked after the other image was unlocked", first->IsWriteLocked(), true);
}

void HasNoLockWithoutItsPixels(Trial& trial)
{
    const auto image = MakeImage(trial, {});
    const auto moved = MoveAway(trial, image);
    for (const Step step : {&IImage::LockRead, &IImage::LockWrite, &IImage::Unlock})
    {
        BoundedWorker worker;
        worker.Do(trial, "a lock operation of an image whose pixels were moved away",
                  [held = image, step] { (held.Get()->*step)(); });
        (image.Get()->*step)();
        ExpectUnlocked(trial, "an image whose pixels were moved away", *image);
    }
}

void MayDieWhileItIsLocked(Trial& trial)
{
    for (const Hold hold : {Hold::Reading, Hold::Writing})
    {
        const auto mourner = MakeRef<RecordingHandler>();
        auto image = MakeImage(trial, {});
        image->SubscribeDestroyed(mourner.Get(), 0);
        Take(*image, hold);
        image = nullptr;
        trial.Equal("the number of \"Destroyed\" events of a locked image", mourner->events.size(), 1u);
    }
}

// A later image is often made where an earlier one was.
void IsUnlockedWhereALockedOneDied(Trial& trial)
{
    for (int round = 0; round < 50; ++round)
    {
        const auto image = MakeImage(trial, {});
        ExpectUnlocked(trial, "an image made after a locked one died", *image);
        Take(*image, round % 2 == 0 ? Hold::Reading : Hold::Writing);
    }
}

constexpr Check Checks[] = {
    {"image-lock-read-makes-a-reader", "LockRead of an unlocked image, of a reader and of the writer.",
     "LockRead makes the thread a reader; the writer lets go of the write lock, a reader stays one.", BecomesAReader},
    {"image-lock-write-makes-the-writer", "LockWrite of an unlocked image, of a reader and of the writer.",
     "LockWrite makes the thread the writer; a reader lets go of the read lock, the writer stays it.",
     BecomesTheWriter},
    {"image-unlock-ends-any-hold", "Unlock of an unlocked image, of a reader and of the writer.",
     "Unlock ends the hold of the thread, and does nothing where there is none.", BecomesUnlocked},
    {"image-locks-are-not-counted", "Three locks of a kind and one Unlock.",
     "One Unlock ends the hold of a thread, however often it has locked.", DoesNotCountLocks},
    {"image-gives-pixels-by-the-hold", "GetData and GetWritableData without a lock and under either.",
     "Readers and the writer get the pixels, only the writer gets them for writing, anybody else gets null.",
     GivesPixelsByTheHold},
    {"image-keeps-pixels-between-locks", "Pixels are written under one lock and read under others.",
     "What was written stays.", KeepsPixelsBetweenLocks},
    {"image-locks-for-itself", "One of two images is locked.", "Each image has a lock of its own.",
     LocksEachImageForItself},
    {"image-has-no-lock-without-its-pixels", "An image whose pixels were moved away is locked and unlocked.",
     "An image without its pixels has no lock any more: the three operations do nothing, and nobody holds it.",
     HasNoLockWithoutItsPixels},
    {"image-may-die-while-it-is-locked", "The last reference on a locked image is released.",
     "A locked image is destroyed like any other, and says so once.", MayDieWhileItIsLocked},
    {"image-is-unlocked-where-a-locked-one-died", "Fifty images one after the other, each released while it is locked.",
     "A hold goes with its image: no later one sees it, also not at the same address.", IsUnlockedWhereALockedOneDied},
};

}  // namespace

extern const Family ImageLockFamily = {"images", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
