// SPDX-License-Identifier: MIT
#include "Src/CVariantArray.h"

#include "Helpers/HandOut.h"
#include "Helpers/Results.h"
#include "Src/String.h"
#include "Src/VariantFactory.h"

#include <charconv>
#include <iterator>

namespace tvx
{

namespace
{

constexpr const char SizeName[] = "size";

// The name of an element: "param0", "param1" ….
class ElementName
{
public:
    explicit ElementName(std::size_t index) noexcept
    {
        *std::to_chars(text_ + PrefixLength, std::end(text_) - 1, index).ptr = '\0';
    }

    const char* Get() const noexcept { return text_; }

private:
    static constexpr std::size_t PrefixLength = 5;

    char text_[32] = "param";
};

}  // namespace

Result CVariantArray::GetSize(std::uint32_t* out)
{
    TVX_RETURN_EPOINTER_IF_NULL(out);
    *out = static_cast<std::uint32_t>(elements_.GetSize());
    return TVX_OK;
}

Result CVariantArray::GetAt(std::uint32_t index, IVariant** out)
{
    TVX_RETURN_FAIL_IF(index >= elements_.GetSize());
    if (out == nullptr)
        return TVX_E_POINTER;
    HandOut(elements_.Get(index), out);
    return TVX_OK;
}

Result CVariantArray::AppendObject(IObject* object)
{
    return AppendNew(&IVariantFactory::CreateObject, object);
}

Result CVariantArray::AppendString(const char* text)
{
    return AppendNew(&IVariantFactory::CreateString, text);
}

Result CVariantArray::AppendDouble(double value)
{
    return AppendNew(&IVariantFactory::CreateDouble, value);
}

Result CVariantArray::AppendFloat(float value)
{
    return AppendNew(&IVariantFactory::CreateFloat, value);
}

Result CVariantArray::AppendInt(std::int32_t value)
{
    return AppendNew(&IVariantFactory::CreateInt, value);
}

Result CVariantArray::AppendBool(bool value)
{
    return AppendNew(&IVariantFactory::CreateBool, value);
}

Result CVariantArray::AppendVariant(IVariant* variant)
try
{
    elements_.Insert(elements_.GetSize(), Ref<IVariant>(variant));
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Result CVariantArray::GetFormatId(IString** out)
{
    const auto factory = CVariantArrayFactory::GetOrMake();
    return factory ? factory->GetFormatId(out) : TVX_E_POINTER;
}

// Nothing demands that a null writer is refused, here as with the reader below: it is on purpose, so that a host's mistake
// is reported and does not crash.
Result CVariantArray::Serialize(ISerializer* writer)
{
    TVX_RETURN_EPOINTER_IF_NULL(writer);
    writer->WriteNamedInt(SizeName, static_cast<std::int32_t>(elements_.GetSize()));
    for (std::size_t index = 0; index < elements_.GetSize(); ++index)
    {
        const auto element = Query<ISerializable>(elements_.Get(index));
        if (!element)
            return TVX_E_FAIL;
        writer->WriteNamedObject(ElementName(index).Get(), element.Get());
    }
    return TVX_OK;
}

// What the variant factory answers is not looked at: what it cannot make is appended as null.
template <class Argument>
Result CVariantArray::AppendNew(Result (IVariantFactory::*create)(Argument, IVariant**), Argument argument)
{
    Ref<IVariantFactory> factory;
    Ref<IVariant> variant;
    if (!TVX_FAILED(VariantFactory::GetInstance(factory.Receive())))
        static_cast<void>((factory.Get()->*create)(argument, variant.Receive()));
    return AppendVariant(variant.Get());
}

Result CVariantArrayFactory::Create(IObjectBase** out)
{
    return HandOutNew<CVariantArray>(out);
}

Result CVariantArrayFactory::GetFormatId(IString** out)
{
    return HandOutNew<String>(out, "com.talvere.general.tvx.GenericVariantArrayImplementationFormat/1.0");
}

Result CVariantArrayFactory::Deserialize(IDeserializer* reader, IObjectBase** out)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(reader);
    std::int32_t size = 0;
    static_cast<void>(reader->ReadNamedInt(SizeName, &size));
    const auto array = MakeRef<CVariantArray>();
    for (std::int32_t index = 0; index < size; ++index)
    {
        Ref<IObjectBase> element;
        static_cast<void>(
            reader->ReadNamedObject(ElementName(static_cast<std::size_t>(index)).Get(), element.Receive()));
        const auto appended = array->AppendVariant(Query<IVariant>(element).Get());
        if (TVX_FAILED(appended))
            return appended;
    }
    if (out == nullptr)
        return TVX_E_POINTER;
    HandOut(static_cast<IVariantArray*>(array.Get()), out);
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

}  // namespace tvx
