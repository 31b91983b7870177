// SPDX-License-Identifier: MIT
#include "Tool/Checks/LogFolder.h"
#include "Tool/Checks/LoggerFiles.h"

namespace tvx::check
{

namespace
{

using Texts = std::vector<std::string>;

// Output to a file, so that each new name looks for the crash-dump server, which is not there yet.
void ConfigureFileOnly(LoggerBench& logger)
{
    logger.Configure({{"Default\\ToStdOut", false}, {"Default\\ToFile", true}, {"Default\\LogFlushThreshold", 1}});
}

void ExpectLookup(Trial& trial, LoggerBench& logger, const char* name, const std::string& expected)
{
    trial.Equal("what the lookup of the crash-dump server writes", logger.Log({.logger = name}), expected);
}

void RegistersEachFileOncePerName(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    const auto server = logger.ImportCrashDumpServer();
    ConfigureFileOnly(logger);
    for (const char* const name : {"Main", "Net", "Main", "Web"})
        logger.Log({.logger = name});
    trial.Equal("the registered files of three names", server->files, Texts{"log.txt", "log.txt", "log.txt"});
    trial.Equal("their labels", server->labels, Texts{"Log File", "Log File", "Log File"});
}

void RegistersAFileThatCannotBeOpened(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    const auto server = logger.ImportCrashDumpServer();
    logger.Configure({{"Default\\ToFile", true}, {"Default\\Filename", "missing/log.txt"}});
    logger.GetLevel("Main");
    trial.Equal("the registered files", server->files, Texts{"missing/log.txt"});
}

void RegistersNothingWithoutAFile(Trial& trial)
{
    LoggerBench logger(trial);
    const auto server = logger.ImportCrashDumpServer();
    logger.Configure({{"Default\\Filename", "log.txt"}});
    logger.Log({});
    trial.Equal("the registered files", server->files, Texts());
}

void GoesOnWhenAFileIsNotRegistered(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    const auto server = logger.ImportCrashDumpServer(-42);
    ConfigureFileOnly(logger);
    trial.Reports("Log whose file the crash-dump server refuses", "TVX_FORWARD_FAILURE", TVX_OK,
                  [&] { return logger->Log("Main", LogLevel::Info, "Net", nullptr, nullptr, 0, "opened"); });
    trial.Equal("what a second message writes to standard output", logger.Log({}), "");
    trial.Equal("the number of registrations", server->files.size(), 1u);
    trial.Equal("what is in the file", WithoutTimes(folder.Read("log.txt")),
                std::string(InfoLine) + std::string(InfoLine));
}

void GoesOnWithoutAServer(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFileOnly(logger);
    ExpectLookup(trial, logger, "Main", AbsentImport("CrashDumpServer"));
    ExpectLookup(trial, logger, "Main", "");
    trial.Equal("what is in the file", WithoutTimes(folder.Read("log.txt")),
                std::string(InfoLine) + std::string(InfoLine));
}

void NamesAnImportThatIsNoProxy(Trial& trial)
{
    const std::string expected = "LibManager: Proxy interface not supported for \"CrashDumpServer\".\n";
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFileOnly(logger);
    logger.ImportBare("CrashDumpServer", MakeRef<RecordingCrashDumpServer>().Get());
    ExpectLookup(trial, logger, "Main", expected);
    logger.ImportBare("CrashDumpServer", nullptr);
    ExpectLookup(trial, logger, "Net", expected);
}

void NamesAnImportWithoutAnObject(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFileOnly(logger);
    logger.Import("CrashDumpServer", nullptr);
    ExpectLookup(trial, logger, "Main",
                 "LibManager: Library returned NULL object for \"CrashDumpServer\". Probably declared and exported "
                 "contracts are different or the library is failed to load.\n");
}

void NamesAnImportOfAnotherKind(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFileOnly(logger);
    logger.Import("CrashDumpServer", MakeRef<BareObject>());
    ExpectLookup(trial, logger, "Main",
                 "LibManager: Library object for \"CrashDumpServer\" does not support required interface "
                 "com.talvere.general.tvx.ICrashDumpServer/1.0. Wrong import declaration or wrong plugin "
                 "implementation?\n");
}

void LooksAtTheObjectNotAtTheResult(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFileOnly(logger);
    const auto server = MakeRef<RecordingCrashDumpServer>();
    logger.ImportBare("CrashDumpServer", MakeRef<ImportProxy>(server, TVX_E_FAIL).Get());
    ExpectLookup(trial, logger, "Main", "");
    trial.Equal("the registered files", server->files, Texts{"log.txt"});
}

void ReleasesWhatItLookedUp(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFileOnly(logger);
    const auto server = MakeRef<RecordingCrashDumpServer>();
    const auto proxy = MakeRef<ImportProxy>(server);
    logger.ImportBare("CrashDumpServer", proxy.Get());
    logger.Log({});
    trial.Equal("the references on the proxy, ours and the logger's,", proxy->GetRefCount(), 2u);
    trial.Equal("the references on the server, ours and the proxy's,", server->GetRefCount(), 2u);
}

void KeepsTheLastImportOfAName(Trial& trial)
{
    LoggerBench logger(trial);
    const auto first = MakeRef<BareObject>();
    const auto second = MakeRef<BareObject>();
    logger.ImportBare("LibManager", first.Get());
    trial.Equal("the references on an import", first->GetRefCount(), 2u);
    logger.ImportBare("LibManager", second.Get());
    trial.Equal("the references on a replaced import", first->GetRefCount(), 1u);
    trial.Equal("the references on the new import", second->GetRefCount(), 2u);
    logger.ImportBare("LibManager", second.Get());
    trial.Equal("the references on an import that was set twice", second->GetRefCount(), 2u);
}

void ClearsAllImports(Trial& trial)
{
    LoggerBench logger(trial);
    const Ref<BareObject> objects[] = {MakeRef<BareObject>(), MakeRef<BareObject>()};
    logger.ImportBare("LibManager", objects[0].Get());
    logger.ImportBare("CrashDumpServer", objects[1].Get());
    trial.Gives("ClearImports", logger.GetImports()->ClearImports(), TVX_OK);
    for (const auto& object : objects)
        trial.Equal("the references on a cleared import", object->GetRefCount(), 1u);
    trial.Writes("OnImportsSet without imports", AbsentImport("LibManager"),
                 [&] { logger.GetImports()->OnImportsSet(); });
}

void ReleasesEverythingWhenItIsUnloaded(Trial& trial)
{
    const auto import = MakeRef<BareObject>();
    const auto configuration = MakeRef<ScriptedConfiguration>();
    {
        LoggerBench logger(trial);
        logger.Configure(configuration);
        logger.ImportBare("LibManager", import.Get());
    }
    Unload(trial);
    trial.Equal("the references on the import", import->GetRefCount(), 1u);
    trial.Equal("the references on the configuration", configuration->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"logger-import-registers-files-once-per-name", "Three names write to a file; the crash-dump server takes notes.",
     "A file is registered with its name and \"Log File\", once for each logger name that uses it.",
     RegistersEachFileOncePerName},
    {"logger-import-registers-files-that-cannot-be-opened", "The file of a name cannot be opened.",
     "A file is registered all the same when it could not be opened.", RegistersAFileThatCannotBeOpened},
    {"logger-import-registers-no-file-that-is-off", "A file name is configured, output to a file is not.",
     "The crash-dump server is told of files only that are written to.", RegistersNothingWithoutAFile},
    {"logger-import-goes-on-when-a-file-is-refused", "The crash-dump server answers with a failure.",
     "A failure gives one report line and nothing else: the message is written, and Log gives 0.",
     GoesOnWhenAFileIsNotRegistered},
    {"logger-import-may-be-absent", "Output to a file without a crash-dump server.",
     "An import that was never set gives one line on standard output at the first use of a name, and no failure.",
     GoesOnWithoutAServer},
    {"logger-import-has-to-be-a-proxy", "The crash-dump server is imported itself, and then null.",
     "An import is asked for IExportProxy first; the line says when it refuses, as null does.",
     NamesAnImportThatIsNoProxy},
    {"logger-import-has-to-give-an-object", "A proxy gives null.", "The line says that the library gave no object.",
     NamesAnImportWithoutAnObject},
    {"logger-import-has-to-answer-its-interface", "A proxy gives an object that is no crash-dump server.",
     "The line names the interface that the object does not answer.", NamesAnImportOfAnotherKind},
    {"logger-import-counts-by-its-object", "A proxy gives an object along with a failure.",
     "What counts is the object that a proxy gives; its result is not looked at.", LooksAtTheObjectNotAtTheResult},
    {"logger-import-is-released-after-use", "The references on proxy and server are counted after a lookup.",
     "A lookup leaves no reference behind.", ReleasesWhatItLookedUp},
    {"logger-import-is-replaced", "An import is set twice under one name.",
     "An import is kept with one reference until another one takes its name.", KeepsTheLastImportOfAName},
    {"logger-imports-are-cleared", "ClearImports with two imports.",
     "ClearImports releases every import and gives 0; none is there any more.", ClearsAllImports},
    {"logger-releases-everything-when-unloaded", "The module is unloaded with an import and a configuration set.",
     "The logger goes with its module, and releases what it was given.", ReleasesEverythingWhenItIsUnloaded},
};

}  // namespace

extern const Family LoggerImportFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
