// SPDX-License-Identifier: MIT
#include "Src/CollectionFactory.h"

#include "Helpers/HandOut.h"
#include "Src/Collection.h"
#include "Src/String.h"

namespace tvx
{

namespace
{

Result ReadItem(IDeserializer& reader, ICollection& collection)
{
    Ref<IObjectBase> read;
    TVX_RETURN_FAIL_IF_FAILED(reader.ReadObject(read.Receive()));
    const auto item = Query<IObject>(read);
    TVX_RETURN_FAIL_IF_NULL(item.Get());
    static_cast<void>(collection.Add(item.Get()));
    return TVX_OK;
}

}  // namespace

CollectionFactory::~CollectionFactory()
{
    TVXPluginImpl::SetMetadataMap(nullptr);
}

Result CollectionFactory::CreateCollection(ICollection** out)
{
    return HandOutNew<Collection>(out);
}

Result CollectionFactory::GetFormatId(IString** out)
{
    return HandOutNew<String>(out, Collection::FormatId);
}

Result CollectionFactory::Deserialize(IDeserializer* reader, IObjectBase** out)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(reader);
    TVX_RETURN_EPOINTER_IF_NULL(out);
    const auto collection = MakeRef<Collection>();
    std::uint32_t count = 0;
    TVX_RETURN_FAIL_IF_FAILED(reader->BeginArray(Collection::ValuesName, &count));
    for (std::uint32_t index = 0; index < count; ++index)
    {
        const auto read = ReadItem(*reader, *collection);
        if (TVX_FAILED(read))
            return read;
    }
    reader->EndArray();
    HandOut(static_cast<ICollection2*>(collection.Get()), out);
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

}  // namespace tvx
