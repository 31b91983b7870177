// SPDX-License-Identifier: MIT
#include "Src/PixelMemory.h"

#include "Platform/Pages.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <new>
#include <utility>

namespace tvx
{

namespace
{

constexpr std::size_t MegaByte = std::size_t{1024} * 1024;
constexpr std::size_t Large = 4 * MegaByte;
constexpr std::size_t MostKept = 128 * MegaByte;

constexpr bool IsLarge(std::size_t size) noexcept
{
    return size >= Large;
}

// The memory that is kept. A plain object: images that a host has left may go after the module has begun to. Nobody waits for
// it: the child of a fork may find it taken by a thread that it does not have.
struct Shelf
{
    std::mutex lock;
    void* pages = nullptr;
    std::size_t size = 0;
    std::atomic<bool> isClosed{false};
};

constinit Shelf shelf;

// Gives what is kept to the caller, when it is there and of that size; 0 stands for any.
std::pair<void*, std::size_t> TakeKept(std::size_t size) noexcept
{
    const std::unique_lock<std::mutex> guard(shelf.lock, std::try_to_lock);
    if (!guard || shelf.pages == nullptr || (size != 0 && shelf.size != size))
        return {};
    return {std::exchange(shelf.pages, nullptr), std::exchange(shelf.size, 0)};
}

void FreeKept() noexcept
{
    const auto [pages, size] = TakeKept(0);
    if (pages != nullptr)
        Platform::GiveBackPages(pages, size);
}

// Its destruction is the module's unloading.
struct Closing
{
    ~Closing()
    {
        shelf.isClosed = true;
        FreeKept();
    }
};

// In exchange for what was kept before; gives that, or what cannot be kept.
std::pair<void*, std::size_t> Keep(void* pages, std::size_t size) noexcept
{
    static const Closing closing;
    if (size > MostKept)
        return {pages, size};
    Platform::OfferPages(pages, size);
    const std::unique_lock<std::mutex> guard(shelf.lock, std::try_to_lock);
    if (!guard || shelf.isClosed)
        return {pages, size};
    return {std::exchange(shelf.pages, pages), std::exchange(shelf.size, size)};
}

void* TakeLarge(std::size_t size, Content content) noexcept
{
    if (content == Content::Anything)
    {
        if (void* const kept = TakeKept(size).first)
            return kept;
    }
    return Platform::TakePages(size);
}

void* TakeOnce(std::size_t size, Content content) noexcept
{
    if (IsLarge(size))
        return TakeLarge(size, content);
    return content == Content::Zeros ? std::calloc(size, 1) : std::malloc(size);
}

// What is kept is no reason to have no memory.
void* Take(std::size_t size, Content content) noexcept
{
    if (void* const memory = TakeOnce(size, content))
        return memory;
    FreeKept();
    return TakeOnce(size, content);
}

}  // namespace

Pixels AllocatePixels(std::size_t size, Content content)
{
    void* const memory = Take(size, content);
    if (memory == nullptr)
        throw std::bad_alloc();
    return Pixels(static_cast<std::byte*>(memory), PixelsFreeing{size});
}

void PixelsFreeing::operator()(std::byte* pixels) const noexcept
{
    if (!IsLarge(size))
    {
        std::free(pixels);
        return;
    }
    const auto [pages, freed] = Keep(pixels, size);
    if (pages != nullptr)
        Platform::GiveBackPages(pages, freed);
}

}  // namespace tvx
