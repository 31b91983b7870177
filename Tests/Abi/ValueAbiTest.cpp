// SPDX-License-Identifier: MIT
#include "Src/String.h"
#include "Src/StringFactory.h"
#include "Src/Variant.h"
#include "Src/VariantFactory.h"
#include "Tests/Abi/AbiTest.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/SerializerDoubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

// Calls every getter of a variant; tells which succeeded, by their slots.
std::vector<int> GetAnsweringSlots(const Ref<IVariant>& variant)
{
    void* const c = ToC<IVariant>(variant);
    bool boolean = false;
    std::int32_t integer = 0;
    float single = 0.0F;
    double real = 0.0;
    const auto shared = [](auto* getter, void* object)
    {
        Result result = TVX_OK;
        FromC<IObjectBase>([&](void** out) { result = getter(object, out); });
        return result;
    };
    const Result results[] = {CallIVariantGetBool(c, &boolean),  CallIVariantGetInt(c, &integer),
                              CallIVariantGetFloat(c, &single),  CallIVariantGetDouble(c, &real),
                              shared(&CallIVariantGetString, c), shared(&CallIVariantGetObject, c)};
    std::vector<int> slots;
    for (std::size_t i = 0; i < std::size(results); ++i)
    {
        if (!TVX_FAILED(results[i]))
            slots.push_back(static_cast<int>(i) + 12);
    }
    return slots;
}

// Makes a variant with the real factory, called by slot number.
template <class Create, class Value>
Ref<IVariant> MakeByC(Create* create, Value value)
{
    const auto factory = MakeRef<VariantFactory>();
    return FromC<IVariant>([&](void** out) { EXPECT_EQ(create(ToC<IVariantFactory>(factory), value, out), TVX_OK); });
}

}  // namespace

TEST(StringSlots, GiveTextAndLength)
{
    const auto factory = MakeRef<StringFactory>();
    const auto string = FromC<IString>(
        [&](void** out)
        { EXPECT_EQ(CallIStringFactoryCreateString(ToC<IStringFactory>(factory), "four", out), TVX_OK); });
    EXPECT_STREQ(CallIStringGetText(ToC<IString>(string)), "four");
    EXPECT_EQ(CallIStringGetLength(ToC<IString>(string)), 4u);
}

TEST(VariantSlots, AnswerOneGetterForEachType)
{
    const auto string = MakeRef<String>("text");
    const auto object = MakeRef<ProbeObject>();
    const Ref<IVariant> variants[] = {
        MakeByC(&CallIVariantFactoryCreateBool, true),
        MakeByC(&CallIVariantFactoryCreateInt, std::int32_t{-5}),
        MakeByC(&CallIVariantFactoryCreateFloat, 0.5F),
        MakeByC(&CallIVariantFactoryCreateDouble, 0.1),
        MakeByC(&CallIVariantFactoryCreateString, "text"),
        MakeByC(&CallIVariantFactoryCreateObject, ToC<IObject>(object)),
    };
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(CallIVariantGetType(ToC<IVariant>(variants[i])), i + 1);
        EXPECT_EQ(GetAnsweringSlots(variants[i]), std::vector<int>{i + 12});
    }
    EXPECT_EQ(GetAnsweringSlots(MakeByC(&CallIVariantFactoryCreateStringFromIString, ToC<IString>(string))),
              std::vector<int>{16});
}

TEST(VariantSlots, GiveTheNumbersThatWentIn)
{
    bool boolean = false;
    CallIVariantGetBool(ToC<IVariant>(MakeByC(&CallIVariantFactoryCreateBool, true)), &boolean);
    EXPECT_TRUE(boolean);
    std::int32_t integer = 0;
    CallIVariantGetInt(ToC<IVariant>(MakeByC(&CallIVariantFactoryCreateInt, std::int32_t{-5})), &integer);
    EXPECT_EQ(integer, -5);
    float single = 0.0F;
    CallIVariantGetFloat(ToC<IVariant>(MakeByC(&CallIVariantFactoryCreateFloat, 0.5F)), &single);
    EXPECT_EQ(single, 0.5F);
    double real = 0.0;
    CallIVariantGetDouble(ToC<IVariant>(MakeByC(&CallIVariantFactoryCreateDouble, 0.1)), &real);
    EXPECT_EQ(real, 0.1);
}

TEST(VariantSlots, GiveTheObjectsThatWentIn)
{
    const auto string = MakeRef<String>("shared");
    const auto object = MakeRef<ProbeObject>();
    const auto ofShared = MakeByC(&CallIVariantFactoryCreateStringFromIString, ToC<IString>(string));
    const auto ofText = MakeByC(&CallIVariantFactoryCreateString, "copied");
    const auto ofObject = MakeByC(&CallIVariantFactoryCreateObject, ToC<IObject>(object));
    EXPECT_EQ(FromC<IString>([&](void** out) { CallIVariantGetString(ToC<IVariant>(ofShared), out); }).Get(),
              string.Get());
    EXPECT_STREQ(FromC<IString>([&](void** out) { CallIVariantGetString(ToC<IVariant>(ofText), out); })->GetText(),
                 "copied");
    EXPECT_EQ(FromC<IObject>([&](void** out) { CallIVariantGetObject(ToC<IVariant>(ofObject), out); }).Get(),
              object.Get());
}

TEST(SerializableSlots, NameTheFormatAndWrite)
{
    const auto variant = MakeRef<IntVariant>(9);
    const auto writer = MakeRef<RecordingWriter>();
    const auto id = FromC<IString>(
        [&](void** out) { EXPECT_EQ(CallISerializableGetFormatId(ToC<ISerializable>(variant), out), TVX_OK); });
    EXPECT_STREQ(id->GetText(), "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1");
    EXPECT_EQ(CallISerializableSerialize(ToC<ISerializable>(variant), ToC<ISerializer>(writer)), TVX_OK);
    EXPECT_EQ(writer->calls, (std::vector<std::string>{"WriteNamedInt type 2", "WriteNamedInt value 9"}));
}

TEST(DeserializableSlots, NameTheFormatAndRead)
{
    const auto factory = MakeRef<VariantFactory>();
    const auto reader = MakeRef<ScriptedReader>();
    reader->named["type"] = std::int32_t{IVariant::TypeInt};
    reader->named["value"] = std::int32_t{9};
    const auto id = FromC<IString>(
        [&](void** out) { EXPECT_EQ(CallIDeserializableGetFormatId(ToC<IDeserializable>(factory), out), TVX_OK); });
    EXPECT_STREQ(id->GetText(), "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1");
    const auto read = FromC<IObjectBase>(
        [&](void** out) {
            EXPECT_EQ(CallIDeserializableDeserialize(ToC<IDeserializable>(factory), ToC<IDeserializer>(reader), out),
                      TVX_OK);
        });
    std::int32_t value = 0;
    EXPECT_EQ(Query<IVariant>(read)->GetInt(&value), TVX_OK);
    EXPECT_EQ(value, 9);
}

}  // namespace tvx::test
