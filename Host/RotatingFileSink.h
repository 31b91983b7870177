// SPDX-License-Identifier: MIT
#pragma once

#include "Host/LogSink.h"

#include <cstddef>
#include <filesystem>

namespace tvx::host
{

// How much room a rotating log may take.
struct RotationLimits
{
    // The most old files that may be kept.
    static constexpr std::size_t MostFiles = 200000;

    std::size_t maxSize;   // of one file, in bytes, at least 1; a line longer than that stands in a file of its own
    std::size_t oldFiles;  // kept besides the current one, at most MostFiles; the oldest goes first
};

// A sink that adds each record to the file as one line of text in the form of FormatTextLine. When a line would make log.txt
// larger than allowed, log.txt becomes log.1.txt, log.1.txt becomes log.2.txt and so on, and log.txt begins anew. Where the
// system does not let a file be renamed, log.txt begins anew all the same, so that it never outgrows its limit.
// The file is made when it is missing; its folder is not.
// Fails: CannotRead when the file cannot be opened for writing, or for limits that are none.
Outcome<Ref<LogSink>> OpenRotatingFileSink(const std::filesystem::path& file, const RotationLimits& limits);

}  // namespace tvx::host
