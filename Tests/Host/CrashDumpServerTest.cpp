// SPDX-License-Identifier: MIT
#include "Host/CrashDumpServer.h"

#include "Helpers/Ref.h"
#include "Host/Configuration.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Threads/RunTogether.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvx::host
{
namespace
{

std::vector<std::string> List(const CrashDumpServer& server)
{
    std::vector<std::string> files;
    for (const auto& file : server.GetFiles())
        files.push_back(file.path + ": " + file.label);
    return files;
}

TEST(CrashDumpServer, KeepsFilesWithTheirLabelsInTheirOrder)
{
    const auto server = MakeRef<CrashDumpServer>();
    EXPECT_TRUE(server->GetFiles().empty());
    EXPECT_EQ(server->AddFile("b.txt", "Log File"), TVX_OK);
    EXPECT_EQ(server->AddFile("a.txt", "Settings"), TVX_OK);
    EXPECT_EQ(List(*server), (std::vector<std::string>{"b.txt: Log File", "a.txt: Settings"}));
}

TEST(CrashDumpServer, AddsAnEntryWithEachCallAlsoForTheSamePath)
{
    const auto server = MakeRef<CrashDumpServer>();
    for (const char* const label : {"Log File", "Log File", "Other"})
        EXPECT_EQ(server->AddFile("a.txt", label), TVX_OK);
    EXPECT_EQ(List(*server), (std::vector<std::string>{"a.txt: Log File", "a.txt: Log File", "a.txt: Other"}));
}

TEST(CrashDumpServer, RefusesANullPathAndTakesANullLabelForEmpty)
{
    const auto server = MakeRef<CrashDumpServer>();
    EXPECT_EQ(server->AddFile(nullptr, "Log File"), TVX_E_POINTER);
    EXPECT_EQ(server->AddFile("a.txt", nullptr), TVX_OK);
    EXPECT_EQ(server->AddFile("", ""), TVX_OK);
    EXPECT_EQ(List(*server), (std::vector<std::string>{"a.txt: ", ": "}));
}

TEST(CrashDumpServer, CopiesTheTexts)
{
    const auto server = MakeRef<CrashDumpServer>();
    std::string path = "a.txt";
    server->AddFile(path.c_str(), path.c_str());
    path = "xxxxx";
    EXPECT_EQ(List(*server), (std::vector<std::string>{"a.txt: a.txt"}));
}

TEST(CrashDumpServer, AnswersItsThreeInterfaces)
{
    const auto server = MakeRef<CrashDumpServer>();
    EXPECT_EQ(Query<ICrashDumpServer>(server).Get(), server.Get());
    EXPECT_EQ(Query<IObject>(server).Get(), server.Get());
    EXPECT_EQ(Query<IObjectBase>(server).Get(), server.Get());
    EXPECT_FALSE(Query<ILibManager>(server));
    EXPECT_TRUE(server->IsUnique());
}

TEST(CrashDumpServer, TakesFilesOfManyThreads)
{
    const auto server = MakeRef<CrashDumpServer>();
    const auto add = [&](int thread)
    {
        const auto path = std::to_string(thread);
        for (int i = 0; i < 100; ++i)
        {
            server->AddFile(path.c_str(), "Log File");
            EXPECT_FALSE(server->GetFiles().empty());
        }
    };
    test::RunTogether(add);
    EXPECT_EQ(server->GetFiles().size(), 800U);
}

TEST(CrashDumpServer, HearsFromTheLoggerOfEachNameThatWritesToAFile)
{
    const auto server = MakeRef<CrashDumpServer>();
    const auto logger = MakeRef<CBasicLogger>();
    auto entries = ParseConfiguration("[Default]\nToFile=yes\nFilename=/no-such-folder/log.txt\n[Quiet]\nToFile=no\n",
                                      ConfigurationFormat::Ini, "test");
    logger->SetConfiguration(MakeRef<Configuration>("test", *entries).Get());
    const auto proxy = MakeRef<test::ImportProxy>(Ref<IObjectBase>(server));
    const auto shared = CBasicLogger::GetOrMake();  // has the imports of all
    shared->SetImport("CrashDumpServer", static_cast<IExportProxy*>(proxy.Get()));
    for (const char* const name : {"Main", "Net", "Quiet", "Main"})
        logger->SetLevel(name, 1);
    shared->ClearImports();
    EXPECT_EQ(List(*server),
              (std::vector<std::string>{"/no-such-folder/log.txt: Log File", "/no-such-folder/log.txt: Log File"}));
}

}  // namespace
}  // namespace tvx::host
