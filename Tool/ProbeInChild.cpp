// SPDX-License-Identifier: MIT
#include "Tool/ProbeInChild.h"

#include "Host/ModuleFile.h"
#include "Platform/Environment.h"

namespace tvx::tool
{

namespace
{

std::string DescribeEnd(const Platform::ChildRun& probe)
{
    if (probe.end == Platform::ChildRun::End::TimedOut)
        return "did not answer in time";
    if (probe.end == Platform::ChildRun::End::Killed)
        return "crashed when it was probed: " + probe.reason;
    return "cannot be probed: " + probe.reason;
}

}  // namespace

Platform::ChildRun ProbeInChild(const std::string& file, bool json, std::chrono::seconds limit)
{
    std::vector<std::string> arguments = {"probe", "--in-process"};
    if (json)
        arguments.emplace_back("--json");
    arguments.emplace_back("--");
    arguments.push_back(file);
    return Platform::RunChild(Platform::GetProgramFile(), arguments, limit);
}

ExitCode GetExitCode(const std::string& file, const Platform::ChildRun& probe)
{
    if (probe.end == Platform::ChildRun::End::Exited)
        return static_cast<ExitCode>(probe.exitCode);
    Console::Complain(host::DisplayName(file) + " " + DescribeEnd(probe));
    return probe.end == Platform::ChildRun::End::NotStarted ? CannotRead : Misbehaved;
}

}  // namespace tvx::tool
