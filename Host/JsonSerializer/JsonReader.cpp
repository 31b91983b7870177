// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonReader.h"

#include "Host/HostString.h"
#include "Host/IFormatReaders.h"
#include "Host/JsonSerializer/JsonSerializerFactory.h"

#include <utility>

namespace tvx::host
{

Result JsonReader::ReadNamedBool(const char* name, bool* out)
{
    return ReadNamed(name, out, &JsonToBool);
}

Result JsonReader::ReadNamedInt(const char* name, std::int32_t* out)
{
    return ReadNamed(name, out, &JsonToInt);
}

Result JsonReader::ReadNamedDouble(const char* name, double* out)
{
    return ReadNamed(name, out, &JsonToDouble);
}

Result JsonReader::ReadNamedString(const char* name, IString** out)
{
    return ReadNamedWith(name, out, &JsonReader::GiveText);
}

Result JsonReader::ReadNamedObject(const char* name, IObjectBase** out)
{
    return ReadNamedWith(name, out, &JsonReader::GiveObject);
}

Result JsonReader::BeginArray(const char* name, std::uint32_t* count)
{
    if (name == nullptr || count == nullptr)
        return TVX_E_POINTER;
    return failure_.Run(
        [&]
        {
            const auto place = input_.FindNamed(name);
            if (!input_.BeginSequence(place))
                return TVX_E_FAIL;
            *count = static_cast<std::uint32_t>(place.value->size());
            return TVX_OK;
        });
}

Result JsonReader::ReadString(IString** out)
{
    return ReadItemWith(out, &JsonReader::GiveText);
}

Result JsonReader::ReadObject(IObjectBase** out)
{
    return ReadItemWith(out, &JsonReader::GiveObject);
}

Result JsonReader::EndArray()
{
    return failure_.Run([&] { return input_.EndSequence() ? TVX_OK : TVX_E_FAIL; });
}

Result JsonReader::Begin()
{
    if (input_.IsInsideObject())
        return failure_.Set(TVX_E_FAIL, "a document was begun inside an object that is being read");
    failure_.Clear();
    return failure_.Run(
        [&]
        {
            input_.End();
            if (!text_)
                return failure_.Set(TVX_E_FAIL, "a document was begun without a text to read");
            const auto problem = input_.Begin({text_->GetText(), text_->GetLength()});
            return problem.empty() ? TVX_OK : failure_.Set(TVX_E_FAIL, problem);
        });
}

Result JsonReader::End()
{
    if (input_.IsInsideObject())
        return failure_.Set(TVX_E_FAIL, "a document was ended inside an object that is being read");
    const bool wasBegun = input_.IsBegun();
    input_.End();
    return failure_.Run([&] { return wasBegun ? TVX_OK : TVX_E_FAIL; });
}

Result JsonReader::SetText(IString* text)
{
    if (text == nullptr)
        return TVX_E_POINTER;
    text_ = Ref<IString>(text);
    return TVX_OK;
}

template <class Value>
Result JsonReader::ReadNamed(const char* name, Value* out, JsonReading (*convert)(const Json&, Value&))
{
    if (name == nullptr || out == nullptr)
        return TVX_E_POINTER;
    return failure_.Run(
        [&]
        {
            const auto place = input_.FindNamed(name);
            return place.value == nullptr ? TVX_E_FAIL : GiveResult(convert(*place.value, *out), place);
        });
}

template <class Interface>
Result JsonReader::ReadNamedWith(const char* name, Interface** out,
                                 Result (JsonReader::*give)(const Place&, Interface**))
{
    if (name == nullptr || out == nullptr)
        return TVX_E_POINTER;
    return failure_.Run(
        [&]
        {
            const auto place = input_.FindNamed(name);
            return place.value == nullptr ? TVX_E_FAIL : (this->*give)(place, out);
        });
}

template <class Interface>
Result JsonReader::ReadItemWith(Interface** out, Result (JsonReader::*give)(const Place&, Interface**))
{
    if (out == nullptr)
        return TVX_E_POINTER;
    return failure_.Run(
        [&]
        {
            const auto place = input_.FindNextItem();
            const auto given = place.value == nullptr ? TVX_E_FAIL : (this->*give)(place, out);
            if (!TVX_FAILED(given))
                input_.SkipItem();
            return given;
        });
}

Result JsonReader::GiveResult(JsonReading reading, const Place& place)
{
    if (reading == JsonReading::Malformed)
        return failure_.Set(TVX_E_FAIL, "the value at " + JsonInput::Describe(place) + " is malformed");
    return reading == JsonReading::Done ? TVX_OK : TVX_E_FAIL;
}

Result JsonReader::GiveText(const Place& place, IString** out)
{
    std::string text;
    const auto result = GiveResult(JsonToText(*place.value, text), place);
    if (!TVX_FAILED(result))
        HandOut<IString>(MakeRef<HostString>(std::move(text)).Get(), out);
    return result;
}

Result JsonReader::GiveObject(const Place& place, IObjectBase** out)
{
    if (place.value->is_null())
    {
        *out = nullptr;
        return TVX_OK;
    }
    if (!IsJsonObject(*place.value))
        return TVX_E_FAIL;
    std::string formatId;
    const auto format = place.value->find(FormatName);
    if (format == place.value->end() || JsonToText(*format, formatId) != JsonReading::Done)
        return failure_.Set(TVX_E_FAIL, "the object at " + JsonInput::Describe(place) + " does not tell its format");
    if (input_.GetDepth() == MaxObjectDepth)
        return failure_.Set(TVX_E_FAIL, "objects lie in one another more than " + std::to_string(MaxObjectDepth) +
                                            " deep at " + JsonInput::Describe(place));
    return GiveFormatted(place, formatId, out);
}

Result JsonReader::GiveFormatted(const Place& place, const std::string& formatId, IObjectBase** out)
{
    const auto reader = FindReader(formatId);
    if (!reader)
        return failure_.Get();
    const auto opened = input_.EnterObject(place);
    Ref<IObjectBase> object;
    const auto read = reader->Deserialize(this, object.Receive());
    if (TVX_FAILED(failure_.Get()))
        return failure_.Get();
    if (TVX_FAILED(read) || !object)
        return failure_.Set(TVX_FAILED(read) ? read : TVX_E_FAIL,
                            "the object at " + JsonInput::Describe(place) + " could not be read as format " +
                                QuoteForProblem(formatId) + " (" + std::to_string(read) + ")");
    *out = object.Detach();
    return TVX_OK;
}

// Empty after a failure. A library manager that cannot be had is told of by the import itself.
Ref<IDeserializable> JsonReader::FindReader(const std::string& formatId)
{
    const auto readers = JsonSerializerFactory::GetImport<IFormatReaders>("LibManager");
    Ref<IDeserializable> reader;
    if (!readers)
        failure_.SetSilently(TVX_E_FAIL);
    else if (TVX_FAILED(readers->FindReader(formatId.c_str(), reader.Receive())) || !reader)
        failure_.Set(TVX_E_FAIL, "no installed module reads the format " + QuoteForProblem(formatId));
    return TVX_FAILED(failure_.Get()) ? nullptr : reader;
}

}  // namespace tvx::host
