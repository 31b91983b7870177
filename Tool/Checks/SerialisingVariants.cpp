// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Serialising.h"

#include <limits>

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1";

// One of each type.
std::vector<Ref<IVariant>> MakeVariants(Trial& trial)
{
    return {MakeBool(trial, true),   MakeInt(trial, 7),       MakeFloat(trial, 0.5f),
            MakeDouble(trial, 0.25), MakeText(trial, "text"), MakeObject(trial, nullptr)};
}

void WritesBool(Trial& trial)
{
    ExpectWritten(trial, "true", MakeBool(trial, true), {"WriteNamedInt type 1", "WriteNamedBool value true"});
    ExpectWritten(trial, "false", MakeBool(trial, false), {"WriteNamedInt type 1", "WriteNamedBool value false"});
}

void WritesInt(Trial& trial)
{
    for (const auto value : {0, 7, -1, std::numeric_limits<std::int32_t>::min(), 2147483647})
        ExpectWritten(trial, "an integer", MakeInt(trial, value),
                      {"WriteNamedInt type 2", "WriteNamedInt value " + std::to_string(value)});
}

void WritesFloat(Trial& trial)
{
    ExpectWritten(trial, "0.1f", MakeFloat(trial, 0.1f),
                  {"WriteNamedInt type 3", "WriteNamedDouble value 0.10000000149011612"});
    ExpectWritten(trial, "-2.5f", MakeFloat(trial, -2.5f), {"WriteNamedInt type 3", "WriteNamedDouble value -2.5"});
}

void WritesDouble(Trial& trial)
{
    ExpectWritten(trial, "0.1", MakeDouble(trial, 0.1),
                  {"WriteNamedInt type 4", "WriteNamedDouble value 0.10000000000000001"});
    ExpectWritten(trial, "the largest double", MakeDouble(trial, std::numeric_limits<double>::max()),
                  {"WriteNamedInt type 4", "WriteNamedDouble value 1.7976931348623157e+308"});
}

void WritesText(Trial& trial)
{
    ExpectWritten(trial, "a text", MakeText(trial, "W\xC3\xB6rter"),
                  {"WriteNamedInt type 5", "WriteNamedString value W\xC3\xB6rter"});
    ExpectWritten(trial, "an empty text", MakeText(trial, ""), {"WriteNamedInt type 5", "WriteNamedString value "});
}

void WritesObject(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    for (IObject* const held : {static_cast<IObject*>(object.Get()), static_cast<IObject*>(nullptr)})
    {
        const auto face = trial.QueryAs<ISerializable>(MakeObject(trial, held), "an object variant");
        const auto writer = MakeRef<RecordingWriter>();
        trial.Gives("Serialize", face->Serialize(writer.Get()), TVX_OK);
        trial.Equal("the calls", writer->calls, (Lines{"WriteNamedInt type 6", "WriteNamedObject value"}));
        trial.Equal("the number of objects written", writer->objects.size(), std::size_t{1});
        trial.Same("the object written", writer->objects[0].Get(), held);
    }
    trial.Equal("the object's reference count afterwards", object->GetRefCount(), 1u);
}

void ReportsANullWriter(Trial& trial)
{
    for (const auto& variant : MakeVariants(trial))
        ExpectNullWriterReported(trial, variant);
}

void IgnoresAFailingWriter(Trial& trial)
{
    ExpectWrittenByAFailingWriter(trial, "an integer", MakeInt(trial, 7),
                                  {"WriteNamedInt type 2", "WriteNamedInt value 7"});
    ExpectWrittenByAFailingWriter(trial, "a text", MakeText(trial, "text"),
                                  {"WriteNamedInt type 5", "WriteNamedString value text"});
}

void NamesItsFormat(Trial& trial)
{
    for (const auto& variant : MakeVariants(trial))
        ExpectFormat(trial, VariantExport, variant, Format);
}

constexpr Check Checks[] = {
    {"serialise-variant-writes-bool", "Bool variants are written.",
     "A variant writes the integer \"type\" and then \"value\": type 1 and a bool.", WritesBool},
    {"serialise-variant-writes-int", "Integer variants are written, the limits among them.",
     "A variant writes the integer \"type\" and then \"value\": type 2 and an integer.", WritesInt},
    {"serialise-variant-writes-float-widened", "Float variants are written, 0.1f among them.",
     "A variant writes the integer \"type\" and then \"value\": type 3 and the float widened to a double, 0.1f as "
     "0.10000000149011612.",
     WritesFloat},
    {"serialise-variant-writes-double", "Double variants are written.",
     "A variant writes the integer \"type\" and then \"value\": type 4 and a double with all its digits.",
     WritesDouble},
    {"serialise-variant-writes-text", "String variants are written, an empty one among them.",
     "A variant writes the integer \"type\" and then \"value\": type 5 and the bytes of the text.", WritesText},
    {"serialise-variant-writes-object", "Object variants are written, one with null among them.",
     "A variant writes the integer \"type\" and then \"value\": type 6 and the object itself, null as null.",
     WritesObject},
    {"serialise-variant-reports-null-writer", "A variant of each type is given a null writer.",
     "A null writer gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL.", ReportsANullWriter},
    {"serialise-variant-ignores-failing-writer", "Variants are given a writer that fails with every call.",
     "What the writer answers is not looked at: both entries are written, and Serialize gives 0.",
     IgnoresAFailingWriter},
    {"serialise-variant-names-its-format", "Variants of each type and their factory are asked for the format id.",
     "Both give com.talvere.general.tvx.GenericVariantImplementationFormat/1.1; a null out gives -4 without a report.",
     NamesItsFormat},
};

}  // namespace

extern const Family SerialisingVariantFamily = {"serialising", VariantExport, Needs::Module, Checks};

}  // namespace tvx::check
