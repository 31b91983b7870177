// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ILogger.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace tvx::host
{

// A record with what its event alone knows.
struct LoggedMessage
{
    ILogData& record;                            // borrowed
    std::chrono::system_clock::time_point time;  // when it was logged
    std::uint32_t thread;                        // the system's number of the one that logged
};

// The name of a LogLevel, such as INFO; null for every other number.
const char* FindLevelName(std::int32_t level);

// One line each, without its end, whatever bytes the texts hold.

// One JSON object, its members in this order: time, logger, level, source, scope, file, line, thread, message.
//   {"time":"2013-05-02T14:07:09.123Z","logger":"Main","level":"INFO","source":"Net","line":120,"thread":4412,"message":"ready"}
// The time is UTC. A level is its name, or its number when it has none. A text that is absent from the record is left out.
// Bytes that are no UTF-8 become the replacement character.
std::string FormatJsonLine(const LoggedMessage& message);

// For people: time in UTC, level, logger name, source and message.
//   2013-05-02T14:07:09.123Z INFO  [Main] [Net] ready
// A level without a name is its number. Absent texts are empty. Control characters are shown as \n, \r, \t or \x1B.
std::string FormatTextLine(const LoggedMessage& message);

}  // namespace tvx::host
