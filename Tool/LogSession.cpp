// SPDX-License-Identifier: MIT
#include "Tool/LogSession.h"

#include "Host/CrashDumpServer.h"
#include "Host/JsonLinesSink.h"
#include "Host/LoggerConfigurationLint.h"
#include "Tool/InputLines.h"

#include <algorithm>
#include <iostream>

namespace tvx::tool
{

namespace
{

constexpr const char LoggerExport[] = "com.talvere.general.tvx.BasicLogger/1.0";
constexpr const char CrashDumpContract[] = "com.talvere.general.tvx.contract.CrashDumpServer/1.0";

bool Ends(const host::LoggerSectionMeaning& section)
{
    return section.expandedFilename.has_value();
}

}  // namespace

LogSession::~LogSession()
{
    const Console console;
    if (sink_)
        logger_->AdviseMessageLogged(sink_.Get(), 0, false);
    logger_ = nullptr;
    manager_.reset();
}

ExitCode LogSession::Open()
{
    const Console console;
    const auto logger = Connect();
    if (!logger)
        return console.Fail(logger.GetError());
    logger_ = *logger;
    if (options_.json.empty())
        return Ok;
    const auto sink = Subscribe();
    return sink ? Ok : console.Fail(sink.GetError());
}

// Lines are shown before more input is waited for: whoever watches sees each one soon, and a file costs one write for many.
ExitCode LogSession::LogStandardInput()
{
    auto& output = Platform::GetStandardOutput();
    std::uint32_t number = 0;
    const auto log = [&](const std::string& line)
    {
        logger_->Log(options_.name.c_str(), options_.level, options_.source.c_str(), "log", "stdin", ++number,
                     line.c_str());
    };
    ReadLines(std::cin, log, [&] { return static_cast<bool>(output.flush()); });
    if (!output)
        return Console::FailForOutput();
    const auto problem = sink_ ? sink_->GetFirstProblem() : "";
    if (std::cin.bad())
        Console::Complain("standard input cannot be read");
    if (!problem.empty())
        Console::Complain(problem);
    return std::cin.bad() || !problem.empty() ? CannotRead : Ok;
}

// The configuration comes first: a logger name keeps the settings of its first use, and being connected can be that.
host::Outcome<Ref<ILogger>> LogSession::Connect()
{
    manager_ = std::make_unique<host::LibraryManager>(options_.search.MakeCatalog());
    manager_->Offer(CrashDumpContract, Ref<IObjectBase>(MakeRef<host::CrashDumpServer>()));
    if (!options_.configuration.empty())
    {
        const auto configuration = ReadConfiguration();
        if (!configuration)
            return configuration.GetError();
        manager_->Configure(*configuration);
    }
    return manager_->GetExportAs<ILogger>(LoggerExport);
}

// Complains of what is dangerous. A configuration with which the logger would never come to an end is refused.
host::Outcome<Ref<IConfiguration>> LogSession::ReadConfiguration() const
{
    const auto configuration = host::OpenConfiguration(options_.configuration);
    if (!configuration)
        return configuration.GetError();
    const auto report = host::LintLoggerConfiguration(**configuration);
    for (const auto& warning : report.warnings)
        Console::Complain(warning);
    if (!std::all_of(report.sections.begin(), report.sections.end(), Ends))
        return host::MakeError(host::ErrorKind::BadSettings,
                               options_.configuration + " would keep the logger busy for ever");
    return Ref<IConfiguration>(*configuration);
}

host::Outcome<Ref<host::LogSink>> LogSession::Subscribe()
{
    auto sink = host::OpenJsonLinesSink(options_.json);
    if (!sink)
        return sink;
    sink_ = *sink;
    logger_->AdviseMessageLogged(sink_.Get(), 0, true);
    return sink;
}

}  // namespace tvx::tool
