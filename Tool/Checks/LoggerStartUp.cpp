// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoggerBench.h"

namespace tvx::check
{

namespace
{

constexpr const char ListLines[] =
    " DEBUG [com.talvere.general.tvx.BasicLogger/1.0] Printing installed plugins version...\n"
    " DEBUG [com.talvere.general.tvx.BasicLogger/1.0] Plugin 1.0\n"
    "(no time) Other 2.0\n";

// Tells the logger that its imports are set, which has to give 0, and gives what that writes.
std::string Notify(Trial& trial, LoggerBench& logger)
{
    const auto imports = logger.GetImports();
    Result result = TVX_E_FAIL;
    auto output = trial.TakeOutput([&] { result = imports->OnImportsSet(); });
    trial.Gives("OnImportsSet", result, TVX_OK);
    return WithoutTimes(output);
}

Ref<ListingLibManager> ImportManager(LoggerBench& logger, Result result = TVX_OK)
{
    auto manager = MakeRef<ListingLibManager>("Plugin 1.0\nOther 2.0", result);
    logger.Import("LibManager", manager);
    return manager;
}

void ListsThePlugins(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Configure({{"Main\\MinLevel", 2}});
    const auto manager = ImportManager(logger);
    trial.Equal("what OnImportsSet writes, without times,", Notify(trial, logger), ListLines);
    trial.Equal("the number of questions to the library manager", manager->calls, 1);
}

void ListsThePluginsForEveryLevelBelowInformation(Trial& trial)
{
    LoggerBench logger(trial);
    ImportManager(logger);
    for (const std::int32_t level : {2, 1, 0, -7})
    {
        logger.SetLevel("Main", level);
        trial.Equal("what OnImportsSet writes at level " + std::to_string(level), Notify(trial, logger), ListLines);
    }
}

void ListsNothingFromInformationOn(Trial& trial)
{
    LoggerBench logger(trial);
    const auto manager = ImportManager(logger);
    const MessageListener listener(logger);
    for (const std::int32_t level : {3, 4, 7})
    {
        logger.SetLevel("Main", level);
        trial.Equal("what OnImportsSet writes at level " + std::to_string(level), Notify(trial, logger), "");
    }
    trial.Equal("the number of questions to the library manager", manager->calls, 0);
    trial.Equal("the number of messages", listener.messages.size(), 0u);
}

void TellsHandlersOfTheList(Trial& trial)
{
    LoggerBench logger(trial);
    logger.SetLevel("Main", LogLevel::Debug);
    ImportManager(logger);
    const MessageListener listener(logger);
    Notify(trial, logger);
    trial.Equal("the number of messages", listener.messages.size(), 2u);
    for (const auto& message : listener.messages)
    {
        trial.Expect(static_cast<bool>(message.record), "the parameter of the event to be the record", "0");
        trial.Equal("the logger name", message.record->GetLoggerName(), "Main");
        trial.Equal("the level", message.record->GetLevel(), 2u);
        trial.Equal("the source", message.record->GetSource(), LoggerExport);
        trial.Equal("the scope", message.record->GetScope(), nullptr);
        trial.Equal("the file", message.record->GetFile(), nullptr);
        trial.Equal("the line", message.record->GetLine(), 0u);
    }
    trial.Equal("the first text", listener.messages[0].record->GetMessage(), "Printing installed plugins version...");
    trial.Equal("the second text", listener.messages[1].record->GetMessage(), "Plugin 1.0\nOther 2.0");
}

void ListsNothingWhenTheManagerFails(Trial& trial)
{
    LoggerBench logger(trial);
    logger.SetLevel("Main", LogLevel::Debug);
    const auto manager = ImportManager(logger, -42);
    const MessageListener listener(logger);
    trial.Equal("what OnImportsSet writes when the library manager fails", Notify(trial, logger), "");
    trial.Equal("the number of messages", listener.messages.size(), 0u);
    trial.Equal("the number of questions to the library manager", manager->calls, 1);
}

void ReleasesTheList(Trial& trial)
{
    LoggerBench logger(trial);
    logger.SetLevel("Main", LogLevel::Debug);
    const auto manager = ImportManager(logger);
    Notify(trial, logger);
    trial.Equal("the references on the list", manager->text->GetRefCount(), 1u);
    trial.Equal("the references on the library manager, ours and the proxy's,", manager->GetRefCount(), 2u);
}

void FixesTheSettingsOfMain(Trial& trial)
{
    LoggerBench logger(trial);
    ImportManager(logger);
    trial.Equal("what OnImportsSet writes without a configuration", Notify(trial, logger), "");
    logger.Configure({{"Main\\MinLevel", 6}, {"Net\\MinLevel", 6}});
    trial.Equal("GetLevel of \"Main\"", logger.GetLevel("Main"), 3);
    trial.Equal("GetLevel of another name", logger.GetLevel("Net"), 6);
}

void DoesNothingWithoutAManager(Trial& trial)
{
    LoggerBench logger(trial);
    trial.Equal("what OnImportsSet writes without a library manager", Notify(trial, logger),
                "(no time) " + AbsentImport("LibManager"));
    logger.Configure({{"Main\\MinLevel", 6}});
    trial.Equal("GetLevel of \"Main\", which was not in use,", logger.GetLevel("Main"), 6);
}

void NamesAManagerOfAnotherKind(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Import("LibManager", MakeRef<BareObject>());
    trial.Equal("what OnImportsSet writes with an import of another kind", Notify(trial, logger),
                "(no time) LibManager: Library object for \"LibManager\" does not support required interface "
                "com.talvere.general.tvx.ILibManager/1.0. Wrong import declaration or wrong plugin implementation?\n");
}

void DoesNothingWhenToldASecondTime(Trial& trial)
{
    LoggerBench logger(trial);
    logger.SetLevel("Main", LogLevel::Debug);
    const auto manager = ImportManager(logger);
    trial.Gives("OnImportsHook", logger.GetImports()->OnImportsHook(), TVX_OK);
    trial.Equal("the number of questions to the library manager", manager->calls, 0);
}

constexpr Check Checks[] = {
    {"logger-start-up-lists-the-plug-ins", "OnImportsSet with a library manager, while \"Main\" takes level 2.",
     "The plug-ins are listed under \"Main\" by two messages of level 2; the manager's text stands there unchanged.",
     ListsThePlugins},
    {"logger-start-up-lists-at-every-lower-level", "OnImportsSet while \"Main\" takes levels below 3.",
     "The list comes whenever the level of \"Main\" is below 3, always in the short form.",
     ListsThePluginsForEveryLevelBelowInformation},
    {"logger-start-up-lists-nothing-from-information-on", "OnImportsSet while \"Main\" takes level 3 and more only.",
     "From level 3 on the library manager is not even asked.", ListsNothingFromInformationOn},
    {"logger-start-up-tells-handlers", "A handler hears the messages of the list.",
     "The messages of the list are ordinary ones, from the logger itself, with neither scope nor file, and line 0.",
     TellsHandlersOfTheList},
    {"logger-start-up-lists-nothing-on-failure", "The library manager answers with a failure.",
     "A failure of the library manager gives 0, and nothing is logged.", ListsNothingWhenTheManagerFails},
    {"logger-start-up-releases-the-list", "The references on the manager's text are counted.",
     "The text that the library manager gave is released, and the manager too.", ReleasesTheList},
    {"logger-start-up-fixes-the-settings-of-main", "OnImportsSet before the configuration.",
     "Asking for the level of \"Main\" is its first use, so it keeps the settings of that moment.",
     FixesTheSettingsOfMain},
    {"logger-start-up-does-nothing-without-a-manager", "OnImportsSet without a library manager.",
     "Without a library manager one line says so, the result is 0, and \"Main\" is not in use yet.",
     DoesNothingWithoutAManager},
    {"logger-start-up-names-a-manager-of-another-kind", "The library manager's import answers no ILibManager.",
     "The line names the interface that the object does not answer, and the result is 0.", NamesAManagerOfAnotherKind},
    {"logger-start-up-hook-does-nothing", "OnImportsHook with a library manager.",
     "The second notification gives 0 and does nothing.", DoesNothingWhenToldASecondTime},
};

}  // namespace

extern const Family LoggerStartUpFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
