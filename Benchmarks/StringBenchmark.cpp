// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Interfaces/IString.h"
#include "Interfaces/IVariant.h"

#include <memory>
#include <string>
#include <variant>

namespace
{

using namespace tvx;
using namespace tvx::bench;

std::string MakeText(std::int64_t size)
{
    return std::string("abcdefghijklmnopqrstuvwxyz").substr(0, static_cast<std::size_t>(size));
}

void MakeString(benchmark::State& state, std::int64_t size)
{
    const auto factory = GetExport<IStringFactory>("com.talvere.general.tvx.GenericStringImplementation/1.0");
    const auto text = MakeText(size);
    Ref<IString> string;
    if (TVX_FAILED(factory->CreateString(text.c_str(), string.Receive())) || string->GetText() != text)
        return state.SkipWithError("the string was not made");
    for (auto _ : state)
    {
        Ref<IString> made;
        factory->CreateString(text.c_str(), made.Receive());
        benchmark::DoNotOptimize(made);
    }
}

void MakeSharedString(benchmark::State& state, std::int64_t size)
{
    const auto text = MakeText(size);
    for (auto _ : state)
    {
        auto made = std::make_shared<const std::string>(text.c_str());
        benchmark::DoNotOptimize(made);
    }
}

// What variants hold, with the types that the standard library has for it.
using SharedVariant = std::variant<bool, std::int32_t, float, double, std::string, std::shared_ptr<void>>;

constexpr std::int32_t Number = 42;

void MakeVariant(benchmark::State& state, std::int64_t)
{
    const auto factory = GetExport<IVariantFactory>("com.talvere.general.tvx.GenericVariantImplementation/1.1");
    Ref<IVariant> variant;
    std::int32_t value = 0;
    factory->CreateInt(Number, variant.Receive());
    if (!variant || TVX_FAILED(variant->GetInt(&value)) || value != Number)
        return state.SkipWithError("the variant was not made");
    for (auto _ : state)
    {
        Ref<IVariant> made;
        factory->CreateInt(Number, made.Receive());
        benchmark::DoNotOptimize(made);
    }
}

void MakeSharedVariant(benchmark::State& state, std::int64_t)
{
    for (auto _ : state)
    {
        auto made = std::make_shared<const SharedVariant>(Number);
        benchmark::DoNotOptimize(made);
    }
}

Comparison MakeAndDestroy(std::int64_t size, double goal, double limit = 0)
{
    return {.name = "String/MakeAndDestroy",
            .size = size,
            .ours = MakeString,
            .peer = "make_shared of a const std::string",
            .theirs = MakeSharedString,
            .goal = goal,
            .limit = limit};
}

const Comparisons Rows = {
    MakeAndDestroy(24, 0.70),
    MakeAndDestroy(5, 1.0, 1.15),  // so short a text the peer keeps without a second allocation
    // Both sides spend most in one allocation; ours has calls through tables and the number of the thread besides.
    {.name = "Variant/MakeAndDestroy",
     .ours = MakeVariant,
     .peer = "make_shared of a std::variant",
     .theirs = MakeSharedVariant,
     .goal = 0.9,
     .limit = 1.5},
};

}  // namespace
