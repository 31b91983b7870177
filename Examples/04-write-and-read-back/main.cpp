// SPDX-License-Identifier: MIT
// Serialisation: a collection of settings maps becomes a JSON file through the serializer module, and the file becomes
// objects again. What reads them is found by the format that stands in the file.
#include "Helpers/Ranges.h"
#include "Host/HostString.h"
#include "Host/LibraryManager.h"
#include "Host/SettingsMap.h"
#include "Host/TextFile.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/ISerializerFactory.h"

#include <iostream>

namespace
{

using namespace tvx;

constexpr const char Serializer[] = "com.talvere.serializers.JSONSerializer/1.0";
constexpr const char Collections[] = "com.talvere.general.tvx.GenericCollectionImplementation/1.1";
constexpr const char ObjectName[] = "Cameras";

host::Error Misbehaved(const char* what)
{
    return host::MakeError(host::ErrorKind::Misbehaved, what);
}

// A collection of two settings maps.
host::Outcome<Ref<ICollection>> MakeCameras(host::LibraryManager& manager)
{
    const auto collections = manager.GetExportAs<ICollectionFactory>(Collections);
    if (!collections)
        return collections.GetError();
    Ref<ICollection> cameras;
    if (TVX_FAILED((*collections)->CreateCollection(cameras.Receive())))
        return Misbehaved("no collection");
    for (const char* const name : {"left", "right"})
    {
        const auto settings = host::MakeSettingsMap(manager);
        if (!settings)
            return settings.GetError();
        (*settings)->SetString("Name", name);
        (*settings)->SetDouble("Lens\\FocalLength", 12.5);
        cameras->Add(settings->Get());
    }
    return cameras;
}

// A writer has two faces: one takes the values, the other gives the text when the document has been ended.
host::Outcome<std::string> WriteText(ISerializerFactory& serializer, IObjectBase* object)
{
    Ref<ISerializer> writer;
    serializer.CreateSerializer(writer.Receive());
    const auto document = Query<IStringSerializer>(writer);
    if (!document)
        return Misbehaved("no writer");
    Ref<IString> text;
    if (TVX_FAILED(document->Begin()) || TVX_FAILED(writer->WriteNamedObject(ObjectName, object)) ||
        TVX_FAILED(document->End()) || TVX_FAILED(document->GetText(text.Receive())))
        return Misbehaved("the object cannot be written");
    return std::string(text->GetText());
}

host::Outcome<Ref<IObjectBase>> ReadText(ISerializerFactory& serializer, std::string text)
{
    Ref<IDeserializer> reader;
    serializer.CreateDeserializer(reader.Receive());
    const auto document = Query<IStringDeserializer>(reader);
    if (!document)
        return Misbehaved("no reader");
    Ref<IObjectBase> object;
    if (TVX_FAILED(document->SetText(MakeRef<host::HostString>(std::move(text)).Get())) ||
        TVX_FAILED(document->Begin()) || TVX_FAILED(reader->ReadNamedObject(ObjectName, object.Receive())) ||
        TVX_FAILED(document->End()))
        return Misbehaved("the text cannot be read");
    return object;
}

void PrintCameras(ICollection& cameras)
{
    for (const auto& camera : ItemsAs<ISimpleMap>(cameras))
    {
        std::cout << "camera\n";
        for (const auto [key, value] : Entries(*camera))
            std::cout << "  " << key << " = " << value << '\n';
    }
}

// Gives the text of the file.
host::Outcome<std::string> WriteAndReadFile(const char* file, const std::string& text)
{
    const auto written = host::WriteTextFile(file, text);
    if (!written)
        return written.GetError();
    return host::ReadTextFile(file);
}

host::Outcome<bool> WriteAndReadBack(host::LibraryManager& manager)
{
    const auto serializer = manager.GetExportAs<ISerializerFactory>(Serializer);
    if (!serializer)
        return serializer.GetError();
    const auto cameras = MakeCameras(manager);
    if (!cameras)
        return cameras.GetError();
    const auto text = WriteText(**serializer, cameras->Get());
    if (!text)
        return text.GetError();
    std::cout << *text << '\n';
    const auto stored = WriteAndReadFile("cameras.json", *text);
    if (!stored)
        return stored.GetError();
    const auto object = ReadText(**serializer, *stored);
    if (!object)
        return object.GetError();
    const auto read = Query<ICollection>(*object);
    if (!read)
        return Misbehaved("what was read is no collection");
    PrintCameras(*read);
    const auto again = WriteText(**serializer, read.Get());
    if (!again)
        return again.GetError();
    return *again == *text;
}

}  // namespace

int main(int count, char** arguments)
{
    host::ModuleCatalog catalog;
    catalog.Add(count > 1 ? arguments[1] : TVX_MODULES);
    host::LibraryManager manager(std::move(catalog));
    const auto equal = WriteAndReadBack(manager);
    if (!equal)
    {
        std::cerr << equal.GetError().message << '\n';
        return 1;
    }
    std::cout << "what was read is " << (*equal ? "equal to" : "not") << " what was written\n";
    return *equal ? 0 : 1;
}
