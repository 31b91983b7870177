// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Lines.h"
#include "Tool/Checks/Objects.h"

#include <array>
#include <string>
#include <utility>

namespace tvx::check
{

// The object that an event carries.
inline const void* ToAddress(std::uint64_t param)
{
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(param));
}

// Three items with letters for names.
struct LetteredItems
{
    // "A", "B", "C", "null" or, for anything else, "?".
    std::string GetName(const void* item) const
    {
        if (item == nullptr)
            return "null";
        const char* const letter[] = {"A", "B", "C"};
        for (std::size_t index = 0; index < all.size(); ++index)
        {
            if (item == static_cast<const IObject*>(all[index].Get()))
                return letter[index];
        }
        return "?";
    }

    // The items of a collection in their order, such as "A B C"; a limit stands against a wrong count.
    std::string Show(ICollection& collection) const
    {
        constexpr std::uint32_t limit = 100;
        std::string shown;
        const auto count = collection.GetCount();
        for (std::uint32_t index = 0; index < count && index < limit; ++index)
        {
            Ref<IObject> item;
            collection.GetItem(index, item.Receive());
            shown.append(shown.empty() ? "" : " ").append(GetName(item.Get()));
        }
        return shown;
    }

    const std::array<Ref<ProbeObject>, 3> all = {MakeRef<ProbeObject>(), MakeRef<ProbeObject>(),
                                                 MakeRef<ProbeObject>()};
    ProbeObject* const a = all[0].Get();
    ProbeObject* const b = all[1].Get();
    ProbeObject* const c = all[2].Get();
};

// A new collection of [A, B, C].
inline Ref<ICollection2> MakeFilledCollection(Trial& trial, const LetteredItems& items)
{
    auto collection = MakeCollection(trial);
    for (const auto& item : items.all)
        trial.Gives("Add", collection->Add(item.Get()), TVX_OK);
    return collection;
}

// Hears the four events of a collection and keeps a line for each, such as "ItemAdded B", and what the collection held
// at that moment. The collection must not fire any more when this is gone.
class CollectionListener
{
public:
    CollectionListener(ICollection& collection, const LetteredItems& items) : collection_(collection), items_(items)
    {
        handler_->action = [this](const SeenEvent& event) { Hear(event); };
        collection.SubscribeItemAdded(handler_.Get(), 0, true);
        collection.SubscribeItemRemoved(handler_.Get(), 0, true);
        collection.SubscribeItemMoved(handler_.Get(), 0, true);
        collection.SubscribeUpdated(handler_.Get(), 0, true);
    }
    CollectionListener(const CollectionListener&) = delete;
    CollectionListener& operator=(const CollectionListener&) = delete;

    // What came since the last time.
    Lines Take() { return std::exchange(lines_, {}); }

    // What the collection held at each event since the last time.
    Lines TakeContents() { return std::exchange(contents_, {}); }

private:
    void Hear(const SeenEvent& event)
    {
        lines_.push_back(event.eventName + " " + items_.GetName(ToAddress(event.param)));
        contents_.push_back(items_.Show(collection_));
    }

    ICollection& collection_;
    const LetteredItems& items_;
    Ref<RecordingHandler> handler_ = MakeRef<RecordingHandler>();
    Lines lines_;
    Lines contents_;
};

}  // namespace tvx::check
