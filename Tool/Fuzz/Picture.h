// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IImage.h"

#include <cstdint>
#include <vector>

namespace tvx::fuzz
{

// What an image has to tell and hold: the plain model of one. Any number is a width, a height, a format, a type and an order,
// but not a negative width together with a pixel size that is negative.
struct Picture
{
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t format = 0;
    std::int32_t type = 0;
    std::int32_t order = 0;
    std::vector<unsigned char> pixels;

    // Bytes of a pixel and of a row; negative where one of the numbers is unknown or negative.
    std::int32_t GetPixelSize() const;
    std::int32_t GetStride() const { return GetPixelSize() * width; }

    // As many as there are, all 0.
    void Clear();

    // Other ones for each pair of numbers.
    void Paint(std::uint32_t first, std::uint32_t second);

    // What the writer is answered who wants another format or order, and what comes of it where that is 0.
    Result ForeseeFormat(std::int32_t wanted) const;
    Result ForeseeOrder(std::int32_t wanted) const;
    void SetFormat(std::int32_t wanted);
    void SetOrder(std::int32_t wanted);

    // In the order of the slots.
    std::vector<std::int32_t> Describe() const;
};

}  // namespace tvx::fuzz
