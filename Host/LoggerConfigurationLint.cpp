// SPDX-License-Identifier: MIT
#include "Host/LoggerConfigurationLint.h"

#include "Host/DocumentTree.h"
#include "Host/KeySpelling.h"
#include "Host/StrictJson.h"
#include "Interfaces/ILogger.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>
#include <utility>

namespace tvx::host
{

namespace
{

constexpr const char DefaultSection[] = "Default";
constexpr const char MinLevel[] = "MinLevel";
constexpr const char ToStdOut[] = "ToStdOut";
constexpr const char ToFile[] = "ToFile";
constexpr const char LogFlushThreshold[] = "LogFlushThreshold";
constexpr const char Filename[] = "Filename";
constexpr const char* Keys[] = {MinLevel, ToStdOut, ToFile, LogFlushThreshold, Filename};

// The key of the logger that name is meant to be; null when it is none of them.
const char* FindMeantKey(std::string_view name)
{
    const auto isMeant = [name](const char* key) { return name == key || IsMisspelt(name, key); };
    const auto* const found = std::find_if(std::begin(Keys), std::end(Keys), isMeant);
    return found != std::end(Keys) ? *found : nullptr;
}

// One spelling for all that lead to the same file, whether it is there or not.
std::filesystem::path GetTruePath(const std::string& name)
{
    std::error_code failed;
    const auto path = std::filesystem::weakly_canonical(name, failed);
    return failed ? std::filesystem::path(name) : std::filesystem::absolute(path, failed);
}

std::string Join(const std::vector<std::string>& texts, const std::string& between)
{
    std::string joined;
    for (const auto& text : texts)
        joined += (joined.empty() ? "" : between) + text;
    return joined;
}

class Linter
{
public:
    Linter(Configuration& configuration, const ReadVariable& readVariable)
        : configuration_(configuration),
          readVariable_(readVariable)
    {
    }

    LoggerConfigurationReport Run()
    {
        const auto names = CheckKeys();
        const auto defaults = Read(DefaultSection, {}, ValueOrigin::Default);
        report_.sections.push_back(defaults);
        for (const auto& name : names)
            report_.sections.push_back(Read(name, defaults, ValueOrigin::Section));
        CheckFiles();
        const auto mistyped = configuration_.GetWarnings();
        report_.warnings.insert(report_.warnings.begin(), mistyped.begin(), mistyped.end());
        return std::move(report_);
    }

private:
    void Warn(const std::string& text)
    {
        const auto warning = configuration_.GetOrigin() + ": " + text;
        report_.warnings.push_back(MakeError(ErrorKind::BadSettings, warning).message);
    }

    // Gives the names of the sections other than Default.
    std::set<std::string> CheckKeys()
    {
        std::set<std::string> names;
        for (const auto& [key, value] : configuration_.GetEntries())
        {
            const auto end = key.rfind(KeySeparator);
            if (value.kind == ConfigurationValue::Kind::Section)
                continue;
            CheckKey(key, key.substr(end + 1), end != std::string::npos);
            if (end != std::string::npos)
                names.insert(key.substr(0, end));
        }
        names.erase(DefaultSection);
        for (const auto& name : names)
        {
            if (IsMisspelt(name, DefaultSection))
                Warn("the section " + Quote(name) +
                     " is that of a logger of this name; the defaults are in \"Default\"");
        }
        return names;
    }

    void CheckKey(const std::string& key, const std::string& name, bool isInSection)
    {
        const char* const meant = FindMeantKey(name);
        if (meant == nullptr)
            return;
        if (!isInSection)
            Warn(Quote(key) + " stands in no section, so no logger reads it");
        else if (name != meant)
            Warn(Quote(key) + " is no key of a logger; is \"" + meant + "\" meant?");
    }

    LoggerSectionMeaning Read(const std::string& name, LoggerSectionMeaning meaning, ValueOrigin origin)
    {
        const auto prefix = name + KeySeparator;
        const auto read = [&](auto operation, const char* key, auto& place)
        {
            if ((configuration_.*operation)((prefix + key).c_str(), &place.value, 0) == TVX_OK)
                place.origin = origin;
        };
        meaning.name = name;
        read(&Configuration::GetInt, MinLevel, meaning.minLevel);
        read(&Configuration::GetBool, ToStdOut, meaning.toStdOut);
        read(&Configuration::GetBool, ToFile, meaning.toFile);
        read(&Configuration::GetInt, LogFlushThreshold, meaning.logFlushThreshold);
        ReadFilename(prefix + Filename, meaning, origin);
        const auto level = meaning.minLevel.value;
        if (meaning.minLevel.origin == origin && (level < LogLevel::Trace || level > LogLevel::Fatal))
            Warn(Quote(prefix + MinLevel) + " is " + std::to_string(level) + ", no level from 1 to 6");
        return meaning;
    }

    void ReadFilename(const std::string& key, LoggerSectionMeaning& meaning, ValueOrigin origin)
    {
        Ref<IString> text;
        if (configuration_.GetString(key.c_str(), text.Receive(), 0) != TVX_OK)
            return;
        meaning.filename = {text->GetText(), origin};
        const auto expansion = ExpandVariables(meaning.filename.value, readVariable_);
        meaning.expandedFilename = expansion.ends ? std::optional<std::string>(expansion.text) : std::nullopt;
        CheckExpansion(Quote(key) + " is " + Quote(meaning.filename.value), expansion);
    }

    // Subject is the beginning of the warning.
    void CheckExpansion(const std::string& subject, const VariableExpansion& expansion)
    {
        const auto foreign = FindForeignReference(expansion.text);
        if (!expansion.loop.empty())
            Warn(subject + ": the logger never ends, for " + Quote(expansion.loop.front()) +
                 " refers to itself: " + Quote(Join(expansion.loop, " -> ")));
        else if (!expansion.ends)
            Warn(subject + ": its variables have no end, or none that the logger comes to in reasonable time");
        if (!expansion.rootedBy.empty())
            Warn(subject + ": " + Quote(expansion.rootedBy) + " is not set or empty, so the file is " +
                 Quote(expansion.text) + ", at the root");
        if (expansion.ends && expansion.text.empty())
            Warn(subject + ": that leaves no name, so nothing is written to a file");
        if (!foreign.empty())
            Warn(subject + ": " + Quote(foreign) + " stays as it is; a variable is written as $NAME");
    }

    // The spellings of each file that is written to, each with the first section that has it.
    void CheckFiles()
    {
        std::map<std::filesystem::path, std::map<std::string, std::string>> files;
        for (const auto& section : report_.sections)
        {
            const auto& name = section.expandedFilename;
            if (section.toFile.value && name && !name->empty())
                files[GetTruePath(*name)].emplace(*name, section.name);
        }
        for (const auto& [file, spellings] : files)
        {
            if (spellings.size() > 1)
                WarnOfSpellings(spellings);
        }
    }

    void WarnOfSpellings(const std::map<std::string, std::string>& spellings)
    {
        std::vector<std::string> texts;
        for (const auto& [spelling, section] : spellings)
            texts.push_back(Quote(spelling) + " of section " + Quote(section));
        Warn(Join(texts, " and ") + " are one file; each that is opened empties what was written before");
    }

    Configuration& configuration_;
    const ReadVariable& readVariable_;
    LoggerConfigurationReport report_;
};

}  // namespace

LoggerConfigurationReport LintLoggerConfiguration(Configuration& configuration, const ReadVariable& readVariable)
{
    return Linter(configuration, readVariable).Run();
}

}  // namespace tvx::host
