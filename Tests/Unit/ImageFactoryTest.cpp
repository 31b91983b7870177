// SPDX-License-Identifier: MIT
#include "Tests/Support/Doubles.h"
#include "Tests/Support/ImageTesting.h"

#include <chrono>
#include <fstream>
#include <future>

#include <unistd.h>

namespace tvx::test
{

namespace
{

constexpr const char File[] = "Src/ImageFactory.cpp";

// Whether output is one report of each macro, in this order, all from the factory.
testing::AssertionResult AreReports(const std::string& output, const std::vector<std::string>& macros)
{
    std::size_t begin = 0;
    for (const auto& macro : macros)
    {
        const auto end = output.find('\n', begin);
        const auto line = end == std::string::npos ? output.substr(begin) : output.substr(begin, end + 1 - begin);
        const auto report = IsReport(line, macro, File);
        if (!report)
            return report;
        begin += line.size();
    }
    return begin == output.size() ? testing::AssertionSuccess() : testing::AssertionFailure() << output;
}

// The pages of this process that are in memory.
std::size_t CountResidentPages()
{
    std::ifstream stream("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    stream >> all >> resident;
    return resident;
}

class ImageFactoryTest : public ImageTest
{
protected:
    Ref<IConstImage> MakeView(std::int32_t width, std::int32_t height, std::int32_t format = 0)
    {
        Ref<IConstImage> view;
        EXPECT_EQ(factory->MakeConst(MakeCounting(width, height, format).Get(), view.Receive()), TVX_OK);
        return view;
    }
};

using ImageCopy = ImageFactoryTest;
using ImageMove = ImageFactoryTest;

}  // namespace

TEST_F(ImageFactoryTest, MakesUnlockedImagesWithOneReference)
{
    const auto image = Make(4, 3);
    EXPECT_TRUE(image->IsUnique());
    EXPECT_FALSE(image->IsLocked());
}

TEST_F(ImageFactoryTest, ReportsANullPlace)
{
    const auto output = CaptureOutput([&] { EXPECT_EQ(factory->Create(1, 1, 0, 0, 0, nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(AreReports(output, {"TVX_CHECK_PRECOND"}));
}

TEST_F(ImageFactoryTest, TakesTheZerosOfALargeImageFromTheSystem)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the thread sanitizer keeps notes on all memory";
#endif
    const auto before = CountResidentPages();
    const auto image = Make(16 * 1024, 16 * 1024);
    const auto after = CountResidentPages();
    EXPECT_LT(after, before + 64 * 1024 * 1024 / static_cast<std::size_t>(sysconf(_SC_PAGESIZE)));
    image->LockRead();
    EXPECT_EQ(static_cast<const std::uint8_t*>(image->GetData())[16 * 1024 * 1024], 0);
}

TEST_F(ImageCopy, HasTheDescriptionAndThePixelsOfItsSource)
{
    const auto image = MakeCounting(3, 2, 1, 1, 8);
    Ref<IImage> copy;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->CreateCopy(image.Get(), copy.Receive()), TVX_OK); }), "");
    EXPECT_NE(copy.Get(), image.Get());
    EXPECT_EQ(Describe(*copy), Describe(*image));
    EXPECT_FALSE(copy->IsLocked());
    EXPECT_EQ(Read(copy), Read(image));
    EXPECT_TRUE(copy->IsUnique());
    EXPECT_TRUE(image->IsUnique());
}

TEST_F(ImageCopy, IsMadeOfAViewAsWell)
{
    const auto view = MakeView(3, 2);
    Ref<IImage> copy;
    EXPECT_EQ(factory->CreateCopy(view.Get(), copy.Receive()), TVX_OK);
    EXPECT_EQ(Read(copy), Read(view));
    EXPECT_TRUE(view->IsUnique());
}

TEST_F(ImageCopy, HasPixelsOfItsOwn)
{
    const auto image = MakeCounting(3, 2);
    Ref<IImage> copy;
    factory->CreateCopy(image.Get(), copy.Receive());
    copy->LockWrite();
    static_cast<std::uint8_t*>(copy->GetWritableData())[0] = 99;
    EXPECT_EQ(Read(image)[0], 0);
}

TEST_F(ImageCopy, LeavesItsSourceUnlockedHoweverTheCallerHeldIt)
{
    const auto image = MakeCounting(3, 2);
    for (const bool writing : {false, true})
    {
        if (writing)
            image->LockWrite();
        else
            image->LockRead();
        Ref<IImage> copy;
        EXPECT_EQ(factory->CreateCopy(image.Get(), copy.Receive()), TVX_OK);
        EXPECT_FALSE(image->IsLocked());
        EXPECT_EQ(Read(copy), Read(image));
    }
}

TEST_F(ImageCopy, WaitsForAWriterOfItsSource)
{
    const auto image = MakeCounting(1, 2, 1);
    image->LockWrite();
    Ref<IImage> copy;
    auto copied = std::async(std::launch::async, [&] { return factory->CreateCopy(image.Get(), copy.Receive()); });
    EXPECT_EQ(copied.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    image->SetColorFormat(3);
    image->SetRowOrder(6);
    image->Unlock();
    EXPECT_EQ(copied.get(), TVX_OK);
    EXPECT_EQ(Describe(*copy), Describe(*image));  // as they were when the pixels were copied
    EXPECT_EQ(Read(copy), (Bytes{5, 4, 3, 2, 1, 0}));
}

TEST_F(ImageCopy, OfImagesWithoutPixelsHasNone)
{
    for (const auto& [width, height, format] : {std::tuple(0, 2, 0), {2, 0, 0}, {-2, 2, 0}, {2, 2, 7}})
    {
        Ref<IImage> copy;
        EXPECT_EQ(factory->CreateCopy(Make(width, height, format).Get(), copy.Receive()), TVX_OK);
        EXPECT_EQ(copy->GetWidth(), width);
        EXPECT_EQ(copy->GetColorFormat(), format);
        EXPECT_EQ(Read(copy), Bytes());
    }
}

TEST_F(ImageCopy, OfAForeignImageIsMadeUnderItsLock)
{
    const auto foreign = MakeRef<ForeignImage>();
    Ref<IImage> copy;
    EXPECT_EQ(factory->CreateCopy(foreign.Get(), copy.Receive()), TVX_OK);
    EXPECT_EQ(foreign->calls, "LockRead Unlock ");
    EXPECT_EQ(Read(copy), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(copy->GetRowOrder(), 5);
    EXPECT_TRUE(foreign->IsUnique());
}

TEST_F(ImageCopy, OfAForeignViewNeedsNoLock)
{
    Ref<IImage> copy;
    EXPECT_EQ(factory->CreateCopy(MakeRef<ForeignConstImage>().Get(), copy.Receive()), TVX_OK);
    EXPECT_EQ(Read(copy), (Bytes{1, 2, 3, 4}));
}

TEST_F(ImageCopy, IsRefusedWhereAForeignImageContradictsItself)
{
    const auto foreign = MakeRef<ForeignImage>();
    Ref<IImage> copy;
    const auto copied = [&]
    {
        const auto output =
            CaptureOutput([&] { EXPECT_EQ(factory->CreateCopy(foreign.Get(), copy.Receive()), TVX_E_PRECONDITION); });
        EXPECT_TRUE(AreReports(output, {"TVX_CHECK_PRECOND"}));
        EXPECT_FALSE(copy);
    };
    foreign->stride = 1;  // shorter rows than its pixels need
    copied();
    foreign->stride = 2;
    foreign->pixels.clear();
    copied();
    EXPECT_EQ(foreign->calls, "LockRead Unlock LockRead Unlock ");
}

TEST_F(ImageCopy, OfANullSourceIsRefused)
{
    Ref<IImage> copy;
    const auto output =
        CaptureOutput([&] { EXPECT_EQ(factory->CreateCopy(nullptr, copy.Receive()), TVX_E_PRECONDITION); });
    EXPECT_TRUE(AreReports(output, {"TVX_CHECK_PRECOND"}));
}

TEST_F(ImageCopy, OfAnImageWithoutItsPixelsIsRefused)
{
    const auto image = MakeCounting(2, 2);
    Ref<IConstImage> view;
    factory->MakeConst(image.Get(), view.Receive());
    Ref<IImage> again;
    factory->MakeMutable(view.Get(), again.Receive());
    for (IConstImage* const source : {static_cast<IConstImage*>(image.Get()), view.Get()})
    {
        Ref<IImage> copy;
        const auto output =
            CaptureOutput([&] { EXPECT_EQ(factory->CreateCopy(source, copy.Receive()), TVX_E_PRECONDITION); });
        EXPECT_TRUE(AreReports(output, {"TVX_CHECK_PRECOND"}));
        EXPECT_FALSE(copy);
    }
}

TEST_F(ImageCopy, ForwardsTheFailureOfMakingTheImage)
{
    const auto view = MakeView(2, 2);
    const auto output = CaptureOutput([&] { EXPECT_EQ(factory->CreateCopy(view.Get(), nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(AreReports(output, {"TVX_CHECK_PRECOND", "TVX_FORWARD_FAILURE"}));
    const auto foreign = MakeRef<ForeignConstImage>();
    foreign->width = INT32_MAX;
    foreign->height = INT32_MAX;
    Ref<IImage> copy;
    const auto tooLarge =
        CaptureOutput([&] { EXPECT_EQ(factory->CreateCopy(foreign.Get(), copy.Receive()), TVX_E_EXCEPTION); });
    EXPECT_TRUE(AreReports(tooLarge, {"TVX_FORWARD_FAILURE"}));
}

TEST_F(ImageCopy, ThatNeverChangesIsMadeOfEveryImage)
{
    const auto image = MakeCounting(3, 2);
    Ref<IConstImage> copy;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->CreateConstCopy(image.Get(), copy.Receive()), TVX_OK); }), "");
    EXPECT_EQ(Describe(*copy), Describe(*image));
    EXPECT_EQ(Read(copy), Read(image));
    EXPECT_TRUE(copy->IsUnique());
    EXPECT_FALSE(Query<IImage>(copy));
    EXPECT_TRUE(image->IsUnique());
    Ref<IConstImage> again;
    EXPECT_EQ(factory->CreateConstCopy(copy.Get(), again.Receive()), TVX_OK);
    EXPECT_EQ(Read(again), Read(copy));
}

TEST_F(ImageCopy, ThatNeverChangesForwardsWhatFails)
{
    Ref<IConstImage> copy;
    const auto null =
        CaptureOutput([&] { EXPECT_EQ(factory->CreateConstCopy(nullptr, copy.Receive()), TVX_E_PRECONDITION); });
    EXPECT_TRUE(AreReports(null, {"TVX_CHECK_PRECOND", "TVX_FORWARD_FAILURE"}));
    const auto image = MakeCounting(2, 2);
    const auto nowhere =
        CaptureOutput([&] { EXPECT_EQ(factory->CreateConstCopy(image.Get(), nullptr), TVX_E_PRECONDITION); });
    EXPECT_TRUE(AreReports(nowhere, {"TVX_CHECK_PRECOND", "TVX_FORWARD_FAILURE"}));
}

TEST_F(ImageMove, TakesThePixelsOverWithoutCopying)
{
    const auto image = MakeCounting(2, 2, 1, 0, 3);
    const auto described = Describe(*image);
    image->LockRead();
    const void* const pixels = image->GetData();
    image->Unlock();
    Ref<IConstImage> view;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->MakeConst(image.Get(), view.Receive()), TVX_OK); }), "");
    EXPECT_EQ(view->GetData(), pixels);
    EXPECT_EQ(Describe(*view), described);
    EXPECT_EQ(Describe(*image), MovedAway);
    image->LockRead();
    EXPECT_EQ(image->GetData(), nullptr);
    Ref<IImage> back;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->MakeMutable(view.Get(), back.Receive()), TVX_OK); }), "");
    back->LockWrite();
    EXPECT_EQ(back->GetWritableData(), pixels);
    EXPECT_EQ(Describe(*back), described);
    EXPECT_EQ(Describe(*view), MovedAway);
    EXPECT_EQ(view->GetData(), nullptr);
    EXPECT_TRUE(image->IsUnique() && view->IsUnique() && back->IsUnique());
}

TEST_F(ImageMove, IsRefusedForNull)
{
    Ref<IConstImage> view;
    Ref<IImage> image;
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(factory->MakeConst(nullptr, view.Receive()), TVX_E_PRECONDITION);
            EXPECT_EQ(factory->MakeConst(MakeCounting(2, 2).Get(), nullptr), TVX_E_PRECONDITION);
            EXPECT_EQ(factory->MakeMutable(nullptr, image.Receive()), TVX_E_PRECONDITION);
            EXPECT_EQ(factory->MakeMutable(MakeView(2, 2).Get(), nullptr), TVX_E_PRECONDITION);
        });
    EXPECT_TRUE(AreReports(output, std::vector<std::string>(4, "TVX_CHECK_PRECOND")));
}

TEST_F(ImageMove, IsRefusedWhileSomebodyElseHoldsTheImage)
{
    const auto image = MakeCounting(2, 2);
    const auto second = image;
    const auto view = MakeView(2, 2);
    const auto secondView = view;
    Ref<IConstImage> outView;
    Ref<IImage> outImage;
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(factory->MakeConst(image.Get(), outView.Receive()), TVX_E_PRECONDITION);
            EXPECT_EQ(factory->MakeMutable(view.Get(), outImage.Receive()), TVX_E_PRECONDITION);
        });
    EXPECT_TRUE(AreReports(output, {"TVX_CHECK_PRECOND", "TVX_CHECK_PRECOND"}));
    EXPECT_EQ(Read(image), (Bytes{0, 1, 2, 3}));
    EXPECT_EQ(Read(view), (Bytes{0, 1, 2, 3}));
}

TEST_F(ImageMove, IsRefusedForImagesOfAnotherMake)
{
    MakeView(1, 1);  // both classes of the module have been there
    Ref<IConstImage> view;
    Ref<IImage> image;
    const auto foreign = MakeRef<ForeignImage>();
    const auto foreignView = MakeRef<ForeignConstImage>();
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(factory->MakeConst(foreign.Get(), view.Receive()), TVX_E_FAIL);
            EXPECT_EQ(factory->MakeMutable(foreignView.Get(), image.Receive()), TVX_E_FAIL);
        });
    EXPECT_TRUE(AreReports(output, {"TVX_RETURN_FAIL_IF_NULL", "TVX_RETURN_FAIL_IF_NULL"}));
    EXPECT_FALSE(view);
    EXPECT_FALSE(image);
}

TEST_F(ImageMove, IsRefusedForAnImageWhereAViewIsDue)
{
    const auto image = MakeCounting(2, 2);
    Ref<IImage> out;
    const auto output = CaptureOutput([&] { EXPECT_EQ(factory->MakeMutable(image.Get(), out.Receive()), TVX_E_FAIL); });
    EXPECT_TRUE(AreReports(output, {"TVX_RETURN_FAIL_IF_NULL"}));
}

TEST_F(ImageMove, OfAnImageWithoutItsPixelsGivesOneWithout)
{
    const auto image = MakeCounting(2, 2);
    Ref<IConstImage> view;
    Ref<IConstImage> second;
    factory->MakeConst(image.Get(), view.Receive());
    EXPECT_EQ(factory->MakeConst(image.Get(), second.Receive()), TVX_OK);
    EXPECT_EQ(Describe(*second), MovedAway);
    EXPECT_EQ(second->GetData(), nullptr);
    EXPECT_EQ(Read(view), (Bytes{0, 1, 2, 3}));
}

}  // namespace tvx::test
