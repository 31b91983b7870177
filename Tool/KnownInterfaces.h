// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ICollection.h"
#include "Interfaces/IConfigurable.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/IImage.h"
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/ILibManager.h"
#include "Interfaces/ILogger.h"
#include "Interfaces/IMap.h"
#include "Interfaces/IObject.h"
#include "Interfaces/IObjectBase.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializer.h"
#include "Interfaces/ISerializerFactory.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IString.h"
#include "Interfaces/ITVXPlugin.h"
#include "Interfaces/IUserDataContainer.h"
#include "Interfaces/IVariant.h"
#include "Interfaces/IVariantArray.h"

namespace tvx::tool
{

// The identifiers of all interfaces of Interfaces/, header by header.
inline constexpr const char* KnownInterfaces[] = {
    ICollection::Id,
    ICollection2::Id,
    ICollectionFactory::Id,
    IConfiguration::Id,
    IConfigurable::Id,
    IFactory::Id,
    IImageBase::Id,
    IConstImage::Id,
    IImage::Id,
    IImageFactory::Id,
    IImportsContainer::Id,
    IExportProxy::Id,
    ILibManager::Id,
    ICrashDumpServer::Id,
    ILogData::Id,
    ILogger::Id,
    IMap::Id,
    IMapFactory::Id,
    IObject::Id,
    IEventHandler::Id,
    IObjectBase::Id,
    ISerializable::Id,
    IDeserializable::Id,
    ISerializer::Id,
    IDeserializer::Id,
    ISerializerFactory::Id,
    IStringSerializer::Id,
    IStringDeserializer::Id,
    ISimpleMap::Id,
    ISimpleMap1::Id,
    ISimpleMap2::Id,
    ISimpleMap3::Id,
    ISimpleMap4::Id,
    ISimpleMap5::Id,
    IString::Id,
    IStringFactory::Id,
    IConstTVXPlugin::Id,
    ITVXPlugin::Id,
    IUserDataContainer::Id,
    IVariant::Id,
    IVariantFactory::Id,
    IVariantArray::Id,
};

}  // namespace tvx::tool
