// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonWriter.h"

#include "Helpers/HandOut.h"
#include "Host/HostString.h"
#include "Host/JsonSerializer/JsonText.h"

namespace tvx::host
{

namespace
{

// Empty when the object does not tell its format.
Ref<IString> GetFormat(ISerializable& object)
{
    Ref<IString> formatId;
    if (TVX_FAILED(object.GetFormatId(formatId.Receive())))
        return nullptr;
    return formatId;
}

}  // namespace

Result JsonWriter::WriteNamedBool(const char* name, bool value)
{
    return failure_.Run([&] { return output_.AddNamed(name, value ? "true" : "false"); });
}

Result JsonWriter::WriteNamedInt(const char* name, std::int32_t value)
{
    return failure_.Run([&] { return output_.AddNamed(name, std::to_string(value)); });
}

Result JsonWriter::WriteNamedDouble(const char* name, double value)
{
    return failure_.Run([&] { return output_.AddNamed(name, DoubleToJson(value)); });
}

Result JsonWriter::WriteNamedString(const char* name, const char* text)
{
    return failure_.Run([&]
                        { return text == nullptr ? output_.FailForNull() : output_.AddNamed(name, TextToJson(text)); });
}

Result JsonWriter::WriteNamedObject(const char* name, IObjectBase* object)
{
    return failure_.Run(
        [&]
        {
            const auto started = output_.StartNamed(name);
            return TVX_FAILED(started) ? started : AddObject(object);
        });
}

Result JsonWriter::BeginArray(const char* name)
{
    return failure_.Run([&] { return output_.BeginSequence(name); });
}

Result JsonWriter::WriteString(const char* text)
{
    return failure_.Run([&] { return text == nullptr ? output_.FailForNull() : output_.AddItem(TextToJson(text)); });
}

Result JsonWriter::WriteObject(IObjectBase* object)
{
    return failure_.Run(
        [&]
        {
            const auto started = output_.StartItem();
            return TVX_FAILED(started) ? started : AddObject(object);
        });
}

Result JsonWriter::EndArray()
{
    return failure_.Run([&] { return output_.EndSequence(); });
}

Result JsonWriter::Begin()
{
    if (output_.IsInsideObject())
        return failure_.Set(TVX_E_FAIL, "a document was begun inside an object that is being written");
    failure_.Clear();
    return failure_.Run(
        [&]
        {
            output_.Begin();
            return TVX_OK;
        });
}

Result JsonWriter::End()
{
    return failure_.Run([&] { return output_.End(); });
}

Result JsonWriter::GetText(IString** out)
{
    if (out == nullptr)
        return TVX_E_POINTER;
    if (output_.IsEnded())
        return HandOutNew<HostString>(out, output_.GetText());
    WriteJsonProblem("the text was asked for before the document had been ended");
    return TVX_E_FAIL;
}

Result JsonWriter::AddObject(IObjectBase* object)
{
    if (object == nullptr)
    {
        output_.Append("null");
        return TVX_OK;
    }
    const auto serializable = Query<ISerializable>(object);
    if (!serializable)
        return failure_.Set(TVX_E_FAIL, "the object at " + output_.DescribeValue() + " is not serialisable");
    const auto formatId = GetFormat(*serializable);
    if (!formatId)
        return failure_.Set(TVX_E_FAIL, "the object at " + output_.DescribeValue() + " does not tell its format");
    if (output_.GetDepth() == MaxObjectDepth)
        return failure_.Set(TVX_E_FAIL, "objects lie in one another more than " + std::to_string(MaxObjectDepth) +
                                            " deep at " + output_.DescribeValue());
    return AddFormatted(*serializable, formatId->GetText());
}

Result JsonWriter::AddFormatted(ISerializable& object, std::string_view formatId)
{
    const auto place = output_.DescribeValue();
    const auto opened = output_.EnterObject();
    output_.Append(std::string("{\"").append(FormatName).append("\":").append(TextToJson(formatId)));
    const auto written = object.Serialize(this);
    if (TVX_FAILED(failure_.Get()))
        return failure_.Get();
    if (TVX_FAILED(written))
        return failure_.Set(written,
                            "the object at " + place + " could not be written (" + std::to_string(written) + ")");
    if (opened.HasOpenSequence())
        return failure_.Set(TVX_E_FAIL, "the object at " + place + " left a sequence open");
    output_.Append("}");
    return TVX_OK;
}

}  // namespace tvx::host
