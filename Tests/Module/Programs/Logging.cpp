// SPDX-License-Identifier: MIT
// A host that logs two lines into a file, which stay in the buffer, and ends in the way that it is told to.
//
// Usage: tvx-logging-host FILE WAY
//   release-and-unload, release-and-exit, hold-and-exit, hold-and-unload
//   hold-and-log-last        logs one more when the module has written what was left
//   hold-and-log-on          another thread logs numbers; prints how many there are for certain before it ends
//   hold-and-fork            a child ends first, in the same way
#include "Interfaces/ILogger.h"
#include "Tests/Module/LoadedModule.h"
#include "Tests/Support/LoggerTesting.h"

#include <atomic>
#include <iostream>
#include <memory>
#include <thread>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace tvx;
using namespace tvx::test;

// Held to the end and beyond.
LoadedModule* module = nullptr;
ILogger* held = nullptr;

void Log(const std::string& file)
{
    module = std::make_unique<LoadedModule>().release();
    const auto config = MakeRef<ScriptedConfiguration>(std::map<std::string, ScriptedConfiguration::Value>{
        {"Default\\ToStdOut", false}, {"Default\\ToFile", true}, {"Default\\Filename", file}});
    auto logger = module->Get<ILogger>(LoggerExport);
    Query<IConfigurable>(logger)->SetConfiguration(config.Get());
    Say(*logger, "Main", "first");
    Say(*logger, "Net", "second");
    held = logger.Detach();
}

// Made before the module is loaded, so that it goes after what the module does at the end.
struct LastWords
{
    ~LastWords()
    {
        if (wanted)
            Say(*held, "Main", "third");
    }

    bool wanted = false;
} lastWords;

// The end comes long before the thread has logged all.
void LogOn()
{
    constexpr int certain = 1000;
    constexpr int most = 20 * certain;
    static std::atomic<int> logged{0};
    std::thread(
        []
        {
            for (; logged < most; ++logged)
                Say(*held, "Main", std::to_string(logged).c_str());
        })
        .detach();
    while (logged < certain)
    {
    }
    std::cout << logged << std::flush;
}

// From here on there are two processes, of which the child goes first.
void Fork()
{
    if (fork() != 0)
        wait(nullptr);
}

void Release()
{
    Ref<ILogger>::Adopt(std::exchange(held, nullptr));
}

void Unload()
{
    std::unique_ptr<LoadedModule>(std::exchange(module, nullptr)).reset();
}

}  // namespace

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    const std::string end = arguments[2];
    Log(arguments[1]);
    lastWords.wanted = end.ends_with("last");
    if (end.ends_with("on"))
        LogOn();
    if (end.ends_with("fork"))
        Fork();
    if (end.starts_with("release"))
        Release();
    if (end.ends_with("unload"))
        Unload();
    if (end == "release-and-unload")
        _exit(0);  // what was not written at unload stays unwritten
    return 0;
}
