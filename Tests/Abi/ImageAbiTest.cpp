// SPDX-License-Identifier: MIT
#include "Src/Image.h"
#include "Src/ImageFactory.h"
#include "Tests/Abi/AbiTest.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace tvx::test
{

namespace
{

// An image of 2 times 1 pixels of three bytes, 1 to 6, as C sees it.
class ImageSlots : public testing::Test
{
protected:
    ImageSlots()
    {
        CallIImageLockWrite(c);
        const std::uint8_t bytes[] = {1, 2, 3, 4, 5, 6};
        std::memcpy(CallIImageGetWritableData(c), bytes, sizeof bytes);
        CallIImageUnlock(c);
    }

    Ref<IImage> Create(std::int32_t height)
    {
        return FromC<IImage>([&](void** out)
                             { EXPECT_EQ(CallIImageFactoryCreate(f, 2, height, 1, 0, 5, out), TVX_OK); });
    }

    Ref<ImageFactory> factory = MakeRef<ImageFactory>();
    void* f = ToC<IImageFactory>(factory);
    Ref<IImage> image = Create(1);
    void* c = ToC<IImage>(image);
};

}  // namespace

TEST_F(ImageSlots, TellTheDescription)
{
    EXPECT_EQ(CallIImageBaseGetWidth(c), 2);
    EXPECT_EQ(CallIImageBaseGetHeight(c), 1);
    EXPECT_EQ(CallIImageBaseGetColorFormat(c), 1);
    EXPECT_EQ(CallIImageBaseGetDataType(c), 0);
    EXPECT_EQ(CallIImageBaseGetRowOrder(c), 5);
    EXPECT_EQ(CallIImageBaseGetPixelSize(c), 3);
    EXPECT_EQ(CallIImageBaseGetStride(c), 6);
}

TEST_F(ImageSlots, LockAndGivePixels)
{
    EXPECT_FALSE(CallIImageIsLocked(c));
    EXPECT_EQ(CallIConstImageGetData(c), nullptr);
    CallIImageLockRead(c);
    EXPECT_TRUE(CallIImageIsLocked(c));
    EXPECT_FALSE(CallIImageIsWriteLocked(c));
    EXPECT_EQ(std::memcmp(CallIConstImageGetData(c), "\1\2\3\4\5\6", 6), 0);
    EXPECT_EQ(CallIImageGetWritableData(c), nullptr);
    CallIImageLockWrite(c);
    EXPECT_TRUE(CallIImageIsWriteLocked(c));
    EXPECT_EQ(CallIImageGetWritableData(c), CallIConstImageGetData(c));
    CallIImageUnlock(c);
    EXPECT_FALSE(CallIImageIsLocked(c));
}

TEST_F(ImageSlots, ChangeLayoutAndOrder)
{
    CallIImageLockWrite(c);
    EXPECT_EQ(CallIImageSetColorFormat(c, 3), TVX_OK);
    EXPECT_EQ(std::memcmp(CallIConstImageGetData(c), "\3\2\1\6\5\4", 6), 0);
    const auto two = Create(2);
    void* const t = ToC<IImage>(two);
    CallIImageLockWrite(t);
    EXPECT_EQ(CallIImageSetRowOrder(t, 6), TVX_OK);
    EXPECT_EQ(CallIImageBaseGetRowOrder(t), 6);
}

TEST_F(ImageSlots, CopyAndMove)
{
    const auto copy = FromC<IImage>([&](void** out) { EXPECT_EQ(CallIImageFactoryCreateCopy(f, c, out), TVX_OK); });
    EXPECT_TRUE(Query<IImage>(copy));
    const auto constCopy =
        FromC<IConstImage>([&](void** out) { EXPECT_EQ(CallIImageFactoryCreateConstCopy(f, c, out), TVX_OK); });
    EXPECT_TRUE(Query<IConstImage>(constCopy));
    const auto moved =
        FromC<IConstImage>([&](void** out) { EXPECT_EQ(CallIImageFactoryMakeConst(f, c, out), TVX_OK); });
    EXPECT_EQ(CallIImageBaseGetWidth(c), -1);
    void* const m = ToC<IConstImage>(moved);
    EXPECT_EQ(std::memcmp(CallIConstImageGetData(m), "\1\2\3\4\5\6", 6), 0);
    const auto back = FromC<IImage>([&](void** out) { EXPECT_EQ(CallIImageFactoryMakeMutable(f, m, out), TVX_OK); });
    EXPECT_EQ(CallIConstImageGetData(m), nullptr);
    EXPECT_EQ(back->GetWidth(), 2);
}

}  // namespace tvx::test
