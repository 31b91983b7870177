// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Serialising.h"

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericVariantArrayImplementationFormat/1.0";

// The integers from 0 on.
Ref<IVariantArray> MakeIntegers(Trial& trial, std::int32_t count)
{
    auto array = MakeVariantArray(trial);
    for (std::int32_t value = 0; value < count; ++value)
        trial.Gives("AppendInt", array->AppendInt(value), TVX_OK);
    return array;
}

// The calls that write so many elements.
Lines Record(int count)
{
    Lines calls{"WriteNamedInt size " + std::to_string(count)};
    for (int index = 0; index < count; ++index)
        calls.push_back("WriteNamedObject param" + std::to_string(index));
    return calls;
}

void WritesSizeAndElements(Trial& trial)
{
    ExpectWritten(trial, "an array of three", MakeIntegers(trial, 3), Record(3));
}

void WritesDecimalNames(Trial& trial)
{
    const auto lines = Record(12);
    trial.Equal("the name of the eleventh element", lines[11], "WriteNamedObject param10");
    ExpectWritten(trial, "an array of twelve", MakeIntegers(trial, 12), lines);
}

void WritesOnlyTheSizeOfNothing(Trial& trial)
{
    ExpectWritten(trial, "an empty array", MakeVariantArray(trial), Record(0));
}

void HandsOutTheSerialisableFaces(Trial& trial)
{
    const auto variant = MakeInt(trial, 7);
    const auto array = MakeVariantArray(trial);
    trial.Gives("AppendVariant", array->AppendVariant(variant.Get()), TVX_OK);
    const auto writer = MakeRef<RecordingWriter>();
    trial.Gives("Serialize", trial.QueryAs<ISerializable>(array, "an array")->Serialize(writer.Get()), TVX_OK);
    trial.Equal("the number of objects written", writer->objects.size(), std::size_t{1});
    trial.Same("the object written", writer->objects[0].Get(),
               static_cast<IObjectBase*>(trial.QueryAs<ISerializable>(variant, "a variant").Get()));
    writer->objects.clear();
    trial.Equal("the variant's reference count afterwards", variant->GetRefCount(), 2u);
}

void StopsAtANullElement(Trial& trial)
{
    const auto array = MakeIntegers(trial, 1);
    trial.Gives("AppendVariant of null", array->AppendVariant(nullptr), TVX_OK);
    trial.Gives("AppendInt", array->AppendInt(2), TVX_OK);
    ExpectWritten(trial, "an array with a null element", array, {"WriteNamedInt size 3", "WriteNamedObject param0"},
                  TVX_E_FAIL);
}

void IgnoresAFailingWriter(Trial& trial)
{
    ExpectWrittenByAFailingWriter(trial, "an array of two", MakeIntegers(trial, 2), Record(2));
}

void NamesItsFormat(Trial& trial)
{
    ExpectFormat(trial, VariantArrayExport, MakeVariantArray(trial), Format);
}

constexpr Check Checks[] = {
    {"serialise-variant-array-writes-size-and-elements", "An array of three variants is written.",
     "An array writes the integer \"size\", then each element as an object named \"param\" and its index.",
     WritesSizeAndElements},
    {"serialise-variant-array-writes-decimal-names", "An array of twelve variants is written.",
     "The index in a name is decimal without padding: the eleventh element is \"param10\".", WritesDecimalNames},
    {"serialise-variant-array-writes-size-of-nothing", "An empty array is written.",
     "An empty array writes \"size\" 0 and nothing else.", WritesOnlyTheSizeOfNothing},
    {"serialise-variant-array-hands-out-serialisable-face", "The writer looks at the object that it is to write.",
     "It is given the ISerializable face of the variant, and no reference stays behind.", HandsOutTheSerialisableFaces},
    {"serialise-variant-array-stops-at-null-element", "An array with a null element in its middle is written.",
     "Writing stops at the element with -1 and without a report; what stands before it has been written.",
     StopsAtANullElement},
    {"serialise-variant-array-ignores-failing-writer", "An array is given a writer that fails with every call.",
     "What the writer answers is not looked at: everything is written, and Serialize gives 0.", IgnoresAFailingWriter},
    {"serialise-variant-array-names-its-format", "An array and its factory are asked for the format id.",
     "Both give com.talvere.general.tvx.GenericVariantArrayImplementationFormat/1.0; a null out gives -4 without a "
     "report.",
     NamesItsFormat},
};

}  // namespace

extern const Family SerialisingVariantArrayFamily = {"serialising", VariantArrayExport, Needs::Module, Checks};

}  // namespace tvx::check
