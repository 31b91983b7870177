// SPDX-License-Identifier: MIT
#include "Src/Raster.h"

#include <iterator>
#include <limits>
#include <new>
#include <utility>

namespace tvx
{

namespace
{

constexpr std::int32_t Unknown = -1;
constexpr std::int32_t ChannelsOfFormat[] = {1, 3, 4, 3};
constexpr std::int32_t ElementSizeOfType[] = {1, 2, 4, 4, 8};

template <std::size_t Count>
std::int32_t LookUp(const std::int32_t (&table)[Count], std::int32_t code) noexcept
{
    return code >= 0 && static_cast<std::size_t>(code) < Count ? table[code] : Unknown;
}

// Negative for one unknown code; the two signs of two unknown ones meet.
std::int32_t GetPixelSize(const ImageDescription& description) noexcept
{
    return LookUp(ChannelsOfFormat, description.colorFormat) * GetElementSize(description.dataType);
}

std::int32_t GetStride(const ImageDescription& description)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const auto stride = std::int64_t{GetPixelSize(description)} * description.width;
    if (stride < Limits::min() || stride > Limits::max())
        throw std::bad_alloc();
    return static_cast<std::int32_t>(stride);
}

bool HasPixels(const ImageDescription& description) noexcept
{
    return description.width > 0 && description.height > 0 && GetElementSize(description.dataType) != Unknown &&
           LookUp(ChannelsOfFormat, description.colorFormat) != Unknown;
}

}  // namespace

std::int32_t GetElementSize(std::int32_t dataType) noexcept
{
    return LookUp(ElementSizeOfType, dataType);
}

Raster::Raster(const ImageDescription& description, Content content)
    : width_(description.width),
      height_(description.height),
      colorFormat_(description.colorFormat),
      dataType_(description.dataType),
      rowOrder_(description.rowOrder),
      pixelSize_(tvx::GetPixelSize(description)),
      stride_(tvx::GetStride(description))
{
    if (HasPixels(description))
        pixels_ = AllocatePixels(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height_), content);
}

Raster::Raster(Raster&& moved) noexcept
    : width_(std::exchange(moved.width_, -1)),
      height_(std::exchange(moved.height_, -1)),
      colorFormat_(moved.colorFormat_.exchange(-1)),
      dataType_(std::exchange(moved.dataType_, -1)),
      rowOrder_(moved.rowOrder_.exchange(-1)),
      pixelSize_(std::exchange(moved.pixelSize_, -1)),
      stride_(std::exchange(moved.stride_, -1)),
      pixels_(std::move(moved.pixels_))
{
    moved.valid_ = false;
}

std::size_t Raster::GetSize() const noexcept
{
    return pixels_ ? static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height_) : 0;
}

}  // namespace tvx
