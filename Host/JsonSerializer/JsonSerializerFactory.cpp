// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonSerializerFactory.h"

#include "Helpers/HandOut.h"
#include "Host/JsonSerializer/JsonReader.h"
#include "Host/JsonSerializer/JsonWriter.h"

namespace tvx::host
{

JsonSerializerFactory::~JsonSerializerFactory()
{
    ImportsContainerImpl::ClearImports();
}

Result JsonSerializerFactory::CreateSerializer(ISerializer** out)
{
    return HandOutNew<JsonWriter>(out);
}

Result JsonSerializerFactory::CreateDeserializer(IDeserializer** out)
{
    return HandOutNew<JsonReader>(out);
}

}  // namespace tvx::host
