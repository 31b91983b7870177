// SPDX-License-Identifier: MIT
#include "Platform/Pages.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace tvx::Platform
{

namespace
{

// The large pages of the processors at hand; elsewhere it is only where memory begins.
constexpr std::size_t LargePage = std::size_t{2} * 1024 * 1024;

void Unmap(std::byte* begin, const std::byte* end) noexcept
{
    if (begin != end)
        munmap(begin, static_cast<std::size_t>(end - begin));
}

}  // namespace

// Room for one large page too many is asked for, so that one begins inside; what is left over goes back at once.
void* TakePages(std::size_t size) noexcept
{
    const auto smallPage = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const auto needed = (size + smallPage - 1) / smallPage * smallPage;
    if (needed < size || needed + LargePage < needed)
        return nullptr;
    void* const mapped = mmap(nullptr, needed + LargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED)
        return nullptr;
    auto* const begin = static_cast<std::byte*>(mapped);
    auto* const end = begin + needed + LargePage;
    auto* const pages = begin + (LargePage - reinterpret_cast<std::uintptr_t>(begin) % LargePage) % LargePage;
    Unmap(begin, pages);
    Unmap(pages + needed, end);
    madvise(pages, needed, MADV_HUGEPAGE);
    return pages;
}

void GiveBackPages(void* pages, std::size_t size) noexcept
{
    munmap(pages, size);
}

void OfferPages(void* pages, std::size_t size) noexcept
{
    madvise(pages, size, MADV_FREE);
}

}  // namespace tvx::Platform
