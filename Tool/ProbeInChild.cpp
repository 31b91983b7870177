// SPDX-License-Identifier: MIT
#include "Tool/ProbeInChild.h"

#include "Host/ModuleFile.h"
#include "Platform/Environment.h"
#include "Tool/ChildCode.h"

namespace tvx::tool
{

Platform::ChildRun ProbeInChild(const std::string& file, bool json, std::chrono::seconds limit)
{
    std::vector<std::string> arguments = {"probe", "--child"};
    if (json)
        arguments.emplace_back("--json");
    arguments.emplace_back("--");
    arguments.push_back(file);
    return Platform::RunChild(Platform::GetProgramFile(), arguments, limit);
}

ExitCode GetExitCode(const std::string& file, const Platform::ChildRun& probe)
{
    if (const auto code = FindOwnCode(probe))
        return *code;
    Console::Complain("the process that probed " + host::DisplayName(file) + " " + DescribeEnd(probe));
    return probe.end == Platform::ChildRun::End::NotStarted ? CannotRead : Misbehaved;
}

}  // namespace tvx::tool
