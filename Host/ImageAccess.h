// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IImage.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

namespace tvx::host
{

// Makes the calling thread a reader of the image as long as it lives. An image does not count the holds of a thread: the end of
// the inner one of two guards ends the hold of both. The image is borrowed.
class [[nodiscard]] ReadLock
{
public:
    // Waits as long as it takes.
    explicit ReadLock(IImage& image) : image_(image) { image_.LockRead(); }
    ~ReadLock() { image_.Unlock(); }
    ReadLock(const ReadLock&) = delete;
    ReadLock& operator=(const ReadLock&) = delete;

private:
    IImage& image_;
};

// Makes the calling thread the writer of the image, in the same way.
class [[nodiscard]] WriteLock
{
public:
    // Waits as long as it takes.
    explicit WriteLock(IImage& image) : image_(image) { image_.LockWrite(); }
    ~WriteLock() { image_.Unlock(); }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

private:
    IImage& image_;
};

// The channels of a pixel of that ColorFormat; 0 for an unknown one.
constexpr std::size_t GetChannelCount(std::int32_t colorFormat)
{
    constexpr std::size_t counts[] = {1, 3, 4, 3};
    return colorFormat < 0 || colorFormat >= std::ssize(counts) ? 0 : counts[colorFormat];
}

// The pixels of an image as rows of elements of the type T: with a const T for reading, else for writing. They are valid when
// the image gives its pixels - one that changes has to be locked first, and stay so as long as the rows are used - and T has
// the size of its elements. Rows that are not valid are empty.
//
//     const WriteLock lock(image);
//     const Rows<std::uint8_t> rows(image);
//     for (std::size_t y = 0; y < rows.GetHeight(); ++y)
//         std::ranges::fill(rows.GetRow(y), std::uint8_t{255});
template <class T>
class Rows
{
    static_assert(std::is_arithmetic_v<T>, "the elements of an image are numbers");

public:
    // An IImage is an IConstImage, too: whoever holds its lock reads it as one.
    using Image = std::conditional_t<std::is_const_v<T>, IConstImage, IImage>;

    // Borrows the image.
    explicit Rows(Image& image);

    // Whether the rows are valid.
    explicit operator bool() const { return elements_ != nullptr; }

    // The pixels in a row; 0 when the rows are not valid.
    std::size_t GetWidth() const { return width_; }

    // The number of rows; 0 when they are not valid.
    std::size_t GetHeight() const { return height_; }

    // The elements of a pixel; 0 when the rows are not valid.
    std::size_t GetChannels() const { return channels_; }

    // The elements of all pixels of a row, or of one pixel; empty outside the image.
    std::span<T> GetRow(std::size_t y) const;
    std::span<T> GetPixel(std::size_t x, std::size_t y) const;

private:
    static auto* GetPixels(Image& image);

    T* elements_ = nullptr;
    std::size_t width_ = 0;
    std::size_t height_ = 0;
    std::size_t channels_ = 0;
};

template <class T>
Rows<T>::Rows(Image& image)
{
    const std::int64_t width = image.GetWidth();
    const std::int64_t height = image.GetHeight();
    const std::int64_t pixelSize = image.GetPixelSize();
    const auto channels = GetChannelCount(image.GetColorFormat());
    if (width <= 0 || height <= 0 || channels == 0)
        return;
    if (pixelSize != static_cast<std::int64_t>(channels * sizeof(T)) || image.GetStride() != pixelSize * width)
        return;
    auto* const pixels = GetPixels(image);
    if (pixels == nullptr || reinterpret_cast<std::uintptr_t>(pixels) % alignof(T) != 0)
        return;
    elements_ = static_cast<T*>(pixels);
    width_ = static_cast<std::size_t>(width);
    height_ = static_cast<std::size_t>(height);
    channels_ = channels;
}

template <class T>
auto* Rows<T>::GetPixels(Image& image)
{
    if constexpr (std::is_const_v<T>)
        return image.GetData();
    else
        return image.GetWritableData();
}

template <class T>
std::span<T> Rows<T>::GetRow(std::size_t y) const
{
    const auto length = width_ * channels_;
    return y < height_ ? std::span<T>(elements_ + y * length, length) : std::span<T>();
}

template <class T>
std::span<T> Rows<T>::GetPixel(std::size_t x, std::size_t y) const
{
    return x < width_ && y < height_ ? GetRow(y).subspan(x * channels_, channels_) : std::span<T>();
}

}  // namespace tvx::host
