// SPDX-License-Identifier: MIT
#pragma once

#include "Src/Collection.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace tvx::test
{

// A collection with named items; its order and its events read as texts: "ABC", "ItemAdded A".
class CollectionTest : public testing::Test
{
protected:
    // The item of a name, made when it is first asked for; '-' is null.
    IObject* Item(char name)
    {
        if (name == '-')
            return nullptr;
        auto& item = items[name];
        if (!item)
            item = MakeRef<ProbeObject>();
        return item.Get();
    }

    void Fill(const std::string& names)
    {
        for (const char name : names)
            collection->Add(Item(name));
    }

    char NameOf(const void* pointer)
    {
        for (const auto& [name, item] : items)
        {
            if (static_cast<IObject*>(item.Get()) == pointer)
                return name;
        }
        return pointer == nullptr ? '-' : '?';
    }

    std::string Order()
    {
        std::string names;
        for (std::uint32_t index = 0; index < collection->GetCount(); ++index)
        {
            Ref<IObject> item;
            collection->GetItem(index, item.Receive());
            names += NameOf(item.Get());
        }
        return names;
    }

    void Listen()
    {
        collection->SubscribeItemAdded(handler.Get(), 1, true);
        collection->SubscribeItemRemoved(handler.Get(), 2, true);
        collection->SubscribeItemMoved(handler.Get(), 3, true);
        collection->SubscribeUpdated(handler.Get(), 4, true);
    }

    // What was heard since the last call.
    std::vector<std::string> Heard()
    {
        std::vector<std::string> texts;
        for (const auto& event : handler->events)
            texts.push_back(event.eventName + " " + NameOf(reinterpret_cast<const void*>(event.param)));
        handler->events.clear();
        return texts;
    }

    // How many references the collection has on the item, which the test holds once.
    std::uint32_t CountOf(char name) { return Item(name)->GetRefCount() - 1; }

    using Texts = std::vector<std::string>;

    std::map<char, Ref<ProbeObject>> items;
    Ref<RecordingHandler> handler = MakeRef<RecordingHandler>();
    Ref<Collection> collection = MakeRef<Collection>();
};

}  // namespace tvx::test
