// SPDX-License-Identifier: MIT
#include "Tool/Checks/VariantSlots.h"

namespace tvx::check
{

namespace
{

template <class Value>
std::string Ask(void* variant, std::int32_t (*getter)(void* object, Value* out))
{
    RoomyOut<Value> out;
    const Result result = getter(variant, &out.value);
    return TVX_FAILED(result) ? Show(result) : Show(result) + " " + Show(out.value);
}

// The object that a getter hands out, if any, is asked before it is used: it may be of another kind.
template <class Wanted, class Tell>
std::string AskForObject(void* variant, std::int32_t (*getter)(void* object, void** out), Tell&& tell)
{
    RoomyOut<void*> out;
    const Result result = getter(variant, &out.value);
    if (TVX_FAILED(result))
        return Show(result);
    if (!IsObjectAddress(out.value))
        return Show(result) + " without an object";
    const auto object = Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(out.value));
    const auto wanted = Query<Wanted>(object);
    return Show(result) + " " + (wanted ? tell(wanted) : "another object");
}

ScriptedReader::Value GetValue(std::int32_t type)
{
    switch (type)
    {
    case IVariant::TypeBool: return true;
    case IVariant::TypeInt: return IntSample;
    case IVariant::TypeFloat: return static_cast<double>(FloatSample);
    case IVariant::TypeDouble: return DoubleSample;
    case IVariant::TypeString: return std::string(TextSample);
    default: return Ref<IObjectBase>(MakeRef<ProbeObject>());
    }
}

}  // namespace

std::string AskTypeSlot(void* variant)
{
    return Show(CallIVariantGetType(variant));
}

std::string AskBoolSlot(void* variant)
{
    return Ask(variant, CallIVariantGetBool);
}

std::string AskIntSlot(void* variant)
{
    return Ask(variant, CallIVariantGetInt);
}

std::string AskFloatSlot(void* variant)
{
    return Ask(variant, CallIVariantGetFloat);
}

std::string AskDoubleSlot(void* variant)
{
    return Ask(variant, CallIVariantGetDouble);
}

std::string AskStringSlot(void* variant)
{
    const auto tell = [](const Ref<IString>& string)
    { return IsAddress(string->GetText()) ? std::string(string->GetText()) : "a string without a text"; };
    return AskForObject<IString>(variant, CallIVariantGetString, tell);
}

std::string AskObjectSlot(void* variant)
{
    return AskForObject<IObject>(variant, CallIVariantGetObject, [](const auto&) { return "an object"; });
}

Ref<IVariant> ReadSample(Trial& trial, std::int32_t type)
{
    auto reader = MakeRef<ScriptedReader>();
    reader->named["type"] = type;
    reader->named["value"] = GetValue(type);
    Ref<IObjectBase> made;
    trial.Get<IDeserializable>(VariantExport)->Deserialize(reader.Get(), made.Receive());
    if (!reader->calls.empty())
        return Query<IVariant>(made);
    static_cast<void>(reader.Detach());  // it was taken for something else and cannot be trusted any more
    return nullptr;
}

Ref<IVariant> MakeSample(Trial& trial, std::int32_t type)
{
    const auto factory = trial.Get<IVariantFactory>(VariantExport);
    Ref<IVariant> made;
    IVariant** const out = made.Receive();
    switch (type)
    {
    case IVariant::TypeBool: factory->CreateBool(true, out); break;
    case IVariant::TypeInt: factory->CreateInt(IntSample, out); break;
    case IVariant::TypeFloat: factory->CreateFloat(FloatSample, out); break;
    case IVariant::TypeDouble: factory->CreateDouble(DoubleSample, out); break;
    case IVariant::TypeString:
        factory->CreateStringFromIString(MakeRef<host::HostString>(TextSample).Get(), out);
        break;
    default: factory->CreateObject(MakeRef<ProbeObject>().Get(), out); break;
    }
    return made;
}

Ref<IVariant> GetSample(Trial& trial, std::int32_t type)
{
    auto sample = ReadSample(trial, type);
    if (!sample)
        sample = MakeSample(trial, type);
    trial.Expect(static_cast<bool>(sample), "the variant factory to give a variant", "none");
    return sample;
}

std::vector<std::string> WriteVariant(Trial& trial, const Ref<IVariant>& variant)
{
    auto writer = MakeRef<RecordingWriter>();
    trial.QueryAs<ISerializable>(variant, "a variant")->Serialize(writer.Get());
    if (!writer->calls.empty())
        return writer->calls;
    static_cast<void>(writer.Detach());  // it was taken for something else and cannot be trusted any more
    trial.Skip("Serialize of a variant does not call the writer");
}

}  // namespace tvx::check
