// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Configuration.h"
#include "Host/VariableExpansion.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tvx::host
{

// Where the logger takes a value from.
enum class ValueOrigin
{
    BuiltIn,  // nobody says it
    Default,  // the section Default says it
    Section,  // the logger name's own section says it
};

// A value and where it comes from.
template <class T>
struct OriginatedValue
{
    T value;                                    // what the logger goes by
    ValueOrigin origin = ValueOrigin::BuiltIn;  // who says it
};

// What the logger does for one logger name. The initial values are the built-in ones.
struct LoggerSectionMeaning
{
    std::string name;                           // the logger name; Default for the section that all others build on
    OriginatedValue<std::int32_t> minLevel{3};  // messages below it are not written
    OriginatedValue<bool> toStdOut{true};       // whether to standard output
    OriginatedValue<bool> toFile{false};        // whether to the file
    OriginatedValue<std::int32_t> logFlushThreshold{200};    // the file is flushed after so many lines
    OriginatedValue<std::string> filename{"log.txt"};        // as written
    std::optional<std::string> expandedFilename{"log.txt"};  // nothing when its expansion never ends
};

// What a configuration means to the logger, and what in it is dangerous.
struct LoggerConfigurationReport
{
    std::vector<LoggerSectionMeaning>
        sections;                       // Default first, also when it is absent; then all that have keys, by name
    std::vector<std::string> warnings;  // one line each, with the file's name
};

// Reads a configuration as the logger reads it, section by section. It warns of:
//   a variable that refers to itself, so that the logger never ends;
//   an unset or empty variable whose absence turns a name into one that begins at the root;
//   ${X} and %X%, which the logger leaves as they are, and a name of which nothing is left;
//   two spellings of one file among the sections that write to files: the second to be opened empties what the first wrote;
//   keys that look like misspelt ones of the logger, one of its keys outside all sections, and a misspelt section Default;
//   values of another type than their key has, and a MinLevel that is no level.
LoggerConfigurationReport LintLoggerConfiguration(Configuration& configuration,
                                                  const ReadVariable& readVariable = ReadEnvironmentVariable);

}  // namespace tvx::host
