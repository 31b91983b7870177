// SPDX-License-Identifier: MIT
#include "Interfaces/IFactory.h"
#include "Interfaces/IString.h"
#include "Tests/Module/LoadedModule.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <future>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace tvx::test
{

namespace
{

Ref<IString> MakeString(const LoadedModule& module, const char* text)
{
    Ref<IString> string;
    module.Get<IStringFactory>(StringExport)->CreateString(text, string.Receive());
    return string;
}

// Runs check in a forked child and tells whether it held there.
template <class Check>
bool HoldsInChild(Check&& check)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(check() ? 0 : 1);
    int status = -1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The function itself, to be called while the module is on its way out.
GetExportFunction FindGetExport()
{
    std::string reason;
    const auto library = Platform::DynamicLibrary::Load(TVX_MODULE_FILE, reason);
    return reinterpret_cast<GetExportFunction>(library.FindSymbol(GetExportName));
}

// The face of an export that takes subscriptions; the string export refuses IObject.
Ref<IObject> GetObject(const LoadedModule& module, const char* id)
{
    auto object = module.Get<IObject>(id);
    return object ? object : Ref<IObject>(module.Get<IStringFactory>(id));
}

// Subscribes handler to "Destroyed" of every export, with the place of the export in the table.
void SubscribeToAll(const LoadedModule& module, IEventHandler& handler)
{
    for (std::size_t place = 0; place < std::size(ServedExports); ++place)
        GetObject(module, ServedExports[place])->SubscribeDestroyed(&handler, place);
}

// How many of the exports are refused with -1 and null.
std::size_t CountRefused(GetExportFunction getExport)
{
    const auto mark = MakeRef<BareObject>();
    std::size_t refused = 0;
    for (const char* const id : ServedExports)
    {
        IObjectBase* out = mark.Get();
        const auto result = getExport(id, &out);
        const auto given = Ref<IObjectBase>::Adopt(result == TVX_OK ? out : nullptr);
        if (result == TVX_E_FAIL && out == nullptr)
            ++refused;
    }
    return refused;
}

bool BelongsToThisThread(const LoadedModule& module)
{
    return MakeString(module, "")->GetOwnerThreadId() == static_cast<std::uint32_t>(gettid());
}

}  // namespace

TEST(ModuleLoad, SaysOnceThatTheRegistryIsMadeBeforeAnythingIsAsked)
{
    std::unique_ptr<LoadedModule> module;
    EXPECT_EQ(CaptureOutput([&] { module = std::make_unique<LoadedModule>(); }), "PlugDLL created\n");
    EXPECT_EQ(CaptureOutput([&] { MakeString(*module, "text"); }), "");
}

TEST(ModuleLoad, SaysOnceThatTheRegistryIsDeletedWhenUnloaded)
{
    auto module = std::make_unique<LoadedModule>();
    MakeString(*module, "text");
    EXPECT_EQ(CaptureOutput([&] { module.reset(); }), "PlugDLL deleted\n");
}

TEST(ModuleLoad, HappensOnceForTwoHostsInOneProcess)
{
    auto first = std::make_unique<LoadedModule>();
    std::unique_ptr<LoadedModule> second;
    EXPECT_EQ(CaptureOutput([&] { second = std::make_unique<LoadedModule>(); }), "");
    EXPECT_EQ(first->Get<IStringFactory>(StringExport).Get(), second->Get<IStringFactory>(StringExport).Get());
    EXPECT_EQ(CaptureOutput([&] { first.reset(); }), "");
    EXPECT_STREQ(MakeString(*second, "text")->GetText(), "text");
    EXPECT_EQ(CaptureOutput([&] { second.reset(); }), "PlugDLL deleted\n");
}

TEST(ModuleLoad, IsReallyUndoneByUnloading)
{
    ASSERT_FALSE(LoadedModule::IsMapped());
    auto module = std::make_unique<LoadedModule>();
    EXPECT_TRUE(LoadedModule::IsMapped());
    MakeString(*module, "text");
    module->Get<IFactory>(SimpleMapExport);
    module.reset();
    EXPECT_FALSE(LoadedModule::IsMapped());
}

TEST(ModuleLoad, CanBeRepeatedAnyNumberOfTimes)
{
    for (int round = 0; round < 100; ++round)
    {
        const auto text = std::to_string(round);
        const auto output = CaptureOutput(
            [&]
            {
                const LoadedModule module;
                EXPECT_EQ(MakeString(module, text.c_str())->GetText(), text);
            });
        ASSERT_EQ(output, "PlugDLL created\nPlugDLL deleted\n") << round;
        ASSERT_FALSE(LoadedModule::IsMapped()) << round;
    }
}

TEST(ModuleLoad, DestroysTheExportsWhenUnloaded)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto module = std::make_unique<LoadedModule>();
    module->Get<IStringFactory>(StringExport)->SubscribeDestroyed(handler.Get(), 1);
    module->Get<IFactory>(SimpleMapExport)->SubscribeDestroyed(handler.Get(), 2);
    EXPECT_TRUE(handler->events.empty());
    module.reset();
    EXPECT_EQ(handler->GetNames(), (std::vector<std::string>{"Destroyed", "Destroyed"}));
}

TEST(ModuleLoad, DestroysTheExportsInTheReverseOrderOfTheirRegistration)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto module = std::make_unique<LoadedModule>();
    SubscribeToAll(*module, *handler);
    module.reset();
    ASSERT_EQ(handler->events.size(), std::size(ServedExports));
    for (std::size_t i = 0; i < handler->events.size(); ++i)
        EXPECT_EQ(handler->events[i].userData, handler->events.size() - 1 - i);
}

TEST(ModuleLoad, GivesNoExportAwayWhileItIsUndone)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto module = std::make_unique<LoadedModule>();
    const auto getExport = FindGetExport();
    std::vector<std::size_t> refused;
    handler->action = [&](const SeenEvent&) { refused.push_back(CountRefused(getExport)); };
    SubscribeToAll(*module, *handler);
    EXPECT_EQ(CountRefused(getExport), 0u);
    EXPECT_EQ(CaptureOutput([&] { module.reset(); }), "PlugDLL deleted\n");
    EXPECT_EQ(refused, std::vector<std::size_t>(std::size(ServedExports), std::size(ServedExports)));
}

TEST(ModuleLoad, LetsAThreadThatUsedTheModuleEndAfterItsUnloading)
{
    auto module = std::make_unique<LoadedModule>();
    std::promise<std::uint32_t> used;
    std::promise<void> unloaded;
    std::thread user(
        [&]
        {
            const auto owner = MakeString(*module, "of another thread")->GetOwnerThreadId();
            used.set_value(owner);  // the string is gone by now: the module goes next
            unloaded.get_future().wait();
        });
    EXPECT_NE(used.get_future().get(), static_cast<std::uint32_t>(gettid()));
    module.reset();
    EXPECT_FALSE(LoadedModule::IsMapped());
    unloaded.set_value();
    user.join();
}

TEST(ModuleLoad, RecordsTheChildsOwnThreadAfterAFork)
{
    const LoadedModule module;
    EXPECT_TRUE(BelongsToThisThread(module));  // the number is kept from here on
    EXPECT_TRUE(HoldsInChild([&] { return BelongsToThisThread(module); }));
    EXPECT_TRUE(HoldsInChild([&] { return HoldsInChild([&] { return BelongsToThisThread(module); }); }));
    EXPECT_TRUE(BelongsToThisThread(module));
}

TEST(ModuleLoad, RecordsTheChildsOwnThreadAfterAForkOnAnotherThread)
{
    const LoadedModule module;
    bool before = false;
    bool inChild = false;
    std::thread(
        [&]
        {
            before = BelongsToThisThread(module);
            inChild = HoldsInChild([&] { return BelongsToThisThread(module); });
        })
        .join();
    EXPECT_TRUE(before);
    EXPECT_TRUE(inChild);
}

TEST(ModuleLoad, LeavesNothingBehindThatAForkWouldRun)
{
    auto module = std::make_unique<LoadedModule>();
    MakeString(*module, "text");
    module.reset();
    EXPECT_TRUE(HoldsInChild([] { return !LoadedModule::IsMapped(); }));
}

}  // namespace tvx::test
