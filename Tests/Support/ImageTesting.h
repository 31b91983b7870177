// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Src/Image.h"
#include "Src/ImageFactory.h"
#include "Tests/Support/CaptureOutput.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <thread>
#include <vector>

namespace tvx::test
{

using Bytes = std::vector<std::uint8_t>;
using Numbers = std::vector<std::int32_t>;

inline Numbers Describe(IImageBase& image)
{
    return {image.GetWidth(),    image.GetHeight(),    image.GetColorFormat(), image.GetDataType(),
            image.GetRowOrder(), image.GetPixelSize(), image.GetStride()};
}

// What an image tells whose pixels have been moved away.
inline const Numbers MovedAway(7, -1);

// An image of another make.
template <class Face>
class ForeignImageImpl : public Face
{
public:
    std::int32_t GetWidth() override { return width; }
    std::int32_t GetHeight() override { return height; }
    std::int32_t GetColorFormat() override { return ColorFormat::OneChannel; }
    std::int32_t GetDataType() override { return DataType::OneByte; }
    std::int32_t GetRowOrder() override { return 5; }
    std::int32_t GetPixelSize() override { return 1; }
    std::int32_t GetStride() override { return stride; }
    const void* GetData() override { return pixels.empty() ? nullptr : pixels.data(); }

    std::int32_t width = 2;
    std::int32_t height = 2;
    std::int32_t stride = 2;
    Bytes pixels = {1, 2, 3, 4};

protected:
    ~ForeignImageImpl() = default;
};

class ForeignConstImage final : public ForeignImageImpl<ClassImpl<ForeignConstImage, IConstImage>>
{
public:
    using Interfaces = InterfaceList<IConstImage, IImageBase, IObject, IObjectBase>;
};

// Records its locking.
class ForeignImage final : public ForeignImageImpl<ClassImpl<ForeignImage, IImage>>
{
public:
    using Interfaces = InterfaceList<IImage, IImageBase, IObject, IObjectBase>;

    void* GetWritableData() override { return pixels.data(); }
    void LockRead() override { calls += "LockRead "; }
    void LockWrite() override { calls += "LockWrite "; }
    void Unlock() override { calls += "Unlock "; }
    bool IsLocked() override { return true; }
    bool IsWriteLocked() override { return true; }
    Result SetColorFormat(std::int32_t) override { return TVX_OK; }
    Result SetRowOrder(std::int32_t) override { return TVX_OK; }

    std::string calls;
};

class ImageTest : public testing::Test
{
protected:
    Ref<IImage> Make(std::int32_t width, std::int32_t height, std::int32_t format = ColorFormat::OneChannel,
                     std::int32_t type = DataType::OneByte, std::int32_t order = 0)
    {
        Ref<IImage> image;
        EXPECT_EQ(factory->Create(width, height, format, type, order, image.Receive()), TVX_OK);
        return image;
    }

    // An image whose bytes are 0, 1, 2, …
    Ref<IImage> MakeCounting(std::int32_t width, std::int32_t height, std::int32_t format = ColorFormat::OneChannel,
                             std::int32_t type = DataType::OneByte, std::int32_t order = 0)
    {
        auto image = Make(width, height, format, type, order);
        image->LockWrite();
        auto* const pixels = static_cast<std::uint8_t*>(image->GetWritableData());
        for (std::int32_t at = 0; at < image->GetStride() * image->GetHeight(); ++at)
            pixels[at] = static_cast<std::uint8_t>(at);
        image->Unlock();
        return image;
    }

    // The bytes of an image, which is left unlocked; or of one that needs no lock.
    static Bytes Read(const Ref<IImage>& image)
    {
        image->LockRead();
        auto bytes = Read(*image);
        image->Unlock();
        return bytes;
    }

    static Bytes Read(const Ref<IConstImage>& image) { return Read(*image); }

    static Bytes Read(IConstImage& image)
    {
        const auto* const pixels = static_cast<const std::uint8_t*>(image.GetData());
        return pixels == nullptr ? Bytes() : Bytes(pixels, pixels + image.GetStride() * image.GetHeight());
    }

    Ref<ImageFactory> factory = MakeRef<ImageFactory>();
};

// Runs work on a thread of its own and waits for it.
template <class Work>
void OnAnotherThread(Work&& work)
{
    std::thread(work).join();
}

}  // namespace tvx::test
