// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/IImage.h"

#include <latch>
#include <map>
#include <shared_mutex>
#include <thread>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

Ref<IImage> MakeImage()
{
    Ref<IImage> image;
    GetExport<IImageFactory>("com.talvere.general.tvx.GenericImageImplementation/1.0")
        ->Create(1, 1, ColorFormat::OneChannel, DataType::OneByte, 0, image.Receive());
    return image;
}

// What a program would write by itself: each thread knows which locks it holds, and how.
class PeerLock
{
public:
    ~PeerLock() { Unlock(); }

    void LockRead()
    {
        if (!holds.emplace(this, false).second)
            return;
        mutex_.lock_shared();
    }

    void LockWrite()
    {
        if (!holds.emplace(this, true).second)
            return;
        mutex_.lock();
    }

    void Unlock()
    {
        const auto hold = holds.find(this);
        if (hold == holds.end())
            return;
        const bool writing = hold->second;
        holds.erase(hold);
        if (writing)
            mutex_.unlock();
        else
            mutex_.unlock_shared();
    }

    bool IsLocked() const { return holds.find(this) != holds.end(); }

private:
    static inline thread_local std::map<const PeerLock*, bool> holds;  // true for the writer

    std::shared_mutex mutex_;
};

// Locks and unlocks with Lock, an operation of lock.
template <auto Lock, class Locked>
void Repeat(benchmark::State& state, Locked& lock)
{
    (lock.*Lock)();
    const bool held = lock.IsLocked();
    lock.Unlock();
    if (!held || lock.IsLocked())
        state.SkipWithError("the lock is held when it should not be, or not when it should");
    for (auto _ : state)
    {
        (lock.*Lock)();
        lock.Unlock();
    }
}

template <auto Lock>
void LockImage(benchmark::State& state, std::int64_t)
{
    const auto image = MakeImage();
    Repeat<Lock>(state, *image);
}

template <auto Lock>
void LockPeer(benchmark::State& state, std::int64_t)
{
    PeerLock lock;
    Repeat<Lock>(state, lock);
}

// While another thread reads, too.
template <class Locked>
void RepeatBesideAnother(benchmark::State& state, Locked& lock)
{
    std::latch reading(1);
    std::latch measured(1);
    std::jthread other(
        [&]
        {
            lock.LockRead();
            reading.count_down();
            measured.wait();
            lock.Unlock();
        });
    reading.wait();
    Repeat<&Locked::LockRead>(state, lock);
    measured.count_down();
}

void LockImageBesideAnother(benchmark::State& state, std::int64_t)
{
    const auto image = MakeImage();
    RepeatBesideAnother(state, *image);
}

void LockPeerBesideAnother(benchmark::State& state, std::int64_t)
{
    PeerLock lock;
    RepeatBesideAnother(state, lock);
}

// When this thread has locked as many images that are gone by now, some of them without being unlocked.
void LockAfterOthers(benchmark::State& state, std::int64_t count)
{
    for (std::int64_t made = 0; made < count; ++made)
    {
        const auto image = MakeImage();
        image->LockRead();
        if (made % 2 == 0)
            image->Unlock();
    }
    LockImage<&IImage::LockRead>(state, 0);
}

// While this thread holds as many other images.
void LockAmongOthers(benchmark::State& state, std::int64_t count)
{
    static const auto others = [count]
    {
        std::vector<Ref<IImage>> images;
        for (std::int64_t made = 0; made < count; ++made)
            images.push_back(MakeImage());
        return images;
    }();
    for (const auto& other : others)
        other->LockRead();
    LockImage<&IImage::LockRead>(state, 0);
    for (const auto& other : others)
        other->Unlock();
}

const Comparisons Rows = {
    {.name = "ImageLock/Read",
     .ours = LockImage<&IImage::LockRead>,
     .peer = "std::shared_mutex + map of each thread's holds",
     .theirs = LockPeer<&PeerLock::LockRead>,
     .goal = 1.0},
    {.name = "ImageLock/Write",
     .ours = LockImage<&IImage::LockWrite>,
     .peer = "std::shared_mutex + map of each thread's holds",
     .theirs = LockPeer<&PeerLock::LockWrite>,
     .goal = 1.0},
    {.name = "ImageLock/ReadBesideAnother",
     .ours = LockImageBesideAnother,
     .peer = "std::shared_mutex + map of each thread's holds",
     .theirs = LockPeerBesideAnother,
     .bound = Bound::None},
    {.name = "ImageLock/ReadAfterOthers",
     .size = 100'000,
     .ours = LockAfterOthers,
     .peer = "itself, without the others",
     .theirs = LockImage<&IImage::LockRead>,
     .goal = 1.15},
    {.name = "ImageLock/ReadAmongOthers",
     .size = 100'000,
     .ours = LockAmongOthers,
     .peer = "itself, without the others",
     .theirs = LockImage<&IImage::LockRead>,
     .goal = 1.15},
};

}  // namespace
