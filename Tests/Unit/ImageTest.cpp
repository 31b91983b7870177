// SPDX-License-Identifier: MIT
#include "Tests/Support/ImageTesting.h"
#include "Tests/Support/Worker.h"

namespace tvx::test
{

namespace
{

struct Sizes
{
    std::int32_t format;
    std::int32_t type;
    std::int32_t pixelSize;
};

// Every known layout with every known type.
constexpr Sizes KnownSizes[] = {
    {0, 0, 1}, {0, 1, 2}, {0, 2, 4},  {0, 3, 4},  {0, 4, 8},  {1, 0, 3}, {1, 1, 6}, {1, 2, 12}, {1, 3, 12}, {1, 4, 24},
    {2, 0, 4}, {2, 1, 8}, {2, 2, 16}, {2, 3, 16}, {2, 4, 32}, {3, 0, 3}, {3, 1, 6}, {3, 2, 12}, {3, 3, 12}, {3, 4, 24},
};

// An unknown layout counts as -1 channels, an unknown type as an element of -1.
constexpr Sizes UnknownSizes[] = {
    {4, 0, -1}, {7, 0, -1}, {-1, 1, -2}, {4, 2, -4},  {9, 4, -8},
    {0, 5, -1}, {1, 5, -3}, {2, -1, -4}, {3, 99, -3}, {4, 5, 1},
};

enum Hold
{
    None,
    Reading,
    Writing,
};

void Take(IImage& image, Hold hold)
{
    if (hold == None)
        image.Unlock();
    if (hold == Reading)
        image.LockRead();
    if (hold == Writing)
        image.LockWrite();
}

// What the calling thread is told.
Hold HoldOf(IImage& image)
{
    const Hold hold = image.IsWriteLocked() ? Writing : image.IsLocked() ? Reading : None;
    EXPECT_EQ(image.GetData() != nullptr, hold != None);
    EXPECT_EQ(image.GetWritableData() != nullptr, hold == Writing);
    return hold;
}

using ImageFormat = ImageTest;
using ImageRows = ImageTest;

}  // namespace

TEST_F(ImageTest, TellsTheSizesOfEveryKnownLayoutAndType)
{
    for (const auto& [format, type, pixelSize] : KnownSizes)
    {
        const auto image = Make(5, 3, format, type, 9);
        EXPECT_EQ(Describe(*image), (Numbers{5, 3, format, type, 9, pixelSize, pixelSize * 5}));
        EXPECT_EQ(Read(image), Bytes(static_cast<std::size_t>(pixelSize * 15), 0));
    }
}

TEST_F(ImageTest, TakesUnknownLayoutsAndTypesWithoutPixels)
{
    for (const auto& [format, type, pixelSize] : UnknownSizes)
    {
        const auto image = Make(5, 3, format, type, -2);
        EXPECT_EQ(Describe(*image), (Numbers{5, 3, format, type, -2, pixelSize, pixelSize * 5}));
        image->LockWrite();
        EXPECT_TRUE(image->IsWriteLocked());
        EXPECT_EQ(image->GetData(), nullptr);
        EXPECT_EQ(image->GetWritableData(), nullptr);
    }
}

TEST_F(ImageTest, TakesNegativeAndEmptySizesWithoutPixels)
{
    for (const auto& [width, height] : {std::pair(-4, 3), {4, -3}, {-4, -3}, {0, 3}, {4, 0}, {INT32_MIN / 4, 1}})
    {
        const auto image = Make(width, height, 1, 0);
        EXPECT_EQ(Describe(*image), (Numbers{width, height, 1, 0, 0, 3, 3 * width}));
        image->LockWrite();
        EXPECT_EQ(image->GetWritableData(), nullptr);
    }
}

TEST_F(ImageTest, IsNotMadeWithTooLongRowsOrTooManyPixels)
{
    const ImageDescription huge[] = {{INT32_MAX, 1, 1, 0, 0},
                                     {INT32_MAX / 3 + 1, 1, 1, 0, 0},
                                     {INT32_MAX, 1, 2, 4, 0},
                                     {INT32_MIN, 1, 2, 4, 0},
                                     {INT32_MAX, INT32_MAX, 0, 0, 0}};
    for (const auto& is : huge)
    {
        IImage* out = reinterpret_cast<IImage*>(this);
        const auto create = [&]
        { return factory->Create(is.width, is.height, is.colorFormat, is.dataType, is.rowOrder, &out); };
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(create(), TVX_E_EXCEPTION); }), "");
        EXPECT_EQ(out, reinterpret_cast<IImage*>(this));
    }
}

TEST_F(ImageTest, GoesThroughEveryChangeOfItsLock)
{
    for (const Hold from : {None, Reading, Writing})
    {
        for (const Hold to : {None, Reading, Writing})
        {
            const auto image = Make(2, 2);
            Take(*image, from);
            EXPECT_EQ(HoldOf(*image), from);
            Take(*image, to);
            EXPECT_EQ(HoldOf(*image), to) << from;
            Take(*image, None);
            EXPECT_EQ(HoldOf(*image), None);
            OnAnotherThread([&] { Take(*image, Writing); });  // nothing is left behind that would keep it waiting
        }
    }
}

TEST_F(ImageTest, DoesNotCountLocks)
{
    const auto image = Make(2, 2);
    image->LockRead();
    image->LockRead();
    image->Unlock();
    EXPECT_FALSE(image->IsLocked());
    image->LockWrite();
    image->LockWrite();
    image->Unlock();
    EXPECT_FALSE(image->IsLocked());
    image->Unlock();
    EXPECT_FALSE(image->IsLocked());
    OnAnotherThread(
        [&]
        {
            image->LockWrite();
            EXPECT_TRUE(image->IsWriteLocked());
        });
}

TEST_F(ImageTest, GivesTheSamePixelsUnderEitherLock)
{
    const auto image = Make(2, 2);
    image->LockWrite();
    const void* const pixels = image->GetWritableData();
    EXPECT_EQ(image->GetData(), pixels);
    image->LockRead();
    EXPECT_EQ(image->GetData(), pixels);
    EXPECT_EQ(image->GetWritableData(), nullptr);
}

TEST_F(ImageTest, TellsEachThreadItsOwnHold)
{
    const auto image = Make(2, 2);
    image->LockRead();
    OnAnotherThread(
        [&]
        {
            EXPECT_EQ(HoldOf(*image), None);
            image->Unlock();  // not for somebody else
            image->LockRead();
            EXPECT_EQ(HoldOf(*image), Reading);
            image->Unlock();
            EXPECT_EQ(HoldOf(*image), None);
        });
    EXPECT_EQ(HoldOf(*image), Reading);
}

TEST_F(ImageTest, IsLockedByManyReadersAtOnce)
{
    const auto image = Make(2, 2);
    std::vector<std::thread> readers;
    std::atomic<int> reading{0};
    for (int reader = 0; reader < 20; ++reader)  // more than one block of holds
    {
        readers.emplace_back(
            [&]
            {
                image->LockRead();
                ++reading;
                while (reading < 20)
                    std::this_thread::yield();
                EXPECT_EQ(HoldOf(*image), Reading);
                image->Unlock();
                EXPECT_EQ(HoldOf(*image), None);
            });
    }
    for (auto& reader : readers)
        reader.join();
    image->LockWrite();
    EXPECT_TRUE(image->IsWriteLocked());
}

TEST_F(ImageTest, ForgetsItsLockWithItsPixels)
{
    const auto image = Make(2, 2);
    image->LockWrite();
    Ref<IConstImage> moved;
    ASSERT_EQ(factory->MakeConst(image.Get(), moved.Receive()), TVX_OK);
    EXPECT_EQ(HoldOf(*image), None);
    for (const Hold hold : {Reading, Writing, None})
    {
        Take(*image, hold);
        EXPECT_EQ(HoldOf(*image), None);
    }
    OnAnotherThread([&] { Take(*image, Writing); });  // waits for nobody
}

TEST_F(ImageTest, MayDieWhileItIsLocked)
{
    for (const Hold hold : {Reading, Writing})
    {
        auto image = Make(2, 2);
        Take(*image, hold);
        image = nullptr;
        image = Make(2, 2);
        EXPECT_EQ(HoldOf(*image), None);
    }
}

// A later image at the same address, on both threads that held the earlier one.
TEST_F(ImageTest, IsUnlockedWhereALockedOneHasDied)
{
    const void* before = nullptr;
    Worker other;
    int reused = 0;
    for (int round = 0; round < 200; ++round)
    {
        const auto image = Make(2, 2);
        reused += image.Get() == before ? 1 : 0;
        before = image.Get();
        EXPECT_EQ(HoldOf(*image), None);
        other.Do([&] { EXPECT_EQ(HoldOf(*image), None); });
        Take(*image, Reading);
        other.Do([&] { Take(*image, Reading); });
    }
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_GT(reused, 0);  // the sanitizers keep freed memory back
#endif
}

TEST_F(ImageTest, OfAThreadThatEndedWithAHoldIsReadByOthersStill)
{
    const auto image = Make(2, 2);
    OnAnotherThread([&] { image->LockRead(); });
    OnAnotherThread([&] { EXPECT_EQ(HoldOf(*image), None); });  // a thread of the same system number, perhaps
    image->LockRead();
    EXPECT_EQ(HoldOf(*image), Reading);
}

TEST_F(ImageTest, NeverChangesAsAViewAndNeedsNoLock)
{
    const auto image = MakeCounting(2, 2, 0, 0, 7);
    const auto pixels = Read(image);
    Ref<IConstImage> view;
    ASSERT_EQ(factory->MakeConst(image.Get(), view.Receive()), TVX_OK);
    EXPECT_EQ(Describe(*view), (Numbers{2, 2, 0, 0, 7, 1, 2}));
    EXPECT_EQ(Read(view), pixels);
    OnAnotherThread([&] { EXPECT_EQ(Read(view), pixels); });
}

TEST_F(ImageFormat, OfThreeChannelsIsReversedPixelByPixel)
{
    for (const std::int32_t to : {1, 3})
    {
        const auto image = MakeCounting(4, 2, 4 - to);
        image->LockWrite();
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(to), TVX_OK); }), "");
        EXPECT_TRUE(image->IsWriteLocked());
        EXPECT_EQ(Describe(*image), (Numbers{4, 2, to, 0, 0, 3, 12}));
        EXPECT_EQ(Read(image),
                  (Bytes{2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 17, 16, 15, 20, 19, 18, 23, 22, 21}));
    }
}

TEST_F(ImageFormat, IsReversedByElementsOfTwoAndFourBytes)
{
    const auto two = MakeCounting(1, 2, 1, 1);
    two->LockWrite();
    EXPECT_EQ(two->SetColorFormat(3), TVX_OK);
    EXPECT_EQ(Read(two), (Bytes{4, 5, 2, 3, 0, 1, 10, 11, 8, 9, 6, 7}));
    for (const std::int32_t type : {2, 3})
    {
        const auto four = MakeCounting(1, 1, 3, type);
        four->LockWrite();
        EXPECT_EQ(four->SetColorFormat(1), TVX_OK);
        EXPECT_EQ(Read(four), (Bytes{8, 9, 10, 11, 4, 5, 6, 7, 0, 1, 2, 3}));
    }
}

TEST_F(ImageFormat, StaysAsItIsForItsOwnValue)
{
    for (const std::int32_t format : {0, 1, 2, 3, 7, -1})
    {
        const bool known = format >= 0 && format <= 3;
        const auto image = known ? MakeCounting(4, 2, format, 4) : Make(4, 2, format, 4);
        const auto before = Read(image);
        image->LockWrite();
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(format), TVX_OK); }), "");
        EXPECT_EQ(Read(image), before);
    }
}

TEST_F(ImageFormat, IsRefusedWithoutTheWriteLockBeforeAnythingElse)
{
    const auto image = MakeCounting(4, 2, 1);
    for (const Hold hold : {None, Reading})
    {
        Take(*image, hold);
        for (const std::int32_t format : {0, 1, 3})
        {
            const auto output = CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(format), TVX_E_PRECONDITION); });
            EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/Image.cpp"));
        }
    }
    EXPECT_EQ(image->GetColorFormat(), 1);
}

TEST_F(ImageFormat, IsRefusedByAnImageWithoutItsPixels)
{
    const auto image = MakeCounting(4, 2, 1);
    Ref<IConstImage> moved;
    image->LockWrite();
    factory->MakeConst(image.Get(), moved.Receive());
    for (const std::int32_t format : {-1, 1, 3})
    {
        const auto output = CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(format), TVX_E_PRECONDITION); });
        EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/Image.cpp"));
    }
}

TEST_F(ImageFormat, IsRefusedUnlessBothAreOfThreeChannels)
{
    for (const auto& pair : {std::pair(0, 1), {1, 0}, {2, 3}, {3, 2}, {1, 7}, {7, 1}, {0, 2}, {1, -1}})
    {
        const auto image = MakeCounting(4, 2, pair.first);
        image->LockWrite();
        const auto output = CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(pair.second), TVX_E_PRECONDITION); });
        EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/Image.cpp")) << pair.first << pair.second;
        EXPECT_EQ(image->GetColorFormat(), pair.first);
    }
}

TEST_F(ImageFormat, OfLongElementsCannotBeChanged)
{
    const auto image = MakeCounting(2, 2, 1, 4);
    const auto before = Read(image);
    image->LockWrite();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(3), TVX_E_UNSUPPORTED_FORMAT); }), "");
    EXPECT_EQ(image->GetColorFormat(), 1);
    EXPECT_EQ(Read(image), before);
}

TEST_F(ImageFormat, OfEmptyRowsCannotBeChanged)
{
    // An empty row is found before its elements are: also with elements that are too long or of no known type.
    for (const auto& [width, type] : {std::pair(0, 0), {0, 4}, {4, 9}, {-4, 0}})
    {
        const auto image = Make(width, 1, 1, type);
        image->LockWrite();
        const auto output = CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(3), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF", "Src/Image.cpp")) << width << type;
        EXPECT_EQ(image->GetColorFormat(), 1);
    }
}

TEST_F(ImageFormat, OfElementsOfNoKnownSizeCannotBeChanged)
{
    const auto image = Make(-4, 1, 1, 9);  // the two signs meet: a row has 12 bytes
    EXPECT_EQ(image->GetStride(), 12);
    image->LockWrite();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(3), TVX_E_UNSUPPORTED_FORMAT); }), "");
    EXPECT_EQ(image->GetColorFormat(), 1);
}

TEST_F(ImageFormat, IsFoundWrongBeforeTheRowsAndTheElementsAre)
{
    for (const auto& [width, height, type] : {std::tuple(4, 2, 4), {4, 0, 0}, {0, 2, 0}})
    {
        const auto image = Make(width, height, 0, type);
        image->LockWrite();
        const auto output = CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(1), TVX_E_PRECONDITION); });
        EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/Image.cpp"));
    }
}

TEST_F(ImageFormat, OfNoRowsIsJustNoted)
{
    for (const auto& [height, type] : {std::pair(0, 0), {-1, 0}, {0, 4}, {0, 9}})
    {
        const auto image = Make(4, height, 1, type);
        image->LockWrite();
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(image->SetColorFormat(3), TVX_OK); }), "");
        EXPECT_EQ(image->GetColorFormat(), 3);
    }
}

TEST_F(ImageRows, ChangeTheirOrderForEveryOtherValue)
{
    const auto image = MakeCounting(2, 3, 0, 0, 0);
    image->LockWrite();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(image->SetRowOrder(1), TVX_OK); }), "");
    EXPECT_EQ(Bytes({4, 5, 2, 3, 0, 1}), Read(image));
    EXPECT_EQ(image->GetRowOrder(), 1);
    image->LockWrite();
    EXPECT_EQ(image->SetRowOrder(-77), TVX_OK);
    EXPECT_EQ(Bytes({0, 1, 2, 3, 4, 5}), Read(image));
    EXPECT_EQ(image->GetRowOrder(), -77);
}

TEST_F(ImageRows, ChangeTheirOrderWithPixelsOfEverySize)
{
    for (const auto& [format, type, pixelSize] : KnownSizes)
    {
        const auto image = MakeCounting(2, 2, format, type);
        auto expected = Read(image);
        std::rotate(expected.begin(), expected.begin() + 2 * pixelSize, expected.end());
        image->LockWrite();
        EXPECT_EQ(image->SetRowOrder(1), TVX_OK);
        EXPECT_EQ(Read(image), expected);
    }
}

TEST_F(ImageRows, KeepTheirOrderForItsOwnValue)
{
    const auto one = MakeCounting(2, 1, 0, 0, 4);
    one->LockWrite();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(one->SetRowOrder(4), TVX_OK); }), "");
    const auto two = MakeCounting(2, 2, 0, 0, 4);
    two->LockWrite();
    EXPECT_EQ(two->SetRowOrder(4), TVX_OK);
    EXPECT_EQ(Read(two), (Bytes{0, 1, 2, 3}));
}

TEST_F(ImageRows, AreRefusedWithoutTheWriteLockBeforeAnythingElse)
{
    const auto image = MakeCounting(2, 2);
    for (const Hold hold : {None, Reading})
    {
        Take(*image, hold);
        for (const std::int32_t order : {0, 1})
        {
            const auto output = CaptureOutput([&] { EXPECT_EQ(image->SetRowOrder(order), TVX_E_PRECONDITION); });
            EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/Image.cpp"));
        }
    }
}

TEST_F(ImageRows, AreRefusedByAnImageWithoutItsPixels)
{
    const auto image = MakeCounting(2, 2);
    Ref<IConstImage> moved;
    factory->MakeConst(image.Get(), moved.Receive());
    const auto output = CaptureOutput([&] { EXPECT_EQ(image->SetRowOrder(-1), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(output, "TVX_CHECK_PRECOND", "Src/Image.cpp"));
}

TEST_F(ImageRows, FewerThanTwoOrEmptyCannotBeReversed)
{
    for (const auto& [width, height] : {std::pair(2, 1), {2, 0}, {2, -2}, {0, 2}, {-2, 2}})
    {
        const auto image = Make(width, height);
        image->LockWrite();
        const auto output = CaptureOutput([&] { EXPECT_EQ(image->SetRowOrder(1), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF", "Src/Image.cpp")) << width << height;
        EXPECT_EQ(image->GetRowOrder(), 0);
    }
}

}  // namespace tvx::test
