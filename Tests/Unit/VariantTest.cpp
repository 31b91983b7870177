// SPDX-License-Identifier: MIT
#include "Src/Variant.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"
#include "Tests/Support/SerializerDoubles.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace
{

using namespace tvx;
using namespace tvx::test;

// A variant of each type, in the order of their tags.
class VariantOfEachType : public testing::Test
{
protected:
    const Ref<ProbeObject> object = MakeRef<ProbeObject>();
    const Ref<IString> string = MakeString("text");
    const std::vector<Ref<Variant>> variants = {MakeRef<BoolVariant>(true),     MakeRef<IntVariant>(-5),
                                                MakeRef<FloatVariant>(1.5F),    MakeRef<DoubleVariant>(0.1),
                                                MakeRef<StringVariant>(string), MakeRef<ObjectVariant>(object)};
};

// What every getter is called with: places that hold marks, so that a touched one shows.
struct Places
{
    bool boolean = false;
    std::int32_t integer = 77;
    float single = 77.0F;
    double real = 77.0;
    Ref<IString> string;
    Ref<IObject> object;

    bool operator==(const Places& other) const
    {
        return boolean == other.boolean && integer == other.integer && single == other.single && real == other.real &&
               string.Get() == other.string.Get() && object.Get() == other.object.Get();
    }
};

using Getter = Result (*)(IVariant& variant, Places* places);

template <class Value>
Value* PlaceOf(Places* places, Value Places::*place)
{
    return places == nullptr ? nullptr : &(places->*place);
}

template <class Interface>
Interface** PlaceOf(Places* places, Ref<Interface> Places::*place)
{
    return places == nullptr ? nullptr : (places->*place).Receive();
}

// In the order of the tags; null places ask for a null out.
constexpr Getter Getters[] = {
    [](IVariant& variant, Places* places) { return variant.GetBool(PlaceOf(places, &Places::boolean)); },
    [](IVariant& variant, Places* places) { return variant.GetInt(PlaceOf(places, &Places::integer)); },
    [](IVariant& variant, Places* places) { return variant.GetFloat(PlaceOf(places, &Places::single)); },
    [](IVariant& variant, Places* places) { return variant.GetDouble(PlaceOf(places, &Places::real)); },
    [](IVariant& variant, Places* places) { return variant.GetString(PlaceOf(places, &Places::string)); },
    [](IVariant& variant, Places* places) { return variant.GetObject(PlaceOf(places, &Places::object)); },
};

TEST_F(VariantOfEachType, TellsItsTag)
{
    for (std::size_t held = 0; held < variants.size(); ++held)
        EXPECT_EQ(variants[held]->GetType(), static_cast<std::int32_t>(held) + 1);
}

TEST_F(VariantOfEachType, AnswersOnlyTheGetterOfItsOwnType)
{
    Places expected[6];
    expected[0].boolean = true;
    expected[1].integer = -5;
    expected[2].single = 1.5F;
    expected[3].real = 0.1;
    expected[4].string = string;
    expected[5].object = object;
    for (std::size_t held = 0; held < 6; ++held)
    {
        for (std::size_t asked = 0; asked < 6; ++asked)
        {
            Places places;
            EXPECT_EQ(Getters[asked](*variants[held], &places), held == asked ? TVX_OK : TVX_E_FAIL);
            EXPECT_TRUE(places == (held == asked ? expected[held] : Places())) << held << " asked for " << asked;
        }
    }
}

TEST_F(VariantOfEachType, RefusesTheOtherGettersInSilenceAndLeavesOutUntouched)
{
    const auto markString = MakeString("mark");
    const auto markObject = MakeRef<ProbeObject>();
    IString* stringOut = markString.Get();
    IObject* objectOut = markObject.Get();
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(variants[5]->GetString(&stringOut), TVX_E_FAIL);
            EXPECT_EQ(variants[4]->GetObject(&objectOut), TVX_E_FAIL);
            EXPECT_EQ(variants[1]->GetBool(nullptr), TVX_E_FAIL);
        });
    EXPECT_EQ(output, "");
    EXPECT_EQ(stringOut, markString.Get());
    EXPECT_EQ(objectOut, markObject.Get());
}

TEST_F(VariantOfEachType, ReportsANullOutOnlyOfItsOwnGetter)
{
    for (std::size_t held = 0; held < 6; ++held)
    {
        for (std::size_t asked = 0; asked < 6; ++asked)
        {
            Result result = TVX_OK;
            const auto output = CaptureOutput([&] { result = Getters[asked](*variants[held], nullptr); });
            EXPECT_EQ(result, held == asked ? TVX_E_POINTER : TVX_E_FAIL);
            if (held == asked)
                EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Src/Variant.cpp"));
            else
                EXPECT_EQ(output, "");
        }
    }
}

TEST_F(VariantOfEachType, WritesItsTagAndItsValue)
{
    const Texts values[] = {{"WriteNamedInt type 1", "WriteNamedBool value true"},
                            {"WriteNamedInt type 2", "WriteNamedInt value -5"},
                            {"WriteNamedInt type 3", "WriteNamedDouble value 1.5"},
                            {"WriteNamedInt type 4", "WriteNamedDouble value 0.10000000000000001"},
                            {"WriteNamedInt type 5", "WriteNamedString value text"},
                            {"WriteNamedInt type 6", "WriteNamedObject value"}};
    for (std::size_t held = 0; held < 6; ++held)
    {
        const auto writer = MakeRef<RecordingWriter>();
        EXPECT_EQ(variants[held]->Serialize(writer.Get()), TVX_OK);
        EXPECT_EQ(writer->calls, values[held]);
        EXPECT_TRUE(writer->IsUnique());
    }
}

TEST_F(VariantOfEachType, DoesNotLookAtTheWritersResults)
{
    for (const auto& variant : variants)
    {
        const auto writer = MakeRef<RecordingWriter>(-42);
        EXPECT_EQ(variant->Serialize(writer.Get()), TVX_OK);
        EXPECT_EQ(writer->calls.size(), 2U);
    }
}

TEST_F(VariantOfEachType, ReportsANullWriter)
{
    for (const auto& variant : variants)
    {
        Result result = TVX_OK;
        const auto output = CaptureOutput([&] { result = variant->Serialize(nullptr); });
        EXPECT_EQ(result, TVX_E_POINTER);
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Src/Variant.cpp"));
    }
}

TEST_F(VariantOfEachType, TellsItsFormat)
{
    for (const auto& variant : variants)
    {
        Ref<IString> format;
        EXPECT_EQ(variant->GetFormatId(format.Receive()), TVX_OK);
        EXPECT_STREQ(format->GetText(), "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1");
        EXPECT_TRUE(format->IsUnique());
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(variant->GetFormatId(nullptr), TVX_E_POINTER); }), "");
    }
}

TEST_F(VariantOfEachType, AnswersItsFourIdentifiers)
{
    for (const auto& variant : variants)
    {
        IVariant* const primary = variant.Get();
        EXPECT_EQ(Query<IVariant>(primary).Get(), primary);
        EXPECT_EQ(Query<IObject>(primary).Get(), primary);
        EXPECT_EQ(Query<IObjectBase>(primary).Get(), primary);
        const auto serializable = Query<ISerializable>(primary);
        EXPECT_EQ(serializable.Get(), static_cast<ISerializable*>(variant.Get()));
        EXPECT_EQ(Query<IObjectBase>(serializable).Get(), primary);
        EXPECT_FALSE(Query<IDeserializable>(primary));
        EXPECT_EQ(variant->GetRefCount(), 2U);  // ours and that of serializable
    }
}

TEST(FloatVariant, IsWrittenWidened)
{
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(MakeRef<FloatVariant>(0.1F)->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Texts{"WriteNamedInt type 3", "WriteNamedDouble value 0.10000000149011612"}));
}

TEST(BoolVariant, HoldsFalse)
{
    const auto variant = MakeRef<BoolVariant>(false);
    bool value = true;
    EXPECT_EQ(variant->GetBool(&value), TVX_OK);
    EXPECT_FALSE(value);
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(variant->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls[1], "WriteNamedBool value false");
}

TEST(IntVariant, HoldsTheLimits)
{
    using Limits = std::numeric_limits<std::int32_t>;
    for (const std::int32_t limit : {Limits::min(), Limits::max()})
    {
        std::int32_t value = 0;
        EXPECT_EQ(MakeRef<IntVariant>(limit)->GetInt(&value), TVX_OK);
        EXPECT_EQ(value, limit);
    }
}

TEST(StringVariant, SharesItsString)
{
    const auto string = MakeString("text");
    auto variant = MakeRef<StringVariant>(string);
    EXPECT_EQ(string->GetRefCount(), 2U);
    Ref<IString> given;
    EXPECT_EQ(variant->GetString(given.Receive()), TVX_OK);
    EXPECT_EQ(given.Get(), string.Get());
    EXPECT_EQ(string->GetRefCount(), 3U);
    variant = nullptr;
    EXPECT_EQ(string->GetRefCount(), 2U);
}

TEST(StringVariant, ReleasesItsStringBeforeItTellsThatItIsDestroyed)
{
    const auto string = MakeString("text");
    auto variant = MakeRef<StringVariant>(string);
    bool unique = false;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { unique = string->IsUnique(); };
    variant->SubscribeDestroyed(handler.Get(), 0);
    variant = nullptr;
    EXPECT_EQ(handler->GetNames(), Texts{"Destroyed"});
    EXPECT_TRUE(unique);
}

TEST(StringVariant, OfNullGivesNullAndIsWrittenAsTheEmptyText)
{
    const auto variant = MakeRef<StringVariant>(Ref<IString>());
    const auto mark = MakeString("mark");
    IString* out = mark.Get();
    EXPECT_EQ(variant->GetString(&out), TVX_OK);
    EXPECT_EQ(out, nullptr);
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(variant->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Texts{"WriteNamedInt type 5", "WriteNamedString value "}));
}

TEST(ObjectVariant, SharesItsObject)
{
    bool died = false;
    auto object = MakeRef<ProbeObject>(&died);
    auto variant = MakeRef<ObjectVariant>(object);
    EXPECT_EQ(object->GetRefCount(), 2U);
    Ref<IObject> given;
    EXPECT_EQ(variant->GetObject(given.Receive()), TVX_OK);
    EXPECT_EQ(given.Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 3U);
    given = nullptr;
    object = nullptr;
    EXPECT_FALSE(died);
    variant = nullptr;
    EXPECT_TRUE(died);
}

TEST(ObjectVariant, ReleasesItsObjectBeforeItTellsThatItIsDestroyed)
{
    bool died = false;
    bool diedBefore = false;
    auto variant = MakeRef<ObjectVariant>(MakeRef<ProbeObject>(&died));
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { diedBefore = died; };
    variant->SubscribeDestroyed(handler.Get(), 0);
    EXPECT_FALSE(died);
    variant = nullptr;
    EXPECT_EQ(handler->GetNames(), Texts{"Destroyed"});
    EXPECT_TRUE(diedBefore);
}

TEST(ObjectVariant, OfNullGivesNullAndIsWrittenAsNull)
{
    const auto variant = MakeRef<ObjectVariant>(Ref<IObject>());
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    EXPECT_EQ(variant->GetObject(&out), TVX_OK);
    EXPECT_EQ(out, nullptr);
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(variant->Serialize(writer.Get()), TVX_OK);
    EXPECT_EQ(writer->calls, (Texts{"WriteNamedInt type 6", "WriteNamedObject value"}));
    ASSERT_EQ(writer->objects.size(), 1U);
    EXPECT_FALSE(writer->objects[0]);
}

TEST(ObjectVariant, HandsItsObjectToTheWriter)
{
    const auto object = MakeRef<ProbeObject>();
    const auto writer = MakeRef<RecordingWriter>();
    EXPECT_EQ(MakeRef<ObjectVariant>(object)->Serialize(writer.Get()), TVX_OK);
    ASSERT_EQ(writer->objects.size(), 1U);
    EXPECT_EQ(writer->objects[0].Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 2U);  // ours and the writer's
}

}  // namespace
