// SPDX-License-Identifier: MIT
#include "Tool/Checks/LogFolder.h"
#include "Tool/Checks/LoggerBench.h"

namespace tvx::check
{

namespace
{

using Reads = std::vector<std::string>;

// What is asked for one section, with 0 for the flags.
Reads ReadsOf(const std::string& section)
{
    return {"GetInt " + section + "\\MinLevel 0", "GetBool " + section + "\\ToStdOut 0",
            "GetBool " + section + "\\ToFile 0", "GetInt " + section + "\\LogFlushThreshold 0",
            "GetString " + section + "\\Filename 0"};
}

void ReadsTheDefaultsAtOnce(Trial& trial)
{
    LoggerBench logger(trial);
    const auto configuration = logger.Configure(ScriptedConfiguration::Values());
    trial.Equal("what SetConfiguration reads", configuration->reads, ReadsOf("Default"));
}

void ReadsTheSectionOfANameWhenItIsFirstUsed(Trial& trial)
{
    LoggerBench logger(trial);
    const auto configuration = logger.Configure(ScriptedConfiguration::Values());
    for (const char* const name : {"Main", "some name", "Outer\\Inner", "Default"})
    {
        configuration->reads.clear();
        logger.GetLevel(name);
        trial.Equal("what is read for " + Show(name), configuration->reads, ReadsOf(name));
    }
}

void ReadsTheSectionOfANameOnce(Trial& trial)
{
    LoggerBench logger(trial);
    const auto configuration = logger.Configure(ScriptedConfiguration::Values());
    logger.Log({});
    configuration->reads.clear();
    logger.Log({});
    logger.SetLevel("Main", LogLevel::Debug);
    logger.GetLevel("Main");
    trial.Equal("what is read for a name in use", configuration->reads, Reads());
}

void TakesTheDefaults(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Configure({{"Default\\MinLevel", 5}});
    trial.Equal("GetLevel of a name without a section", logger.GetLevel("Main"), 5);
    logger.Writes("a message below the configured minimum", {.level = 4}, "");
    logger.Writes("a message at the configured minimum", {.level = 5}, " ERROR [Net] opened\n");
}

void TakesTheSectionOfAName(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Configure(
        {{"Default\\MinLevel", 5}, {"Default\\ToStdOut", false}, {"Net\\MinLevel", 2}, {"Net\\ToStdOut", true}});
    trial.Equal("GetLevel of the name with a section", logger.GetLevel("Net"), 2);
    trial.Equal("GetLevel of a name without one", logger.GetLevel("Main"), 5);
    logger.Writes("a message under the name with a section", {.logger = "Net", .level = 2}, " DEBUG [Net] opened\n");
    logger.Writes("a message under a name without one", {.level = 6}, "");
}

void InheritsWhatASectionLeavesOut(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Configure({{"Default\\ToStdOut", false}, {"Net\\MinLevel", 2}, {"Web\\ToStdOut", true}});
    logger.Writes("a message under a name that only has a minimum", {.logger = "Net"}, "");
    logger.Writes("a message under a name that only has an output", {.logger = "Web"}, InfoLine);
    logger.Writes("a message below the built-in minimum", {.logger = "Web", .level = 2}, "");
}

void TakesValuesThatCameWithAFailure(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Configure(MakeRef<ScriptedConfiguration>(
        ScriptedConfiguration::Values{{"Default\\MinLevel", 2}, {"Main\\ToStdOut", false}}, TVX_E_FAIL));
    trial.Equal("GetLevel of a name", logger.GetLevel("Main"), 2);
    logger.Writes("a message whose output was turned off", {}, "");
}

void TakesTheConfigurationAsItIsWhenTheNameIsUsed(Trial& trial)
{
    LoggerBench logger(trial);
    const auto configuration = logger.Configure({{"Main\\MinLevel", 6}});
    configuration->values = {{"Main\\MinLevel", 2}, {"Default\\ToStdOut", false}};
    trial.Equal("GetLevel of a name whose section changed", logger.GetLevel("Main"), 2);
    logger.Writes("a message, the defaults having been read before,", {}, InfoLine);
}

void RefusesNull(Trial& trial)
{
    LoggerBench logger(trial);
    const auto configuration = logger.Configure({{"Default\\MinLevel", 5}, {"Net\\MinLevel", 2}});
    configuration->reads.clear();
    const auto configurable = trial.QueryAs<IConfigurable>(Ref<ILogger>(logger.Get()), "the logger");
    trial.Reports("SetConfiguration with null", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                  [&] { return configurable->SetConfiguration(nullptr); });
    trial.Equal("what is read from the configuration before", configuration->reads, Reads());
    trial.Equal("GetLevel by the defaults before", logger.GetLevel("Main"), 5);
    trial.Equal("GetLevel by the section of the configuration before", logger.GetLevel("Net"), 2);
}

void TakesASecondConfigurationForNewNames(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Configure({{"Default\\MinLevel", 5}, {"Web\\MinLevel", 6}});
    logger.GetLevel("Main");
    logger.Configure({{"Default\\MinLevel", 2}, {"Main\\MinLevel", 1}, {"Net\\MinLevel", 4}});
    trial.Equal("GetLevel of a name in use before", logger.GetLevel("Main"), 5);
    trial.Equal("GetLevel of a new name with a section", logger.GetLevel("Net"), 4);
    trial.Equal("GetLevel of a new name with a section in the first configuration", logger.GetLevel("Web"), 2);
}

void KeepsDefaultsThatASecondConfigurationLeavesOut(Trial& trial)
{
    LoggerBench logger(trial);
    logger.Configure({{"Default\\MinLevel", 5}});
    logger.Configure({{"Default\\ToStdOut", false}});
    trial.Equal("GetLevel by the first defaults", logger.GetLevel("Main"), 5);
    logger.Writes("a message, by the second defaults,", {.level = 6}, "");
}

void KeepsOneConfiguration(Trial& trial)
{
    LoggerBench logger(trial);
    const auto first = logger.Configure(ScriptedConfiguration::Values());
    trial.Equal("the references on the configuration", first->GetRefCount(), 2u);
    const auto second = logger.Configure(ScriptedConfiguration::Values());
    trial.Equal("the references on a replaced configuration", first->GetRefCount(), 1u);
    trial.Equal("the references on the new configuration", second->GetRefCount(), 2u);
    logger.Configure(second);
    trial.Equal("the references on a configuration that was given twice", second->GetRefCount(), 2u);
}

void AsksAConfigurationForNoInterface(Trial& trial)
{
    LoggerBench logger(trial);
    const auto configuration = logger.Configure(ScriptedConfiguration::Values());
    logger.Log({});
    trial.Equal("what the configuration is asked for", configuration->queries, Reads());
}

constexpr Check Checks[] = {
    {"logger-configuration-reads-the-defaults-at-once", "SetConfiguration with a configuration that notes its reads.",
     "The five keys of the section \"Default\" are read once each, in their order and by their types, with flags 0.",
     ReadsTheDefaultsAtOnce},
    {"logger-configuration-reads-a-section-by-name", "The first use of several logger names.",
     "The five keys of the section that is named exactly like the logger are read in the same way.",
     ReadsTheSectionOfANameWhenItIsFirstUsed},
    {"logger-configuration-reads-a-section-once", "A name is used again.",
     "A name that is in use has its settings: nothing is read for it any more.", ReadsTheSectionOfANameOnce},
    {"logger-configuration-gives-defaults", "A minimum level in the section \"Default\".",
     "The defaults hold for every name without values of its own.", TakesTheDefaults},
    {"logger-configuration-gives-sections", "Values in a name's own section and in \"Default\".",
     "A name's own section wins over the defaults, for that name only.", TakesTheSectionOfAName},
    {"logger-configuration-lets-sections-inherit", "Sections that leave out values.",
     "What a section leaves out comes from the defaults, and what these leave out from the built-in values.",
     InheritsWhatASectionLeavesOut},
    {"logger-configuration-takes-values-with-a-failure", "Numbers and booleans that come along with a failure.",
     "Only the text looks at the result of its read; for the others counts what was written to the target.",
     TakesValuesThatCameWithAFailure},
    {"logger-configuration-is-read-when-a-name-is-used", "The configuration's values change after SetConfiguration.",
     "A section is read at the first use of its name, the defaults only when the configuration is set.",
     TakesTheConfigurationAsItIsWhenTheNameIsUsed},
    {"logger-configuration-refuses-null", "SetConfiguration with null.",
     "Null gives -4 and one report line; the configuration before stays in use.", RefusesNull},
    {"logger-configuration-replaced-counts-for-new-names", "A second configuration.",
     "Names in use keep their settings, new ones take theirs from the new configuration.",
     TakesASecondConfigurationForNewNames},
    {"logger-configuration-replaced-keeps-defaults", "A second configuration without a value that the first one had.",
     "A key that is absent leaves the default as it was.", KeepsDefaultsThatASecondConfigurationLeavesOut},
    {"logger-configuration-is-kept-with-one-reference", "The references on two configurations are counted.",
     "The configuration is kept with one reference until it is replaced.", KeepsOneConfiguration},
    {"logger-configuration-is-not-queried", "The configuration notes what it is asked for.",
     "The configuration is used as it was given: it need not answer any interface.", AsksAConfigurationForNoInterface},
};

}  // namespace

extern const Family LoggerConfigurationFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
