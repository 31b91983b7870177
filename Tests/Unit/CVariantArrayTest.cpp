// SPDX-License-Identifier: MIT
#include "Src/CVariantArray.h"

#include "Src/Variant.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/SerializerDoubles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvx::test
{

namespace
{

constexpr const char Source[] = "Src/CVariantArray.cpp";

using Calls = std::vector<std::string>;

class CVariantArrayTest : public testing::Test
{
protected:
    Ref<IVariant> At(std::uint32_t index)
    {
        Ref<IVariant> element;
        EXPECT_EQ(array->GetAt(index, element.Receive()), TVX_OK);
        return element;
    }

    std::uint32_t Size()
    {
        std::uint32_t size = 0;
        EXPECT_EQ(array->GetSize(&size), TVX_OK);
        return size;
    }

    Ref<CVariantArray> array = MakeRef<CVariantArray>();
};

class CVariantArrayReading : public testing::Test
{
protected:
    Ref<IVariantArray> Read()
    {
        Ref<IObjectBase> object;
        EXPECT_EQ(factory->Deserialize(reader.Get(), object.Receive()), TVX_OK);
        EXPECT_TRUE(object->IsUnique());
        return Query<IVariantArray>(object);
    }

    static std::uint32_t SizeOf(const Ref<IVariantArray>& read)
    {
        std::uint32_t size = 0;
        read->GetSize(&size);
        return size;
    }

    Ref<ScriptedReader> reader = MakeRef<ScriptedReader>();
    Ref<CVariantArrayFactory> factory = MakeRef<CVariantArrayFactory>();
};

// Fails each time, but delivers what it was asked for.
class FailingReader final : public ScriptedReaderImpl<CountedImpl<FailingReader, IDeserializer>>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    Result ReadNamedInt(const char* name, std::int32_t* out) override
    {
        static_cast<void>(ScriptedReaderImpl::ReadNamedInt(name, out));
        return -42;
    }
    Result ReadNamedObject(const char* name, IObjectBase** out) override
    {
        static_cast<void>(ScriptedReaderImpl::ReadNamedObject(name, out));
        return -42;
    }
};

class Unserialisable final : public ClassImpl<Unserialisable, IVariant>
{
public:
    using Interfaces = InterfaceList<IVariant, IObject, IObjectBase>;

    std::int32_t GetType() override { return TypeBool; }
    Result GetBool(bool*) override { return TVX_E_FAIL; }
    Result GetInt(std::int32_t*) override { return TVX_E_FAIL; }
    Result GetFloat(float*) override { return TVX_E_FAIL; }
    Result GetDouble(double*) override { return TVX_E_FAIL; }
    Result GetString(IString**) override { return TVX_E_FAIL; }
    Result GetObject(IObject**) override { return TVX_E_FAIL; }
};

}  // namespace

TEST_F(CVariantArrayTest, MakesAVariantOfTheOperationsType)
{
    const auto object = MakeRef<ProbeObject>();
    EXPECT_EQ(array->AppendObject(object.Get()), TVX_OK);
    EXPECT_EQ(array->AppendString("text"), TVX_OK);
    EXPECT_EQ(array->AppendDouble(0.1), TVX_OK);
    EXPECT_EQ(array->AppendFloat(1.5F), TVX_OK);
    EXPECT_EQ(array->AppendInt(7), TVX_OK);
    EXPECT_EQ(array->AppendBool(true), TVX_OK);
    EXPECT_EQ(Size(), 6U);
    Ref<IObject> held;
    EXPECT_EQ(At(0)->GetObject(held.Receive()), TVX_OK);
    EXPECT_EQ(held.Get(), object.Get());
    Ref<IString> text;
    EXPECT_EQ(At(1)->GetString(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), "text");
    double number = 0.0;
    EXPECT_EQ(At(2)->GetDouble(&number), TVX_OK);
    EXPECT_EQ(number, 0.1);
    float narrow = 0.0F;
    EXPECT_EQ(At(3)->GetFloat(&narrow), TVX_OK);
    EXPECT_EQ(narrow, 1.5F);
    std::int32_t integer = 0;
    EXPECT_EQ(At(4)->GetInt(&integer), TVX_OK);
    EXPECT_EQ(integer, 7);
    bool flag = false;
    EXPECT_EQ(At(5)->GetBool(&flag), TVX_OK);
    EXPECT_TRUE(flag);
}

TEST_F(CVariantArrayTest, HoldsTheOneReferenceOnAVariantThatItMade)
{
    array->AppendInt(7);
    IVariant* const element = At(0).Get();
    EXPECT_EQ(element->GetRefCount(), 1U);
    EXPECT_EQ(At(0)->GetRefCount(), 2U);
}

TEST_F(CVariantArrayTest, HoldsAnObjectOnceUntilItDies)
{
    const auto object = MakeRef<ProbeObject>();
    array->AppendObject(object.Get());
    EXPECT_EQ(object->GetRefCount(), 2U);
    array = nullptr;
    EXPECT_TRUE(object->IsUnique());
}

TEST_F(CVariantArrayTest, TakesNullObjectsAndTexts)
{
    EXPECT_EQ(array->AppendObject(nullptr), TVX_OK);
    EXPECT_EQ(array->AppendString(nullptr), TVX_OK);
    EXPECT_EQ(At(0)->GetType(), IVariant::TypeObject);
    Ref<IString> text;
    EXPECT_EQ(At(1)->GetString(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), "");
}

TEST_F(CVariantArrayTest, SharesTheVariantThatIsAppended)
{
    const auto variant = MakeRef<IntVariant>(1);
    EXPECT_EQ(array->AppendVariant(variant.Get()), TVX_OK);
    EXPECT_EQ(array->AppendVariant(nullptr), TVX_OK);
    EXPECT_EQ(variant->GetRefCount(), 2U);
    {
        const auto element = At(0);
        EXPECT_EQ(element.Get(), variant.Get());
        EXPECT_EQ(variant->GetRefCount(), 3U);
    }
    EXPECT_EQ(At(1).Get(), nullptr);
    array = nullptr;
    EXPECT_TRUE(variant->IsUnique());
}

TEST_F(CVariantArrayTest, ChecksTheIndexBeforeThePlaceForTheElement)
{
    array->AppendInt(1);
    IVariant* untouched = At(0).Get();
    for (IVariant** const out : {&untouched, static_cast<IVariant**>(nullptr)})
    {
        const auto report = CaptureOutput([&] { EXPECT_EQ(array->GetAt(5, out), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(report, "TVX_RETURN_FAIL_IF", Source));
    }
    EXPECT_EQ(untouched, At(0).Get());
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(array->GetAt(0, nullptr), TVX_E_POINTER); }), "");
    const auto report = CaptureOutput([&] { EXPECT_EQ(array->GetSize(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(report, "TVX_RETURN_EPOINTER_IF_NULL", Source));
}

TEST_F(CVariantArrayTest, WritesItsSizeAndItsElementsByNumber)
{
    for (int number = 0; number < 11; ++number)
        array->AppendInt(number);
    const auto writer = MakeRef<RecordingWriter>(-9);
    EXPECT_EQ(array->Serialize(writer.Get()), TVX_OK);
    ASSERT_EQ(writer->calls.size(), 12U);
    EXPECT_EQ(writer->calls[0], "WriteNamedInt size 11");
    EXPECT_EQ(writer->calls[1], "WriteNamedObject param0");
    EXPECT_EQ(writer->calls[11], "WriteNamedObject param10");
    EXPECT_EQ(writer->objects[10].Get(), Query<ISerializable>(At(10)).Get());
}

TEST_F(CVariantArrayTest, WritesOnlyItsSizeWhenItIsEmpty)
{
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(array->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, Calls{"WriteNamedInt size 0"});
}

TEST_F(CVariantArrayTest, EndsWritingAtAnElementThatCannotBeWritten)
{
    const auto refusing = MakeRef<Unserialisable>();
    for (IVariant* const bad : {static_cast<IVariant*>(nullptr), static_cast<IVariant*>(refusing.Get())})
    {
        array = MakeRef<CVariantArray>();
        array->AppendInt(1);
        array->AppendVariant(bad);
        array->AppendInt(2);
        const auto writer = MakeRef<RecordingWriter>();
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(array->Serialize(writer.Get()), TVX_E_FAIL); }), "");
        EXPECT_EQ(writer->calls, (Calls{"WriteNamedInt size 3", "WriteNamedObject param0"}));
    }
    const auto report = CaptureOutput([&] { EXPECT_EQ(array->Serialize(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(report, "TVX_RETURN_EPOINTER_IF_NULL", Source));
}

TEST_F(CVariantArrayTest, TellsTheFormatOfItsFactory)
{
    constexpr const char format[] = "com.talvere.general.tvx.GenericVariantArrayImplementationFormat/1.0";
    Ref<IString> text;
    EXPECT_EQ(array->GetFormatId(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), format);
    EXPECT_TRUE(text->IsUnique());
    const auto factory = MakeRef<CVariantArrayFactory>();
    EXPECT_EQ(factory->GetFormatId(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), format);
    Ref<IDeserializable> shared;
    EXPECT_EQ(CVariantArrayFactory::GetInstance(shared.Receive()), TVX_OK);
    const auto count = shared->GetRefCount();
    EXPECT_EQ(array->GetFormatId(text.Receive()), TVX_OK);  // asks the shared factory
    EXPECT_EQ(shared->GetRefCount(), count);
    EXPECT_EQ(shared->GetFormatId(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), format);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(array->GetFormatId(nullptr), TVX_E_POINTER); }), "");
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->GetFormatId(nullptr), TVX_E_POINTER); }), "");
}

TEST(CVariantArrayFactory, MakesIndependentEmptyArrays)
{
    const auto factory = MakeRef<CVariantArrayFactory>();
    Ref<IObjectBase> first;
    Ref<IObjectBase> second;
    EXPECT_EQ(factory->Create(first.Receive()), TVX_OK);
    EXPECT_EQ(factory->Create(second.Receive()), TVX_OK);
    EXPECT_TRUE(first->IsUnique());
    const auto array = Query<IVariantArray>(first);
    EXPECT_EQ(static_cast<IObjectBase*>(array.Get()), first.Get());
    array->AppendInt(1);
    std::uint32_t size = 7;
    EXPECT_EQ(Query<IVariantArray>(second)->GetSize(&size), TVX_OK);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->Create(nullptr), TVX_E_POINTER); }), "");
}

TEST(CVariantArrayFactory, AnswersIObjectWithItsFactoryFace)
{
    const auto factory = MakeRef<CVariantArrayFactory>();
    IFactory* const face = factory.Get();
    const auto object = Query<IObject>(face);
    EXPECT_EQ(object.Get(), static_cast<IObject*>(face));
    EXPECT_EQ(Query<IObjectBase>(face).Get(), static_cast<IDeserializable*>(factory.Get()));
}

TEST_F(CVariantArrayReading, RebuildsEveryElement)
{
    const auto first = MakeRef<IntVariant>(1);
    const auto second = MakeRef<BoolVariant>(true);
    reader->named["size"] = 2;
    reader->named["param0"] = Ref<IObjectBase>(static_cast<IVariant*>(first.Get()));
    reader->named["param1"] = Ref<IObjectBase>(static_cast<ISerializable*>(second.Get()));
    const auto read = Read();
    ASSERT_EQ(SizeOf(read), 2U);
    Ref<IVariant> element;
    read->GetAt(0, element.Receive());
    EXPECT_EQ(element.Get(), first.Get());
    read->GetAt(1, element.Receive());
    EXPECT_EQ(element.Get(), second.Get());
    EXPECT_EQ(reader->calls, (Calls{"ReadNamedInt size", "ReadNamedObject param0", "ReadNamedObject param1"}));
}

TEST_F(CVariantArrayReading, LooksAtWhatIsDeliveredAndNotAtResults)
{
    const auto variant = MakeRef<IntVariant>(1);
    const auto failing = MakeRef<FailingReader>();
    failing->named["size"] = 2;
    failing->named["param0"] = Ref<IObjectBase>(static_cast<IVariant*>(variant.Get()));
    Ref<IObjectBase> object;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->Deserialize(failing.Get(), object.Receive()), TVX_OK); }), "");
    const auto read = Query<IVariantArray>(object);
    ASSERT_EQ(SizeOf(read), 2U);
    Ref<IVariant> element;
    EXPECT_EQ(read->GetAt(0, element.Receive()), TVX_OK);
    EXPECT_EQ(element.Get(), variant.Get());
    EXPECT_EQ(read->GetAt(1, element.Receive()), TVX_OK);
    EXPECT_FALSE(element);
    failing->named.clear();
    EXPECT_EQ(variant->GetRefCount(), 2U);
}

TEST_F(CVariantArrayReading, MakesNullElementsOfWhatIsMissingOrNoVariant)
{
    reader->named["size"] = 3;
    reader->named["param0"] = Ref<IObjectBase>(MakeRef<BareObject>());
    reader->named["param2"] = std::string("no object");
    std::string output = CaptureOutput(
        [&]
        {
            const auto read = Read();
            ASSERT_EQ(SizeOf(read), 3U);
            for (std::uint32_t index = 0; index < 3; ++index)
            {
                IVariant* element = nullptr;
                EXPECT_EQ(read->GetAt(index, &element), TVX_OK);
                EXPECT_EQ(element, nullptr);
            }
        });
    EXPECT_EQ(output, "");
}

TEST_F(CVariantArrayReading, RebuildsAnEmptyArrayOfAMissingOrNegativeSize)
{
    EXPECT_EQ(SizeOf(Read()), 0U);
    for (const std::int32_t size : {0, -1, -2147483647 - 1})
    {
        reader->named["size"] = size;
        EXPECT_EQ(SizeOf(Read()), 0U);
    }
    reader->named["size"] = std::string("3");
    EXPECT_EQ(SizeOf(Read()), 0U);
}

TEST_F(CVariantArrayReading, ReadsTheWholeStreamBeforeItRefusesANullOut)
{
    const auto variant = MakeRef<IntVariant>(1);
    reader->named["size"] = 2;
    reader->named["param0"] = Ref<IObjectBase>(static_cast<IVariant*>(variant.Get()));
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->Deserialize(reader.Get(), nullptr), TVX_E_POINTER); }), "");
    EXPECT_EQ(reader->calls.size(), 3U);
    reader->named.clear();
    EXPECT_TRUE(variant->IsUnique());
}

TEST_F(CVariantArrayReading, ReportsANullReader)
{
    const auto mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    const auto report = CaptureOutput([&] { EXPECT_EQ(factory->Deserialize(nullptr, &out), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(report, "TVX_RETURN_EPOINTER_IF_NULL", Source));
    EXPECT_EQ(out, mark.Get());
}

}  // namespace tvx::test
