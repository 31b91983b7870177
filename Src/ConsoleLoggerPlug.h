// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/ConfigurableImpl.h"
#include "Helpers/ImportsContainerImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/ILogger.h"
#include "Platform/OperationTable.h"
#include "Src/LogEntry.h"
#include "Src/LoggerSettings.h"
#include "Src/TimeStamp.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
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
    using NamedSettings = std::map<std::string, LoggerSettings, std::less<>>;

    // Null unless the last one whose address came to the same place had that name.
    NamedSettings::value_type* FindLastUsed(const char* loggerName) const noexcept;
    LoggerSettings& GetSettings(const char* loggerName);
    NamedSettings::value_type& FindSettings(std::string_view loggerName);
    NamedSettings::value_type& MakeSettings(std::string_view loggerName);
    bool MustFire() const noexcept;

    // Spreads addresses, whatever lies between them, over the places of lastUsed_.
    static std::size_t GetPlace(const char* loggerName) noexcept
    {
        constexpr std::uint64_t goldenRatio = 0x9E3779B97F4A7C15;
        return static_cast<std::size_t>(reinterpret_cast<std::uintptr_t>(loggerName) * goldenRatio >> 60);
    }

    std::shared_ptr<LogFile> GetStream(const std::string& filename);

    // Not inlined: it would make every filtered message save the registers that only this needs.
    [[gnu::noinline]] Result LogUnderOtherName(const LogEntry& entry) noexcept;
    Result Take(LoggerSettings& settings, const LogEntry& entry) noexcept;
    void Write(LoggerSettings& settings, const LogEntry& entry) noexcept;

    LoggerSettings defaults_;
    std::map<std::string, std::shared_ptr<LogFile>> files_;  // by expanded name, byte for byte
    NamedSettings settings_;
    // By the address of the name that was passed; the entries never move. Atomic, so that a host that lets two threads in at
    // once finds no half of an address.
    std::atomic<NamedSettings::value_type*> lastUsed_[16] = {};
    const void* const ownTable_ = Platform::GetTable(*this);  // a derived class puts its own in place later
    TimeStamp timeStamp_;
    std::string text_;  // of the last line; kept for its memory
};

}  // namespace tvx
