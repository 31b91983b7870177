// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/ISimpleMap.h"

#include <string>
#include <utility>
#include <vector>

namespace tvx::check
{

// A settings map of the caller's side, Class, that records every call. Metadata is only read by GetString, which is left to
// Class; nothing else does anything.
template <class Class>
class RecordingMapImpl : public ClassImpl<Class, ISimpleMap>
{
public:
    using Interfaces = InterfaceList<ISimpleMap, IObject, IObjectBase>;

    Result SetDouble(const char*, double) override { return Record("SetDouble"); }
    Result SetInt(const char*, std::int32_t) override { return Record("SetInt"); }
    Result SetString(const char*, const char*) override { return Record("SetString"); }
    Result GetDouble(const char*, double*) override { return Record("GetDouble"); }
    Result GetInt(const char*, std::int32_t*) override { return Record("GetInt"); }
    Result GetIterator(ISimpleMapIterator**) override { return Record("GetIterator"); }
    Result GetSubMap(const char*, ISimpleMap**) override { return Record("GetSubMap"); }
    Result SetSubMap(const char*, ISimpleMap*) override { return Record("SetSubMap"); }
    Result GetObject(const char*, IObject**) override { return Record("GetObject"); }
    Result SetObject(const char*, IObject*) override { return Record("SetObject"); }
    Result HasKey(const char*, bool*) override { return Record("HasKey"); }
    Result Clone(ISimpleMap**) override { return Record("Clone"); }
    Result GetIteratorNoSubMaps(ISimpleMapIterator**) override { return Record("GetIteratorNoSubMaps"); }
    void SubscribeChanged(IEventHandler*, std::uint64_t, bool) override { Record("SubscribeChanged"); }
    Result SetBatchUpdatingMode(bool) override { return Record("SetBatchUpdatingMode"); }
    Result GetBatchUpdatingMode(bool*) override { return Record("GetBatchUpdatingMode"); }
    void SubscribeBatchUpdatingModeChanged(IEventHandler*, std::uint64_t, bool) override
    {
        Record("SubscribeBatchUpdatingModeChanged");
    }

    std::vector<std::string> calls;

protected:
    ~RecordingMapImpl() = default;

    Result Record(std::string call)
    {
        calls.push_back(std::move(call));
        return TVX_E_FAIL;
    }
};

}  // namespace tvx::check
