// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializerFactory.h"
#include "Tool/Checks/SerializerDoubles.h"

#include <string>
#include <vector>

// What a text serializer is made of. Text is the class of the texts handed out.
namespace tvx::check
{

// A writer that makes a text: it gives the text that was put in. Each step answers what it was told to, and a failing
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

// A reader of a text: it keeps the text that it is given, and reads the object that was put in. As in TextWriter, a
// failing step has delivered all the same.
template <class Text>
class TextReaderOf final
    : public ScriptedReaderImpl<ClassImpl<TextReaderOf<Text>, IDeserializer, IStringDeserializer>, Text>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IStringDeserializer, IObject, IObjectBase>;

    Result ReadNamedObject(const char* name, IObjectBase** out) override
    {
        this->Record("ReadNamedObject " + std::string(name));
        HandOut(object.Get(), out);
        return objectResult;
    }
    Result Begin() override
    {
        this->Record("Begin");
        return beginResult;
    }
    Result End() override
    {
        this->Record("End");
        return endResult;
    }
    Result SetText(IString* given) override
    {
        this->Record("SetText " + std::string(given == nullptr ? "null" : given->GetText()));
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

// Gives the writer and the reader that were put in, each time the same ones, whatever it answers.
class TextSerializerFactory final : public ClassImpl<TextSerializerFactory, ISerializerFactory>
{
public:
    using Interfaces = InterfaceList<ISerializerFactory, IObject, IObjectBase>;

    Result CreateSerializer(ISerializer** out) override
    {
        calls.emplace_back("CreateSerializer");
        HandOut(writer.Get(), out);
        return result;
    }
    Result CreateDeserializer(IDeserializer** out) override
    {
        calls.emplace_back("CreateDeserializer");
        HandOut(reader.Get(), out);
        return result;
    }

    std::vector<std::string> calls;
    Ref<ISerializer> writer;
    Ref<IDeserializer> reader;
    Result result = TVX_OK;
};

// An object that can be serialised; its serialisable face is another one than its primary face.
template <class Text>
class SerializableObjectOf final : public ClassImpl<SerializableObjectOf<Text>, IObject, ISerializable>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase, ISerializable>;

    Result GetFormatId(IString** out) override
    {
        *out = MakeRef<Text>("SerializableObject").Detach();
        return TVX_OK;
    }
    Result Serialize(ISerializer* writer) override { return writer->WriteNamedInt("answer", 42); }
};

}  // namespace tvx::check
