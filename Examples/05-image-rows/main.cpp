// SPDX-License-Identifier: MIT
// Images: rows filled under the write lock, a copy that never changes, channels reversed where they stand, and the way to a
// PNG file and back.
#include "Host/ImageAccess.h"
#include "Host/LibraryManager.h"
#include "Host/PictureImage.h"
#include "Host/PngFile.h"

#include <algorithm>
#include <iostream>

namespace
{

using namespace tvx;

int Fail(const std::string& message)
{
    std::cerr << message << '\n';
    return 1;
}

// Red grows to the right, green downwards.
void Paint(IImage& image)
{
    const host::WriteLock lock(image);
    const host::Rows<std::uint8_t> rows(image);
    for (std::size_t y = 0; y < rows.GetHeight(); ++y)
    {
        for (std::size_t x = 0; x < rows.GetWidth(); ++x)
        {
            const auto pixel = rows.GetPixel(x, y);
            pixel[0] = static_cast<std::uint8_t>(x * 100);
            pixel[1] = static_cast<std::uint8_t>(y * 50);
        }
    }
}

Result ReverseChannels(IImage& image)
{
    const host::WriteLock lock(image);
    return image.SetColorFormat(ColorFormat::ThreeChannelsReversed);
}

// An image that can change has to be locked by the caller.
void PrintRows(const char* title, IConstImage& image)
{
    const host::Rows<const std::uint8_t> rows(image);
    std::cout << title << '\n';
    for (std::size_t y = 0; y < rows.GetHeight(); ++y)
    {
        for (const int element : rows.GetRow(y))
            std::cout << ' ' << element;
        std::cout << '\n';
    }
}

// Writes the image as a picture, and tells whether the file holds the same one.
host::Outcome<bool> SurvivesFile(IImage& image, const char* file)
{
    const auto written = host::MakePicture(image);
    if (!written)
        return written.GetError();
    const auto size = host::WritePng(file, *written);
    if (!size)
        return size.GetError();
    const auto read = host::ReadPng(file);
    if (!read)
        return read.GetError();
    return read->GetFormat() == written->GetFormat() && std::ranges::equal(read->GetPixels(), written->GetPixels());
}

int Run(IImageFactory& images)
{
    Ref<IImage> image;
    if (TVX_FAILED(images.Create(3, 2, ColorFormat::ThreeChannels, DataType::OneByte, 0, image.Receive())))
        return Fail("no image");
    std::cout << "without the lock there are " << (image->GetData() ? "" : "no ") << "pixels\n";
    Paint(*image);

    Ref<IConstImage> before;
    if (TVX_FAILED(images.CreateConstCopy(image.Get(), before.Receive())) || TVX_FAILED(ReverseChannels(*image)))
        return Fail("the image does not change");
    PrintRows("red, green, blue of the copy, which never changes and needs no lock:", *before);
    {
        const host::ReadLock lock(*image);
        PrintRows("blue, green, red of the image:", *image);
    }
    const auto same = SurvivesFile(*image, "image-rows.png");
    if (!same)
        return Fail(same.GetError().message);
    std::cout << "read back from the file: " << (*same ? "the same" : "another") << " picture\n";
    return *same ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments)
{
    host::ModuleCatalog catalog;
    catalog.Add(count > 1 ? arguments[1] : TVX_MODULES);
    host::LibraryManager manager(std::move(catalog));
    const auto images = manager.GetExportAs<IImageFactory>(host::ImageExport);
    return images ? Run(**images) : Fail(images.GetError().message);
}
