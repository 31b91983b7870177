// SPDX-License-Identifier: MIT
#pragma once

#include "Src/ConsoleLoggerPlug.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/LoggerTesting.h"

#include <gtest/gtest.h>

#include <string>

namespace tvx::test
{

// A fresh logger in a folder of its own. Imports belong to the export and are looked for in the shared instance, which the
// test gives them and gets back without any.
class LoggerTest : public testing::Test
{
protected:
    ~LoggerTest() override { CBasicLogger::GetOrMake()->ClearImports(); }

    void Configure(std::map<std::string, ScriptedConfiguration::Value> values)
    {
        config->values = std::move(values);
        logger->SetConfiguration(config.Get());
    }

    // A configuration that writes all levels to the file "log.txt" alone, flushed after every line.
    void ConfigureFile(std::int32_t threshold = 1)
    {
        Configure({{"Default\\ToStdOut", false},
                   {"Default\\ToFile", true},
                   {"Default\\MinLevel", LogLevel::Trace},
                   {"Default\\LogFlushThreshold", threshold}});
    }

    static void Import(const char* name, const Ref<IObjectBase>& object)
    {
        const auto proxy = MakeRef<ImportProxy>(object);
        CBasicLogger::GetOrMake()->SetImport(name, static_cast<IExportProxy*>(proxy.Get()));
    }

    // What Log writes to standard output, without the times.
    std::string Logged(const char* loggerName, std::int32_t level, const char* message = "m")
    {
        const auto log = [&] { logger->Log(loggerName, level, "S", "C", "F", 1, message); };
        return WithoutTimes(CaptureOutput(log));
    }

    std::int32_t GetLevel(const char* loggerName)
    {
        std::int32_t level = -99;
        EXPECT_EQ(logger->GetLevel(loggerName, &level), TVX_OK);
        return level;
    }

    CurrentFolder folder;
    Ref<CBasicLogger> logger = MakeRef<CBasicLogger>();
    Ref<ScriptedConfiguration> config = MakeRef<ScriptedConfiguration>();
};

// What an import that was never set makes GetImport write.
inline std::string AbsentImport(const std::string& name)
{
    return "LibManager: NULL object proxy returned for \"" + name + "\".\n";
}

}  // namespace tvx::test
