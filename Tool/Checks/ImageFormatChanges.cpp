// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageChanges.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tvx::check
{

namespace
{

Result SetFormat(const Ref<IImage>& image, std::int32_t format)
{
    const host::WriteLock lock(*image);
    return image->SetColorFormat(format);
}

// The plain way of what the module may do in a clever one.
ImageBytes ReverseChannels(const ImageShape& shape, ImageBytes bytes)
{
    const auto element = GetElementSize(shape);
    for (std::size_t pixel = 0; pixel < bytes.size(); pixel += 3 * element)
        std::swap_ranges(&bytes[pixel], &bytes[pixel] + element, &bytes[pixel] + 2 * element);
    return bytes;
}

// The pixels are compared in their order, so that a row that reaches into its neighbours is seen.
void ExpectReversedChannels(Trial& trial, ImageShape shape)
{
    const auto image = MakeCountingImage(trial, shape);
    const std::int32_t other = shape.format == 1 ? 3 : 1;
    trial.Gives("SetColorFormat of " + Show(shape), SetFormat(image, other), TVX_OK);
    const auto expected = ReverseChannels(shape, CountBytes(shape));
    shape.format = other;
    trial.Equal("the description afterwards", Describe(*image), Describe(shape));
    ExpectPixels(trial, Show(shape) + " with reversed channels", ReadPixels(trial, image, shape), expected);
}

void ReversesChannelsOfOneByte(Trial& trial)
{
    for (std::int32_t width = 1; width <= 130; ++width)
        ExpectReversedChannels(trial, {width, 3, 1, DataType::OneByte, 0});
}

void ReversesChannelsOfTwoBytes(Trial& trial)
{
    for (std::int32_t width = 1; width <= 130; ++width)
        ExpectReversedChannels(trial, {width, 3, 1, DataType::TwoBytes, 0});
}

void ReversesChannelsOfFourBytes(Trial& trial)
{
    for (std::int32_t width = 1; width <= 130; ++width)
        ExpectReversedChannels(trial,
                               {width, 3, 1, width % 2 == 0 ? DataType::FourBytes : DataType::FourBytesFloat, 0});
}

void ReversesChannelsInBothDirections(Trial& trial)
{
    ExpectReversedChannels(trial, {4, 2, 3, 0, 0});
    const ImageShape shape = {4, 2, 1, 0, 0};
    const auto image = MakeCountingImage(trial, shape);
    trial.Gives("SetColorFormat from 1 to 3", SetFormat(image, 3), TVX_OK);
    trial.Gives("SetColorFormat from 3 to 1", SetFormat(image, 1), TVX_OK);
    ExpectUnchanged(trial, image, shape);
}

void TakesTheSameFormat(Trial& trial)
{
    for (const std::int32_t format : {0, 1, 2, 3})
    {
        for (const std::int32_t type : {0, 1, 2, 3, 4})
        {
            const ImageShape shape = {3, 2, format, type, 0};
            const auto image = MakeCountingImage(trial, shape);
            trial.Gives("SetColorFormat to the format that is there", SetFormat(image, format), TVX_OK);
            ExpectUnchanged(trial, image, shape);
        }
    }
}

void RefusesFormatsOfOtherChannels(Trial& trial)
{
    constexpr std::pair<std::int32_t, std::int32_t> refused[] = {{0, 1}, {0, 3}, {2, 1}, {2, 3}, {0, 2},  {1, 0},
                                                                 {1, 2}, {3, 0}, {3, 2}, {1, 7}, {3, -1}, {0, 9}};
    for (const auto& [from, to] : refused)
    {
        const ImageShape shape = {3, 2, from, 0, 0};
        const auto image = MakeCountingImage(trial, shape);
        const auto call = [&image, wanted = to] { return SetFormat(image, wanted); };
        trial.Reports("SetColorFormat from " + std::to_string(from) + " to " + std::to_string(to), "TVX_CHECK_PRECOND",
                      TVX_E_PRECONDITION, call);
        ExpectUnchanged(trial, image, shape);
    }
}

void RefusesElementsOfEightBytes(Trial& trial)
{
    const ImageShape shape = {3, 2, 1, DataType::EightBytes, 0};
    const auto image = MakeCountingImage(trial, shape);
    trial.Gives("SetColorFormat of elements of 8 bytes", SetFormat(image, 3), TVX_E_UNSUPPORTED_FORMAT);
    ExpectUnchanged(trial, image, shape);
}

void RefusesElementsOfUnknownSize(Trial& trial)
{
    const auto image = MakeImage(trial, {.format = 1, .type = 9});
    trial.Reports("SetColorFormat of elements of no known size", "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                  [&] { return SetFormat(image, 3); });
    trial.Equal("GetColorFormat afterwards", image->GetColorFormat(), 1);
}

void RefusesEmptyRowsForChannels(Trial& trial)
{
    constexpr ImageShape shapes[] = {{0, 1, 1, 0, 0}, {0, 5, 1, 4, 0}, {-3, 2, 1, 0, 0}};
    for (const auto& shape : shapes)
    {
        const auto image = MakeImage(trial, shape);
        trial.Reports("SetColorFormat of " + Show(shape), "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                      [&] { return SetFormat(image, 3); });
        trial.Equal("GetColorFormat afterwards", image->GetColorFormat(), 1);
    }
}

void StoresTheFormatWithoutRows(Trial& trial)
{
    constexpr ImageShape shapes[] = {{4, 0, 1, 0, 0}, {4, -2, 1, 0, 0}, {0, 0, 1, 0, 0}, {4, 0, 1, 4, 0}};
    for (const auto& shape : shapes)
    {
        const auto image = MakeImage(trial, shape);
        trial.Gives("SetColorFormat of " + Show(shape), SetFormat(image, 3), TVX_OK);
        trial.Equal("GetColorFormat afterwards", image->GetColorFormat(), 3);
    }
}

constexpr ImageChange Change = {"SetColorFormat", &IImage::SetColorFormat, 1};

void RefusesWithoutTheWriteLock(Trial& trial)
{
    ExpectNeedsWriteLock(trial, Change);
}

void RefusesWithoutItsPixels(Trial& trial)
{
    ExpectNeedsPixels(trial, Change);
}

constexpr Check Checks[] = {
    {"image-set-color-format-reverses-one-byte", "Images with channels of 1 byte, of widths from 1 to 130.",
     "Changing between the formats 1 and 3 gives every pixel its three channels in the reverse order.",
     ReversesChannelsOfOneByte},
    {"image-set-color-format-reverses-two-bytes", "Images with channels of 2 bytes, of widths from 1 to 130.",
     "The channels change places as a whole: the bytes within one stay in their order.", ReversesChannelsOfTwoBytes},
    {"image-set-color-format-reverses-four-bytes", "Images with channels of 4 bytes, of widths from 1 to 130.",
     "The channels change places as a whole, numbers with a floating point like others.", ReversesChannelsOfFourBytes},
    {"image-set-color-format-goes-both-ways", "An image goes from 3 to 1, another one from 1 to 3 and back.",
     "Both directions do the same, so that two changes give the first pixels back.", ReversesChannelsInBothDirections},
    {"image-set-color-format-takes-the-same", "Images of each format and type are set to the format that they have.",
     "The format that is there gives 0 and changes nothing, whatever format and type it is.", TakesTheSameFormat},
    {"image-set-color-format-refuses-other-channels", "Changes from or to a format that has not three channels.",
     "Only the formats 1 and 3 change into each other; anything else gives -7, one report line and no change.",
     RefusesFormatsOfOtherChannels},
    {"image-set-color-format-refuses-eight-bytes", "An image with channels of 8 bytes.",
     "Channels of 8 bytes give -11 without a report line, and nothing is changed.", RefusesElementsOfEightBytes},
    {"image-set-color-format-refuses-unknown-sizes", "An image with an unknown data type.",
     "A row is looked at before its channels: one of negative length gives -1 and one report line.",
     RefusesElementsOfUnknownSize},
    {"image-set-color-format-refuses-empty-rows",
     "Images with rows but nothing in them, also with channels of 8 bytes.",
     "A row of no bytes gives -1 and one report line, and the format stays.", RefusesEmptyRowsForChannels},
    {"image-set-color-format-needs-no-rows", "Images without rows.",
     "Where there is no row the format is changed and nothing else.", StoresTheFormatWithoutRows},
    {"image-set-color-format-needs-the-write-lock", "SetColorFormat without a lock and under a read lock.",
     "Only the writer may change an image: else -7, one report line and no change.", RefusesWithoutTheWriteLock},
    {"image-set-color-format-needs-the-pixels", "SetColorFormat of an image whose pixels were moved away.",
     "An image without its pixels gives -7 and one report line, also for the -1 that it tells.",
     RefusesWithoutItsPixels},
};

}  // namespace

extern const Family ImageFormatFamily = {"images", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
