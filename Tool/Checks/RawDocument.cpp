// SPDX-License-Identifier: MIT
#include "Tool/Checks/RawDocument.h"

#include "Host/DocumentText.h"

#include <algorithm>

namespace tvx::check
{

namespace
{

constexpr std::string_view WhiteSpace = " \t\r\n";

struct Place
{
    std::string_view parent;
    std::string_view name;
};

constexpr Place KnownPlaces[] = {
    {"plugcfg", "export"}, {"export", "id"},       {"export", "contract"},  {"export", "metadata"},
    {"export", "import"},  {"metadata", "name"},   {"metadata", "subname"}, {"metadata", "copyright"},
    {"metadata", "serid"}, {"import", "property"}, {"import", "contract"},  {"import", "optional"},
};

bool IsKnown(std::string_view parent, std::string_view name)
{
    return std::any_of(std::begin(KnownPlaces), std::end(KnownPlaces),
                       [&](const Place& place) { return place.parent == parent && place.name == name; });
}

host::Import ReadImport(pugi::xml_node element)
{
    return {ReadTrimmedText(element.child("property")), ReadTrimmedText(element.child("contract")),
            ReadTrimmedText(element.child("optional")) == "true"};
}

host::Export ReadExport(pugi::xml_node element)
{
    host::Export result;
    result.id = ReadTrimmedText(element.child("id"));
    for (const auto contract : element.children("contract"))
        result.contracts.push_back(ReadTrimmedText(contract));
    const auto metadata = element.child("metadata");
    result.metadata = {ReadTrimmedText(metadata.child("name")), ReadTrimmedText(metadata.child("subname")),
                       ReadTrimmedText(metadata.child("copyright")), ReadTrimmedText(metadata.child("serid"))};
    for (const auto import : element.children("import"))
        result.imports.push_back(ReadImport(import));
    return result;
}

}  // namespace

std::string ReadRawDocument(Trial& trial)
{
    auto text = host::ReadDocumentText(trial.GetFile());
    if (!text)
        trial.Skip(text.GetError().message);
    return *std::move(text);
}

std::size_t FindLine(std::string_view text, std::size_t place)
{
    const auto before = text.substr(0, place);
    return static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
}

void Advise(Trial& trial, bool holds, const std::string& expected, const std::string& came)
{
    if (!holds)
        trial.Warn("expected " + expected + ", came " + came);
}

RawDocument::RawDocument(Trial& trial) : text_(ReadRawDocument(trial))
{
    constexpr unsigned options = pugi::parse_full | pugi::parse_fragment;
    const auto result = tree_.load_buffer(text_.data(), text_.size(), options, pugi::encoding_utf8);
    // To the parser a NUL is the end of the text.
    if (!result || text_.find('\0') != std::string::npos)
        trial.Skip("the configuration document is not well-formed");
    root_ = tree_.find_child([](pugi::xml_node node) { return node.type() == pugi::node_element; });
    if (root_)
        Collect(root_);
}

// Goes no deeper than the places that are known. The root has what belongs into it whatever it is called itself.
void RawDocument::Collect(pugi::xml_node element)
{
    known_.push_back(element);
    const std::string_view parent = element == root_ ? "plugcfg" : element.name();
    for (const auto child : element.children())
    {
        if (child.type() != pugi::node_element)
            continue;
        if (IsKnown(parent, child.name()))
            Collect(child);
        else
            unknown_.push_back(child);
    }
}

pugi::xml_node RawDocument::NeedRoot(Trial& trial) const
{
    if (!root_)
        trial.Skip("the configuration document has no root element");
    return root_;
}

std::vector<pugi::xml_node> RawDocument::Find(std::string_view parent, std::string_view name) const
{
    std::vector<pugi::xml_node> found;
    std::copy_if(known_.begin(), known_.end(), std::back_inserter(found),
                 [&](pugi::xml_node element) { return element.parent().name() == parent && element.name() == name; });
    return found;
}

std::vector<host::Export> RawDocument::ReadExports() const
{
    std::vector<host::Export> exports;
    for (const auto element : root_.children("export"))
        exports.push_back(ReadExport(element));
    return exports;
}

std::string RawDocument::Describe(pugi::xml_node element) const
{
    const auto place = static_cast<std::size_t>(std::max<std::ptrdiff_t>(element.offset_debug(), 0));
    return host::MakeOneLine(element.name()) + " in line " + std::to_string(FindLine(text_, place));
}

bool IsTextNode(pugi::xml_node node)
{
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

std::string ReadRawText(pugi::xml_node element)
{
    std::string text;
    for (const auto piece : element.children())
        text += IsTextNode(piece) ? piece.value() : "";
    return text;
}

std::string ReadTrimmedText(pugi::xml_node element)
{
    const auto text = ReadRawText(element);
    const auto start = text.find_first_not_of(WhiteSpace);
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(WhiteSpace) - start + 1);
}

}  // namespace tvx::check
