// SPDX-License-Identifier: MIT
#pragma once

#include "Host/ImageAccess.h"
#include "Tool/Checks/Objects.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tvx::check
{

using ImageBytes = std::vector<std::uint8_t>;
using ImageValues = std::vector<std::int32_t>;

// What an image is made from, with values for what a check does not care about.
struct ImageShape
{
    std::int32_t width = 2;
    std::int32_t height = 2;
    std::int32_t format = ColorFormat::OneChannel;
    std::int32_t type = DataType::OneByte;
    std::int32_t order = 0;
};

// Bytes of one channel's element, of a pixel, of a row, and of all pixels. Checks count by these and not by what an image
// says: that may be wrong. Only for shapes without negative and unknown numbers.
std::size_t GetElementSize(const ImageShape& shape);
std::size_t GetPixelSize(const ImageShape& shape);
std::size_t GetStride(const ImageShape& shape);
std::size_t GetSize(const ImageShape& shape);

// Such as: 3 x 2 pixels of format 1 and type 0
std::string Show(const ImageShape& shape);

// What an image with such a shape tells of itself, and what it tells, in the order of the slots.
ImageValues Describe(const ImageShape& shape);
ImageValues Describe(IImageBase& image);

// What an image tells whose pixels have been moved away.
ImageValues DescribeMovedAway();

Ref<IImageFactory> GetImageFactory(Trial& trial);

// An image of zeros; one whose bytes differ from each other as far as they can; one that never changes with such bytes.
Ref<IImage> MakeImage(Trial& trial, const ImageShape& shape);
Ref<IImage> MakeCountingImage(Trial& trial, const ImageShape& shape);
Ref<IConstImage> MakeConstImage(Trial& trial, const ImageShape& shape);
ImageBytes CountBytes(const ImageShape& shape);

// The pixels, under a read lock where there is one. The image is unlocked afterwards.
ImageBytes ReadPixels(Trial& trial, const Ref<IImage>& image, const ImageShape& shape);
ImageBytes ReadPixels(Trial& trial, const Ref<IConstImage>& image, const ImageShape& shape);

// The pixels, where the image is locked or needs no lock.
ImageBytes CopyPixels(Trial& trial, IConstImage& image, const ImageShape& shape);

// The same bytes; names the first one that differs.
void ExpectPixels(Trial& trial, const std::string& what, const ImageBytes& came, const ImageBytes& expected);

// The image has the description and the counted bytes of the shape.
void ExpectUnchanged(Trial& trial, const Ref<IImage>& image, const ImageShape& shape);

// Moves the pixels of an image away, into the one that is given.
Ref<IConstImage> MoveAway(Trial& trial, const Ref<IImage>& image);

// What the calling thread is told of its hold on an image, and where its pixels are.
struct ImageView
{
    bool isLocked;
    bool isWriteLocked;
    const void* data;
    const void* writableData;
};
ImageView LookAt(IImage& image);

// The image tells the calling thread that it holds no lock, and gives it no pixels.
void ExpectUnlocked(Trial& trial, const std::string& what, IImage& image);

}  // namespace tvx::check
