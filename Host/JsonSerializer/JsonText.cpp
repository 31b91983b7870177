// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonText.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace tvx::host
{

namespace
{

constexpr const char BytesName[] = "$bytes";
constexpr const char DoubleName[] = "$double";
constexpr std::string_view HexDigits = "0123456789abcdef";
constexpr double Infinity = std::numeric_limits<double>::infinity();

constexpr std::pair<std::string_view, double> SpecialDoubles[] = {
    {"inf", Infinity},
    {"-inf", -Infinity},
    {"nan", std::numeric_limits<double>::quiet_NaN()},
};

std::string Wrap(const char* name, std::string_view text)
{
    return std::string("{\"").append(name).append("\":\"").append(text).append("\"}");
}

// What Wrap(name, …) was given; null when value does not stand for that.
const std::string* FindWrapped(const Json& value, const char* name)
{
    const auto found = value.size() == 1 ? value.find(name) : value.end();
    return found == value.end() ? nullptr : found->get_ptr<const std::string*>();
}

bool IsWrapper(const Json& value, const char* name)
{
    return value.is_object() && value.contains(name);
}

std::string BytesToHex(std::string_view bytes)
{
    std::string hex;
    for (const char byte : bytes)
    {
        const auto code = static_cast<unsigned char>(byte);
        hex += HexDigits[code / 16];
        hex += HexDigits[code % 16];
    }
    return hex;
}

bool IsHex(std::string_view hex)
{
    return hex.size() % 2 == 0 && hex.find_first_not_of(HexDigits) == std::string_view::npos;
}

std::string HexToBytes(std::string_view hex)
{
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2)
        bytes += static_cast<char>(HexDigits.find(hex[i]) * 16 + HexDigits.find(hex[i + 1]));
    return bytes;
}

JsonReading GiveText(std::string text, std::string& out)
{
    if (text.find('\0') != std::string::npos)
        return JsonReading::Malformed;
    out = std::move(text);
    return JsonReading::Done;
}

JsonReading GiveSpecialDouble(const std::string* word, double& out)
{
    for (const auto& [name, value] : SpecialDoubles)
    {
        if (word == nullptr || *word != name)
            continue;
        out = value;
        return JsonReading::Done;
    }
    return JsonReading::Malformed;
}

}  // namespace

std::string TextToJson(std::string_view text)
try
{
    return Json(text).dump();
}
catch (const Json::type_error&)  // not UTF-8, by the same measure by which the parser refuses strings
{
    return Wrap(BytesName, BytesToHex(text));
}

std::string DoubleToJson(double value)
{
    if (std::isnan(value))
        return Wrap(DoubleName, "nan");
    if (std::isinf(value))
        return Wrap(DoubleName, value < 0 ? "-inf" : "inf");
    char digits[32];
    std::string number(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    // As an integer the negative zero would lose its sign.
    return number.find_first_of(".e") == std::string::npos ? number + ".0" : number;
}

JsonReading JsonToBool(const Json& value, bool& out)
{
    if (!value.is_boolean())
        return JsonReading::OtherType;
    out = value.get<bool>();
    return JsonReading::Done;
}

JsonReading JsonToInt(const Json& value, std::int32_t& out)
{
    if (!value.is_number_integer())
        return JsonReading::OtherType;
    const bool fits = value.is_number_unsigned() ? std::in_range<std::int32_t>(value.get<std::uint64_t>())
                                                 : std::in_range<std::int32_t>(value.get<std::int64_t>());
    if (!fits)
        return JsonReading::OtherType;
    out = value.get<std::int32_t>();
    return JsonReading::Done;
}

JsonReading JsonToDouble(const Json& value, double& out)
{
    if (IsWrapper(value, DoubleName))
        return GiveSpecialDouble(FindWrapped(value, DoubleName), out);
    if (!value.is_number())
        return JsonReading::OtherType;
    out = value.get<double>();
    return JsonReading::Done;
}

JsonReading JsonToText(const Json& value, std::string& out)
{
    if (value.is_string())
        return GiveText(value.get<std::string>(), out);
    if (!IsWrapper(value, BytesName))
        return JsonReading::OtherType;
    const auto* const hex = FindWrapped(value, BytesName);
    if (hex == nullptr || !IsHex(*hex))
        return JsonReading::Malformed;
    return GiveText(HexToBytes(*hex), out);
}

bool IsJsonObject(const Json& value)
{
    return value.is_object() && !IsWrapper(value, BytesName) && !IsWrapper(value, DoubleName);
}

}  // namespace tvx::host
