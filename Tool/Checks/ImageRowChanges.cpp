// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageChanges.h"

#include <cstdint>

namespace tvx::check
{

namespace
{

Result SetOrder(const Ref<IImage>& image, std::int32_t order)
{
    const host::WriteLock lock(*image);
    return image->SetRowOrder(order);
}

ImageBytes ReverseRows(const ImageShape& shape, const ImageBytes& bytes)
{
    ImageBytes reversed;
    for (auto end = bytes.size(); end > 0; end -= GetStride(shape))
    {
        const auto row = bytes.begin() + static_cast<std::ptrdiff_t>(end - GetStride(shape));
        reversed.insert(reversed.end(), row, row + static_cast<std::ptrdiff_t>(GetStride(shape)));
    }
    return reversed;
}

void ExpectReversedRows(Trial& trial, ImageShape shape)
{
    const auto image = MakeCountingImage(trial, shape);
    shape.order = 1;
    trial.Gives("SetRowOrder of " + Show(shape), SetOrder(image, 1), TVX_OK);
    trial.Equal("the description afterwards", Describe(*image), Describe(shape));
    ExpectPixels(trial, Show(shape) + " with reversed rows", ReadPixels(trial, image, shape),
                 ReverseRows(shape, CountBytes(shape)));
}

void ReversesRowsOfEveryWidth(Trial& trial)
{
    for (std::int32_t width = 1; width <= 130; ++width)
        ExpectReversedRows(trial, {width, 2 + width % 4, 0, 0, 0});
}

void ReversesRowsOfEveryFormat(Trial& trial)
{
    for (const std::int32_t format : {0, 1, 2, 3})
    {
        for (const std::int32_t type : {0, 1, 2, 3, 4})
            ExpectReversedRows(trial, {13, 5, format, type, 0});
    }
}

void ReversesRowsBetweenAnyTwoOrders(Trial& trial)
{
    const ImageShape shape = {5, 3, 0, 0, 0};
    const auto image = MakeCountingImage(trial, shape);
    auto expected = CountBytes(shape);
    for (const std::int32_t order : {-1, 7, INT32_MIN, INT32_MAX, 0, 1})
    {
        trial.Gives("SetRowOrder", SetOrder(image, order), TVX_OK);
        expected = ReverseRows(shape, expected);
        trial.Equal("GetRowOrder", image->GetRowOrder(), order);
        ExpectPixels(trial, "the pixels after one more change", ReadPixels(trial, image, shape), expected);
    }
}

void TakesTheSameOrder(Trial& trial)
{
    for (const std::int32_t height : {1, 2, 5})
    {
        const ImageShape shape = {5, height, 0, 0, 42};
        const auto image = MakeCountingImage(trial, shape);
        trial.Gives("SetRowOrder to the order that is there", SetOrder(image, 42), TVX_OK);
        ExpectUnchanged(trial, image, shape);
    }
}

void ExpectRefusedOrder(Trial& trial, const ImageShape& shape)
{
    const auto image = MakeImage(trial, shape);
    trial.Reports("SetRowOrder of " + Show(shape), "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                  [&] { return SetOrder(image, 1); });
    trial.Equal("GetRowOrder afterwards", image->GetRowOrder(), 0);
}

void RefusesFewerThanTwoRows(Trial& trial)
{
    for (const std::int32_t height : {1, 0, -3})
        ExpectRefusedOrder(trial, {.width = 4, .height = height});
    const ImageShape shape = {4, 1, 0, 0, 0};
    const auto image = MakeCountingImage(trial, shape);
    static_cast<void>(trial.TakeOutput([&] { SetOrder(image, 1); }));
    ExpectUnchanged(trial, image, shape);
}

void RefusesEmptyRows(Trial& trial)
{
    for (const std::int32_t width : {0, -4})
        ExpectRefusedOrder(trial, {.width = width, .height = 3});
}

constexpr ImageChange Change = {"SetRowOrder", &IImage::SetRowOrder, 0};

void RefusesWithoutTheWriteLock(Trial& trial)
{
    ExpectNeedsWriteLock(trial, Change);
}

void RefusesWithoutItsPixels(Trial& trial)
{
    ExpectNeedsPixels(trial, Change);
}

constexpr Check Checks[] = {
    {"image-set-row-order-reverses-every-width", "Images of widths from 1 to 130 and 2 to 5 rows.",
     "Another row order makes the last row the first and so on; the bytes within a row stay in their order.",
     ReversesRowsOfEveryWidth},
    {"image-set-row-order-reverses-every-format", "Images of each format and type.",
     "Rows are reversed whatever their pixels are.", ReversesRowsOfEveryFormat},
    {"image-set-row-order-takes-any-two", "One image goes through several row orders.",
     "Any two different row orders differ by one reversal; the number means nothing else.",
     ReversesRowsBetweenAnyTwoOrders},
    {"image-set-row-order-takes-the-same", "Images are set to the row order that they have, also with one row.",
     "The row order that is there gives 0 and changes nothing.", TakesTheSameOrder},
    {"image-set-row-order-refuses-fewer-than-two-rows", "Images of one row, of none, and of a negative number.",
     "Without two rows there is nothing to reverse: -1, one report line, and the row order stays.",
     RefusesFewerThanTwoRows},
    {"image-set-row-order-refuses-empty-rows", "Images with rows but nothing in them.",
     "Rows of no bytes give -1 and one report line, and the row order stays.", RefusesEmptyRows},
    {"image-set-row-order-needs-the-write-lock", "SetRowOrder without a lock and under a read lock.",
     "Only the writer may change an image: else -7, one report line and no change.", RefusesWithoutTheWriteLock},
    {"image-set-row-order-needs-the-pixels", "SetRowOrder of an image whose pixels were moved away.",
     "An image without its pixels gives -7 and one report line, also for the -1 that it tells.",
     RefusesWithoutItsPixels},
};

}  // namespace

extern const Family ImageRowsFamily = {"images", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
