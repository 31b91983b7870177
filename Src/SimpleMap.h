// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IVariant.h"
#include "InterfacesHelpers/UserDataContainer.h"
#include "Src/EntryPlace.h"
#include "Src/EntryTable.h"

#include <string>

namespace tvx
{

// The settings map. Lives by its references; iterators must not outlive it. One thread at a time.
//
// Its operations call each other through the virtual table, so that a class derived from it that overrides SetString sees
// every write. On destruction the entries go first, then the events ("Destroyed" fires), then the user data.
class SimpleMap : public ClassImpl<SimpleMap, ISimpleMap5, ISerializable, UserDataContainerImpl>
{
public:
    using Interfaces = InterfaceList<ISimpleMap5, ISimpleMap4, ISimpleMap3, ISimpleMap2, ISimpleMap1, ISimpleMap,
                                     IObject, IObjectBase, ISerializable, IUserDataContainer>;

    SimpleMap() = default;
    // With a copy of entries, for Clone.
    explicit SimpleMap(const EntryTable& entries) : entries_(entries) {}

    Result SetDouble(const char* key, double value) override;
    Result SetInt(const char* key, std::int32_t value) override;
    Result SetString(const char* key, const char* value) override;
    Result GetDouble(const char* key, double* out) override;
    Result GetInt(const char* key, std::int32_t* out) override;
    Result GetString(const char* key, IString** out) override;
    Result GetIterator(ISimpleMapIterator** out) override;
    Result GetSubMap(const char* path, ISimpleMap** out) override;
    Result SetSubMap(const char* path, ISimpleMap* source) override;
    Result GetObject(const char* key, IObject** out) override;
    Result SetObject(const char* key, IObject* object) override;
    Result HasKey(const char* key, bool* out) override;
    Result Clone(ISimpleMap** out) override;
    Result GetIteratorNoSubMaps(ISimpleMapIterator** out) override;
    void SubscribeChanged(IEventHandler* handler, std::uint64_t cookie, bool connect) override;
    Result SetBatchUpdatingMode(bool mode) override;
    Result GetBatchUpdatingMode(bool* out) override;
    void SubscribeBatchUpdatingModeChanged(IEventHandler* handler, std::uint64_t cookie, bool connect) override;

    // Slots 29 and 30 of the table, behind the interface's: every event goes out through them.
    virtual void FireChanged(IObjectBase* argument);
    virtual void FireBatchUpdatingModeChanged(IVariant* argument);

    Result GetFormatId(IString** out) override;
    Result Serialize(ISerializer* writer) override;

    virtual ~SimpleMap() = default;

private:
    static Result CopyBelow(const std::string& prefix, ISimpleMapIterator& iterator, SimpleMap& target);
    void AddBelow(const std::string& prefix, EntryPlace place);
    Result WriteBelow(const std::string& prefix, ISimpleMapIterator& source);
    Result WriteEntries(const std::string& prefix, ISimpleMapIterator& source);
    void FirePendingChange();
    void RestoreBatchUpdatingMode(bool mode);
    IObject* GetSender() noexcept;

    EntryTable entries_;
    bool batchUpdating_ = true;  // on purpose: who wants every change told at once switches it off
    bool changePending_ = false;
};

}  // namespace tvx
