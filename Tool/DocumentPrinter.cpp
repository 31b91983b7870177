// SPDX-License-Identifier: MIT
#include "Tool/DocumentPrinter.h"

#include "Host/ModuleFile.h"

namespace tvx::tool
{

namespace
{

using Json = nlohmann::ordered_json;

std::string DescribeImport(const host::Import& import)
{
    return "      import " + import.property + " <- " + import.contract + (import.optional ? " (optional)" : "") + "\n";
}

std::string DescribeExport(const host::Export& entry)
{
    std::string text = "  " + entry.id + "\n      name " + entry.metadata.name + "\n";
    if (!entry.metadata.subname.empty())
        text += "      subname " + entry.metadata.subname + "\n";
    if (!entry.metadata.copyright.empty())
        text += "      copyright " + entry.metadata.copyright + "\n";
    for (const auto& contract : entry.contracts)
        text += "      contract " + contract + "\n";
    if (!entry.metadata.serid.empty())
        text += "      format " + entry.metadata.serid + "\n";
    for (const auto& import : entry.imports)
        text += DescribeImport(import);
    return text;
}

Json ImportToJson(const host::Import& import)
{
    return {{"property", import.property}, {"contract", import.contract}, {"optional", import.optional}};
}

Json MetadataToJson(const host::Metadata& metadata)
{
    Json json = {{"name", metadata.name}};
    if (!metadata.subname.empty())
        json["subname"] = metadata.subname;
    if (!metadata.copyright.empty())
        json["copyright"] = metadata.copyright;
    if (!metadata.serid.empty())
        json["serid"] = metadata.serid;
    return json;
}

Json ExportToJson(const host::Export& entry)
{
    auto imports = Json::array();
    for (const auto& import : entry.imports)
        imports.push_back(ImportToJson(import));
    return {{"id", entry.id},
            {"contracts", entry.contracts},
            {"metadata", MetadataToJson(entry.metadata)},
            {"imports", imports}};
}

}  // namespace

std::string DescribeModule(const host::InstalledModule& module)
{
    std::string text = host::DisplayName(module.file) + "\n";
    for (const auto& entry : module.document.exports)
        text += DescribeExport(entry);
    return text;
}

Json ModuleToJson(const host::InstalledModule& module)
{
    auto exports = Json::array();
    for (const auto& entry : module.document.exports)
        exports.push_back(ExportToJson(entry));
    return {{"file", host::DisplayName(module.file)}, {"version", module.document.version}, {"exports", exports}};
}

std::string PrintJson(const Json& json)
{
    return json.dump(4, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace tvx::tool
