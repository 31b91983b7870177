// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Lines.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/SerializerDoubles.h"

#include <string>
#include <utility>
#include <vector>

// What the checks of writing and reading share, whichever class of objects is written or read.
namespace tvx::check
{

// Keeps what is written so that it can be read back. An object is given back as it was written, by its address.
class CopyingWriter final : public RecordingWriterImpl<CountedImpl<CopyingWriter, ISerializer>>
{
public:
    using Interfaces = InterfaceList<ISerializer, IObjectBase>;

    Result WriteNamedBool(const char* name, bool value) override { return Keep(name, value); }
    Result WriteNamedInt(const char* name, std::int32_t value) override { return Keep(name, value); }
    Result WriteNamedDouble(const char* name, double value) override { return Keep(name, value); }
    Result WriteNamedString(const char* name, const char* text) override { return Keep(name, ToText(text)); }
    Result WriteNamedObject(const char* name, IObjectBase* object) override
    {
        return Keep(name, Ref<IObjectBase>(object));
    }
    Result WriteString(const char* text) override
    {
        reader->items.emplace_back(ToText(text));
        return TVX_OK;
    }
    Result WriteObject(IObjectBase* object) override
    {
        reader->items.emplace_back(Ref<IObjectBase>(object));
        return TVX_OK;
    }

    const Ref<ScriptedReader> reader = MakeRef<ScriptedReader>();

private:
    Result Keep(const char* name, ScriptedReader::Value value)
    {
        reader->named[ToText(name)] = std::move(value);
        return TVX_OK;
    }
    static std::string ToText(const char* text) { return text == nullptr ? "(null)" : text; }
};

// Remembers the texts that it gave out, and counts the references on them that are left.
class WatchedReader final : public ScriptedReaderImpl<CountedImpl<WatchedReader, IDeserializer>, host::HostString>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    Result ReadString(IString** out) override { return Remember(ScriptedReaderImpl::ReadString(out), out); }
    Result ReadNamedString(const char* name, IString** out) override
    {
        return Remember(ScriptedReaderImpl::ReadNamedString(name, out), out);
    }

    std::uint32_t CountReferencesLeft() const
    {
        std::uint32_t count = 0;
        for (const auto& text : texts)
            count += text->GetRefCount() - 1;
        return count;
    }

    std::vector<Ref<IString>> texts;

private:
    Result Remember(Result result, IString** out)
    {
        if (!TVX_FAILED(result))
            texts.emplace_back(*out);
        return result;
    }
};

// Announces any number of items or elements and has none. It counts the reads instead of recording them: a module might
// not stop.
class EmptyPromiseReader final
    : public ScriptedReaderImpl<CountedImpl<EmptyPromiseReader, IDeserializer>, host::HostString>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    explicit EmptyPromiseReader(std::uint32_t count) : count_(count) {}

    Result BeginArray(const char*, std::uint32_t* count) override
    {
        *count = count_;
        return TVX_OK;
    }
    Result ReadNamedInt(const char*, std::int32_t* out) override
    {
        *out = static_cast<std::int32_t>(count_);
        return TVX_OK;
    }
    Result ReadString(IString**) override { return Refuse(); }
    Result ReadObject(IObjectBase**) override { return Refuse(); }
    Result ReadNamedObject(const char*, IObjectBase**) override { return Refuse(); }

    std::uint64_t reads = 0;

private:
    Result Refuse()
    {
        ++reads;
        return TVX_E_FAIL;
    }

    std::uint32_t count_;
};

// What the object writes, call by call; it has to give the result.
void ExpectWritten(Trial& trial, const std::string& what, const Ref<IObject>& object, const Lines& expected,
                   Result result = TVX_OK);

// The same with a writer that answers -42 to everything.
void ExpectWrittenByAFailingWriter(Trial& trial, const std::string& what, const Ref<IObject>& object,
                                   const Lines& expected);

// Serialize of a null writer is reported and gives -4.
void ExpectNullWriterReported(Trial& trial, const Ref<IObject>& object);

// The object's and the factory's format id are the text; a null out gives -4 without a report.
void ExpectFormat(Trial& trial, const char* exportId, const Ref<IObject>& object, const char* format);

// What the factory of an export reads; it has to succeed and to give an object.
Ref<IObjectBase> Read(Trial& trial, const char* exportId, IDeserializer& reader);

template <class Interface>
Ref<Interface> ReadAs(Trial& trial, const char* exportId, IDeserializer& reader)
{
    return trial.QueryAs<Interface>(Read(trial, exportId, reader), "what Deserialize gave");
}

// What is read of what the object writes.
template <class Interface>
Ref<Interface> Copy(Trial& trial, const char* exportId, const Ref<Interface>& object)
{
    const auto writer = MakeRef<CopyingWriter>();
    const auto face = trial.QueryAs<ISerializable>(object, "the object to write");
    trial.Gives("Serialize", face->Serialize(writer.Get()), TVX_OK);
    return ReadAs<Interface>(trial, exportId, *writer->reader);
}

// Reading fails with -1 and a report of the macro, and leaves the out untouched and the reader without a reference.
void ExpectRefused(Trial& trial, const char* exportId, IDeserializer& reader, const char* macro);

// Reading with a null reader, and with a null out, is reported and gives -4.
void ExpectNullPointersReported(Trial& trial, const char* exportId);

// Announced items that do not come end the reading at once, however many they are, and no memory is taken for them beyond
// all measure.
void ExpectHostileCountsRefused(Trial& trial, const char* exportId);

}  // namespace tvx::check
