// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::host
{

// One dependency that the host gives to an export.
struct Import
{
    std::string property;   // the import's name
    std::string contract;   // what the imported object has to fulfil
    bool optional = false;  // whether the export works without it

    bool operator==(const Import&) const = default;
};

// What an export says about itself; only the name is never empty.
struct Metadata
{
    std::string name;       // for people
    std::string subname;    // further words to the name
    std::string copyright;  // whose work it is
    std::string serid;      // the identifier of the format in which the export's objects are serialised

    bool operator==(const Metadata&) const = default;
};

// One implementation that a module offers.
struct Export
{
    std::string id;                      // what GetExport takes
    std::vector<std::string> contracts;  // the identifiers of what it fulfils; at least one
    Metadata metadata;                   // what it says of itself to people
    std::vector<Import> imports;         // what it needs

    bool operator==(const Export&) const = default;
};

// The content of a configuration document, everything in document order.
struct PluginDocument
{
    std::string version;          // of the document's own form
    std::vector<Export> exports;  // what the module offers

    // Whether there is an export of that identifier.
    bool Offers(std::string_view id) const;

    bool operator==(const PluginDocument&) const = default;
};

// Reads the text of a configuration document.
//
// Texts are trimmed of surrounding white space and keep their bytes otherwise, whether or not they are UTF-8. Elements
// and attributes of unknown names are skipped with all their content, and so is text where only elements belong:
// documents may gain more in time. What is known is held to its rules, and a document type is refused, so that no
// entity means anything.
//   origin  the name of the file that the text is from, for messages
// Fails: BadDocument, with the number of the line.
Outcome<PluginDocument> ParsePluginDocument(std::string_view text, std::string_view origin);

// The configuration document of a module's file, read without running any of its code.
// Fails: as ReadDocumentText and ParsePluginDocument.
Outcome<PluginDocument> ReadPluginDocument(const std::filesystem::path& file);

}  // namespace tvx::host
