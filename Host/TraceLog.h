// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvx::host
{

// Where the lines of a life tracer go, and what it found so far. Any thread.
class TraceLog
{
public:
    using WriteLine = std::function<void(std::string_view line)>;

    explicit TraceLog(WriteLine write) : write_(std::move(write)) {}

    void Write(const std::string& line) const { write_("LifeTracer: " + line); }

    // Nothing that goes wrong here changes the call that is found fault with.
    void AddFinding(const std::string& finding) noexcept
    try
    {
        {
            const std::lock_guard<std::mutex> guard(lock_);
            findings_.push_back(finding);
        }
        Write(finding);
    }
    catch (...)
    {
    }

    // The same with a text that makeText makes, for callers that must not throw.
    template <class MakeText>
    void AddFindingOf(MakeText&& makeText) noexcept
    try
    {
        AddFinding(makeText());
    }
    catch (...)  // want of memory
    {
    }

    std::vector<std::string> GetFindings() const
    {
        const std::lock_guard<std::mutex> guard(lock_);
        return findings_;
    }

private:
    const WriteLine write_;
    mutable std::mutex lock_;
    std::vector<std::string> findings_;
};

}  // namespace tvx::host
