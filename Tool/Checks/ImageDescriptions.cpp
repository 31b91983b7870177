// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageBench.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tvx::check
{

namespace
{

struct Sizes
{
    std::int32_t format;
    std::int32_t type;
    std::int32_t pixelSize;
};

// Of every known format with every known type.
constexpr Sizes KnownSizes[] = {
    {0, 0, 1}, {0, 1, 2}, {0, 2, 4},  {0, 3, 4},  {0, 4, 8},  {1, 0, 3}, {1, 1, 6}, {1, 2, 12}, {1, 3, 12}, {1, 4, 24},
    {2, 0, 4}, {2, 1, 8}, {2, 2, 16}, {2, 3, 16}, {2, 4, 32}, {3, 0, 3}, {3, 1, 6}, {3, 2, 12}, {3, 3, 12}, {3, 4, 24},
};

// An unknown format counts as -1 channels, an unknown type makes the size the negated number of channels.
constexpr Sizes UnknownSizes[] = {
    {4, 0, -1}, {7, 0, -1},  {-1, 1, -2}, {4, 2, -4}, {9, 4, -8},         {0, 5, -1},
    {1, 5, -3}, {2, -1, -4}, {3, 99, -3}, {4, 5, 1},  {INT32_MAX, 0, -1}, {0, INT32_MIN, -1},
};

void ExpectSizes(Trial& trial, const Sizes& sizes)
{
    const ImageShape shape = {5, 3, sizes.format, sizes.type, -2};
    const auto image = MakeImage(trial, shape);
    trial.Equal("the description of " + Show(shape), Describe(*image),
                ImageValues{5, 3, sizes.format, sizes.type, -2, sizes.pixelSize, sizes.pixelSize * 5});
}

void TellsTheSizesOfKnownFormats(Trial& trial)
{
    for (const auto& sizes : KnownSizes)
        ExpectSizes(trial, sizes);
}

void TellsTheSizesOfUnknownFormats(Trial& trial)
{
    for (const auto& sizes : UnknownSizes)
        ExpectSizes(trial, sizes);
}

void PacksItsRows(Trial& trial)
{
    for (std::int32_t width = 0; width <= 130; ++width)
        trial.Equal("GetStride of a width of " + std::to_string(width),
                    MakeImage(trial, {.width = width, .format = 1})->GetStride(), 3 * width);
}

void KeepsEveryRowOrder(Trial& trial)
{
    for (const std::int32_t order : {0, 1, -1, 12345, INT32_MAX, INT32_MIN})
        trial.Equal("GetRowOrder", MakeImage(trial, {.order = order})->GetRowOrder(), order);
}

void BeginsWithZeros(Trial& trial)
{
    for (const auto& [format, type, pixelSize] : KnownSizes)
    {
        const ImageShape shape = {67, 3, format, type, 0};
        MakeCountingImage(trial, shape);  // leaves memory behind that is not zero
        ExpectPixels(trial, "the pixels of a new image", ReadPixels(trial, MakeImage(trial, shape), shape),
                     ImageBytes(static_cast<std::size_t>(pixelSize * 67 * 3), 0));
    }
}

void IsMadeUnlockedWithOneReference(Trial& trial)
{
    const auto image = MakeImage(trial, {});
    trial.Equal("the references on a new image", image->GetRefCount(), 1u);
    ExpectUnlocked(trial, "a new image", *image);
}

void ExpectNoPixels(Trial& trial, const ImageShape& shape)
{
    const auto image = MakeImage(trial, shape);
    const host::WriteLock lock(*image);
    const auto view = LookAt(*image);
    trial.Equal("IsWriteLocked of the image without pixels", view.isWriteLocked, true);
    trial.Same("GetData of " + Show(shape), view.data, nullptr);
    trial.Same("GetWritableData of " + Show(shape), view.writableData, nullptr);
}

void HasNoPixelsOfUnknownFormats(Trial& trial)
{
    for (const auto& sizes : UnknownSizes)
        ExpectNoPixels(trial, {5, 3, sizes.format, sizes.type, 0});
}

void TakesNegativeSizes(Trial& trial)
{
    constexpr std::pair<std::int32_t, std::int32_t> negative[] = {{-4, 3}, {4, -3}, {-4, -3}, {INT32_MIN / 4, 1}};
    for (const auto& [width, height] : negative)
    {
        const ImageShape shape = {width, height, 1, 0, 9};
        trial.Equal("the description of " + Show(shape), Describe(*MakeImage(trial, shape)),
                    ImageValues{width, height, 1, 0, 9, 3, 3 * width});
        ExpectNoPixels(trial, shape);
    }
}

void TakesEmptySizes(Trial& trial)
{
    constexpr std::pair<std::int32_t, std::int32_t> empty[] = {{0, 3}, {4, 0}, {0, 0}};
    for (const auto& [width, height] : empty)
    {
        const ImageShape shape = {width, height, 1, 1, 9};
        trial.Equal("the description of " + Show(shape), Describe(*MakeImage(trial, shape)), Describe(shape));
    }
}

void RefusesANullOut(Trial& trial)
{
    const auto factory = GetImageFactory(trial);
    trial.Reports("Create with a null out", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return factory->Create(2, 2, 0, 0, 0, nullptr); });
}

void RefusesWhatIsTooLarge(Trial& trial)
{
    constexpr ImageShape large[] = {{INT32_MAX, 1, 1, 0, 0},
                                    {INT32_MAX / 3 + 1, 1, 1, 0, 0},
                                    {INT32_MAX, 1, 2, 4, 0},
                                    {INT32_MAX, INT32_MAX, 0, 0, 0}};
    const auto factory = GetImageFactory(trial);
    for (const auto& shape : large)
    {
        Ref<IImage> image;
        trial.Gives("Create of " + Show(shape),
                    factory->Create(shape.width, shape.height, shape.format, shape.type, shape.order, image.Receive()),
                    TVX_E_EXCEPTION);
        trial.Same("what it gave", image.Get(), nullptr);
    }
}

void TellsBothKindsApart(Trial& trial)
{
    const auto image = MakeImage(trial, {});
    const auto view = MakeConstImage(trial, {});
    trial.Expect(!Query<IConstImage>(image), "an image that can change to refuse IConstImage", "an answer");
    trial.Expect(!Query<IImage>(view), "an image that never changes to refuse IImage", "an answer");
    trial.QueryAs<IImageBase>(image, "an image that can change");
    trial.QueryAs<IImageBase>(view, "an image that never changes");
}

constexpr Check Checks[] = {
    {"image-tells-the-sizes-of-known-formats", "Images of each color format with each data type.",
     "An image gives back what it was made from; a pixel has the bytes of its channels, a row those of its pixels.",
     TellsTheSizesOfKnownFormats},
    {"image-tells-the-sizes-of-unknown-formats", "Images of unknown color formats and data types.",
     "Unknown codes are taken: a format counts as -1 channels, a type makes the pixel size the negated channel count.",
     TellsTheSizesOfUnknownFormats},
    {"image-packs-its-rows", "Images of widths from 0 to 130.", "Rows follow each other without padding.",
     PacksItsRows},
    {"image-keeps-every-row-order", "Images with row orders of every kind.", "Any number is a row order.",
     KeepsEveryRowOrder},
    {"image-begins-with-zeros", "The pixels of new images of each format and type.",
     "A new image has stride times height bytes, all of them 0.", BeginsWithZeros},
    {"image-is-made-unlocked", "A new image is looked at.",
     "A new image belongs to the caller alone and is not locked.", IsMadeUnlockedWithOneReference},
    {"image-has-no-pixels-of-unknown-formats", "Images with an unknown format or type, under the write lock.",
     "An image whose sizes are not known can be locked and has no pixels: its data pointers are null.",
     HasNoPixelsOfUnknownFormats},
    {"image-takes-negative-sizes", "Images with a negative width or height.",
     "Negative sizes are taken as they are; such an image has no pixels.", TakesNegativeSizes},
    {"image-takes-empty-sizes", "Images without rows or with empty rows.",
     "A width or height of 0 is taken like any other.", TakesEmptySizes},
    {"image-refuses-null-out", "Create with a null out.", "A null out gives -7 and one report line.", RefusesANullOut},
    {"image-refuses-what-is-too-large", "Images with rows or pixels beyond what memory and stride can hold.",
     "Too large an image gives -5 without a report line, and no image.", RefusesWhatIsTooLarge},
    {"image-tells-both-kinds-apart", "Images of both kinds are asked for the interface of the other.",
     "Only an image that never changes answers IConstImage, only one that can change answers IImage.",
     TellsBothKindsApart},
};

}  // namespace

extern const Family ImageDescriptionFamily = {"images", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
