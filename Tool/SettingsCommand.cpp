// SPDX-License-Identifier: MIT
#include "Helpers/NumberText.h"
#include "Host/SettingsJson.h"
#include "Host/SettingsMap.h"
#include "Host/TextFile.h"
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"
#include "Tool/SettingsSession.h"

#include <cmath>
#include <functional>
#include <memory>

namespace tvx::tool
{

namespace
{

struct SettingsOptions
{
    SearchOptions search;
    std::string file;
    std::string key;
    std::string value;
    std::string type = "text";
    bool json = false;
};

using Json = nlohmann::ordered_json;

using Action = ExitCode (*)(const Console& console, ISimpleMap& map, const SettingsOptions& options);

ExitCode PrintSettings(const Console& console, ISimpleMap& map)
{
    const auto text = host::WriteSettings(map);
    if (!text)
        return console.Fail(text.GetError());
    console.Print(*text);
    return Ok;
}

// The text of a key; empty when the key is absent.
host::Outcome<Json> ReadText(ISimpleMap& map, const std::string& key)
{
    Ref<IString> text;
    if (map.GetString(key.c_str(), text.Receive()) != TVX_S_VALUE)
        return Json();
    if (!text)
        return host::MakeError(host::ErrorKind::Misbehaved, "the map gives no text for its key \"" + key + "\"");
    return Json(text->GetText());
}

// The value as the type asked for; empty when the key is absent.
host::Outcome<Json> ReadTyped(ISimpleMap& map, const SettingsOptions& options)
{
    if (options.type == "text")
        return ReadText(map, options.key);
    std::int32_t integer = 0;
    if (options.type == "int" && map.GetInt(options.key.c_str(), &integer) == TVX_OK)
        return Json(integer);
    double number = 0.0;
    if (options.type == "double" && map.GetDouble(options.key.c_str(), &number) == TVX_OK)
        return std::isfinite(number) ? Json(number) : Json(NumberText(number).Get());
    return Json();
}

ExitCode Get(const Console& console, ISimpleMap& map, const SettingsOptions& options)
{
    const auto value = ReadTyped(map, options);
    if (!value)
        return console.Fail(value.GetError());
    if (value->is_null())
    {
        console.Complain("\"" + options.key + "\" is absent");
        return AnswerIsNo;
    }
    const bool plain = value->is_string() && !options.json;
    console.Print(plain ? value->get<std::string>() + "\n" : PrintJson(*value));
    return Ok;
}

ExitCode Set(const Console& console, ISimpleMap& map, const SettingsOptions& options)
{
    const auto result = map.SetString(options.key.c_str(), options.value.c_str());
    if (TVX_FAILED(result))
        return console.Fail(
            {host::ErrorKind::Misbehaved, "the map refuses the value, result " + std::to_string(result)});
    const auto text = host::WriteSettings(map);
    if (!text)
        return console.Fail(text.GetError());
    const auto written = host::WriteTextFile(options.file, *text);
    return written ? Ok : console.Fail(written.GetError());
}

// Whether key is path or lies below it; everything lies below the empty path.
bool IsAtOrBelow(std::string_view key, std::string_view path)
{
    return path.empty() || key == path || (key.starts_with(path) && key[path.size()] == '\\');
}

ExitCode List(const Console& console, ISimpleMap& map, const SettingsOptions& options)
{
    const auto entries = host::ReadEntries(map);
    if (!entries)
        return console.Fail(entries.GetError());
    auto listed = Json::object();
    auto& members = listed.get_ref<Json::object_t&>();
    std::string lines;
    for (const auto& [key, value] : *entries)
    {
        if (!IsAtOrBelow(key, options.key))
            continue;
        members.emplace_back(key, value);  // no key stands twice, so none is looked for
        lines.append(key).append(" = ").append(value).append("\n");
    }
    console.Print(options.json ? PrintJson(listed) : lines);
    return listed.empty() ? AnswerIsNo : Ok;
}

ExitCode Sub(const Console& console, ISimpleMap& map, const SettingsOptions& options)
{
    Ref<ISimpleMap> below;
    const auto result = map.GetSubMap(options.key.c_str(), below.Receive());
    if (TVX_FAILED(result) || !below)
        return console.Fail(
            {host::ErrorKind::Misbehaved, "the map gives no sub-map, result " + std::to_string(result)});
    const auto printed = PrintSettings(console, *below);
    return printed == Ok && result == TVX_S_NOKEY ? AnswerIsNo : printed;
}

ExitCode Export(const Console& console, ISimpleMap& map, const SettingsOptions&)
{
    return PrintSettings(console, map);
}

ExitCode Run(const SettingsOptions& options, Action action)
{
    const Console console;
    const auto text = host::ReadTextFile(options.file);
    if (!text)
        return console.Fail(text.GetError());
    const auto session = SettingsSession::Open(options.search.MakeCatalog());
    if (!session)
        return console.Fail(session.GetError());
    auto& map = (*session)->GetMap();
    const auto read = host::ReadSettings(*text, options.file, map);
    if (!read)
        return console.Fail(read.GetError());
    return action(console, map, options);
}

CLI::App* AddAction(CLI::App& settings, const char* name, const char* help,
                    const std::shared_ptr<SettingsOptions>& options, ExitCode& code, Action action)
{
    auto* const command = settings.add_subcommand(name, help);
    command->callback([options, &code, action] { code = Run(*options, action); });
    command->fallthrough();  // --path may stand behind the action, too
    return command;
}

}  // namespace

void AddSettingsCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<SettingsOptions>();
    auto* const settings = program.add_subcommand("settings", "Work on a JSON settings file through a settings map");
    settings->require_subcommand(1);
    settings->add_option("FILE", options->file, "The settings file: JSON objects within objects")->required();
    options->search.AddTo(*settings);

    auto* const get =
        AddAction(*settings, "get", "Print the value of a key such as Display\\Width", options, code, &Get);
    get->add_option("KEY", options->key, "The key")->required();
    get->add_option("--type", options->type, "How to read the value")->check(CLI::IsMember({"text", "int", "double"}));
    get->add_flag("--json", options->json, "Print JSON");

    auto* const set = AddAction(*settings, "set", "Write a value and save the file", options, code, &Set);
    set->add_option("KEY", options->key, "The key")->required();
    set->add_option("VALUE", options->value, "The value's text")->required();

    auto* const list =
        AddAction(*settings, "list", "List the keys, or those at and below a path", options, code, &List);
    list->add_option("PATH", options->key, "The path");
    list->add_flag("--json", options->json, "Print JSON");

    auto* const sub = AddAction(*settings, "sub", "Print the settings below a path as JSON", options, code, &Sub);
    sub->add_option("PATH", options->key, "The path")->required();

    AddAction(*settings, "export", "Print all settings as JSON", options, code, &Export);
}

}  // namespace tvx::tool
