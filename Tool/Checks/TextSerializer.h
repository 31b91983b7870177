// SPDX-License-Identifier: MIT
#pragma once

#include "Host/HostString.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/TextSerializerDoubles.h"

// The serializer that a host gives the settings maps of a module as their import "Serializer".
namespace tvx::check
{

using TextReader = TextReaderOf<host::HostString>;
using SerializableObject = SerializableObjectOf<host::HostString>;

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
