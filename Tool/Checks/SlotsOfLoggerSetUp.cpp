// SPDX-License-Identifier: MIT
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/LoggerDoubles.h"
#include "Tool/Checks/Slots.h"

namespace tvx::check
{

namespace
{

using Lines = std::vector<std::string>;

constexpr const char MissingManager[] = "LibManager: NULL object proxy returned for \"LibManager\".\n";

Ref<IImportsContainer> GetContainer(Trial& trial)
{
    return trial.Get<IImportsContainer>(LoggerExport);
}

// A call around the one that counts. It may write a line where the table is wrong, which is not of interest. What the logger
// keeps in the end it releases when the module is unloaded.
template <class Call>
void Aside(Trial& trial, Call&& call)
{
    static_cast<void>(trial.TakeOutput(std::forward<Call>(call)));
}

void TakesConfiguration(Trial& trial)
{
    const auto logger = trial.Get<IConfigurable>(LoggerExport);
    const auto config = MakeRef<ScriptedConfiguration>();
    trial.Gives("slot 11 (SetConfiguration) of IConfigurable",
                CallIConfigurableSetConfiguration(ToC<IConfigurable>(logger), ToC<IConfiguration>(config)), TVX_OK);
    trial.Equal("the references on the configuration given to slot 11 (SetConfiguration)", config->GetRefCount(), 2u);
    trial.Expect(!config->reads.empty(), "slot 11 (SetConfiguration) to read the configuration", "no read");
}

// What the logger asks a configuration of the caller's for, of the operation, when it is given it.
void ExpectReads(Trial& trial, const std::string& operation, const Lines& expected)
{
    const auto config = MakeRef<ScriptedConfiguration>();
    trial.Gives("SetConfiguration of the logger",
                trial.Get<IConfigurable>(LoggerExport)->SetConfiguration(config.Get()), TVX_OK);
    Lines reads = config->reads;
    std::erase_if(reads, [&](const std::string& read)
                  { return !read.starts_with(operation + " ") && !read.starts_with("UnusedSlot"); });
    trial.Equal("the calls of " + operation + ", and of no unused slot,", reads, expected);
}

void ReadsBools(Trial& trial)
{
    ExpectReads(trial, "GetBool", {"GetBool Default\\ToStdOut 0", "GetBool Default\\ToFile 0"});
}

void ReadsInts(Trial& trial)
{
    ExpectReads(trial, "GetInt", {"GetInt Default\\MinLevel 0", "GetInt Default\\LogFlushThreshold 0"});
}

void ReadsStrings(Trial& trial)
{
    ExpectReads(trial, "GetString", {"GetString Default\\Filename 0"});
}

void SetsImport(Trial& trial)
{
    const auto container = GetContainer(trial);
    const auto import = MakeRef<BareObject>();
    const Result result =
        CallIImportsContainerSetImport(ToC<IImportsContainer>(container), "import", ToC<IObjectBase>(import));
    trial.Gives("slot 11 (SetImport) of IImportsContainer", result, TVX_OK);
    trial.Equal("the references on the import given to slot 11 (SetImport)", import->GetRefCount(), 2u);
    Aside(trial, [&] { container->ClearImports(); });
}

// The logger asks for the manager of modules then, and says that it has none.
void TellsThatImportsAreSet(Trial& trial)
{
    const auto container = GetContainer(trial);
    Result result = TVX_E_FAIL;
    trial.Writes("slot 12 (OnImportsSet) of the logger, which has no imports,", MissingManager,
                 [&] { result = CallIImportsContainerOnImportsSet(ToC<IImportsContainer>(container)); });
    trial.Gives("slot 12 (OnImportsSet) of IImportsContainer", result, TVX_OK);
}

// It does nothing: neither does the logger ask for an import, nor is one dropped.
void TellsASecondTime(Trial& trial)
{
    const auto container = GetContainer(trial);
    const auto import = MakeRef<BareObject>();
    Aside(trial, [&] { container->SetImport("import", import.Get()); });
    const auto before = import->GetRefCount();
    trial.Gives("slot 13 (OnImportsHook) of IImportsContainer",
                CallIImportsContainerOnImportsHook(ToC<IImportsContainer>(container)), TVX_OK);
    trial.Equal("the references on an import after slot 13 (OnImportsHook)", import->GetRefCount(), before);
}

void ClearsImports(Trial& trial)
{
    const auto container = GetContainer(trial);
    const auto import = MakeRef<BareObject>();
    Aside(trial, [&] { container->SetImport("import", import.Get()); });
    trial.Gives("slot 14 (ClearImports) of IImportsContainer",
                CallIImportsContainerClearImports(ToC<IImportsContainer>(container)), TVX_OK);
    trial.Equal("the references on an import after slot 14 (ClearImports)", import->GetRefCount(), 1u);
}

// What a host gives the logger, which then asks the manager of modules for its list and registers its file. The folder of the
// file does not exist: a file is registered even when it cannot be opened, and so none is left behind.
struct Host
{
    explicit Host(Trial& trial)
    {
        const auto folder = "tvx-check-" + std::to_string(trial.GetRandom().Next());
        file = (std::filesystem::temp_directory_path() / folder / "log.txt").string();
        const ScriptedConfiguration::Values values = {{"Default\\MinLevel", std::int32_t{LogLevel::Debug}},
                                                      {"Default\\ToStdOut", false},
                                                      {"Default\\ToFile", true},
                                                      {"Default\\Filename", file}};
        const auto container = GetContainer(trial);
        trial.Get<IConfigurable>(LoggerExport)->SetConfiguration(MakeRef<ScriptedConfiguration>(values).Get());
        Aside(trial, [&] { container->SetImport("LibManager", managerProxy.Get()); });
        Aside(trial, [&] { container->SetImport("CrashDumpServer", serverProxy.Get()); });
        Aside(trial, [&] { container->OnImportsSet(); });
    }

    std::string file;
    Ref<ListingLibManager> manager = MakeRef<ListingLibManager>("list");
    Ref<RecordingCrashDumpServer> server = MakeRef<RecordingCrashDumpServer>();
    Ref<ImportProxy> managerProxy = MakeRef<ImportProxy>(manager);
    Ref<ImportProxy> serverProxy = MakeRef<ImportProxy>(server);
};

void SkipWithout(Trial& trial, const Ref<ImportProxy>& proxy)
{
    if (proxy->calls == 0)
        trial.Skip("the logger does not fetch its imports");
}

void AsksTheProxy(Trial& trial)
{
    const Host host(trial);
    trial.Equal("the number of calls of GetExportObject", host.managerProxy->calls, 1);
}

void AsksTheManager(Trial& trial)
{
    const Host host(trial);
    SkipWithout(trial, host.managerProxy);
    trial.Equal("the number of calls of GetInstalledPluginsVersions", host.manager->calls, 1);
}

void RegistersAFile(Trial& trial)
{
    const Host host(trial);
    SkipWithout(trial, host.serverProxy);
    trial.Equal("the paths that AddFile is called with", host.server->files, Lines{host.file});
    trial.Equal("the labels that AddFile is called with", host.server->labels, Lines{"Log File"});
}

constexpr Check Checks[] = {
    {"slot-logger-configurable-11-set-configuration", "SetConfiguration of the logger is called by its number.",
     "Slot 11 of IConfigurable is SetConfiguration: the configuration is kept with a reference, and read.",
     TakesConfiguration},
    {"slot-logger-configuration-12-get-bool", "The logger is given a configuration of the caller's.",
     "Slot 12 of IConfiguration is GetBool: a module reads bools by this slot and no other, with flags of 0.",
     ReadsBools},
    {"slot-logger-configuration-13-get-int", "The logger is given a configuration of the caller's.",
     "Slot 13 of IConfiguration is GetInt: a module reads integers by this slot and no other, with flags of 0.",
     ReadsInts},
    {"slot-logger-configuration-15-get-string", "The logger is given a configuration of the caller's.",
     "Slot 15 of IConfiguration is GetString: a module reads texts by this slot and no other, with flags of 0.",
     ReadsStrings},
    {"slot-logger-imports-container-11-set-import", "SetImport of the logger is called by its number.",
     "Slot 11 of IImportsContainer is SetImport: the import is kept with a reference.", SetsImport},
    {"slot-logger-imports-container-12-on-imports-set", "OnImportsSet of the logger is called by its number.",
     "Slot 12 of IImportsContainer is OnImportsSet: the logger looks for its manager of modules.",
     TellsThatImportsAreSet},
    {"slot-logger-imports-container-13-on-imports-hook", "OnImportsHook of the logger is called by its number.",
     "Slot 13 of IImportsContainer is OnImportsHook: it does nothing and gives 0.", TellsASecondTime},
    {"slot-logger-imports-container-14-clear-imports", "ClearImports of the logger is called by its number.",
     "Slot 14 of IImportsContainer is ClearImports: every import is released.", ClearsImports},
    {"slot-logger-export-proxy-11-get-export-object", "The logger resolves an import by a proxy of the caller's.",
     "Slot 11 of IExportProxy is GetExportObject: a module calls it once to get an import.", AsksTheProxy},
    {"slot-logger-lib-manager-11-get-installed-plugins-versions",
     "The logger is given a manager of modules of the caller's, at the level of debug messages.",
     "Slot 11 of ILibManager is GetInstalledPluginsVersions: the logger calls it once for its listing.",
     AsksTheManager},
    {"slot-logger-crash-dump-server-11-add-file",
     "The logger is given a crash-dump server of the caller's, and told to write to a file.",
     "Slot 11 of ICrashDumpServer is AddFile: the logger calls it with the path and the label of its file.",
     RegistersAFile},
};

}  // namespace

extern const Family SlotsOfLoggerSetUpFamily = {"slots", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
