// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tvx::host
{

// How many objects may lie in one another in a document, when it is written and when it is read. An object that
// contains itself ends here, long before the stack does.
inline constexpr std::size_t MaxObjectDepth = 256;

// The way from the document's top to the place that is being written or read: a level for each object and each
// sequence. A level tells in depth how many objects it lies in.
template <class Level>
using JsonLevels = std::vector<Level>;

// Keeps the level of one object open as long as it lives, and closes with it the sequences left open above it.
template <class Level>
class OpenObject
{
public:
    OpenObject(JsonLevels<Level>& levels, Level level) : levels_(levels), below_(levels.size())
    {
        levels_.push_back(std::move(level));
    }

    ~OpenObject() { levels_.erase(levels_.begin() + static_cast<std::ptrdiff_t>(below_), levels_.end()); }

    OpenObject(const OpenObject&) = delete;
    OpenObject& operator=(const OpenObject&) = delete;

    bool HasOpenSequence() const { return levels_.size() > below_ + 1; }

private:
    JsonLevels<Level>& levels_;
    std::size_t below_;
};

// Whether an object is just being written or read: then the document may be neither begun nor ended.
template <class Level>
bool IsInsideObject(const JsonLevels<Level>& levels)
{
    return !levels.empty() && levels.back().depth > 0;
}

}  // namespace tvx::host
