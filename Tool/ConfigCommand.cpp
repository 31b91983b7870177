// SPDX-License-Identifier: MIT
#include "Host/LogLine.h"
#include "Host/LoggerConfigurationLint.h"
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"

#include <memory>

namespace tvx::tool
{

namespace
{

using Json = nlohmann::ordered_json;

constexpr std::size_t KeyWidth = 19;

struct ConfigOptions
{
    std::string file;
    bool json = false;
};

const char* GetOriginName(host::ValueOrigin origin)
{
    constexpr const char* names[] = {"built in", "of Default", "own"};
    return names[static_cast<int>(origin)];
}

std::string DescribeLevel(std::int32_t level)
{
    const char* const name = host::FindLevelName(level);
    return std::to_string(level) + (name != nullptr ? std::string(" ") + name : "");
}

std::string DescribeFilename(const host::LoggerSectionMeaning& section)
{
    const auto& written = section.filename.value;
    if (!section.expandedFilename)
        return written + " -> (never ends)";
    return *section.expandedFilename == written ? written : written + " -> " + *section.expandedFilename;
}

template <class T>
std::string DescribeValue(std::string key, const std::string& text, const host::OriginatedValue<T>& value)
{
    key.resize(KeyWidth, ' ');
    return "  " + key + text + " (" + GetOriginName(value.origin) + ")";
}

std::string DescribeSwitch(const char* key, const host::OriginatedValue<bool>& value)
{
    return DescribeValue(key, value.value ? "true" : "false", value);
}

// One line a fact, whatever characters the file has in its texts.
std::string DescribeSection(const host::LoggerSectionMeaning& section)
{
    std::string text;
    for (const auto& line :
         {section.name, DescribeValue("MinLevel", DescribeLevel(section.minLevel.value), section.minLevel),
          DescribeSwitch("ToStdOut", section.toStdOut), DescribeSwitch("ToFile", section.toFile),
          DescribeValue("LogFlushThreshold", std::to_string(section.logFlushThreshold.value),
                        section.logFlushThreshold),
          DescribeValue("Filename", DescribeFilename(section), section.filename)})
        text += host::MakeOneLine(line) + "\n";
    return text;
}

template <class T>
Json ValueToJson(const host::OriginatedValue<T>& value)
{
    return {{"value", value.value}, {"origin", GetOriginName(value.origin)}};
}

Json SectionToJson(const host::LoggerSectionMeaning& section)
{
    auto filename = ValueToJson(section.filename);
    filename["expanded"] = section.expandedFilename ? Json(*section.expandedFilename) : Json();
    return {{"name", section.name},
            {"MinLevel", ValueToJson(section.minLevel)},
            {"ToStdOut", ValueToJson(section.toStdOut)},
            {"ToFile", ValueToJson(section.toFile)},
            {"LogFlushThreshold", ValueToJson(section.logFlushThreshold)},
            {"Filename", filename}};
}

void PrintReport(const Console& console, const host::LoggerConfigurationReport& report)
{
    for (const auto& section : report.sections)
        console.Print(DescribeSection(section));
}

void PrintReportAsJson(const Console& console, const host::LoggerConfigurationReport& report)
{
    auto sections = Json::array();
    for (const auto& section : report.sections)
        sections.push_back(SectionToJson(section));
    console.Print(PrintJson({{"sections", sections}, {"warnings", report.warnings}}));
}

ExitCode Explain(const ConfigOptions& options)
{
    const Console console;
    const auto configuration = host::OpenConfiguration(options.file);
    if (!configuration)
        return console.Fail(configuration.GetError());
    const auto report = host::LintLoggerConfiguration(**configuration);
    if (options.json)
        PrintReportAsJson(console, report);
    else
        PrintReport(console, report);
    for (const auto& warning : report.warnings)
        Console::Complain(warning);
    return report.warnings.empty() ? Ok : AnswerIsNo;
}

}  // namespace

void AddConfigCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<ConfigOptions>();
    auto* const command = program.add_subcommand(
        "config", "Tell what a configuration file means to the logger; 1 when there is something to warn of");
    command->add_option("FILE", options->file, "A JSON or INI file")->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, &code] { code = Explain(*options); });
}

}  // namespace tvx::tool
