// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/FiringMap.h"

#include <functional>

namespace tvx::check
{

// Handlers that change the list of subscriptions while it is walked.
namespace
{

void CallsWhoSubscribesMeanwhile(Trial& trial)
{
    FiringMap map(trial);
    map.Subscribe(map.handlers.a);
    map.LetADo(1, [&] { map.Subscribe(map.handlers.b); });
    map.ExpectCalls("when the only handler subscribes another one", "AB");
    map.ExpectCalls("of the next event", "AB");
}

void CallsWhoSubscribesItselfAgain(Trial& trial)
{
    FiringMap map(trial);
    map.Subscribe(map.handlers.a);
    map.Subscribe(map.handlers.b);
    map.LetADo(2, [&] { map.Subscribe(map.handlers.a); });
    map.ExpectCalls("when a handler subscribes itself twice more", "ABAA");
}

// Of three handlers one removes another one or itself when it is called.
struct Removal
{
    std::function<void()> LetteredHandlers::*remover;
    Ref<RecordingHandler> LetteredHandlers::*removed;
    const char* when;
    const char* calls;
    const char* nextCalls;
};

constexpr Removal SecondByFirst = {&LetteredHandlers::doA, &LetteredHandlers::b,
                                   "when the first handler removes the second", "AC", "AC"};
constexpr Removal FirstBySecond = {&LetteredHandlers::doB, &LetteredHandlers::a,
                                   "when the second handler removes the first", "ABC", "BC"};
constexpr Removal SecondByItself = {&LetteredHandlers::doB, &LetteredHandlers::b,
                                    "when the second handler removes itself", "ABC", "AC"};

template <const Removal& Row>
void LetsAHandlerRemove(Trial& trial)
{
    FiringMap map(trial);
    map.SubscribeAll();
    map.handlers.*Row.remover = [&] { map.Unsubscribe(map.handlers.*Row.removed); };
    map.ExpectCalls(Row.when, Row.calls);
    map.ExpectCalls("of the next event", Row.nextCalls);
}

void SkipsTheLastOneToo(Trial& trial)
{
    FiringMap map(trial);
    map.SubscribeAll();
    map.handlers.doB = [&] { map.Unsubscribe(map.handlers.c); };
    map.ExpectCalls("when the second handler removes the third", "AB");
}

void LetsAHandlerRemoveItsLaterDuplicate(Trial& trial)
{
    FiringMap map(trial);
    for (const auto& handler : {map.handlers.a, map.handlers.b, map.handlers.a})
        map.Subscribe(handler);
    map.LetADo(2, [&] { map.Unsubscribe(map.handlers.a); });
    map.handlers.doB = [&] { map.Unsubscribe(map.handlers.a); };
    map.ExpectCalls("when both subscriptions of a handler go before the second one's turn", "AB");
}

void LetsAHandlerRemoveAll(Trial& trial)
{
    FiringMap map(trial);
    map.SubscribeAll();
    map.handlers.doB = [&] { map.UnsubscribeAll(); };
    map.ExpectCalls("when the second handler removes all", "AB");
    map.ExpectCalls("of the next event", "");
}

constexpr Check Checks[] = {
    {"event-firing-calls-who-subscribes-meanwhile", "A handler subscribes another one to the event it is called for.",
     "A subscription that is made during a firing is called in it.", CallsWhoSubscribesMeanwhile},
    {"event-firing-calls-who-subscribes-itself-again", "A handler subscribes itself twice more.",
     "Each new subscription is called in its turn, also by the handler that is running.",
     CallsWhoSubscribesItselfAgain},
    {"event-firing-skips-who-is-removed-before-its-turn", "The first of three handlers unsubscribes the second.",
     "A subscription that is removed before its turn is not called; those behind it are.",
     LetsAHandlerRemove<SecondByFirst>},
    {"event-firing-skips-a-removed-last-one", "The second of three handlers unsubscribes the third.",
     "This holds for the last subscription of the list, too.", SkipsTheLastOneToo},
    {"event-firing-handler-removes-who-had-its-turn", "The second of three handlers unsubscribes the first.",
     "Removing a subscription that was called does not disturb the rest of the firing.",
     LetsAHandlerRemove<FirstBySecond>},
    {"event-firing-handler-removes-itself", "The second of three handlers unsubscribes itself.",
     "A handler may remove itself; the next ones are called, and it is not called any more.",
     LetsAHandlerRemove<SecondByItself>},
    {"event-firing-handler-removes-its-duplicate",
     "Both subscriptions of a handler are removed before the second call.",
     "Each subscription is removed for itself, before its turn or after it.", LetsAHandlerRemoveItsLaterDuplicate},
    {"event-firing-handler-removes-all", "The second of three handlers unsubscribes null, that is all.",
     "Whoever was not called yet is not called any more.", LetsAHandlerRemoveAll},
};

}  // namespace

extern const Family EventsWhileFiringFamily = {"events", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
