// SPDX-License-Identifier: MIT
// A host that logs two lines into a file, which stay in the buffer, and ends in the way that it is told to.
//
// Usage: tvx-logging-host FILE release-and-unload|release-and-exit|hold-and-exit|hold-and-unload
#include "Interfaces/ILogger.h"
#include "Tests/Module/LoadedModule.h"
#include "Tests/Support/LoggerTesting.h"

#include <memory>
#include <utility>

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
    if (end.starts_with("release"))
        Release();
    if (end.ends_with("unload"))
        Unload();
    if (end == "release-and-unload")
        _exit(0);  // what was not written at unload stays unwritten
    return 0;
}
