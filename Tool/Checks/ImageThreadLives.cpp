// SPDX-License-Identifier: MIT
#include "Tool/Checks/BoundedWorker.h"
#include "Tool/Checks/ImageBench.h"

#include <array>
#include <cstring>
#include <vector>

namespace tvx::check
{

namespace
{

constexpr int Rounds = 50;  // after so many images one of them was most likely made where an earlier one had been

void NoThreadInheritsAHold(Trial& trial)
{
    Ref<IImage> image;
    ImageView view = {};
    BoundedWorker worker;
    for (int round = 0; round < Rounds; ++round)
    {
        image = MakeImage(trial, {});
        worker.Do(trial, "a look at a new image", [&] { view = LookAt(*image); });
        trial.Equal("IsLocked of a new image on a thread that had locked an earlier one", view.isLocked, false);
        trial.Same("GetData of the new image", view.data, nullptr);
        worker.Do(trial, "LockWrite of a new image", [held = image] { held->LockWrite(); });
        image = nullptr;
    }
}

void AHoldOfAnEndedThreadGoesWithTheImage(Trial& trial)
{
    Ref<IImage> image;
    BoundedWorker worker;
    for (int round = 0; round < Rounds; ++round)
    {
        image = MakeImage(trial, {});
        worker.Do(trial, "LockWrite of a new image", [held = image] { host::WriteLock lock(*held); });
        BoundedWorker().Do(trial, "LockWrite of a thread that ends then", [held = image] { held->LockWrite(); });
        image = nullptr;
    }
}

void AThreadMayEndWithAHold(Trial& trial)
{
    const auto image = MakeImage(trial, {});
    BoundedWorker().Do(trial, "LockRead of a thread that ends then", [held = image] { held->LockRead(); });
    ExpectUnlocked(trial, "an image that an ended thread had locked", *image);
    ImageView view = {};
    BoundedWorker().Do(trial, "LockRead of another thread",
                       [&]
                       {
                           image->LockRead();
                           view = LookAt(*image);
                           image->Unlock();
                       });
    trial.Expect(view.data != nullptr, "GetData of a reader beside an ended one to give the pixels", "null");
}

void AThreadMayEndAfterTheModule(Trial& trial)
{
    BoundedWorker worker;
    {
        const auto image = MakeImage(trial, {});
        worker.Do(trial, "LockWrite and Unlock", [held = image] { host::WriteLock lock(*held); });
        const auto other = MakeImage(trial, {});
        worker.Do(trial, "LockRead of a thread that never unlocks", [held = other] { held->LockRead(); });
    }
    static_cast<void>(trial.TakeOutput([&] { trial.Unload(); }));
}

// Reads the counter that stands in the pixels, adds 1 and writes it back.
void Increment(IImage& image)
{
    const host::WriteLock lock(image);
    void* const pixels = image.GetWritableData();
    if (pixels == nullptr)
        return;
    std::uint32_t count = 0;
    std::memcpy(&count, pixels, sizeof count);
    ++count;
    std::memcpy(pixels, &count, sizeof count);
}

void LosesNoIncrement(Trial& trial)
{
    constexpr ImageShape shape = {1, 1, ColorFormat::OneChannel, DataType::FourBytes, 0};
    const auto image = MakeImage(trial, shape);
    std::array<BoundedWorker, 4> workers;
    std::vector<std::future<void>> ends;
    for (auto& worker : workers)
    {
        ends.push_back(worker.Begin(
            [&]
            {
                for (int count = 0; count < 2000; ++count)
                    Increment(*image);
            }));
    }
    for (const auto& end : ends)
        BoundedWorker::ExpectEnd(trial, "2000 increments of each of four threads", end);
    std::uint32_t count = 0;
    std::memcpy(&count, ReadPixels(trial, image, shape).data(), sizeof count);
    trial.Equal("the counter after 4 times 2000 increments", count, 8000u);
}

// Writers keep two numbers alike; a reader that sees them differ has read while one was writing.
void ShowsNothingThatIsBeingWritten(Trial& trial)
{
    constexpr ImageShape shape = {2, 1, ColorFormat::OneChannel, DataType::OneByte, 0};
    const auto image = MakeImage(trial, shape);
    std::array<int, 2> torn = {};
    std::array<BoundedWorker, 4> workers;
    std::vector<std::future<void>> ends;
    const auto write = [&]
    {
        for (int count = 0; count < 1000; ++count)
        {
            const host::WriteLock lock(*image);
            auto* const pixels = static_cast<volatile std::uint8_t*>(image->GetWritableData());
            for (std::size_t at = 0; pixels != nullptr && at < 2; ++at)
                pixels[at] = static_cast<std::uint8_t>(count);
        }
    };
    const auto read = [&](int& differences)
    {
        for (int count = 0; count < 1000; ++count)
        {
            const host::ReadLock lock(*image);
            const auto* const pixels = static_cast<const volatile std::uint8_t*>(image->GetData());
            differences += pixels == nullptr || pixels[0] != pixels[1] ? 1 : 0;
        }
    };
    ends.push_back(workers[0].Begin(write));
    ends.push_back(workers[1].Begin(write));
    ends.push_back(workers[2].Begin([&] { read(torn[0]); }));
    ends.push_back(workers[3].Begin([&] { read(torn[1]); }));
    for (const auto& end : ends)
        BoundedWorker::ExpectEnd(trial, "1000 locks of each of four threads", end);
    trial.Equal("the number of readers that saw half of what was written", torn[0] + torn[1], 0);
}

void NeedsNoLockWhenItNeverChanges(Trial& trial)
{
    const ImageShape shape = {7, 5, 2, 0, 0};
    const auto view = MakeConstImage(trial, shape);
    ImageBytes seen;
    BoundedWorker worker;
    worker.Do(trial, "reading on another thread",
              [&]
              {
                  const auto* const pixels = static_cast<const std::uint8_t*>(view->GetData());
                  if (pixels != nullptr)
                      seen.assign(pixels, pixels + GetSize(shape));
              });
    ExpectPixels(trial, "the pixels that another thread reads", seen, CountBytes(shape));
    ExpectPixels(trial, "the pixels that this thread reads", ReadPixels(trial, view, shape), CountBytes(shape));
}

constexpr Check Checks[] = {
    {"thread-image-no-hold-is-inherited",
     "Fifty images one after the other, each released while a thread has it locked.",
     "A hold goes with its image: no later one is locked, on any thread, also not at the same address.",
     NoThreadInheritsAHold},
    {"thread-image-hold-of-an-ended-thread-goes-with-it", "A thread ends without Unlock, and the image is released.",
     "A hold that a thread never ended goes with the image: later ones can be locked at once.",
     AHoldOfAnEndedThreadGoesWithTheImage},
    {"thread-image-thread-may-end-with-a-hold", "A thread ends without having unlocked an image that it read.",
     "Other threads do not take over the hold of an ended one; a reader that was left behind lets readers in.",
     AThreadMayEndWithAHold},
    {"thread-image-thread-may-end-after-the-module",
     "A thread locks images, then the module is unloaded, then it ends.",
     "What a module keeps for a thread calls nothing in the module when the thread ends: it may be gone.",
     AThreadMayEndAfterTheModule},
    {"thread-image-loses-no-increment", "Four threads count 2000 times each under the write lock.",
     "One writer at a time, who sees all that was written before.", LosesNoIncrement},
    {"thread-image-shows-nothing-half-written", "Two threads write pairs of numbers, two read them.",
     "A reader never sees what a writer is about to write.", ShowsNothingThatIsBeingWritten},
    {"thread-image-that-never-changes-needs-no-lock", "An image that never changes is read by two threads.",
     "The pixels of an image that never changes are there for every thread at any time.",
     NeedsNoLockWhenItNeverChanges},
};

}  // namespace

extern const Family ImageThreadLivesFamily = {"threads", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
