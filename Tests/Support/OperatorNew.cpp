// SPDX-License-Identifier: MIT
#include "Tests/Support/FailingMemory.h"

#include <cstdlib>
#include <new>

// The program's own allocation functions, in all forms that may be mixed, so that no sanitizer sees one of its own paired
// with one of these. Memory itself comes from malloc, where the sanitizers still watch it.
namespace
{

void* Allocate(std::size_t size) noexcept
{
    auto& memory = tvx::test::threadMemory;
    if (memory.paused)
        return std::malloc(size == 0 ? 1 : size);
    const auto number = memory.allocations++;
    if (number < memory.failFrom || number >= memory.failUntil)
        return std::malloc(size == 0 ? 1 : size);
    ++memory.failures;
    return nullptr;
}

void* AllocateOrThrow(std::size_t size)
{
    void* const allocated = Allocate(size);
    if (allocated == nullptr)
        throw std::bad_alloc();
    return allocated;
}

}  // namespace

void* operator new(std::size_t size)
{
    return AllocateOrThrow(size);
}

void* operator new[](std::size_t size)
{
    return AllocateOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
