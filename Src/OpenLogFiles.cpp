// SPDX-License-Identifier: MIT
#include "Src/OpenLogFiles.h"

#include "Src/LogFile.h"

#include <chrono>
#include <mutex>
#include <thread>
#include <utility>

namespace tvx
{

namespace
{

// Plain objects: files that a host has left may go after the module has begun to.
constinit std::mutex lock;
constinit LogFile* first = nullptr;
constinit bool isEnding = false;

// Empty where it takes a second, which no step under the lock does.
std::unique_lock<std::mutex> LockWithPatience() noexcept
{
    std::unique_lock<std::mutex> guard(lock, std::try_to_lock);
    for (int tries = 0; !guard && tries < 100; ++tries)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        static_cast<void>(guard.try_lock());
    }
    return guard;
}

}  // namespace

// Its destruction is the end.
struct OpenLogFiles::AtTheEnd
{
    ~AtTheEnd() { StopBuffering(); }
};

void OpenLogFiles::Add(LogFile& file) noexcept
{
    static const AtTheEnd atTheEnd;
    const std::lock_guard<std::mutex> guard(lock);
    if (isEnding)
        file.StopBuffering();
    file.next_ = std::exchange(first, &file);
}

void OpenLogFiles::Remove(const LogFile& file) noexcept
{
    const std::lock_guard<std::mutex> guard(lock);
    auto** place = &first;
    while (*place != &file)
        place = &(*place)->next_;
    *place = file.next_;
}

// No file goes meanwhile. The child of a fork may find the list taken by a thread that it does not have: what such a list
// holds is its parent's to write.
void OpenLogFiles::StopBuffering() noexcept
{
    const auto guard = LockWithPatience();
    if (!guard)
        return;
    isEnding = true;
    for (auto* file = first; file != nullptr; file = file->next_)
        file->StopBuffering();
}

}  // namespace tvx
