// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/HandOut.h"
#include "Helpers/Results.h"
#include "Src/Variant.h"
#include "Src/VariantFactory.h"

namespace tvx::bad
{

constexpr const char VariantId[] = "com.talvere.general.tvx.GenericVariantImplementation/1.1";

// The variant export of Class, which does what the real one does, but for what Class does otherwise.
template <class Class>
class ForwardingVariants : public ClassImpl<Class, IVariantFactory, IDeserializable>,
                           public Singleton<Class, IVariantFactory>
{
public:
    using Interfaces = InterfaceList<IVariantFactory, IObject, IObjectBase, IDeserializable>;

    Result CreateBool(bool value, IVariant** out) override { return Real()->CreateBool(value, out); }
    Result CreateInt(std::int32_t value, IVariant** out) override { return Real()->CreateInt(value, out); }
    Result CreateFloat(float value, IVariant** out) override { return Real()->CreateFloat(value, out); }
    Result CreateDouble(double value, IVariant** out) override { return Real()->CreateDouble(value, out); }
    Result CreateStringFromIString(IString* string, IVariant** out) override
    {
        return Real()->CreateStringFromIString(string, out);
    }
    Result CreateString(const char* text, IVariant** out) override { return Real()->CreateString(text, out); }
    Result CreateObject(IObject* object, IVariant** out) override { return Real()->CreateObject(object, out); }

    Result GetFormatId(IString** out) override { return Real()->GetFormatId(out); }
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override { return Real()->Deserialize(reader, out); }

protected:
    ~ForwardingVariants() = default;

private:
    static Ref<VariantFactory> Real() { return VariantFactory::GetOrMake(); }
};

}  // namespace tvx::bad
