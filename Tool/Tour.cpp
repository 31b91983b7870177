// SPDX-License-Identifier: MIT
#include "Tool/Tour.h"

#include "Host/SettingsJson.h"
#include "Host/SettingsMap.h"
#include "Host/TextFile.h"
#include "Interfaces/ISerializable.h"
#include "Platform/StandardStreams.h"
#include "Tool/Narration.h"

#include <iostream>

namespace tvx::tool
{

namespace
{

constexpr const char JsonContract[] = "com.talvere.serializers.JSONSerializerContract/1.0";

// How many entries both maps have, or -1 when they differ.
int CountEqualEntries(ISimpleMap& left, ISimpleMap& right)
{
    const auto one = host::ReadEntries(left);
    const auto other = host::ReadEntries(right);
    return one && other && *one == *other ? static_cast<int>(one->size()) : -1;
}

}  // namespace

Tour::Tour(host::ModuleCatalog catalog, std::string file) : catalog_(std::move(catalog)), file_(std::move(file)) {}

ExitCode Tour::Run()
{
    Say("A tour of TVX Generic Plugins on ", file_);
    const bool whole = ShowDocuments() && LoadModules() && WriteInBatch() && ReadTyped() && ReadSubMap() &&
                       KeepObject() && UseContainers() && PaintImage() && UseLogger() && SerialiseMap() &&
                       ReadMapBack();
    if (whole)
        Unload();
    if (!Platform::GetStandardOutput().flush() && code_ == Ok)
        Fail({host::ErrorKind::CannotRead, "standard output cannot be written to"});
    return code_;
}

bool Tour::ShowDocuments()
{
    OpenChapter("What is installed? The documents of the modules, read from their files; no code has run yet.");
    for (const auto& module : catalog_.GetModules())
    {
        Say("  ", module.file.filename().string());
        for (const auto& entry : module.document.exports)
            Say("    ", entry.id, "  ", entry.metadata.name);
    }
    for (const auto& problem : catalog_.GetProblems())
        Say("  not readable: ", problem.message);
    return true;
}

bool Tour::LoadModules()
{
    OpenChapter("Load them. The settings map export imports a JSON serializer; the host finds it by its contract.");
    const auto json = catalog_.FindByContract(JsonContract);
    manager_ = std::make_unique<host::LibraryManager>(catalog_);
    auto map = host::MakeSettingsMap(*manager_);
    if (!map)
        return Fail(map.GetError());
    map_ = std::move(*map);
    const std::string serializer = json.entry == nullptr ? JsonContract : json.entry->id;
    auto serializers = manager_->GetExportAs<ISerializerFactory>(serializer);
    if (!serializers)
        return Fail(serializers.GetError());
    serializers_ = std::move(*serializers);
    for (const auto& file : manager_->GetLoadedFiles())
        Say("  loaded ", file.filename().string());
    Say("  import \"Serializer\" <- ", serializer);
    return true;
}

bool Tour::WriteInBatch()
{
    OpenChapter("Fill a settings map. A new map is in batch updating mode: however many writes, one \"Changed\".");
    const auto text = host::ReadTextFile(file_);
    if (!text)
        return Fail(text.GetError());
    const auto narrator = MakeRef<Narrator>();
    map_->SubscribeChanged(narrator.Get(), 0, true);
    map_->SubscribeBatchUpdatingModeChanged(narrator.Get(), 0, true);
    const auto count = host::ReadSettings(*text, file_, *map_);
    if (count)
        SwitchBatchOff(*count);
    map_->SubscribeChanged(narrator.Get(), 0, false);
    map_->SubscribeBatchUpdatingModeChanged(narrator.Get(), 0, false);
    return count ? true : Fail(count.GetError());
}

void Tour::SwitchBatchOff(std::size_t count)
{
    Say("  wrote ", count, " settings; nothing was heard. Now the mode goes off:");
    map_->SetBatchUpdatingMode(false);
    Say("  and one more write, told at once:");
    map_->SetInt("Display\\Zoom\\Maximum", 32);
}

bool Tour::ReadTyped()
{
    OpenChapter("Read it typed. Every value is kept as text; the getters convert, and an absent key is no failure.");
    std::int32_t exposure = 0;
    double gain = 0.0;
    Ref<IString> absent;
    if (!Expect("GetInt", map_->GetInt("Acquisition\\ExposureMicroseconds", &exposure), TVX_OK) ||
        !Expect("GetDouble", map_->GetDouble("Acquisition\\Gain", &gain), TVX_OK) ||
        !Expect("GetString of an absent key", map_->GetString("Acquisition\\Colour", absent.Receive()), TVX_S_NOKEY))
        return false;
    Say("  GetInt     Acquisition\\ExposureMicroseconds -> ", exposure);
    Say("  GetDouble  Acquisition\\Gain -> ", gain);
    if (!SayText("  GetString  Storage\\Notes -> ", "Storage\\Notes"))
        return false;
    Say("  GetString  Acquisition\\Colour -> result ", TVX_S_NOKEY, ", there is no such key");
    return true;
}

bool Tour::ReadSubMap()
{
    OpenChapter("Take a sub-map: everything below a path, as a map of its own.");
    Ref<ISimpleMap> below;
    return Expect("GetSubMap", map_->GetSubMap("Acquisition\\Region", below.Receive()), TVX_S_VALUE, below) &&
           SayEntries(*below);
}

bool Tour::SayText(std::string_view words, const char* key)
{
    Ref<IString> text;
    const auto result = map_->GetString(key, text.Receive());
    if (result == TVX_S_VALUE && !text)
        return FailForNull("GetString");
    Say(words, result == TVX_S_VALUE ? text->GetText() : "");
    return true;
}

bool Tour::SayEntries(ISimpleMap& map)
{
    const auto entries = host::ReadEntries(map);
    if (!entries)
        return Fail(entries.GetError());
    for (const auto& [key, value] : *entries)
        Say("  ", key, " = ", value);
    return true;
}

bool Tour::KeepObject()
{
    OpenChapter("Keep a whole object in one entry: here a sub-map, as the JSON that the imported serializer makes.");
    Ref<ISimpleMap> zoom;
    Ref<IObject> back;
    if (!Expect("GetSubMap", map_->GetSubMap("Display\\Zoom", zoom.Receive()), TVX_S_VALUE, zoom) ||
        !Expect("SetObject", map_->SetObject("Presets\\Zoom", zoom.Get()), TVX_OK) ||
        !SayText("  Presets\\Zoom = ", "Presets\\Zoom") ||
        !Expect("GetObject", map_->GetObject("Presets\\Zoom", back.Receive()), TVX_OK, back))
        return false;
    const auto preset = Query<ISimpleMap>(back);
    const int count = preset ? CountEqualEntries(*zoom, *preset) : -1;
    if (count < 0)
        return Fail({host::ErrorKind::Misbehaved, "the object read back differs from the one kept"});
    Say("  read back: an equal map of ", count, " entries");
    return true;
}

bool Tour::SerialiseMap()
{
    OpenChapter("Serialise the whole map to JSON, under the identifier of its format.");
    const auto serializable = Query<ISerializable>(map_);
    if (!Expect("the serializer", WriteToText(*serializers_, serializable.Get(), document_), TVX_OK))
        return false;
    constexpr std::size_t shown = 160;
    Say("  ", document_.substr(0, shown), " …");
    Say("  ", document_.size(), " bytes");
    return true;
}

bool Tour::ReadMapBack()
{
    OpenChapter("Read it back. The host finds the export that reads the format; the two maps must be equal.");
    Ref<IObjectBase> object;
    if (!Expect("the deserializer", ReadFromText(*serializers_, document_, object), TVX_OK, object))
        return false;
    copy_ = Query<ISimpleMap>(object);
    const int count = copy_ ? CountEqualEntries(*map_, *copy_) : -1;
    if (count < 0)
        return Fail({host::ErrorKind::Misbehaved, "the map read back differs from the one written"});
    Say("  equal, entry by entry: ", count);
    return true;
}

void Tour::Unload()
{
    OpenChapter("Let everything go. The modules are unmapped for real.");
    copy_ = nullptr;
    map_ = nullptr;
    serializers_ = nullptr;
    manager_.reset();
    Say("\nWhat to try next:");
    Say("  tvx list                                        what is installed, with contracts and imports");
    Say("  tvx info FILE.tvxlib --json                     one module's document, for programs");
    Say("  tvx settings ", file_, " list Display");
    Say("  tvx settings ", file_, " get 'Acquisition\\Gain'");
    Say("  and README.md has a host of thirty lines to start from.");
}

void Tour::OpenChapter(std::string_view title)
{
    Say("\n", ++chapter_, ". ", title);
}

bool Tour::Fail(const host::Error& error)
{
    Platform::GetStandardOutput().flush();
    std::cerr << "tvx: " << error.message << std::endl;
    code_ = GetExitCode(error.kind);
    return false;
}

bool Tour::Expect(std::string_view what, Result result, Result wanted)
{
    if (result == wanted)
        return true;
    if (result == TVX_S_NOKEY || wanted == TVX_S_NOKEY)
        return Fail({host::ErrorKind::BadSettings, file_ + " does not suit the tour: " + std::string(what) +
                                                       (result == TVX_S_NOKEY ? " finds no key" : " finds one")});
    return Fail({host::ErrorKind::Misbehaved,
                 std::string(what) + " gives " + std::to_string(result) + " instead of " + std::to_string(wanted)});
}

bool Tour::FailForNull(std::string_view what)
{
    return Fail({host::ErrorKind::Misbehaved, std::string(what) + " gives null"});
}

}  // namespace tvx::tool
