// SPDX-License-Identifier: MIT
#pragma once

#include "Host/HostString.h"
#include "Tool/Checks/RecordingMap.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tvx::check
{

// A settings map of the caller's side that gives texts and records every call; nothing but GetString does anything.
class MetadataMap final : public RecordingMapImpl<MetadataMap>
{
public:
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

    Texts texts;
    Result failure = TVX_OK;
    std::vector<IString**> outs;  // of the calls of GetString
};

}  // namespace tvx::check
