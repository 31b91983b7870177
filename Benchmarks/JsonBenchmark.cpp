// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/SettingsMaps.h"
#include "Interfaces/ISerializerFactory.h"

#include <rapidjson/document.h>
#include <rapidjson/writer.h>

// A settings map as JSON, by the serializer module, beside the same text made of a plain map. No goals: that module is there
// to be exact.
namespace
{

using namespace tvx;
using namespace tvx::bench;

constexpr char Format[] = "com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1";

Ref<ISerializerFactory> GetSerializers()
{
    return GetExport<ISerializerFactory>("com.talvere.serializers.JSONSerializer/1.0");
}

Ref<IString> Write(ISerializerFactory& serializers, IObjectBase* object)
{
    Ref<ISerializer> writer;
    serializers.CreateSerializer(writer.Receive());
    const auto document = Query<IStringSerializer>(writer);
    Ref<IString> text;
    document->Begin();
    writer->WriteNamedObject("Object", object);
    document->End();
    document->GetText(text.Receive());
    return text;
}

Ref<IObjectBase> Read(ISerializerFactory& serializers, IString* text)
{
    Ref<IDeserializer> reader;
    serializers.CreateDeserializer(reader.Receive());
    const auto document = Query<IStringDeserializer>(reader);
    Ref<IObjectBase> object;
    document->SetText(text);
    document->Begin();
    reader->ReadNamedObject("Object", object.Receive());
    document->End();
    return object;
}

rapidjson::StringBuffer WritePlainMap(const PlainMap& map)
{
    rapidjson::StringBuffer text;
    rapidjson::Writer writer(text);
    writer.StartObject();
    writer.Key("Object");
    writer.StartObject();
    writer.Key("$format");
    writer.String(Format);
    writer.Key("Values");
    writer.StartArray();
    for (const auto& [key, value] : map)
    {
        writer.String(key.data(), static_cast<rapidjson::SizeType>(key.size()));
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    writer.EndArray();
    writer.EndObject();
    writer.EndObject();
    return text;
}

PlainMap ReadPlainMap(const char* text)
{
    rapidjson::Document document;
    document.Parse(text);
    PlainMap map;
    const auto& values = document["Object"]["Values"];
    for (rapidjson::SizeType entry = 0; entry + 1 < values.Size(); entry += 2)
        map.insert_or_assign(values[entry].GetString(), values[entry + 1].GetString());
    return map;
}

void WriteMap(benchmark::State& state, std::int64_t size)
{
    const auto serializers = GetSerializers();
    auto& map = GetFilledMap(size);
    if (std::string_view(Write(*serializers, &map)->GetText()) != WritePlainMap(GetFilledPlainMap(size)).GetString())
        state.SkipWithError("another text was written");
    for (auto _ : state)
        benchmark::DoNotOptimize(Write(*serializers, &map).Get());
}

void WriteMapOfPeer(benchmark::State& state, std::int64_t size)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(WritePlainMap(GetFilledPlainMap(size)).GetString());
}

void ReadMap(benchmark::State& state, std::int64_t size)
{
    const auto serializers = GetSerializers();
    const auto text = Write(*serializers, &GetFilledMap(size));
    Ref<IObjectBase> read;
    for (auto _ : state)
        read = Read(*serializers, text.Get());
    if (!read || std::string_view(Write(*serializers, read.Get())->GetText()) != text->GetText())
        state.SkipWithError("another map was read");
}

void ReadMapOfPeer(benchmark::State& state, std::int64_t size)
{
    const auto text = WritePlainMap(GetFilledPlainMap(size));
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadPlainMap(text.GetString()).size());
}

const Comparisons Rows = {
    {.name = "Json/Write",
     .size = 1000,
     .ours = WriteMap,
     .peer = "RapidJSON, of a std::map",
     .theirs = WriteMapOfPeer,
     .bound = Bound::None},
    {.name = "Json/Read",
     .size = 1000,
     .ours = ReadMap,
     .peer = "RapidJSON, into a std::map",
     .theirs = ReadMapOfPeer,
     .bound = Bound::None},
};

}  // namespace
