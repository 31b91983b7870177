// SPDX-License-Identifier: MIT
#include "Interfaces/IImage.h"
#include "Tests/Module/LoadedModule.h"
#include "Tests/Support/Worker.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
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

}  // namespace tvx::test
