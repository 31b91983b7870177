// SPDX-License-Identifier: MIT
#include "Src/VariantFactory.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"
#include "Tests/Support/SerializerDoubles.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

namespace
{

using namespace tvx;
using namespace tvx::test;

Ref<VariantFactory> GetFactory()
{
    return VariantFactory::GetOrMake();
}

// A reader of a record with a type and, unless it is left out, a value.
Ref<ScriptedReader> MakeReader(std::int32_t type)
{
    auto reader = MakeRef<ScriptedReader>();
    reader->named["type"] = type;
    return reader;
}

Ref<ScriptedReader> MakeReader(std::int32_t type, ScriptedReader::Value value)
{
    auto reader = MakeReader(type);
    reader->named["value"] = std::move(value);
    return reader;
}

// Delivers every value, and says of every read that it failed.
class DenyingReader final : public ScriptedReaderImpl<CountedImpl<DenyingReader, IDeserializer>>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    Result ReadNamedBool(const char* name, bool* out) override
    {
        return Deny(ScriptedReaderImpl::ReadNamedBool(name, out));
    }
    Result ReadNamedInt(const char* name, std::int32_t* out) override
    {
        return Deny(ScriptedReaderImpl::ReadNamedInt(name, out));
    }
    Result ReadNamedDouble(const char* name, double* out) override
    {
        return Deny(ScriptedReaderImpl::ReadNamedDouble(name, out));
    }
    Result ReadNamedString(const char* name, IString** out) override
    {
        return Deny(ScriptedReaderImpl::ReadNamedString(name, out));
    }
    Result ReadNamedObject(const char* name, IObjectBase** out) override
    {
        return Deny(ScriptedReaderImpl::ReadNamedObject(name, out));
    }

private:
    static Result Deny(Result delivered)
    {
        EXPECT_EQ(delivered, TVX_OK);
        return -42;
    }
};

// The variant read; also checks that nobody else holds it and that the reader was only borrowed.
Ref<IVariant> Read(const Ref<ScriptedReader>& reader)
{
    Ref<IObjectBase> read;
    EXPECT_EQ(GetFactory()->Deserialize(reader.Get(), read.Receive()), TVX_OK);
    EXPECT_TRUE(read->IsUnique());
    EXPECT_TRUE(reader->IsUnique());
    auto variant = Query<IVariant>(read);
    EXPECT_EQ(static_cast<IObjectBase*>(variant.Get()), read.Get());
    return variant;
}

TEST(VariantFactory, MakesBoolVariants)
{
    for (const bool value : {false, true})
    {
        Ref<IVariant> variant;
        EXPECT_EQ(GetFactory()->CreateBool(value, variant.Receive()), TVX_OK);
        bool given = !value;
        EXPECT_EQ(variant->GetBool(&given), TVX_OK);
        EXPECT_EQ(given, value);
        EXPECT_EQ(variant->GetType(), 1);
        EXPECT_EQ(variant->GetRefCount(), 1U);
    }
}

TEST(VariantFactory, MakesIntVariants)
{
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateInt(-5, variant.Receive()), TVX_OK);
    std::int32_t given = 0;
    EXPECT_EQ(variant->GetInt(&given), TVX_OK);
    EXPECT_EQ(given, -5);
    EXPECT_EQ(variant->GetType(), 2);
    EXPECT_EQ(variant->GetRefCount(), 1U);
}

TEST(VariantFactory, MakesFloatVariantsThatAreNoDoubles)
{
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateFloat(1.5F, variant.Receive()), TVX_OK);
    float given = 0.0F;
    double widened = 77.0;
    EXPECT_EQ(variant->GetFloat(&given), TVX_OK);
    EXPECT_EQ(given, 1.5F);
    EXPECT_EQ(variant->GetDouble(&widened), TVX_E_FAIL);
    EXPECT_EQ(widened, 77.0);
    EXPECT_EQ(variant->GetType(), 3);
    EXPECT_EQ(variant->GetRefCount(), 1U);
}

TEST(VariantFactory, MakesDoubleVariants)
{
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateDouble(1e300, variant.Receive()), TVX_OK);
    double given = 0.0;
    EXPECT_EQ(variant->GetDouble(&given), TVX_OK);
    EXPECT_EQ(given, 1e300);
    EXPECT_EQ(variant->GetType(), 4);
    EXPECT_EQ(variant->GetRefCount(), 1U);
}

TEST(VariantFactory, SharesTheStringGiven)
{
    const auto string = MakeString("text");
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateStringFromIString(string.Get(), variant.Receive()), TVX_OK);
    EXPECT_EQ(string->GetRefCount(), 2U);
    Ref<IString> given;
    EXPECT_EQ(variant->GetString(given.Receive()), TVX_OK);
    EXPECT_EQ(given.Get(), string.Get());
    EXPECT_EQ(variant->GetType(), 5);
    EXPECT_EQ(variant->GetRefCount(), 1U);
}

TEST(VariantFactory, KeepsANullStringAsNull)
{
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateStringFromIString(nullptr, variant.Receive()), TVX_OK);
    Ref<IString> given;
    EXPECT_EQ(variant->GetString(given.Receive()), TVX_OK);
    EXPECT_FALSE(given);
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(Query<ISerializable>(variant)->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Texts{"WriteNamedInt type 5", "WriteNamedString value "}));
}

TEST(VariantFactory, CopiesTheTextGiven)
{
    std::string text = "text";
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateString(text.c_str(), variant.Receive()), TVX_OK);
    text = "else";
    Ref<IString> given;
    EXPECT_EQ(variant->GetString(given.Receive()), TVX_OK);
    EXPECT_STREQ(given->GetText(), "text");
    EXPECT_EQ(given->GetRefCount(), 2U);  // ours and the variant's
    EXPECT_EQ(variant->GetType(), 5);
    EXPECT_EQ(variant->GetRefCount(), 1U);
}

TEST(VariantFactory, TakesANullTextAsTheEmptyOne)
{
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateString(nullptr, variant.Receive()), TVX_OK);
    Ref<IString> given;
    EXPECT_EQ(variant->GetString(given.Receive()), TVX_OK);
    ASSERT_TRUE(given);
    EXPECT_STREQ(given->GetText(), "");
}

TEST(VariantFactory, SharesTheObjectGiven)
{
    const auto object = MakeRef<ProbeObject>();
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateObject(object.Get(), variant.Receive()), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 2U);
    Ref<IObject> given;
    EXPECT_EQ(variant->GetObject(given.Receive()), TVX_OK);
    EXPECT_EQ(given.Get(), object.Get());
    EXPECT_EQ(variant->GetType(), 6);
    EXPECT_EQ(variant->GetRefCount(), 1U);
}

TEST(VariantFactory, MakesAnObjectVariantOfNull)
{
    Ref<IVariant> variant;
    EXPECT_EQ(GetFactory()->CreateObject(nullptr, variant.Receive()), TVX_OK);
    const auto mark = MakeRef<ProbeObject>();
    IObject* given = mark.Get();
    EXPECT_EQ(variant->GetObject(&given), TVX_OK);
    EXPECT_EQ(given, nullptr);
    EXPECT_EQ(variant->GetType(), 6);
}

TEST(VariantFactory, RefusesANullOutInSilenceAndKeepsNothing)
{
    const auto factory = GetFactory();
    const auto string = MakeString("text");
    const auto object = MakeRef<ProbeObject>();
    const std::function<Result()> creations[] = {
        [&] { return factory->CreateBool(true, nullptr); },
        [&] { return factory->CreateInt(1, nullptr); },
        [&] { return factory->CreateFloat(1.0F, nullptr); },
        [&] { return factory->CreateDouble(1.0, nullptr); },
        [&] { return factory->CreateStringFromIString(string.Get(), nullptr); },
        [&] { return factory->CreateString("text", nullptr); },
        [&] { return factory->CreateObject(object.Get(), nullptr); },
        [&] { return factory->GetFormatId(nullptr); },
    };
    for (const auto& create : creations)
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(create(), TVX_E_POINTER); }), "");
    EXPECT_TRUE(string->IsUnique());
    EXPECT_TRUE(object->IsUnique());
}

TEST(VariantFactory, TellsTheFormatOfTheVariants)
{
    Ref<IString> format;
    EXPECT_EQ(GetFactory()->GetFormatId(format.Receive()), TVX_OK);
    EXPECT_STREQ(format->GetText(), "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1");
    EXPECT_TRUE(format->IsUnique());
}

TEST(VariantFactory, AnswersItsFourIdentifiers)
{
    const auto factory = GetFactory();
    IVariantFactory* const primary = factory.Get();
    EXPECT_EQ(Query<IVariantFactory>(primary).Get(), primary);
    EXPECT_EQ(Query<IObject>(primary).Get(), primary);
    EXPECT_EQ(Query<IObjectBase>(primary).Get(), primary);
    EXPECT_EQ(Query<IDeserializable>(primary).Get(), static_cast<IDeserializable*>(factory.Get()));
    EXPECT_EQ(Query<IObject>(Query<IDeserializable>(primary)).Get(), primary);
    EXPECT_FALSE(Query<ISerializable>(primary));
}

TEST(VariantFactory, ReadsABoolBack)
{
    bool value = false;
    EXPECT_EQ(Read(MakeReader(1, true))->GetBool(&value), TVX_OK);
    EXPECT_TRUE(value);
}

TEST(VariantFactory, ReadsAnIntBack)
{
    const auto least = std::numeric_limits<std::int32_t>::min();
    std::int32_t value = 0;
    EXPECT_EQ(Read(MakeReader(2, least))->GetInt(&value), TVX_OK);
    EXPECT_EQ(value, least);
}

TEST(VariantFactory, NarrowsADoubleToTheFloatThatWasWritten)
{
    float value = 0.0F;
    EXPECT_EQ(Read(MakeReader(3, 0.10000000149011612))->GetFloat(&value), TVX_OK);
    EXPECT_EQ(value, 0.1F);
}

TEST(VariantFactory, ReadsADoubleBack)
{
    double value = 0.0;
    EXPECT_EQ(Read(MakeReader(4, 0.1))->GetDouble(&value), TVX_OK);
    EXPECT_EQ(value, 0.1);
}

TEST(VariantFactory, ReadsAStringBackAndIsItsOnlyOwner)
{
    const auto variant = Read(MakeReader(5, std::string("text")));
    Ref<IString> value;
    EXPECT_EQ(variant->GetString(value.Receive()), TVX_OK);
    EXPECT_STREQ(value->GetText(), "text");
    EXPECT_EQ(value->GetRefCount(), 2U);  // ours and the variant's
}

TEST(VariantFactory, ReadsAnObjectBack)
{
    const auto object = MakeRef<ProbeObject>();
    auto reader = MakeReader(6, Ref<IObjectBase>(object));
    const auto variant = Read(reader);
    reader = nullptr;
    Ref<IObject> value;
    EXPECT_EQ(variant->GetObject(value.Receive()), TVX_OK);
    EXPECT_EQ(value.Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 3U);  // two of ours and the variant's
}

TEST(VariantFactory, ReadsAnObjectWithoutIObjectAsNullAndReleasesIt)
{
    const auto bare = MakeRef<BareObject>();
    auto reader = MakeReader(6, Ref<IObjectBase>(bare));
    const auto variant = Read(reader);
    reader = nullptr;
    Ref<IObject> value;
    EXPECT_EQ(variant->GetObject(value.Receive()), TVX_OK);
    EXPECT_FALSE(value);
    EXPECT_TRUE(bare->IsUnique());
}

TEST(VariantFactory, ReadsAWrittenNullObjectAsNull)
{
    Ref<IObject> value;
    EXPECT_EQ(Read(MakeReader(6, Ref<IObjectBase>()))->GetObject(value.Receive()), TVX_OK);
    EXPECT_FALSE(value);
}

TEST(VariantFactory, ReadsTheTypeAndThenTheValueOnly)
{
    const char* const values[] = {"ReadNamedBool value",   "ReadNamedInt value",    "ReadNamedDouble value",
                                  "ReadNamedDouble value", "ReadNamedString value", "ReadNamedObject value"};
    for (std::int32_t type = 1; type <= 6; ++type)
    {
        const auto reader = MakeReader(type);
        Read(reader);
        EXPECT_EQ(reader->calls, (Texts{"ReadNamedInt type", values[type - 1]}));
    }
}

TEST(VariantFactory, LeavesAMissingValueAtZero)
{
    bool boolean = true;
    EXPECT_EQ(Read(MakeReader(1))->GetBool(&boolean), TVX_OK);
    EXPECT_FALSE(boolean);
    std::int32_t integer = 77;
    EXPECT_EQ(Read(MakeReader(2))->GetInt(&integer), TVX_OK);
    EXPECT_EQ(integer, 0);
    float single = 77.0F;
    EXPECT_EQ(Read(MakeReader(3))->GetFloat(&single), TVX_OK);
    EXPECT_EQ(single, 0.0F);
    double real = 77.0;
    EXPECT_EQ(Read(MakeReader(4))->GetDouble(&real), TVX_OK);
    EXPECT_EQ(real, 0.0);
    Ref<IString> string = MakeString("mark");
    EXPECT_EQ(Read(MakeReader(5))->GetString(string.Receive()), TVX_OK);
    EXPECT_FALSE(string);
    Ref<IObject> object;
    EXPECT_EQ(Read(MakeReader(6))->GetObject(object.Receive()), TVX_OK);
    EXPECT_FALSE(object);
}

TEST(VariantFactory, RefusesAnUnknownTypeInSilenceAndLeavesOutUntouched)
{
    const auto mark = MakeRef<ProbeObject>();
    for (const std::int32_t type : {0, 7, -5, -1, 262})
    {
        const auto reader = MakeReader(type, 1);
        IObjectBase* out = mark.Get();
        Result result = TVX_OK;
        EXPECT_EQ(CaptureOutput([&] { result = GetFactory()->Deserialize(reader.Get(), &out); }), "");
        EXPECT_EQ(result, TVX_E_FAIL) << type;
        EXPECT_EQ(out, mark.Get());
    }
}

TEST(VariantFactory, RefusesARecordWithoutATypeOrWithOneThatIsNoInteger)
{
    const auto empty = MakeRef<ScriptedReader>();
    const auto text = MakeRef<ScriptedReader>();
    text->named["type"] = std::string("2");
    Ref<IObjectBase> out;
    EXPECT_EQ(GetFactory()->Deserialize(empty.Get(), out.Receive()), TVX_E_FAIL);
    EXPECT_EQ(GetFactory()->Deserialize(text.Get(), out.Receive()), TVX_E_FAIL);
    EXPECT_FALSE(out);
}

TEST(VariantFactory, TakesWhatAReaderDeliversWithAFailure)
{
    const auto object = MakeRef<ProbeObject>();
    struct Row
    {
        std::int32_t type;
        ScriptedReader::Value value;
        const char* written;
    };
    const Row rows[] = {{1, true, "WriteNamedBool value true"},
                        {2, -5, "WriteNamedInt value -5"},
                        {3, 1.5, "WriteNamedDouble value 1.5"},
                        {4, 0.25, "WriteNamedDouble value 0.25"},
                        {5, std::string("text"), "WriteNamedString value text"},
                        {6, Ref<IObjectBase>(object), "WriteNamedObject value"}};
    for (const auto& row : rows)
    {
        const auto reader = MakeRef<DenyingReader>();
        reader->named = {{"type", row.type}, {"value", row.value}};
        Ref<IObjectBase> read;
        ASSERT_EQ(GetFactory()->Deserialize(reader.Get(), read.Receive()), TVX_OK) << row.type;
        EXPECT_EQ(Query<IVariant>(read)->GetType(), row.type);
        const auto writer = MakeRef<RecordingWriter>();
        Query<ISerializable>(read)->Serialize(writer.Get());
        EXPECT_EQ(writer->calls.back(), row.written);
        EXPECT_EQ(!writer->objects.empty() && writer->objects[0].Get() == object.Get(), row.type == 6);
    }
}

TEST(VariantFactory, ReadsAValidRecordForANullOutAndKeepsNothing)
{
    const auto object = MakeRef<ProbeObject>();
    auto reader = MakeReader(6, Ref<IObjectBase>(object));
    Result result = TVX_E_FAIL;
    EXPECT_EQ(CaptureOutput([&] { result = GetFactory()->Deserialize(reader.Get(), nullptr); }), "");
    EXPECT_EQ(result, TVX_OK);
    reader = nullptr;
    EXPECT_TRUE(object->IsUnique());
    EXPECT_EQ(GetFactory()->Deserialize(MakeReader(7).Get(), nullptr), TVX_E_FAIL);
}

TEST(VariantFactory, ReportsANullReader)
{
    const auto mark = MakeRef<ProbeObject>();
    IObjectBase* out = mark.Get();
    Result result = TVX_OK;
    const auto output = CaptureOutput([&] { result = GetFactory()->Deserialize(nullptr, &out); });
    EXPECT_EQ(result, TVX_E_POINTER);
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Src/VariantFactory.cpp"));
    EXPECT_EQ(out, mark.Get());
}

}  // namespace
