// SPDX-License-Identifier: MIT
#pragma once

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/mutex.hpp>

#include <atomic>
#include <cstdint>
#include <vector>

namespace tvx
{

enum class LockState : std::uint8_t
{
    Unlocked,
    ReadLocked,
    WriteLocked,
};

// What one image waits on, and how each thread holds it. Holds are not counted. Any thread; a thread that ends keeps its hold,
// and an object that is destroyed takes all holds along.
//
// A thread that comes alone puts its whole hold into one word, and takes it out again. When a second one comes, that hold is
// moved to the list of those who stand side by side, and the word says so; when the last of them has gone, the next one is
// alone again. Word and list say who holds the lock, and nothing else does: no mutex is ever locked by one thread and unlocked
// by another.
class ImageLock
{
public:
    ImageLock() = default;
    ImageLock(const ImageLock&) = delete;
    ImageLock& operator=(const ImageLock&) = delete;

    // How the calling thread holds the lock.
    LockState GetState() const noexcept;

    // Make the calling thread a reader or the writer. A hold of the other kind ends before the wait begins. Without memory the
    // thread ends up without a hold.
    void LockRead() noexcept { Lock(LockState::ReadLocked); }
    void LockWrite() noexcept { Lock(LockState::WriteLocked); }

    // Ends the calling thread's hold, if it has one.
    void Unlock() noexcept;

private:
    // Of a thread that stands beside others; unlocked while it waits.
    struct Hold
    {
        std::uint64_t thread;
        LockState state;
    };

    void Lock(LockState wanted) noexcept;
    bool LockAlone(std::uint64_t thread, LockState wanted);
    void LockBesideOthers(boost::unique_lock<boost::mutex>& guard, std::uint64_t thread, LockState wanted);
    void Leave(std::uint64_t thread) noexcept;
    void EndHold(Hold& hold) noexcept;
    bool IsFreeFor(LockState wanted) const noexcept;
    bool IsHeld() const noexcept;

    std::atomic<std::uint64_t> word_{0};
    // Guards what follows, and the word from where it says "side by side" to where it ends that.
    mutable boost::mutex list_;
    boost::condition_variable released_;
    std::vector<Hold> holds_;   // empty unless the word says "side by side"
    bool writerWaits_ = false;  // so that readers who come later do not keep it waiting for good
};

}  // namespace tvx
