// SPDX-License-Identifier: MIT
#pragma once

#include "Src/PixelMemory.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace tvx
{

// What an image says of its pixels. Every number is taken as it is.
struct ImageDescription
{
    std::int32_t width;
    std::int32_t height;
    std::int32_t colorFormat;
    std::int32_t dataType;
    std::int32_t rowOrder;
};

// The bytes of one channel's element; -1 for an unknown type.
std::int32_t GetElementSize(std::int32_t dataType) noexcept;

// The pixels of an image with their description. Moving leaves a raster behind that is not valid: no pixels, -1 in every number.
//
// Layout and order of the rows may be read while they change; for everything else one thread at a time writes.
class Raster
{
public:
    // Has no pixels when a number is negative or unknown. Throws std::bad_alloc when memory does not suffice or a row is longer
    // than its length can say.
    Raster(const ImageDescription& description, Content content);
    Raster(Raster&& moved) noexcept;
    Raster& operator=(Raster&&) = delete;
    ~Raster() = default;

    bool IsValid() const noexcept { return valid_; }

    // Null without pixels.
    std::byte* GetPixels() const noexcept { return pixels_.get(); }

    // The bytes of all pixels.
    std::size_t GetSize() const noexcept;

    std::int32_t GetWidth() const noexcept { return width_; }
    std::int32_t GetHeight() const noexcept { return height_; }
    std::int32_t GetColorFormat() const noexcept { return colorFormat_.load(std::memory_order_relaxed); }
    std::int32_t GetDataType() const noexcept { return dataType_; }
    std::int32_t GetRowOrder() const noexcept { return rowOrder_.load(std::memory_order_relaxed); }
    std::int32_t GetPixelSize() const noexcept { return pixelSize_; }
    std::int32_t GetStride() const noexcept { return stride_; }

    // Change what is said of the pixels, not the pixels.
    void SetColorFormat(std::int32_t colorFormat) noexcept
    {
        colorFormat_.store(colorFormat, std::memory_order_relaxed);
    }
    void SetRowOrder(std::int32_t rowOrder) noexcept { rowOrder_.store(rowOrder, std::memory_order_relaxed); }

private:
    bool valid_ = true;
    std::int32_t width_;
    std::int32_t height_;
    std::atomic<std::int32_t> colorFormat_;
    std::int32_t dataType_;
    std::atomic<std::int32_t> rowOrder_;
    std::int32_t pixelSize_;
    std::int32_t stride_;
    Pixels pixels_;
};

}  // namespace tvx
