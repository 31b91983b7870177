// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoggerBench.h"

#include "Platform/ThreadId.h"

#include <algorithm>
#include <cstdint>

namespace tvx::check
{

namespace
{

bool BeginsWithTime(std::string_view line)
{
    constexpr std::string_view pattern = "0000-00-00 00:00:00";
    static_assert(pattern.size() == TimeLength);
    const auto fits = [](char character, char model)
    { return model == '0' ? character >= '0' && character <= '9' : character == model; };
    return line.size() >= TimeLength && std::equal(pattern.begin(), pattern.end(), line.begin(),
                                                   [&](char model, char character) { return fits(character, model); });
}

}  // namespace

std::string TraceLine(std::string_view shownFile)
{
    return " TRACE [Net] [Connect] [" + std::string(shownFile) +
           ":120] [ThreadID=" + std::to_string(Platform::GetCurrentThreadId()) + "] opened\n";
}

std::string WithoutTimes(std::string_view lines)
{
    std::string texts;
    while (!lines.empty())
    {
        const auto line = lines.substr(0, lines.find('\n') + 1);
        const auto whole = line.empty() ? lines : line;
        texts.append(BeginsWithTime(whole) ? "" : "(no time) ");
        texts.append(BeginsWithTime(whole) ? whole.substr(TimeLength) : whole);
        lines.remove_prefix(whole.size());
    }
    return texts;
}

std::string AbsentImport(std::string_view name)
{
    return "LibManager: NULL object proxy returned for \"" + std::string(name) + "\".\n";
}

std::string LoggerBench::Log(const Message& message)
{
    Result result = TVX_E_FAIL;
    auto output = trial_.TakeOutput(
        [&]
        {
            result = logger_->Log(message.logger, message.level, message.source, message.scope, message.file,
                                  message.line, message.text);
        });
    trial_.Gives("Log", result, TVX_OK);
    return output;
}

void LoggerBench::Writes(const std::string& what, const Message& message, std::string_view expected)
{
    trial_.Equal("what " + what + " writes to standard output, without the time,", WithoutTimes(Log(message)),
                 expected);
}

void LoggerBench::Open(const char* name)
{
    SetLevel(name, INT32_MIN);
}

void LoggerBench::SetLevel(const char* name, std::int32_t level)
{
    trial_.Gives("SetLevel", logger_->SetLevel(name, level), TVX_OK);
}

std::int32_t LoggerBench::GetLevel(const char* name)
{
    std::int32_t level = -99;
    trial_.Gives("GetLevel", logger_->GetLevel(name, &level), TVX_OK);
    return level;
}

void LoggerBench::Configure(const Ref<ScriptedConfiguration>& configuration)
{
    const auto configurable = trial_.QueryAs<IConfigurable>(logger_, "the logger");
    trial_.Gives("SetConfiguration", configurable->SetConfiguration(configuration.Get()), TVX_OK);
}

Ref<ScriptedConfiguration> LoggerBench::Configure(ScriptedConfiguration::Values values)
{
    auto configuration = MakeRef<ScriptedConfiguration>(std::move(values));
    Configure(configuration);
    return configuration;
}

void LoggerBench::Import(const char* name, const Ref<IObjectBase>& object)
{
    ImportBare(name, MakeRef<ImportProxy>(object).Get());
}

void LoggerBench::ImportBare(const char* name, IObjectBase* object)
{
    trial_.Gives("SetImport", GetImports()->SetImport(name, object), TVX_OK);
}

Ref<RecordingCrashDumpServer> LoggerBench::ImportCrashDumpServer(Result result)
{
    auto server = MakeRef<RecordingCrashDumpServer>(result);
    Import("CrashDumpServer", server);
    return server;
}

Ref<IImportsContainer> LoggerBench::GetImports()
{
    return trial_.QueryAs<IImportsContainer>(logger_, "the logger");
}

MessageListener::MessageListener(const LoggerBench& logger, std::uint64_t cookie) : logger_(logger.Get())
{
    handler_->action = [this](const SeenEvent& event)
    {
        auto* const record = reinterpret_cast<ILogData*>(static_cast<std::uintptr_t>(event.param));
        messages.push_back({event, Ref<ILogData>(record)});
        const auto seen = messages.back();
        if (action)
            action(seen);
    };
    logger_->AdviseMessageLogged(handler_.Get(), cookie, true);
}

std::vector<std::uint64_t> MessageListener::GetCookies() const
{
    std::vector<std::uint64_t> cookies;
    for (const auto& message : messages)
        cookies.push_back(message.event.userData);
    return cookies;
}

MessageListener::~MessageListener()
{
    logger_->AdviseMessageLogged(handler_.Get(), 0, false);
}

}  // namespace tvx::check
