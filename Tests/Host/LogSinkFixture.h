// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Host/LogSink.h"
#include "Src/CLogData.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tvx::test
{

// Tells a handler of a message of the logger "Main".
inline Result Tell(IEventHandler& handler, const char* message)
{
    const auto record = MakeRef<CLogData>(LogEntry{"Main", LogLevel::Info, "Net", nullptr, nullptr, 1, message});
    const auto param = reinterpret_cast<std::uintptr_t>(static_cast<ILogData*>(record.Get()));
    return handler.OnEvent(nullptr, ILogger::Id, "MessageLogged", param, 0);
}

inline std::vector<std::string> ReadLines(const std::filesystem::path& file)
{
    std::vector<std::string> lines;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// Lets no file of this process grow beyond a size, as long as it lives: a disk with little room.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int);
};

}  // namespace tvx::test
