// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/IImportsContainer.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tvx::check
{

// A module may be wrong in whatever it passes.
inline std::string ToText(const char* text)
{
    return text == nullptr ? "(null)" : text;
}

// An object that answers IObject and IObjectBase and tells when it dies.
class ProbeObject final : public ClassImpl<ProbeObject, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    explicit ProbeObject(bool* died = nullptr) : died_(died) {}
    ~ProbeObject()
    {
        if (died_ != nullptr)
            *died_ = true;
    }

private:
    bool* died_;
};

// An object that answers nothing but IObjectBase.
class BareObject final : public CountedImpl<BareObject, IObjectBase>
{
public:
    using Interfaces = InterfaceList<IObjectBase>;
};

// One event as a handler saw it.
struct SeenEvent
{
    const void* sender;
    std::string interfaceId;
    std::string eventName;
    std::uint64_t param;
    std::uint64_t userData;
};

// Records every event, then runs an action of the caller's own, if there is one.
class RecordingHandler final : public ClassImpl<RecordingHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject* sender, const char* interfaceId, const char* eventName, std::uint64_t param,
                   std::uint64_t userData) override
    {
        events.push_back({sender, ToText(interfaceId), ToText(eventName), param, userData});
        if (action)
            action(events.back());
        return TVX_OK;
    }

    std::vector<std::string> GetNames() const
    {
        std::vector<std::string> names;
        for (const auto& event : events)
            names.push_back(event.eventName);
        return names;
    }

    std::vector<SeenEvent> events;
    std::function<void(const SeenEvent&)> action;
};

// A host's stand-in for an export, giving what it was told to give.
class ImportProxy final : public ClassImpl<ImportProxy, IExportProxy>
{
public:
    using Interfaces = InterfaceList<IExportProxy, IObject, IObjectBase>;

    explicit ImportProxy(Ref<IObjectBase> object, Result result = TVX_OK) : object_(std::move(object)), result_(result)
    {
    }

    Result GetExportObject(IObjectBase** out) override
    {
        ++calls;
        HandOut(object_.Get(), out);
        return result_;
    }

    int calls = 0;

private:
    Ref<IObjectBase> object_;
    Result result_;
};

}  // namespace tvx::check
