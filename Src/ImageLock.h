// SPDX-License-Identifier: MIT
#pragma once

#include <boost/thread/shared_mutex.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

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
class ImageLock
{
public:
    ImageLock() = default;
    ~ImageLock();
    ImageLock(const ImageLock&) = delete;
    ImageLock& operator=(const ImageLock&) = delete;

    // How the calling thread holds the lock.
    LockState GetState() const noexcept;

    // Make the calling thread a reader or the writer. A hold of the other kind ends before the wait begins. Without memory the
    // thread ends up without a hold.
    void LockRead() noexcept;
    void LockWrite() noexcept;

    // Ends the calling thread's hold, if it has one.
    void Unlock() noexcept;

private:
    // The hold of one thread. Only that thread changes it, but for taking a free one.
    struct Hold
    {
        std::atomic<std::uint64_t> thread{0};  // 0 while free
        std::atomic<LockState> state{LockState::Unlocked};
    };

    // As many readers at once are rarely more; a further block serves those.
    struct Block
    {
        Hold holds[8];
        std::atomic<Block*> next{nullptr};
    };

    static Block& GetNext(Block& block);

    Hold* FindHold(std::uint64_t thread) const noexcept;
    Hold& TakeHold(std::uint64_t thread);
    void EndHold(Hold& hold) noexcept;
    void Wait(LockState wanted);
    void Lock(LockState wanted) noexcept;

    boost::shared_mutex mutex_;
    mutable Block first_;
};

}  // namespace tvx
