// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializerFactory.h"
#include "Tests/Support/SerializerDoubles.h"

#include <string>
#include <vector>

namespace tvx::test
{

// A writer that makes a text: it gives the text that the test put in. Each step answers what the test says, and a failing
// one has delivered all the same, so that a reference that a caller forgets on the way shows in the counts.
class TextWriter final : public RecordingWriterImpl<ClassImpl<TextWriter, ISerializer, IStringSerializer>>
{
public:
    using Interfaces = InterfaceList<ISerializer, IStringSerializer, IObject, IObjectBase>;

    Result WriteNamedObject(const char* name, IObjectBase* object) override
    {
        static_cast<void>(RecordingWriterImpl::WriteNamedObject(name, object));
        return objectResult;
    }
    Result Begin() override
    {
        Record("Begin");
        return beginResult;
    }
    Result End() override
    {
        Record("End");
        return endResult;
    }
    Result GetText(IString** out) override
    {
        Record("GetText");
        HandOut(text.Get(), out);
        return textResult;
    }

    Ref<IString> text;
    Result beginResult = TVX_OK;
    Result objectResult = TVX_OK;
    Result endResult = TVX_OK;
    Result textResult = TVX_OK;
};

// A reader of a text: it keeps the text that it is given, and reads the object that the test put in. As in TextWriter, a
// failing step has delivered all the same.
class TextReader final : public ScriptedReaderImpl<ClassImpl<TextReader, IDeserializer, IStringDeserializer>>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IStringDeserializer, IObject, IObjectBase>;

    Result ReadNamedObject(const char* name, IObjectBase** out) override
    {
        Record("ReadNamedObject " + std::string(name));
        HandOut(object.Get(), out);
        return objectResult;
    }
    Result Begin() override
    {
        Record("Begin");
        return beginResult;
    }
    Result End() override
    {
        Record("End");
        return endResult;
    }
    Result SetText(IString* given) override
    {
        Record("SetText " + std::string(given->GetText()));
        text = Ref<IString>(given);
        return textResult;
    }

    Ref<IString> text;
    Ref<IObjectBase> object;
    Result beginResult = TVX_OK;
    Result objectResult = TVX_OK;
    Result endResult = TVX_OK;
    Result textResult = TVX_OK;
};

// Gives the writer and the reader that the test put in, each time the same ones, whatever it answers.
class TextSerializerFactory final : public ClassImpl<TextSerializerFactory, ISerializerFactory>
{
public:
    using Interfaces = InterfaceList<ISerializerFactory, IObject, IObjectBase>;

    Result CreateSerializer(ISerializer** out) override
    {
        HandOut(writer.Get(), out);
        return result;
    }
    Result CreateDeserializer(IDeserializer** out) override
    {
        HandOut(reader.Get(), out);
        return result;
    }

    Ref<ISerializer> writer;
    Ref<IDeserializer> reader;
    Result result = TVX_OK;
};

// An object that can be serialised; its serialisable face is another one than its primary face.
class SerializableObject final : public ClassImpl<SerializableObject, IObject, ISerializable>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase, ISerializable>;

    Result GetFormatId(IString** out) override
    {
        *out = MakeRef<String>(std::string_view("SerializableObject")).Detach();
        return TVX_OK;
    }
    Result Serialize(ISerializer* writer) override { return writer->WriteNamedInt("answer", 42); }
};

}  // namespace tvx::test
