// SPDX-License-Identifier: MIT
#include "Host/ConfigurationFile.h"

#include "Host/AsciiCase.h"
#include "Host/StrictJson.h"

#include <boost/property_tree/ini_parser.hpp>

#include <locale>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace tvx::host
{

namespace
{

using Json = nlohmann::json;
using Kind = ConfigurationValue::Kind;

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

std::string_view SkipByteOrderMark(std::string_view text)
{
    return text.starts_with(ByteOrderMark) ? text.substr(ByteOrderMark.size()) : text;
}

Kind GetKind(const Json& value)
{
    switch (value.type())
    {
    case Json::value_t::boolean: return Kind::Bool;
    case Json::value_t::string: return Kind::Text;
    case Json::value_t::null: return Kind::Null;
    case Json::value_t::array: return Kind::List;
    case Json::value_t::object: return Kind::Section;
    default: return Kind::Number;
    }
}

ConfigurationEntries ParseJson(std::string_view text)
{
    ConfigurationEntries entries;
    const auto add = [&entries](const std::string& key, const Json& value)
    {
        const bool isPlain = !value.is_structured();
        entries.emplace(key, ConfigurationValue{GetKind(value), isPlain ? GetJsonText(value, key) : ""});
    };
    VisitMembers(ParseJsonObject(text), add);
    return entries;
}

void AddUntyped(ConfigurationEntries& entries, const std::string& key, const std::string& text)
{
    if (!entries.emplace(key, ConfigurationValue{Kind::Untyped, text}).second)
        throw std::runtime_error("the key \"" + key + "\" stands there twice");
}

// A name above the first section is a key by itself. A section's name may have separators in it, and so may a name, so that
// two of them can give the same key.
ConfigurationEntries ReadEntries(const boost::property_tree::ptree& tree)
{
    ConfigurationEntries entries;
    for (const auto& [section, names] : tree)
    {
        if (names.empty())
            AddUntyped(entries, section, names.data());
        for (const auto& [name, value] : names)
            AddUntyped(entries, section + KeySeparator + name, value.data());
    }
    return entries;
}

// The parser would drop what stands behind a section's bracket, a setting perhaps.
void CheckSectionLine(const std::string& line, int number)
{
    const auto first = line.find_first_not_of(" \t\r");
    const auto bracket = line.find(']');
    if (first == std::string::npos || line[first] != '[' || bracket == std::string::npos)
        return;
    const auto behind = line.find_first_not_of(" \t\r", bracket + 1);
    if (behind != std::string::npos && line[behind] != ';' && line[behind] != '#')
        throw std::runtime_error("line " + std::to_string(number) + ": something stands behind the section's bracket");
}

void CheckSectionLines(std::istream& stream)
{
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number)
        CheckSectionLine(line, number);
    stream.clear();
    stream.seekg(0);
}

ConfigurationEntries ParseIni(std::string_view text)
try
{
    if (text.find('\0') != std::string_view::npos)
        throw std::runtime_error("it has a NUL byte in it");
    std::istringstream stream{std::string(SkipByteOrderMark(text))};
    stream.imbue(std::locale::classic());
    CheckSectionLines(stream);
    boost::property_tree::ptree tree;
    boost::property_tree::read_ini(stream, tree);
    return ReadEntries(tree);
}
catch (const boost::property_tree::ini_parser_error& failure)
{
    throw std::runtime_error("line " + std::to_string(failure.line()) + ": " + failure.message());
}

}  // namespace

ConfigurationFormat ChooseConfigurationFormat(const std::filesystem::path& file, std::string_view text)
{
    const auto extension = file.extension().string();
    if (IsSameWord(extension, ".ini"))
        return ConfigurationFormat::Ini;
    text = SkipByteOrderMark(text);
    const auto first = text.find_first_not_of(" \t\r\n");
    const bool isObject = first != std::string_view::npos && text[first] == '{';
    return IsSameWord(extension, ".json") || isObject ? ConfigurationFormat::Json : ConfigurationFormat::Ini;
}

Outcome<ConfigurationEntries> ParseConfiguration(std::string_view text, ConfigurationFormat format,
                                                 std::string_view origin)
try
{
    return format == ConfigurationFormat::Json ? ParseJson(text) : ParseIni(text);
}
catch (const std::exception& failure)
{
    const auto* const name = format == ConfigurationFormat::Json ? "JSON" : "INI";
    return MakeError(ErrorKind::BadSettings,
                     std::string(origin) + " is no " + name + " configuration: " + GetJsonReason(failure));
}

}  // namespace tvx::host
