// SPDX-License-Identifier: MIT
// A plug-in of one's own, Counting.tvxlib, and this program that uses it: the library manager loads it and connects its
// imports; the plug-in fires events, logs, and its objects can be written and read back.
#include "Helpers/Ranges.h"
#include "Helpers/Reading.h"
#include "Helpers/Subscription.h"
#include "Host/LibraryManager.h"
#include "Host/SettingsMap.h"
#include "ICounter.h"
#include "Interfaces/ILogger.h"

#include <iostream>

namespace
{

using namespace tvx;

constexpr const char Counters[] = "com.example.counting.Counter/1.0";
constexpr const char Logger[] = "com.talvere.general.tvx.BasicLogger/1.0";

int Fail(const std::string& message)
{
    std::cerr << message << '\n';
    return 1;
}

Ref<counting::ICounter> MakeCounter(IFactory& counters)
{
    Ref<IObjectBase> object;
    counters.Create(object.Receive());
    return Query<counting::ICounter>(object);
}

void PrintEvent(const Event& event)
{
    std::cout << event.eventName << " of " << event.interfaceId << '\n';
}

void PrintMessage(const Event& event)
{
    std::cout << "logged: " << event.GetObject<ILogData>()->GetMessage() << '\n';
}

// The counter's messages are below the level that is written; who listens hears them all.
void CountWords(counting::ICounter& counter, ILogger& logger)
{
    const auto counted = Subscribe(counter, &counting::ICounter::SubscribeCounted, PrintEvent);
    const auto logged = Subscribe(logger, &ILogger::AdviseMessageLogged, PrintMessage);
    for (const char* const word : {"plug-in", "host", "plug-in"})
        counter.Count(word);
}

void PrintTallies(counting::ICounter& counter)
{
    Ref<ISimpleMap> tallies;
    if (TVX_FAILED(counter.GetTallies(tallies.Receive())))
        return;
    for (const auto [word, tally] : Entries(*tallies))
        std::cout << word << " = " << tally << '\n';
}

// Keeps the counter in an entry of the settings, as text, and reads it back: a counter with the same tallies.
Ref<counting::ICounter> KeepAndReadBack(counting::ICounter& counter, ISimpleMap& settings)
{
    settings.SetObject("Counter", &counter);
    std::cout << "kept as " << Read<std::string>(settings, "Counter").ValueOr("nothing") << '\n';
    const auto copy = Read<Ref<IObject>>(settings, "Counter");
    return copy ? Query<counting::ICounter>(*copy) : nullptr;
}

int Run(IFactory& counters, ILogger& logger, ISimpleMap& settings)
{
    const auto counter = MakeCounter(counters);
    if (!counter)
        return Fail("no counter is made");
    CountWords(*counter, logger);
    const auto copy = KeepAndReadBack(*counter, settings);
    if (!copy)
        return Fail("no counter is read back");
    PrintTallies(*copy);
    return 0;
}

}  // namespace

int main()
{
    host::ModuleCatalog catalog;
    catalog.Add(COUNTING_MODULE);
    catalog.Add(TVX_MODULES);
    host::LibraryManager manager(std::move(catalog));
    const auto counters = manager.GetExportAs<IFactory>(Counters);
    if (!counters)
        return Fail(counters.GetError().message);
    const auto logger = manager.GetExportAs<ILogger>(Logger);
    if (!logger)
        return Fail(logger.GetError().message);
    const auto settings = host::MakeSettingsMap(manager);
    return settings ? Run(**counters, **logger, **settings) : Fail(settings.GetError().message);
}
