// SPDX-License-Identifier: MIT
#include "Host/Configuration.h"
#include "Host/CrashDumpServer.h"
#include "Host/JsonLinesSink.h"
#include "Host/RotatingFileSink.h"
#include "Host/SynchronisedLogger.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Tests/Host/LogSinkFixture.h"
#include "Tests/Support/FailingMemory.h"

namespace tvx::host
{
namespace
{

using test::FailingMemory;
using test::MemoryFailure;

TEST(CrashDumpServerWithoutMemory, RefusesAFileAndKeepsTheOthers)
{
    test::SweepFailures(
        [](MemoryFailure failure)
        {
            const auto server = MakeRef<CrashDumpServer>();
            const std::string path(100, 'p');
            const std::string label(100, 'l');
            server->AddFile("first", "");
            const FailingMemory memory(failure);
            const auto result = server->AddFile(path.c_str(), label.c_str());
            EXPECT_EQ(result, FailingMemory::HasFailed() ? TVX_E_POINTER : TVX_OK);
            const test::OwnMemory own;
            EXPECT_EQ(server->GetFiles().size(), FailingMemory::HasFailed() ? 1U : 2U);
            return FailingMemory::HasFailed();
        });
}

TEST(ConfigurationWithoutMemory, RefusesAReadAndLeavesOutUntouched)
{
    test::SweepFailures(
        [](MemoryFailure failure)
        {
            const auto entries = ParseConfiguration("K=" + std::string(100, 'x'), ConfigurationFormat::Ini, "file");
            const auto configuration = MakeRef<Configuration>("file", *entries);
            IString* text = nullptr;
            std::int32_t number = 7;
            const FailingMemory memory(failure);
            const auto refused = configuration->GetInt("K", &number, 0);
            const auto result = configuration->GetString("K", &text, 0);
            const auto given = Ref<IString>::Adopt(text);
            EXPECT_LT(refused, 0);
            EXPECT_EQ(number, 7);
            EXPECT_EQ(result == TVX_OK, text != nullptr);
            EXPECT_TRUE(result == TVX_OK || result == TVX_E_POINTER);
            return FailingMemory::HasFailed();
        });
}

class SinkWithoutMemory : public testing::TestWithParam<Outcome<Ref<LogSink>> (*)(const std::filesystem::path&)>
{
};

TEST_P(SinkWithoutMemory, LosesARecordOrHasItWhole)
{
    test::SweepFailures(
        [](MemoryFailure failure)
        {
            const test::ScratchFolder folder;
            const auto file = folder.GetPath() / "log.txt";
            const auto sink = *GetParam()(file);
            const auto record = MakeRef<CLogData>(LogEntry{"Main", LogLevel::Info, "Net", nullptr, nullptr, 1, "text"});
            const auto param = reinterpret_cast<std::uintptr_t>(static_cast<ILogData*>(record.Get()));
            Result result = TVX_OK;
            bool failed = false;
            {
                const FailingMemory memory(failure);
                result = sink->OnEvent(nullptr, ILogger::Id, "MessageLogged", param, 0);
                failed = FailingMemory::HasFailed();
            }
            EXPECT_EQ(sink->GetLostCount(), result == TVX_OK ? 0U : 1U);
            EXPECT_EQ(test::ReadLines(file).size(), result == TVX_OK ? 1U : 0U);
            EXPECT_EQ(test::Tell(*sink, "after"), TVX_OK);
            return failed;
        });
}

INSTANTIATE_TEST_SUITE_P(, SinkWithoutMemory,
                         testing::Values(&OpenJsonLinesSink,
                                         [](const std::filesystem::path& file) {
                                             return OpenRotatingFileSink(file, {1000, 1});
                                         }));

}  // namespace
}  // namespace tvx::host
