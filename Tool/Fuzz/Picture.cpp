// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/Picture.h"

#include <algorithm>
#include <iterator>

namespace tvx::fuzz
{

namespace
{

constexpr std::int32_t Channels[] = {1, 3, 4, 3};
constexpr std::int32_t ElementSizes[] = {1, 2, 4, 4, 8};
constexpr std::int32_t Unknown = -1;

template <std::size_t Count>
std::int32_t LookUp(const std::int32_t (&table)[Count], std::int32_t code)
{
    return code >= 0 && code < static_cast<std::int32_t>(Count) ? table[code] : Unknown;
}

bool HasThreeChannels(std::int32_t format)
{
    return format == ColorFormat::ThreeChannels || format == ColorFormat::ThreeChannelsReversed;
}

}  // namespace

std::int32_t Picture::GetPixelSize() const
{
    return LookUp(Channels, format) * LookUp(ElementSizes, type);
}

void Picture::Clear()
{
    const bool hasPixels = GetStride() > 0 && height > 0;
    pixels.assign(hasPixels ? static_cast<std::size_t>(GetStride() * height) : 0, 0);
}

void Picture::Paint(std::uint32_t first, std::uint32_t second)
{
    for (std::size_t place = 0; place < pixels.size(); ++place)
        pixels[place] = static_cast<unsigned char>(first + place * (second % 251 + 1));
}

// In the order in which it is looked at.
Result Picture::ForeseeFormat(std::int32_t wanted) const
{
    if (wanted == format)
        return TVX_OK;
    if (!HasThreeChannels(wanted) || !HasThreeChannels(format))
        return TVX_E_PRECONDITION;
    if (height < 1)
        return TVX_OK;
    if (GetStride() < 1)
        return TVX_E_FAIL;
    return type == DataType::EightBytes ? TVX_E_UNSUPPORTED_FORMAT : TVX_OK;
}

Result Picture::ForeseeOrder(std::int32_t wanted) const
{
    return wanted != order && (height < 2 || GetStride() < 1) ? TVX_E_FAIL : TVX_OK;
}

void Picture::SetFormat(std::int32_t wanted)
{
    const auto size = static_cast<std::ptrdiff_t>(LookUp(ElementSizes, type));
    for (auto pixel = pixels.begin(); wanted != format && pixel != pixels.end(); pixel += 3 * size)
        std::swap_ranges(pixel, pixel + size, pixel + 2 * size);
    format = wanted;
}

void Picture::SetOrder(std::int32_t wanted)
{
    const auto stride = static_cast<std::ptrdiff_t>(GetStride());
    for (std::ptrdiff_t row = 0; wanted != order && row < height / 2; ++row)
    {
        const auto first = pixels.begin() + row * stride;
        std::swap_ranges(first, first + stride, pixels.end() - (row + 1) * stride);
    }
    order = wanted;
}

std::vector<std::int32_t> Picture::Describe() const
{
    return {width, height, format, type, order, GetPixelSize(), GetStride()};
}

}  // namespace tvx::fuzz
