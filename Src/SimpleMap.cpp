// SPDX-License-Identifier: MIT
#include "Src/SimpleMap.h"

#include "Helpers/HandOut.h"
#include "Helpers/NumberText.h"
#include "Helpers/Results.h"
#include "Src/SimpleMapFactory.h"
#include "Src/SimpleMapIterator.h"
#include "Src/SimpleMapIteratorNoSubMaps.h"
#include "Src/String.h"
#include "Src/Variant.h"

namespace tvx
{

namespace
{

constexpr char Separator = '\\';
constexpr const char ChangedEvent[] = "Changed";
constexpr const char BatchUpdatingModeChangedEvent[] = "BatchUpdatingModeChanged";
constexpr const char ObjectName[] = "Object";
constexpr const char SerializerImport[] = "Serializer";

}  // namespace

Result SimpleMap::SetDouble(const char* key, double value)
{
    return SetString(key, NumberText(value).Get());
}

Result SimpleMap::SetInt(const char* key, std::int32_t value)
{
    return SetString(key, NumberText(value).Get());
}

Result SimpleMap::SetString(const char* key, const char* value)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(key);
    if (value == nullptr)
        return TVX_E_POINTER;
    entries_.Set(key, value);
    if (batchUpdating_)
        changePending_ = true;
    else
        FireChanged(nullptr);
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Result SimpleMap::GetDouble(const char* key, double* out)
{
    TVX_RETURN_EPOINTER_IF_NULL(key);
    TVX_RETURN_EPOINTER_IF_NULL(out);
    const auto* const entry = entries_.Find(key);
    if (entry == nullptr)
        return TVX_S_NOKEY;
    *out = ReadDouble(entry->GetValueText());
    return TVX_OK;
}

Result SimpleMap::GetInt(const char* key, std::int32_t* out)
{
    TVX_RETURN_EPOINTER_IF_NULL(key);
    TVX_RETURN_EPOINTER_IF_NULL(out);
    const auto* const entry = entries_.Find(key);
    if (entry == nullptr)
        return TVX_S_NOKEY;
    *out = ReadInt(entry->GetValueText());
    return TVX_OK;
}

Result SimpleMap::GetString(const char* key, IString** out)
{
    TVX_RETURN_EPOINTER_IF_NULL(key);
    TVX_RETURN_EPOINTER_IF_NULL(out);
    const auto* const entry = entries_.Find(key);
    if (entry == nullptr)
        return TVX_S_NOKEY;
    const auto made = HandOutNew<String>(out, entry->GetValue());
    return TVX_FAILED(made) ? made : TVX_S_VALUE;
}

Result SimpleMap::GetIterator(ISimpleMapIterator** out)
{
    return HandOutNew<CSimpleMapIterator>(out, entries_);
}

Result SimpleMap::GetSubMap(const char* path, ISimpleMap** out)
try
{
    TVX_RETURN_FAIL_IF_NULL(path);
    TVX_RETURN_FAIL_IF_NULL(out);
    const auto map = MakeRef<SimpleMap>();
    Ref<ISimpleMapIterator> iterator;
    const auto found = GetIterator(iterator.Receive());
    if (TVX_FAILED(found) || !iterator)
        return TVX_FAILED(found) ? found : TVX_E_FAIL;
    const auto copied = CopyBelow(std::string(path) + Separator, *iterator, *map);
    if (TVX_FAILED(copied))
        return copied;
    HandOut<ISimpleMap>(map.Get(), out);
    return map->entries_.GetCount() == 0 ? TVX_S_NOKEY : TVX_S_VALUE;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Result SimpleMap::SetSubMap(const char* path, ISimpleMap* source)
try
{
    TVX_RETURN_FAIL_IF_NULL(path);
    TVX_RETURN_FAIL_IF_NULL(source);
    Ref<ISimpleMapIterator> iterator;
    TVX_RETURN_FAIL_IF_FAILED(source->GetIterator(iterator.Receive()));
    TVX_RETURN_FAIL_IF_NULL(iterator.Get());
    const auto prefix = *path == '\0' ? std::string() : std::string(path) + Separator;
    if (source != this)
        return WriteBelow(prefix, *iterator);
    const auto copy = MakeRef<SimpleMap>();  // a map written into itself would never come to its end
    const auto copied = CopyBelow(std::string(), *iterator, *copy);
    return TVX_FAILED(copied) ? copied : SetSubMap(path, copy.Get());
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Result SimpleMap::GetObject(const char* key, IObject** out)
{
    Ref<IString> text;
    const auto found = GetString(key, text.Receive());
    TVX_FORWARD_FAILURE(found);
    if (found == TVX_S_NOKEY)
        return found;
    const auto factory = CSimpleMapFactory::GetImport<ISerializerFactory>(SerializerImport);
    TVX_RETURN_FAIL_IF_NULL(factory.Get());
    Ref<IDeserializer> reader;
    TVX_FORWARD_FAILURE(factory->CreateDeserializer(reader.Receive()));
    const auto document = Query<IStringDeserializer>(reader.Get());
    TVX_RETURN_FAIL_IF_NULL(document.Get());
    document->SetText(text.Get());
    document->Begin();
    Ref<IObjectBase> read;
    TVX_FORWARD_FAILURE(reader->ReadNamedObject(ObjectName, read.Receive()));
    document->End();
    const auto object = Query<IObject>(read);
    TVX_RETURN_FAIL_IF(!object);
    if (out == nullptr)
        return TVX_E_POINTER;
    HandOut(object.Get(), out);
    return TVX_OK;
}

Result SimpleMap::SetObject(const char* key, IObject* object)
{
    const auto serializable = Query<ISerializable>(object);
    TVX_RETURN_FAIL_IF_NULL(serializable.Get());
    const auto factory = CSimpleMapFactory::GetImport<ISerializerFactory>(SerializerImport);
    TVX_RETURN_FAIL_IF_NULL(factory.Get());
    Ref<ISerializer> writer;
    TVX_FORWARD_FAILURE(factory->CreateSerializer(writer.Receive()));
    const auto document = Query<IStringSerializer>(writer.Get());
    TVX_RETURN_FAIL_IF_NULL(document.Get());
    document->Begin();
    TVX_FORWARD_FAILURE(writer->WriteNamedObject(ObjectName, serializable.Get()));
    TVX_FORWARD_FAILURE(document->End());
    Ref<IString> text;
    TVX_FORWARD_FAILURE(document->GetText(text.Receive()));
    TVX_RETURN_FAIL_IF_NULL(text.Get());
    TVX_FORWARD_FAILURE(SetString(key, text->GetText()));
    return TVX_OK;
}

Result SimpleMap::HasKey(const char* key, bool* out)
{
    TVX_CHECK_PRECOND(out != nullptr);
    if (key == nullptr)
        return TVX_E_POINTER;
    *out = entries_.Find(key) != nullptr;
    return TVX_OK;
}

Result SimpleMap::Clone(ISimpleMap** out)
try
{
    TVX_CHECK_PRECOND(out != nullptr);
    auto copy = MakeRef<SimpleMap>(entries_);
    copy->batchUpdating_ = batchUpdating_;
    copy->changePending_ = changePending_;
    *out = copy.Detach();
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Result SimpleMap::GetIteratorNoSubMaps(ISimpleMapIterator** out)
{
    return HandOutNew<CSimpleMapIteratorNoSubMaps>(out, entries_);
}

void SimpleMap::SubscribeChanged(IEventHandler* handler, std::uint64_t cookie, bool connect)
{
    Connect(ISimpleMap5::Id, ChangedEvent, handler, cookie, connect);
}

Result SimpleMap::SetBatchUpdatingMode(bool mode)
try
{
    if (mode == batchUpdating_)
        return TVX_OK;
    auto argument = MakeRef<BoolVariant>(mode);
    batchUpdating_ = mode;
    FireBatchUpdatingModeChanged(argument.Get());
    argument = nullptr;
    FirePendingChange();
    return TVX_OK;
}
catch (...)  // want of memory, before anything changed
{
    return TVX_E_POINTER;
}

Result SimpleMap::GetBatchUpdatingMode(bool* out)
{
    TVX_CHECK_PRECOND(out != nullptr);
    *out = batchUpdating_;
    return TVX_OK;
}

void SimpleMap::SubscribeBatchUpdatingModeChanged(IEventHandler* handler, std::uint64_t cookie, bool connect)
{
    Connect(ISimpleMap5::Id, BatchUpdatingModeChangedEvent, handler, cookie, connect);
}

void SimpleMap::FireChanged(IObjectBase* argument)
{
    Fire(ISimpleMap5::Id, ChangedEvent, GetSender(), ToParameter(argument));
}

void SimpleMap::FireBatchUpdatingModeChanged(IVariant* argument)
{
    Fire(ISimpleMap5::Id, BatchUpdatingModeChangedEvent, GetSender(), ToParameter(argument));
}

Result SimpleMap::GetFormatId(IString** out)
{
    const auto factory = CSimpleMapFactory::GetOrMake();
    return factory ? factory->GetFormatId(out) : TVX_E_POINTER;
}

Result SimpleMap::Serialize(ISerializer* writer)
{
    TVX_RETURN_EPOINTER_IF_NULL(writer);
    writer->BeginArray(CSimpleMapFactory::ValuesName);
    for (EntryPlace place(entries_); place.Get() != nullptr; place.MoveOn())
    {
        writer->WriteString(place.Get()->GetKeyText());
        writer->WriteString(place.Get()->GetValueText());
    }
    writer->EndArray();
    return TVX_OK;
}

// An iterator of this map's own goes straight to the first key below the prefix and ends with the last one. The iterator of
// a derived class may be of any kind and order, and is walked to its end.
Result SimpleMap::CopyBelow(const std::string& prefix, ISimpleMapIterator& iterator, SimpleMap& target)
{
    auto* const ordered = dynamic_cast<CSimpleMapIterator*>(&iterator);
    if (ordered != nullptr)
    {
        target.AddBelow(prefix, ordered->GetPlace());
        return TVX_OK;
    }
    for (const char* key = iterator.GetKey(); key != nullptr; iterator.Next(), key = iterator.GetKey())
    {
        const bool below = std::string_view(key).starts_with(prefix);
        const auto written = below ? target.SetString(key + prefix.size(), iterator.GetValue()) : TVX_OK;
        if (TVX_FAILED(written))
            return written;
    }
    return TVX_OK;
}

// Into a new map, as SetString would write it there; nobody can have overridden it or listen.
void SimpleMap::AddBelow(const std::string& prefix, EntryPlace place)
{
    place.Seek(prefix);
    entries_.AddBelow(prefix, place);
    changePending_ = entries_.GetCount() > 0;
}

// The mode is restored whatever happens in between, without its own event when there is no memory for that.
Result SimpleMap::WriteBelow(const std::string& prefix, ISimpleMapIterator& source)
{
    const bool modeBefore = batchUpdating_;
    const auto entered = SetBatchUpdatingMode(true);
    if (TVX_FAILED(entered))
        return entered;
    const auto written = WriteEntries(prefix, source);
    const auto left = SetBatchUpdatingMode(modeBefore);
    if (TVX_FAILED(left))
        RestoreBatchUpdatingMode(modeBefore);
    return TVX_FAILED(written) ? written : left;
}

Result SimpleMap::WriteEntries(const std::string& prefix, ISimpleMapIterator& source)
try
{
    for (const char* key = source.GetKey(); key != nullptr; source.Next(), key = source.GetKey())
    {
        const auto written = SetString((prefix + key).c_str(), source.GetValue());
        if (TVX_FAILED(written))
            return written;
    }
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

// What was written while the mode was on is told, once it is off.
void SimpleMap::FirePendingChange()
{
    if (batchUpdating_ || !changePending_)
        return;
    changePending_ = false;
    FireChanged(nullptr);
}

// The switch that is left to make when its event cannot be made.
void SimpleMap::RestoreBatchUpdatingMode(bool mode)
{
    batchUpdating_ = mode;
    FirePendingChange();
}

// Events carry the primary face of the map.
IObject* SimpleMap::GetSender() noexcept
{
    return static_cast<ISimpleMap5*>(this);
}

}  // namespace tvx
