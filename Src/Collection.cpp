// SPDX-License-Identifier: MIT
#include "Src/Collection.h"

#include "Helpers/HandOut.h"
#include "Helpers/Results.h"
#include "Src/String.h"

#include <algorithm>

namespace tvx
{

namespace
{

constexpr const char ItemAddedEvent[] = "ItemAdded";
constexpr const char ItemRemovedEvent[] = "ItemRemoved";
constexpr const char ItemMovedEvent[] = "ItemMoved";
constexpr const char UpdatedEvent[] = "Updated";

constexpr std::uint32_t NoIndex = 0xFFFFFFFF;

}  // namespace

// What follows a change: its own event, then "Updated".
template <void (Collection::*fire)(IObject* item)>
void Collection::FireChange(IObject* item)
{
    if (!eventsEnabled_)
        return;
    (this->*fire)(item);
    FireUpdated(item);
}

Result Collection::GetItem(std::uint32_t index, IObject** out)
{
    TVX_RETURN_FAIL_IF(index >= CountItems());
    if (out == nullptr)
        return TVX_E_POINTER;
    HandOut(items_.Get(index), out);
    return TVX_OK;
}

std::uint32_t Collection::GetCount()
{
    return CountItems();
}

Result Collection::Add(IObject* item)
{
    return Insert(CountItems(), item);
}

Result Collection::RemoveLast()
{
    TVX_RETURN_FAIL_IF(CountItems() == 0);
    return RemoveAt(CountItems() - 1);
}

Result Collection::Insert(std::uint32_t index, IObject* item)
try
{
    index < CountItems() ? items_.Insert(index, item) : items_.Append(item);
    FireChange<&Collection::FireItemAdded>(item);
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_FAIL;
}

Result Collection::RemoveAt(std::uint32_t index)
{
    TVX_CHECK_PRECOND(index < CountItems());
    const auto item = items_.Take(index);
    FireChange<&Collection::FireItemRemoved>(item.Get());
    return TVX_OK;
}

Result Collection::GetEventsEnabled(bool* out)
{
    TVX_CHECK_PRECOND(out != nullptr);
    *out = eventsEnabled_;
    return TVX_OK;
}

Result Collection::SetEventsEnabled(bool enabled)
{
    eventsEnabled_ = enabled;
    return TVX_OK;
}

Result Collection::InsertBefore(IObject* item, IObject* before)
{
    std::uint32_t index = NoIndex;
    TVX_FORWARD_FAILURE(IndexOf(before, &index));
    return Insert(index, item);
}

void Collection::SubscribeItemAdded(IEventHandler* handler, std::uint64_t cookie, bool subscribe)
{
    Connect(ICollection2::Id, ItemAddedEvent, handler, cookie, subscribe);
}

Result Collection::Remove(IObject* item)
{
    std::uint32_t index = NoIndex;
    TVX_FORWARD_FAILURE(IndexOf(item, &index));
    return RemoveAt(index);
}

void Collection::SubscribeItemRemoved(IEventHandler* handler, std::uint64_t cookie, bool subscribe)
{
    Connect(ICollection2::Id, ItemRemovedEvent, handler, cookie, subscribe);
}

// A target behind the item names its place before the item is taken out, hence one less.
Result Collection::Move(std::uint32_t from, std::uint32_t to)
{
    TVX_CHECK_PRECOND(from < CountItems());
    const auto target = std::min(to, CountItems());
    if (from == target)
        return TVX_OK;
    const Ref<IObject> item(items_.Get(from));
    items_.Move(from, target > from ? target - 1 : target);
    FireChange<&Collection::FireItemMoved>(item.Get());
    return TVX_OK;
}

Result Collection::MoveItem(IObject* item, std::uint32_t to)
{
    std::uint32_t from = NoIndex;
    TVX_FORWARD_FAILURE(IndexOf(item, &from));
    return Move(from, to);
}

Result Collection::MoveBefore(IObject* item, IObject* before)
{
    std::uint32_t to = CountItems();
    if (before != nullptr)
        TVX_FORWARD_FAILURE(IndexOf(before, &to));
    return MoveItem(item, to);
}

void Collection::SubscribeItemMoved(IEventHandler* handler, std::uint64_t cookie, bool subscribe)
{
    Connect(ICollection2::Id, ItemMovedEvent, handler, cookie, subscribe);
}

Result Collection::IndexOf(IObject* item, std::uint32_t* out)
{
    TVX_CHECK_PRECOND(item != nullptr && out != nullptr);
    const auto index = items_.Find(item);
    const bool found = index < items_.GetSize();
    *out = found ? static_cast<std::uint32_t>(index) : NoIndex;
    return found ? TVX_OK : TVX_E_FAIL;
}

Result Collection::Clear()
{
    for (auto remaining = CountItems(); remaining > 0; --remaining)
        TVX_FORWARD_FAILURE(RemoveLast());
    return TVX_OK;
}

Result Collection::NotifyUpdated(IObject* item)
{
    bool contained = false;
    if (TVX_FAILED(Contains(item, &contained)) || !contained)
        return TVX_E_FAIL;
    FireUpdated(item);
    return TVX_OK;
}

Result Collection::Contains(IObject* item, bool* out)
{
    TVX_CHECK_PRECOND(out != nullptr);
    *out = item != nullptr && items_.Find(item) < items_.GetSize();
    return TVX_OK;
}

void Collection::SubscribeUpdated(IEventHandler* handler, std::uint64_t cookie, bool subscribe)
{
    Connect(ICollection2::Id, UpdatedEvent, handler, cookie, subscribe);
}

void Collection::FireItemAdded(IObject* item)
{
    FireNamed(ItemAddedEvent, item);
}

void Collection::FireItemRemoved(IObject* item)
{
    FireNamed(ItemRemovedEvent, item);
}

void Collection::FireItemMoved(IObject* item)
{
    FireNamed(ItemMovedEvent, item);
}

void Collection::FireUpdated(IObject* item)
{
    FireNamed(UpdatedEvent, item);
}

Result Collection::GetFormatId(IString** out)
{
    return HandOutNew<String>(out, FormatId);
}

Result Collection::Serialize(ISerializer* writer)
{
    TVX_RETURN_EPOINTER_IF_NULL(writer);
    writer->BeginArray(ValuesName);
    for (std::size_t index = 0; index < items_.GetSize(); ++index)
        writer->WriteObject(items_.Get(index));
    writer->EndArray();
    return TVX_OK;
}

void Collection::FireNamed(const char* eventName, IObject* item)
{
    Fire(ICollection2::Id, eventName, static_cast<ICollection2*>(this), ToParameter(item));
}

}  // namespace tvx
