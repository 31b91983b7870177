// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"

#include <functional>
#include <string>
#include <utility>

namespace tvx::check
{

// Three handlers that write their letters into one log when they are called, then do what they were told.
class LetteredHandlers
{
public:
    LetteredHandlers()
    {
        SetUp(a, 'A', doA);
        SetUp(b, 'B', doB);
        SetUp(c, 'C', doC);
    }
    LetteredHandlers(const LetteredHandlers&) = delete;
    LetteredHandlers& operator=(const LetteredHandlers&) = delete;

    std::string TakeLog() { return std::exchange(log, {}); }

    std::string log;
    Ref<RecordingHandler> a = MakeRef<RecordingHandler>();
    Ref<RecordingHandler> b = MakeRef<RecordingHandler>();
    Ref<RecordingHandler> c = MakeRef<RecordingHandler>();
    std::function<void()> doA;
    std::function<void()> doB;
    std::function<void()> doC;

private:
    void SetUp(const Ref<RecordingHandler>& handler, char letter, const std::function<void()>& deed)
    {
        handler->action = [this, letter, &deed](const SeenEvent&)
        {
            log += letter;
            if (deed)
                deed();
        };
    }
};

}  // namespace tvx::check
