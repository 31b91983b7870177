// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Picture.h"

#include <cstdint>
#include <cstring>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <zlib.h>

namespace tvx::test
{

constexpr const char PngSignature[] = "\x89PNG\r\n\x1A\n";

// A number as PNG files have it: four bytes, the highest first.
inline std::string BigEndian(std::uint32_t number)
{
    return {static_cast<char>(number >> 24), static_cast<char>(number >> 16), static_cast<char>(number >> 8),
            static_cast<char>(number)};
}

inline std::string MakeChunk(const std::string& type, std::string_view content)
{
    const auto checked = type + std::string(content);
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<uInt>(checked.size()));
    return BigEndian(static_cast<std::uint32_t>(content.size())) + checked + BigEndian(static_cast<std::uint32_t>(sum));
}

inline std::string Deflate(std::string_view bytes)
{
    auto size = compressBound(static_cast<uLong>(bytes.size()));
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
             static_cast<uLong>(bytes.size()));
    packed.resize(size);
    return packed;
}

// What is packed in the one chunk of pixels of a file, up to 1000 bytes.
inline std::string Inflate(const std::string& file)
{
    const auto packed = file.find("IDAT") + 4;
    std::string bytes(1000, '\0');
    auto size = static_cast<uLong>(bytes.size());
    uncompress(reinterpret_cast<Bytef*>(bytes.data()), &size, reinterpret_cast<const Bytef*>(file.data() + packed),
               static_cast<uLong>(file.size() - packed));
    return bytes.substr(0, size);
}

// A PNG file put together by hand, so that it may have every form and every fault.
struct PngMaker
{
    // What the fourth number of a header means.
    enum ColorType : char
    {
        Grey = 0,
        Color = 2,
        Palette = 3,
        GreyAlpha = 4,
        ColorAlpha = 6,
    };

    std::uint32_t width = 5;
    std::uint32_t height = 3;
    char bits = 8;
    ColorType type = Color;
    bool interlaced = false;
    std::string before;  // chunks in front of the pixels
    std::function<unsigned(unsigned x, unsigned y, unsigned channel)> sample =
        [](unsigned x, unsigned y, unsigned channel) { return 50 * x + 7 * y + channel; };

    std::string MakeHeader() const
    {
        const char rest[] = {bits, type, 0, 0, interlaced ? '\1' : '\0'};
        return MakeChunk("IHDR", BigEndian(width) + BigEndian(height) + std::string(rest, sizeof rest));
    }

    unsigned CountChannels() const
    {
        const bool coloured = type == Color || type == ColorAlpha;
        return (coloured ? 3U : 1U) + (type == GreyAlpha || type == ColorAlpha ? 1U : 0U);
    }

    // The pixels from (x, y) on, so many apart, each row behind its filter's number.
    std::string MakeRows(unsigned x0, unsigned y0, unsigned stepX, unsigned stepY) const
    {
        std::string rows;
        for (unsigned y = y0; y < height && x0 < width; y += stepY)
        {
            rows += '\0';
            std::vector<bool> row;
            for (unsigned x = x0; x < width; x += stepX)
                AppendPixel(row, x, y);
            AppendBits(rows, row);
        }
        return rows;
    }

    std::string MakePixels() const
    {
        if (!interlaced)
            return MakeRows(0, 0, 1, 1);
        constexpr unsigned passes[][4] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                          {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
        std::string pixels;
        for (const auto& pass : passes)
            pixels += MakeRows(pass[0], pass[1], pass[2], pass[3]);
        return pixels;
    }

    std::string Make() const
    {
        return PngSignature + MakeHeader() + before + MakeChunk("IDAT", Deflate(MakePixels())) + MakeChunk("IEND", "");
    }

private:
    void AppendPixel(std::vector<bool>& row, unsigned x, unsigned y) const
    {
        for (unsigned channel = 0; channel < CountChannels(); ++channel)
        {
            for (int bit = bits - 1; bit >= 0; --bit)
                row.push_back((sample(x, y, channel) >> bit & 1) != 0);
        }
    }

    static void AppendBits(std::string& bytes, const std::vector<bool>& row)
    {
        for (std::size_t at = 0; at < row.size(); at += 8)
        {
            int byte = 0;
            for (std::size_t bit = at; bit < at + 8; ++bit)
                byte = byte << 1 | (bit < row.size() && row[bit] ? 1 : 0);
            bytes += static_cast<char>(byte);
        }
    }
};

// The samples of a picture as numbers, whatever their size.
inline std::vector<unsigned> GetSamples(const host::Picture& picture)
{
    std::vector<unsigned> samples;
    const auto pixels = picture.GetPixels();
    for (std::size_t at = 0; at < pixels.size(); at += picture.GetFormat().bits / 8)
    {
        std::uint16_t wide = 0;
        std::memcpy(&wide, pixels.data() + at, picture.GetFormat().bits == 16 ? 2 : 0);
        samples.push_back(picture.GetFormat().bits == 16 ? wide : std::to_integer<unsigned>(pixels[at]));
    }
    return samples;
}

}  // namespace tvx::test
