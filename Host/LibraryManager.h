// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Host/Module.h"
#include "Host/ModuleCatalog.h"
#include "Interfaces/IConfigurable.h"
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/ISimpleMap.h"

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tvx::host
{

class LibManagerFace;
class LifeTracer;

// What library managers fulfil themselves.
constexpr const char LibManagerContract[] = "com.talvere.general.tvx.LibManagerContract/1.0";

// Loads the modules of a catalogue as their exports are asked for, connects the exports with their imports, and tells plug-in
// objects (ITVXPlugin) what their documents and builds say of them.
//
// A module stays mapped until the manager dies. By then the program has to have released every object that it got through
// the manager or made with one of those. Its destruction clears the imports that it has set, releases the exports and unmaps
// the modules, the last loaded first. One thread at a time.
class LibraryManager
{
public:
    // Loads nothing yet.
    explicit LibraryManager(ModuleCatalog catalog);
    ~LibraryManager();
    LibraryManager(const LibraryManager&) = delete;
    LibraryManager& operator=(const LibraryManager&) = delete;

    // What can be loaded.
    const ModuleCatalog& GetCatalog() const { return catalog_; }

    // Offers an object of the host's own to all imports of a contract, before any module. The manager itself is offered
    // under "com.talvere.general.tvx.LibManagerContract/1.0" from the start: it answers ILibManager and IFormatReaders.
    void Offer(const std::string& contract, const Ref<IObjectBase>& object);

    // The configuration of all exports that take one (IConfigurable): each is given it before its imports. Those that were
    // asked for earlier go without it. Whether an export can use it makes no difference here.
    void Configure(const Ref<IConfiguration>& configuration);

    // Has the tracer watch everything that the program gets through this manager from now on; to be called before the first
    // export is asked for. The tracer has to outlive the manager and all that it gave. Without this call it is the tracer of
    // the process, when the environment says so (LifeTracer::FindOfProcess).
    void TraceLives(LifeTracer& tracer);

    // The object of an export, connected with its imports: each is given as a proxy for the export that fulfils its contract.
    // Fails: NotExported, MissingImport for a required import that nothing fulfils, and as Module.
    Outcome<Ref<IObjectBase>> GetExport(std::string_view id);

    // The export's object as the interface that its contract promises.
    // Fails: as GetExport, and Misbehaved when the object refuses the interface.
    template <class Interface>
    Outcome<Ref<Interface>> GetExportAs(std::string_view id)
    {
        const auto object = GetExport(id);
        if (!object)
            return object.GetError();
        auto wanted = Query<Interface>(*object);
        if (!wanted)
            return Refused(id, Interface::Id);
        return wanted;
    }

    // The export whose document names the format, as what reads it.
    Outcome<Ref<IObjectBase>> GetReader(std::string_view serid);

    // What the modules of the catalogue offer, one line an export: name, version, file.
    std::string DescribeInstalled() const;

    // The files that are mapped now, in the order of loading.
    std::vector<std::filesystem::path> GetLoadedFiles() const;

    // For what modules see of the manager: as GetExport and GetReader, never traced. A failure of FetchImport gives null and
    // becomes an import problem.
    Ref<IObjectBase> FetchImport(std::string_view id);
    Outcome<Ref<IObjectBase>> FetchReader(std::string_view serid);

    // Why imports could not be fetched when their exports asked for them, and why plug-in objects had to go without what
    // is said of them.
    const std::vector<Error>& GetImportProblems() const { return importProblems_; }

private:
    // Property names with what is set for them.
    using Proxies = std::vector<std::pair<std::string, Ref<IObjectBase>>>;

    struct Loaded
    {
        std::size_t place;
        Module module;
    };

    void ReportHeld() const noexcept;
    static Error Refused(std::string_view id, const char* interfaceId);

    Outcome<Ref<IObjectBase>> FetchExport(std::string_view id);
    Outcome<Ref<IObjectBase>> Fetch(const ExportPlace& place);
    Outcome<Ref<IObjectBase>> FetchUnconnected(const ExportPlace& place);
    Outcome<const Module*> GetModule(std::size_t place);
    Outcome<Proxies> MakeProxies(const Export& entry);
    void GiveConfiguration(IObjectBase& object) const;
    static void Connect(IImportsContainer& imports, const Proxies& proxies);
    Ref<IObjectBase> MakeProxy(const std::string& contract);
    void TellMetadata(const ExportPlace& place, IObjectBase& object);
    Outcome<Ref<ISimpleMap>> MakeMetadataMap();

    ModuleCatalog catalog_;
    std::deque<Loaded> modules_;  // stay where they are: a module at work may have another one loaded
    std::map<std::string, Ref<IObjectBase>, std::less<>> exports_;
    std::map<std::string, Ref<IObjectBase>, std::less<>> offered_;
    Ref<IConfiguration> configuration_;
    std::vector<Error> importProblems_;
    Ref<LibManagerFace> face_;
    LifeTracer* tracer_;  // null when nothing is traced
};

}  // namespace tvx::host
