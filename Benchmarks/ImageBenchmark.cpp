// SPDX-License-Identifier: MIT
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/IImage.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <shared_mutex>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

constexpr const char ImageExport[] = "com.talvere.general.tvx.GenericImageImplementation/1.0";

// 96 MB with three channels of a byte: larger than any cache.
constexpr std::int32_t Width = 8000;
constexpr std::int32_t Height = 4000;
constexpr std::size_t Size = std::size_t{3} * Width * Height;

Ref<IImage> MakeImage(std::int32_t width, std::int32_t height, std::int32_t type)
{
    Ref<IImage> image;
    GetExport<IImageFactory>(ImageExport)->Create(width, height, ColorFormat::ThreeChannels, type, 0, image.Receive());
    image->LockWrite();
    const auto size = static_cast<std::size_t>(image->GetStride()) * static_cast<std::size_t>(image->GetHeight());
    auto* const pixels = static_cast<std::uint8_t*>(image->GetWritableData());
    for (std::size_t at = 0; at < size; ++at)
        pixels[at] = static_cast<std::uint8_t>(at * 7);
    return image;
}

void SwapChannels(benchmark::State& state)
{
    const auto type = static_cast<std::int32_t>(state.range(0));
    const auto image = MakeImage(Width >> type, Height, type);
    const auto* const pixels = static_cast<const std::uint8_t*>(image->GetData());
    const auto last = pixels[(std::size_t{2} << type)];
    image->SetColorFormat(ColorFormat::ThreeChannelsReversed);
    if (pixels[0] != last)
        state.SkipWithError("the channels are not reversed");
    for (auto _ : state)
        image->SetColorFormat(image->GetColorFormat() == 1 ? 3 : 1);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Size));
}
BENCHMARK(SwapChannels)->Name("Image/SetColorFormat/96MB/type")->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

void FlipRows(benchmark::State& state)
{
    const auto image = MakeImage(Width, Height, 0);
    const auto* const pixels = static_cast<const std::uint8_t*>(image->GetData());
    const auto last = pixels[Size - Size / Height];
    image->SetRowOrder(1);
    if (pixels[0] != last)
        state.SkipWithError("the rows are not reversed");
    for (auto _ : state)
        image->SetRowOrder(image->GetRowOrder() + 1);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Size));
}
BENCHMARK(FlipRows)->Name("Image/SetRowOrder/96MB")->Unit(benchmark::kMillisecond);

// One reading and one writing of every byte where it stands: what no work on all pixels can undercut.
void PassInPlace(benchmark::State& state)
{
    const std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[Size]());
    for (auto _ : state)
    {
        for (std::size_t at = 0; at < Size; ++at)
            bytes[at] = static_cast<std::uint8_t>(~bytes[at]);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Size));
}
BENCHMARK(PassInPlace)->Name("Image/peer:in-place-pass/96MB")->Unit(benchmark::kMillisecond);

void CopyImage(benchmark::State& state)
{
    const auto factory = GetExport<IImageFactory>(ImageExport);
    const auto image = MakeImage(Width, Height, 0);
    Ref<IImage> first;
    factory->CreateCopy(image.Get(), first.Receive());
    image->LockRead();
    first->LockRead();
    if (std::memcmp(first->GetData(), image->GetData(), Size) != 0)
        state.SkipWithError("the copy differs");
    first = nullptr;
    image->Unlock();
    for (auto _ : state)
    {
        Ref<IImage> copy;
        factory->CreateCopy(image.Get(), copy.Receive());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Size));
}
BENCHMARK(CopyImage)->Name("Image/CreateCopy/96MB")->Unit(benchmark::kMillisecond);

void CopyMemory(benchmark::State& state)
{
    const std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[Size]());
    for (auto _ : state)
    {
        void* const copy = std::malloc(Size);
        benchmark::DoNotOptimize(std::memcpy(copy, bytes.get(), Size));
        std::free(copy);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Size));
}
BENCHMARK(CopyMemory)->Name("Image/CreateCopy/96MB/peer:malloc+memcpy")->Unit(benchmark::kMillisecond);

void CreateZeros(benchmark::State& state)
{
    const auto factory = GetExport<IImageFactory>(ImageExport);
    for (auto _ : state)
    {
        Ref<IImage> image;
        factory->Create(Width, Height, 1, 0, 0, image.Receive());
    }
}
BENCHMARK(CreateZeros)->Name("Image/Create/96MB");

// While this thread holds as many other images.
void LockAndUnlock(benchmark::State& state)
{
    std::vector<Ref<IImage>> others;
    for (std::int64_t count = 0; count < state.range(0); ++count)
        others.push_back(MakeImage(1, 1, 0));  // left locked
    const auto image = MakeImage(1, 1, 0);
    for (auto _ : state)
    {
        image->LockRead();
        image->Unlock();
    }
    if (image->IsLocked())
        state.SkipWithError("the image is locked");
}
BENCHMARK(LockAndUnlock)->Name("Image/LockReadAndUnlock/others")->Arg(0)->Arg(10000);

void LockSharedMutex(benchmark::State& state)
{
    std::shared_mutex mutex;
    for (auto _ : state)
    {
        mutex.lock_shared();
        mutex.unlock_shared();
    }
}
BENCHMARK(LockSharedMutex)->Name("Image/LockReadAndUnlock/peer:shared_mutex");

}  // namespace
