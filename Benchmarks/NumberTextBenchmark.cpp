// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Helpers/NumberText.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::bench;

// Numbers as settings have them, half of them with more digits than are kept, a few in exponent form.
const std::vector<double>& GetNumbers()
{
    static const auto numbers = []
    {
        std::mt19937_64 generator(4711);
        std::uniform_int_distribution<int> whole(-2'000'000, 2'000'000);
        std::uniform_real_distribution<double> exponent(-8, 9);
        std::vector<double> made;
        for (int pair = 0; pair < 512; ++pair)
        {
            made.push_back(whole(generator) / 1024.0);
            made.push_back(std::pow(10.0, exponent(generator)));
        }
        return made;
    }();
    return numbers;
}

std::string_view PrintLg(char (&text)[108], double value)
{
    const int length = std::snprintf(text, sizeof text, "%Lg", static_cast<long double>(value));
    return {text, static_cast<std::size_t>(length)};
}

void WriteNumber(benchmark::State& state, std::int64_t)
{
    const auto& numbers = GetNumbers();
    char expected[108];
    for (const double number : numbers)
    {
        if (NumberText(number).Get() != PrintLg(expected, number))
            state.SkipWithError("another text was written");
    }
    std::size_t next = 0;
    for (auto _ : state)
    {
        const NumberText text(numbers[next]);
        benchmark::DoNotOptimize(text.Get());
        benchmark::ClobberMemory();
        next = (next + 1) % numbers.size();
    }
}

void WriteNumberByToChars(benchmark::State& state, std::int64_t)
{
    const auto& numbers = GetNumbers();
    std::size_t next = 0;
    for (auto _ : state)
    {
        char text[32];
        *std::to_chars(text, text + 31, numbers[next], std::chars_format::general, 6).ptr = '\0';
        benchmark::DoNotOptimize(&text[0]);
        benchmark::ClobberMemory();
        next = (next + 1) % numbers.size();
    }
}

void WriteNumberByPrintf(benchmark::State& state, std::int64_t)
{
    const auto& numbers = GetNumbers();
    std::size_t next = 0;
    for (auto _ : state)
    {
        char text[108];
        PrintLg(text, numbers[next]);
        benchmark::DoNotOptimize(&text[0]);
        benchmark::ClobberMemory();
        next = (next + 1) % numbers.size();
    }
}

const Comparisons Rows = {
    {.name = "NumberText/Write",
     .ours = WriteNumber,
     .peer = "std::to_chars",
     .theirs = WriteNumberByToChars,
     .goal = 0.4},
    {.name = "NumberText/WriteAsPrintf",
     .ours = WriteNumber,
     .peer = "snprintf(\"%Lg\")",
     .theirs = WriteNumberByPrintf,
     .goal = 0.12},
};

}  // namespace
