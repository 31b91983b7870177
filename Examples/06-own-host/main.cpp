// SPDX-License-Identifier: MIT
// A host with a command line: what was found and what was not, a configuration, an object of its own for other modules'
// imports, a logger for several threads, and everything unloaded in the end. With --trace-lives it tells what is still held.
#include "Helpers/Subscription.h"
#include "Host/Configuration.h"
#include "Host/CrashDumpServer.h"
#include "Host/LibraryManager.h"
#include "Host/LifeTracer.h"
#include "Host/LoggerConfigurationLint.h"
#include "Host/SynchronisedLogger.h"
#include "Options.h"

#include <iostream>
#include <thread>

namespace
{

using namespace tvx;

constexpr const char Logger[] = "com.talvere.general.tvx.BasicLogger/1.0";
constexpr const char LoggerContract[] = "com.talvere.general.tvx.singletonlogger/1.0";
constexpr const char CrashDumpContract[] = "com.talvere.general.tvx.contract.CrashDumpServer/1.0";

// A file that is no usable module is a problem of that file alone.
host::ModuleCatalog FindModules(const Options& options)
{
    host::ModuleCatalog catalog;
    catalog.Add(TVX_MODULES);
    for (const auto& place : options.places)
        catalog.Add(place);
    for (const auto& module : catalog.GetModules())
        std::cout << "found " << module.file.filename().string() << '\n';
    for (const auto& problem : catalog.GetProblems())
        std::cout << "passed over: " << problem.message << '\n';
    return catalog;
}

// Before any export is asked for: those that came earlier go without it.
std::optional<host::Error> Configure(host::LibraryManager& manager, const std::string& file)
{
    if (file.empty())
        return std::nullopt;
    const auto configuration = host::OpenConfiguration(file);
    if (!configuration)
        return configuration.GetError();
    for (const auto& warning : host::LintLoggerConfiguration(**configuration).warnings)
        std::cout << "careful: " << warning << '\n';
    manager.Configure(Ref<IConfiguration>(*configuration));
    return std::nullopt;
}

// The module's logger takes one thread at a time. This one, which plug-ins get for their imports, too, lets several in.
host::Outcome<Ref<ILogger>> OpenLogger(host::LibraryManager& manager)
{
    const auto logger = manager.GetExportAs<ILogger>(Logger);
    if (!logger)
        return logger;
    const auto synchronised = MakeRef<host::SynchronisedLogger>(*logger);
    manager.Offer(LoggerContract, Ref<IObjectBase>(synchronised));
    return Ref<ILogger>(synchronised);
}

void LogMany(ILogger& logger, const char* source)
{
    for (int number = 0; number < 100; ++number)
        logger.Log("Main", LogLevel::Info, source, "LogMany", __FILE__, __LINE__, "at work");
}

// The logger's handlers run one at a time, so the count needs no lock.
int LogFromTwoThreads(ILogger& logger)
{
    int heard = 0;
    const auto listening = Subscribe(logger, &ILogger::AdviseMessageLogged, [&heard](const Event&) { ++heard; });
    std::thread other([&logger] { LogMany(logger, "other"); });
    LogMany(logger, "main");
    other.join();
    return heard;
}

std::optional<host::Error> Run(const Options& options)
{
    host::LifeTracer tracer(std::cout);  // first, so that it goes last: it stands between this program and the modules
    host::LibraryManager manager(FindModules(options));
    if (options.traceLives)
        manager.TraceLives(tracer);
    const auto crashDumps = MakeRef<host::CrashDumpServer>();
    manager.Offer(CrashDumpContract, Ref<IObjectBase>(crashDumps));
    if (const auto failure = Configure(manager, options.configuration))
        return failure;
    const auto logger = OpenLogger(manager);
    if (!logger)
        return logger.GetError();
    std::cout << "messages logged: " << LogFromTwoThreads(**logger) << '\n';
    for (const auto& file : crashDumps->GetFiles())
        std::cout << "for a crash report: " << file.path << " (" << file.label << ")\n";
    for (const auto& problem : manager.GetImportProblems())
        std::cout << "import: " << problem.message << '\n';
    return std::nullopt;
}  // the references go in the reverse order, the manager last: it lets the exports go and unmaps the modules

}  // namespace

int main(int count, char** arguments)
{
    const auto options = ReadOptions(count, arguments);
    if (!options)
        return 2;
    if (const auto failure = Run(*options))
    {
        std::cerr << failure->message << '\n';
        return 1;
    }
    std::cout << "everything is unloaded\n";
}
