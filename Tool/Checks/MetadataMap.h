// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Host/HostString.h"
#include "Interfaces/ISimpleMap.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tvx::check
{

// A settings map of the caller's side that gives texts and records every call; nothing but GetString does anything.
class MetadataMap final : public ClassImpl<MetadataMap, ISimpleMap>
{
public:
    using Interfaces = InterfaceList<ISimpleMap, IObject, IObjectBase>;
    using Texts = std::map<std::string, std::string>;

    explicit MetadataMap(Texts content = {}) : texts(std::move(content)) {}

    // As a settings map of the module does, unless it was told to fail.
    Result GetString(const char* key, IString** out) override
    {
        Record("GetString " + std::string(key == nullptr ? "null" : key));
        outs.push_back(out);
        const auto found = key == nullptr ? texts.end() : texts.find(key);
        if (TVX_FAILED(failure) || out == nullptr)
            return failure;
        if (found == texts.end())
            return TVX_S_NOKEY;
        HandOut<IString>(MakeRef<host::HostString>(found->second).Get(), out);
        return TVX_S_VALUE;
    }

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

    Texts texts;
    Result failure = TVX_OK;
    std::vector<std::string> calls;
    std::vector<IString**> outs;  // of the calls of GetString

private:
    Result Record(std::string call)
    {
        calls.push_back(std::move(call));
        return TVX_E_FAIL;
    }
};

}  // namespace tvx::check
