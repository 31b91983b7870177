// SPDX-License-Identifier: MIT
#include "Host/Configuration.h"

#include "Host/AsciiCase.h"
#include "Host/DocumentTree.h"
#include "Host/HostString.h"
#include "Host/ModuleFile.h"
#include "Host/TextFile.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <optional>
#include <utility>

namespace tvx::host
{

namespace
{

using Kind = ConfigurationValue::Kind;

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words)
{
    return std::any_of(words.begin(), words.end(), [text](auto word) { return IsSameWord(text, word); });
}

// Each gives nothing for a value of another type.

std::optional<bool> ToBool(const ConfigurationValue& value)
{
    if (value.kind == Kind::Bool)
        return value.text == "true";
    if (value.kind != Kind::Untyped)
        return std::nullopt;
    if (IsOneOf(value.text, {"true", "yes", "on", "1"}))
        return true;
    if (IsOneOf(value.text, {"false", "no", "off", "0"}))
        return false;
    return std::nullopt;
}

std::optional<std::int32_t> ToInt(const ConfigurationValue& value)
{
    std::int32_t number = 0;
    if (value.kind != Kind::Number && value.kind != Kind::Untyped)
        return std::nullopt;
    const char* const end = value.text.data() + value.text.size();
    const auto [stop, failed] = std::from_chars(value.text.data(), end, number);
    if (failed != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

std::optional<Ref<IString>> ToString(const ConfigurationValue& value)
{
    if (value.kind != Kind::Text && value.kind != Kind::Untyped)
        return std::nullopt;
    return Ref<IString>(MakeRef<HostString>(value.text));
}

template <class Value>
void Deliver(Value value, Value* out)
{
    *out = value;
}

void Deliver(const Ref<IString>& value, IString** out)
{
    HandOut(value.Get(), out);
}

std::string Describe(const ConfigurationValue& value)
{
    switch (value.kind)
    {
    case Kind::Text: return "the text " + Quote(value.text);
    case Kind::List: return "a list";
    case Kind::Section: return "a section";
    case Kind::Untyped: return Quote(value.text);
    default: return value.text;
    }
}

}  // namespace

Configuration::Configuration(std::string origin, ConfigurationEntries entries)
    : origin_(std::move(origin)),
      entries_(std::move(entries))
{
}

Result Configuration::GetBool(const char* key, bool* out, std::uint32_t)
{
    return Read(key, out, "true or false", ToBool);
}

Result Configuration::GetInt(const char* key, std::int32_t* out, std::uint32_t)
{
    return Read(key, out, "a whole number of 32 bits", ToInt);
}

// Who reads a text looks at the result alone, where the others look at what they read into.
Result Configuration::GetString(const char* key, IString** out, std::uint32_t)
{
    const auto result = Read(key, out, "a text", ToString);
    return result == TVX_S_NOKEY ? TVX_E_FAIL : result;
}

std::vector<std::string> Configuration::GetWarnings() const
{
    const std::lock_guard<std::mutex> guard(lock_);
    return warnings_;
}

template <class Value, class Convert>
Result Configuration::Read(const char* key, Value* out, const char* due, Convert convert)
try
{
    if (key == nullptr || out == nullptr)
        return TVX_E_POINTER;
    const auto found = entries_.find(std::string_view(key));
    if (found == entries_.end())
        return TVX_S_NOKEY;
    if (const auto value = convert(found->second))
    {
        Deliver(*value, out);
        return TVX_OK;
    }
    Warn(found->first, due, found->second);
    return TVX_E_FAIL;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

void Configuration::Warn(const std::string& key, const char* due, const ConfigurationValue& found)
{
    const auto text = origin_ + ": " + Quote(key) + " has to be " + due + ", but is " + Describe(found);
    const auto warning = MakeError(ErrorKind::BadSettings, text).message;
    const std::lock_guard<std::mutex> guard(lock_);
    if (std::find(warnings_.begin(), warnings_.end(), warning) == warnings_.end())
        warnings_.push_back(warning);
}

Outcome<Ref<Configuration>> OpenConfiguration(const std::filesystem::path& file)
{
    const auto text = ReadTextFile(file);
    if (!text)
        return text.GetError();
    auto entries = ParseConfiguration(*text, ChooseConfigurationFormat(file, *text), DisplayName(file));
    if (!entries)
        return entries.GetError();
    return MakeRef<Configuration>(DisplayName(file), *std::move(entries));
}

}  // namespace tvx::host
