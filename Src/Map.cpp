// SPDX-License-Identifier: MIT
#include "Src/Map.h"

namespace tvx
{

namespace
{

// One entry: a key and an object.
Result ReadEntry(IDeserializer& reader, IMap& map)
{
    Ref<IString> key;
    TVX_RETURN_FAIL_IF_FAILED(reader.ReadString(key.Receive()));
    Ref<IObjectBase> item;
    TVX_RETURN_FAIL_IF_FAILED(reader.ReadObject(item.Receive()));
    const auto value = Query<IObject>(item);
    TVX_RETURN_FAIL_IF_NULL(value.Get());
    TVX_RETURN_FAIL_IF_NULL(key.Get());
    return map.SetValue(key->GetText(), value.Get());
}

}  // namespace

Result MapFactory::CreateMap(IMap** out)
{
    return HandOutNew<Map>(out);
}

Result MapFactory::GetFormatId(IString** out)
{
    return HandOutNew<String>(out, Map::FormatId);
}

Result MapFactory::Deserialize(IDeserializer* reader, IObjectBase** out)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(reader);
    TVX_RETURN_EPOINTER_IF_NULL(out);
    const auto map = MakeRef<Map>();
    std::uint32_t count = 0;
    TVX_RETURN_FAIL_IF_FAILED(reader->BeginArray(Map::ValuesName, &count));
    for (std::uint32_t entry = 0; entry < count / 2; ++entry)
    {
        const auto read = ReadEntry(*reader, *map);
        if (TVX_FAILED(read))
            return read;
    }
    reader->EndArray();
    HandOut(static_cast<IMap*>(map.Get()), out);
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

}  // namespace tvx
