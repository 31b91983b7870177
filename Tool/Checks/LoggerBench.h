// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IImportsContainer.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/LoggerDoubles.h"
#include "Tool/Checks/Objects.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::check
{

// One message, with values for what a check does not care about.
struct Message
{
    const char* logger = "Main";
    std::int32_t level = LogLevel::Info;
    const char* source = "Net";
    const char* scope = "Connect";
    const char* file = "Socket.cpp";
    std::uint32_t line = 120;
    const char* text = "opened";
};

// What a message without changes is written as, without its time.
constexpr std::string_view InfoLine = " INFO  [Net] opened\n";

constexpr std::size_t TimeLength = 19;  // 2013-05-02 14:07:09

// A trace without changes from a file, as this thread writes it.
std::string TraceLine(std::string_view shownFile);

// The lines without their times. A line that begins with no time is marked as such.
std::string WithoutTimes(std::string_view lines);

// The line that the lookup of an import that was never set writes.
std::string AbsentImport(std::string_view name);

// The logger of the module, which every check finds fresh, and the ways to use it.
class LoggerBench
{
public:
    explicit LoggerBench(Trial& trial) : trial_(trial), logger_(trial.Get<ILogger>(LoggerExport)) {}

    ILogger* operator->() const { return logger_.Get(); }
    ILogger* Get() const { return logger_.Get(); }

    // Logs the message, which has to give 0, and gives what that wrote to standard output.
    std::string Log(const Message& message);

    // Logs the message, which has to write exactly this behind the time.
    void Writes(const std::string& what, const Message& message, std::string_view expected);

    // Sets the lowest level there is for the name.
    void Open(const char* name);

    void SetLevel(const char* name, std::int32_t level);
    std::int32_t GetLevel(const char* name);

    // Gives the logger a configuration, which it has to take.
    void Configure(const Ref<ScriptedConfiguration>& configuration);
    Ref<ScriptedConfiguration> Configure(ScriptedConfiguration::Values values);

    // Imports an object behind a proxy, as a host does, or as it is.
    void Import(const char* name, const Ref<IObjectBase>& object);
    void ImportBare(const char* name, IObjectBase* object);

    // With it the first use of a name that logs to a file writes nothing.
    Ref<RecordingCrashDumpServer> ImportCrashDumpServer(Result result = TVX_OK);

    Ref<IImportsContainer> GetImports();

private:
    Trial& trial_;
    Ref<ILogger> logger_;
};

// What a handler was told of one message. The record is kept, and with it its texts.
struct SeenMessage
{
    SeenEvent event;
    Ref<ILogData> record;
};

// Hears "MessageLogged" as long as it lives, and runs an action of the check's own, if there is one.
class MessageListener
{
public:
    explicit MessageListener(const LoggerBench& logger, std::uint64_t cookie = 0);
    ~MessageListener();
    MessageListener(const MessageListener&) = delete;
    MessageListener& operator=(const MessageListener&) = delete;

    IEventHandler* GetHandler() const { return handler_.Get(); }
    std::vector<std::uint64_t> GetCookies() const;

    std::vector<SeenMessage> messages;
    std::function<void(const SeenMessage&)> action;

private:
    Ref<ILogger> logger_;
    Ref<RecordingHandler> handler_ = MakeRef<RecordingHandler>();
};

}  // namespace tvx::check
