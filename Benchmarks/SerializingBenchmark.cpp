// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/SettingsMaps.h"
#include "Helpers/CountedImpl.h"
#include "Helpers/HandOut.h"
#include "Helpers/InterfaceList.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializer.h"

#include <cstring>

namespace
{

using namespace tvx;
using namespace tvx::bench;

// Takes everything and keeps only the number of texts and their first bytes.
class EmptyWriter final : public CountedImpl<EmptyWriter, ISerializer>
{
public:
    using Interfaces = InterfaceList<ISerializer, IObjectBase>;

    Result WriteNamedBool(const char*, bool) override { return TVX_OK; }
    Result WriteNamedInt(const char*, std::int32_t) override { return TVX_OK; }
    Result UnusedSlot9() override { return TVX_OK; }
    Result WriteNamedDouble(const char*, double) override { return TVX_OK; }
    Result WriteNamedString(const char*, const char*) override { return TVX_OK; }
    Result WriteNamedObject(const char*, IObjectBase*) override { return TVX_OK; }
    Result UnusedSlot13() override { return TVX_OK; }
    Result BeginArray(const char*) override { return TVX_OK; }
    Result UnusedSlot15() override { return TVX_OK; }
    Result UnusedSlot16() override { return TVX_OK; }
    Result UnusedSlot17() override { return TVX_OK; }
    Result UnusedSlot18() override { return TVX_OK; }
    Result WriteString(const char* text) override
    {
        ++count;
        sum += *text;
        return TVX_OK;
    }
    Result WriteObject(IObjectBase*) override { return TVX_OK; }
    Result UnusedSlot21() override { return TVX_OK; }
    Result EndArray() override { return TVX_OK; }

    std::int64_t count = 0;
    std::int64_t sum = 0;
};

// Gives the texts of a document in turn, each a string that was made before, so that only who reads is measured.
class TextReader final : public CountedImpl<TextReader, IDeserializer>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    explicit TextReader(const std::vector<Ref<IString>>& texts) : texts_(texts) {}

    Result ReadNamedBool(const char*, bool*) override { return TVX_E_FAIL; }
    Result ReadNamedInt(const char*, std::int32_t*) override { return TVX_E_FAIL; }
    Result UnusedSlot9() override { return TVX_E_FAIL; }
    Result ReadNamedDouble(const char*, double*) override { return TVX_E_FAIL; }
    Result ReadNamedString(const char*, IString**) override { return TVX_E_FAIL; }
    Result ReadNamedObject(const char*, IObjectBase**) override { return TVX_E_FAIL; }
    Result UnusedSlot13() override { return TVX_E_FAIL; }
    Result BeginArray(const char*, std::uint32_t* count) override
    {
        next_ = 0;
        *count = static_cast<std::uint32_t>(texts_.size());
        return TVX_OK;
    }
    Result UnusedSlot15() override { return TVX_E_FAIL; }
    Result UnusedSlot16() override { return TVX_E_FAIL; }
    Result UnusedSlot17() override { return TVX_E_FAIL; }
    Result UnusedSlot18() override { return TVX_E_FAIL; }
    Result ReadString(IString** out) override
    {
        HandOut<IString>(texts_[next_++].Get(), out);
        return TVX_OK;
    }
    Result ReadObject(IObjectBase**) override { return TVX_E_FAIL; }
    Result UnusedSlot21() override { return TVX_E_FAIL; }
    Result EndArray() override { return TVX_OK; }

private:
    const std::vector<Ref<IString>>& texts_;
    std::size_t next_ = 0;
};

// Keys and values in key order, as strings of the module.
const std::vector<Ref<IString>>& GetDocument(std::int64_t size)
{
    static std::map<std::int64_t, std::vector<Ref<IString>>> made;
    auto& texts = made[size];
    if (!texts.empty())
        return texts;
    const auto factory = GetExport<IStringFactory>("com.talvere.general.tvx.GenericStringImplementation/1.0");
    const auto add = [&](const char* text)
    {
        Ref<IString> string;
        factory->CreateString(text, string.Receive());
        texts.push_back(string);
    };
    for (const auto& key : GetSortedKeys(size))
    {
        add(key.c_str());
        add(ValueText);
    }
    return texts;
}

void Serialize(benchmark::State& state, std::int64_t size)
{
    const auto map = Query<ISerializable>(&GetFilledMap(size));
    const auto writer = MakeRef<EmptyWriter>();
    map->Serialize(writer.Get());
    if (writer->count != 2 * size)
        state.SkipWithError("not every text was written");
    for (auto _ : state)
        map->Serialize(writer.Get());
    benchmark::DoNotOptimize(writer->sum);
}

void SerializePlainMap(benchmark::State& state, std::int64_t size)
{
    auto& map = GetFilledPlainMap(size);
    const auto made = MakeRef<EmptyWriter>();
    ISerializer* writer = made.Get();
    benchmark::DoNotOptimize(writer);  // called through its table, as the module calls it
    for (auto _ : state)
    {
        for (const auto& [key, value] : map)
        {
            writer->WriteString(key.c_str());
            writer->WriteString(value.c_str());
        }
    }
    benchmark::DoNotOptimize(made->sum);
}

void Deserialize(benchmark::State& state, std::int64_t size)
{
    const auto format = GetExport<IDeserializable>("com.talvere.general.tvx.GenericSimpleMapImplementation/1.1");
    const auto reader = MakeRef<TextReader>(GetDocument(size));
    Ref<IObjectBase> read;
    for (auto _ : state)
        format->Deserialize(reader.Get(), read.Receive());
    bool last = false;
    Query<ISimpleMap>(read)->HasKey(GetSortedKeys(size).back().c_str(), &last);
    if (!last)
        state.SkipWithError("an entry is missing");
}

void DeserializeIntoPlainMap(benchmark::State& state, std::int64_t size)
{
    const auto made = MakeRef<TextReader>(GetDocument(size));
    IDeserializer* reader = made.Get();
    benchmark::DoNotOptimize(reader);
    for (auto _ : state)
    {
        PlainMap map;
        std::uint32_t count = 0;
        reader->BeginArray("Values", &count);
        for (std::uint32_t entry = 0; entry < count / 2; ++entry)
        {
            Ref<IString> key;
            reader->ReadString(key.Receive());
            Ref<IString> value;
            reader->ReadString(value.Receive());
            map.insert_or_assign(key->GetText(), value->GetText());
        }
        benchmark::DoNotOptimize(map.size());
    }
}

Comparison MakeSerialize(std::int64_t size, double goal)
{
    return {.name = "SettingsMap/Serialize",
            .size = size,
            .ours = Serialize,
            .peer = "iteration of a std::map",
            .theirs = SerializePlainMap,
            .goal = goal};
}

Comparison MakeDeserialize(std::int64_t size)
{
    return {.name = "SettingsMap/Deserialize",
            .size = size,
            .ours = Deserialize,
            .peer = "building a std::map",
            .theirs = DeserializeIntoPlainMap,
            .goal = 0.75};
}

const Comparisons Rows = {MakeSerialize(1000, 1.0), MakeSerialize(100'000, 0.3), MakeDeserialize(1000),
                          MakeDeserialize(100'000)};

}  // namespace
