// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <string_view>

// How values of the framework stand in JSON, and back. Every text and every double comes back bit for bit, except that
// all NaN are one.
namespace tvx::host
{

using Json = nlohmann::json;

// The names that the serializer keeps for itself begin so.
inline constexpr char ReservedMark = '$';

// The member of an object that names the object's format.
inline constexpr const char FormatName[] = "$format";

// A JSON string where text is UTF-8, otherwise {"$bytes":"<its bytes, two lower-case hexadecimal digits each>"}.
//   text  without NUL
std::string TextToJson(std::string_view text);

// The shortest number that is read back as value, never without a point or an exponent; {"$double":"inf"}, "-inf" or
// "nan" where JSON has no number.
std::string DoubleToJson(double value);

enum class JsonReading
{
    Done,
    OtherType,  // the value is sound but of another type
    Malformed,  // the value is of the type asked for, but nothing that TextToJson or DoubleToJson could have written
};

// Each leaves out untouched unless it gives Done.
JsonReading JsonToBool(const Json& value, bool& out);
JsonReading JsonToInt(const Json& value, std::int32_t& out);  // a number beyond 32 bits counts as another type
JsonReading JsonToDouble(const Json& value, double& out);     // takes integers too
JsonReading JsonToText(const Json& value, std::string& out);  // a text with a NUL counts as malformed

// Whether value is an object, and not one that stands for a text or a double.
bool IsJsonObject(const Json& value);

}  // namespace tvx::host
