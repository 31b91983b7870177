// SPDX-License-Identifier: MIT
#include "Interfaces/ITVXPlugin.h"
#include "Tool/Checks/RecordingMap.h"
#include "Tool/Checks/Slots.h"

namespace tvx::check
{

namespace
{

// A settings map in which every key has itself as its text.
class EchoingMap final : public RecordingMapImpl<EchoingMap>
{
public:
    Result GetString(const char* key, IString** out) override
    {
        const std::string text = key == nullptr ? "null" : key;
        Record("GetString " + text);
        HandOut<IString>(MakeRef<host::HostString>(text).Get(), out);
        return TVX_S_VALUE;
    }
};

// A getter of metadata reads its own key of the map, by GetString, and gives what the map gives.
template <class Call>
void ExpectMetadata(Trial& trial, const std::string& slot, const std::string& key, Call&& call)
{
    const std::string what = "slot " + slot + " of IConstTVXPlugin";
    const auto plugin = trial.Get<ITVXPlugin>(CollectionExport);
    const auto map = MakeRef<EchoingMap>();
    trial.Gives("SetMetadataMap", plugin->SetMetadataMap(map.Get()), TVX_OK);
    const auto text =
        TakeFromC<IString>(trial, what, TVX_S_VALUE, [&](void** out) { return call(ToC<ITVXPlugin>(plugin), out); });
    plugin->SetMetadataMap(nullptr);
    trial.Equal("what " + what + " asks of the map", map->calls, std::vector<std::string>{"GetString " + key});
    trial.Equal("the text that " + what + " gives", text->GetText(), key);
}

template <FixedText Slot, FixedText Key, std::int32_t (*Call)(void* object, void** out)>
void GivesMetadata(Trial& trial)
{
    ExpectMetadata(trial, Slot.characters, Key.characters, Call);
}

void GivesMetadataOfAnyKey(Trial& trial)
{
    ExpectMetadata(trial, "11 (GetMetadata)", "any key",
                   [](void* plugin, void** out) { return CallIConstTVXPluginGetMetadata(plugin, "any key", out); });
}

void SetsMetadataMap(Trial& trial)
{
    const auto plugin = trial.Get<ITVXPlugin>(CollectionExport);
    const auto map = MakeRef<EchoingMap>();
    void* const face = ToC<ITVXPlugin>(plugin);
    trial.Gives("slot 18 (SetMetadataMap) of ITVXPlugin", CallITVXPluginSetMetadataMap(face, ToC<ISimpleMap>(map)),
                TVX_OK);
    trial.Equal("the references on the map given to slot 18 (SetMetadataMap)", map->GetRefCount(), 2u);
    trial.Gives("slot 18 (SetMetadataMap) of ITVXPlugin with null", CallITVXPluginSetMetadataMap(face, nullptr),
                TVX_OK);
    trial.Equal("the references on the map after slot 18 (SetMetadataMap) with null", map->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"slot-plugin-11-get-metadata", "GetMetadata of the collection factory is called by its number.",
     "Slot 11 of IConstTVXPlugin is GetMetadata: it reads the key that it is given.", GivesMetadataOfAnyKey},
    {"slot-plugin-12-get-id", "GetId of the collection factory is called by its number.",
     "Slot 12 of IConstTVXPlugin is GetId: it reads the key \"id\".",
     GivesMetadata<"12 (GetId)", "id", CallIConstTVXPluginGetId>},
    {"slot-plugin-13-get-name", "GetName of the collection factory is called by its number.",
     "Slot 13 of IConstTVXPlugin is GetName: it reads the key \"name\".",
     GivesMetadata<"13 (GetName)", "name", CallIConstTVXPluginGetName>},
    {"slot-plugin-14-get-subname", "GetSubname of the collection factory is called by its number.",
     "Slot 14 of IConstTVXPlugin is GetSubname: it reads the key \"subname\".",
     GivesMetadata<"14 (GetSubname)", "subname", CallIConstTVXPluginGetSubname>},
    {"slot-plugin-15-get-copyright", "GetCopyright of the collection factory is called by its number.",
     "Slot 15 of IConstTVXPlugin is GetCopyright: it reads the key \"copyright\".",
     GivesMetadata<"15 (GetCopyright)", "copyright", CallIConstTVXPluginGetCopyright>},
    {"slot-plugin-16-get-version", "GetVersion of the collection factory is called by its number.",
     "Slot 16 of IConstTVXPlugin is GetVersion: it reads the key \"version\".",
     GivesMetadata<"16 (GetVersion)", "version", CallIConstTVXPluginGetVersion>},
    {"slot-plugin-17-get-comment", "GetComment of the collection factory is called by its number.",
     "Slot 17 of IConstTVXPlugin is GetComment: it reads the key \"comment\".",
     GivesMetadata<"17 (GetComment)", "comment", CallIConstTVXPluginGetComment>},
    {"slot-plugin-18-set-metadata-map", "SetMetadataMap of the collection factory is called by its number.",
     "Slot 18 of ITVXPlugin is SetMetadataMap: the map is kept with a reference until it is replaced.",
     SetsMetadataMap},
};

}  // namespace

extern const Family SlotsOfPluginFamily = {"slots", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
