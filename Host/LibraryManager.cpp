// SPDX-License-Identifier: MIT
#include "Host/LibraryManager.h"

#include "Host/ExportProxy.h"
#include "Host/LibManagerFace.h"
#include "Host/LifeTracer.h"
#include "Host/PluginMetadata.h"
#include "Host/SettingsMap.h"
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/ITVXPlugin.h"

#include <algorithm>

namespace tvx::host
{

namespace
{

Error NotExported(std::string_view id)
{
    return MakeError(ErrorKind::NotExported, "no installed module exports \"" + std::string(id) + "\"");
}

// What stands behind the last slash of an identifier.
std::string_view GetVersion(std::string_view id)
{
    return id.substr(std::min(id.rfind('/'), id.size() - 1) + 1);
}

}  // namespace

LibraryManager::LibraryManager(ModuleCatalog catalog)
    : catalog_(std::move(catalog)),
      face_(MakeRef<LibManagerFace>(*this)),
      tracer_(LifeTracer::FindOfProcess())
{
    Offer(LibManagerContract, Ref<IObjectBase>(static_cast<ILibManager*>(face_.Get())));
}

LibraryManager::~LibraryManager()
{
    face_->ForgetManager();
    for (const auto& [id, object] : exports_)
    {
        if (const auto imports = Query<IImportsContainer>(object))
            imports->ClearImports();
        if (const auto plugin = Query<ITVXPlugin>(object))
            plugin->SetMetadataMap(nullptr);
    }
    exports_.clear();
    offered_.clear();
    ReportHeld();
    while (!modules_.empty())
        modules_.pop_back();
    if (tracer_ != nullptr)
        tracer_->NoteUnloaded();
}

// The writer is the program's, and may throw.
void LibraryManager::ReportHeld() const noexcept
try
{
    if (tracer_ != nullptr)
        tracer_->Report(GetLoadedFiles());
}
catch (...)
{
}

void LibraryManager::Offer(const std::string& contract, const Ref<IObjectBase>& object)
{
    offered_[contract] = tracer_ != nullptr ? tracer_->GetOwn(object) : object;
}

void LibraryManager::Configure(const Ref<IConfiguration>& configuration)
{
    if (tracer_ == nullptr)
    {
        configuration_ = configuration;
        return;
    }
    // A stand-in has one real interface behind it, and that is the same one.
    const auto own = tracer_->GetOwn(Ref<IObjectBase>(configuration));
    configuration_ = Ref<IConfiguration>(static_cast<IConfiguration*>(own.Get()));
}

void LibraryManager::TraceLives(LifeTracer& tracer)
{
    tracer_ = &tracer;
}

Outcome<Ref<IObjectBase>> LibraryManager::GetExport(std::string_view id)
{
    auto object = FetchExport(id);
    if (tracer_ != nullptr && object)
        return tracer_->Trace(*object, id);
    return object;
}

Outcome<Ref<IObjectBase>> LibraryManager::GetReader(std::string_view serid)
{
    auto object = FetchReader(serid);
    if (tracer_ != nullptr && object)
        return tracer_->Trace(*object, catalog_.FindBySerializationId(serid).entry->id);
    return object;
}

Ref<IObjectBase> LibraryManager::FetchImport(std::string_view id)
{
    const auto object = FetchExport(id);
    if (object)
        return *object;
    importProblems_.push_back(object.GetError());
    return nullptr;
}

Outcome<Ref<IObjectBase>> LibraryManager::FetchExport(std::string_view id)
{
    const auto place = catalog_.FindById(id);
    if (place.entry == nullptr)
        return NotExported(id);
    return Fetch(place);
}

Outcome<Ref<IObjectBase>> LibraryManager::FetchReader(std::string_view serid)
{
    const auto place = catalog_.FindBySerializationId(serid);
    if (place.entry == nullptr)
        return MakeError(ErrorKind::NotExported, "no installed module reads the format \"" + std::string(serid) + "\"");
    return Fetch(place);
}

Outcome<Ref<IObjectBase>> LibraryManager::Fetch(const ExportPlace& place)
{
    const auto known = exports_.find(place.entry->id);
    if (known != exports_.end())
        return known->second;
    auto object = FetchUnconnected(place);
    if (!object)
        return object;
    const auto imports = Query<IImportsContainer>(*object);
    if (!place.entry->imports.empty() && !imports)
        return Refused(place.entry->id, IImportsContainer::Id);
    const auto proxies = MakeProxies(*place.entry);
    if (!proxies)
        return proxies.GetError();
    exports_.emplace(place.entry->id, *object);  // before the object hears of its imports: it may ask for itself
    GiveConfiguration(**object);
    if (imports)
        Connect(*imports, *proxies);
    TellMetadata(place, **object);
    return object;
}

// The object of an export as its module gives it, whether or not its imports were ever set.
Outcome<Ref<IObjectBase>> LibraryManager::FetchUnconnected(const ExportPlace& place)
{
    const auto module = GetModule(place.module);
    if (!module)
        return module.GetError();
    return (*module)->GetExport(place.entry->id);
}

Outcome<const Module*> LibraryManager::GetModule(std::size_t place)
{
    const auto isMeant = [&](const Loaded& loaded) { return loaded.place == place; };
    const auto known = std::find_if(modules_.begin(), modules_.end(), isMeant);
    if (known != modules_.end())
        return &known->module;
    auto module = Module::Load(catalog_.GetModules()[place].file);
    if (!module)
        return module.GetError();
    if (tracer_ != nullptr)
        tracer_->AddModule(catalog_.GetModules()[place].file);
    modules_.push_back({place, std::move(*module)});
    return &modules_.back().module;
}

// An optional import that nothing fulfils is left out.
Outcome<LibraryManager::Proxies> LibraryManager::MakeProxies(const Export& entry)
{
    Proxies proxies;
    for (const auto& import : entry.imports)
    {
        auto proxy = MakeProxy(import.contract);
        if (!proxy && !import.optional)
            return MakeError(ErrorKind::MissingImport, "the export \"" + entry.id + "\" needs the import \"" +
                                                           import.property + "\", but no installed module fulfils \"" +
                                                           import.contract + "\"");
        if (proxy)
            proxies.emplace_back(import.property, std::move(proxy));
    }
    return proxies;
}

void LibraryManager::GiveConfiguration(IObjectBase& object) const
{
    const auto configurable = configuration_ ? Query<IConfigurable>(&object) : nullptr;
    if (configurable)
        configurable->SetConfiguration(configuration_.Get());
}

void LibraryManager::Connect(IImportsContainer& imports, const Proxies& proxies)
{
    for (const auto& [property, proxy] : proxies)
        imports.SetImport(property.c_str(), proxy.Get());
    imports.OnImportsSet();
}

// Null when nothing fulfils the contract.
Ref<IObjectBase> LibraryManager::MakeProxy(const std::string& contract)
{
    const auto offered = offered_.find(contract);
    if (offered != offered_.end())
        return MakeRef<ExportProxy>([object = offered->second] { return object; });
    const auto place = catalog_.FindByContract(contract);
    if (place.entry == nullptr)
        return nullptr;
    return MakeRef<ExportProxy>([face = face_, id = place.entry->id] { return face->FetchExport(id); });
}

// Without an export that makes settings maps a plug-in object goes without its metadata.
void LibraryManager::TellMetadata(const ExportPlace& place, IObjectBase& object)
{
    const auto plugin = Query<ITVXPlugin>(&object);
    if (!plugin)
        return;
    const auto map = MakeMetadataMap();
    if (!map)
    {
        importProblems_.push_back(map.GetError());
        return;
    }
    const auto build = ReadBuildInformation(catalog_.GetModules()[place.module].file);
    WriteMetadata(**map, *place.entry, build ? *build : BuildInformation());
    plugin->SetMetadataMap(map->Get());
}

// Texts are all that this map keeps, so the export that makes it is not asked for its imports: one that is missing does not
// keep plug-in objects from their metadata.
Outcome<Ref<ISimpleMap>> LibraryManager::MakeMetadataMap()
{
    const auto place = catalog_.FindById(SettingsMapExport);
    if (place.entry == nullptr)
        return NotExported(SettingsMapExport);
    const auto object = FetchUnconnected(place);
    if (!object)
        return object.GetError();
    const auto factory = Query<IFactory>(*object);
    if (!factory)
        return Refused(SettingsMapExport, IFactory::Id);
    return MakeSettingsMap(*factory);
}

Error LibraryManager::Refused(std::string_view id, const char* interfaceId)
{
    return MakeError(ErrorKind::Misbehaved,
                     "the export \"" + std::string(id) + "\" refuses the interface \"" + interfaceId + "\"");
}

std::string LibraryManager::DescribeInstalled() const
{
    std::string text;
    for (const auto& module : catalog_.GetModules())
    {
        for (const auto& entry : module.document.exports)
            text.append(entry.metadata.name)
                .append(" ")
                .append(GetVersion(entry.id))
                .append(" (")
                .append(module.file.filename().string())
                .append(")\n");
    }
    return text;
}

std::vector<std::filesystem::path> LibraryManager::GetLoadedFiles() const
{
    std::vector<std::filesystem::path> files;
    for (const auto& loaded : modules_)
        files.push_back(catalog_.GetModules()[loaded.place].file);
    return files;
}

}  // namespace tvx::host
