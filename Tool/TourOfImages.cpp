// SPDX-License-Identifier: MIT
#include "Host/ImageAccess.h"
#include "Host/PictureImage.h"
#include "Host/PngFile.h"
#include "Tool/Narration.h"
#include "Tool/Tour.h"

namespace tvx::tool
{

namespace
{

constexpr std::int32_t Width = 256;
constexpr std::int32_t Height = 128;

// Red grows to the right, green downwards; blue is everywhere the same. Gives whether the image has such pixels.
bool PaintGradient(IImage& image)
{
    const host::WriteLock lock(image);
    const host::Rows<std::uint8_t> rows(image);
    for (std::size_t y = 0; y < rows.GetHeight(); ++y)
    {
        for (std::size_t x = 0; x < rows.GetWidth(); ++x)
        {
            const auto pixel = rows.GetPixel(x, y);
            pixel[0] = static_cast<std::uint8_t>(x * 255 / Width);
            pixel[rows.GetChannels() / 2] = static_cast<std::uint8_t>(y * 255 / Height);
            pixel[rows.GetChannels() - 1] = 64;
        }
    }
    return static_cast<bool>(rows);
}

}  // namespace

bool Tour::PaintImage()
{
    OpenChapter("Paint an image. Its pixels are there only for a thread that has locked it, and move without a copy.");
    const auto images = manager_->GetExportAs<IImageFactory>(host::ImageExport);
    if (!images)
        return Fail(images.GetError());
    Ref<IImage> image;
    const auto made =
        (*images)->Create(Width, Height, ColorFormat::ThreeChannels, DataType::OneByte, 0, image.Receive());
    if (!Expect("Create", made, TVX_OK, image))
        return false;
    Say("  GetData without a lock -> ", image->GetData() == nullptr ? "null" : "pixels");
    if (!PaintGradient(*image))
        return FailForNull("GetWritableData");
    return SavePictures(*image) && MovePixels(**images, *image);
}

bool Tour::SavePictures(IImage& image)
{
    const auto folder = MakeTourFolder();
    if (folder.empty())
        return Fail({host::ErrorKind::CannotRead, "no folder can be made among the temporary files"});
    return SavePicture(image, folder / "tvx-tour-picture.png") && TurnImage(image) &&
           SavePicture(image, folder / "tvx-tour-picture-turned.png");
}

bool Tour::SavePicture(IImage& image, const std::filesystem::path& file)
{
    const auto picture = host::MakePicture(image, host::ReversedChannels::Keep);
    if (!picture)
        return Fail(picture.GetError());
    const auto written = host::WritePng(file, *picture);
    if (!written)
        return Fail(written.GetError());
    Say("  ", *written, " bytes in ", file.string());
    return true;
}

bool Tour::TurnImage(IImage& image)
{
    const host::WriteLock lock(image);
    Say("  the channels of every pixel reversed, so that red is blue, and the rows from bottom to top:");
    return Expect("SetColorFormat", image.SetColorFormat(ColorFormat::ThreeChannelsReversed), TVX_OK) &&
           Expect("SetRowOrder", image.SetRowOrder(1), TVX_OK);
}

bool Tour::MovePixels(IImageFactory& images, IImage& image)
{
    Ref<IConstImage> fixed;
    if (!Expect("MakeConst", images.MakeConst(&image, fixed.Receive()), TVX_OK, fixed))
        return false;
    Say("  MakeConst  the width of the image ", image.GetWidth(), ", of the one that never changes ",
        fixed->GetWidth());
    return true;
}

}  // namespace tvx::tool
