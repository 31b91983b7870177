// SPDX-License-Identifier: MIT
#include "Src/OpenLogFiles.h"

#include "Src/LogFile.h"

#include <mutex>
#include <utility>

namespace tvx
{

namespace
{

// Plain objects: files that a host has left may go after the module has begun to.
constinit std::mutex lock;
constinit LogFile* first = nullptr;
constinit bool isEnding = false;

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

// No file goes meanwhile.
void OpenLogFiles::StopBuffering() noexcept
{
    const std::lock_guard<std::mutex> guard(lock);
    isEnding = true;
    for (auto* file = first; file != nullptr; file = file->next_)
        file->StopBuffering();
}

}  // namespace tvx
