// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/WalkProcess.h"

#include "Host/ModuleFile.h"
#include "Platform/Environment.h"
#include "Tool/ChildCode.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace tvx::fuzz
{

namespace
{

using Sign = WalkRun::Sign;

// What a process may take beyond its time; one that takes longer hangs.
constexpr std::chrono::seconds Patience(5);

constexpr std::string_view Announcement = "seed ";

// A process without a code of its own crashed; one with another code than these two has had trouble that it told.
Sign GetSign(const Platform::ChildRun& run)
{
    if (run.end == Platform::ChildRun::End::NotStarted)
        throw std::runtime_error("a process for a walk " + tool::DescribeEnd(run));
    const auto code = tool::FindOwnCode(run);
    if (!code)
        return Sign::Crash;
    if (*code != tool::Ok && *code != tool::AnswerIsNo)
        throw std::runtime_error("a walk could not be done: " + host::MakeOneLine(run.errors));
    return *code == tool::Ok ? Sign::None : Sign::Difference;
}

WalkRun Judge(Platform::ChildRun run)
{
    WalkRun judged{GetSign(run), run.end, "", std::move(run.errors), 0, 0};
    std::istringstream lines(run.output);
    for (std::string line; std::getline(lines, line);)
    {
        if (!line.starts_with(Announcement))
        {
            judged.message = line;
            continue;
        }
        ++judged.walks;
        judged.lastSeed = std::strtoull(line.c_str() + Announcement.size(), nullptr, 10);
    }
    if (judged.sign == Sign::Crash)
        judged.message = "expected the walk to end, came that its process " + tool::DescribeEnd(run);
    return judged;
}

}  // namespace

WalkRun RunWalks(const std::filesystem::path& file, const Walk& walk, std::uint64_t seed, std::chrono::seconds time)
{
    return Judge(Platform::RunChild(Platform::GetProgramFile(),
                                    {"fuzz", "--child", walk.name, "--seed", std::to_string(seed), "--seconds",
                                     std::to_string(time.count()), "--", file.string()},
                                    time + Patience));
}

WalkRun RunReplay(const std::filesystem::path& file, const std::filesystem::path& replay,
                  std::chrono::milliseconds limit)
{
    return Judge(Platform::RunChild(
        Platform::GetProgramFile(),
        {"fuzz", "--child", "replay", "--in-process", "--reproduce", replay.string(), "--", file.string()}, limit));
}

std::string AnnounceWalk(std::uint64_t seed)
{
    return std::string(Announcement) + std::to_string(seed) + "\n";
}

}  // namespace tvx::fuzz
