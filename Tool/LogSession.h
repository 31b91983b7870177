// SPDX-License-Identifier: MIT
#pragma once

#include "Host/LibraryManager.h"
#include "Host/LogSink.h"
#include "Tool/Commands.h"

#include <memory>
#include <string>

namespace tvx::tool
{

struct LogOptions
{
    SearchOptions search;
    std::string configuration;  // a file; empty for none
    std::string name = "Main";
    std::int32_t level = LogLevel::Info;
    std::string source = "tvx";
    std::string json;  // a file; empty for none
};

// The module's logger, from its loading to its unloading. What modules say at these two moments is kept aside; in between
// standard output belongs to the logger.
class LogSession
{
public:
    // The options are borrowed.
    explicit LogSession(const LogOptions& options) : options_(options) {}
    ~LogSession();
    LogSession(const LogSession&) = delete;
    LogSession& operator=(const LogSession&) = delete;

    // Both complain when they do not give Ok.
    ExitCode Open();
    ExitCode LogStandardInput();

private:
    host::Outcome<Ref<ILogger>> Connect();
    host::Outcome<Ref<IConfiguration>> ReadConfiguration() const;
    host::Outcome<Ref<host::LogSink>> Subscribe();

    const LogOptions& options_;
    std::unique_ptr<host::LibraryManager> manager_;
    Ref<ILogger> logger_;
    Ref<host::LogSink> sink_;  // null unless JSON lines are wanted
};

}  // namespace tvx::tool
