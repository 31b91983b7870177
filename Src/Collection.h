// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/ISerializable.h"
#include "Src/ItemChunks.h"

namespace tvx
{

// The ordered list of objects. One thread at a time; handlers may change the collection while it fires.
//
// Its operations call each other through the virtual table; only indices are bounded by its own list. It writes null items,
// but a document with one cannot be read back: that is intended.
class Collection : public ClassImpl<Collection, ICollection2, ISerializable>
{
public:
    using Interfaces = InterfaceList<ICollection2, ICollection, IObject, IObjectBase, ISerializable>;

    static constexpr const char FormatId[] = "com.talvere.general.tvx.GenericCollectionImplementationFormat/1.0";

    // The name of the one sequence in the document.
    static constexpr const char ValuesName[] = "Values";

    Collection() = default;

    Result GetItem(std::uint32_t index, IObject** out) override;
    std::uint32_t GetCount() override;
    Result Add(IObject* item) override;
    Result RemoveLast() override;
    Result Insert(std::uint32_t index, IObject* item) override;
    Result RemoveAt(std::uint32_t index) override;
    Result GetEventsEnabled(bool* out) override;
    Result SetEventsEnabled(bool enabled) override;
    Result InsertBefore(IObject* item, IObject* before) override;
    void SubscribeItemAdded(IEventHandler* handler, std::uint64_t cookie, bool subscribe) override;
    Result Remove(IObject* item) override;
    void SubscribeItemRemoved(IEventHandler* handler, std::uint64_t cookie, bool subscribe) override;
    Result Move(std::uint32_t from, std::uint32_t to) override;
    Result MoveItem(IObject* item, std::uint32_t to) override;
    Result MoveBefore(IObject* item, IObject* before) override;
    void SubscribeItemMoved(IEventHandler* handler, std::uint64_t cookie, bool subscribe) override;
    Result IndexOf(IObject* item, std::uint32_t* out) override;
    Result Clear() override;
    Result NotifyUpdated(IObject* item) override;
    Result Contains(IObject* item, bool* out) override;
    void SubscribeUpdated(IEventHandler* handler, std::uint64_t cookie, bool subscribe) override;

    // Slots 32 to 35 of the table, behind the interface's: every event goes out through them.
    virtual void FireItemAdded(IObject* item);
    virtual void FireItemRemoved(IObject* item);
    virtual void FireItemMoved(IObject* item);
    virtual void FireUpdated(IObject* item);

    Result GetFormatId(IString** out) override;
    Result Serialize(ISerializer* writer) override;

    virtual ~Collection() = default;

private:
    // What bounds an index: the list's own size, whatever a derived class tells its callers.
    std::uint32_t CountItems() const noexcept { return static_cast<std::uint32_t>(items_.GetSize()); }

    template <void (Collection::*fire)(IObject* item)>
    void FireChange(IObject* item);
    void FireNamed(const char* eventName, IObject* item);

    ItemChunks items_;
    bool eventsEnabled_ = true;
};

}  // namespace tvx
