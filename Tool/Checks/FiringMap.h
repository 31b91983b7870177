// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/LetteredHandlers.h"
#include "Tool/Checks/Objects.h"

#include <functional>
#include <string>
#include <utility>

namespace tvx::check
{

// A settings map out of batch updating mode that fires "Changed" with each write, and its handlers A, B and C.
class FiringMap
{
public:
    explicit FiringMap(Trial& trial) : trial_(trial), map_(MakeImmediateSimpleMap(trial)) {}

    void Subscribe(const Ref<RecordingHandler>& handler) { map_->SubscribeChanged(handler.Get(), 0, true); }
    void SubscribeAll()
    {
        for (const auto& handler : {handlers.a, handlers.b, handlers.c})
            Subscribe(handler);
    }
    void Unsubscribe(const Ref<RecordingHandler>& handler) { map_->SubscribeChanged(handler.Get(), 0, false); }
    void UnsubscribeAll() { map_->SubscribeChanged(nullptr, 0, false); }
    Result Fire() { return map_->SetString("key", "value"); }

    // What A does when it is called, so many times; later on it does nothing.
    void LetADo(int times, std::function<void()> deed)
    {
        handlers.doA = [times, deed = std::move(deed)]() mutable
        {
            if (times-- > 0)
                deed();
        };
    }

    // Fires and expects the handlers to be called in this order, inner firings included.
    void ExpectCalls(const std::string& when, const char* expected)
    {
        trial_.Gives("SetString", Fire(), TVX_OK);
        trial_.Equal("the calls " + when, handlers.TakeLog(), expected);
    }

    LetteredHandlers handlers;

private:
    Trial& trial_;
    Ref<ISimpleMap5> map_;
};

}  // namespace tvx::check
