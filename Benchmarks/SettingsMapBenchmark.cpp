// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/SettingsMaps.h"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>

namespace
{

using namespace tvx;
using namespace tvx::bench;

bool Holds(ISimpleMap& map, const std::string& key, std::string_view value)
{
    Ref<IString> text;
    return map.GetString(key.c_str(), text.Receive()) == TVX_S_VALUE && text->GetText() == value;
}

void GetString(benchmark::State& state, std::int64_t size)
{
    auto& map = GetFilledMap(size);
    if (!Holds(map, GetShuffledKeys(size)[0], ValueText))
        state.SkipWithError("another text was read");
    KeyCycle keys(size);
    for (auto _ : state)
    {
        Ref<IString> text;
        map.GetString(keys.Next().c_str(), text.Receive());
        benchmark::DoNotOptimize(text.Get());
    }
}

void GetStringOfPlainMap(benchmark::State& state, std::int64_t size)
{
    auto& map = GetFilledPlainMap(size);
    KeyCycle keys(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::make_shared<const std::string>(map.find(keys.Next().c_str())->second));
}

void GetIntOfPlainMap(benchmark::State& state, std::int64_t size)
{
    GetIntsOfOther(state, GetFilledPlainMap(size), size);
}

void SetInt(benchmark::State& state, std::int64_t size)
{
    auto map = CloneFilledMap(size);
    map->SetInt(GetShuffledKeys(size)[0].c_str(), -17);
    if (!Holds(*map, GetShuffledKeys(size)[0], "-17"))
        state.SkipWithError("nothing was written");
    KeyCycle keys(size);
    std::int32_t value = 0;
    for (auto _ : state)
        map->SetInt(keys.Next().c_str(), value += 7);
}

void SetIntOfPlainMap(benchmark::State& state, std::int64_t size)
{
    auto map = GetFilledPlainMap(size);
    KeyCycle keys(size);
    std::int32_t value = 0;
    for (auto _ : state)
    {
        char text[64];
        std::snprintf(text, sizeof text, "%d", value += 7);
        map.find(keys.Next().c_str())->second = text;
    }
}

void SetDouble(benchmark::State& state, std::int64_t size)
{
    auto map = CloneFilledMap(size);
    map->SetDouble(GetShuffledKeys(size)[0].c_str(), 0.375);
    if (!Holds(*map, GetShuffledKeys(size)[0], "0.375"))
        state.SkipWithError("nothing was written");
    KeyCycle keys(size);
    double value = 0.0;
    for (auto _ : state)
        map->SetDouble(keys.Next().c_str(), value += 0.125);
}

void SetDoubleOfPlainMap(benchmark::State& state, std::int64_t size)
{
    auto map = GetFilledPlainMap(size);
    KeyCycle keys(size);
    double value = 0.0;
    for (auto _ : state)
    {
        char text[108];
        std::snprintf(text, sizeof text, "%Lg", static_cast<long double>(value += 0.125));
        map.find(keys.Next().c_str())->second = text;
    }
}

void Insert(benchmark::State& state, const Keys& keys)
{
    if (!Holds(*MakeFilledMap(keys), keys.back(), ValueText))
        state.SkipWithError("an entry is missing");
    for (auto _ : state)
        benchmark::DoNotOptimize(MakeFilledMap(keys).Get());
}

void InsertIntoPlainMap(benchmark::State& state, const Keys& keys)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(MakeFilledPlainMap(keys).size());
}

void InsertSorted(benchmark::State& state, std::int64_t size)
{
    Insert(state, GetSortedKeys(size));
}

void InsertSortedIntoPlainMap(benchmark::State& state, std::int64_t size)
{
    InsertIntoPlainMap(state, GetSortedKeys(size));
}

void InsertRandom(benchmark::State& state, std::int64_t size)
{
    Insert(state, GetShuffledKeys(size));
}

void InsertRandomIntoPlainMap(benchmark::State& state, std::int64_t size)
{
    InsertIntoPlainMap(state, GetShuffledKeys(size));
}

void Iterate(benchmark::State& state, std::int64_t size)
{
    auto& map = GetFilledMap(size);
    std::int64_t visited = 0;
    for (auto _ : state)
    {
        visited = 0;
        Ref<ISimpleMapIterator> iterator;
        map.GetIterator(iterator.Receive());
        for (const char* key = iterator->GetKey(); key != nullptr; iterator->Next(), key = iterator->GetKey())
        {
            benchmark::DoNotOptimize(*key);
            benchmark::DoNotOptimize(*iterator->GetValue());
            ++visited;
        }
    }
    if (visited != size)
        state.SkipWithError("not every entry was visited");
}

void IteratePlainMap(benchmark::State& state, std::int64_t size)
{
    auto& map = GetFilledPlainMap(size);
    for (auto _ : state)
    {
        for (const auto& [key, value] : map)
        {
            benchmark::DoNotOptimize(*key.c_str());
            benchmark::DoNotOptimize(*value.c_str());
        }
    }
}

// What is taken is always the same, whatever else the map holds.
constexpr std::int64_t Taken = 100;
constexpr char TakenPath[] = "Wanted";

std::string GetTakenKey(std::int64_t number)
{
    return std::string(TakenPath) + "\\Width" + std::to_string(number);
}

void GetSubMap(benchmark::State& state, std::int64_t size)
{
    auto map = CloneFilledMap(size);
    for (std::int64_t number = 0; number < Taken; ++number)
        map->SetString(GetTakenKey(number).c_str(), ValueText);
    Ref<ISimpleMap> below;
    for (auto _ : state)
        map->GetSubMap(TakenPath, below.Receive());
    if (!Holds(*below, "Width99", ValueText))
        state.SkipWithError("an entry is missing");
}

void GetSubMapOfPlainMap(benchmark::State& state, std::int64_t size)
{
    auto map = GetFilledPlainMap(size);
    for (std::int64_t number = 0; number < Taken; ++number)
        map[GetTakenKey(number)] = ValueText;
    const std::string prefix = std::string(TakenPath) + "\\";
    for (auto _ : state)
    {
        PlainMap below;
        for (auto entry = map.lower_bound(prefix); entry != map.end() && entry->first.starts_with(prefix); ++entry)
            below.emplace_hint(below.end(), entry->first.substr(prefix.size()), entry->second);
        benchmark::DoNotOptimize(below.size());
    }
}

void Clone(benchmark::State& state, std::int64_t size)
{
    if (!Holds(*CloneFilledMap(size), GetShuffledKeys(size).back(), ValueText))
        state.SkipWithError("an entry is missing");
    for (auto _ : state)
        benchmark::DoNotOptimize(CloneFilledMap(size).Get());
}

void CopyPlainMap(benchmark::State& state, std::int64_t size)
{
    auto& map = GetFilledPlainMap(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(PlainMap(map).size());
}

double GetBytesInUse()
{
    const auto heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

// The bytes that an entry takes, in so many maps that what malloc keeps for later hardly counts.
template <class Make>
void CountBytes(benchmark::State& state, std::int64_t size, const Make& make)
{
    const auto& keys = GetShuffledKeys(size);
    const auto count = 100'000 / size;
    std::vector<decltype(make(keys))> maps;
    maps.reserve(static_cast<std::size_t>(count));
    double bytes = 0;
    for (auto _ : state)
    {
        maps.clear();
        const auto before = GetBytesInUse();
        for (std::int64_t made = 0; made < count; ++made)
            maps.push_back(make(keys));
        bytes = GetBytesInUse() - before;
    }
    state.counters["bytes"] = bytes / static_cast<double>(count * size);
}

void CountBytesOfMap(benchmark::State& state, std::int64_t size)
{
    CountBytes(state, size, MakeFilledMap);
}

void CountBytesOfPlainMap(benchmark::State& state, std::int64_t size)
{
    CountBytes(state, size, [](const Keys& keys) { return std::make_unique<PlainMap>(MakeFilledPlainMap(keys)); });
}

struct Operation
{
    const char* name;
    Work ours;
    const char* peer;
    Work theirs;
    Bound bound;
    double goals[3];   // for 10, 1,000 and 100,000 entries; 0 for none
    double limits[3];  // where the goal is out of reach, else 0
};

// A text out of ten entries costs mostly the new string, on both sides; one out of a large map waits for memory. A copy of ten
// entries is mostly the object and its first block.
constexpr Operation Operations[] = {
    {"GetString",
     GetString,
     "std::map + make_shared",
     GetStringOfPlainMap,
     Bound::Ratio,
     {0.9, 0.35, 0.25},
     {1.1, 0, 0.3}},
    {"GetInt", GetInts, "std::map + atoi", GetIntOfPlainMap, Bound::Ratio, {0.5, 0.2, 0.2}, {}},
    {"SetInt", SetInt, "std::map + snprintf", SetIntOfPlainMap, Bound::Ratio, {0.45, 0.25, 0.25}, {}},
    {"SetDouble", SetDouble, "std::map + snprintf(\"%Lg\")", SetDoubleOfPlainMap, Bound::Ratio, {0.3, 0.25, 0.3}, {}},
    {"InsertSorted", InsertSorted, "std::map", InsertSortedIntoPlainMap, Bound::Ratio, {0.6, 0.4, 0.45}, {}},
    {"InsertRandom", InsertRandom, "std::map", InsertRandomIntoPlainMap, Bound::Ratio, {0.6, 0.4, 0.45}, {}},
    {"Iterate", Iterate, "std::map", IteratePlainMap, Bound::Ratio, {0, 1.0, 1.0}, {}},
    {"GetSubMap", GetSubMap, "copy of a range of a std::map", GetSubMapOfPlainMap, Bound::Ratio, {0.5, 0.5, 0.5}, {}},
    {"Clone", Clone, "copy of a std::map", CopyPlainMap, Bound::Ratio, {0.5, 0.5, 0.5}, {0.55, 0, 0}},
    {"BytesPerEntry", CountBytesOfMap, "std::map", CountBytesOfPlainMap, Bound::Bytes, {1.0, 0.85, 0.85}, {}},
};

constexpr std::int64_t Sizes[] = {10, 1000, 100'000};

Comparison MakeRow(const Operation& operation, int size)
{
    const double goal = operation.goals[size];
    return {.name = std::string("SettingsMap/") + operation.name,
            .size = Sizes[size],
            .ours = operation.ours,
            .peer = operation.peer,
            .theirs = operation.theirs,
            .goal = goal,
            .bound = goal == 0 ? Bound::None : operation.bound,
            .limit = operation.limits[size]};
}

std::vector<Comparison> MakeRows()
{
    std::vector<Comparison> rows;
    for (const auto& operation : Operations)
    {
        for (int size = 0; size < 3; ++size)
            rows.push_back(MakeRow(operation, size));
    }
    return rows;
}

const Comparisons Rows = MakeRows();

}  // namespace
