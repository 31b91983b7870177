// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/PluginBench.h"

namespace tvx::check
{

namespace
{

using Texts = std::vector<std::string>;

void ReportsGetters(Trial& trial, ITVXPlugin& plugin, const std::string& when)
{
    const auto mark = MakeRef<host::HostString>("mark");
    ForEachPluginGetter(plugin,
                        [&](const std::string& name, const auto& get)
                        {
                            IString* out = mark.Get();
                            trial.Reports(name + " " + when, "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                                          [&] { return get(&out); });
                            trial.Same("the out of " + name + " " + when + ", which is left alone,", out,
                                       static_cast<IString*>(mark.Get()));
                        });
}

void ReportsGettersWithoutAMap(Trial& trial)
{
    ReportsGetters(trial, *GetPlugin(trial), "without a metadata map");
}

void ReportsGettersAfterTheMap(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto map = MakeRef<MetadataMap>(MakeMetadataTexts());
    SetMetadata(trial, *plugin, map.Get());
    SetMetadata(trial, *plugin, nullptr);
    ReportsGetters(trial, *plugin, "after the metadata map was taken away");
    trial.Equal("what the map was asked", map->calls, Texts());
}

void ReportsBeforeOut(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    ForEachPluginGetter(*plugin,
                        [&](const std::string& name, const auto& get)
                        {
                            trial.Reports(name + " with a null out without a metadata map", "TVX_CHECK_PRECOND",
                                          TVX_E_PRECONDITION, [&] { return get(nullptr); });
                        });
}

constexpr Check Checks[] = {
    {"report-plugin-getters-without-a-map", "Every getter is called before a metadata map is set.",
     "Without a metadata map each getter gives -7 with a report of TVX_CHECK_PRECOND, and leaves out alone.",
     ReportsGettersWithoutAMap},
    {"report-plugin-getters-after-the-map", "Every getter is called after the metadata map was taken away.",
     "Without a metadata map each getter gives -7 with a report, also when there was one before.",
     ReportsGettersAfterTheMap},
    {"report-plugin-getters-check-the-map-first", "Every getter is called with a null out without a metadata map.",
     "The metadata map is checked before out: -7 with a report of TVX_CHECK_PRECOND.", ReportsBeforeOut},
};

}  // namespace

extern const Family ReportsOfPluginFamily = {"report-lines", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
