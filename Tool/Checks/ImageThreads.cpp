// SPDX-License-Identifier: MIT
#include "Tool/Checks/BoundedWorker.h"
#include "Tool/Checks/ImageBench.h"

#include <optional>

namespace tvx::check
{

namespace
{

// Two threads and an image. The workers end before the image goes.
struct Meeting
{
    explicit Meeting(Trial& trial) : image(MakeImage(trial, {})) {}

    // A check that fails may leave one of them waiting for the other.
    ~Meeting()
    {
        first.Begin(Unlock());
        second.Begin(Unlock());
    }
    Meeting(const Meeting&) = delete;
    Meeting& operator=(const Meeting&) = delete;

    Ref<IImage> image;
    ImageView view = {};  // as the last worker saw it
    BoundedWorker first;
    BoundedWorker second;

    std::function<void()> Read()
    {
        return [held = image] { held->LockRead(); };
    }
    std::function<void()> Write()
    {
        return [held = image] { held->LockWrite(); };
    }
    std::function<void()> Unlock()
    {
        return [held = image] { held->Unlock(); };
    }
    std::function<void()> Look()
    {
        return [this] { view = LookAt(*image); };
    }
};

void ReadersShare(Trial& trial)
{
    Meeting meeting(trial);
    const host::ReadLock lock(*meeting.image);
    for (auto* const reader : {&meeting.first, &meeting.second})
    {
        reader->Do(trial, "LockRead while others read", meeting.Read());
        reader->Do(trial, "a look at the image", meeting.Look());
        trial.Expect(meeting.view.data != nullptr, "GetData of one of three readers to give the pixels", "null");
    }
    for (auto* const reader : {&meeting.first, &meeting.second})
        reader->Do(trial, "Unlock", meeting.Unlock());
    trial.Equal("IsLocked when the other readers have gone", meeting.image->IsLocked(), true);
}

// One lock has to wait as long as this thread has the other.
template <class Guard>
void ExpectExclusion(Trial& trial, const std::string& what, std::function<void()> (Meeting::*lock)())
{
    Meeting meeting(trial);
    std::optional<Guard> guard(std::in_place, *meeting.image);
    const auto locked = meeting.first.Begin((meeting.*lock)());
    BoundedWorker::ExpectWait(trial, what, locked);
    guard.reset();
    BoundedWorker::ExpectEnd(trial, what + ", once the image is unlocked,", locked);
    meeting.first.Do(trial, "a look at the image", meeting.Look());
    trial.Equal("IsLocked of the thread that waited", meeting.view.isLocked, true);
    meeting.first.Do(trial, "Unlock", meeting.Unlock());
}

void AWriterExcludesReaders(Trial& trial)
{
    ExpectExclusion<host::WriteLock>(trial, "LockRead while another thread writes", &Meeting::Read);
}

void AWriterExcludesWriters(Trial& trial)
{
    ExpectExclusion<host::WriteLock>(trial, "LockWrite while another thread writes", &Meeting::Write);
}

void AReaderExcludesWriters(Trial& trial)
{
    ExpectExclusion<host::ReadLock>(trial, "LockWrite while another thread reads", &Meeting::Write);
}

void AHoldIsThatOfItsThread(Trial& trial)
{
    Meeting meeting(trial);
    for (const auto& lock : {meeting.Read(), meeting.Write()})
    {
        meeting.first.Do(trial, "a lock", lock);
        ExpectUnlocked(trial, "an image that another thread has locked", *meeting.image);
        meeting.first.Do(trial, "a look at the image", meeting.Look());
        trial.Equal("IsLocked of the thread that has locked", meeting.view.isLocked, true);
        meeting.first.Do(trial, "Unlock", meeting.Unlock());
    }
}

void NobodyUnlocksForOthers(Trial& trial)
{
    Meeting meeting(trial);
    meeting.first.Do(trial, "LockWrite", meeting.Write());
    meeting.image->Unlock();
    meeting.first.Do(trial, "a look at the image", meeting.Look());
    trial.Equal("IsWriteLocked after another thread's Unlock", meeting.view.isWriteLocked, true);
    const auto reading = meeting.second.Begin(meeting.Read());
    BoundedWorker::ExpectWait(trial, "LockRead after a third thread's Unlock", reading);
    meeting.first.Do(trial, "Unlock", meeting.Unlock());
    BoundedWorker::ExpectEnd(trial, "LockRead after the writer's Unlock", reading);
    meeting.second.Do(trial, "Unlock of the reader", meeting.Unlock());
}

void AReaderBecomesTheWriterAfterOtherReaders(Trial& trial)
{
    Meeting meeting(trial);
    meeting.first.Do(trial, "LockRead", meeting.Read());
    std::optional<host::ReadLock> other(std::in_place, *meeting.image);
    const auto writing = meeting.first.Begin(meeting.Write());
    BoundedWorker::ExpectWait(trial, "LockWrite of a reader beside another one", writing);
    other.reset();
    BoundedWorker::ExpectEnd(trial, "LockWrite of the reader that is left", writing);
    meeting.first.Do(trial, "a look at the image", meeting.Look());
    trial.Equal("IsWriteLocked of the former reader", meeting.view.isWriteLocked, true);
    meeting.first.Do(trial, "Unlock", meeting.Unlock());
}

// Were the read lock kept while waiting, each would wait for the other.
void TwoReadersBecomeWriters(Trial& trial)
{
    Meeting meeting(trial);
    for (auto* const reader : {&meeting.first, &meeting.second})
        reader->Do(trial, "LockRead", meeting.Read());
    const auto write = [held = meeting.image] { host::WriteLock lock(*held); };
    const auto first = meeting.first.Begin(write);
    const auto second = meeting.second.Begin(write);
    BoundedWorker::ExpectEnd(trial, "LockWrite of the first of two readers", first);
    BoundedWorker::ExpectEnd(trial, "LockWrite of the second of two readers", second);
}

void AWriterBecomesAReaderBesideOthers(Trial& trial)
{
    Meeting meeting(trial);
    meeting.first.Do(trial, "LockWrite", meeting.Write());
    const auto reading = meeting.second.Begin(meeting.Read());
    BoundedWorker::ExpectWait(trial, "LockRead while another thread writes", reading);
    meeting.first.Do(trial, "LockRead of the writer", meeting.Read());
    BoundedWorker::ExpectEnd(trial, "LockRead beside the former writer", reading);
    for (auto* const reader : {&meeting.first, &meeting.second})
        reader->Do(trial, "Unlock", meeting.Unlock());
}

void ACopyWaitsForTheWriter(Trial& trial)
{
    const ImageShape shape = {2, 2, 0, 0, 0};
    const auto factory = GetImageFactory(trial);
    const auto image = MakeCountingImage(trial, shape);
    Ref<IImage> copy;
    Result result = TVX_E_FAIL;
    BoundedWorker worker;
    std::optional<host::WriteLock> lock(std::in_place, *image);
    const auto copied = worker.Begin([&, held = image] { result = factory->CreateCopy(held.Get(), copy.Receive()); });
    BoundedWorker::ExpectWait(trial, "CreateCopy while another thread writes", copied);
    trial.Gives("SetRowOrder meanwhile", image->SetRowOrder(1), TVX_OK);
    lock.reset();
    BoundedWorker::ExpectEnd(trial, "CreateCopy after the writer's Unlock", copied);
    trial.Gives("CreateCopy", result, TVX_OK);
    trial.Expect(static_cast<bool>(copy), "CreateCopy to give an image", "null");
    ExpectPixels(trial, "the pixels of the copy, as they were at last,", ReadPixels(trial, copy, shape),
                 ImageBytes{3, 4, 1, 2});
}

constexpr Check Checks[] = {
    {"thread-image-readers-share", "Three threads lock an image for reading.",
     "Any number of threads may read at the same time.", ReadersShare},
    {"thread-image-writer-excludes-readers", "A thread wants to read while another one writes.",
     "A reader waits until the writer has let go.", AWriterExcludesReaders},
    {"thread-image-writer-excludes-writers", "A thread wants to write while another one writes.",
     "There is one writer at a time; the next one waits.", AWriterExcludesWriters},
    {"thread-image-reader-excludes-writers", "A thread wants to write while another one reads.",
     "A writer waits until the last reader has let go.", AReaderExcludesWriters},
    {"thread-image-hold-is-that-of-its-thread", "A thread looks at an image that another one has locked.",
     "Each thread has a hold of its own: to all others the image is unlocked, and gives them no pixels.",
     AHoldIsThatOfItsThread},
    {"thread-image-nobody-unlocks-for-others", "A thread unlocks an image that another one has locked.",
     "Unlock ends the hold of the calling thread only.", NobodyUnlocksForOthers},
    {"thread-image-reader-becomes-writer-after-others", "One of two readers locks the image for writing.",
     "A reader that wants to write waits for the other readers.", AReaderBecomesTheWriterAfterOtherReaders},
    {"thread-image-two-readers-become-writers", "Two readers lock the image for writing at once.",
     "A reader lets go before it waits to write, so that two of them come in one after the other.",
     TwoReadersBecomeWriters},
    {"thread-image-writer-becomes-reader", "The writer locks the image for reading while another thread waits to read.",
     "A writer that becomes a reader lets other readers in.", AWriterBecomesAReaderBesideOthers},
    {"thread-image-copy-waits-for-the-writer", "An image is copied while another thread writes.",
     "A copy is made under the read lock: it shows what the writer has left.", ACopyWaitsForTheWriter},
};

}  // namespace

extern const Family ImageThreadFamily = {"threads", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
