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
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializerFactory.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/ITVXPlugin.h"
#include "Interfaces/IUserDataContainer.h"
#include "Interfaces/IVariantArray.h"

// The interfaces that the life tracer knows, as data: a test compares them with the frozen numbers of the slots.
namespace tvx::host
{

// The operations that an interface adds to its base, in the order of their slots.
template <class BaseInterface, auto... Operations>
struct SlotList
{
    static constexpr bool HasId = true;
};

// The same for an interface that nobody asks for: it is given by the operations that say so.
template <class BaseInterface, auto... Operations>
struct NamelessSlotList : SlotList<BaseInterface, Operations...>
{
    static constexpr bool HasId = false;
};

// Two classes have operations of their own behind their latest interface. Who knows of them calls them by number.
class ISimpleMapEvents : public ISimpleMap5
{
public:
    virtual void FireChanged(IObjectBase* argument) = 0;
    virtual void FireBatchUpdatingModeChanged(IVariant* argument) = 0;

protected:
    ~ISimpleMapEvents() = default;
};

class ICollectionEvents : public ICollection2
{
public:
    virtual void FireItemAdded(IObject* item) = 0;
    virtual void FireItemRemoved(IObject* item) = 0;
    virtual void FireItemMoved(IObject* item) = 0;
    virtual void FireUpdated(IObject* item) = 0;

protected:
    ~ICollectionEvents() = default;
};

template <class Interface>
struct SlotsOf;

template <>
struct SlotsOf<IObjectBase>
    : SlotList<void, &IObjectBase::AddRef, &IObjectBase::Release, &IObjectBase::QueryInterface,
               &IObjectBase::DoQueryInterface, &IObjectBase::IsUnique, &IObjectBase::GetRefCount>
{
};

template <>
struct SlotsOf<IObject> : SlotList<IObjectBase, &IObject::SubscribeDestroyed, &IObject::UnsubscribeDestroyed,
                                   &IObject::GetOwnerThreadId, &IObject::SetOwnerThreadId>
{
};

template <>
struct SlotsOf<IEventHandler> : SlotList<IObject, &IEventHandler::OnEvent>
{
};

template <>
struct SlotsOf<IString> : SlotList<IObject, &IString::GetText, &IString::GetLength>
{
};

template <>
struct SlotsOf<IStringFactory> : SlotList<IObject, &IStringFactory::CreateString>
{
};

template <>
struct SlotsOf<IVariant>
    : SlotList<IObject, &IVariant::GetType, &IVariant::GetBool, &IVariant::GetInt, &IVariant::GetFloat,
               &IVariant::GetDouble, &IVariant::GetString, &IVariant::GetObject>
{
};

template <>
struct SlotsOf<IVariantFactory>
    : SlotList<IObject, &IVariantFactory::CreateBool, &IVariantFactory::CreateInt, &IVariantFactory::CreateFloat,
               &IVariantFactory::CreateDouble, &IVariantFactory::CreateStringFromIString,
               &IVariantFactory::CreateString, &IVariantFactory::CreateObject>
{
};

template <>
struct SlotsOf<IVariantArray>
    : SlotList<IObject, &IVariantArray::GetSize, &IVariantArray::GetAt, &IVariantArray::AppendObject,
               &IVariantArray::AppendString, &IVariantArray::AppendDouble, &IVariantArray::AppendFloat,
               &IVariantArray::AppendInt, &IVariantArray::AppendBool, &IVariantArray::AppendVariant>
{
};

template <>
struct SlotsOf<ISerializer>
    : SlotList<IObjectBase, &ISerializer::WriteNamedBool, &ISerializer::WriteNamedInt, &ISerializer::UnusedSlot9,
               &ISerializer::WriteNamedDouble, &ISerializer::WriteNamedString, &ISerializer::WriteNamedObject,
               &ISerializer::UnusedSlot13, &ISerializer::BeginArray, &ISerializer::UnusedSlot15,
               &ISerializer::UnusedSlot16, &ISerializer::UnusedSlot17, &ISerializer::UnusedSlot18,
               &ISerializer::WriteString, &ISerializer::WriteObject, &ISerializer::UnusedSlot21, &ISerializer::EndArray>
{
};

template <>
struct SlotsOf<IDeserializer>
    : SlotList<IObjectBase, &IDeserializer::ReadNamedBool, &IDeserializer::ReadNamedInt, &IDeserializer::UnusedSlot9,
               &IDeserializer::ReadNamedDouble, &IDeserializer::ReadNamedString, &IDeserializer::ReadNamedObject,
               &IDeserializer::UnusedSlot13, &IDeserializer::BeginArray, &IDeserializer::UnusedSlot15,
               &IDeserializer::UnusedSlot16, &IDeserializer::UnusedSlot17, &IDeserializer::UnusedSlot18,
               &IDeserializer::ReadString, &IDeserializer::ReadObject, &IDeserializer::UnusedSlot21,
               &IDeserializer::EndArray>
{
};

template <>
struct SlotsOf<ISerializable> : SlotList<IObjectBase, &ISerializable::GetFormatId, &ISerializable::Serialize>
{
};

template <>
struct SlotsOf<IDeserializable> : SlotList<IObject, &IDeserializable::GetFormatId, &IDeserializable::Deserialize>
{
};

template <>
struct SlotsOf<ISerializerFactory>
    : SlotList<IObject, &ISerializerFactory::CreateSerializer, &ISerializerFactory::CreateDeserializer>
{
};

template <>
struct SlotsOf<IStringSerializer>
    : SlotList<IObject, &IStringSerializer::Begin, &IStringSerializer::End, &IStringSerializer::GetText>
{
};

template <>
struct SlotsOf<IStringDeserializer>
    : SlotList<IObject, &IStringDeserializer::Begin, &IStringDeserializer::End, &IStringDeserializer::SetText>
{
};

template <>
struct SlotsOf<IFactory> : SlotList<IObject, &IFactory::Create>
{
};

template <>
struct SlotsOf<ISimpleMapIterator>
    : NamelessSlotList<IObjectBase, &ISimpleMapIterator::GetKey, &ISimpleMapIterator::GetValue,
                       &ISimpleMapIterator::Next, &ISimpleMapIterator::IsEnd>
{
};

template <>
struct SlotsOf<ISimpleMap>
    : SlotList<IObject, &ISimpleMap::SetDouble, &ISimpleMap::SetInt, &ISimpleMap::SetString, &ISimpleMap::GetDouble,
               &ISimpleMap::GetInt, &ISimpleMap::GetString, &ISimpleMap::GetIterator, &ISimpleMap::GetSubMap,
               &ISimpleMap::SetSubMap, &ISimpleMap::GetObject, &ISimpleMap::SetObject, &ISimpleMap::HasKey,
               &ISimpleMap::Clone, &ISimpleMap::GetIteratorNoSubMaps, &ISimpleMap::SubscribeChanged,
               &ISimpleMap::SetBatchUpdatingMode, &ISimpleMap::GetBatchUpdatingMode,
               &ISimpleMap::SubscribeBatchUpdatingModeChanged>
{
};

template <>
struct SlotsOf<ISimpleMap1> : SlotList<ISimpleMap>
{
};

template <>
struct SlotsOf<ISimpleMap2> : SlotList<ISimpleMap1>
{
};

template <>
struct SlotsOf<ISimpleMap3> : SlotList<ISimpleMap2>
{
};

template <>
struct SlotsOf<ISimpleMap4> : SlotList<ISimpleMap3>
{
};

template <>
struct SlotsOf<ISimpleMap5> : SlotList<ISimpleMap4>
{
};

template <>
struct SlotsOf<ISimpleMapEvents>
    : SlotList<ISimpleMap5, &ISimpleMapEvents::FireChanged, &ISimpleMapEvents::FireBatchUpdatingModeChanged>
{
};

template <>
struct SlotsOf<IUserDataIterator> : NamelessSlotList<IObjectBase, &IUserDataIterator::Next, &IUserDataIterator::IsEnd,
                                                     &IUserDataIterator::GetKey, &IUserDataIterator::GetObject>
{
};

template <>
struct SlotsOf<IUserDataContainer>
    : SlotList<IObject, &IUserDataContainer::SetUserData,
               static_cast<Result (IUserDataContainer::*)(const char*, IObjectBase**)>(
                   &IUserDataContainer::GetUserData),
               static_cast<Result (IUserDataContainer::*)(const char*, const IObjectBase**)>(
                   &IUserDataContainer::GetUserData),
               &IUserDataContainer::GetUserDataIterator, &IUserDataContainer::CreateUserDataIterator,
               &IUserDataContainer::ClearUserData>
{
};

template <>
struct SlotsOf<IConfiguration>
    : SlotList<IObject, &IConfiguration::UnusedSlot11, &IConfiguration::GetBool, &IConfiguration::GetInt,
               &IConfiguration::UnusedSlot14, &IConfiguration::GetString>
{
};

template <>
struct SlotsOf<IConfigurable> : SlotList<IObject, &IConfigurable::SetConfiguration>
{
};

template <>
struct SlotsOf<IImportsContainer> : SlotList<IObject, &IImportsContainer::SetImport, &IImportsContainer::OnImportsSet,
                                             &IImportsContainer::OnImportsHook, &IImportsContainer::ClearImports>
{
};

template <>
struct SlotsOf<IExportProxy> : SlotList<IObject, &IExportProxy::GetExportObject>
{
};

template <>
struct SlotsOf<ILibManager> : SlotList<IObject, &ILibManager::GetInstalledPluginsVersions>
{
};

template <>
struct SlotsOf<ICrashDumpServer> : SlotList<IObject, &ICrashDumpServer::AddFile>
{
};

template <>
struct SlotsOf<IConstTVXPlugin>
    : SlotList<IObject, &IConstTVXPlugin::GetMetadata, &IConstTVXPlugin::GetId, &IConstTVXPlugin::GetName,
               &IConstTVXPlugin::GetSubname, &IConstTVXPlugin::GetCopyright, &IConstTVXPlugin::GetVersion,
               &IConstTVXPlugin::GetComment>
{
};

template <>
struct SlotsOf<ITVXPlugin> : SlotList<IConstTVXPlugin, &ITVXPlugin::SetMetadataMap>
{
};

template <>
struct SlotsOf<IMap> : SlotList<IObject, &IMap::SetValue, &IMap::GetValue, &IMap::LookupValue>
{
};

template <>
struct SlotsOf<IMapFactory> : SlotList<IObject, &IMapFactory::CreateMap>
{
};

template <>
struct SlotsOf<ICollection>
    : SlotList<IObject, &ICollection::GetItem, &ICollection::GetCount, &ICollection::Add, &ICollection::RemoveLast,
               &ICollection::Insert, &ICollection::RemoveAt, &ICollection::GetEventsEnabled,
               &ICollection::SetEventsEnabled, &ICollection::InsertBefore, &ICollection::SubscribeItemAdded,
               &ICollection::Remove, &ICollection::SubscribeItemRemoved, &ICollection::Move, &ICollection::MoveItem,
               &ICollection::MoveBefore, &ICollection::SubscribeItemMoved, &ICollection::IndexOf, &ICollection::Clear,
               &ICollection::NotifyUpdated, &ICollection::Contains, &ICollection::SubscribeUpdated>
{
};

template <>
struct SlotsOf<ICollection2> : SlotList<ICollection>
{
};

template <>
struct SlotsOf<ICollectionEvents>
    : SlotList<ICollection2, &ICollectionEvents::FireItemAdded, &ICollectionEvents::FireItemRemoved,
               &ICollectionEvents::FireItemMoved, &ICollectionEvents::FireUpdated>
{
};

template <>
struct SlotsOf<ICollectionFactory> : SlotList<IObject, &ICollectionFactory::CreateCollection>
{
};

template <>
struct SlotsOf<ILogData> : SlotList<IObject, &ILogData::GetLoggerName, &ILogData::GetLevel, &ILogData::GetSource,
                                    &ILogData::GetScope, &ILogData::GetFile, &ILogData::GetLine, &ILogData::GetMessage>
{
};

template <>
struct SlotsOf<ILogger> : SlotList<IObject, &ILogger::Log, &ILogger::SetLevel, &ILogger::GetLevel,
                                   &ILogger::AdviseMessageLogged, &ILogger::FireMessageLogged>
{
};

template <>
struct SlotsOf<IImageBase>
    : SlotList<IObject, &IImageBase::GetWidth, &IImageBase::GetHeight, &IImageBase::GetColorFormat,
               &IImageBase::GetDataType, &IImageBase::GetRowOrder, &IImageBase::GetPixelSize, &IImageBase::GetStride>
{
};

template <>
struct SlotsOf<IConstImage> : SlotList<IImageBase, &IConstImage::GetData>
{
};

template <>
struct SlotsOf<IImage>
    : SlotList<IConstImage, &IImage::GetWritableData, &IImage::LockRead, &IImage::LockWrite, &IImage::Unlock,
               &IImage::IsLocked, &IImage::IsWriteLocked, &IImage::SetColorFormat, &IImage::SetRowOrder>
{
};

template <>
struct SlotsOf<IImageFactory>
    : SlotList<IObject, &IImageFactory::Create, &IImageFactory::CreateCopy, &IImageFactory::CreateConstCopy,
               &IImageFactory::MakeConst, &IImageFactory::MakeMutable>
{
};

template <class... Interfaces>
struct InterfaceNames
{
};

// All of them, each behind its base.
using TracedInterfaceNames = InterfaceNames<
    IObjectBase, IObject, IEventHandler, IString, IStringFactory, IVariant, IVariantFactory, IVariantArray, ISerializer,
    IDeserializer, ISerializable, IDeserializable, ISerializerFactory, IStringSerializer, IStringDeserializer, IFactory,
    ISimpleMapIterator, ISimpleMap, ISimpleMap1, ISimpleMap2, ISimpleMap3, ISimpleMap4, ISimpleMap5, ISimpleMapEvents,
    IUserDataIterator, IUserDataContainer, IConfiguration, IConfigurable, IImportsContainer, IExportProxy, ILibManager,
    ICrashDumpServer, IConstTVXPlugin, ITVXPlugin, IMap, IMapFactory, ICollection, ICollection2, ICollectionEvents,
    ICollectionFactory, ILogData, ILogger, IImageBase, IConstImage, IImage, IImageFactory>;

}  // namespace tvx::host
