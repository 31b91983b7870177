// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageSlots.h"

#include <algorithm>
#include <cstring>

namespace tvx::check
{

namespace
{

void ExpectAmong(Trial& trial, const std::string& what, IImageBase& image, const std::vector<std::int32_t>& expected)
{
    std::vector<std::int32_t> numbers;
    const auto read = [&]
    {
        numbers = {image.GetWidth(),    image.GetHeight(),    image.GetColorFormat(), image.GetDataType(),
                   image.GetRowOrder(), image.GetPixelSize(), image.GetStride()};
    };
    static_cast<void>(trial.TakeOutput(read));  // of a wrong slot, which may refuse with a report
    const auto isExpected = [&](std::int32_t number)
    { return std::find(expected.begin(), expected.end(), number) != expected.end(); };
    const auto strangers =
        numbers.size() - static_cast<std::size_t>(std::count_if(numbers.begin(), numbers.end(), isExpected));
    trial.Expect(strangers <= 1, "the numbers of " + what + " to be of " + Show(expected), Show(numbers));
}

}  // namespace

Ref<IImage> MakeNumberedImage(Trial& trial)
{
    using Numbers = ImageNumbers;
    return MakeImage(trial, Numbers::Width, Numbers::Height, Numbers::Format, Numbers::Type, Numbers::Order);
}

Ref<IConstImage> MakeNumberedConstImage(Trial& trial)
{
    const auto factory = trial.Get<IImageFactory>(ImageExport);
    const auto image = MakeNumberedImage(trial);
    Ref<IConstImage> made;
    factory->MakeConst(image.Get(), made.Receive());
    if (!Query<IConstImage>(made))
        factory->CreateConstCopy(image.Get(), made.Receive());
    static_cast<void>(trial.TakeOutput());  // the reports of an operation that refused
    return trial.QueryAs<IConstImage>(made, "an image that never changes");
}

void ExpectNumbers(Trial& trial, const std::string& what, IImageBase& image)
{
    using Numbers = ImageNumbers;
    ExpectAmong(trial, what, image,
                {Numbers::Width, Numbers::Height, Numbers::Format, Numbers::Type, Numbers::Order, Numbers::PixelSize,
                 Numbers::Stride});
}

void ExpectMoved(Trial& trial, const std::string& what, IImageBase& image)
{
    ExpectAmong(trial, what, image, {-1});
}

void WritePixels(IImage& image, const std::vector<std::uint8_t>& bytes)
{
    for (const auto lock : LockOperations)
    {
        (image.*lock)();
        void* const pixels = image.GetWritableData();
        if (IsAddress(pixels))
            std::memcpy(pixels, bytes.data(), bytes.size());
    }
}

std::vector<std::uint8_t> ReadPixels(IImage& image, std::size_t count)
{
    std::vector<std::uint8_t> bytes;
    for (const auto lock : LockOperations)
    {
        (image.*lock)();
        const auto* const pixels = static_cast<const std::uint8_t*>(image.GetData());
        if (IsAddress(pixels))
            bytes.assign(pixels, pixels + count);
    }
    return bytes;
}

}  // namespace tvx::check
