// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/EqualBytes.h"

#include <cstdint>
#include <cstring>
#include <list>
#include <string>
#include <string_view>

namespace tvx
{

// Which event, as the one who subscribes or fires says it. Both texts are constants: what stands at their addresses never
// changes.
struct EventName
{
    const char* interfaceId;  // of the interface that has the event
    const char* name;         // of the event alone
};

// The events that somebody of a list of subscribers wants to hear of, each once: a firing looks at names only to find its
// key, and from then on keys are compared by their address. A key stays where it is until it is dropped.
class EventKeys
{
public:
    // One event.
    struct Key
    {
        std::string text;        // the interface identifier, "::" and the name of the event
        EventName firstNamed;    // where it was named first: the same addresses are the same event
        std::uint32_t uses = 0;  // by subscriptions
    };

    // Null when nobody ever asked for the event.
    Key* Find(const EventName& event) noexcept
    {
        for (auto& key : keys_)
        {
            if (key.firstNamed.interfaceId == event.interfaceId && key.firstNamed.name == event.name)
                return &key;
        }
        return FindByText(event);
    }

    // Throws std::bad_alloc when memory is exhausted.
    Key& FindOrAdd(const EventName& event)
    {
        auto* const found = Find(event);
        if (found != nullptr)
            return *found;
        keys_.push_back({std::string(event.interfaceId).append(Separator).append(event.name), event});
        return keys_.back();
    }

    // Drops the keys that no subscription uses.
    void DropUnused() noexcept
    {
        keys_.remove_if([](const Key& key) { return key.uses == 0; });
    }

private:
    static constexpr std::string_view Separator = "::";

    [[gnu::noinline]] Key* FindByText(const EventName& event) noexcept
    {
        for (auto& key : keys_)
        {
            if (IsKey(key.text, event))
                return &key;
        }
        return nullptr;
    }

    // Whether the text of event would be key, without making it.
    static bool IsKey(std::string_view key, const EventName& event) noexcept
    {
        const auto idSize = std::strlen(event.interfaceId);
        const auto nameStart = idSize + Separator.size();
        return key.size() >= nameStart && EqualBytes(key.data(), event.interfaceId, idSize) &&
               key.substr(idSize, Separator.size()) == Separator && key.substr(nameStart) == event.name;
    }

    std::list<Key> keys_;
};

}  // namespace tvx
