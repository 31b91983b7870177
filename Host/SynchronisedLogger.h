// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/ILogger.h"

#include <cstdint>
#include <mutex>

namespace tvx::host
{

// Lets several threads use a logger that takes one at a time. Any thread.
//
// Handlers run one at a time, in the order of the lines, while the lock is held: a sink needs none of its own, and a
// handler may log again, but it must not wait for another thread that logs. What others cause at the inner logger itself
// comes through too; they do so while nobody logs here, and leave the subscription of this object alone.
class SynchronisedLogger final : public ClassImpl<SynchronisedLogger, ILogger>
{
public:
    using Interfaces = InterfaceList<ILogger, IObject, IObjectBase>;

    // Inner is not null. It subscribes without a result: where it has no memory for that, this logger tells no events.
    explicit SynchronisedLogger(Ref<ILogger> inner);
    ~SynchronisedLogger();

    Result Log(const char* loggerName, std::int32_t level, const char* source, const char* scope, const char* file,
               std::uint32_t line, const char* message) override;
    Result SetLevel(const char* loggerName, std::int32_t level) override;
    Result GetLevel(const char* loggerName, std::int32_t* out) override;

    // The sender of the events is this logger, their param that of the inner one.
    void AdviseMessageLogged(IEventHandler* handler, std::uint64_t cookie, bool add) override;
    void FireMessageLogged(ILogData* record) override;

private:
    class Relay;

    std::recursive_mutex lock_;
    Ref<ILogger> inner_;
    Ref<IEventHandler> relay_;  // hears the inner logger
};

}  // namespace tvx::host
