// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/PluginBench.h"

namespace tvx::check
{

namespace
{

using Texts = std::vector<std::string>;

void GivesText(Trial& trial, const std::string& what, const std::string& expected, const GetText& get)
{
    Ref<IString> text;
    trial.Gives(what, get(text.Receive()), TVX_S_VALUE);
    trial.Expect(static_cast<bool>(text), what + " to give a string", "null");
    trial.Equal("the text of " + what, text->GetText(), expected);
    trial.Equal("the references on the string of " + what, text->GetRefCount(), 1u);
}

void GivesTheTextOfAnyKey(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto map = MakeRef<MetadataMap>(MetadataMap::Texts{{"Some Key", "some text"}, {"", "of the empty key"}});
    SetMetadata(trial, *plugin, map.Get());
    for (const auto& [key, text] : map->texts)
        GivesText(trial, "GetMetadata of " + Show(key), text,
                  [&, name = key.c_str()](IString** out) { return plugin->GetMetadata(name, out); });
    trial.Equal("what the map was asked", map->calls, Texts{"GetString ", "GetString Some Key"});
    SetMetadata(trial, *plugin, nullptr);
}

void GivesTheTextOfEachFixedKey(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto map = MakeRef<MetadataMap>(MakeMetadataTexts());
    SetMetadata(trial, *plugin, map.Get());
    for (const auto& getter : PluginGetters)
    {
        map->calls.clear();
        GivesText(trial, getter.name, std::string("text of ") + getter.key,
                  [&](IString** out) { return (plugin.Get()->*getter.get)(out); });
        trial.Equal(std::string("what the map was asked by ") + getter.name, map->calls,
                    Texts{std::string("GetString ") + getter.key});
    }
    SetMetadata(trial, *plugin, nullptr);
}

void LeavesOutAloneForAnAbsentKey(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto map = MakeRef<MetadataMap>();
    SetMetadata(trial, *plugin, map.Get());
    const auto mark = MakeRef<host::HostString>("mark");
    ForEachPluginGetter(*plugin,
                        [&](const std::string& name, const auto& get)
                        {
                            IString* out = mark.Get();
                            trial.Gives(name + " of an absent key", get(&out), TVX_S_NOKEY);
                            trial.Same("the out of " + name + " of an absent key, which is left alone,", out,
                                       static_cast<IString*>(mark.Get()));
                        });
    SetMetadata(trial, *plugin, nullptr);
}

void PassesTheResultOfTheMapOn(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto map = MakeRef<MetadataMap>(MakeMetadataTexts());
    SetMetadata(trial, *plugin, map.Get());
    for (const Result failure : {-42, TVX_E_FAIL, TVX_E_POINTER})
    {
        map->failure = failure;
        Ref<IString> text;
        ForEachPluginGetter(*plugin, [&](const std::string& name, const auto& get)
                            { trial.Gives(name + " of a map that fails", get(text.Receive()), failure); });
    }
    SetMetadata(trial, *plugin, nullptr);
}

void PassesOutOn(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto map = MakeRef<MetadataMap>(MakeMetadataTexts());
    SetMetadata(trial, *plugin, map.Get());
    map->failure = -42;
    ForEachPluginGetter(*plugin,
                        [&](const std::string& name, const auto& get)
                        {
                            trial.Gives(name + " with a null out of a map that gives -42 then", get(nullptr), -42);
                            trial.Expect(!map->outs.empty() && map->outs.back() == nullptr,
                                         "the map to be given the null out of " + name, "another out or no call");
                        });
    SetMetadata(trial, *plugin, nullptr);
}

void HoldsItsMap(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto first = MakeRef<MetadataMap>();
    const auto second = MakeRef<MetadataMap>();
    for (const char* const what : {"a map that was set", "a map that was set twice"})
    {
        SetMetadata(trial, *plugin, first.Get());
        trial.Equal(std::string("the references on ") + what, first->GetRefCount(), 2u);
    }
    SetMetadata(trial, *plugin, second.Get());
    trial.Equal("the references on a map that was replaced", first->GetRefCount(), 1u);
    trial.Equal("the references on the map in its place", second->GetRefCount(), 2u);
    SetMetadata(trial, *plugin, nullptr);
    trial.Equal("the references on a map that was taken away", second->GetRefCount(), 1u);
    SetMetadata(trial, *plugin, nullptr);
}

void KeepsNoReferencesOfReading(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto map = MakeRef<MetadataMap>(MakeMetadataTexts());
    SetMetadata(trial, *plugin, map.Get());
    const auto before = plugin->GetRefCount();
    Ref<IString> text;
    ForEachPluginGetter(*plugin, [&](const std::string&, const auto& get) { get(text.Receive()); });
    trial.Equal("the references on the map after every getter", map->GetRefCount(), 2u);
    trial.Equal("the references on the plug-in after every getter", plugin->GetRefCount(), before);
    SetMetadata(trial, *plugin, nullptr);
}

void GivesTheSameByEveryFace(Trial& trial)
{
    const auto plugin = GetPlugin(trial);
    const auto map = MakeRef<MetadataMap>(MakeMetadataTexts());
    SetMetadata(trial, *plugin, map.Get());
    const auto reader = trial.Get<IConstTVXPlugin>(CollectionExport);
    GivesText(trial, "GetName of the export fetched again", "text of name",
              [&](IString** out) { return reader->GetName(out); });
    SetMetadata(trial, *plugin, nullptr);
}

constexpr Check Checks[] = {
    {"value-plugin-gives-the-text-of-any-key", "GetMetadata is asked for two keys of its map.",
     "GetMetadata gives 102 and a new string, by one GetString of the metadata map for the very key.",
     GivesTheTextOfAnyKey},
    {"value-plugin-gives-the-text-of-each-fixed-key",
     "GetId, GetName, GetSubname, GetCopyright, GetVersion and "
     "GetComment are called.",
     "Each getter is GetMetadata for the key of its own name in small letters: id, name, subname and so on.",
     GivesTheTextOfEachFixedKey},
    {"value-plugin-absent-key-leaves-out-alone", "Every getter is called with an empty metadata map.",
     "For an absent key the map's 101, which is no failure, is passed on, and out is left alone.",
     LeavesOutAloneForAnAbsentKey},
    {"value-plugin-passes-results-on", "Every getter is called with a metadata map that fails.",
     "The result of the map is passed on unchanged and without a report, whatever it is.", PassesTheResultOfTheMapOn},
    {"value-plugin-passes-out-on", "Every getter is called with a null out.",
     "Out is the metadata map's to check: it is handed on as it is, and the map's result comes back.", PassesOutOn},
    {"value-plugin-holds-its-map", "Metadata maps are set, set again, replaced and taken away.",
     "SetMetadataMap gives 0, takes one reference on the map and releases the one before; null takes it away.",
     HoldsItsMap},
    {"value-plugin-keeps-no-references-of-reading", "References are counted after every getter was called.",
     "Reading metadata leaves no references behind on the map or the plug-in.", KeepsNoReferencesOfReading},
    {"value-plugin-metadata-belongs-to-the-export",
     "The metadata is read by the other interface of the export, fetched "
     "again.",
     "The metadata map belongs to the one object of the export, whichever interface it is set or read by.",
     GivesTheSameByEveryFace},
};

}  // namespace

extern const Family ValuesOfPluginFamily = {"values", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
