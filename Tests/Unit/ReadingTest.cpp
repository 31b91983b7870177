// SPDX-License-Identifier: MIT
#include "Helpers/Reading.h"

#include "Src/SimpleMapFactory.h"
#include "Src/Variant.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MemoryTesting.h"
#include "Tests/Support/TextSerializerDoubles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <utility>

namespace
{

using namespace tvx;
using namespace tvx::test;

constexpr const char TooLongForANumber[] = "1000000000000000000000000000000";

// A string that breaks its promise.
class TextlessString final : public ClassImpl<TextlessString, IString>
{
public:
    using Interfaces = InterfaceList<IString, IObjectBase>;

    const char* GetText() override { return nullptr; }
    std::uint32_t GetLength() override { return 5; }
};

// A map that answers every read alike.
class ScriptedMap final : public SimpleMap
{
public:
    Result GetString(const char*, IString** out) override
    {
        HandOut(string.Get(), out);
        return result;
    }
    Result GetObject(const char*, IObject** out) override
    {
        HandOut(object.Get(), out);
        return result;
    }

    Result result = TVX_S_VALUE;
    Ref<IString> string;
    Ref<IObject> object;
};

// A variant whose getters answer with a code of the test's own.
class FailingVariant final : public ClassImpl<FailingVariant, IVariant>
{
public:
    using Interfaces = InterfaceList<IVariant, IObject, IObjectBase>;

    std::int32_t GetType() override { return TypeInt; }
    Result GetBool(bool*) override { return TVX_E_EXCEPTION; }
    Result GetInt(std::int32_t*) override { return TVX_E_EXCEPTION; }
    Result GetFloat(float*) override { return TVX_E_EXCEPTION; }
    Result GetDouble(double*) override { return TVX_E_EXCEPTION; }
    Result GetString(IString**) override { return TVX_E_EXCEPTION; }
    Result GetObject(IObject**) override { return TVX_E_EXCEPTION; }
};

// What a reading tells, in one word or with its value.
template <class T>
std::string Describe(const Reading<T>& reading)
{
    EXPECT_LE((reading ? 1 : 0) + (reading.IsAbsent() ? 1 : 0) + (reading.IsMalformed() ? 1 : 0), 1);
    if (reading)
        return "value " + std::to_string(reading.GetResult());
    if (reading.IsAbsent())
        return "absent " + std::to_string(reading.GetResult());
    return (reading.IsMalformed() ? "malformed " : "failed ") + std::to_string(reading.GetResult());
}

template <class T>
Reading<T> ReadFrom(const char* text)
{
    return Read<T>(*MakeMap({{"key", text}}), "key");
}

TEST(Reading, TakesAnOptionalSignAndDigitsForAnInteger)
{
    const std::pair<const char*, std::int32_t> numbers[] = {{"0", 0},
                                                            {"640", 640},
                                                            {"-5", -5},
                                                            {"+5", 5},
                                                            {"007", 7},
                                                            {"-0", 0},
                                                            {"2147483647", 2147483647},
                                                            {"-2147483648", std::numeric_limits<std::int32_t>::min()}};
    for (const auto& [text, number] : numbers)
    {
        const auto reading = ReadFrom<std::int32_t>(text);
        EXPECT_EQ(Describe(reading), "value 0") << text;
        EXPECT_EQ(reading.ValueOr(-77), number) << text;
    }
}

TEST(Reading, TakesNothingElseForAnInteger)
{
    for (const char* const text : {"",    " ",   "-",   "+",    "+-5",        "-+5",         "++5",
                                   "--5", " 5",  "5 ",  "5\n",  "\t5",        "- 5",         "12x",
                                   "x",   "1.0", "1e3", "0x10", "2147483648", "-2147483649", TooLongForANumber})
        EXPECT_EQ(Describe(ReadFrom<std::int32_t>(text)), "malformed -1") << '"' << text << '"';
}

TEST(Reading, TakesDecimalNumbersForADouble)
{
    const std::pair<const char*, double> numbers[] = {{"0", 0.0},
                                                      {"640", 640.0},
                                                      {"-0.5", -0.5},
                                                      {"+0.5", 0.5},
                                                      {".5", 0.5},
                                                      {"5.", 5.0},
                                                      {"1e3", 1000.0},
                                                      {"1E-2", 0.01},
                                                      {"-1.5e+2", -150.0},
                                                      {"0.1", 0.1},
                                                      {"4.9e-324", 4.9e-324},
                                                      {"1.7976931348623157e308", 1.7976931348623157e308}};
    for (const auto& [text, number] : numbers)
    {
        const auto reading = ReadFrom<double>(text);
        EXPECT_EQ(Describe(reading), "value 0") << text;
        EXPECT_EQ(reading.ValueOr(-77), number) << text;
    }
}

TEST(Reading, TakesNothingElseForADouble)
{
    for (const char* const text :
         {"",    " ",    ".",   "-",     "+",     "+-5",    "-+5",    "++5", " 0.5", "0.5 ", "0.5x", "1e",
          "1e+", "0x10", "1,5", "1.5.2", "1e400", "-1e400", "1e-400", "in",  "infx", "nanx", "true"})
        EXPECT_EQ(Describe(ReadFrom<double>(text)), "malformed -1") << '"' << text << '"';
}

TEST(Reading, TakesBackEverySpecialDoubleThatAMapWrites)
{
    const auto map = MakeMap();
    const auto infinity = std::numeric_limits<double>::infinity();
    for (const double written : {infinity, -infinity, std::nan(""), -std::nan(""), -0.0})
    {
        map->SetDouble("key", written);
        const auto reading = Read<double>(*map, "key");
        ASSERT_TRUE(reading) << written;
        EXPECT_EQ(std::isnan(*reading), std::isnan(written));
        EXPECT_EQ(std::signbit(*reading), std::signbit(written)) << written;
        EXPECT_TRUE(std::isnan(written) || *reading == written) << written;
    }
}

TEST(Reading, GivesWhatThePlainReadsGive)
{
    const auto map = MakeMap();
    for (const char* const text :
         {"12", "-7", "+3", "0.25", "1e5", "+.5", "inf", "-INF", "Infinity", "2147483647", "1e22"})
    {
        map->SetString("key", text);
        double plain = 0;
        map->GetDouble("key", &plain);
        EXPECT_EQ(Read<double>(*map, "key").ValueOr(-77), plain) << text;
        std::int32_t plainInt = 0;
        map->GetInt("key", &plainInt);
        EXPECT_EQ(Read<std::int32_t>(*map, "key").ValueOr(plainInt), plainInt) << text;
    }
}

TEST(Reading, TakesEveryTextAsAText)
{
    for (const char* const text : {"", " ", "12x", LongText})
    {
        EXPECT_EQ(ReadFrom<std::string>(text).ValueOr("none"), text);
        const auto string = ReadFrom<Ref<IString>>(text);
        ASSERT_TRUE(string);
        EXPECT_STREQ((*string)->GetText(), text);
        EXPECT_TRUE((*string)->IsUnique());
    }
}

TEST(Reading, TellsAbsentFromMalformedInSilence)
{
    const auto map = MakeMap({{"word", "wide"}});
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(Describe(Read<std::int32_t>(*map, "word")), "malformed -1");
            EXPECT_EQ(Describe(Read<double>(*map, "word")), "malformed -1");
            EXPECT_EQ(Describe(Read<std::int32_t>(*map, "Word")), "absent 101");
            EXPECT_EQ(Describe(Read<double>(*map, "Word")), "absent 101");
            EXPECT_EQ(Describe(Read<std::string>(*map, "Word")), "absent 101");
            EXPECT_EQ(Describe(Read<Ref<IString>>(*map, "Word")), "absent 101");
            EXPECT_EQ(Describe(Read<Ref<IObject>>(*map, "Word")), "absent 101");
        });
    EXPECT_EQ(output, "");
    EXPECT_TRUE(map->IsUnique());
}

TEST(Reading, PassesOnWhatTheMapSaysOfANullKey)
{
    const auto map = MakeMap();
    const auto output = CaptureOutput([&] { EXPECT_EQ(Describe(Read<double>(*map, nullptr)), "failed -4"); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Src/SimpleMap.cpp"));
}

TEST(Reading, PassesOnEveryOtherFailureOfTheMap)
{
    const auto map = MakeRef<ScriptedMap>();
    for (const Result code : {TVX_E_FAIL, TVX_E_PRECONDITION, -42})
    {
        map->result = code;
        const auto failed = "failed " + std::to_string(code);
        EXPECT_EQ(Describe(Read<std::int32_t>(*map, "key")), failed);
        EXPECT_EQ(Describe(Read<std::string>(*map, "key")), failed);
        EXPECT_EQ(Describe(Read<Ref<IString>>(*map, "key")), failed);
        EXPECT_EQ(Describe(Read<Ref<IObject>>(*map, "key")), failed);
    }
}

TEST(Reading, FailsWhenAMapTellsOfSuccessWithoutAnObject)
{
    const auto map = MakeRef<ScriptedMap>();
    for (const Result code : {TVX_S_VALUE, TVX_OK})
    {
        map->result = code;
        EXPECT_EQ(Describe(Read<std::int32_t>(*map, "key")), "failed -1");
        EXPECT_EQ(Describe(Read<std::string>(*map, "key")), "failed -1");
        EXPECT_EQ(Describe(Read<Ref<IString>>(*map, "key")), "failed -1");
        EXPECT_EQ(Describe(Read<Ref<IObject>>(*map, "key")), "failed -1");
    }
}

TEST(Reading, TakesAStringWithoutATextForAnEmptyOne)
{
    const auto map = MakeRef<ScriptedMap>();
    map->string = Ref<IString>(MakeRef<TextlessString>());
    EXPECT_EQ(Describe(Read<std::int32_t>(*map, "key")), "malformed -1");
    EXPECT_EQ(Read<std::string>(*map, "key").ValueOr("none"), "");
    EXPECT_EQ(map->string->GetRefCount(), 1U);
}

TEST(Reading, GivesNoValueForWantOfMemory)
{
    const auto map = MakeMap({{"key", LongText}});
    SweepFailures(
        [&](MemoryFailure failure)
        {
            auto reading = Reading<std::string>::None(TVX_S_NOKEY);
            const auto outcome = RunWith(failure,
                                         [&]
                                         {
                                             reading = Read<std::string>(*map, "key");
                                             return reading.GetResult();
                                         });
            EXPECT_EQ(Describe(reading), outcome.failed ? "failed -4" : "value 0");
            EXPECT_EQ(outcome.output, "");
            return outcome.failed;
        });
}

TEST(Reading, AllocatesNothingOfItsOwn)
{
    const auto map = MakeMap({{"key", "640"}});
    const auto plain = CountAllocations(
        [&]
        {
            Ref<IString> text;
            map->GetString("key", text.Receive());
        });
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(Read<std::int32_t>(*map, "key")); }), plain);
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(Read<double>(*map, "key")); }), plain);
}

TEST(Reading, StandsForItsValueLikeAPointer)
{
    Reading<std::string> text(std::string("abc"));
    text->append("d");
    EXPECT_EQ(*text, "abcd");
    EXPECT_EQ(std::as_const(text)->size(), 4U);
    EXPECT_EQ(text.ValueOr("other"), "abcd");
    EXPECT_EQ(Reading<std::string>::None(TVX_S_NOKEY).ValueOr("other"), "other");
    Reading<std::unique_ptr<int>> owner(std::make_unique<int>(5));
    EXPECT_EQ(*std::move(owner).ValueOr(nullptr), 5);
}

// A map that is read by the serializer double behind the import "Serializer".
class ObjectReading : public testing::Test
{
protected:
    ObjectReading()
    {
        factory->reader = Ref<IDeserializer>(reader);
        reader->object = Ref<IObjectBase>(static_cast<IObject*>(object.Get()));
        const auto proxy = MakeRef<ImportProxy>(Ref<IObjectBase>(factory));
        CSimpleMapFactory::GetOrMake()->SetImport("Serializer", proxy.Get());
    }
    ~ObjectReading() override { CSimpleMapFactory::GetOrMake()->ClearImports(); }

    const Ref<SimpleMap> map = MakeMap({{"key", "an object"}});
    const Ref<TextSerializerFactory> factory = MakeRef<TextSerializerFactory>();
    const Ref<TextReader> reader = MakeRef<TextReader>();
    const Ref<SerializableObject> object = MakeRef<SerializableObject>();
};

TEST_F(ObjectReading, GivesTheObjectWithOneReference)
{
    const auto before = object->GetRefCount();
    {
        const auto reading = Read<Ref<IObject>>(*map, "key");
        ASSERT_TRUE(reading);
        EXPECT_EQ(reading->Get(), static_cast<IObject*>(object.Get()));
        EXPECT_EQ(object->GetRefCount(), before + 1);
    }
    EXPECT_EQ(object->GetRefCount(), before);
}

TEST_F(ObjectReading, FailsWithoutASerializerInsteadOfCallingTheTextMalformed)
{
    CSimpleMapFactory::GetOrMake()->ClearImports();
    const auto output = CaptureOutput([&] { EXPECT_EQ(Describe(Read<Ref<IObject>>(*map, "key")), "failed -1"); });
    EXPECT_NE(output, "");
}

TEST_F(ObjectReading, AnswersAbsentInSilence)
{
    const auto output = CaptureOutput([&] { EXPECT_EQ(Describe(Read<Ref<IObject>>(*map, "Key")), "absent 101"); });
    EXPECT_EQ(output, "");
}

TEST(VariantReading, TakesTheVariantsOwnTypeOnly)
{
    const auto object = MakeRef<ProbeObject>();
    const Ref<Variant> variants[] = {MakeRef<BoolVariant>(true),
                                     MakeRef<IntVariant>(-5),
                                     MakeRef<FloatVariant>(1.5F),
                                     MakeRef<DoubleVariant>(0.1),
                                     MakeRef<StringVariant>(MakeString("text")),
                                     MakeRef<ObjectVariant>(Ref<IObject>(object))};
    const auto output = CaptureOutput(
        [&]
        {
            for (const auto& variant : variants)
            {
                const auto type = variant->GetType();
                const auto due = [type](int own) { return own == type ? "value 0" : "malformed -1"; };
                EXPECT_EQ(Describe(Read<bool>(*variant)), due(IVariant::TypeBool));
                EXPECT_EQ(Describe(Read<std::int32_t>(*variant)), due(IVariant::TypeInt));
                EXPECT_EQ(Describe(Read<float>(*variant)), due(IVariant::TypeFloat));
                EXPECT_EQ(Describe(Read<double>(*variant)), due(IVariant::TypeDouble));
                EXPECT_EQ(Describe(Read<std::string>(*variant)), due(IVariant::TypeString));
                EXPECT_EQ(Describe(Read<Ref<IString>>(*variant)), due(IVariant::TypeString));
                EXPECT_EQ(Describe(Read<Ref<IObject>>(*variant)), due(IVariant::TypeObject));
                EXPECT_TRUE(variant->IsUnique());
            }
        });
    EXPECT_EQ(output, "");
    EXPECT_EQ(object->GetRefCount(), 2U);
}

TEST(VariantReading, GivesTheValue)
{
    EXPECT_TRUE(*Read<bool>(*MakeRef<BoolVariant>(true)));
    EXPECT_FALSE(*Read<bool>(*MakeRef<BoolVariant>(false)));
    EXPECT_EQ(*Read<std::int32_t>(*MakeRef<IntVariant>(-5)), -5);
    EXPECT_EQ(*Read<float>(*MakeRef<FloatVariant>(1.5F)), 1.5F);
    EXPECT_EQ(*Read<double>(*MakeRef<DoubleVariant>(0.1)), 0.1);
    EXPECT_EQ(*Read<std::string>(*MakeRef<StringVariant>(MakeString("text"))), "text");
    const auto string = MakeString("text");
    EXPECT_EQ(Read<Ref<IString>>(*MakeRef<StringVariant>(string))->Get(), string.Get());
    const auto object = Ref<IObject>(MakeRef<ProbeObject>());
    EXPECT_EQ(Read<Ref<IObject>>(*MakeRef<ObjectVariant>(object))->Get(), object.Get());
    EXPECT_EQ(string->GetRefCount() + object->GetRefCount(), 2U);
}

TEST(VariantReading, TakesANullStringOrObjectForAValue)
{
    const auto text = MakeRef<StringVariant>(nullptr);
    const auto string = Read<Ref<IString>>(*text);
    EXPECT_EQ(Describe(string), "value 0");
    EXPECT_FALSE(*string);
    EXPECT_EQ(Read<std::string>(*text).ValueOr("none"), "");
    const auto object = Read<Ref<IObject>>(*MakeRef<ObjectVariant>(nullptr));
    EXPECT_EQ(Describe(object), "value 0");
    EXPECT_FALSE(*object);
}

TEST(VariantReading, PassesOnEveryOtherFailure)
{
    const auto variant = MakeRef<FailingVariant>();
    EXPECT_EQ(Describe(Read<bool>(*variant)), "failed -5");
    EXPECT_EQ(Describe(Read<std::string>(*variant)), "failed -5");
    EXPECT_EQ(Describe(Read<Ref<IString>>(*variant)), "failed -5");
    EXPECT_EQ(Describe(Read<Ref<IObject>>(*variant)), "failed -5");
}

TEST(VariantReading, GivesNoTextForWantOfMemory)
{
    const auto variant = MakeRef<StringVariant>(MakeString(LongText));
    SweepFailures(
        [&](MemoryFailure failure)
        {
            auto reading = Reading<std::string>::None(TVX_S_NOKEY);
            const auto outcome = RunWith(failure,
                                         [&]
                                         {
                                             reading = Read<std::string>(*variant);
                                             return reading.GetResult();
                                         });
            EXPECT_EQ(Describe(reading), outcome.failed ? "failed -4" : "value 0");
            return outcome.failed;
        });
}

}  // namespace
