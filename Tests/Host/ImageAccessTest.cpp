// SPDX-License-Identifier: MIT
#include "Host/ImageAccess.h"

#include "Tests/Support/ImageTesting.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

namespace tvx::host
{
namespace
{

using test::Bytes;

static_assert(!std::is_copy_constructible_v<ReadLock> && !std::is_copy_assignable_v<ReadLock>);
static_assert(!std::is_copy_constructible_v<WriteLock> && !std::is_copy_assignable_v<WriteLock>);

class ImageAccess : public test::ImageTest
{
};

TEST_F(ImageAccess, MakesAReaderForAScope)
{
    const auto image = Make(2, 2);
    {
        const ReadLock lock(*image);
        EXPECT_TRUE(image->IsLocked());
        EXPECT_FALSE(image->IsWriteLocked());
        EXPECT_NE(image->GetData(), nullptr);
    }
    EXPECT_FALSE(image->IsLocked());
    EXPECT_EQ(image->GetData(), nullptr);
}

TEST_F(ImageAccess, MakesTheWriterForAScope)
{
    const auto image = Make(2, 2);
    {
        const WriteLock lock(*image);
        EXPECT_TRUE(image->IsWriteLocked());
        EXPECT_NE(image->GetWritableData(), nullptr);
    }
    EXPECT_FALSE(image->IsLocked());
    EXPECT_EQ(image->GetWritableData(), nullptr);
}

TEST_F(ImageAccess, UnlocksAfterAnException)
{
    const auto image = Make(2, 2);
    const auto readAndThrow = [&]
    {
        const ReadLock lock(*image);
        throw std::runtime_error("reading");
    };
    const auto writeAndThrow = [&]
    {
        const WriteLock lock(*image);
        throw std::runtime_error("writing");
    };
    EXPECT_THROW(readAndThrow(), std::runtime_error);
    EXPECT_FALSE(image->IsLocked());
    EXPECT_THROW(writeAndThrow(), std::runtime_error);
    EXPECT_FALSE(image->IsLocked());
    // Nobody waits for a lock that was left behind.
    test::OnAnotherThread(
        [&]
        {
            const WriteLock lock(*image);
            EXPECT_TRUE(image->IsWriteLocked());
        });
}

TEST_F(ImageAccess, EndsBothOfTwoGuardsWithTheInnerOne)
{
    const auto image = Make(2, 2);
    const WriteLock outer(*image);
    {
        const ReadLock inner(*image);
        EXPECT_TRUE(image->IsLocked());
        EXPECT_FALSE(image->IsWriteLocked());
    }
    EXPECT_FALSE(image->IsLocked());
}

TEST_F(ImageAccess, LocksAndUnlocksOnce)
{
    const auto image = MakeRef<test::ForeignImage>();
    {
        const ReadLock lock(*image);
        EXPECT_EQ(image->calls, "LockRead ");
    }
    {
        const WriteLock lock(*image);
    }
    EXPECT_EQ(image->calls, "LockRead Unlock LockWrite Unlock ");
}

TEST_F(ImageAccess, KnowsTheChannelsOfEveryFormat)
{
    EXPECT_EQ(GetChannelCount(ColorFormat::OneChannel), 1U);
    EXPECT_EQ(GetChannelCount(ColorFormat::ThreeChannels), 3U);
    EXPECT_EQ(GetChannelCount(ColorFormat::FourChannels), 4U);
    EXPECT_EQ(GetChannelCount(ColorFormat::ThreeChannelsReversed), 3U);
    for (const std::int32_t unknown : {-1, 4, 7, INT32_MIN, INT32_MAX})
        EXPECT_EQ(GetChannelCount(unknown), 0U);
}

TEST_F(ImageAccess, GivesRowsOnlyUnderTheLockThatTheyNeed)
{
    const auto image = Make(3, 2);
    EXPECT_FALSE(Rows<const std::uint8_t>(*image));
    EXPECT_FALSE(Rows<std::uint8_t>(*image));
    {
        const ReadLock lock(*image);
        EXPECT_TRUE(Rows<const std::uint8_t>(*image));
        EXPECT_FALSE(Rows<std::uint8_t>(*image));
    }
    const WriteLock lock(*image);
    EXPECT_TRUE(Rows<const std::uint8_t>(*image));
    EXPECT_TRUE(Rows<std::uint8_t>(*image));
}

TEST_F(ImageAccess, GivesRowsOfAnImageThatNeverChangesWithoutALock)
{
    Ref<IConstImage> image;
    ASSERT_EQ(factory->CreateConstCopy(MakeCounting(3, 2).Get(), image.Receive()), TVX_OK);
    const Rows<const std::uint8_t> rows(*image);
    ASSERT_TRUE(rows);
    EXPECT_EQ(Bytes(rows.GetRow(1).begin(), rows.GetRow(1).end()), (Bytes{3, 4, 5}));
}

TEST_F(ImageAccess, GivesRowsAndPixels)
{
    const auto image = MakeCounting(4, 3, ColorFormat::ThreeChannels);
    const ReadLock lock(*image);
    const Rows<const std::uint8_t> rows(*image);
    EXPECT_EQ(rows.GetWidth(), 4U);
    EXPECT_EQ(rows.GetHeight(), 3U);
    EXPECT_EQ(rows.GetChannels(), 3U);
    for (std::size_t y = 0; y < 3; ++y)
    {
        ASSERT_EQ(rows.GetRow(y).size(), 12U);
        EXPECT_EQ(rows.GetRow(y).front(), y * 12);
        EXPECT_EQ(rows.GetRow(y).back(), y * 12 + 11);
        for (std::size_t x = 0; x < 4; ++x)
        {
            const auto pixel = rows.GetPixel(x, y);
            ASSERT_EQ(pixel.size(), 3U);
            EXPECT_EQ(pixel[2], y * 12 + x * 3 + 2);
        }
    }
}

TEST_F(ImageAccess, GivesNothingOutsideTheImage)
{
    const auto image = MakeCounting(4, 3);
    const ReadLock lock(*image);
    const Rows<const std::uint8_t> rows(*image);
    EXPECT_TRUE(rows.GetRow(3).empty());
    EXPECT_TRUE(rows.GetRow(SIZE_MAX).empty());
    EXPECT_TRUE(rows.GetPixel(4, 0).empty());
    EXPECT_TRUE(rows.GetPixel(0, 3).empty());
    EXPECT_TRUE(rows.GetPixel(SIZE_MAX, SIZE_MAX).empty());
}

TEST_F(ImageAccess, WritesIntoTheImage)
{
    const auto image = Make(2, 2, ColorFormat::OneChannel, DataType::TwoBytes);
    {
        const WriteLock lock(*image);
        const Rows<std::uint16_t> rows(*image);
        ASSERT_TRUE(rows);
        rows.GetRow(0)[1] = 0x0101;
        rows.GetPixel(0, 1)[0] = 0x0202;
    }
    EXPECT_EQ(Read(image), (Bytes{0, 0, 1, 1, 2, 2, 0, 0}));
}

// Whether an image of that element type gives rows of T, in every known format.
template <class T>
bool Suits(ImageFactory& factory, std::int32_t type)
{
    int suiting = 0;
    for (std::int32_t format = ColorFormat::OneChannel; format <= ColorFormat::ThreeChannelsReversed; ++format)
    {
        Ref<IImage> image;
        factory.Create(2, 2, format, type, 0, image.Receive());
        const WriteLock lock(*image);
        suiting += Rows<T>(*image) ? 1 : 0;
        EXPECT_EQ(static_cast<bool>(Rows<T>(*image)), static_cast<bool>(Rows<const T>(*image)));
    }
    EXPECT_TRUE(suiting == 0 || suiting == 4) << suiting;
    return suiting == 4;
}

TEST_F(ImageAccess, GivesRowsOfElementsOfTheRightSizeOnly)
{
    EXPECT_TRUE(Suits<std::uint8_t>(*factory, DataType::OneByte));
    EXPECT_TRUE(Suits<std::uint16_t>(*factory, DataType::TwoBytes));
    EXPECT_TRUE(Suits<std::int32_t>(*factory, DataType::FourBytes));
    EXPECT_TRUE(Suits<float>(*factory, DataType::FourBytesFloat));
    EXPECT_TRUE(Suits<double>(*factory, DataType::EightBytes));
    EXPECT_FALSE(Suits<std::uint8_t>(*factory, DataType::TwoBytes));
    EXPECT_FALSE(Suits<std::uint16_t>(*factory, DataType::OneByte));
    EXPECT_FALSE(Suits<float>(*factory, DataType::EightBytes));
    EXPECT_FALSE(Suits<double>(*factory, DataType::FourBytesFloat));
    EXPECT_FALSE(Suits<std::uint8_t>(*factory, 9));
}

TEST_F(ImageAccess, GivesNoRowsOfAnImageWithoutPixels)
{
    for (const auto& image : {Make(0, 2), Make(2, 0), Make(-2, 2), Make(2, 2, 7)})
    {
        const WriteLock lock(*image);
        const Rows<std::uint8_t> rows(*image);
        EXPECT_FALSE(rows);
        EXPECT_EQ(rows.GetHeight(), 0U);
        EXPECT_TRUE(rows.GetRow(0).empty());
        EXPECT_TRUE(rows.GetPixel(0, 0).empty());
    }
}

TEST_F(ImageAccess, GivesNoRowsOfAnImageThatHasBeenMovedAway)
{
    const auto image = Make(2, 2);
    Ref<IConstImage> fixed;
    ASSERT_EQ(factory->MakeConst(image.Get(), fixed.Receive()), TVX_OK);
    const WriteLock lock(*image);
    EXPECT_FALSE(Rows<std::uint8_t>(*image));
    EXPECT_TRUE(Rows<const std::uint8_t>(*fixed));
}

TEST_F(ImageAccess, DistrustsImagesOfAnotherMake)
{
    const auto image = MakeRef<test::ForeignConstImage>();
    EXPECT_TRUE(Rows<const std::uint8_t>(*image));
    image->stride = 3;
    EXPECT_FALSE(Rows<const std::uint8_t>(*image));
    image->stride = 2;
    image->pixels.clear();
    EXPECT_FALSE(Rows<const std::uint8_t>(*image));
}

// Sixteen-bit elements at an odd address.
class OddImage final : public test::ForeignImageImpl<ClassImpl<OddImage, IConstImage>>
{
public:
    using Interfaces = InterfaceList<IConstImage, IImageBase, IObject, IObjectBase>;

    std::int32_t GetPixelSize() override { return 2; }
    std::int32_t GetStride() override { return 4; }
    const void* GetData() override { return reinterpret_cast<const std::uint8_t*>(elements_) + offset; }

    std::size_t offset = 0;

private:
    std::uint16_t elements_[5] = {};
};

TEST_F(ImageAccess, GivesNoRowsOfElementsAtAnAddressThatTheyCannotHave)
{
    const auto image = MakeRef<OddImage>();
    EXPECT_TRUE(Rows<const std::uint16_t>(*image));
    image->offset = 1;
    EXPECT_FALSE(Rows<const std::uint16_t>(*image));
}

}  // namespace
}  // namespace tvx::host
