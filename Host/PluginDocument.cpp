// SPDX-License-Identifier: MIT
#include "Host/PluginDocument.h"

#include "Host/DocumentText.h"
#include "Host/DocumentTree.h"
#include "Host/ModuleFile.h"

#include <algorithm>
#include <set>

namespace tvx::host
{
namespace
{

void CheckRoot(DocumentTree& tree, pugi::xml_node root)
{
    if (root.name() != std::string_view("plugcfg"))
    {
        tree.Fail(root, "the root element is " + Quote(root.name()) + ", not \"plugcfg\"");
    }
    const auto version = root.attribute("version");
    if (!version)
    {
        tree.Fail(root, "plugcfg has no version");
    }
    if (version.value() != std::string_view("1"))
    {
        tree.Fail(root, "plugcfg has version " + Quote(version.value()) + ", not \"1\"");
    }
}

Metadata ReadMetadata(DocumentTree& tree, pugi::xml_node element)
{
    Metadata metadata;
    metadata.name = tree.RequireText(tree.RequireOne(element, "name"));
    metadata.subname = tree.ReadText(tree.FindOne(element, "subname"));
    metadata.copyright = tree.ReadText(tree.FindOne(element, "copyright"));
    metadata.serid = tree.ReadText(tree.FindOne(element, "serid"));
    return metadata;
}

bool ReadOptional(DocumentTree& tree, pugi::xml_node element)
{
    const auto text = tree.ReadText(element);
    if (element && text != "true" && text != "false")
    {
        tree.Fail(element, "optional is " + Quote(text) + ", neither \"true\" nor \"false\"");
    }
    return text == "true";
}

Import ReadImport(DocumentTree& tree, pugi::xml_node element)
{
    Import import;
    import.property = tree.RequireText(tree.RequireOne(element, "property"));
    import.contract = tree.RequireText(tree.RequireOne(element, "contract"));
    import.optional = ReadOptional(tree, tree.FindOne(element, "optional"));
    return import;
}

Export ReadExport(DocumentTree& tree, pugi::xml_node element)
{
    Export result;
    result.id = tree.RequireText(tree.RequireOne(element, "id"));
    for (const pugi::xml_node contract : element.children("contract"))
    {
        result.contracts.push_back(tree.RequireText(contract));
    }
    if (result.contracts.empty())
    {
        tree.Fail(element, "export has no contract");
    }
    result.metadata = ReadMetadata(tree, tree.RequireOne(element, "metadata"));
    for (const pugi::xml_node import : element.children("import"))
    {
        result.imports.push_back(ReadImport(tree, import));
    }
    return result;
}

std::vector<Export> ReadExports(DocumentTree& tree, pugi::xml_node root)
{
    std::vector<Export> exports;
    std::set<std::string> ids;
    for (const pugi::xml_node element : root.children("export"))
    {
        exports.push_back(ReadExport(tree, element));
        const std::string& id = exports.back().id;
        if (!ids.insert(id).second)
        {
            tree.Fail(element.child("id"), "an earlier export has the id " + Quote(id) + " too");
        }
    }
    return exports;
}

}  // namespace

bool PluginDocument::Offers(std::string_view id) const
{
    return std::any_of(exports.begin(), exports.end(), [&](const Export& entry) { return entry.id == id; });
}

Outcome<PluginDocument> ParsePluginDocument(std::string_view text, std::string_view origin)
{
    DocumentTree tree(text, origin);
    const auto root = tree.GetRoot();
    CheckRoot(tree, root);
    PluginDocument document{root.attribute("version").value(), ReadExports(tree, root)};
    if (tree.GetFailure())
    {
        return *tree.GetFailure();
    }
    return document;
}

Outcome<PluginDocument> ReadPluginDocument(const std::filesystem::path& file)
{
    const auto text = ReadDocumentText(file);
    if (!text)
    {
        return text.GetError();
    }
    return ParsePluginDocument(*text, DisplayName(file));
}

}  // namespace tvx::host
