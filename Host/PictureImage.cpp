// SPDX-License-Identifier: MIT
#include "Host/PictureImage.h"

#include "Host/ImageAccess.h"

#include <algorithm>
#include <new>
#include <optional>
#include <string>

namespace tvx::host
{

namespace
{

std::int32_t GetColorFormat(std::uint32_t channels)
{
    if (channels == 1)
        return ColorFormat::OneChannel;
    return channels == 3 ? ColorFormat::ThreeChannels : ColorFormat::FourChannels;
}

template <class T>
bool Suit(const Rows<T>& rows, const PictureFormat& format)
{
    return rows.GetWidth() == format.width && rows.GetHeight() == format.height &&
           rows.GetChannels() == format.channels;
}

// Gives whether the image has the rows that the picture needs, and so was filled.
template <class T>
bool FillRows(IImage& image, const Picture& picture)
{
    const WriteLock lock(image);
    const Rows<T> rows(image);
    if (!Suit(rows, picture.GetFormat()))
        return false;
    for (std::size_t y = 0; y < rows.GetHeight(); ++y)
        std::ranges::copy(picture.GetRow(y), std::as_writable_bytes(rows.GetRow(y)).begin());
    return true;
}

// What a picture of the image is like; sound only when there is one.
PictureFormat GetFormat(IConstImage& image)
{
    const auto type = image.GetDataType();
    const std::uint32_t bits = type == DataType::OneByte ? 8 : (type == DataType::TwoBytes ? 16 : 0);
    return {static_cast<std::uint32_t>(std::max(image.GetWidth(), 0)),
            static_cast<std::uint32_t>(std::max(image.GetHeight(), 0)),
            static_cast<std::uint32_t>(GetChannelCount(image.GetColorFormat())), bits};
}

template <class T>
bool FillPicture(Picture& picture, IConstImage& image)
{
    const Rows<const T> rows(image);
    if (!Suit(rows, picture.GetFormat()))
        return false;
    for (std::size_t y = 0; y < rows.GetHeight(); ++y)
        std::ranges::copy(std::as_bytes(rows.GetRow(y)), picture.GetRow(y).begin());
    return true;
}

// Reverses the channels of every pixel: the first sample changes places with the last one.
void ReverseChannels(Picture& picture)
{
    const auto sample = picture.GetFormat().bits / 8;
    const auto pixel = sample * picture.GetFormat().channels;
    const auto pixels = picture.GetPixels();
    for (std::size_t at = 0; at < pixels.size(); at += pixel)
    {
        const auto first = pixels.subspan(at, sample);
        std::ranges::swap_ranges(first, pixels.subspan(at + pixel - sample, sample));
    }
}

Error DoesNotFit()
{
    return MakeError(ErrorKind::BadPicture, "the picture does not fit into memory");
}

}  // namespace

Outcome<Ref<IImage>> MakeImage(IImageFactory& factory, const Picture& picture)
{
    const auto& format = picture.GetFormat();
    const auto type = format.bits == 8 ? DataType::OneByte : DataType::TwoBytes;
    Ref<IImage> image;
    const auto result =
        factory.Create(static_cast<std::int32_t>(format.width), static_cast<std::int32_t>(format.height),
                       GetColorFormat(format.channels), type, 0, image.Receive());
    if (TVX_FAILED(result) || !image)
        return result == TVX_E_EXCEPTION
                   ? DoesNotFit()
                   : MakeError(ErrorKind::Misbehaved,
                               "the image factory makes no image, result " + std::to_string(result));
    const bool filled =
        format.bits == 8 ? FillRows<std::uint8_t>(*image, picture) : FillRows<std::uint16_t>(*image, picture);
    if (!filled)
        return MakeError(ErrorKind::Misbehaved, "the image factory makes an image that is not the one asked for");
    return image;
}

Outcome<Picture> MakePicture(IConstImage& image, ReversedChannels reversed)
try
{
    const auto changing = Query<IImage>(&image);
    std::optional<ReadLock> lock;
    if (changing && !changing->IsLocked())
        lock.emplace(*changing);
    const auto format = GetFormat(image);
    if (!IsSound(format))
        return MakeError(ErrorKind::BadPicture, "no picture can show this image");
    Picture picture(format);
    const bool filled =
        format.bits == 8 ? FillPicture<std::uint8_t>(picture, image) : FillPicture<std::uint16_t>(picture, image);
    if (!filled)
        return MakeError(ErrorKind::Misbehaved, "the image gives no pixels");
    if (reversed == ReversedChannels::PutBack && image.GetColorFormat() == ColorFormat::ThreeChannelsReversed)
        ReverseChannels(picture);
    return picture;
}
catch (const std::bad_alloc&)
{
    return DoesNotFit();
}

}  // namespace tvx::host
