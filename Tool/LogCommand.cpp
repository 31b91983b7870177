// SPDX-License-Identifier: MIT
#include "Host/AsciiCase.h"
#include "Host/LogLine.h"
#include "Host/Outcome.h"
#include "Tool/LogSession.h"

#include <charconv>
#include <ios>
#include <memory>

namespace tvx::tool
{

namespace
{

// Replaces the name of a level by its number. Gives a complaint about what is neither.
std::string ReplaceLevelName(std::string& text)
{
    for (std::int32_t level = LogLevel::Trace; level <= LogLevel::Fatal; ++level)
    {
        if (host::IsSameWord(text, host::FindLevelName(level)))
            text = std::to_string(level);
    }
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failed] = std::from_chars(text.data(), end, number);
    return failed == std::errc() && stop == end ? "" : host::MakeOneLine("\"" + text + "\" is no level");
}

ExitCode Log(const LogOptions& options)
{
    std::ios_base::sync_with_stdio(false);  // gives the streams buffers of their own
    LogSession session(options);
    const auto opened = session.Open();
    return opened == Ok ? session.LogStandardInput() : opened;
}

}  // namespace

void AddLogCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<LogOptions>();
    auto* const log = program.add_subcommand("log", "Log the lines of standard input through the module's logger");
    log->add_option("--config", options->configuration, "A JSON or INI file with the logger's settings")
        ->type_name("FILE");
    log->add_option("--name", options->name, "The logger name, which chooses the settings; otherwise Main")
        ->type_name("NAME");
    log->add_option("--level", options->level, "One of these or a number; otherwise info")
        ->transform(CLI::Validator(ReplaceLevelName, "{trace,debug,info,warn,error,fatal}"))
        ->type_name("LEVEL");
    log->add_option("--source", options->source, "Who speaks; otherwise tvx")->type_name("SOURCE");
    log->add_option("--json", options->json, "Add every message, written or not, to FILE as JSON lines")
        ->type_name("FILE");
    options->search.AddTo(*log);
    log->callback([options, &code] { code = Log(*options); });
}

}  // namespace tvx::tool
