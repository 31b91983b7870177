// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/IVariant.h"

namespace tvx
{

// The variant export: makes variants and reads them back. Keeps no state; any thread.
class VariantFactory final : public ClassImpl<VariantFactory, IVariantFactory, IDeserializable>,
                             public Singleton<VariantFactory, IVariantFactory>
{
public:
    using Interfaces = InterfaceList<IVariantFactory, IObject, IObjectBase, IDeserializable>;

    Result CreateBool(bool value, IVariant** out) override;
    Result CreateInt(std::int32_t value, IVariant** out) override;
    Result CreateFloat(float value, IVariant** out) override;
    Result CreateDouble(double value, IVariant** out) override;
    Result CreateStringFromIString(IString* string, IVariant** out) override;
    Result CreateString(const char* text, IVariant** out) override;
    Result CreateObject(IObject* object, IVariant** out) override;

    Result GetFormatId(IString** out) override;

    // Gives -1 for an unknown type. From then on it is lenient and gives 0: a value that cannot be read counts as zero or
    // null, and a null out is allowed.
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override;
};

}  // namespace tvx
