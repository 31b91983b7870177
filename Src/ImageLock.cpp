// SPDX-License-Identifier: MIT
#include "Src/ImageLock.h"

#include "Src/ThreadNumber.h"

namespace tvx
{

ImageLock::~ImageLock()
{
    for (auto* block = first_.next.load(std::memory_order_acquire); block != nullptr;)
        block = std::unique_ptr<Block>(block)->next.load(std::memory_order_acquire);
}

LockState ImageLock::GetState() const noexcept
{
    const auto* const hold = FindHold(FindThreadNumber());
    return hold == nullptr ? LockState::Unlocked : hold->state.load(std::memory_order_relaxed);
}

void ImageLock::LockRead() noexcept
{
    Lock(LockState::ReadLocked);
}

void ImageLock::LockWrite() noexcept
{
    Lock(LockState::WriteLocked);
}

void ImageLock::Unlock() noexcept
{
    if (auto* const hold = FindHold(FindThreadNumber()))
        EndHold(*hold);
}

// A hold is taken before the wait begins, so that nothing can fail once the lock is there.
void ImageLock::Lock(LockState wanted) noexcept
try
{
    const auto thread = GetThreadNumber();
    if (auto* const before = FindHold(thread))
    {
        if (before->state.load(std::memory_order_relaxed) == wanted)
            return;
        EndHold(*before);
    }
    auto& hold = TakeHold(thread);
    Wait(wanted);
    hold.state.store(wanted, std::memory_order_relaxed);
}
catch (...)  // want of memory, or of what the system waits with
{
    Unlock();
}

void ImageLock::Wait(LockState wanted)
{
    if (wanted == LockState::ReadLocked)
        mutex_.lock_shared();
    else
        mutex_.lock();
}

void ImageLock::EndHold(Hold& hold) noexcept
{
    const auto state = hold.state.exchange(LockState::Unlocked, std::memory_order_relaxed);
    hold.thread.store(0, std::memory_order_release);
    if (state == LockState::ReadLocked)
        mutex_.unlock_shared();
    if (state == LockState::WriteLocked)
        mutex_.unlock();
}

// Null for no thread's number, too.
ImageLock::Hold* ImageLock::FindHold(std::uint64_t thread) const noexcept
{
    if (thread == 0)
        return nullptr;
    for (auto* block = &first_; block != nullptr; block = block->next.load(std::memory_order_acquire))
    {
        for (auto& hold : block->holds)
        {
            if (hold.thread.load(std::memory_order_relaxed) == thread)
                return &hold;
        }
    }
    return nullptr;
}

ImageLock::Hold& ImageLock::TakeHold(std::uint64_t thread)
{
    for (auto* block = &first_;; block = &GetNext(*block))
    {
        for (auto& hold : block->holds)
        {
            std::uint64_t nobody = 0;
            if (hold.thread.compare_exchange_strong(nobody, thread, std::memory_order_acquire))
                return hold;
        }
    }
}

// The block behind block. Two threads may come first at once: one of them gets its own in, the other takes that.
ImageLock::Block& ImageLock::GetNext(Block& block)
{
    auto* next = block.next.load(std::memory_order_acquire);
    if (next != nullptr)
        return *next;
    auto made = std::make_unique<Block>();
    if (block.next.compare_exchange_strong(next, made.get(), std::memory_order_acq_rel))
        next = made.release();
    return *next;
}

}  // namespace tvx
