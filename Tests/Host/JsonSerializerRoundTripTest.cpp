// SPDX-License-Identifier: MIT
#include "Tests/Host/JsonSerializerFixture.h"

#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IVariant.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tvx::test
{
namespace
{

class JsonSerializerRoundTrip : public JsonSerializerFixture
{
protected:
    // Writes object under a name and reads it back out of the text.
    Ref<IObjectBase> Repeat(IObjectBase* object)
    {
        const auto writer = BeginWriting();
        EXPECT_EQ(writer->WriteNamedObject("object", object), TVX_OK);
        text_ = EndWriting(writer);
        const auto reader = BeginReading(text_);
        Ref<IObjectBase> read;
        EXPECT_EQ(reader->ReadNamedObject("object", read.Receive()), TVX_OK);
        EXPECT_EQ(Query<IStringDeserializer>(reader)->End(), TVX_OK);
        return read;
    }

    // The variant that comes back for one made by Create(value).
    template <class Value>
    Ref<IVariant> RepeatVariant(Result (VariantFactory::*create)(Value, IVariant**), Value value)
    {
        Ref<IVariant> variant;
        EXPECT_EQ((VariantFactory::GetOrMake().Get()->*create)(value, variant.Receive()), TVX_OK);
        const auto read = Query<IVariant>(Repeat(variant.Get()));
        EXPECT_EQ(variant->GetRefCount(), 1u);
        EXPECT_EQ(read->GetType(), variant->GetType());
        return read;
    }

    double RepeatDouble(double value)
    {
        double read = -77.0;
        EXPECT_EQ(RepeatVariant(&VariantFactory::CreateDouble, value)->GetDouble(&read), TVX_OK);
        return read;
    }

    float RepeatFloat(float value)
    {
        float read = -77.0F;
        EXPECT_EQ(RepeatVariant(&VariantFactory::CreateFloat, value)->GetFloat(&read), TVX_OK);
        return read;
    }

    std::string RepeatText(const std::string& value)
    {
        Ref<IString> read;
        EXPECT_EQ(RepeatVariant(&VariantFactory::CreateString, value.c_str())->GetString(read.Receive()), TVX_OK);
        return read->GetText();
    }

    static Ref<ISimpleMap> MakeMap()
    {
        Ref<IObjectBase> map;
        EXPECT_EQ(CSimpleMapFactory::GetOrMake()->Create(map.Receive()), TVX_OK);
        return Query<ISimpleMap>(map);
    }

    static std::string GetText(const Ref<ISimpleMap>& map, const char* key)
    {
        Ref<IString> value;
        return map->GetString(key, value.Receive()) == TVX_S_VALUE ? value->GetText() : "missing";
    }

    // Every byte but NUL, in rising order.
    static std::string MakeAllBytes()
    {
        std::string bytes;
        for (int code = 1; code < 256; ++code)
            bytes += static_cast<char>(code);
        return bytes;
    }

    std::string text_;  // of the last document
};

TEST_F(JsonSerializerRoundTrip, KeepsBoolVariants)
{
    for (const bool value : {false, true})
    {
        bool read = !value;
        EXPECT_EQ(RepeatVariant(&VariantFactory::CreateBool, value)->GetBool(&read), TVX_OK);
        EXPECT_EQ(read, value);
    }
    EXPECT_EQ(text_, std::string(R"({"object":{"$format":")") + VariantFormat + R"(","type":1,"value":true}})");
}

TEST_F(JsonSerializerRoundTrip, KeepsIntegerVariants)
{
    using Limits = std::numeric_limits<std::int32_t>;
    for (const std::int32_t value : {Limits::min(), -1, 0, 1, Limits::max()})
    {
        std::int32_t read = 77;
        EXPECT_EQ(RepeatVariant(&VariantFactory::CreateInt, value)->GetInt(&read), TVX_OK);
        EXPECT_EQ(read, value);
    }
}

TEST_F(JsonSerializerRoundTrip, KeepsEveryBitOfFloatVariants)
{
    using Limits = std::numeric_limits<float>;
    for (const float value : {0.0F, -0.0F, 0.1F, 1.0F / 3.0F, Limits::max(), Limits::lowest(), Limits::min(),
                              Limits::denorm_min(), Limits::infinity(), -Limits::infinity()})
        EXPECT_EQ(std::bit_cast<std::uint32_t>(RepeatFloat(value)), std::bit_cast<std::uint32_t>(value)) << text_;
    EXPECT_TRUE(std::isnan(RepeatFloat(Limits::quiet_NaN())));
}

TEST_F(JsonSerializerRoundTrip, KeepsEveryBitOfDoubleVariants)
{
    using Limits = std::numeric_limits<double>;
    for (const double value :
         {0.0, -0.0, 0.1, 1.0 / 3.0, 1e22, 9007199254740993.0, 123456789012345680.0, 5e-324, 1e16, Limits::max(),
          Limits::lowest(), Limits::min(), Limits::epsilon(), Limits::infinity(), -Limits::infinity()})
        EXPECT_EQ(std::bit_cast<std::uint64_t>(RepeatDouble(value)), std::bit_cast<std::uint64_t>(value)) << text_;
    EXPECT_TRUE(std::isnan(RepeatDouble(Limits::quiet_NaN())));
}

TEST_F(JsonSerializerRoundTrip, KeepsEveryByteOfTextVariants)
{
    for (const std::string& value :
         {std::string(), std::string("\"\\/\b\f\n\r\t\x01\x1F\x7F"),
          std::string("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"), std::string("caf\xE9"),
          std::string("{\"$bytes\":\"ff\"}"), std::string("\xEF\xBB\xBF"), MakeAllBytes(), std::string(100000, 'x')})
        EXPECT_EQ(RepeatText(value), value);
}

TEST_F(JsonSerializerRoundTrip, KeepsEachSingleByte)
{
    for (const char byte : MakeAllBytes())
        EXPECT_EQ(RepeatText(std::string(1, byte)), std::string(1, byte)) << static_cast<int>(byte);
}

TEST_F(JsonSerializerRoundTrip, KeepsObjectVariantsAndTheirNull)
{
    Ref<IVariant> inner;
    VariantFactory::GetOrMake()->CreateInt(42, inner.Receive());
    Ref<IObject> object;
    EXPECT_EQ(RepeatVariant<IObject*>(&VariantFactory::CreateObject, inner.Get())->GetObject(object.Receive()), TVX_OK);
    std::int32_t number = 0;
    EXPECT_EQ(Query<IVariant>(object)->GetInt(&number), TVX_OK);
    EXPECT_EQ(number, 42);
    EXPECT_EQ(inner->GetRefCount(), 1u);
    EXPECT_EQ(RepeatVariant<IObject*>(&VariantFactory::CreateObject, nullptr)->GetObject(object.Receive()), TVX_OK);
    EXPECT_FALSE(object);
}

TEST_F(JsonSerializerRoundTrip, KeepsSettingsMaps)
{
    const auto map = MakeMap();
    map->SetString("b\\c", "caf\xE9");
    map->SetString("", "empty key");
    map->SetString("\xFF", "");
    map->SetInt("a", -5);
    const auto read = Query<ISimpleMap>(Repeat(map.Get()));
    EXPECT_EQ(GetText(read, "b\\c"), "caf\xE9");
    EXPECT_EQ(GetText(read, ""), "empty key");
    EXPECT_EQ(GetText(read, "\xFF"), "");
    EXPECT_EQ(GetText(read, "a"), "-5");
    EXPECT_EQ(text_, std::string(R"({"object":{"$format":")") + MapFormat +
                         R"(","Values":["","empty key","a","-5","b\\c",{"$bytes":"636166e9"},{"$bytes":"ff"},""]}})");
}

TEST_F(JsonSerializerRoundTrip, KeepsAnEmptySettingsMap)
{
    const auto read = Query<ISimpleMap>(Repeat(MakeMap().Get()));
    Ref<ISimpleMapIterator> iterator;
    EXPECT_EQ(read->GetIterator(iterator.Receive()), TVX_OK);
    EXPECT_EQ(iterator->GetKey(), nullptr);
}

TEST_F(JsonSerializerRoundTrip, KeepsObjectsInEntriesOfSettingsMaps)
{
    const auto map = MakeMap();
    Ref<IVariant> variant;
    VariantFactory::GetOrMake()->CreateString("caf\xE9", variant.Receive());
    EXPECT_EQ(map->SetObject("variant", variant.Get()), TVX_OK);
    EXPECT_EQ(GetText(map, "variant"), std::string(R"({"Object":{"$format":")") + VariantFormat +
                                           R"(","type":5,"value":{"$bytes":"636166e9"}}})");
    Ref<IObject> object;
    EXPECT_EQ(map->GetObject("variant", object.Receive()), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 1u);
    Ref<IString> read;
    EXPECT_EQ(Query<IVariant>(object)->GetString(read.Receive()), TVX_OK);
    EXPECT_STREQ(read->GetText(), "caf\xE9");
}

TEST_F(JsonSerializerRoundTrip, KeepsMapsInEntriesOfMapsInEntries)
{
    auto map = MakeMap();
    map->SetString("bottom", "\x01\xFF\"");
    for (int level = 0; level < 4; ++level)
    {
        const auto outer = MakeMap();
        ASSERT_EQ(outer->SetObject("inner", map.Get()), TVX_OK);
        map = Query<ISimpleMap>(Repeat(outer.Get()));
    }
    for (int level = 0; level < 4; ++level)
    {
        Ref<IObject> inner;
        ASSERT_EQ(map->GetObject("inner", inner.Receive()), TVX_OK);
        map = Query<ISimpleMap>(inner);
    }
    EXPECT_EQ(GetText(map, "bottom"), "\x01\xFF\"");
}

TEST_F(JsonSerializerRoundTrip, LeavesAnEntryAsItIsWhenAnObjectCannotBeWritten)
{
    const auto map = MakeMap();
    map->SetString("key", "before");
    const auto broken = MakeRef<ScriptedObject>([](auto&) { return TVX_E_FAIL; });
    const auto output = CaptureOutput([&] { EXPECT_EQ(map->SetObject("key", broken.Get()), TVX_E_FAIL); });
    EXPECT_EQ(output.substr(0, output.find('\n')),
              "JsonSerializer: the object at \"Object\" could not be written (-1).");
    EXPECT_EQ(GetText(map, "key"), "before");
    EXPECT_EQ(broken->GetRefCount(), 1u);
}

TEST_F(JsonSerializerRoundTrip, KeepsObjectsNestedAHundredDeep)
{
    constexpr int depth = 100;
    Ref<IVariant> variant;
    VariantFactory::GetOrMake()->CreateInt(42, variant.Receive());
    for (int level = 0; level < depth; ++level)
    {
        Ref<IVariant> outer;
        VariantFactory::GetOrMake()->CreateObject(variant.Get(), outer.Receive());
        variant = outer;
    }
    auto read = Query<IVariant>(Repeat(variant.Get()));
    for (int level = 0; level < depth; ++level)
    {
        Ref<IObject> inner;
        ASSERT_EQ(read->GetObject(inner.Receive()), TVX_OK);
        read = Query<IVariant>(inner);
    }
    std::int32_t number = 0;
    EXPECT_EQ(read->GetInt(&number), TVX_OK);
    EXPECT_EQ(number, 42);
}

}  // namespace
}  // namespace tvx::test
