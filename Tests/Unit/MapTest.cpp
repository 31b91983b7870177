// SPDX-License-Identifier: MIT
#include "Src/Map.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/SerializerDoubles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::test;

constexpr const char MapSource[] = "BasicInterfaceImplementations/Include/Map.h";
constexpr const char FactorySource[] = "Src/Map.cpp";

TEST(Map, GivesWhatItKeepsWithAReferenceForTheCaller)
{
    const auto map = MakeRef<Map>();
    const auto object = MakeRef<ProbeObject>();
    EXPECT_EQ(map->SetValue("a", object.Get()), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 2U);
    Ref<IObject> out;
    EXPECT_EQ(map->GetValue("a", out.Receive()), TVX_S_VALUE);
    EXPECT_EQ(out.Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 3U);
}

TEST(Map, LooksUpAlikeThroughBothOperations)
{
    const auto map = MakeRef<Map>();
    const auto object = MakeRef<ProbeObject>();
    map->SetValue("a", object.Get());
    for (const auto lookUp : {&IMap::GetValue, &IMap::LookupValue})
    {
        IMap& face = *map;
        Ref<IObject> out;
        EXPECT_EQ((face.*lookUp)("a", out.Receive()), TVX_S_VALUE);
        EXPECT_EQ(out.Get(), object.Get());
        IObject* absent = object.Get();
        EXPECT_EQ((face.*lookUp)("b", &absent), TVX_S_NOKEY);
        EXPECT_EQ(absent, nullptr);
        absent = object.Get();
        EXPECT_EQ((face.*lookUp)(nullptr, &absent), TVX_S_NOKEY);
        EXPECT_EQ(absent, nullptr);
        const auto report = CaptureOutput([&] { EXPECT_EQ((face.*lookUp)("a", nullptr), TVX_E_POINTER); });
        EXPECT_TRUE(IsReport(report, "TVX_RETURN_EPOINTER_IF_NULL", MapSource));
        const auto silentKey = CaptureOutput([&] { EXPECT_EQ((face.*lookUp)(nullptr, nullptr), TVX_E_POINTER); });
        EXPECT_TRUE(IsReport(silentKey, "TVX_RETURN_EPOINTER_IF_NULL", MapSource));
    }
    EXPECT_EQ(object->GetRefCount(), 2U);
}

TEST(Map, KeepsTheSecondValueOfAKeyAndReleasesTheFirstOnce)
{
    const auto map = MakeRef<Map>();
    const auto first = MakeRef<ProbeObject>();
    const auto second = MakeRef<ProbeObject>();
    map->SetValue("a", first.Get());
    EXPECT_EQ(map->SetValue("a", second.Get()), TVX_OK);
    EXPECT_TRUE(first->IsUnique());
    EXPECT_EQ(second->GetRefCount(), 2U);
    EXPECT_EQ(map->SetValue("a", second.Get()), TVX_OK);
    EXPECT_EQ(second->GetRefCount(), 2U);
}

TEST(Map, KeepsNullAsAValue)
{
    const auto map = MakeRef<Map>();
    const auto object = MakeRef<ProbeObject>();
    map->SetValue("a", object.Get());
    EXPECT_EQ(map->SetValue("a", nullptr), TVX_OK);
    EXPECT_TRUE(object->IsUnique());
    IObject* out = object.Get();
    EXPECT_EQ(map->GetValue("a", &out), TVX_S_VALUE);
    EXPECT_EQ(out, nullptr);
}

TEST(Map, ReportsANullKeyOfAWrite)
{
    const auto map = MakeRef<Map>();
    const auto object = MakeRef<ProbeObject>();
    const auto report = CaptureOutput([&] { EXPECT_EQ(map->SetValue(nullptr, object.Get()), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(report, "TVX_RETURN_EPOINTER_IF_NULL", MapSource));
    EXPECT_TRUE(object->IsUnique());
}

TEST(Map, TellsKeysApartByCaseAndTakesTheEmptyOne)
{
    const auto map = MakeRef<Map>();
    const auto upper = MakeRef<ProbeObject>();
    const auto empty = MakeRef<ProbeObject>();
    map->SetValue("A", upper.Get());
    map->SetValue("", empty.Get());
    Ref<IObject> out;
    EXPECT_EQ(map->GetValue("a", out.Receive()), TVX_S_NOKEY);
    EXPECT_EQ(map->GetValue("", out.Receive()), TVX_S_VALUE);
    EXPECT_EQ(out.Get(), empty.Get());
}

TEST(Map, ReleasesEveryValueOnceWhenItDies)
{
    auto map = MakeRef<Map>();
    const auto object = MakeRef<ProbeObject>();
    map->SetValue("a", object.Get());
    map->SetValue("b", object.Get());
    EXPECT_EQ(object->GetRefCount(), 3U);
    map = nullptr;
    EXPECT_TRUE(object->IsUnique());
}

TEST(Map, IsEmptyForAValueThatDiesWithIt)
{
    auto map = MakeRef<Map>();
    auto* const dying = map.Get();
    const auto handler = MakeRef<RecordingHandler>();
    std::vector<Result> results;
    handler->action = [&](const SeenEvent&)
    {
        for (const char* const key : {"a", "b"})
        {
            Ref<IObject> out;
            results.push_back(dying->GetValue(key, out.Receive()));
        }
    };
    for (const char* const key : {"a", "b"})
    {
        const auto value = MakeRef<ProbeObject>();
        value->SubscribeDestroyed(handler.Get(), 0);
        map->SetValue(key, value.Get());
    }
    map = nullptr;
    EXPECT_EQ(results, std::vector<Result>(4, TVX_S_NOKEY));
}

TEST(Map, MayBeChangedByTheReleaseOfAValue)
{
    auto map = MakeRef<Map>();
    auto object = MakeRef<ProbeObject>();
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { map->SetValue("a", nullptr); };
    object->SubscribeDestroyed(handler.Get(), 0);
    map->SetValue("a", object.Get());
    object = nullptr;
    EXPECT_EQ(map->SetValue("a", handler.Get()), TVX_OK);
    Ref<IObject> out;
    EXPECT_EQ(map->GetValue("a", out.Receive()), TVX_S_VALUE);
    EXPECT_EQ(out.Get(), nullptr);
    EXPECT_EQ(handler->events.size(), 1U);
}

TEST(Map, WritesKeysInByteOrderWithTheirValues)
{
    const auto map = MakeRef<Map>();
    const auto object = MakeRef<ProbeObject>();
    for (const char* const key : {"B", "a", "ab", "", "\xC3"})
        map->SetValue(key, object.Get());
    map->SetValue("ab", nullptr);
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(map->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls,
              (std::vector<std::string>{"BeginArray Values", "WriteString ", "WriteObject", "WriteString B",
                                        "WriteObject", "WriteString a", "WriteObject", "WriteString ab", "WriteObject",
                                        "WriteString \xC3", "WriteObject", "EndArray"}));
    ASSERT_EQ(writer->objects.size(), 5U);
    EXPECT_EQ(writer->objects[0].Get(), object.Get());
    EXPECT_EQ(writer->objects[3].Get(), nullptr);
}

TEST(Map, WritesAnEmptySequenceWhenItIsEmpty)
{
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(MakeRef<Map>()->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (std::vector<std::string>{"BeginArray Values", "EndArray"}));
}

TEST(Map, DoesNotLookAtWhatTheWriterAnswers)
{
    const auto map = MakeRef<Map>();
    map->SetValue("a", nullptr);
    const auto writer = MakeRef<RecordingWriter>(-9);
    EXPECT_EQ(map->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls.size(), 4U);
    const auto report = CaptureOutput([&] { EXPECT_EQ(map->Serialize(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(report, "TVX_RETURN_EPOINTER_IF_NULL", MapSource));
}

TEST(Map, TellsItsFormatLikeItsFactory)
{
    constexpr const char format[] = "com.talvere.general.tvx.GenericMapImplementationFormat/1.1";
    const auto map = MakeRef<Map>();
    const auto factory = MakeRef<MapFactory>();
    Ref<IString> text;
    EXPECT_EQ(map->GetFormatId(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), format);
    EXPECT_TRUE(text->IsUnique());
    EXPECT_EQ(factory->GetFormatId(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), format);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(map->GetFormatId(nullptr), TVX_E_POINTER); }), "");
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->GetFormatId(nullptr), TVX_E_POINTER); }), "");
}

TEST(MapFactory, MakesEmptyMaps)
{
    const auto factory = MakeRef<MapFactory>();
    Ref<IMap> map;
    EXPECT_EQ(factory->CreateMap(map.Receive()), TVX_OK);
    EXPECT_TRUE(map->IsUnique());
    const auto writer = MakeRef<RecordingWriter>();
    Query<ISerializable>(map)->Serialize(writer.Get());
    EXPECT_EQ(writer->calls.size(), 2U);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->CreateMap(nullptr), TVX_E_POINTER); }), "");
}

// Succeeds without delivering a key.
class KeylessReader final : public ScriptedReaderImpl<CountedImpl<KeylessReader, IDeserializer>>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    Result ReadString(IString** out) override
    {
        *out = nullptr;
        return TVX_OK;
    }
};

class MapReading : public testing::Test
{
protected:
    // Reads into a place that holds a mark, to see whether it is touched.
    Result Read() { return factory->Deserialize(reader.Get(), &out); }

    void ExpectFailure(const char* macro)
    {
        const auto report = CaptureOutput([&] { EXPECT_EQ(Read(), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(report, macro, FactorySource));
        EXPECT_EQ(out, mark.Get());
        EXPECT_NE(reader->calls.back(), "EndArray");
        EXPECT_TRUE(reader->IsUnique());
    }

    Ref<IMap> TakeMap()
    {
        const auto object = Ref<IObjectBase>::Adopt(out);
        out = mark.Get();
        EXPECT_TRUE(object->IsUnique());
        return Query<IMap>(object);
    }

    Ref<ProbeObject> item = MakeRef<ProbeObject>();
    Ref<BareObject> bare = MakeRef<BareObject>();
    Ref<BareObject> mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    Ref<ScriptedReader> reader = MakeRef<ScriptedReader>();
    Ref<MapFactory> factory = MakeRef<MapFactory>();
};

TEST_F(MapReading, RebuildsPairsAndIgnoresAnOddLastItem)
{
    reader->items = {std::string("a"), Ref<IObjectBase>(item), std::string("b"), Ref<IObjectBase>(item),
                     std::string("c")};
    EXPECT_EQ(Read(), TVX_OK);
    EXPECT_EQ(reader->calls, (std::vector<std::string>{"BeginArray Values", "ReadString", "ReadObject", "ReadString",
                                                       "ReadObject", "EndArray"}));
    const auto map = TakeMap();
    Ref<IObject> found;
    EXPECT_EQ(map->GetValue("a", found.Receive()), TVX_S_VALUE);
    EXPECT_EQ(found.Get(), item.Get());
    EXPECT_EQ(map->GetValue("b", found.Receive()), TVX_S_VALUE);
    EXPECT_EQ(map->GetValue("c", found.Receive()), TVX_S_NOKEY);
    reader->items.clear();
    EXPECT_EQ(item->GetRefCount(), 3U);  // the test's and one for each key
}

TEST_F(MapReading, RebuildsAnEmptyMapFromLessThanAPair)
{
    reader->items = {std::string("a")};
    EXPECT_EQ(Read(), TVX_OK);
    Ref<IObject> found;
    EXPECT_EQ(TakeMap()->GetValue("a", found.Receive()), TVX_S_NOKEY);
}

TEST_F(MapReading, KeepsTheLaterValueOfAKeyThatStandsTwice)
{
    const auto later = MakeRef<ProbeObject>();
    reader->items = {std::string("a"), Ref<IObjectBase>(item), std::string("a"), Ref<IObjectBase>(later)};
    EXPECT_EQ(Read(), TVX_OK);
    const auto map = TakeMap();
    Ref<IObject> found;
    map->GetValue("a", found.Receive());
    EXPECT_EQ(found.Get(), later.Get());
    found = nullptr;
    reader->items.clear();
    EXPECT_TRUE(item->IsUnique());
    EXPECT_EQ(later->GetRefCount(), 2U);
}

TEST_F(MapReading, FailsWhenTheSequenceCannotBeBegun)
{
    reader->beginResult = -3;
    ExpectFailure("TVX_RETURN_FAIL_IF_FAILED");
}

TEST_F(MapReading, FailsWhenAKeyOrAnItemCannotBeRead)
{
    reader->items = {Ref<IObjectBase>(item), Ref<IObjectBase>(item)};
    ExpectFailure("TVX_RETURN_FAIL_IF_FAILED");
    reader->next = 0;
    reader->items = {std::string("a"), std::string("b")};
    ExpectFailure("TVX_RETURN_FAIL_IF_FAILED");
}

TEST_F(MapReading, FailsForAKeyThatIsNull)
{
    const auto keyless = MakeRef<KeylessReader>();
    keyless->items = {Ref<IObjectBase>(item)};
    keyless->announced = 2;
    const auto report = CaptureOutput([&] { EXPECT_EQ(factory->Deserialize(keyless.Get(), &out), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(report, "TVX_RETURN_FAIL_IF_NULL", FactorySource));
    EXPECT_EQ(out, mark.Get());
    keyless->items.clear();
    EXPECT_TRUE(item->IsUnique());
}

TEST_F(MapReading, FailsForAnItemThatIsNullOrNoObject)
{
    reader->items = {std::string("a"), Ref<IObjectBase>(), std::string("b"), Ref<IObjectBase>()};
    ExpectFailure("TVX_RETURN_FAIL_IF_NULL");
    reader->next = 0;
    reader->items = {std::string("a"), Ref<IObjectBase>(bare)};
    ExpectFailure("TVX_RETURN_FAIL_IF_NULL");
    reader->items.clear();
    EXPECT_TRUE(bare->IsUnique());
}

TEST_F(MapReading, ReleasesWhatItHadReadWhenItFails)
{
    reader->items = {std::string("a"), Ref<IObjectBase>(item)};
    reader->announced = 4000000000U;
    ExpectFailure("TVX_RETURN_FAIL_IF_FAILED");
    reader->items.clear();
    EXPECT_TRUE(item->IsUnique());
}

TEST_F(MapReading, ReportsNullPointers)
{
    const auto noReader = CaptureOutput([&] { EXPECT_EQ(factory->Deserialize(nullptr, &out), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(noReader, "TVX_RETURN_EPOINTER_IF_NULL", FactorySource));
    EXPECT_EQ(out, mark.Get());
    const auto noOut = CaptureOutput([&] { EXPECT_EQ(factory->Deserialize(reader.Get(), nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(noOut, "TVX_RETURN_EPOINTER_IF_NULL", FactorySource));
    EXPECT_TRUE(reader->calls.empty());
}

}  // namespace
