// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageBench.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tvx::check
{

namespace
{

constexpr std::size_t ElementSizes[] = {1, 2, 4, 4, 8};

// What says otherwise may have fewer bytes than are about to be touched.
void ExpectSize(Trial& trial, IImageBase& image, const ImageShape& shape)
{
    trial.Equal("GetStride of " + Show(shape), image.GetStride(), static_cast<std::int32_t>(GetStride(shape)));
    trial.Equal("GetHeight of " + Show(shape), image.GetHeight(), shape.height);
}

}  // namespace

std::size_t GetElementSize(const ImageShape& shape)
{
    return ElementSizes[shape.type];
}

std::size_t GetPixelSize(const ImageShape& shape)
{
    return host::GetChannelCount(shape.format) * GetElementSize(shape);
}

std::size_t GetStride(const ImageShape& shape)
{
    return GetPixelSize(shape) * static_cast<std::size_t>(shape.width);
}

std::size_t GetSize(const ImageShape& shape)
{
    return GetStride(shape) * static_cast<std::size_t>(shape.height);
}

std::string Show(const ImageShape& shape)
{
    return std::to_string(shape.width) + " x " + std::to_string(shape.height) + " pixels of format " +
           std::to_string(shape.format) + " and type " + std::to_string(shape.type);
}

ImageValues Describe(const ImageShape& shape)
{
    return {shape.width,
            shape.height,
            shape.format,
            shape.type,
            shape.order,
            static_cast<std::int32_t>(GetPixelSize(shape)),
            static_cast<std::int32_t>(GetStride(shape))};
}

ImageValues Describe(IImageBase& image)
{
    return {image.GetWidth(),    image.GetHeight(),    image.GetColorFormat(), image.GetDataType(),
            image.GetRowOrder(), image.GetPixelSize(), image.GetStride()};
}

ImageValues DescribeMovedAway()
{
    return ImageValues(7, -1);
}

Ref<IImageFactory> GetImageFactory(Trial& trial)
{
    return trial.Get<IImageFactory>(ImageExport);
}

Ref<IImage> MakeImage(Trial& trial, const ImageShape& shape)
{
    return MakeImage(trial, shape.width, shape.height, shape.format, shape.type, shape.order);
}

Ref<IImage> MakeCountingImage(Trial& trial, const ImageShape& shape)
{
    auto image = MakeImage(trial, shape);
    const auto bytes = CountBytes(shape);
    const host::WriteLock lock(*image);
    void* const pixels = image->GetWritableData();
    ExpectSize(trial, *image, shape);
    trial.Expect(pixels != nullptr, "GetWritableData of " + Show(shape) + " under the write lock to give them", "null");
    std::memcpy(pixels, bytes.data(), bytes.size());
    return image;
}

Ref<IConstImage> MakeConstImage(Trial& trial, const ImageShape& shape)
{
    return MoveAway(trial, MakeCountingImage(trial, shape));
}

Ref<IConstImage> MoveAway(Trial& trial, const Ref<IImage>& image)
{
    const auto factory = GetImageFactory(trial);
    return Make<IConstImage>(trial, "MakeConst",
                             [&](IConstImage** out) { return factory->MakeConst(image.Get(), out); });
}

// Neighbours of any distance below 251 differ.
ImageBytes CountBytes(const ImageShape& shape)
{
    ImageBytes bytes(GetSize(shape));
    for (std::size_t at = 0; at < bytes.size(); ++at)
        bytes[at] = static_cast<std::uint8_t>(at % 251 + 1);
    return bytes;
}

ImageBytes ReadPixels(Trial& trial, const Ref<IImage>& image, const ImageShape& shape)
{
    const host::ReadLock lock(*image);
    return CopyPixels(trial, *image, shape);
}

ImageBytes ReadPixels(Trial& trial, const Ref<IConstImage>& image, const ImageShape& shape)
{
    return CopyPixels(trial, *image, shape);
}

ImageBytes CopyPixels(Trial& trial, IConstImage& image, const ImageShape& shape)
{
    ExpectSize(trial, image, shape);
    const auto* const pixels = static_cast<const std::uint8_t*>(image.GetData());
    trial.Expect(pixels != nullptr, "GetData of " + Show(shape) + " to give them", "null");
    return {pixels, pixels + GetSize(shape)};
}

void ExpectPixels(Trial& trial, const std::string& what, const ImageBytes& came, const ImageBytes& expected)
{
    trial.Equal("the number of bytes of " + what, came.size(), expected.size());
    const auto at = static_cast<std::size_t>(
        std::distance(came.begin(), std::mismatch(came.begin(), came.end(), expected.begin()).first));
    if (at < came.size())
        trial.Equal("byte " + std::to_string(at) + " of " + what, came[at], expected[at]);
}

void ExpectUnchanged(Trial& trial, const Ref<IImage>& image, const ImageShape& shape)
{
    trial.Equal("the description of " + Show(shape) + " afterwards", Describe(*image), Describe(shape));
    ExpectPixels(trial, "the pixels afterwards", ReadPixels(trial, image, shape), CountBytes(shape));
}

ImageView LookAt(IImage& image)
{
    return {image.IsLocked(), image.IsWriteLocked(), image.GetData(), image.GetWritableData()};
}

void ExpectUnlocked(Trial& trial, const std::string& what, IImage& image)
{
    const auto view = LookAt(image);
    trial.Equal("IsLocked of " + what, view.isLocked, false);
    trial.Equal("IsWriteLocked of " + what, view.isWriteLocked, false);
    trial.Same("GetData of " + what, view.data, nullptr);
    trial.Same("GetWritableData of " + what, view.writableData, nullptr);
}

}  // namespace tvx::check
