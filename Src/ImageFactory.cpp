// SPDX-License-Identifier: MIT
#include "Src/ImageFactory.h"

#include "Helpers/Results.h"
#include "Src/Image.h"

#include <cstring>

namespace tvx
{

namespace
{

// The read lock of an image that has one, for as long as a copy takes.
class ReadHold
{
public:
    explicit ReadHold(IConstImage& image) : image_(Query<IImage>(&image))
    {
        if (image_)
            image_->LockRead();
    }

    ~ReadHold()
    {
        if (image_)
            image_->Unlock();
    }

    ReadHold(const ReadHold&) = delete;
    ReadHold& operator=(const ReadHold&) = delete;

private:
    Ref<IImage> image_;
};

// What an image tells when its pixels have been moved away. No image that has been made tells this: a pixel size of -1 gives
// a width of -1 the row length 1.
bool IsMovedAway(IConstImage& image)
{
    return image.GetWidth() == -1 && image.GetPixelSize() == -1 && image.GetStride() == -1;
}

template <class Interface>
Result Make(const ImageDescription& description, Content content, Interface** out)
try
{
    TVX_CHECK_PRECOND(out != nullptr);
    HandOut<Interface>(MakeRef<Image>(Raster(description, content)).Get(), out);
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_EXCEPTION;
}

// Fills a new image with the pixels of source. Layout and order may have changed before the lock was there; the size of a row
// never does, but for an image of another make that contradicts itself.
Result Fill(Image& image, IConstImage& source)
{
    const ReadHold hold(source);
    auto& raster = image.GetRaster();
    const auto* const from = source.GetData();
    const auto size = raster.GetSize();
    TVX_CHECK_PRECOND(size == 0 || (from != nullptr && source.GetStride() == raster.GetStride()));
    if (size > 0)
        std::memcpy(raster.GetPixels(), from, size);
    raster.SetColorFormat(source.GetColorFormat());
    raster.SetRowOrder(source.GetRowOrder());
    return TVX_OK;
}

// Moves the pixels of image, a From, into a new To.
template <class To, class From, class Given, class Wanted>
Result Move(Given* image, Wanted** out)
try
{
    TVX_CHECK_PRECOND(image != nullptr);
    TVX_CHECK_PRECOND(out != nullptr);
    TVX_CHECK_PRECOND(image->IsUnique());
    auto* const own = From::IsOwn(image) ? static_cast<From*>(image) : nullptr;
    TVX_RETURN_FAIL_IF_NULL(own);
    HandOut<Wanted>(MakeRef<To>(std::move(own->GetRaster())).Get(), out);
    return TVX_OK;
}
catch (...)  // want of memory; the pixels are where they were
{
    return TVX_E_EXCEPTION;
}

}  // namespace

Result ImageFactory::Create(std::int32_t width, std::int32_t height, std::int32_t format, std::int32_t type,
                            std::int32_t order, IImage** out)
{
    return Make({width, height, format, type, order}, Content::Zeros, out);
}

Result ImageFactory::CreateCopy(IConstImage* source, IImage** out)
{
    TVX_CHECK_PRECOND(source != nullptr);
    TVX_CHECK_PRECOND(!IsMovedAway(*source));
    Ref<Image> copy;
    TVX_FORWARD_FAILURE(Make({source->GetWidth(), source->GetHeight(), source->GetColorFormat(), source->GetDataType(),
                              source->GetRowOrder()},
                             Content::Anything, out == nullptr ? nullptr : copy.Receive()));
    const auto filled = Fill(*copy, *source);
    if (!TVX_FAILED(filled))
        HandOut<IImage>(copy.Get(), out);
    return filled;
}

Result ImageFactory::CreateConstCopy(IConstImage* source, IConstImage** out)
{
    Ref<IImage> copy;
    TVX_FORWARD_FAILURE(CreateCopy(source, copy.Receive()));
    TVX_FORWARD_FAILURE(MakeConst(copy.Get(), out));
    return TVX_OK;
}

Result ImageFactory::MakeConst(IImage* image, IConstImage** out)
{
    return Move<ConstImage, Image>(image, out);
}

Result ImageFactory::MakeMutable(IConstImage* image, IImage** out)
{
    return Move<Image, ConstImage>(image, out);
}

}  // namespace tvx
