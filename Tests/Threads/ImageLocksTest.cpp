// SPDX-License-Identifier: MIT
#include "Tests/Support/ImageTesting.h"
#include "Tests/Threads/RunTogether.h"

#include <atomic>
#include <cstdint>
#include <latch>
#include <random>
#include <thread>
#include <vector>

namespace tvx::test
{

namespace
{

// The counter that stands in the pixels of an image of four bytes.
std::uint32_t& CounterOf(void* pixels)
{
    return *static_cast<std::uint32_t*>(pixels);
}

using ImageLocks = ImageTest;

}  // namespace

TEST_F(ImageLocks, LetOneWriterInAtATime)
{
    const auto image = Make(1, 1, ColorFormat::OneChannel, DataType::FourBytes);
    RunTogether(
        [&](int)
        {
            for (int count = 0; count < 2000; ++count)
            {
                image->LockWrite();
                ++CounterOf(image->GetWritableData());
                image->Unlock();
            }
        });
    image->LockWrite();
    EXPECT_EQ(CounterOf(image->GetWritableData()), 2000u * ThreadCount);
}

TEST_F(ImageLocks, ShowReadersNothingThatIsBeingWritten)
{
    const auto image = Make(2, 1, ColorFormat::OneChannel, DataType::FourBytes);
    std::atomic<int> torn{0};
    RunTogether(
        [&](int number)
        {
            for (int count = 0; count < 1000; ++count)
            {
                if (number % 2 == 0)
                {
                    image->LockWrite();
                    auto* const pair = &CounterOf(image->GetWritableData());
                    ++pair[0];
                    ++pair[1];
                }
                else
                {
                    image->LockRead();
                    const auto* const pair = static_cast<const std::uint32_t*>(image->GetData());
                    torn += pair[0] == pair[1] ? 0 : 1;
                }
                image->Unlock();
            }
        });
    EXPECT_EQ(torn, 0);
}

// Writers among many readers, who never all let go at the same time by themselves.
TEST_F(ImageLocks, LetEverybodyInSomeTime)
{
    const auto image = Make(1, 1, ColorFormat::OneChannel, DataType::FourBytes);
    std::atomic<int> writersLeft{2};
    RunTogether(
        [&](int number)
        {
            if (number >= 2)
            {
                while (writersLeft > 0)
                {
                    image->LockRead();
                    EXPECT_NE(image->GetData(), nullptr);
                    image->Unlock();
                }
                return;
            }
            for (int count = 0; count < 200; ++count)
            {
                image->LockWrite();
                ++CounterOf(image->GetWritableData());
                image->Unlock();
            }
            --writersLeft;
        });
    image->LockRead();
    EXPECT_EQ(*static_cast<const std::uint32_t*>(image->GetData()), 400u);
}

TEST_F(ImageLocks, ChangeInEveryOrderWithoutEndlessWaiting)
{
    const auto image = Make(1, 1, ColorFormat::OneChannel, DataType::FourBytes);
    RunTogether(
        [&](int number)
        {
            auto state = static_cast<std::uint32_t>(number) * 2654435761U + 1;
            for (int count = 0; count < 2000; ++count)
            {
                state = state * 1664525U + 1013904223U;
                switch (state >> 30)
                {
                case 0:
                    image->LockRead();
                    EXPECT_TRUE(image->IsLocked());
                    break;
                case 1:
                    image->LockWrite();
                    EXPECT_TRUE(image->IsWriteLocked());
                    ++CounterOf(image->GetWritableData());
                    break;
                default: image->Unlock(); EXPECT_FALSE(image->IsLocked());
                }
            }
            image->Unlock();
        });
    image->LockWrite();
    EXPECT_TRUE(image->IsWriteLocked());
}

// The first thread is alone at first, beside the second one then, and alone again.
TEST_F(ImageLocks, AreKeptWhenAnotherThreadComesAndGoes)
{
    const auto image = Make(1, 1);
    for (int round = 0; round < 3; ++round)
    {
        image->LockRead();
        OnAnotherThread(
            [&]
            {
                EXPECT_FALSE(image->IsLocked());
                image->Unlock();  // not its own
                image->LockRead();
                EXPECT_TRUE(image->IsLocked());
                image->Unlock();
                EXPECT_FALSE(image->IsLocked());
            });
        EXPECT_TRUE(image->IsLocked());
        image->LockWrite();
        EXPECT_TRUE(image->IsWriteLocked());
        image->Unlock();
        EXPECT_FALSE(image->IsLocked());
    }
}

TEST_F(ImageLocks, OfAWriterAreWaitedForByAllWhoCome)
{
    for (int round = 0; round < 50; ++round)
    {
        const auto image = Make(1, 1, ColorFormat::OneChannel, DataType::FourBytes);
        image->LockWrite();
        const auto read = [&]
        {
            image->LockRead();
            EXPECT_GE(*static_cast<const std::uint32_t*>(image->GetData()), 2u);
            image->Unlock();
        };
        const auto write = [&]
        {
            image->LockWrite();
            CounterOf(image->GetWritableData()) += 2;
            image->Unlock();
        };
        std::thread reader(read);
        std::thread writer(write);
        ++CounterOf(image->GetWritableData());
        std::this_thread::yield();
        ++CounterOf(image->GetWritableData());
        image->Unlock();
        reader.join();
        writer.join();
        read();
    }
}

TEST_F(ImageLocks, OfTenThousandImagesAreHeldAllAtOnce)
{
    std::vector<Ref<IImage>> images;
    for (int count = 0; count < 10000; ++count)
        images.push_back(Make(1, 1));
    for (const auto& image : images)
        image->LockRead();
    for (const auto& image : images)
        EXPECT_TRUE(image->IsLocked());
    for (std::size_t at = 0; at < images.size(); at += 2)
        images[at]->Unlock();
    for (std::size_t at = 0; at < images.size(); ++at)
        EXPECT_EQ(images[at]->IsLocked(), at % 2 == 1) << at;
    images.clear();
    const auto image = Make(1, 1);
    EXPECT_FALSE(image->IsLocked());
}

TEST_F(ImageLocks, MeetWhileThreadsComeAndGo)
{
    const auto image = Make(1, 1, ColorFormat::OneChannel, DataType::FourBytes);
    for (int round = 0; round < 50; ++round)
    {
        RunTogether(
            [&](int)
            {
                image->LockWrite();
                ++CounterOf(image->GetWritableData());
                image->Unlock();
            });
    }
    image->LockWrite();
    EXPECT_EQ(CounterOf(image->GetWritableData()), 50u * ThreadCount);
}

// Each thread reads, writes and lets go of images that it picks by chance, one at a time.
TEST_F(ImageLocks, OfManyImagesAreChangedByManyThreads)
{
    std::vector<Ref<IImage>> images;
    for (int count = 0; count < 16; ++count)
        images.push_back(Make(2, 1, ColorFormat::OneChannel, DataType::FourBytes));
    std::atomic<int> torn{0};
    std::atomic<std::uint32_t> written{0};
    RunTogether(
        [&](int number)
        {
            std::mt19937 random(static_cast<unsigned>(number));
            for (int count = 0; count < 3000; ++count)
            {
                auto& image = *images[random() % images.size()];
                image.LockRead();
                const auto* const seen = static_cast<const std::uint32_t*>(image.GetData());
                torn += seen[0] == seen[1] ? 0 : 1;
                if (random() % 2 == 0)
                {
                    image.LockWrite();  // others may have written in between
                    auto* const pair = &CounterOf(image.GetWritableData());
                    torn += pair[0] == pair[1] ? 0 : 1;
                    ++pair[0];
                    ++pair[1];
                    ++written;
                    if (random() % 2 == 0)
                        image.LockRead();
                }
                image.Unlock();
                EXPECT_FALSE(image.IsLocked());
            }
        });
    EXPECT_EQ(torn, 0);
    std::uint32_t sum = 0;
    for (const auto& image : images)
    {
        image->LockRead();
        sum += *static_cast<const std::uint32_t*>(image->GetData());
    }
    EXPECT_EQ(sum, written);
}

// Each reader lets go before it waits, so that two who become writers at once do not wait for each other.
TEST_F(ImageLocks, OfReadersBecomeThoseOfWritersOneByOne)
{
    const auto image = Make(1, 1, ColorFormat::OneChannel, DataType::FourBytes);
    for (int round = 0; round < 200; ++round)
    {
        std::latch reading(ThreadCount);
        RunTogether(
            [&](int)
            {
                image->LockRead();
                reading.arrive_and_wait();  // all of them at once
                image->LockWrite();
                ++CounterOf(image->GetWritableData());
                image->Unlock();
            });
    }
    image->LockRead();
    EXPECT_EQ(*static_cast<const std::uint32_t*>(image->GetData()), 200u * ThreadCount);
}

TEST_F(ImageLocks, ShowTheLayoutThatIsBeingChanged)
{
    const auto image = Make(1, 2, ColorFormat::ThreeChannels);
    RunTogether(
        [&](int number)
        {
            for (int count = 0; count < 500; ++count)
            {
                const auto format = image->GetColorFormat();
                EXPECT_TRUE(format == 1 || format == 3);
                if (number != 0)
                    continue;
                image->LockWrite();
                EXPECT_EQ(image->SetColorFormat(format == 1 ? 3 : 1), TVX_OK);
                EXPECT_EQ(image->SetRowOrder(count + 1), TVX_OK);
                image->Unlock();
            }
        });
}

}  // namespace tvx::test
