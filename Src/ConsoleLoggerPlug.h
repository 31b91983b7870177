// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/ConfigurableImpl.h"
#include "Helpers/ImportsContainerImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/ILogger.h"
#include "Src/LogEntry.h"
#include "Src/LoggerSettings.h"
#include "Src/TimeStamp.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace tvx
{

// The logger export: writes to standard output and to files, as the configuration says for each logger name. One thread at a
// time; no lock is taken, so a host that logs from several threads lets them in one by one.
//
// A logger name keeps the settings that it was first used with. A class derived from it that overrides FireMessageLogged sees
// every message.
class CBasicLogger
    : public ClassImpl<CBasicLogger, ILogger, ConfigurableImpl<CBasicLogger>, ImportsContainerImpl<CBasicLogger>>,
      public Singleton<CBasicLogger, ILogger>
{
public:
    using Interfaces = InterfaceList<ILogger, IObject, IObjectBase, IConfigurable, IImportsContainer>;

    CBasicLogger() = default;

    Result Log(const char* loggerName, std::int32_t level, const char* source, const char* scope, const char* file,
               std::uint32_t line, const char* message) override;
    Result SetLevel(const char* loggerName, std::int32_t level) override;
    Result GetLevel(const char* loggerName, std::int32_t* out) override;
    void AdviseMessageLogged(IEventHandler* handler, std::uint64_t cookie, bool add) override;
    void FireMessageLogged(ILogData* record) override;

    // Reads the defaults from the section "Default"; names in use keep what they have.
    // Fails: -4, with a report when config is null, without one when memory is exhausted.
    Result OnConfigure(IConfiguration* config);

    // Lists the installed plug-ins under "Main" when that takes debug messages and the library manager is there. Gives 0.
    Result OnImportsSet() override;

    virtual ~CBasicLogger() = default;

private:
    LoggerSettings& GetSettings(const char* loggerName);
    LoggerSettings& MakeSettings(std::string_view loggerName);
    std::shared_ptr<LogFile> GetStream(const std::string& filename);
    void Write(LoggerSettings& settings, const LogEntry& entry) noexcept;

    LoggerSettings defaults_;
    std::map<std::string, std::shared_ptr<LogFile>> files_;  // by expanded name, byte for byte
    std::map<std::string, LoggerSettings, std::less<>> settings_;
    TimeStamp timeStamp_;
    std::string line_;  // of the last message; kept for its memory
};

}  // namespace tvx
