// SPDX-License-Identifier: MIT
#pragma once

#include "Src/Map.h"

namespace tvx::bad
{

constexpr const char MapId[] = "com.talvere.general.tvx.GenericMapImplementation/1.1";

// A dictionary that does what the real one does, but for what a class derived from it does otherwise.
class ForwardingMap : public ClassImpl<ForwardingMap, IMap, ISerializable>
{
public:
    using Interfaces = InterfaceList<IMap, IObject, IObjectBase, ISerializable>;

    virtual ~ForwardingMap() = default;

    Result SetValue(const char* key, IObject* value) override { return map_->SetValue(key, value); }
    Result GetValue(const char* key, IObject** out) override { return map_->GetValue(key, out); }
    Result LookupValue(const char* key, IObject** out) override { return map_->LookupValue(key, out); }
    Result GetFormatId(IString** out) override { return map_->GetFormatId(out); }
    Result Serialize(ISerializer* writer) override { return map_->Serialize(writer); }

private:
    Ref<Map> map_ = MakeRef<Map>();
};

// Such a dictionary that is wrong only in what it does when a null key is written.
class NullKeyMap : public ForwardingMap
{
public:
    Result SetValue(const char* key, IObject* value) final
    {
        return key == nullptr ? SetNullKey(value) : ForwardingMap::SetValue(key, value);
    }

protected:
    virtual Result SetNullKey(IObject* value) = 0;
};

// The dictionary export, with maps of the class Made. What is read back is real ones.
template <class Made>
class MapsOf final : public ClassImpl<MapsOf<Made>, IMapFactory, IDeserializable>,
                     public Singleton<MapsOf<Made>, IMapFactory>
{
public:
    using Interfaces = InterfaceList<IMapFactory, IObject, IObjectBase, IDeserializable>;

    Result CreateMap(IMap** out) override { return HandOutNew<Made>(out); }
    Result GetFormatId(IString** out) override { return MapFactory::GetOrMake()->GetFormatId(out); }
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override
    {
        return MapFactory::GetOrMake()->Deserialize(reader, out);
    }
};

}  // namespace tvx::bad
