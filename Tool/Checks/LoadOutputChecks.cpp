// SPDX-License-Identifier: MIT
#include "Tool/Checks/LoadedFile.h"
#include "Tool/Checks/PublishedExports.h"

#include <algorithm>

namespace tvx::check
{

namespace
{

// Whether it is text that ends with its last line. Bytes above 7 bit may be text of any encoding.
bool IsWholeLines(std::string_view text)
{
    const bool plain = std::all_of(text.begin(), text.end(),
                                   [](char character)
                                   {
                                       return static_cast<unsigned char>(character) >= 0x20 || character == '\n' ||
                                              character == '\r' || character == '\t';
                                   });
    return plain && (text.empty() || text.ends_with('\n'));
}

void WritesLinesWhenLoaded(Trial& trial)
{
    LoadedFile module(trial, trial.GetFile());
    const auto output = trial.TakeOutput();
    trial.Expect(IsWholeLines(output), "whole lines of text on standard output at loading", Show(output));
    UnloadQuietly(trial, module);
}

void WritesLinesWhenUnloaded(Trial& trial)
{
    auto module = LoadQuietly(trial);
    const auto output = trial.TakeOutput([&] { module.Unload(); });
    trial.Expect(IsWholeLines(output), "whole lines of text on standard output at unloading", Show(output));
}

void SaysThatTheRegistryIsCreated(Trial& trial)
{
    NeedPublishedExports(trial);
    LoadedFile module(trial, trial.GetFile());
    trial.Equal("what loading writes to standard output", trial.TakeOutput(), "PlugDLL created\n");
    UnloadQuietly(trial, module);
}

void SaysThatTheRegistryIsDeleted(Trial& trial)
{
    NeedPublishedExports(trial);
    auto module = LoadQuietly(trial);
    trial.Writes("unloading", "PlugDLL deleted\n", [&] { module.Unload(); });
}

void SaysNothingInBetween(Trial& trial)
{
    NeedPublishedExports(trial);
    auto module = LoadQuietly(trial);
    for (const auto& entry : GetPublishedExports())
        trial.Writes("GetExport of " + entry.id, "", [&] { module.Ask(entry.id); });
    trial.Writes("GetExport of an unknown id", "", [&] { module.Ask("unknown"); });
    trial.Writes("GetExport with a null out", "",
                 [&] { module.GetFunction()(GetPublishedExports().front().id.c_str(), nullptr); });
    UnloadQuietly(trial, module);
}

constexpr Check Checks[] = {
    {"load-writes-whole-lines-at-its-start", "What the module writes while it is loaded is read.",
     "What a module writes to standard output is text in whole lines: it stands among the output of others.",
     WritesLinesWhenLoaded},
    {"load-writes-whole-lines-at-its-end", "What the module writes while it is unloaded is read.",
     "What a module writes to standard output is text in whole lines, and all of it is written before the module is "
     "gone.",
     WritesLinesWhenUnloaded},
    {"load-says-registry-is-created", "A module with the eight generic exports is loaded.",
     "Loading writes the line \"PlugDLL created\", once and nothing else, before anything is asked for.",
     SaysThatTheRegistryIsCreated},
    {"load-says-registry-is-deleted", "A module with the eight generic exports is unloaded.",
     "Unloading writes the line \"PlugDLL deleted\", once and nothing else.", SaysThatTheRegistryIsDeleted},
    {"load-says-nothing-for-exports", "Known and unknown exports are asked for, and one with a null out.",
     "GetExport writes nothing, whatever it gives.", SaysNothingInBetween},
};

}  // namespace

extern const Family LoadOutputFamily = {"load", nullptr, Needs::Loading, Checks};

}  // namespace tvx::check
