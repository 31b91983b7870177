// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/FiringMap.h"

namespace tvx::check
{

// Handlers that fire the event they are called for, or turn its list over.
namespace
{

void LetsAHandlerFireAgain(Trial& trial)
{
    FiringMap map(trial);
    map.Subscribe(map.handlers.a);
    map.Subscribe(map.handlers.b);
    map.LetADo(2, [&] { map.Fire(); });
    map.ExpectCalls("when the first handler fires twice more, each inside the other", "AAABBB");
}

void RemovesForTheOuterFiringToo(Trial& trial)
{
    FiringMap map(trial);
    map.SubscribeAll();
    map.LetADo(1, [&] { map.Fire(); });
    map.handlers.doB = [&]
    {
        map.Unsubscribe(map.handlers.b);
        map.Unsubscribe(map.handlers.c);
    };
    map.ExpectCalls("when an inner firing removes those that the outer one still has to call", "AAB");
    map.ExpectCalls("of the next event", "A");
}

void CallsForTheOuterFiringToo(Trial& trial)
{
    FiringMap map(trial);
    map.Subscribe(map.handlers.a);
    int depth = 0;
    map.handlers.doA = [&]
    {
        if (++depth == 1)
            map.Fire();
        if (depth == 2 && map.handlers.log == "AA")
            map.Subscribe(map.handlers.b);
    };
    map.ExpectCalls("when an inner firing subscribes another handler", "AABB");
}

void LetsAHandlerEndTheLifeOfAnother(Trial& trial)
{
    FiringMap map(trial);
    map.SubscribeAll();
    map.handlers.doA = [&]
    {
        if (!map.handlers.b)
            return;
        map.Unsubscribe(map.handlers.b);
        map.handlers.b = nullptr;
    };
    map.ExpectCalls("when the first handler unsubscribes and destroys the second", "AC");
    map.ExpectCalls("of the next event", "AC");
}

void LetsAHandlerReplaceAll(Trial& trial)
{
    FiringMap map(trial);
    map.Subscribe(map.handlers.a);
    map.Subscribe(map.handlers.b);
    map.handlers.doA = [&]
    {
        map.UnsubscribeAll();
        map.Subscribe(map.handlers.c);
    };
    map.ExpectCalls("when the first handler puts another one in place of all", "AC");
    map.ExpectCalls("of the next event", "C");
}

void LetsAHandlerReturn(Trial& trial)
{
    FiringMap map(trial);
    map.Subscribe(map.handlers.a);
    map.Subscribe(map.handlers.b);
    map.LetADo(1,
               [&]
               {
                   map.Unsubscribe(map.handlers.a);
                   map.Subscribe(map.handlers.a);
               });
    map.ExpectCalls("when a handler unsubscribes and subscribes itself again", "ABA");
}

constexpr Check Checks[] = {
    {"event-firing-handler-fires-again", "A handler fires the event that it is called for, twice deep.",
     "An inner firing is complete before the outer one goes on.", LetsAHandlerFireAgain},
    {"event-firing-inner-removal-counts-outside", "An inner firing removes whom the outer one has still to call.",
     "What was removed is not called by any firing that is under way.", RemovesForTheOuterFiringToo},
    {"event-firing-inner-subscription-counts-outside", "An inner firing subscribes another handler.",
     "The new subscription is called by every firing that is under way.", CallsForTheOuterFiringToo},
    {"event-firing-handler-ends-the-life-of-another", "A handler unsubscribes another one, which is then destroyed.",
     "A handler that was unsubscribed is never touched again, so it may go away at once.",
     LetsAHandlerEndTheLifeOfAnother},
    {"event-firing-handler-replaces-all", "A handler unsubscribes all and subscribes another one.",
     "The new subscription is called in the same firing, and alone from then on.", LetsAHandlerReplaceAll},
    {"event-firing-handler-returns", "A handler unsubscribes itself and subscribes again.",
     "The new subscription stands at the end and is called in the same firing.", LetsAHandlerReturn},
};

}  // namespace

extern const Family EventsFiringAgainFamily = {"events", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
