// SPDX-License-Identifier: MIT
#include "Src/PixelMemory.h"

#include "Platform/Pages.h"

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

// The memory that is kept. A plain object: images that a host has left may go after the module has begun to.
struct Shelf
{
    std::mutex lock;
    void* pages = nullptr;
    std::size_t size = 0;
    bool isClosed = false;
};

constinit Shelf shelf;

// Gives what is kept to the caller, when it is there and of that size; 0 stands for any.
std::pair<void*, std::size_t> TakeKept(std::size_t size) noexcept
{
    const std::lock_guard<std::mutex> guard(shelf.lock);
    if (shelf.pages == nullptr || (size != 0 && shelf.size != size))
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
        {
            const std::lock_guard<std::mutex> guard(shelf.lock);
            shelf.isClosed = true;
        }
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
    const std::lock_guard<std::mutex> guard(shelf.lock);
    if (shelf.isClosed)
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
    if (void* const pages = Platform::TakePages(size))
        return pages;
    FreeKept();
    return Platform::TakePages(size);
}

void* Take(std::size_t size, Content content) noexcept
{
    if (IsLarge(size))
        return TakeLarge(size, content);
    return content == Content::Zeros ? std::calloc(size, 1) : std::malloc(size);
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
