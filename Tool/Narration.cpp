// SPDX-License-Identifier: MIT
#include "Tool/Narration.h"

#include "Helpers/Ref.h"
#include "Host/HostString.h"
#include "Interfaces/IVariant.h"

#include <random>
#include <string_view>

namespace tvx::tool
{

namespace
{

constexpr const char ObjectName[] = "Settings";

// Of all events only this one carries a variant.
const char* DescribeMode(std::string_view eventName, std::uint64_t param)
{
    bool mode = false;
    if (eventName != "BatchUpdatingModeChanged" || param == 0 ||
        TVX_FAILED(reinterpret_cast<IVariant*>(param)->GetBool(&mode)))
        return "";
    return mode ? " (true)" : " (false)";
}

}  // namespace

Result Narrator::OnEvent(IObject*, const char* interfaceId, const char* eventName, std::uint64_t param, std::uint64_t)
{
    Say("  event  \"", eventName, "\"", DescribeMode(eventName, param), " of ", interfaceId);
    return TVX_OK;
}

Result WriteToText(ISerializerFactory& factory, IObjectBase* object, std::string& text)
{
    Ref<ISerializer> writer;
    factory.CreateSerializer(writer.Receive());
    const auto document = Query<IStringSerializer>(writer.Get());
    if (!document)
        return TVX_E_NOINTERFACE;
    document->Begin();
    writer->WriteNamedObject(ObjectName, object);
    Ref<IString> made;
    const auto ended = document->End();
    const auto result = TVX_FAILED(ended) ? ended : document->GetText(made.Receive());
    if (!made)
        return TVX_FAILED(result) ? result : TVX_E_FAIL;
    text = made->GetText();
    return result;
}

Result ReadFromText(ISerializerFactory& factory, const std::string& text, Ref<IObjectBase>& object)
{
    Ref<IDeserializer> reader;
    factory.CreateDeserializer(reader.Receive());
    const auto document = Query<IStringDeserializer>(reader.Get());
    if (!document)
        return TVX_E_NOINTERFACE;
    document->SetText(MakeRef<host::HostString>(text).Get());
    document->Begin();
    const auto result = reader->ReadNamedObject(ObjectName, object.Receive());
    document->End();
    return result;
}

std::filesystem::path MakeTourFolder()
{
    std::error_code failed;
    const auto parent = std::filesystem::temp_directory_path(failed);
    std::random_device random;
    while (!failed)
    {
        auto folder = parent / ("tvx-tour-" + std::to_string(random()));
        if (std::filesystem::create_directory(folder, failed))
            return folder;
    }
    return {};
}

}  // namespace tvx::tool
