// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>

namespace tvx::host
{

// What a picture is like, apart from its pixels.
struct PictureFormat
{
    std::uint32_t width;     // in pixels
    std::uint32_t height;    // in pixels
    std::uint32_t channels;  // 1 grey; 3 red, green, blue; 4 the same and alpha
    std::uint32_t bits;      // of a sample: 8 or 16

    // The bytes of a row.
    std::size_t GetRowSize() const { return std::size_t{width} * channels * (bits / 8); }

    // The bytes of all rows.
    std::size_t GetSize() const { return GetRowSize() * height; }

    bool operator==(const PictureFormat&) const = default;
};

// The largest pictures that are read and written: 800 MB of pixels, 8 MB a row.
constexpr std::uint64_t MaxPicturePixels = 100'000'000;
constexpr std::uint32_t MaxPictureSide = 1'000'000;

// Whether a picture of that size is none too large.
constexpr bool IsWithinLimits(std::uint32_t width, std::uint32_t height)
{
    return width <= MaxPictureSide && height <= MaxPictureSide && std::uint64_t{width} * height <= MaxPicturePixels;
}

// Whether there are pictures like that.
constexpr bool IsSound(const PictureFormat& format)
{
    return format.width > 0 && format.height > 0 && IsWithinLimits(format.width, format.height) &&
           (format.channels == 1 || format.channels == 3 || format.channels == 4) &&
           (format.bits == 8 || format.bits == 16);
}

// A picture in memory: the rows from top to bottom, without padding, the channels of a pixel beside each other, samples of 16
// bits in the machine's own byte order.
class Picture
{
public:
    // All samples are 0. Throws std::bad_alloc.
    explicit Picture(const PictureFormat& format)
        : format_(format),
          pixels_(static_cast<std::byte*>(std::calloc(format.GetSize(), 1)))
    {
        if (pixels_ == nullptr)
            throw std::bad_alloc();
    }

    // What the picture is like.
    const PictureFormat& GetFormat() const { return format_; }

    // The samples of all rows.
    std::span<std::byte> GetPixels() { return {pixels_.get(), format_.GetSize()}; }
    std::span<const std::byte> GetPixels() const { return {pixels_.get(), format_.GetSize()}; }

    // The samples of a row; y is below the height.
    std::span<std::byte> GetRow(std::size_t y) { return CutRow(GetPixels(), y); }
    std::span<const std::byte> GetRow(std::size_t y) const { return CutRow(GetPixels(), y); }

private:
    template <class Byte>
    std::span<Byte> CutRow(std::span<Byte> pixels, std::size_t y) const
    {
        return pixels.subspan(y * format_.GetRowSize(), format_.GetRowSize());
    }

    struct Freeing
    {
        void operator()(std::byte* pixels) const noexcept { std::free(pixels); }
    };

    PictureFormat format_;
    std::unique_ptr<std::byte, Freeing> pixels_;  // zeros from the system cost nothing until they are written over
};

}  // namespace tvx::host
