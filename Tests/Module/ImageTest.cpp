// SPDX-License-Identifier: MIT
#include "Interfaces/IImage.h"
#include "Platform/LimitedMemory.h"
#include "Tests/Module/LoadedModule.h"
#include "Tests/Support/Worker.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <fstream>
#include <memory>
#include <utility>
#include <vector>

namespace tvx::test
{

namespace
{

Ref<IImage> MakeImage(const LoadedModule& module)
{
    Ref<IImage> image;
    module.Get<IImageFactory>(ImageExport)->Create(4, 4, 0, 0, 0, image.Receive());
    return image;
}

// Large enough for its pixels to be kept for the next one of that size.
Ref<IImage> MakeLargeImage(const LoadedModule& module)
{
    Ref<IImage> image;
    module.Get<IImageFactory>(ImageExport)->Create(4096, 2048, 0, 0, 0, image.Receive());
    return image;
}

// The bytes of this process's address space, and of those the ones that have memory.
std::pair<std::size_t, std::size_t> GetProcessSizes()
{
    constexpr std::size_t page = 4096;
    std::ifstream statm("/proc/self/statm");
    std::size_t mapped = 0;
    std::size_t resident = 0;
    statm >> mapped >> resident;
    return {mapped * page, resident * page};
}

// Another thread uses images, and ends after the module has gone.
void UseImagesAndUnload()
{
    auto module = std::make_unique<LoadedModule>();
    Worker worker;
    worker.Do(
        [&]
        {
            const auto image = MakeLargeImage(*module);
            image->LockWrite();
            std::memset(image->GetWritableData(), 7, std::size_t{4096} * 2048);
            Ref<IImage> copy;
            module->Get<IImageFactory>(ImageExport)->CreateCopy(Query<IConstImage>(image).Get(), copy.Receive());
        });
    module.reset();
    EXPECT_FALSE(LoadedModule::IsMapped());
}

}  // namespace

TEST(ModuleImages, AreLockedAndChangedThroughTheLoadedModule)
{
    const LoadedModule module;
    const auto image = MakeImage(module);
    EXPECT_EQ(image->GetData(), nullptr);
    image->LockWrite();
    ASSERT_NE(image->GetWritableData(), nullptr);
    std::memset(image->GetWritableData(), 7, 4);
    EXPECT_EQ(image->SetRowOrder(1), TVX_OK);
    EXPECT_EQ(static_cast<const char*>(image->GetData())[12], 7);
    image->Unlock();
}

TEST(ModuleImages, LetAThreadThatHeldOneEndAfterUnloading)
{
    for (int round = 0; round < 10; ++round)
    {
        auto module = std::make_unique<LoadedModule>();
        auto worker = std::make_unique<Worker>();
        auto image = MakeImage(*module);
        worker->Do(
            [&]
            {
                image->LockRead();
                EXPECT_TRUE(image->IsLocked());
            });
        image = nullptr;
        module.reset();
        EXPECT_FALSE(LoadedModule::IsMapped());
        worker.reset();
    }
}

// Threads keep what an earlier load of the module has given them, and the next load comes to stand at the same place.
TEST(ModuleImages, TellThreadsOfAnEarlierLoadApart)
{
    std::vector<std::unique_ptr<Worker>> workers;
    for (int round = 0; round < 10; ++round)
    {
        auto module = std::make_unique<LoadedModule>();
        auto image = MakeImage(*module);
        workers.push_back(std::make_unique<Worker>());
        workers.back()->Do([&] { image->LockRead(); });
        for (const auto& worker : workers)
        {
            const bool last = worker == workers.back();
            worker->Do([&] { EXPECT_EQ(image->IsLocked(), last) << round; });
        }
        EXPECT_FALSE(image->IsLocked());
        image = nullptr;
    }
}

TEST(ModuleImages, LeaveNoMemoryBehindWhenTheModuleIsUnloaded)
{
    if (!Platform::LimitedMemory::IsPossible())
        GTEST_SKIP() << "the sanitizers take memory for themselves";
    constexpr std::size_t tolerance = std::size_t{2} * 1024 * 1024;  // less than one image a round would come to
    for (int round = 0; round < 5; ++round)
        UseImagesAndUnload();
    const auto [mappedBefore, residentBefore] = GetProcessSizes();
    for (int round = 0; round < 100; ++round)
        UseImagesAndUnload();
    const auto [mapped, resident] = GetProcessSizes();
    EXPECT_LT(mapped, mappedBefore + tolerance);
    EXPECT_LT(resident, residentBefore + tolerance);
}

}  // namespace tvx::test
