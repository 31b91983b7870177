// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"
#include "Src/SimpleMapFactory.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"
#include "Tests/Support/SerializerDoubles.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace
{

using namespace tvx;
using namespace tvx::test;

constexpr const char Source[] = "Src/SimpleMapFactory.cpp";
constexpr const char Format[] = "com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1";

Ref<CSimpleMapFactory> GetFactory()
{
    return CSimpleMapFactory::GetOrMake();
}

Ref<ScriptedReader> MakeReader(std::initializer_list<const char*> items)
{
    auto reader = MakeRef<ScriptedReader>();
    for (const char* const item : items)
        reader->items.emplace_back(std::string(item));
    return reader;
}

Ref<ISimpleMap5> Read(const Ref<ScriptedReader>& reader)
{
    Ref<IObjectBase> read;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(GetFactory()->Deserialize(reader.Get(), read.Receive()), TVX_OK); }), "");
    EXPECT_TRUE(read->IsUnique());
    EXPECT_TRUE(reader->IsUnique());
    auto map = Query<ISimpleMap5>(read);
    EXPECT_EQ(static_cast<IObjectBase*>(map.Get()), read.Get());
    return map;
}

// A reading that fails with -1, after one report, and leaves out untouched.
void ExpectReadFails(const Ref<ScriptedReader>& reader, const char* macro)
{
    const auto mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    Result result = TVX_OK;
    const auto output = CaptureOutput([&] { result = GetFactory()->Deserialize(reader.Get(), &out); });
    EXPECT_EQ(result, TVX_E_FAIL);
    EXPECT_TRUE(IsReport(output, macro, Source));
    EXPECT_EQ(out, mark.Get());
    EXPECT_TRUE(reader->IsUnique());
}

TEST(SimpleMapSerialisation, WritesKeysAndValuesInKeyOrder)
{
    const auto map = MakeMap({{"b", "2"}, {"a", "1"}, {"", ""}});
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(map->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Texts{"BeginArray Values", "WriteString ", "WriteString ", "WriteString a",
                                    "WriteString 1", "WriteString b", "WriteString 2", "EndArray"}));
    EXPECT_TRUE(writer->IsUnique());
    EXPECT_TRUE(map->IsUnique());
}

TEST(SimpleMapSerialisation, WritesTypedValuesAsTheirTexts)
{
    const auto map = MakeMap();
    map->SetDouble("double", 3.14159265);
    map->SetInt("int", -5);
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(map->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Texts{"BeginArray Values", "WriteString double", "WriteString 3.14159", "WriteString int",
                                    "WriteString -5", "EndArray"}));
}

TEST(SimpleMapSerialisation, WritesAnEmptySequenceForAnEmptyMap)
{
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(MakeMap()->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Texts{"BeginArray Values", "EndArray"}));
}

TEST(SimpleMapSerialisation, DoesNotLookAtTheWritersResults)
{
    const auto writer = MakeRef<RecordingWriter>(-42);
    EXPECT_EQ(MakeMap({{"a", "1"}})->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls.size(), 4U);
}

TEST(SimpleMapSerialisation, ReportsANullWriter)
{
    const auto map = MakeMap();
    const auto output = CaptureOutput([&] { EXPECT_EQ(map->Serialize(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Src/SimpleMap.cpp"));
}

TEST(SimpleMapSerialisation, HasTheSameFormatInMapAndFactory)
{
    const auto map = MakeMap();
    Ref<IString> ofMap;
    Ref<IString> ofFactory;
    EXPECT_EQ(map->GetFormatId(ofMap.Receive()), TVX_OK);
    EXPECT_EQ(GetFactory()->GetFormatId(ofFactory.Receive()), TVX_OK);
    EXPECT_STREQ(ofMap->GetText(), Format);
    EXPECT_STREQ(ofFactory->GetText(), Format);
    EXPECT_TRUE(ofMap->IsUnique());
    EXPECT_TRUE(ofFactory->IsUnique());
}

TEST(SimpleMapSerialisation, RefusesANullOutForTheFormatInSilence)
{
    const auto map = MakeMap();
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(map->GetFormatId(nullptr), TVX_E_POINTER);
            EXPECT_EQ(GetFactory()->GetFormatId(nullptr), TVX_E_POINTER);
        });
    EXPECT_EQ(output, "");
}

TEST(SimpleMapSerialisation, ReadsWhatWasWritten)
{
    const auto reader = MakeReader({"a", "1", "b\\c", "", "", "\xff"});
    EXPECT_EQ(Entries(*Read(reader)), (Texts{"=\xff", "a=1", "b\\c="}));
    EXPECT_EQ(reader->calls, (Texts{"BeginArray Values", "ReadString", "ReadString", "ReadString", "ReadString",
                                    "ReadString", "ReadString", "EndArray"}));
}

TEST(SimpleMapSerialisation, KeepsTheLastValueOfAKeyThatComesTwice)
{
    EXPECT_EQ(Entries(*Read(MakeReader({"a", "1", "a", "2"}))), Texts{"a=2"});
}

TEST(SimpleMapSerialisation, ReadsAnEmptySequenceAsAnEmptyMap)
{
    const auto reader = MakeReader({});
    EXPECT_EQ(Entries(*Read(reader)), Texts());
    EXPECT_EQ(reader->calls, (Texts{"BeginArray Values", "EndArray"}));
}

TEST(SimpleMapSerialisation, IgnoresAnOddLastItem)
{
    const auto three = MakeReader({"a", "1", "b"});
    EXPECT_EQ(Entries(*Read(three)), Texts{"a=1"});
    EXPECT_EQ(three->calls, (Texts{"BeginArray Values", "ReadString", "ReadString", "EndArray"}));
    EXPECT_EQ(Entries(*Read(MakeReader({"a"}))), Texts());
}

TEST(SimpleMapSerialisation, DeliversAMapInBatchModeWithAPendingChange)
{
    const auto map = Read(MakeReader({"a", "1"}));
    EXPECT_TRUE(IsBatchUpdating(*map));
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SetBatchUpdatingMode(false);
    EXPECT_EQ(handler->GetNames(), Texts{"Changed"});
    const auto empty = Read(MakeReader({}));
    empty->SubscribeChanged(handler.Get(), 0, true);
    empty->SetBatchUpdatingMode(false);
    EXPECT_EQ(handler->events.size(), 1U);
}

TEST(SimpleMapSerialisation, FailsWhenTheSequenceCannotBegin)
{
    const auto reader = MakeReader({"a", "1"});
    reader->beginResult = -42;
    ExpectReadFails(reader, "TVX_RETURN_FAIL_IF_FAILED");
    EXPECT_EQ(reader->calls, Texts{"BeginArray Values"});
}

TEST(SimpleMapSerialisation, FailsAtAKeyOrAValueThatCannotBeRead)
{
    for (const std::uint32_t announced : {4U, 6U})
    {
        const auto reader = announced == 4U ? MakeReader({"a", "1", "b"}) : MakeReader({"a", "1", "b", "2"});
        reader->announced = announced;
        ExpectReadFails(reader, "TVX_RETURN_FAIL_IF_FAILED");
        EXPECT_EQ(reader->calls.size(), announced == 4U ? 5U : 6U);  // it stops at once
    }
}

TEST(SimpleMapSerialisation, FailsAtAnItemThatIsNoText)
{
    const auto reader = MakeReader({"a"});
    reader->items.emplace_back(1);
    ExpectReadFails(reader, "TVX_RETURN_FAIL_IF_FAILED");
}

TEST(SimpleMapSerialisation, StopsAtTheFirstMissingItemHoweverManyAreAnnounced)
{
    for (const std::uint32_t announced : {0xFFFFFFFEU, 0x80000001U})
    {
        const auto reader = MakeReader({"a", "1"});
        reader->announced = announced;
        ExpectReadFails(reader, "TVX_RETURN_FAIL_IF_FAILED");
        EXPECT_EQ(reader->calls, (Texts{"BeginArray Values", "ReadString", "ReadString", "ReadString"}));
    }
}

TEST(SimpleMapSerialisation, ReadsNoMoreThanAnnounced)
{
    const auto reader = MakeReader({"a", "1", "b", "2"});
    reader->announced = 2;
    EXPECT_EQ(Entries(*Read(reader)), Texts{"a=1"});
}

TEST(SimpleMapSerialisation, ReportsANullReaderOrOut)
{
    const auto reader = MakeReader({"a", "1"});
    const auto mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    auto output = CaptureOutput([&] { EXPECT_EQ(GetFactory()->Deserialize(nullptr, &out), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", Source));
    EXPECT_EQ(out, mark.Get());
    output = CaptureOutput([&] { EXPECT_EQ(GetFactory()->Deserialize(reader.Get(), nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", Source));
    output = CaptureOutput([&] { EXPECT_EQ(GetFactory()->Deserialize(nullptr, nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", Source));
    EXPECT_EQ(reader->calls, Texts());
}

}  // namespace
