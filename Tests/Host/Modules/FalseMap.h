// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/HandOut.h"
#include "Src/SimpleMap.h"

#include <cstdlib>
#include <string>
#include <utility>

namespace tvx::test
{

// What the program wants the module to do wrong: a call that then succeeds and gives null. Null when it wants no call.
inline const char* GetFalseCall()
{
    return std::getenv("FALSE_SETTINGS");
}

inline bool GivesNull(const std::string& call)
{
    const char* const wanted = GetFalseCall();
    return wanted != nullptr && wanted == call;
}

// Stands on a key without a value.
class ValuelessIterator final : public CountedImpl<ValuelessIterator, ISimpleMapIterator>
{
public:
    using Interfaces = InterfaceList<IObjectBase>;

    const char* GetKey() override { return "Key"; }
    const char* GetValue() override { return nullptr; }
    Result Next() override { return TVX_OK; }
    Result IsEnd(bool* out) override
    {
        *out = false;
        return TVX_OK;
    }
};

// A settings map that works but for the call that is to go wrong, named with its key or path: "GetString Name". It keeps one
// object, without a serializer.
class FalseMap final : public SimpleMap
{
public:
    explicit FalseMap(std::string path = "") : path_(std::move(path)) {}

    Result GetString(const char* key, IString** out) override
    {
        return GivesNull("GetString " + std::string(key)) ? TVX_S_VALUE : SimpleMap::GetString(key, out);
    }

    Result GetIterator(ISimpleMapIterator** out) override
    {
        if (GivesNull("GetIterator of " + path_))
            return TVX_OK;
        if (GivesNull("GetValue of " + path_))
            return HandOutNew<ValuelessIterator>(out);
        return SimpleMap::GetIterator(out);
    }

    Result GetSubMap(const char* path, ISimpleMap** out) override
    {
        if (GivesNull("GetSubMap " + std::string(path)))
            return TVX_S_VALUE;
        Ref<ISimpleMap> entries;
        const auto result = SimpleMap::GetSubMap(path, entries.Receive());
        const auto below = MakeRef<FalseMap>(path);
        below->SetSubMap("", entries.Get());
        HandOut<ISimpleMap>(below.Get(), out);
        return result;
    }

    Result SetObject(const char* key, IObject* object) override
    {
        kept_ = Ref<IObject>(object);
        return SetString(key, "kept");
    }

    Result GetObject(const char* key, IObject** out) override
    {
        if (!GivesNull("GetObject " + std::string(key)))
            HandOut(kept_.Get(), out);
        return TVX_OK;
    }

    void FireBatchUpdatingModeChanged(IVariant* argument) override
    {
        SimpleMap::FireBatchUpdatingModeChanged(GivesNull("BatchUpdatingModeChanged") ? nullptr : argument);
    }

private:
    std::string path_;
    Ref<IObject> kept_;
};

}  // namespace tvx::test
