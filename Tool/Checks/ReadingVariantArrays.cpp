// SPDX-License-Identifier: MIT
#include "Platform/LimitedMemory.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Serialising.h"
#include "Tool/Checks/VariantArrayBench.h"

#include <array>
#include <limits>

namespace tvx::check
{

namespace
{

// A record of so many elements, of which none is there yet.
Ref<ScriptedReader> MakeReader(std::int32_t size)
{
    auto reader = MakeRef<ScriptedReader>();
    reader->named["size"] = size;
    return reader;
}

std::uint32_t GetSize(Trial& trial, IVariantArray& array)
{
    std::uint32_t size = 0xFFFFFFFF;
    trial.Gives("GetSize", array.GetSize(&size), TVX_OK);
    return size;
}

Ref<IVariant> GetAt(Trial& trial, IVariantArray& array, std::uint32_t index)
{
    Ref<IVariant> element;
    trial.Gives("GetAt", array.GetAt(index, element.Receive()), TVX_OK);
    return element;
}

void ExpectSize(Trial& trial, const Ref<ScriptedReader>& reader, std::uint32_t expected)
{
    const auto array = ReadAs<IVariantArray>(trial, VariantArrayExport, *reader);
    trial.Equal("the number of elements read", GetSize(trial, *array), expected);
}

void ReadsWhatWasWritten(Trial& trial)
{
    constexpr std::uint32_t count = 12;
    const auto array = MakeVariantArray(trial);
    for (std::uint32_t index = 0; index < count; ++index)
        trial.Gives("AppendInt", array->AppendInt(static_cast<std::int32_t>(index)), TVX_OK);
    const auto copy = Copy(trial, VariantArrayExport, array);
    trial.Equal("the number of elements of the copy", GetSize(trial, *copy), count);
    trial.Equal("the reference count of the copy", copy->GetRefCount(), 1u);
    for (std::uint32_t index = 0; index < count; ++index)
        trial.Same("an element of the copy", GetAt(trial, *copy, index).Get(), GetAt(trial, *array, index).Get());
}

void GivesNullForWhatIsMissing(Trial& trial)
{
    const auto variant = MakeInt(trial, 7);
    const auto reader = MakeReader(3);
    reader->named["param0"] = Ref<IObjectBase>(MakeRef<ProbeObject>());
    reader->named["param2"] = Ref<IObjectBase>(variant);
    const auto array = ReadAs<IVariantArray>(trial, VariantArrayExport, *reader);
    trial.Equal("the number of elements read", GetSize(trial, *array), 3u);
    trial.Same("the element that is no variant", GetAt(trial, *array, 0).Get(), nullptr);
    trial.Same("the element that is missing", GetAt(trial, *array, 1).Get(), nullptr);
    trial.Same("the element that is there", GetAt(trial, *array, 2).Get(), variant.Get());
    trial.Equal(
        "the calls that read", reader->calls,
        (Lines{"ReadNamedInt size", "ReadNamedObject param0", "ReadNamedObject param1", "ReadNamedObject param2"}));
}

void ReadsNothingOfANegativeSize(Trial& trial)
{
    for (const auto size : {-1, std::numeric_limits<std::int32_t>::min(), 0})
        ExpectSize(trial, MakeReader(size), 0);
}

void ReadsNothingWithoutASize(Trial& trial)
{
    ExpectSize(trial, MakeRef<ScriptedReader>(), 0);
}

void ReadsAllForANullOut(Trial& trial)
{
    const auto variant = MakeInt(trial, 7);
    const auto reader = MakeReader(2);
    reader->named["param1"] = Ref<IObjectBase>(variant);
    const auto factory = trial.Get<IDeserializable>(VariantArrayExport);
    trial.Gives("Deserialize with a null out", factory->Deserialize(reader.Get(), nullptr), TVX_E_POINTER);
    trial.Equal("the calls that read", reader->calls,
                (Lines{"ReadNamedInt size", "ReadNamedObject param0", "ReadNamedObject param1"}));
    trial.Equal("the references on the element that was read", variant->GetRefCount(), 2u);
}

void ReadsAnyAnnouncedSize(Trial& trial)
{
    constexpr std::uint32_t count = 100000;
    const auto reader = MakeRef<EmptyPromiseReader>(count);
    const auto array = ReadAs<IVariantArray>(trial, VariantArrayExport, *reader);
    trial.Equal("the number of elements read", GetSize(trial, *array), count);
    trial.Equal("the number of reads", reader->reads, count);
}

// Announces more elements than any memory holds. The first one is there, and costs no memory to read.
class EndlessReader final : public ScriptedReaderImpl<CountedImpl<EndlessReader, IDeserializer>, host::HostString>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    explicit EndlessReader(Ref<IVariant> first) : first_(std::move(first)) {}

    Result ReadNamedInt(const char*, std::int32_t* out) override
    {
        reads = 0;
        *out = std::numeric_limits<std::int32_t>::max();
        return TVX_OK;
    }
    Result ReadNamedObject(const char*, IObjectBase** out) override
    {
        if (++reads != 1)
            return TVX_E_FAIL;
        HandOut(first_.Get(), out);
        return TVX_OK;
    }

    std::uint32_t reads = 0;  // of elements, since the size was read

private:
    Ref<IVariant> first_;
};

// What came of one reading.
struct EndlessReading
{
    Result result;
    IObjectBase* out;
    std::uint32_t reads;
};

using EndlessReadings = std::array<EndlessReading, 4>;

// Reads again and again in the same memory, so that what one reading keeps is wanting in the next.
EndlessReadings ReadInLittleMemory(IDeserializable& factory, EndlessReader& reader, IObjectBase* mark)
{
    EndlessReadings readings{};
    const Platform::LimitedMemory memory(8 << 20);
    for (auto& reading : readings)
    {
        reading.out = mark;
        reading.result = factory.Deserialize(&reader, &reading.out);
        reading.reads = reader.reads;
    }
    return readings;
}

void RefusesWhatNoMemoryHolds(Trial& trial)
{
    if (!Platform::LimitedMemory::IsPossible())
        trial.Skip("the memory of this process cannot be limited");
    const auto factory = trial.Get<IDeserializable>(VariantArrayExport);
    const auto variant = MakeArrayElement(trial);
    const auto reader = MakeRef<EndlessReader>(variant);
    const auto mark = MakeRef<BareObject>();
    const auto readings = ReadInLittleMemory(*factory, *reader, mark.Get());
    for (const auto& reading : readings)
    {
        trial.Gives("Deserialize of more elements than memory holds", reading.result, TVX_E_POINTER);
        trial.Same("the out of a failed Deserialize", reading.out, mark.Get());
    }
    // Memory that was given back lies about in pieces: a later array may get less of it, but not next to nothing.
    const auto few = readings.front().reads / readings.size();
    trial.Expect(readings.back().reads >= few,
                 "the last of the readings to get as far as read " + Show(few) + " elements",
                 Show(readings.back().reads));
    trial.Equal("the references on the element that was read", variant->GetRefCount(), 2u);
    trial.Equal("the reader's reference count afterwards", reader->GetRefCount(), 1u);
    ExpectSize(trial, MakeReader(3), 3);
}

constexpr Check Checks[] = {
    {"serialise-variant-array-reads-what-was-written", "An array of twelve variants is written and read back.",
     "What is read has the same elements in the same order.", ReadsWhatWasWritten},
    {"serialise-variant-array-gives-null-for-missing", "An element is missing and another one is no variant.",
     "Reading is lenient: each becomes a null element in its place, and the elements behind them are read.",
     GivesNullForWhatIsMissing},
    {"serialise-variant-array-negative-size-is-empty", "Records with negative sizes and with 0 are read.",
     "Each gives an empty array.", ReadsNothingOfANegativeSize},
    {"serialise-variant-array-missing-size-is-empty", "A record without a size is read.", "It gives an empty array.",
     ReadsNothingWithoutASize},
    {"serialise-variant-array-null-out-after-reading", "A record is read with a null out.",
     "Everything is read, then it gives -4 without a report; the elements are released.", ReadsAllForANullOut},
    {"serialise-variant-array-reads-any-size", "A record announces 100 000 elements and has none.",
     "Reading is lenient for any size: each element that is missing is null.", ReadsAnyAnnouncedSize},
    {"serialise-variant-array-refuses-what-no-memory-holds",
     "A record announces two billion elements, and the process gets 8 MB, several times.",
     "Reading ends with -4 and without a report when the array cannot grow any more. It leaves out untouched, and "
     "gives elements and memory back: the next reading has them again.",
     RefusesWhatNoMemoryHolds},
};

}  // namespace

extern const Family ReadingVariantArrayFamily = {"serialising", VariantArrayExport, Needs::Module, Checks};

}  // namespace tvx::check
