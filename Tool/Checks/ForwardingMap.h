// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/ISimpleMap.h"

#include <utility>

namespace tvx::check
{

// A settings map of the caller's own class, which hands every call on to another map: a module knows nothing of it but
// its interface.
class ForwardingMap final : public ClassImpl<ForwardingMap, ISimpleMap>
{
public:
    using Interfaces = InterfaceList<ISimpleMap, IObject, IObjectBase>;

    explicit ForwardingMap(Ref<ISimpleMap> map) : map_(std::move(map)) {}

    Result SetDouble(const char* key, double value) override { return map_->SetDouble(key, value); }
    Result SetInt(const char* key, std::int32_t value) override { return map_->SetInt(key, value); }
    Result SetString(const char* key, const char* value) override { return map_->SetString(key, value); }
    Result GetDouble(const char* key, double* out) override { return map_->GetDouble(key, out); }
    Result GetInt(const char* key, std::int32_t* out) override { return map_->GetInt(key, out); }
    Result GetString(const char* key, IString** out) override { return map_->GetString(key, out); }
    Result GetIterator(ISimpleMapIterator** out) override { return map_->GetIterator(out); }
    Result GetSubMap(const char* path, ISimpleMap** out) override { return map_->GetSubMap(path, out); }
    Result SetSubMap(const char* path, ISimpleMap* source) override { return map_->SetSubMap(path, source); }
    Result GetObject(const char* key, IObject** out) override { return map_->GetObject(key, out); }
    Result SetObject(const char* key, IObject* object) override { return map_->SetObject(key, object); }
    Result HasKey(const char* key, bool* out) override { return map_->HasKey(key, out); }
    Result Clone(ISimpleMap** out) override { return map_->Clone(out); }
    Result GetIteratorNoSubMaps(ISimpleMapIterator** out) override { return map_->GetIteratorNoSubMaps(out); }
    Result SetBatchUpdatingMode(bool mode) override { return map_->SetBatchUpdatingMode(mode); }
    Result GetBatchUpdatingMode(bool* out) override { return map_->GetBatchUpdatingMode(out); }

    void SubscribeChanged(IEventHandler* handler, std::uint64_t cookie, bool connect) override
    {
        map_->SubscribeChanged(handler, cookie, connect);
    }

    void SubscribeBatchUpdatingModeChanged(IEventHandler* handler, std::uint64_t cookie, bool connect) override
    {
        map_->SubscribeBatchUpdatingModeChanged(handler, cookie, connect);
    }

private:
    const Ref<ISimpleMap> map_;
};

}  // namespace tvx::check
