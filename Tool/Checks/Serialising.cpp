// SPDX-License-Identifier: MIT
#include "Tool/Checks/Serialising.h"

#include "Platform/LimitedMemory.h"

#include <chrono>

namespace tvx::check
{

namespace
{

void ExpectWritten(Trial& trial, const std::string& what, const Ref<IObject>& object, RecordingWriter& writer,
                   const Lines& expected, Result result)
{
    const auto face = trial.QueryAs<ISerializable>(object, what);
    trial.Gives("Serialize of " + what, face->Serialize(&writer), result);
    trial.Equal("the calls that write " + what, writer.calls, expected);
    trial.Equal("the writer's reference count afterwards", writer.GetRefCount(), 1u);
}

Ref<IDeserializable> GetFactory(Trial& trial, const char* exportId)
{
    return trial.Get<IDeserializable>(exportId);
}

// Of an object or a factory.
template <class Face>
void ExpectFormatOf(Trial& trial, const std::string& what, Face& face, const char* format)
{
    const auto text =
        Make<IString>(trial, "GetFormatId of " + what, [&](IString** out) { return face.GetFormatId(out); });
    trial.Equal("the format id of " + what, text->GetText(), format);
    trial.Equal("the reference count of the format id of " + what, text->GetRefCount(), 1u);
    trial.Gives("GetFormatId of " + what + " with a null out", face.GetFormatId(nullptr), TVX_E_POINTER);
}

// The call reads with the factory and fills the out.
template <class Deserialize>
void ExpectRefusal(Trial& trial, const char* exportId, IDeserializer& reader, const char* macro,
                   Deserialize&& deserialize)
{
    const auto factory = GetFactory(trial, exportId);
    const auto mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    trial.Reports("Deserialize", macro, TVX_E_FAIL, [&] { return deserialize(*factory, &out); });
    trial.Same("the out of a failed Deserialize", out, mark.Get());
    trial.Equal("the reader's reference count afterwards", reader.GetRefCount(), 1u);
}

}  // namespace

void ExpectWritten(Trial& trial, const std::string& what, const Ref<IObject>& object, const Lines& expected,
                   Result result)
{
    ExpectWritten(trial, what, object, *MakeRef<RecordingWriter>(), expected, result);
}

void ExpectWrittenByAFailingWriter(Trial& trial, const std::string& what, const Ref<IObject>& object,
                                   const Lines& expected)
{
    ExpectWritten(trial, what, object, *MakeRef<RecordingWriter>(-42), expected, TVX_OK);
}

void ExpectNullWriterReported(Trial& trial, const Ref<IObject>& object)
{
    const auto face = trial.QueryAs<ISerializable>(object, "the object to write");
    trial.Reports("Serialize with a null writer", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                  [&] { return face->Serialize(nullptr); });
}

void ExpectFormat(Trial& trial, const char* exportId, const Ref<IObject>& object, const char* format)
{
    ExpectFormatOf(trial, "the factory", *GetFactory(trial, exportId), format);
    ExpectFormatOf(trial, "the object", *trial.QueryAs<ISerializable>(object, "the object"), format);
}

Ref<IObjectBase> Read(Trial& trial, const char* exportId, IDeserializer& reader)
{
    const auto factory = GetFactory(trial, exportId);
    return Make<IObjectBase>(trial, "Deserialize",
                             [&](IObjectBase** out) { return factory->Deserialize(&reader, out); });
}

void ExpectRefused(Trial& trial, const char* exportId, IDeserializer& reader, const char* macro)
{
    ExpectRefusal(trial, exportId, reader, macro,
                  [&](IDeserializable& factory, IObjectBase** out) { return factory.Deserialize(&reader, out); });
}

void ExpectNullPointersReported(Trial& trial, const char* exportId)
{
    const auto factory = GetFactory(trial, exportId);
    const auto mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    trial.Reports("Deserialize with a null reader", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                  [&] { return factory->Deserialize(nullptr, &out); });
    trial.Same("the out of a failed Deserialize", out, mark.Get());
    const auto reader = MakeRef<ScriptedReader>();
    trial.Reports("Deserialize with a null out", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                  [&] { return factory->Deserialize(reader.Get(), nullptr); });
    trial.Equal("the calls on the reader", reader->calls, Lines());
}

// The memory is limited while the module works, and only then: what the check says of it needs memory, too.
void ExpectHostileCountsRefused(Trial& trial, const char* exportId)
{
    constexpr std::size_t enoughMemory = 64 << 20;
    constexpr std::chrono::seconds limit(5);
    for (const auto count : {0x7FFFFFFFu, 0xFFFFFFFFu})
    {
        const auto reader = MakeRef<EmptyPromiseReader>(count);
        const auto deserialize = [&](IDeserializable& factory, IObjectBase** out)
        {
            const Platform::LimitedMemory memory(enoughMemory);
            return factory.Deserialize(reader.Get(), out);
        };
        const auto start = std::chrono::steady_clock::now();
        ExpectRefusal(trial, exportId, *reader, "TVX_RETURN_FAIL_IF_FAILED", deserialize);
        trial.Equal("the number of reads", reader->reads, 1u);
        trial.Expect(std::chrono::steady_clock::now() - start < limit, "the failure to come at once", "a long wait");
    }
}

}  // namespace tvx::check
