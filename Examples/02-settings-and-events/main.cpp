// SPDX-License-Identifier: MIT
// Settings maps: what is heard of writes, one by one and in a batch; reads that tell an absent value from a wrong one; paths
// and what lies below them.
#include "Helpers/BatchUpdate.h"
#include "Helpers/Ranges.h"
#include "Helpers/Reading.h"
#include "Helpers/Subscription.h"
#include "Host/LibraryManager.h"
#include "Host/SettingsMap.h"

#include <iostream>

namespace
{

using namespace tvx;

void Hear(const Event& event)
{
    std::cout << "  heard: " << event.eventName << '\n';
}

// The event's param is a variant with the new mode.
void HearMode(const Event& event)
{
    const auto mode = Read<bool>(*event.GetObject<IVariant>());
    std::cout << "  heard: " << event.eventName << ", " << (mode.ValueOr(false) ? "on" : "off") << '\n';
}

void Write(ISimpleMap& settings)
{
    const auto changed = Subscribe(settings, &ISimpleMap::SubscribeChanged, Hear);
    const auto switched = Subscribe(settings, &ISimpleMap::SubscribeBatchUpdatingModeChanged, HearMode);

    std::cout << "a new map is in batch updating mode, which goes off\n";
    settings.SetBatchUpdatingMode(false);
    std::cout << "one write\n";
    settings.SetString("Name", "left camera");
    std::cout << "three writes in a batch\n";
    const BatchUpdate batch(settings);
    settings.SetInt("Display\\Width", 1920);
    settings.SetDouble("Display\\Zoom\\Factor", 1.25);
    settings.SetString("Display\\Height", "1080 rows");
    std::cout << "the scope ends: first the batch, then the subscriptions\n";
}

void PrintInt(ISimpleMap& settings, const char* key)
{
    const auto number = Read<std::int32_t>(settings, key);
    std::cout << "  " << key << ": ";
    if (number)
        std::cout << *number << '\n';
    else if (number.IsAbsent())
        std::cout << "absent\n";
    else
        std::cout << (number.IsMalformed() ? "no number\n" : "not readable\n");
}

void PrintBelow(ISimpleMap& settings, const char* path)
{
    for (const auto [key, value] : Children(settings, path))
        std::cout << "  " << key << " = " << value << '\n';
}

void Run(ISimpleMap& settings)
{
    Write(settings);
    std::cout << "strict reads\n";
    for (const char* const key : {"Display\\Width", "Display\\Height", "Display\\Depth"})
        PrintInt(settings, key);
    std::cout << "  or else: " << Read<std::int32_t>(settings, "Display\\Depth").ValueOr(24) << '\n';
    std::cout << "what lies below Display\n";
    PrintBelow(settings, "Display");
}

}  // namespace

int main(int count, char** arguments)
{
    host::ModuleCatalog catalog;
    catalog.Add(count > 1 ? arguments[1] : TVX_MODULES);
    host::LibraryManager manager(std::move(catalog));
    const auto settings = host::MakeSettingsMap(manager);
    if (!settings)
    {
        std::cerr << settings.GetError().message << '\n';
        return 1;
    }
    Run(**settings);
}
