// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/IImage.h"

#include <libyuv/planar_functions.h>
#include <opencv2/core.hpp>

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

// The size of a row is the height of its image.
constexpr std::int64_t FullHd = 1080;
constexpr std::int64_t UltraHd = 4320;

// So many images of full HD are as large together as one of ultra HD: no cache holds them, as none holds what a camera gives.
constexpr std::int32_t Many = 16;

std::int32_t GetWidth(std::int64_t height)
{
    return static_cast<std::int32_t>(height * 16 / 9);
}

std::size_t GetSize(std::int64_t height, std::int32_t type)
{
    return static_cast<std::size_t>(GetWidth(height)) * static_cast<std::size_t>(height) * 3 << type;
}

Ref<IImageFactory> GetFactory()
{
    return GetExport<IImageFactory>("com.talvere.general.tvx.GenericImageImplementation/1.0");
}

// Neighbours, pixels and rows differ.
void FillBytes(std::uint8_t* bytes, std::size_t size)
{
    for (std::size_t at = 0; at < size; ++at)
        bytes[at] = static_cast<std::uint8_t>(at * 7 + at / 4093);
}

// Of three channels, locked for writing. Kept: filling it takes longer than what is measured. Those of other numbers are others.
const Ref<IImage>& GetImage(std::int64_t height, std::int32_t type, std::int32_t number = 0)
{
    static std::map<std::tuple<std::int64_t, std::int32_t, std::int32_t>, Ref<IImage>> images;
    auto& image = images[{height, type, number}];
    if (image)
        return image;
    GetFactory()->Create(GetWidth(height), static_cast<std::int32_t>(height), ColorFormat::ThreeChannels, type, 0,
                         image.Receive());
    image->LockWrite();
    FillBytes(static_cast<std::uint8_t*>(image->GetWritableData()), GetSize(height, type));
    return image;
}

// What the peers work on, of the same size. Kept as well.
const cv::Mat& GetMatrix(std::int64_t height, std::int32_t type, std::int32_t number = 0)
{
    static std::map<std::tuple<std::int64_t, std::int32_t, std::int32_t>, cv::Mat> matrices;
    auto& matrix = matrices[{height, type, number}];
    if (!matrix.empty())
        return matrix;
    constexpr int depths[] = {CV_8UC3, CV_16UC3, CV_32SC3};
    matrix.create(static_cast<int>(height), GetWidth(height), depths[type]);
    FillBytes(matrix.data, GetSize(height, type));
    return matrix;
}

// Whether the elements of the first pixel change their places.
template <class Work>
bool ReversesChannels(const void* pixels, std::int32_t type, const Work& work)
{
    const auto size = std::size_t{1} << type;
    std::uint8_t before[12];
    std::memcpy(before, pixels, 3 * size);
    work();
    const auto* const after = static_cast<const std::uint8_t*>(pixels);
    return std::memcmp(after, before + 2 * size, size) == 0 && std::memcmp(after + size, before + size, size) == 0 &&
           std::memcmp(after + 2 * size, before, size) == 0;
}

template <std::int32_t Type>
void ReverseChannels(benchmark::State& state, std::int64_t height)
{
    const auto& image = GetImage(height, Type);
    const auto reverse = [&image] { image->SetColorFormat(image->GetColorFormat() == 1 ? 3 : 1); };
    if (!ReversesChannels(image->GetData(), Type, reverse))
        state.SkipWithError("the channels are not reversed");
    for (auto _ : state)
        reverse();
}

void ReverseChannelsOfPeer(benchmark::State& state, std::int64_t height)
{
    const auto& matrix = GetMatrix(height, DataType::OneByte);
    const auto stride = static_cast<int>(matrix.step);
    const auto reverse = [&]
    { libyuv::RAWToRGB24(matrix.data, stride, matrix.data, stride, matrix.cols, matrix.rows); };
    if (!ReversesChannels(matrix.data, DataType::OneByte, reverse))
        state.SkipWithError("the peer does not reverse the channels");
    for (auto _ : state)
        reverse();
}

// One reading and one writing of every byte where it stands: what work on all pixels takes at least.
template <std::int32_t Type>
void PassInPlace(benchmark::State& state, std::int64_t height)
{
    auto* const bytes = GetMatrix(height, Type).data;
    const auto size = GetSize(height, Type);
    for (auto _ : state)
    {
        for (std::size_t at = 0; at < size; ++at)
            bytes[at] = static_cast<std::uint8_t>(~bytes[at]);
        benchmark::ClobberMemory();
    }
}

// Whether what was the last row is the first one afterwards.
bool ReversesRows(const void* pixels, std::size_t stride, std::size_t size, const std::function<void()>& work)
{
    const auto* const rows = static_cast<const std::uint8_t*>(pixels);
    const std::basic_string<std::uint8_t> last(rows + size - stride, stride);
    work();
    return std::memcmp(rows, last.data(), stride) == 0;
}

// Of as many images, one after the other.
template <std::int32_t Count>
void ReverseRows(benchmark::State& state, std::int64_t height)
{
    std::vector<Ref<IImage>> images;
    for (std::int32_t number = 0; number < Count; ++number)
        images.push_back(GetImage(height, DataType::OneByte, number));
    const auto reverse = [](const Ref<IImage>& image) { image->SetRowOrder(image->GetRowOrder() ^ 1); };
    const auto& first = images.front();
    if (!ReversesRows(first->GetData(), static_cast<std::size_t>(first->GetStride()),
                      GetSize(height, DataType::OneByte), [&] { reverse(first); }))
        state.SkipWithError("the rows are not reversed");
    std::size_t at = 0;
    for (auto _ : state)
        reverse(images[at++ % Count]);
}

template <std::int32_t Count>
void ReverseRowsOfPeer(benchmark::State& state, std::int64_t height)
{
    std::vector<cv::Mat> matrices;
    for (std::int32_t number = 0; number < Count; ++number)
        matrices.push_back(GetMatrix(height, DataType::OneByte, number));
    const auto reverse = [](cv::Mat& matrix) { cv::flip(matrix, matrix, 0); };
    auto& first = matrices.front();
    if (!ReversesRows(first.data, first.step, GetSize(height, DataType::OneByte), [&] { reverse(first); }))
        state.SkipWithError("the peer does not reverse the rows");
    std::size_t at = 0;
    for (auto _ : state)
        reverse(matrices[at++ % Count]);
}

void CopyImage(benchmark::State& state, std::int64_t height)
{
    const auto factory = GetFactory();
    Ref<IConstImage> image;
    factory->CreateConstCopy(GetImage(height, DataType::OneByte).Get(), image.Receive());
    GetImage(height, DataType::OneByte)->LockWrite();
    Ref<IImage> copy;
    factory->CreateCopy(image.Get(), copy.Receive());
    copy->LockRead();
    if (std::memcmp(copy->GetData(), image->GetData(), GetSize(height, DataType::OneByte)) != 0)
        state.SkipWithError("the copy differs");
    for (auto _ : state)
    {
        copy = nullptr;
        factory->CreateCopy(image.Get(), copy.Receive());
    }
}

void CopyMatrix(benchmark::State& state, std::int64_t height)
{
    const auto& matrix = GetMatrix(height, DataType::OneByte);
    cv::Mat copy = matrix.clone();
    for (auto _ : state)
    {
        copy.release();
        copy = matrix.clone();
    }
}

void CreateImage(benchmark::State& state, std::int64_t height)
{
    const auto factory = GetFactory();
    for (auto _ : state)
    {
        Ref<IImage> image;
        factory->Create(GetWidth(height), static_cast<std::int32_t>(height), 1, 0, 0, image.Receive());
    }
}

// A processor that permutes bytes across a whole vector does it in half the time.
double GetGoalOfChannels()
{
    return __builtin_cpu_supports("avx512vbmi") ? 0.5 : 0.8;
}

const Comparisons Rows = {
    {.name = "Image/ReverseChannels",
     .size = FullHd,
     .ours = ReverseChannels<DataType::OneByte>,
     .peer = "libyuv RAWToRGB24 in place",
     .theirs = ReverseChannelsOfPeer,
     .goal = GetGoalOfChannels()},
    {.name = "Image/ReverseChannels8",
     .size = UltraHd,
     .ours = ReverseChannels<DataType::OneByte>,
     .peer = "one pass in place",
     .theirs = PassInPlace<DataType::OneByte>,
     .goal = 1.1},
    {.name = "Image/ReverseChannels16",
     .size = UltraHd,
     .ours = ReverseChannels<DataType::TwoBytes>,
     .peer = "one pass in place",
     .theirs = PassInPlace<DataType::TwoBytes>,
     .goal = 1.1},
    {.name = "Image/ReverseChannels32",
     .size = UltraHd,
     .ours = ReverseChannels<DataType::FourBytes>,
     .peer = "one pass in place",
     .theirs = PassInPlace<DataType::FourBytes>,
     .goal = 1.1},
    // Both sides move the same bytes, and wait for memory.
    {.name = "Image/ReverseRows",
     .size = FullHd,
     .ours = ReverseRows<Many>,
     .peer = "OpenCV flip in place",
     .theirs = ReverseRowsOfPeer<Many>,
     .goal = 0.77,
     .limit = 0.95},
    {.name = "Image/ReverseRowsInCache",
     .size = FullHd,
     .ours = ReverseRows<1>,
     .peer = "OpenCV flip in place",
     .theirs = ReverseRowsOfPeer<1>,
     .bound = Bound::None},
    {.name = "Image/ReverseRows",
     .size = UltraHd,
     .ours = ReverseRows<1>,
     .peer = "OpenCV flip in place",
     .theirs = ReverseRowsOfPeer<1>,
     .goal = 0.9},
    {.name = "Image/Copy",
     .size = UltraHd,
     .ours = CopyImage,
     .peer = "OpenCV clone",
     .theirs = CopyMatrix,
     .goal = 0.5},
    {.name = "Image/Create", .size = UltraHd, .ours = CreateImage, .peer = "", .bound = Bound::None},
};

}  // namespace
