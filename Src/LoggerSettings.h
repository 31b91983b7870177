// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IConfigurable.h"
#include "Interfaces/ILogger.h"
#include "Src/LogFile.h"

#include <memory>
#include <string>
#include <string_view>

namespace tvx
{

// Where the messages of one logger name go. The initial values are those of a logger without configuration.
struct LoggerSettings
{
    std::int32_t minLevel = LogLevel::Info;
    bool toStdOut = true;
    bool toFile = false;
    std::int32_t logFlushThreshold = 200;
    std::string filename = "log.txt";  // expanded when it came from a configuration
    std::shared_ptr<LogFile> stream;   // shared by all who name the same file; empty when toFile was false at creation
    std::int32_t linesSinceFlush = 0;

    bool HasOpenFile() const noexcept { return toFile && stream && stream->IsOpen(); }

    // Whether an output takes messages of the level.
    bool Takes(std::int32_t level) const noexcept { return level >= minLevel && (toStdOut || HasOpenFile()); }
};

// Reads the section of a configuration over settings. What is absent there stays as it is.
void ReadSection(IConfiguration& config, std::string_view section, LoggerSettings& settings);

// The text with each $NAME replaced by the environment variable of that name, or by nothing where there is none. A name is as
// many letters, digits and underscores as follow the dollar sign. The search begins anew after each replacement, so that a
// value is expanded in its turn; a variable that refers to itself therefore never comes to an end.
std::string ExpandEnvironment(std::string text);

}  // namespace tvx
