// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/RefArray.h"
#include "Helpers/Singleton.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/IVariantArray.h"

namespace tvx
{

// The list of variants that only grows. One thread at a time.
//
// It writes "size" and then the elements as "param0", "param1" …. Writing fails hard at an element that cannot be written,
// a null one included, while reading is lenient and makes null elements of what it cannot read: that is intended.
class CVariantArray final : public ClassImpl<CVariantArray, IVariantArray, ISerializable>
{
public:
    using Interfaces = InterfaceList<IVariantArray, IObject, IObjectBase, ISerializable>;

    Result GetSize(std::uint32_t* out) override;
    Result GetAt(std::uint32_t index, IVariant** out) override;
    Result AppendObject(IObject* object) override;
    Result AppendString(const char* text) override;
    Result AppendDouble(double value) override;
    Result AppendFloat(float value) override;
    Result AppendInt(std::int32_t value) override;
    Result AppendBool(bool value) override;
    Result AppendVariant(IVariant* variant) override;

    Result GetFormatId(IString** out) override;

    // Gives -1, without a report, at the first element that cannot be written; what stands before it is written then.
    Result Serialize(ISerializer* writer) override;

private:
    template <class Argument>
    Result AppendNew(Result (IVariantFactory::*create)(Argument, IVariant**), Argument argument);

    RefArray<IVariant> elements_;
};

// The variant array export: makes arrays and reads them back. Keeps no state; any thread.
class CVariantArrayFactory final : public ClassImpl<CVariantArrayFactory, IDeserializable, IFactory>,
                                   public Singleton<CVariantArrayFactory, IDeserializable>
{
public:
    // IObject is the factory's face here, not the primary one: hosts rely on it.
    using Interfaces = InterfaceList<IDeserializable, IObjectBase, IFactory, AnsweredBy<IObject, IFactory>>;

    Result Create(IObjectBase** out) override;

    Result GetFormatId(IString** out) override;

    // Lenient: an entry that is missing or no variant becomes a null element. Gives -4 with a report for a null reader,
    // without one for a null out, after reading, and when memory is exhausted.
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override;
};

}  // namespace tvx
