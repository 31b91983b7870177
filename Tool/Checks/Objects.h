// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Host/HostString.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/IImage.h"
#include "Interfaces/ILogger.h"
#include "Interfaces/IMap.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IString.h"
#include "Interfaces/IVariant.h"
#include "Interfaces/IVariantArray.h"
#include "Tool/Checks/SerializerDoubles.h"
#include "Tool/Checks/Trial.h"

namespace tvx::check
{

constexpr const char StringExport[] = "com.talvere.general.tvx.GenericStringImplementation/1.0";
constexpr const char VariantExport[] = "com.talvere.general.tvx.GenericVariantImplementation/1.1";
constexpr const char MapExport[] = "com.talvere.general.tvx.GenericMapImplementation/1.1";
constexpr const char SimpleMapExport[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";
constexpr const char CollectionExport[] = "com.talvere.general.tvx.GenericCollectionImplementation/1.1";
constexpr const char ImageExport[] = "com.talvere.general.tvx.GenericImageImplementation/1.0";
constexpr const char LoggerExport[] = "com.talvere.general.tvx.BasicLogger/1.0";
constexpr const char VariantArrayExport[] = "com.talvere.general.tvx.GenericVariantArrayImplementation/1.0";

// What a factory of the module makes by a call; fails the check when it gives a failure or nothing.
template <class Interface, class Call>
Ref<Interface> Make(Trial& trial, const std::string& what, Call&& call)
{
    Ref<Interface> made;
    trial.Gives(what, call(made.Receive()), TVX_OK);
    trial.Expect(static_cast<bool>(made), what + " to give an object", "null");
    return made;
}

// New objects of the module, by the factories that it exports. Each fails the check when it cannot be had.
Ref<IString> MakeString(Trial& trial, const char* text);
Ref<IVariant> MakeBool(Trial& trial, bool value);
Ref<IVariant> MakeInt(Trial& trial, std::int32_t value);
Ref<IVariant> MakeFloat(Trial& trial, float value);
Ref<IVariant> MakeDouble(Trial& trial, double value);
Ref<IVariant> MakeText(Trial& trial, const char* value);
Ref<IVariant> MakeObject(Trial& trial, IObject* value);
Ref<IMap> MakeMap(Trial& trial);
Ref<ISimpleMap5> MakeSimpleMap(Trial& trial);           // in batch updating mode, as it is made
Ref<ISimpleMap5> MakeImmediateSimpleMap(Trial& trial);  // out of it
Ref<ICollection2> MakeCollection(Trial& trial);
Ref<IVariantArray> MakeVariantArray(Trial& trial);
Ref<IImage> MakeImage(Trial& trial, std::int32_t width, std::int32_t height, std::int32_t colorFormat,
                      std::int32_t dataType, std::int32_t rowOrder);

// Reads what the check puts in.
class ScriptedReader final : public ScriptedReaderImpl<CountedImpl<ScriptedReader, IDeserializer>, host::HostString>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;
};

}  // namespace tvx::check
