// SPDX-License-Identifier: MIT
#pragma once

namespace tvx::check
{

// The identifiers of the framework's interfaces, as text: modules compare them byte for byte, so the bytes count.
constexpr const char* KnownIds[] = {
    "com.talvere.general.tvx.IObjectBase/1.0",
    "com.talvere.general.tvx.IObject/1.0",
    "com.talvere.general.tvx.IString/1.0",
    "com.talvere.general.tvx.IStringFactory/1.0",
    "com.talvere.general.tvx.IVariant/1.0",
    "com.talvere.general.tvx.IVariantFactory/1.0",
    "com.talvere.general.tvx.ISerializable/1.0",
    "com.talvere.general.tvx.IDeserializable/1.0",
    "com.talvere.general.tvx.IFactory/1.0",
    "com.talvere.general.tvx.IMap/1.0",
    "com.talvere.general.tvx.IMapFactory/1.0",
    "com.talvere.general.tvx.ICollection/1.1",
    "com.talvere.general.tvx.ICollection/2.0",
    "com.talvere.general.tvx.ICollectionFactory/1.0",
    "com.talvere.general.tvx.IVariantArray/1.0",
    "com.talvere.general.tvx.ISimpleMap/1.0",
    "com.talvere.general.tvx.ISimpleMap/1.1",
    "com.talvere.general.tvx.ISimpleMap/1.2",
    "com.talvere.general.tvx.ISimpleMap/1.3",
    "com.talvere.general.tvx.ISimpleMap/1.4",
    "com.talvere.general.tvx.ISimpleMap/1.5",
    "com.talvere.general.tvx.IUserDataContainer/1.0",
    "com.talvere.general.tvx.IImageBase/1.0",
    "com.talvere.general.tvx.IConstImage/1.0",
    "com.talvere.general.tvx.IImage/1.0",
    "com.talvere.general.tvx.IImageFactory/1.0",
    "com.talvere.general.tvx.ILogger/1.0",
    "com.talvere.general.tvx.ILogData/1.0",
    "com.talvere.general.tvx.IConfigurable/1.0",
    "com.talvere.general.tvx.IImportsContainer/1.0",
    "com.talvere.general.tvx.IConstTVXPlugin/1.0",
    "com.talvere.general.tvx.ITVXPlugin/1.0",
    "com.talvere.general.tvx.IExportProxy/1.0",
    "com.talvere.general.tvx.ILibManager/1.0",
    "com.talvere.general.tvx.ICrashDumpServer/1.0",
    "com.talvere.general.tvx.IStringSerializer/1.0",
    "com.talvere.general.tvx.IStringDeserializer/1.0",
    "com.talvere.general.tvx.ISerializerFactory/1.0",
    "com.talvere.general.tvx.IConfiguration/1.0",
    "com.talvere.general.tvx.IEventHandler/1.0",
    "com.talvere.general.tvx.ISerializer/1.0",
    "com.talvere.general.tvx.IDeserializer/1.0",
};

}  // namespace tvx::check
