// SPDX-License-Identifier: MIT
#include "Host/PictureImage.h"

#include "Host/ImageAccess.h"
#include "Platform/LimitedMemory.h"
#include "Tests/Support/ImageTesting.h"
#include "Tests/Support/PictureTesting.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tvx::host
{
namespace
{

using test::Bytes;

class PictureImage : public test::ImageTest
{
};

// Makes what it was told to make.
class FalseFactory final : public ClassImpl<FalseFactory, IImageFactory>
{
public:
    using Interfaces = InterfaceList<IImageFactory, IObject, IObjectBase>;

    explicit FalseFactory(Result result, Ref<IImage> image = nullptr) : result_(result), image_(std::move(image)) {}

    Result Create(std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t, IImage** out) override
    {
        HandOut(image_.Get(), out);
        return result_;
    }
    Result CreateCopy(IConstImage*, IImage**) override { return TVX_E_FAIL; }
    Result CreateConstCopy(IConstImage*, IConstImage**) override { return TVX_E_FAIL; }
    Result MakeConst(IImage*, IConstImage**) override { return TVX_E_FAIL; }
    Result MakeMutable(IConstImage*, IImage**) override { return TVX_E_FAIL; }

private:
    Result result_;
    Ref<IImage> image_;
};

Bytes GetBytes(const Picture& picture)
{
    Bytes bytes;
    for (const auto byte : picture.GetPixels())
        bytes.push_back(std::to_integer<std::uint8_t>(byte));
    return bytes;
}

void ExpectNoImage(IImageFactory& factory, ErrorKind kind, const std::string& message)
{
    const auto image = MakeImage(factory, test::MakePicture({2, 2, 1, 8}));
    ASSERT_FALSE(image);
    EXPECT_EQ(image.GetError().kind, kind);
    EXPECT_EQ(image.GetError().message, message);
}

void ExpectNoPicture(IConstImage& image, ErrorKind kind, const std::string& message)
{
    const auto picture = MakePicture(image);
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.GetError().kind, kind);
    EXPECT_EQ(picture.GetError().message, message);
}

TEST_F(PictureImage, BringsEveryKindOfPictureIntoAnImageAndBack)
{
    for (const std::uint32_t bits : {8U, 16U})
    {
        for (const std::uint32_t channels : {1U, 3U, 4U})
        {
            const auto picture = test::MakePicture({7, 3, channels, bits});
            const auto image = MakeImage(*factory, picture);
            ASSERT_TRUE(image);
            EXPECT_EQ(Read(*image), GetBytes(picture));
            const auto back = MakePicture(**image);
            ASSERT_TRUE(back);
            EXPECT_EQ(back->GetFormat(), picture.GetFormat());
            EXPECT_EQ(GetBytes(*back), GetBytes(picture));
        }
    }
}

TEST_F(PictureImage, DescribesTheImageByThePicture)
{
    const auto describe = [this](const PictureFormat& format)
    { return test::Describe(**MakeImage(*factory, test::MakePicture(format))); };
    EXPECT_EQ(describe({7, 3, 1, 8}), (test::Numbers{7, 3, ColorFormat::OneChannel, DataType::OneByte, 0, 1, 7}));
    EXPECT_EQ(describe({7, 3, 3, 8}), (test::Numbers{7, 3, ColorFormat::ThreeChannels, DataType::OneByte, 0, 3, 21}));
    EXPECT_EQ(describe({7, 3, 4, 16}), (test::Numbers{7, 3, ColorFormat::FourChannels, DataType::TwoBytes, 0, 8, 56}));
}

TEST_F(PictureImage, PutsReversedChannelsBackUnlessToldToKeepThem)
{
    for (const std::uint32_t bits : {8U, 16U})
    {
        const auto picture = test::MakePicture({5, 2, 3, bits});
        const auto image = *MakeImage(*factory, picture);
        {
            const WriteLock lock(*image);
            ASSERT_EQ(image->SetColorFormat(ColorFormat::ThreeChannelsReversed), TVX_OK);
        }
        EXPECT_EQ(GetBytes(*MakePicture(*image)), GetBytes(picture));
        EXPECT_EQ(GetBytes(*MakePicture(*image, ReversedChannels::PutBack)), GetBytes(picture));
        const auto kept = GetBytes(*MakePicture(*image, ReversedChannels::Keep));
        EXPECT_EQ(kept, Read(image));
        EXPECT_NE(kept, GetBytes(picture));
    }
}

TEST_F(PictureImage, ShowsAnImageThatNeverChanges)
{
    Ref<IConstImage> image;
    ASSERT_EQ(factory->CreateConstCopy(MakeCounting(3, 2).Get(), image.Receive()), TVX_OK);
    EXPECT_EQ(GetBytes(*MakePicture(*image)), (Bytes{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(GetBytes(*MakePicture(*MakeRef<test::ForeignConstImage>())), (Bytes{1, 2, 3, 4}));
}

TEST_F(PictureImage, LeavesTheLockAsItWas)
{
    const auto image = *MakeImage(*factory, test::MakePicture({2, 2, 1, 8}));
    EXPECT_FALSE(image->IsLocked());
    EXPECT_TRUE(MakePicture(*image));
    EXPECT_FALSE(image->IsLocked());
    {
        const ReadLock lock(*image);
        EXPECT_TRUE(MakePicture(*image));
        EXPECT_TRUE(image->IsLocked());
    }
    const WriteLock lock(*image);
    EXPECT_TRUE(MakePicture(*image));
    EXPECT_TRUE(image->IsWriteLocked());
}

TEST_F(PictureImage, GivesNoPictureThatDoesNotFitIntoMemory)
{
    if (!Platform::LimitedMemory::IsPossible())
        GTEST_SKIP() << "the sanitizers end the program";
    const auto image = Make(10000, 5000);
    const Platform::LimitedMemory memory(8 << 20);
    const auto picture = MakePicture(*image);
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.GetError().kind, ErrorKind::BadPicture);
    EXPECT_EQ(picture.GetError().message, "the picture does not fit into memory");
    EXPECT_FALSE(image->IsLocked());
}

TEST_F(PictureImage, BlamesAFactoryThatMakesNoImage)
{
    ExpectNoImage(*MakeRef<FalseFactory>(TVX_E_EXCEPTION), ErrorKind::BadPicture,
                  "the picture does not fit into memory");
    ExpectNoImage(*MakeRef<FalseFactory>(TVX_OK), ErrorKind::Misbehaved, "the image factory makes no image, result 0");
}

TEST_F(PictureImage, BlamesAFactoryThatMakesAnotherImage)
{
    const std::string message = "the image factory makes an image that is not the one asked for";
    for (const auto& image : {Make(3, 2), Make(2, 3), Make(2, 2, ColorFormat::ThreeChannels),
                              Make(2, 2, ColorFormat::OneChannel, DataType::TwoBytes), Make(2, 2, 9)})
        ExpectNoImage(*MakeRef<FalseFactory>(TVX_OK, image), ErrorKind::Misbehaved, message);
    const auto foreign = MakeRef<test::ForeignImage>();
    foreign->stride = 1;
    ExpectNoImage(*MakeRef<FalseFactory>(TVX_OK, foreign), ErrorKind::Misbehaved, message);
    EXPECT_EQ(foreign->calls, "LockWrite Unlock ");
}

TEST_F(PictureImage, RefusesImagesThatNoPictureCanShow)
{
    const auto moved = Make(2, 2);
    Ref<IConstImage> fixed;
    ASSERT_EQ(factory->MakeConst(moved.Get(), fixed.Receive()), TVX_OK);
    for (const auto& image :
         {moved, Make(0, 2), Make(2, 0), Make(-2, 2), Make(2, 2, 9), Make(2, 2, ColorFormat::OneChannel, 9),
          Make(2, 2, ColorFormat::OneChannel, DataType::FourBytes),
          Make(2, 2, ColorFormat::OneChannel, DataType::FourBytesFloat),
          Make(2, 2, ColorFormat::OneChannel, DataType::EightBytes)})
    {
        ExpectNoPicture(*image, ErrorKind::BadPicture, "no picture can show this image");
        EXPECT_FALSE(image->IsLocked());
    }
}

TEST_F(PictureImage, RefusesImagesThatAreLargerThanAnyPicture)
{
    const auto image = MakeRef<test::ForeignConstImage>();
    image->width = image->stride = static_cast<std::int32_t>(MaxPictureSide) + 1;
    ExpectNoPicture(*image, ErrorKind::BadPicture, "no picture can show this image");
    image->width = image->stride = image->height = 10'001;
    ExpectNoPicture(*image, ErrorKind::BadPicture, "no picture can show this image");
}

TEST_F(PictureImage, BlamesAnImageThatGivesNoPixels)
{
    const auto image = MakeRef<test::ForeignConstImage>();
    image->pixels.clear();
    ExpectNoPicture(*image, ErrorKind::Misbehaved, "the image gives no pixels");
}

}  // namespace
}  // namespace tvx::host
