// SPDX-License-Identifier: MIT
#include "Src/LoggerSettings.h"

#include "Helpers/Ref.h"
#include "Src/String.h"

#include <algorithm>
#include <cstdlib>

namespace tvx
{

namespace
{

constexpr std::uint32_t NoFlags = 0;

// Those of ASCII, whatever the locale says.
bool IsOfName(char character) noexcept
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           (character >= '0' && character <= '9') || character == '_';
}

// The first dollar sign with a name behind it.
std::string::const_iterator FindReference(const std::string& text)
{
    const auto begins = [](char first, char second) { return first == '$' && IsOfName(second); };
    return std::adjacent_find(text.begin(), text.end(), begins);
}

void ReadFilename(IConfiguration& config, const std::string& key, LoggerSettings& settings)
{
    Ref<IString> text;
    if (TVX_FAILED(config.GetString(key.c_str(), text.Receive(), NoFlags)) || !text)
        return;
    settings.filename = ExpandEnvironment(std::string(ToText(text->GetText())));
}

}  // namespace

void ReadSection(IConfiguration& config, std::string_view section, LoggerSettings& settings)
{
    const auto key = [section](const char* name) { return std::string(section) + name; };
    config.GetInt(key("\\MinLevel").c_str(), &settings.minLevel, NoFlags);
    config.GetBool(key("\\ToStdOut").c_str(), &settings.toStdOut, NoFlags);
    config.GetBool(key("\\ToFile").c_str(), &settings.toFile, NoFlags);
    config.GetInt(key("\\LogFlushThreshold").c_str(), &settings.logFlushThreshold, NoFlags);
    ReadFilename(config, key("\\Filename"), settings);
}

std::string ExpandEnvironment(std::string text)
{
    for (auto dollar = FindReference(text); dollar != text.cend(); dollar = FindReference(text))
    {
        const auto end = std::find_if_not(dollar + 1, text.cend(), IsOfName);
        const char* const value = std::getenv(std::string(dollar + 1, end).c_str());
        const auto inserted = ToText(value);
        text.replace(dollar, end, inserted);
    }
    return text;
}

}  // namespace tvx
