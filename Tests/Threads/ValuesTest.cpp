// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"
#include "Src/StringFactory.h"
#include "Src/Variant.h"
#include "Src/VariantFactory.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/SerializerDoubles.h"
#include "Tests/Threads/RunTogether.h"

#include <gtest/gtest.h>

namespace tvx::test
{

TEST(ValueThreads, ReadOneString)
{
    const auto string = MakeRef<String>("one text for all");
    RunTogether(
        [&](int)
        {
            for (int i = 0; i < 1000; ++i)
            {
                EXPECT_STREQ(string->GetText(), "one text for all");
                EXPECT_EQ(string->GetLength(), 16u);
            }
        });
    EXPECT_TRUE(string->IsUnique());
}

TEST(ValueThreads, ReadVariantsOfEveryKind)
{
    const auto object = MakeRef<ProbeObject>();
    const auto number = MakeRef<IntVariant>(42);
    const auto text = MakeRef<StringVariant>(MakeRef<String>("shared"));
    const auto holder = MakeRef<ObjectVariant>(Ref<IObject>(object));
    RunTogether(
        [&](int)
        {
            for (int i = 0; i < 500; ++i)
            {
                std::int32_t value = 0;
                EXPECT_EQ(number->GetInt(&value), TVX_OK);
                EXPECT_EQ(value, 42);
                Ref<IString> string;
                EXPECT_EQ(text->GetString(string.Receive()), TVX_OK);
                EXPECT_STREQ(string->GetText(), "shared");
                Ref<IObject> held;
                EXPECT_EQ(holder->GetObject(held.Receive()), TVX_OK);
                EXPECT_EQ(held.Get(), object.Get());
            }
        });
    EXPECT_EQ(object->GetRefCount(), 2u);
}

TEST(ValueThreads, WriteOneVariantToWritersOfTheirOwn)
{
    const auto variant = MakeRef<IntVariant>(7);
    RunTogether(
        [&](int)
        {
            for (int i = 0; i < 100; ++i)
            {
                const auto writer = MakeRef<RecordingWriter>();
                EXPECT_EQ(variant->Serialize(writer.Get()), TVX_OK);
                EXPECT_EQ(writer->calls, (std::vector<std::string>{"WriteNamedInt type 2", "WriteNamedInt value 7"}));
            }
        });
}

TEST(ValueThreads, MakeValuesWithOneFactory)
{
    const auto strings = MakeRef<StringFactory>();
    const auto variants = MakeRef<VariantFactory>();
    RunTogether(
        [&](int number)
        {
            const auto expected = "text of thread " + std::to_string(number);
            for (int i = 0; i < 500; ++i)
            {
                Ref<IString> string;
                Ref<IVariant> variant;
                Ref<IString> shared;
                EXPECT_EQ(strings->CreateString(expected.c_str(), string.Receive()), TVX_OK);
                EXPECT_EQ(variants->CreateStringFromIString(string.Get(), variant.Receive()), TVX_OK);
                EXPECT_EQ(variant->GetString(shared.Receive()), TVX_OK);
                EXPECT_EQ(shared->GetText(), expected);
                EXPECT_EQ(string->GetOwnerThreadId(), variant->GetOwnerThreadId());
            }
        });
}

TEST(ValueThreads, UseSettingsMapsOfTheirOwn)
{
    RunTogether(
        [&](int number)
        {
            const auto map = MakeRef<SimpleMap>();
            for (int i = 0; i < 200; ++i)
                EXPECT_EQ(map->SetInt(("Key\\" + std::to_string(i)).c_str(), number * i), TVX_OK);
            Ref<ISimpleMap> below;
            EXPECT_EQ(map->GetSubMap("Key", below.Receive()), TVX_S_VALUE);
            std::int32_t value = 0;
            EXPECT_EQ(below->GetInt("199", &value), TVX_OK);
            EXPECT_EQ(value, number * 199);
        });
}

}  // namespace tvx::test
