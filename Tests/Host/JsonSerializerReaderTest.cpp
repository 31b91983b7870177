// SPDX-License-Identifier: MIT
#include "Tests/Host/JsonSerializerFixture.h"

#include <cmath>
#include <new>

namespace tvx::test
{
namespace
{

constexpr const char OneObject[] = R"({"x":{"$format":"test/1.0","i":7}})";

class JsonSerializerReader : public JsonSerializerFixture
{
protected:
    // What reading the object "x" of a document writes to standard output. It has to fail, to deliver nothing, and to
    // keep failing.
    std::string FailObject(Result expected, const std::string& text)
    {
        const auto reader = BeginReading(text);
        EXPECT_EQ(began_, TVX_OK);
        IObjectBase* out = formats_.Get();
        const auto output = CaptureOutput([&] { EXPECT_EQ(reader->ReadNamedObject("x", &out), expected); });
        EXPECT_EQ(out, formats_.Get());
        EXPECT_EQ(reader->GetRefCount(), 1u);
        bool later = false;
        EXPECT_EQ(reader->ReadNamedBool("later", &later), expected);
        EXPECT_EQ(Query<IStringDeserializer>(reader)->End(), expected);
        return output;
    }

    // The same where the factory of the format does what script says.
    std::string FailScript(Result expected, const ScriptedFormat::Script& script)
    {
        const auto format = AddFormat(script);
        const auto output = FailObject(expected, OneObject);
        EXPECT_EQ(format->GetRefCount(), 2u);  // this one and that of the formats
        return output;
    }

    std::string FailBegin(const std::string& text)
    {
        const auto output = CaptureOutput([&] { BeginReading(text); });
        EXPECT_EQ(began_, TVX_E_FAIL);
        return output;
    }

    static std::string ReadText(const Ref<IDeserializer>& reader, const char* name)
    {
        Ref<IString> text;
        return TVX_FAILED(reader->ReadNamedString(name, text.Receive())) ? "failed" : text->GetText();
    }

    static std::string ReadItem(const Ref<IDeserializer>& reader)
    {
        Ref<IString> text;
        return TVX_FAILED(reader->ReadString(text.Receive())) ? "failed" : text->GetText();
    }

    static double ReadDouble(const Ref<IDeserializer>& reader, const char* name)
    {
        double value = -77.0;
        reader->ReadNamedDouble(name, &value);
        return value;
    }

    static std::int32_t ReadInt(const Ref<IDeserializer>& reader, const char* name)
    {
        std::int32_t value = -77;
        reader->ReadNamedInt(name, &value);
        return value;
    }
};

TEST_F(JsonSerializerReader, ReadsNamedValuesInAnyOrder)
{
    const auto reader = BeginReading(R"({"t":"text","b":true,"f":false,"i":-5,"d":0.5})");
    bool yes = false;
    bool no = true;
    EXPECT_EQ(ReadDouble(reader, "d"), 0.5);
    EXPECT_EQ(ReadInt(reader, "i"), -5);
    EXPECT_EQ(reader->ReadNamedBool("f", &no), TVX_OK);
    EXPECT_EQ(reader->ReadNamedBool("b", &yes), TVX_OK);
    EXPECT_TRUE(yes);
    EXPECT_FALSE(no);
    EXPECT_EQ(ReadText(reader, "t"), "text");
    EXPECT_EQ(Query<IStringDeserializer>(reader)->End(), TVX_OK);
}

TEST_F(JsonSerializerReader, ReadsIntegersOf32BitsOnly)
{
    const auto reader = BeginReading(
        R"({"min":-2147483648,"max":2147483647,"below":-2147483649,"above":2147483648,"huge":18446744073709551615,
            "huger":18446744073709551616,"d":1.0})");
    EXPECT_EQ(ReadInt(reader, "min"), -2147483647 - 1);
    EXPECT_EQ(ReadInt(reader, "max"), 2147483647);
    EXPECT_EQ(ReadInt(reader, "below"), -77);
    EXPECT_EQ(ReadInt(reader, "above"), -77);
    EXPECT_EQ(ReadInt(reader, "huge"), -77);
    EXPECT_EQ(ReadInt(reader, "huger"), -77);
    EXPECT_EQ(ReadInt(reader, "d"), -77);
}

TEST_F(JsonSerializerReader, ReadsIntegersAsDoublesToo)
{
    const auto reader = BeginReading(R"({"i":-3,"huge":18446744073709551615,"zero":-0.0,"t":"1"})");
    EXPECT_EQ(ReadDouble(reader, "i"), -3.0);
    EXPECT_EQ(ReadDouble(reader, "huge"), 18446744073709551615.0);
    EXPECT_TRUE(std::signbit(ReadDouble(reader, "zero")));
    EXPECT_EQ(ReadDouble(reader, "t"), -77.0);
}

TEST_F(JsonSerializerReader, LeavesOutUntouchedAndStaysUsableWhereAValueIsMissingOrOfAnotherType)
{
    const auto reader = BeginReading(R"({"i":1,"t":"text","bytes":{"$bytes":"ff"},"inf":{"$double":"inf"},"n":null})");
    bool flag = true;
    std::int32_t number = -77;
    double real = -77.0;
    std::uint32_t count = 77;
    IString* text = nullptr;
    IObjectBase* object = formats_.Get();
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(reader->ReadNamedBool("i", &flag), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedInt("t", &number), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedInt("missing", &number), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedDouble("bytes", &real), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedString("inf", &text), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedString("n", &text), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedObject("i", &object), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedObject("inf", &object), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedObject("bytes", &object), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadNamedObject("missing", &object), TVX_E_FAIL);
            EXPECT_EQ(reader->BeginArray("t", &count), TVX_E_FAIL);
            EXPECT_EQ(reader->EndArray(), TVX_E_FAIL);
            EXPECT_EQ(reader->ReadString(&text), TVX_E_FAIL);
        });
    EXPECT_EQ(output, "");
    EXPECT_TRUE(flag);
    EXPECT_EQ(number, -77);
    EXPECT_EQ(real, -77.0);
    EXPECT_EQ(count, 77u);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(object, formats_.Get());
    EXPECT_EQ(ReadText(reader, "t"), "text");
    EXPECT_EQ(Query<IStringDeserializer>(reader)->End(), TVX_OK);
}

TEST_F(JsonSerializerReader, RefusesNullPointersSilently)
{
    const auto reader = BeginReading(R"({"i":1,"s":["a"]})");
    std::int32_t number = 0;
    std::uint32_t count = 0;
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(reader->ReadNamedInt(nullptr, &number), TVX_E_POINTER);
            EXPECT_EQ(reader->ReadNamedInt("i", nullptr), TVX_E_POINTER);
            EXPECT_EQ(reader->ReadNamedObject("i", nullptr), TVX_E_POINTER);
            EXPECT_EQ(reader->ReadNamedString(nullptr, nullptr), TVX_E_POINTER);
            EXPECT_EQ(reader->BeginArray("s", nullptr), TVX_E_POINTER);
            EXPECT_EQ(reader->BeginArray(nullptr, &count), TVX_E_POINTER);
            EXPECT_EQ(reader->ReadString(nullptr), TVX_E_POINTER);
            EXPECT_EQ(reader->ReadObject(nullptr), TVX_E_POINTER);
            EXPECT_EQ(Query<IStringDeserializer>(reader)->SetText(nullptr), TVX_E_POINTER);
        });
    EXPECT_EQ(output, "");
    EXPECT_EQ(ReadInt(reader, "i"), 1);
}

TEST_F(JsonSerializerReader, KeepsItsOwnNamesFromBeingRead)
{
    const auto reader = BeginReading(R"({"$format":"secret"})");
    EXPECT_EQ(ReadText(reader, "$format"), "failed");
}

TEST_F(JsonSerializerReader, ReadsNullAsNull)
{
    const auto reader = BeginReading(R"({"x":null})");
    IObjectBase* out = formats_.Get();
    EXPECT_EQ(reader->ReadNamedObject("x", &out), TVX_OK);
    EXPECT_EQ(out, nullptr);
}

TEST_F(JsonSerializerReader, WalksThroughASequenceAndEndsIt)
{
    const auto reader = BeginReading(R"({"s":["a",null,"b",1],"t":"text"})");
    std::uint32_t count = 0;
    EXPECT_EQ(reader->BeginArray("s", &count), TVX_OK);
    EXPECT_EQ(count, 4u);
    EXPECT_EQ(ReadText(reader, "t"), "failed");  // a sequence has no names
    EXPECT_EQ(ReadItem(reader), "a");
    EXPECT_EQ(ReadItem(reader), "failed");  // no text, and still the next item
    IObjectBase* out = formats_.Get();
    EXPECT_EQ(reader->ReadObject(&out), TVX_OK);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(ReadItem(reader), "b");
    EXPECT_EQ(reader->EndArray(), TVX_OK);  // one item is skipped
    EXPECT_EQ(ReadText(reader, "t"), "text");
    EXPECT_EQ(reader->BeginArray("s", &count), TVX_OK);
    EXPECT_EQ(ReadItem(reader), "a");
}

TEST_F(JsonSerializerReader, GivesNothingBehindTheEndOfASequence)
{
    const auto reader = BeginReading(R"({"s":["a"],"empty":[]})");
    std::uint32_t count = 77;
    EXPECT_EQ(reader->BeginArray("empty", &count), TVX_OK);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(ReadItem(reader), "failed");
    EXPECT_EQ(reader->EndArray(), TVX_OK);
    reader->BeginArray("s", &count);
    EXPECT_EQ(ReadItem(reader), "a");
    EXPECT_EQ(ReadItem(reader), "failed");
    EXPECT_EQ(ReadItem(reader), "failed");
}

TEST_F(JsonSerializerReader, LetsTheFactoryOfAFormatSeeItsObjectAlone)
{
    AddFormat(
        [](auto& reader, auto** out)
        {
            std::int32_t number = 0;
            EXPECT_EQ(reader.ReadNamedInt("i", &number), TVX_OK);
            EXPECT_EQ(number, 7);
            EXPECT_EQ(reader.ReadNamedInt("outside", &number), TVX_E_FAIL);
            EXPECT_EQ(reader.EndArray(), TVX_E_FAIL);  // the sequence outside is not its own
            *out = MakeRef<ProbeObject>().Detach();
            return TVX_OK;
        });
    const auto reader = BeginReading(R"({"outside":1,"s":[{"$format":"test/1.0","i":7},"b"]})");
    std::uint32_t count = 0;
    reader->BeginArray("s", &count);
    Ref<IObjectBase> object;
    EXPECT_EQ(reader->ReadObject(object.Receive()), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 1u);
    EXPECT_EQ(ReadItem(reader), "b");
    EXPECT_EQ(reader->EndArray(), TVX_OK);
    EXPECT_EQ(ReadInt(reader, "outside"), 1);
}

TEST_F(JsonSerializerReader, ClosesASequenceThatAFactoryLeftOpen)
{
    AddFormat(
        [](auto& reader, auto** out)
        {
            std::uint32_t count = 0;
            EXPECT_EQ(reader.BeginArray("inner", &count), TVX_OK);
            *out = MakeRef<ProbeObject>().Detach();
            return TVX_OK;
        });
    const auto reader = BeginReading(R"({"x":{"$format":"test/1.0","inner":["a"]},"after":3})");
    Ref<IObjectBase> object;
    EXPECT_EQ(reader->ReadNamedObject("x", object.Receive()), TVX_OK);
    EXPECT_EQ(ReadInt(reader, "after"), 3);
}

TEST_F(JsonSerializerReader, TellsWhenNoModuleReadsAFormat)
{
    EXPECT_EQ(FailObject(TVX_E_FAIL, R"({"x":{"$format":"x"}})"),
              "JsonSerializer: no installed module reads the format \"x\".\n");
    EXPECT_EQ(FailObject(TVX_E_FAIL, R"({"x":{"$format":""}})"),
              "JsonSerializer: no installed module reads the format \"\".\n");
    EXPECT_EQ(FailObject(TVX_E_FAIL, "{\"x\":{\"$format\":\"\\u001b[2J\"}}"),
              "JsonSerializer: no installed module reads the format \"?[2J\".\n");
}

TEST_F(JsonSerializerReader, RefusesAnObjectWithoutAProperFormat)
{
    const std::string line = "JsonSerializer: the object at \"x\" does not tell its format.\n";
    EXPECT_EQ(FailObject(TVX_E_FAIL, R"({"x":{}})"), line);
    EXPECT_EQ(FailObject(TVX_E_FAIL, R"({"x":{"$format":1}})"), line);
    EXPECT_EQ(FailObject(TVX_E_FAIL, R"({"x":{"$format":null}})"), line);
    EXPECT_EQ(FailObject(TVX_E_FAIL, R"({"x":{"$format":"a\u0000b"}})"), line);
}

TEST_F(JsonSerializerReader, RefusesMalformedTextsForGood)
{
    for (const auto* const value : {R"("a\u0000b")", R"({"$bytes":"f"})", R"({"$bytes":"FF"})", R"({"$bytes":"zz"})",
                                    R"({"$bytes":1})", R"({"$bytes":"ff","more":1})", R"({"$bytes":"6100"})"})
    {
        const auto reader = BeginReading(R"({"x":)" + std::string(value) + R"(,"t":"text"})");
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(ReadText(reader, "x"), "failed"); }),
                  "JsonSerializer: the value at \"x\" is malformed.\n");
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(ReadText(reader, "t"), "failed"); }), "");
        EXPECT_EQ(Query<IStringDeserializer>(reader)->End(), TVX_E_FAIL);
    }
}

TEST_F(JsonSerializerReader, RefusesMalformedDoublesForGood)
{
    for (const auto* const value : {R"({"$double":"infinity"})", R"({"$double":1})", R"({"$double":"inf","more":1})"})
    {
        const auto reader = BeginReading(R"({"x":)" + std::string(value) + "}");
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(ReadDouble(reader, "x"), -77.0); }),
                  "JsonSerializer: the value at \"x\" is malformed.\n");
        EXPECT_EQ(Query<IStringDeserializer>(reader)->End(), TVX_E_FAIL);
    }
}

TEST_F(JsonSerializerReader, GivesTheFailureOfAFactory)
{
    EXPECT_EQ(FailScript(-42, [](auto&, auto**) { return -42; }),
              "JsonSerializer: the object at \"x\" could not be read as format \"test/1.0\" (-42).\n");
    EXPECT_EQ(FailScript(TVX_E_FAIL, [](auto&, auto**) { return TVX_OK; }),
              "JsonSerializer: the object at \"x\" could not be read as format \"test/1.0\" (0).\n");
}

TEST_F(JsonSerializerReader, ReleasesAnObjectThatAFailingFactoryDelivered)
{
    bool died = false;
    FailScript(TVX_E_FAIL,
               [&](auto&, auto** out)
               {
                   *out = MakeRef<ProbeObject>(&died).Detach();
                   return TVX_E_FAIL;
               });
    EXPECT_TRUE(died);
}

TEST_F(JsonSerializerReader, KeepsAFailureThatAFactoryDoesNotLookAt)
{
    bool died = false;
    AddFormat(
        [&](auto& reader, auto** out)
        {
            Ref<IObjectBase> inner;
            EXPECT_EQ(reader.ReadNamedObject("inner", inner.Receive()), TVX_E_FAIL);
            *out = MakeRef<ProbeObject>(&died).Detach();
            return TVX_OK;
        });
    EXPECT_EQ(FailObject(TVX_E_FAIL, R"({"x":{"$format":"test/1.0","inner":{"$format":"lost"}}})"),
              "JsonSerializer: no installed module reads the format \"lost\".\n");
    EXPECT_TRUE(died);
}

TEST_F(JsonSerializerReader, LetsNoExceptionOut)
{
    EXPECT_EQ(FailScript(TVX_E_POINTER, [](auto&, auto**) -> Result { throw std::bad_alloc(); }),
              "JsonSerializer: memory is exhausted.\n");
    EXPECT_EQ(FailScript(TVX_E_EXCEPTION, [](auto&, auto**) -> Result { throw 1; }),
              "JsonSerializer: an exception was thrown.\n");
}

TEST_F(JsonSerializerReader, KeepsItsDocumentWhileAnObjectIsRead)
{
    EXPECT_EQ(FailScript(TVX_E_FAIL, [](auto& reader, auto**) { return Query<IStringDeserializer>(&reader)->Begin(); }),
              "JsonSerializer: a document was begun inside an object that is being read.\n");
    EXPECT_EQ(FailScript(TVX_E_FAIL, [](auto& reader, auto**) { return Query<IStringDeserializer>(&reader)->End(); }),
              "JsonSerializer: a document was ended inside an object that is being read.\n");
}

TEST_F(JsonSerializerReader, NeedsTheLibraryManager)
{
    factory_->ClearImports();
    EXPECT_EQ(FailObject(TVX_E_FAIL, OneObject), "LibManager: NULL object proxy returned for \"LibManager\".\n");
}

TEST_F(JsonSerializerReader, TellsLineAndColumnOfWhatIsNoJson)
{
    EXPECT_EQ(FailBegin(""), "JsonSerializer: the text is not JSON: line 1, column 1.\n");
    EXPECT_EQ(FailBegin("{\"a\":\n  nul}"), "JsonSerializer: the text is not JSON: line 2, column 6.\n");
    EXPECT_EQ(FailBegin("{\"a\":1"), "JsonSerializer: the text is not JSON: line 1, column 7.\n");
    EXPECT_EQ(FailBegin("{}x"), "JsonSerializer: the text is not JSON: line 1, column 3.\n");
    EXPECT_EQ(FailBegin("{\"a\":1e999}"), "JsonSerializer: the text is not JSON: line 1, column 10.\n");
    EXPECT_EQ(FailBegin("{\"a\":NaN}"), "JsonSerializer: the text is not JSON: line 1, column 6.\n");
    EXPECT_EQ(FailBegin("{\"a\":\"\xFF\"}"), "JsonSerializer: the text is not JSON: line 1, column 7.\n");
}

TEST_F(JsonSerializerReader, WantsAnObjectAtTheTop)
{
    const std::string line = "JsonSerializer: the text does not hold an object: line 1, column 1.\n";
    EXPECT_EQ(FailBegin("[]"), line);
    EXPECT_EQ(FailBegin("\"text\""), line);
    EXPECT_EQ(FailBegin("null"), line);
}

TEST_F(JsonSerializerReader, RefusesANameThatStandsTwice)
{
    EXPECT_EQ(FailBegin("{\"a\":{\"b\":1},\n\"b\":2,\"a\":3}"),
              "JsonSerializer: the name \"a\" stands twice in an object: line 2, column 9.\n");
}

TEST_F(JsonSerializerReader, ReadsNothingOfADocumentThatCouldNotBeBegun)
{
    Ref<IDeserializer> reader;
    CaptureOutput([&] { reader = BeginReading("{\"a\":1,}"); });
    EXPECT_EQ(began_, TVX_E_FAIL);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(ReadInt(reader, "a"), -77); }), "");
}

TEST_F(JsonSerializerReader, BeginsAnewAfterAFailure)
{
    Ref<IDeserializer> reader;
    CaptureOutput([&] { reader = BeginReading("["); });
    const auto document = Query<IStringDeserializer>(reader);
    document->SetText(MakeRef<host::HostString>("{\"a\":1}").Get());
    EXPECT_EQ(ReadInt(reader, "a"), -77);  // not before Begin
    EXPECT_EQ(document->Begin(), TVX_OK);
    EXPECT_EQ(ReadInt(reader, "a"), 1);
    EXPECT_EQ(document->Begin(), TVX_OK);
    EXPECT_EQ(ReadInt(reader, "a"), 1);
}

TEST_F(JsonSerializerReader, NeedsATextAndABegin)
{
    const auto reader = MakeReader();
    const auto document = Query<IStringDeserializer>(reader);
    EXPECT_EQ(ReadInt(reader, "a"), -77);
    EXPECT_EQ(document->End(), TVX_E_FAIL);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(document->Begin(), TVX_E_FAIL); }),
              "JsonSerializer: a document was begun without a text to read.\n");
}

TEST_F(JsonSerializerReader, KeepsItsTextUntilItIsReplaced)
{
    const auto first = MakeRef<host::HostString>("{}");
    const auto second = MakeRef<host::HostString>("{}");
    auto reader = MakeReader();
    auto document = Query<IStringDeserializer>(reader);
    document->SetText(first.Get());
    EXPECT_EQ(first->GetRefCount(), 2u);
    document->SetText(second.Get());
    EXPECT_EQ(first->GetRefCount(), 1u);
    EXPECT_EQ(second->GetRefCount(), 2u);
    document = nullptr;
    reader = nullptr;
    EXPECT_EQ(second->GetRefCount(), 1u);
}

TEST_F(JsonSerializerReader, ReadsNothingAfterEnd)
{
    const auto reader = BeginReading("{\"a\":1}");
    EXPECT_EQ(Query<IStringDeserializer>(reader)->End(), TVX_OK);
    EXPECT_EQ(ReadInt(reader, "a"), -77);
}

}  // namespace
}  // namespace tvx::test
