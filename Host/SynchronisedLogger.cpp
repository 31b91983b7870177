// SPDX-License-Identifier: MIT
#include "Host/SynchronisedLogger.h"

#include <utility>

namespace tvx::host
{

namespace
{

constexpr const char MessageLogged[] = "MessageLogged";

}  // namespace

// Hears the inner logger and fires again, with the outer one as sender.
//
// It takes no lock: whoever logged through the outer logger holds it already, and whoever caused the event at the inner one
// must not wait for it while the inner one's list is locked. The list of the outer logger keeps its handlers one at a time.
class SynchronisedLogger::Relay final : public ClassImpl<Relay, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    explicit Relay(SynchronisedLogger& outer) : outer_(outer) {}

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t param, std::uint64_t) override
    {
        outer_.Fire(ILogger::Id, MessageLogged, &outer_, param);
        return TVX_OK;
    }

private:
    SynchronisedLogger& outer_;
};

SynchronisedLogger::SynchronisedLogger(Ref<ILogger> inner) : inner_(std::move(inner)), relay_(MakeRef<Relay>(*this))
{
    inner_->AdviseMessageLogged(relay_.Get(), 0, true);
}

SynchronisedLogger::~SynchronisedLogger()
{
    const std::lock_guard<std::recursive_mutex> guard(lock_);
    inner_->AdviseMessageLogged(relay_.Get(), 0, false);
}

Result SynchronisedLogger::Log(const char* loggerName, std::int32_t level, const char* source, const char* scope,
                               const char* file, std::uint32_t line, const char* message)
{
    const std::lock_guard<std::recursive_mutex> guard(lock_);
    return inner_->Log(loggerName, level, source, scope, file, line, message);
}

Result SynchronisedLogger::SetLevel(const char* loggerName, std::int32_t level)
{
    const std::lock_guard<std::recursive_mutex> guard(lock_);
    return inner_->SetLevel(loggerName, level);
}

Result SynchronisedLogger::GetLevel(const char* loggerName, std::int32_t* out)
{
    const std::lock_guard<std::recursive_mutex> guard(lock_);
    return inner_->GetLevel(loggerName, out);
}

void SynchronisedLogger::AdviseMessageLogged(IEventHandler* handler, std::uint64_t cookie, bool add)
{
    Connect(ILogger::Id, MessageLogged, handler, cookie, add);
}

void SynchronisedLogger::FireMessageLogged(ILogData* record)
{
    const std::lock_guard<std::recursive_mutex> guard(lock_);
    inner_->FireMessageLogged(record);
}

}  // namespace tvx::host
