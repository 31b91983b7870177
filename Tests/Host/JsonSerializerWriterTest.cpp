// SPDX-License-Identifier: MIT
#include "Tests/Host/JsonSerializerFixture.h"

#include <limits>
#include <new>

namespace tvx::test
{
namespace
{

class JsonSerializerWriter : public JsonSerializerFixture
{
protected:
    using Call = std::function<Result(ISerializer& writer)>;

    // What a call on a fresh document that fails writes to standard output. The failure has to stay.
    std::string Fail(Result expected, const Call& call) const
    {
        const auto writer = BeginWriting();
        return CaptureOutput(
            [&]
            {
                EXPECT_EQ(call(*writer), expected);
                EXPECT_EQ(writer->WriteNamedInt("later", 1), expected);
                EXPECT_EQ(Query<IStringSerializer>(writer)->End(), expected);
            });
    }

    // The same for the written object of a script.
    std::string FailObject(Result expected, const Call& script) const
    {
        const auto object = MakeRef<ScriptedObject>(script);
        const auto output = Fail(expected, [&](auto& writer) { return writer.WriteNamedObject("x", AsBase(object)); });
        EXPECT_EQ(object->GetRefCount(), 1u);
        return output;
    }

    std::string WriteDouble(double value) const
    {
        const auto writer = BeginWriting();
        EXPECT_EQ(writer->WriteNamedDouble("d", value), TVX_OK);
        return EndWriting(writer);
    }

    std::string WriteText(const char* text) const
    {
        const auto writer = BeginWriting();
        EXPECT_EQ(writer->WriteNamedString("t", text), TVX_OK);
        return EndWriting(writer);
    }
};

TEST_F(JsonSerializerWriter, WritesAnEmptyDocument)
{
    EXPECT_EQ(EndWriting(BeginWriting()), "{}");
}

TEST_F(JsonSerializerWriter, KeepsNamesInTheOrderOfWriting)
{
    const auto writer = BeginWriting();
    writer->WriteNamedInt("z", -2147483647 - 1);
    writer->WriteNamedBool("a", true);
    writer->WriteNamedBool("b", false);
    writer->WriteNamedString("", "");
    EXPECT_EQ(EndWriting(writer), R"({"z":-2147483648,"a":true,"b":false,"":""})");
}

TEST_F(JsonSerializerWriter, WritesAnObjectWithItsFormatFirst)
{
    const auto object = MakeRef<ScriptedObject>([](auto& writer) { return writer.WriteNamedInt("i", 7); });
    const auto writer = BeginWriting();
    EXPECT_EQ(writer->WriteNamedObject("x", AsBase(object)), TVX_OK);
    EXPECT_EQ(writer->WriteNamedObject("none", nullptr), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 1u);
    EXPECT_EQ(EndWriting(writer), R"({"x":{"$format":"test/1.0","i":7},"none":null})");
}

TEST_F(JsonSerializerWriter, WritesSequencesOfTextsObjectsAndNull)
{
    const auto object = MakeRef<ScriptedObject>();
    const auto writer = BeginWriting();
    EXPECT_EQ(writer->BeginArray("s"), TVX_OK);
    EXPECT_EQ(writer->WriteString("a"), TVX_OK);
    EXPECT_EQ(writer->WriteObject(AsBase(object)), TVX_OK);
    EXPECT_EQ(writer->WriteObject(nullptr), TVX_OK);
    EXPECT_EQ(writer->EndArray(), TVX_OK);
    EXPECT_EQ(writer->BeginArray("empty"), TVX_OK);
    EXPECT_EQ(writer->EndArray(), TVX_OK);
    EXPECT_EQ(EndWriting(writer), R"({"s":["a",{"$format":"test/1.0"},null],"empty":[]})");
}

TEST_F(JsonSerializerWriter, WritesDoublesInTheirShortestForm)
{
    EXPECT_EQ(WriteDouble(0.1), R"({"d":0.1})");
    EXPECT_EQ(WriteDouble(100.0), R"({"d":100.0})");
    EXPECT_EQ(WriteDouble(5e-324), R"({"d":5e-324})");
    EXPECT_EQ(WriteDouble(1e300), R"({"d":1e+300})");
    EXPECT_EQ(WriteDouble(0.0), R"({"d":0.0})");
    EXPECT_EQ(WriteDouble(-0.0), R"({"d":-0.0})");
}

TEST_F(JsonSerializerWriter, WritesDoublesThatAreNoNumbersByName)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(WriteDouble(infinity), R"({"d":{"$double":"inf"}})");
    EXPECT_EQ(WriteDouble(-infinity), R"({"d":{"$double":"-inf"}})");
    EXPECT_EQ(WriteDouble(std::numeric_limits<double>::quiet_NaN()), R"({"d":{"$double":"nan"}})");
    EXPECT_EQ(WriteDouble(-std::numeric_limits<double>::quiet_NaN()), R"({"d":{"$double":"nan"}})");
}

TEST_F(JsonSerializerWriter, WritesUtf8AsAStringAndOtherBytesInHexadecimal)
{
    EXPECT_EQ(WriteText("\"\\\n\x01\x7F"), "{\"t\":\"\\\"\\\\\\n\\u0001\x7F\"}");
    EXPECT_EQ(WriteText("\xC3\xA4\xF0\x9F\x98\x80"), "{\"t\":\"\xC3\xA4\xF0\x9F\x98\x80\"}");
    EXPECT_EQ(WriteText("a\xFFz"), R"({"t":{"$bytes":"61ff7a"}})");
    EXPECT_EQ(WriteText("\xC0\x80"), R"({"t":{"$bytes":"c080"}})");        // an overlong form
    EXPECT_EQ(WriteText("\xED\xA0\x80"), R"({"t":{"$bytes":"eda080"}})");  // half of a surrogate pair
    EXPECT_EQ(WriteText("a\xC3"), R"({"t":{"$bytes":"61c3"}})");           // cut short
}

TEST_F(JsonSerializerWriter, BeginsAnewAfterAFailureAndAfterEnd)
{
    const auto writer = BeginWriting();
    const auto document = Query<IStringSerializer>(writer);
    CaptureOutput([&] { EXPECT_EQ(writer->WriteString("lost"), TVX_E_FAIL); });
    EXPECT_EQ(document->Begin(), TVX_OK);
    writer->WriteNamedInt("a", 1);
    EXPECT_EQ(EndWriting(writer), R"({"a":1})");
    EXPECT_EQ(document->Begin(), TVX_OK);
    EXPECT_EQ(EndWriting(writer), "{}");
}

TEST_F(JsonSerializerWriter, GivesTheTextOnlyBetweenEndAndTheNextBegin)
{
    const auto writer = MakeWriter();
    const auto document = Query<IStringSerializer>(writer);
    Ref<IString> text;
    const auto ask = [&] { EXPECT_EQ(document->GetText(text.Receive()), TVX_E_FAIL); };
    const std::string line = "JsonSerializer: the text was asked for before the document had been ended.\n";
    EXPECT_EQ(CaptureOutput(ask), line);
    document->Begin();
    EXPECT_EQ(CaptureOutput(ask), line);
    EXPECT_EQ(document->End(), TVX_OK);
    EXPECT_EQ(document->GetText(nullptr), TVX_E_POINTER);
    EXPECT_EQ(document->GetText(text.Receive()), TVX_OK);
    EXPECT_EQ(text->GetRefCount(), 1u);
    document->Begin();
    EXPECT_EQ(CaptureOutput(ask), line);
    EXPECT_FALSE(text);
}

TEST_F(JsonSerializerWriter, WritesNothingOutsideOfADocument)
{
    const auto writer = MakeWriter();
    const auto document = Query<IStringSerializer>(writer);
    const auto write = [&] { EXPECT_EQ(writer->WriteNamedInt("a", 1), TVX_E_FAIL); };
    EXPECT_EQ(CaptureOutput(write), "JsonSerializer: the name \"a\" was written outside of a document.\n");
    document->Begin();
    document->End();
    EXPECT_EQ(CaptureOutput(write), "JsonSerializer: the name \"a\" was written outside of a document.\n");
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(MakeWriter()->EndArray(), TVX_E_FAIL); }),
              "JsonSerializer: a sequence was ended where none is open.\n");
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(Query<IStringSerializer>(MakeWriter())->End(), TVX_E_FAIL); }),
              "JsonSerializer: a document was ended that had not been begun.\n");
}

TEST_F(JsonSerializerWriter, RefusesNullNamesAndTexts)
{
    const std::string line = "JsonSerializer: a null pointer was written as a name or a text.\n";
    EXPECT_EQ(Fail(TVX_E_POINTER, [](auto& writer) { return writer.WriteNamedBool(nullptr, true); }), line);
    EXPECT_EQ(Fail(TVX_E_POINTER, [](auto& writer) { return writer.WriteNamedString("t", nullptr); }), line);
    EXPECT_EQ(Fail(TVX_E_POINTER, [](auto& writer) { return writer.WriteNamedObject(nullptr, nullptr); }), line);
    EXPECT_EQ(Fail(TVX_E_POINTER, [](auto& writer) { return writer.BeginArray(nullptr); }), line);
    EXPECT_EQ(Fail(TVX_E_POINTER, [](auto& writer) { return writer.WriteString(nullptr); }), line);
}

TEST_F(JsonSerializerWriter, RefusesNamesThatCouldNotBeReadBack)
{
    EXPECT_EQ(Fail(TVX_E_FAIL, [](auto& writer) { return writer.WriteNamedInt("$format", 1); }),
              "JsonSerializer: the name \"$format\" begins with \"$\", which the serializer keeps for itself.\n");
    EXPECT_EQ(Fail(TVX_E_FAIL, [](auto& writer) { return writer.WriteNamedInt("a\xFF", 1); }),
              "JsonSerializer: the name \"a\xFF\" is not UTF-8.\n");
    EXPECT_EQ(Fail(TVX_E_FAIL,
                   [](auto& writer)
                   {
                       writer.WriteNamedInt("a\n", 1);
                       return writer.BeginArray("a\n");
                   }),
              "JsonSerializer: the name \"a?\" was written twice into an object.\n");
}

TEST_F(JsonSerializerWriter, CutsVeryLongNamesInItsLines)
{
    const auto name = std::string("$").append(200, 'n');
    EXPECT_EQ(Fail(TVX_E_FAIL, [&](auto& writer) { return writer.WriteNamedInt(name.c_str(), 1); }),
              "JsonSerializer: the name \"$" + std::string(99, 'n') +
                  "...\" begins with \"$\", which the serializer keeps for itself.\n");
}

TEST_F(JsonSerializerWriter, KeepsNamesAndItemsApart)
{
    EXPECT_EQ(Fail(TVX_E_FAIL,
                   [](auto& writer)
                   {
                       writer.BeginArray("s");
                       return writer.WriteNamedInt("a", 1);
                   }),
              "JsonSerializer: the name \"a\" was written into a sequence, whose items have none.\n");
    EXPECT_EQ(Fail(TVX_E_FAIL, [](auto& writer) { return writer.WriteObject(nullptr); }),
              "JsonSerializer: an item was written where no sequence is open.\n");
}

TEST_F(JsonSerializerWriter, RefusesToEndADocumentWithAnOpenSequence)
{
    const auto writer = BeginWriting();
    writer->BeginArray("s");
    const auto document = Query<IStringSerializer>(writer);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(document->End(), TVX_E_FAIL); }),
              "JsonSerializer: the sequence \"s\" was still open at the document's end.\n");
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(document->End(), TVX_E_FAIL); }), "");
}

TEST_F(JsonSerializerWriter, RefusesObjectsThatCannotWriteThemselves)
{
    const auto probe = MakeRef<ProbeObject>();
    EXPECT_EQ(Fail(TVX_E_FAIL, [&](auto& writer) { return writer.WriteNamedObject("x", probe.Get()); }),
              "JsonSerializer: the object at \"x\" is not serialisable.\n");
    EXPECT_EQ(Fail(TVX_E_FAIL,
                   [&](auto& writer)
                   {
                       writer.BeginArray("s");
                       writer.WriteString("first");
                       return writer.WriteObject(probe.Get());
                   }),
              "JsonSerializer: the object at item 2 of \"s\" is not serialisable.\n");
    EXPECT_EQ(probe->GetRefCount(), 1u);
}

TEST_F(JsonSerializerWriter, RefusesObjectsWithoutAFormat)
{
    const auto object = MakeRef<ScriptedObject>();
    object->formatResult = TVX_E_POINTER;
    EXPECT_EQ(Fail(TVX_E_FAIL, [&](auto& writer) { return writer.WriteNamedObject("x", AsBase(object)); }),
              "JsonSerializer: the object at \"x\" does not tell its format.\n");
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST_F(JsonSerializerWriter, GivesTheFailureOfAnObject)
{
    EXPECT_EQ(FailObject(-42, [](auto&) { return -42; }),
              "JsonSerializer: the object at \"x\" could not be written (-42).\n");
}

TEST_F(JsonSerializerWriter, KeepsAFailureThatAnObjectDoesNotLookAt)
{
    const auto lenient = [](auto& writer)
    {
        writer.WriteNamedInt("$", 1);
        return TVX_OK;
    };
    EXPECT_EQ(FailObject(TVX_E_FAIL, lenient),
              "JsonSerializer: the name \"$\" begins with \"$\", which the serializer keeps for itself.\n");
}

TEST_F(JsonSerializerWriter, LetsNoExceptionOut)
{
    EXPECT_EQ(FailObject(TVX_E_POINTER, [](auto&) -> Result { throw std::bad_alloc(); }),
              "JsonSerializer: memory is exhausted.\n");
    EXPECT_EQ(FailObject(TVX_E_EXCEPTION, [](auto&) -> Result { throw 1; }),
              "JsonSerializer: an exception was thrown.\n");
}

TEST_F(JsonSerializerWriter, HoldsAnObjectToItsOwnPartOfTheDocument)
{
    EXPECT_EQ(FailObject(TVX_E_FAIL, [](auto& writer) { return writer.BeginArray("s"); }),
              "JsonSerializer: the object at \"x\" left a sequence open.\n");
    EXPECT_EQ(FailObject(TVX_E_FAIL, [](auto& writer) { return writer.EndArray(); }),
              "JsonSerializer: a sequence was ended where none is open.\n");
    EXPECT_EQ(FailObject(TVX_E_FAIL, [](auto& writer) { return Query<IStringSerializer>(&writer)->Begin(); }),
              "JsonSerializer: a document was begun inside an object that is being written.\n");
    EXPECT_EQ(FailObject(TVX_E_FAIL, [](auto& writer) { return Query<IStringSerializer>(&writer)->End(); }),
              "JsonSerializer: a document was ended inside an object that is being written.\n");
}

TEST_F(JsonSerializerWriter, StopsAtAnObjectThatContainsItself)
{
    IObjectBase* self = nullptr;
    int calls = 0;
    const auto object = MakeRef<ScriptedObject>(
        [&](auto& writer)
        {
            ++calls;
            writer.WriteNamedObject("left", self);
            writer.WriteNamedObject("right", self);
            return TVX_OK;
        });
    self = AsBase(object);
    EXPECT_EQ(Fail(TVX_E_FAIL, [&](auto& writer) { return writer.WriteNamedObject("x", self); }),
              "JsonSerializer: objects lie in one another more than 256 deep at \"left\".\n");
    EXPECT_EQ(calls, 256);
    EXPECT_EQ(object->GetRefCount(), 1u);
}

}  // namespace
}  // namespace tvx::test
