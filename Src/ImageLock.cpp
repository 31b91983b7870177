// SPDX-License-Identifier: MIT
#include "Src/ImageLock.h"

#include "Src/ThreadNumber.h"

#include <boost/thread/lock_guard.hpp>
#include <boost/thread/thread.hpp>

#include <algorithm>

namespace tvx
{

namespace
{

// What the word says: nobody holds the lock; or one thread does, whose number stands above the low bits with its state; or the
// list tells. Threads are numbered from 1 on, so that the three never look alike.
constexpr std::uint64_t Nobody = 0;
constexpr std::uint64_t SideBySide = 3;
constexpr unsigned LowBits = 2;
constexpr std::uint64_t LowMask = 3;

constexpr std::uint64_t Alone(std::uint64_t thread, LockState state) noexcept
{
    return thread << LowBits | static_cast<std::uint64_t>(state);
}

// 0 unless one thread is alone.
constexpr std::uint64_t GetThread(std::uint64_t word) noexcept
{
    return word >> LowBits;
}

constexpr LockState GetHeldState(std::uint64_t word) noexcept
{
    return static_cast<LockState>(word & LowMask);
}

// Null where the thread has none.
template <class Holds>
auto FindHold(Holds& holds, std::uint64_t thread) noexcept -> decltype(holds.data())
{
    const auto found =
        std::find_if(holds.begin(), holds.end(), [thread](const auto& hold) { return hold.thread == thread; });
    return found == holds.end() ? nullptr : &*found;
}

}  // namespace

LockState ImageLock::GetState() const noexcept
{
    const auto thread = GetThreadNumber();
    const auto word = word_.load(std::memory_order_acquire);
    if (GetThread(word) == thread)
        return GetHeldState(word);
    if (word != SideBySide)
        return LockState::Unlocked;
    const boost::lock_guard<boost::mutex> guard(list_);
    const auto* const hold = FindHold(holds_, thread);
    return hold == nullptr ? LockState::Unlocked : hold->state;
}

void ImageLock::Unlock() noexcept
{
    const auto thread = GetThreadNumber();
    auto word = word_.load(std::memory_order_acquire);
    if (GetThread(word) == thread &&
        word_.compare_exchange_strong(word, Nobody, std::memory_order_release, std::memory_order_acquire))
        return;
    if (word == SideBySide)  // perhaps only since just now
        Leave(thread);
}

void ImageLock::Lock(LockState wanted) noexcept
try
{
    const auto thread = GetThreadNumber();
    auto word = word_.load(std::memory_order_relaxed);
    if (word == Alone(thread, wanted))
        return;
    if (word == Nobody && word_.compare_exchange_strong(word, Alone(thread, wanted), std::memory_order_acquire))
        return;
    boost::unique_lock<boost::mutex> guard(list_);
    if (!LockAlone(thread, wanted))
        LockBesideOthers(guard, thread, wanted);
}
catch (...)  // want of memory
{
}

// Gives whether the lock is the thread's as wanted. Otherwise the word says "side by side": whoever was alone until now will
// find its hold in the list.
bool ImageLock::LockAlone(std::uint64_t thread, LockState wanted)
{
    for (auto word = word_.load(std::memory_order_acquire); word != SideBySide;)
    {
        // Nobody waits, so that the end of a hold and the beginning of the next one may be one step.
        const bool free = word == Nobody || GetThread(word) == thread;
        holds_.clear();
        if (!free)
            holds_.push_back({GetThread(word), GetHeldState(word)});
        if (word_.compare_exchange_strong(word, free ? Alone(thread, wanted) : SideBySide, std::memory_order_acq_rel,
                                          std::memory_order_acquire))
            return free;
    }
    return false;
}

// A place in the list is taken before the wait begins, so that nothing can fail once the lock is there.
void ImageLock::LockBesideOthers(boost::unique_lock<boost::mutex>& guard, std::uint64_t thread, LockState wanted)
{
    auto* const before = FindHold(holds_, thread);
    if (before == nullptr)
        holds_.push_back({thread, LockState::Unlocked});
    else if (before->state != wanted)
        EndHold(*before);
    else
        return;
    const boost::this_thread::disable_interruption undisturbed;
    while (!IsFreeFor(wanted))
    {
        writerWaits_ |= wanted == LockState::WriteLocked;
        released_.wait(guard);
    }
    FindHold(holds_, thread)->state = wanted;  // the list has changed meanwhile
}

void ImageLock::Leave(std::uint64_t thread) noexcept
{
    const boost::lock_guard<boost::mutex> guard(list_);
    auto* const hold = FindHold(holds_, thread);
    if (hold == nullptr)
        return;
    EndHold(*hold);
    *hold = holds_.back();
    holds_.pop_back();
    if (holds_.empty())
        word_.store(Nobody, std::memory_order_release);
}

// The last of the readers, as the writer, lets in whoever comes first.
void ImageLock::EndHold(Hold& hold) noexcept
{
    hold.state = LockState::Unlocked;
    if (IsHeld())
        return;
    writerWaits_ = false;
    released_.notify_all();
}

bool ImageLock::IsFreeFor(LockState wanted) const noexcept
{
    const bool written = std::any_of(holds_.begin(), holds_.end(),
                                     [](const Hold& hold) { return hold.state == LockState::WriteLocked; });
    return wanted == LockState::ReadLocked ? !written && !writerWaits_ : !IsHeld();
}

bool ImageLock::IsHeld() const noexcept
{
    return std::any_of(holds_.begin(), holds_.end(),
                       [](const Hold& hold) { return hold.state != LockState::Unlocked; });
}

}  // namespace tvx
