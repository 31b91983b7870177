// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"
#include "Src/SimpleMapFactory.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"
#include "Tests/Support/TextSerializerDoubles.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace
{

using namespace tvx;
using namespace tvx::test;

constexpr const char Source[] = "Src/SimpleMap.cpp";

class WatchedMap final : public SimpleMap
{
public:
    Result SetString(const char* key, const char* value) override
    {
        writes.push_back(std::string(key) + "=" + value);
        return result == TVX_OK ? SimpleMap::SetString(key, value) : result;
    }

    Texts writes;
    Result result = TVX_OK;
};

// A map that gives a text of its own, whatever the key, also with a failure.
class RewordingMap final : public SimpleMap
{
public:
    Result GetString(const char*, IString** out) override
    {
        HandOut(MakeString("another text").Get(), out);
        return result;
    }

    Result result = TVX_S_VALUE;
};

// A map out of batch mode with the entry "key", and the import "Serializer" behind it, which the factory double plays.
// After each call the counts must be what they were before it, whichever step failed.
class SimpleMapObjects : public testing::Test
{
protected:
    SimpleMapObjects()
    {
        factory->writer = Ref<ISerializer>(writer);
        factory->reader = Ref<IDeserializer>(reader);
        writer->text = text;
        reader->object = Ref<IObjectBase>(static_cast<IObject*>(object.Get()));
        map->SetString("key", "before");
        map->SetBatchUpdatingMode(false);
        map->SubscribeChanged(handler.Get(), 0, true);
        Import(Ref<IObjectBase>(MakeRef<ImportProxy>(Ref<IObjectBase>(factory))));
    }
    ~SimpleMapObjects() override { CSimpleMapFactory::GetOrMake()->ClearImports(); }

    static void Import(const Ref<IObjectBase>& proxy)
    {
        CSimpleMapFactory::GetOrMake()->SetImport("Serializer", proxy.Get());
    }

    // Everything that the map may hold during a call and must not hold after it, by the counts of the fixture's holders.
    void ExpectNothingLeaked()
    {
        writer->objects.clear();
        reader->text = nullptr;
        EXPECT_EQ(factory->GetRefCount(), 2U);
        EXPECT_EQ(writer->GetRefCount(), 2U);
        EXPECT_EQ(reader->GetRefCount(), 2U);
        EXPECT_EQ(text->GetRefCount(), 2U);
        EXPECT_EQ(object->GetRefCount(), 2U);
        EXPECT_TRUE(map->IsUnique());
    }

    void ExpectUnchanged()
    {
        EXPECT_EQ(Entries(*map), Texts{"key=before"});
        EXPECT_TRUE(handler->events.empty());
    }

    // A write that fails with code, after one report of the macro, and changes nothing.
    void ExpectSetFails(Result code, const char* macro)
    {
        Result result = TVX_OK;
        const auto output = CaptureOutput([&] { result = map->SetObject("key", object.Get()); });
        EXPECT_EQ(result, code);
        EXPECT_TRUE(IsReport(output, macro, Source));
        ExpectUnchanged();
        ExpectNothingLeaked();
    }

    // A read that fails with code, after one report of the macro, and leaves out untouched.
    void ExpectGetFails(Result code, const char* macro)
    {
        const auto mark = MakeRef<ProbeObject>();
        IObject* out = mark.Get();
        Result result = TVX_OK;
        const auto output = CaptureOutput([&] { result = map->GetObject("key", &out); });
        EXPECT_EQ(result, code);
        EXPECT_TRUE(IsReport(output, macro, Source));
        EXPECT_EQ(out, mark.Get());
        ExpectUnchanged();
        ExpectNothingLeaked();
    }

    const Ref<WatchedMap> map = MakeRef<WatchedMap>();
    const Ref<RecordingHandler> handler = MakeRef<RecordingHandler>();
    const Ref<TextSerializerFactory> factory = MakeRef<TextSerializerFactory>();
    const Ref<TextWriter> writer = MakeRef<TextWriter>();
    const Ref<TextReader> reader = MakeRef<TextReader>();
    const Ref<IString> text = MakeString("the object's text");
    const Ref<SerializableObject> object = MakeRef<SerializableObject>();
};

TEST_F(SimpleMapObjects, AreWrittenAsTheSerializersText)
{
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(map->SetObject("new", object.Get()), TVX_OK); }), "");
    EXPECT_EQ(writer->calls, (Texts{"Begin", "WriteNamedObject Object", "End", "GetText"}));
    EXPECT_EQ(Entries(*map), (Texts{"key=before", "new=the object's text"}));
    EXPECT_EQ(handler->GetNames(), Texts{"Changed"});
    ExpectNothingLeaked();
}

TEST_F(SimpleMapObjects, AreWrittenThroughSetString)
{
    map->writes.clear();
    EXPECT_EQ(map->SetObject("key", object.Get()), TVX_OK);
    EXPECT_EQ(map->writes, Texts{"key=the object's text"});
}

TEST_F(SimpleMapObjects, ArePendingInBatchMode)
{
    map->SetBatchUpdatingMode(true);
    EXPECT_EQ(map->SetObject("key", object.Get()), TVX_OK);
    EXPECT_TRUE(handler->events.empty());
    map->SetBatchUpdatingMode(false);
    EXPECT_EQ(handler->GetNames(), Texts{"Changed"});
}

TEST_F(SimpleMapObjects, AreHandedToTheWriterByTheirSerializableFace)
{
    EXPECT_EQ(map->SetObject("key", object.Get()), TVX_OK);
    ASSERT_EQ(writer->objects.size(), 1U);
    EXPECT_EQ(writer->objects[0].Get(), static_cast<IObjectBase*>(static_cast<ISerializable*>(object.Get())));
}

TEST_F(SimpleMapObjects, AreNotWrittenWhenTheyAreNullOrNotSerialisable)
{
    const auto probe = MakeRef<ProbeObject>();
    for (IObject* const refused : {static_cast<IObject*>(nullptr), static_cast<IObject*>(probe.Get())})
    {
        const auto output = CaptureOutput([&] { EXPECT_EQ(map->SetObject("key", refused), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", Source));
    }
    EXPECT_TRUE(probe->IsUnique());
    EXPECT_EQ(writer->calls, Texts());
    ExpectUnchanged();
    ExpectNothingLeaked();
}

TEST_F(SimpleMapObjects, AreNotWrittenWithoutAWriter)
{
    factory->result = -42;  // the factory delivers a writer all the same
    ExpectSetFails(-42, "TVX_FORWARD_FAILURE");
    EXPECT_EQ(writer->calls, Texts());
}

TEST_F(SimpleMapObjects, AreNotWrittenByAWriterThatMakesNoText)
{
    const auto plain = MakeRef<RecordingWriter>();
    factory->writer = Ref<ISerializer>(plain);
    const auto output = CaptureOutput([&] { EXPECT_EQ(map->SetObject("key", object.Get()), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", Source));
    EXPECT_EQ(plain->calls, Texts());
    EXPECT_EQ(plain->GetRefCount(), 2U);
    ExpectUnchanged();
    factory->writer = nullptr;
    const auto none = CaptureOutput([&] { EXPECT_EQ(map->SetObject("key", object.Get()), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(none, "TVX_RETURN_FAIL_IF_NULL", Source));
}

TEST_F(SimpleMapObjects, AreNotWrittenWhenTheWriterFails)
{
    writer->objectResult = -42;
    ExpectSetFails(-42, "TVX_FORWARD_FAILURE");
    EXPECT_EQ(writer->calls, (Texts{"Begin", "WriteNamedObject Object"}));
}

TEST_F(SimpleMapObjects, AreNotWrittenWhenTheDocumentCannotEnd)
{
    writer->endResult = -43;
    ExpectSetFails(-43, "TVX_FORWARD_FAILURE");
    EXPECT_EQ(writer->calls, (Texts{"Begin", "WriteNamedObject Object", "End"}));
}

TEST_F(SimpleMapObjects, AreNotWrittenWhenTheTextFails)
{
    writer->textResult = -44;  // the writer delivers the text all the same
    ExpectSetFails(-44, "TVX_FORWARD_FAILURE");
}

TEST_F(SimpleMapObjects, AreNotWrittenWithANullText)
{
    writer->text = nullptr;
    const auto output = CaptureOutput([&] { EXPECT_EQ(map->SetObject("key", object.Get()), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", Source));
    ExpectUnchanged();
}

TEST_F(SimpleMapObjects, AreNotWrittenWhenSetStringFails)
{
    map->result = -45;
    ExpectSetFails(-45, "TVX_FORWARD_FAILURE");
}

TEST_F(SimpleMapObjects, AreNotWrittenUnderANullKey)
{
    const auto plain = MakeMap();
    Result result = TVX_OK;
    const auto lines = SplitLines(CaptureOutput([&] { result = plain->SetObject(nullptr, object.Get()); }));
    EXPECT_EQ(result, TVX_E_POINTER);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(IsReport(lines[0], "TVX_RETURN_EPOINTER_IF_NULL", Source));
    EXPECT_TRUE(IsReport(lines[1], "TVX_FORWARD_FAILURE", Source));
    EXPECT_EQ(Entries(*plain), Texts());
    ExpectNothingLeaked();
}

TEST_F(SimpleMapObjects, AreReadFromTheSerializersText)
{
    Ref<IObject> out;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(map->GetObject("key", out.Receive()), TVX_OK); }), "");
    EXPECT_EQ(out.Get(), static_cast<IObject*>(object.Get()));
    EXPECT_EQ(object->GetRefCount(), 3U);
    out = nullptr;
    EXPECT_EQ(reader->calls, (Texts{"SetText before", "Begin", "ReadNamedObject Object", "End"}));
    EXPECT_TRUE(reader->text->IsUnique());  // the map has let go of the text
    ExpectUnchanged();
    ExpectNothingLeaked();
}

TEST_F(SimpleMapObjects, AreReadByTheirObjectFaceWhicheverFaceTheReaderGave)
{
    reader->object = Ref<IObjectBase>(static_cast<IObjectBase*>(static_cast<ISerializable*>(object.Get())));
    Ref<IObject> out;
    EXPECT_EQ(map->GetObject("key", out.Receive()), TVX_OK);
    EXPECT_EQ(out.Get(), static_cast<IObject*>(object.Get()));
}

TEST_F(SimpleMapObjects, AreReadThroughGetString)
{
    const auto rewording = MakeRef<RewordingMap>();
    Ref<IObject> out;
    EXPECT_EQ(rewording->GetObject("key", out.Receive()), TVX_OK);
    EXPECT_EQ(out.Get(), static_cast<IObject*>(object.Get()));
    EXPECT_EQ(reader->calls.front(), "SetText another text");
    reader->calls.clear();
    rewording->result = -42;
    const auto output = CaptureOutput([&] { EXPECT_EQ(rewording->GetObject("key", out.Receive()), -42); });
    EXPECT_TRUE(IsReport(output, "TVX_FORWARD_FAILURE", Source));
    EXPECT_FALSE(out);
    EXPECT_EQ(reader->calls, Texts());
    ExpectNothingLeaked();
}

TEST_F(SimpleMapObjects, AreAbsentAtOnceWithoutAskingTheSerializer)
{
    const auto proxy = MakeRef<ImportProxy>(Ref<IObjectBase>(factory));
    Import(Ref<IObjectBase>(proxy));
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(map->GetObject("absent", &out), TVX_S_NOKEY); }), "");
    EXPECT_EQ(out, mark.Get());
    EXPECT_EQ(proxy->calls, 0);
    EXPECT_EQ(reader->calls, Texts());
}

TEST_F(SimpleMapObjects, AreNotReadUnderANullKey)
{
    Ref<IObject> out;
    Result result = TVX_OK;
    const auto lines = SplitLines(CaptureOutput([&] { result = map->GetObject(nullptr, out.Receive()); }));
    EXPECT_EQ(result, TVX_E_POINTER);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(IsReport(lines[0], "TVX_RETURN_EPOINTER_IF_NULL", Source));
    EXPECT_TRUE(IsReport(lines[1], "TVX_FORWARD_FAILURE", Source));
    EXPECT_FALSE(out);
    EXPECT_EQ(reader->calls, Texts());
}

TEST_F(SimpleMapObjects, AreNotReadWithoutAReader)
{
    factory->result = -42;  // the factory delivers a reader all the same
    ExpectGetFails(-42, "TVX_FORWARD_FAILURE");
    EXPECT_EQ(reader->calls, Texts());
}

TEST_F(SimpleMapObjects, AreNotReadByAReaderThatTakesNoText)
{
    const auto plain = MakeRef<ScriptedReader>();
    factory->reader = Ref<IDeserializer>(plain);
    Ref<IObject> out;
    const auto output = CaptureOutput([&] { EXPECT_EQ(map->GetObject("key", out.Receive()), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_NULL", Source));
    EXPECT_EQ(plain->calls, Texts());
    EXPECT_EQ(plain->GetRefCount(), 2U);
    factory->reader = nullptr;
    const auto none = CaptureOutput([&] { EXPECT_EQ(map->GetObject("key", out.Receive()), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(none, "TVX_RETURN_FAIL_IF_NULL", Source));
}

TEST_F(SimpleMapObjects, AreNotReadWhenTheReaderFails)
{
    reader->objectResult = -42;  // the reader delivers the object all the same
    ExpectGetFails(-42, "TVX_FORWARD_FAILURE");
    EXPECT_EQ(reader->calls, (Texts{"SetText before", "Begin", "ReadNamedObject Object"}));
}

TEST_F(SimpleMapObjects, AreNotReadWhenTheyHaveNoObjectFace)
{
    const auto bare = MakeRef<BareObject>();
    for (const auto& read : {Ref<IObjectBase>(bare), Ref<IObjectBase>()})
    {
        reader->object = read;
        Ref<IObject> out;
        const auto output = CaptureOutput([&] { EXPECT_EQ(map->GetObject("key", out.Receive()), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF", Source));
        EXPECT_FALSE(out);
    }
    reader->object = nullptr;
    EXPECT_TRUE(bare->IsUnique());
}

TEST_F(SimpleMapObjects, AreReadForANullOutAndRefusedInSilence)
{
    Result result = TVX_OK;
    EXPECT_EQ(CaptureOutput([&] { result = map->GetObject("key", nullptr); }), "");
    EXPECT_EQ(result, TVX_E_POINTER);
    EXPECT_EQ(reader->calls, (Texts{"SetText before", "Begin", "ReadNamedObject Object", "End"}));
    ExpectNothingLeaked();
}

TEST_F(SimpleMapObjects, DoNotDependOnTheResultsOfBeginAndOfTheReadersEnd)
{
    writer->beginResult = reader->beginResult = reader->endResult = reader->textResult = -42;
    Ref<IObject> out;
    EXPECT_EQ(map->SetObject("key", object.Get()), TVX_OK);
    EXPECT_EQ(map->GetObject("key", out.Receive()), TVX_OK);
    EXPECT_TRUE(out);
}

// What comes out when the import cannot be had: first why, then the report of the operation.
void ExpectImportProblem(const std::string& output, const std::string& problem)
{
    const auto lines = SplitLines(output);
    ASSERT_EQ(lines.size(), 2U) << output;
    EXPECT_EQ(lines[0], problem + "\n");
    EXPECT_TRUE(IsReport(lines[1], "TVX_RETURN_FAIL_IF_NULL", Source));
}

TEST_F(SimpleMapObjects, NeedTheSerializerImport)
{
    const auto proxy = MakeRef<ImportProxy>(Ref<IObjectBase>(MakeRef<ProbeObject>()));
    const auto empty = MakeRef<ImportProxy>(Ref<IObjectBase>());
    const std::pair<Ref<IObjectBase>, const char*> imports[] = {
        {Ref<IObjectBase>(factory), "LibManager: Proxy interface not supported for \"Serializer\"."},
        {Ref<IObjectBase>(empty),
         "LibManager: Library returned NULL object for \"Serializer\". Probably declared and exported contracts are "
         "different or the library is failed to load."},
        {Ref<IObjectBase>(proxy),
         "LibManager: Library object for \"Serializer\" does not support required interface "
         "com.talvere.general.tvx.ISerializerFactory/1.0. Wrong import declaration or wrong plugin implementation?"},
    };
    for (const auto& [import, problem] : imports)
    {
        Import(import);
        Ref<IObject> out;
        ExpectImportProblem(CaptureOutput([&] { EXPECT_EQ(map->GetObject("key", out.Receive()), TVX_E_FAIL); }),
                            problem);
        ExpectImportProblem(CaptureOutput([&] { EXPECT_EQ(map->SetObject("key", object.Get()), TVX_E_FAIL); }),
                            problem);
        EXPECT_FALSE(out);
    }
    ExpectUnchanged();
}

TEST_F(SimpleMapObjects, NeedTheSerializerImportToBeSet)
{
    const char* const problem = "LibManager: NULL object proxy returned for \"Serializer\".";
    CSimpleMapFactory::GetOrMake()->ClearImports();
    Ref<IObject> out;
    ExpectImportProblem(CaptureOutput([&] { EXPECT_EQ(map->GetObject("key", out.Receive()), TVX_E_FAIL); }), problem);
    ExpectImportProblem(CaptureOutput([&] { EXPECT_EQ(map->SetObject("key", object.Get()), TVX_E_FAIL); }), problem);
    ExpectUnchanged();
    EXPECT_TRUE(factory->IsUnique());
}

}  // namespace
