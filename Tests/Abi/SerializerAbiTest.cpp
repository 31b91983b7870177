// SPDX-License-Identifier: MIT
#include "Tests/Abi/AbiTest.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/HostDoubles.h"
#include "Tests/Support/SerializerDoubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

using Calls = std::vector<std::string>;

constexpr Result Answer = -42;

}  // namespace

TEST(SerializerSlots, ReachTheOperationOfTheirNumber)
{
    const auto writer = MakeRef<RecordingWriter>(Answer);
    const auto object = MakeRef<BareObject>();
    void* const c = ToC<ISerializer>(writer);
    EXPECT_EQ(CallISerializerWriteNamedBool(c, "b", true), Answer);
    EXPECT_EQ(CallISerializerWriteNamedInt(c, "i", -7), Answer);
    EXPECT_EQ(CallISerializerUnusedSlot9(c), Answer);
    EXPECT_EQ(CallISerializerWriteNamedDouble(c, "d", 0.5), Answer);
    EXPECT_EQ(CallISerializerWriteNamedString(c, "s", "text"), Answer);
    EXPECT_EQ(CallISerializerWriteNamedObject(c, "o", ToC<IObjectBase>(object)), Answer);
    EXPECT_EQ(CallISerializerUnusedSlot13(c), Answer);
    EXPECT_EQ(CallISerializerBeginArray(c, "a"), Answer);
    EXPECT_EQ(CallISerializerUnusedSlot15(c), Answer);
    EXPECT_EQ(CallISerializerUnusedSlot16(c), Answer);
    EXPECT_EQ(CallISerializerUnusedSlot17(c), Answer);
    EXPECT_EQ(CallISerializerUnusedSlot18(c), Answer);
    EXPECT_EQ(CallISerializerWriteString(c, "item"), Answer);
    EXPECT_EQ(CallISerializerWriteObject(c, nullptr), Answer);
    EXPECT_EQ(CallISerializerUnusedSlot21(c), Answer);
    EXPECT_EQ(CallISerializerEndArray(c), Answer);
    EXPECT_EQ(writer->calls, (Calls{"WriteNamedBool b true", "WriteNamedInt i -7", "UnusedSlot9",
                                    "WriteNamedDouble d 0.5", "WriteNamedString s text", "WriteNamedObject o",
                                    "UnusedSlot13", "BeginArray a", "UnusedSlot15", "UnusedSlot16", "UnusedSlot17",
                                    "UnusedSlot18", "WriteString item", "WriteObject", "UnusedSlot21", "EndArray"}));
    EXPECT_EQ(writer->objects.front().Get(), object.Get());
}

TEST(DeserializerSlots, ReachTheOperationOfTheirNumber)
{
    const auto reader = MakeRef<ScriptedReader>();
    void* const c = ToC<IDeserializer>(reader);
    void* out = nullptr;
    bool boolean = false;
    std::int32_t integer = 0;
    double real = 0.0;
    std::uint32_t count = 0;
    EXPECT_EQ(CallIDeserializerReadNamedBool(c, "b", &boolean), TVX_E_FAIL);
    EXPECT_EQ(CallIDeserializerReadNamedInt(c, "i", &integer), TVX_E_FAIL);
    EXPECT_EQ(CallIDeserializerUnusedSlot9(c), TVX_OK);
    EXPECT_EQ(CallIDeserializerReadNamedDouble(c, "d", &real), TVX_E_FAIL);
    EXPECT_EQ(CallIDeserializerReadNamedString(c, "s", &out), TVX_E_FAIL);
    EXPECT_EQ(CallIDeserializerReadNamedObject(c, "o", &out), TVX_E_FAIL);
    EXPECT_EQ(CallIDeserializerUnusedSlot13(c), TVX_OK);
    EXPECT_EQ(CallIDeserializerBeginArray(c, "a", &count), TVX_OK);
    EXPECT_EQ(CallIDeserializerUnusedSlot15(c), TVX_OK);
    EXPECT_EQ(CallIDeserializerUnusedSlot16(c), TVX_OK);
    EXPECT_EQ(CallIDeserializerUnusedSlot17(c), TVX_OK);
    EXPECT_EQ(CallIDeserializerUnusedSlot18(c), TVX_OK);
    EXPECT_EQ(CallIDeserializerReadString(c, &out), Answer);
    EXPECT_EQ(CallIDeserializerReadObject(c, &out), Answer);
    EXPECT_EQ(CallIDeserializerUnusedSlot21(c), TVX_OK);
    EXPECT_EQ(CallIDeserializerEndArray(c), TVX_OK);
    EXPECT_EQ(reader->calls,
              (Calls{"ReadNamedBool b", "ReadNamedInt i", "UnusedSlot9", "ReadNamedDouble d", "ReadNamedString s",
                     "ReadNamedObject o", "UnusedSlot13", "BeginArray a", "UnusedSlot15", "UnusedSlot16",
                     "UnusedSlot17", "UnusedSlot18", "ReadString", "ReadObject", "UnusedSlot21", "EndArray"}));
}

TEST(DeserializerSlots, GiveValuesOut)
{
    const auto reader = MakeRef<ScriptedReader>();
    const auto object = MakeRef<BareObject>();
    reader->named = {{"b", true}, {"i", std::int32_t{-7}}, {"d", 0.5}, {"s", "text"}, {"o", Ref<IObjectBase>(object)}};
    reader->items = {"item", Ref<IObjectBase>(object)};
    void* const c = ToC<IDeserializer>(reader);
    bool boolean = false;
    std::int32_t integer = 0;
    double real = 0.0;
    std::uint32_t count = 0;
    CallIDeserializerReadNamedBool(c, "b", &boolean);
    CallIDeserializerReadNamedInt(c, "i", &integer);
    CallIDeserializerReadNamedDouble(c, "d", &real);
    CallIDeserializerBeginArray(c, "a", &count);
    EXPECT_TRUE(boolean);
    EXPECT_EQ(integer, -7);
    EXPECT_EQ(real, 0.5);
    EXPECT_EQ(count, 2u);
    const auto text = FromC<IString>([&](void** out) { CallIDeserializerReadNamedString(c, "s", out); });
    const auto item = FromC<IString>([&](void** out) { CallIDeserializerReadString(c, out); });
    EXPECT_STREQ(text->GetText(), "text");
    EXPECT_STREQ(item->GetText(), "item");
    EXPECT_EQ(FromC<IObjectBase>([&](void** out) { CallIDeserializerReadNamedObject(c, "o", out); }).Get(),
              object.Get());
    EXPECT_EQ(FromC<IObjectBase>([&](void** out) { CallIDeserializerReadObject(c, out); }).Get(), object.Get());
}

TEST(SerializerFactorySlots, ReachTheOperationOfTheirNumber)
{
    const auto factory = MakeRef<RecordingSerializerFactory>(Answer);
    EXPECT_EQ(CallISerializerFactoryCreateSerializer(ToC<ISerializerFactory>(factory), nullptr), Answer);
    EXPECT_EQ(CallISerializerFactoryCreateDeserializer(ToC<ISerializerFactory>(factory), nullptr), Answer);
    EXPECT_EQ(factory->calls, (Calls{"CreateSerializer", "CreateDeserializer"}));
}

TEST(StringSerializerSlots, ReachTheOperationOfTheirNumber)
{
    const auto serializer = MakeRef<RecordingStringSerializer>(Answer);
    EXPECT_EQ(CallIStringSerializerBegin(ToC<IStringSerializer>(serializer)), Answer);
    EXPECT_EQ(CallIStringSerializerEnd(ToC<IStringSerializer>(serializer)), Answer);
    EXPECT_EQ(CallIStringSerializerGetText(ToC<IStringSerializer>(serializer), nullptr), Answer);
    EXPECT_EQ(serializer->calls, (Calls{"Begin", "End", "GetText"}));
}

TEST(StringDeserializerSlots, ReachTheOperationOfTheirNumber)
{
    const auto deserializer = MakeRef<RecordingStringDeserializer>(Answer);
    const auto text = MakeRef<String>("document");
    EXPECT_EQ(CallIStringDeserializerBegin(ToC<IStringDeserializer>(deserializer)), Answer);
    EXPECT_EQ(CallIStringDeserializerEnd(ToC<IStringDeserializer>(deserializer)), Answer);
    EXPECT_EQ(CallIStringDeserializerSetText(ToC<IStringDeserializer>(deserializer), ToC<IString>(text)), Answer);
    EXPECT_EQ(deserializer->calls, (Calls{"Begin", "End", "SetText document"}));
}

}  // namespace tvx::test
