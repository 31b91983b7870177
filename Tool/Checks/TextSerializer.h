// SPDX-License-Identifier: MIT
#pragma once

#include "Host/HostString.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializerFactory.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/SerializerDoubles.h"

#include <string>
#include <vector>

// The serializer that a host gives the settings maps of a module as their import "Serializer".
namespace tvx::check
{

// A writer that makes a text: it gives the text that the check put in. Each step answers what the check says, and a failing
// one has delivered all the same, so that a reference that the module forgets on the way shows in the counts.
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

// A reader of a text: it keeps the text that it is given, and reads the object that the check put in. As in TextWriter, a
// failing step has delivered all the same.
class TextReader final
    : public ScriptedReaderImpl<ClassImpl<TextReader, IDeserializer, IStringDeserializer>, host::HostString>
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
        Record("SetText " + std::string(given == nullptr ? "null" : given->GetText()));
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

// Gives the writer and the reader that the check put in, each time the same ones, whatever it answers.
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
class SerializableObject final : public ClassImpl<SerializableObject, IObject, ISerializable>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase, ISerializable>;

    Result GetFormatId(IString** out) override
    {
        *out = MakeRef<host::HostString>("SerializableObject").Detach();
        return TVX_OK;
    }
    Result Serialize(ISerializer* writer) override { return writer->WriteNamedInt("answer", 42); }
};

// A serializer of which everything is at hand, and which the settings maps of the module have as their import as long as
// this lives. It writes the text "text of the object", and reads an object that is nothing but an IObject.
class TextSerializer
{
public:
    explicit TextSerializer(Trial& trial) : imports_(trial.Get<IImportsContainer>(SimpleMapExport))
    {
        factory->writer = Ref<ISerializer>(writer);
        factory->reader = Ref<IDeserializer>(reader);
        writer->text = text;
        reader->object = Ref<IObjectBase>(object);
        trial.Gives("SetImport of \"Serializer\"", imports_->SetImport("Serializer", proxy.Get()), TVX_OK);
    }
    ~TextSerializer() { static_cast<void>(imports_->ClearImports()); }

    TextSerializer(const TextSerializer&) = delete;
    TextSerializer& operator=(const TextSerializer&) = delete;

    // How many references on the factory, the writer, the reader, the text and the object are held by neither this nor
    // these: 0 after a call of the module, unless it forgot some or gave one to the caller, who still has it.
    std::uint32_t CountReferencesLeft() const
    {
        writer->objects.clear();
        reader->text = nullptr;
        return factory->GetRefCount() + writer->GetRefCount() + reader->GetRefCount() + text->GetRefCount() +
               object->GetRefCount() - 10;
    }

    const Ref<TextSerializerFactory> factory = MakeRef<TextSerializerFactory>();
    const Ref<ImportProxy> proxy = MakeRef<ImportProxy>(Ref<IObjectBase>(factory));
    const Ref<TextWriter> writer = MakeRef<TextWriter>();
    const Ref<TextReader> reader = MakeRef<TextReader>();
    const Ref<IString> text = MakeRef<host::HostString>("text of the object");
    const Ref<ProbeObject> object = MakeRef<ProbeObject>();

private:
    const Ref<IImportsContainer> imports_;
};

}  // namespace tvx::check
