// SPDX-License-Identifier: MIT
#include "Tool/Checks/PluginBench.h"

namespace tvx::check
{

Ref<ITVXPlugin> GetPlugin(Trial& trial)
{
    return trial.Get<ITVXPlugin>(CollectionExport);
}

void SetMetadata(Trial& trial, ITVXPlugin& plugin, ISimpleMap* map)
{
    trial.Gives("SetMetadataMap", plugin.SetMetadataMap(map), TVX_OK);
}

MetadataMap::Texts MakeMetadataTexts()
{
    MetadataMap::Texts texts;
    for (const auto& getter : PluginGetters)
        texts[getter.key] = std::string("text of ") + getter.key;
    return texts;
}

void ForEachPluginGetter(IConstTVXPlugin& plugin,
                         const std::function<void(const std::string& name, const GetText& get)>& run)
{
    run("GetMetadata", [&](IString** out) { return plugin.GetMetadata("some key", out); });
    for (const auto& getter : PluginGetters)
        run(getter.name, [&](IString** out) { return (plugin.*getter.get)(out); });
}

}  // namespace tvx::check
