// SPDX-License-Identifier: MIT
#include "Src/SimpleMapFactory.h"

#include "Helpers/HandOut.h"
#include "Src/SimpleMap.h"
#include "Src/String.h"

namespace tvx
{

namespace
{

// One entry: a key and a value, both texts.
Result ReadEntry(IDeserializer& reader, ISimpleMap& map)
{
    Ref<IString> key;
    TVX_RETURN_FAIL_IF_FAILED(reader.ReadString(key.Receive()));
    Ref<IString> value;
    TVX_RETURN_FAIL_IF_FAILED(reader.ReadString(value.Receive()));
    TVX_RETURN_FAIL_IF_NULL(key.Get());
    TVX_RETURN_FAIL_IF_NULL(value.Get());
    return map.SetString(key->GetText(), value->GetText());
}

}  // namespace

CSimpleMapFactory::~CSimpleMapFactory()
{
    ImportsContainerImpl::ClearImports();
}

Result CSimpleMapFactory::Create(IObjectBase** out)
{
    return HandOutNew<SimpleMap>(out);
}

Result CSimpleMapFactory::GetFormatId(IString** out)
{
    return HandOutNew<String>(out, "com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1");
}

Result CSimpleMapFactory::Deserialize(IDeserializer* reader, IObjectBase** out)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(reader);
    TVX_RETURN_EPOINTER_IF_NULL(out);
    const auto map = MakeRef<SimpleMap>();
    std::uint32_t count = 0;
    TVX_RETURN_FAIL_IF_FAILED(reader->BeginArray(ValuesName, &count));
    for (std::uint32_t entry = 0; entry < count / 2; ++entry)
    {
        const auto read = ReadEntry(*reader, *map);
        if (TVX_FAILED(read))
            return read;
    }
    reader->EndArray();
    HandOut<IObjectBase>(static_cast<ISimpleMap5*>(map.Get()), out);
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

}  // namespace tvx
