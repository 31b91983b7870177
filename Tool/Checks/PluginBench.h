// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ITVXPlugin.h"
#include "Tool/Checks/MetadataMap.h"
#include "Tool/Checks/Objects.h"

#include <functional>
#include <string>

namespace tvx::check
{

// A getter of a fixed key.
struct PluginGetter
{
    const char* name;
    const char* key;
    Result (IConstTVXPlugin::*get)(IString** out);
};

constexpr PluginGetter PluginGetters[] = {
    {"GetId", "id", &IConstTVXPlugin::GetId},
    {"GetName", "name", &IConstTVXPlugin::GetName},
    {"GetSubname", "subname", &IConstTVXPlugin::GetSubname},
    {"GetCopyright", "copyright", &IConstTVXPlugin::GetCopyright},
    {"GetVersion", "version", &IConstTVXPlugin::GetVersion},
    {"GetComment", "comment", &IConstTVXPlugin::GetComment},
};

// The face of the collection export that tells the metadata.
Ref<ITVXPlugin> GetPlugin(Trial& trial);

// Expects 0 of SetMetadataMap.
void SetMetadata(Trial& trial, ITVXPlugin& plugin, ISimpleMap* map);

// A text for each getter, which names it.
MetadataMap::Texts MakeMetadataTexts();

// Runs for every getter of the plug-in, GetMetadata first.
using GetText = std::function<Result(IString** out)>;
void ForEachPluginGetter(IConstTVXPlugin& plugin,
                         const std::function<void(const std::string& name, const GetText& get)>& run);

}  // namespace tvx::check
