// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/PublishedExports.h"
#include "Tool/Checks/RawDocument.h"

#include <algorithm>

namespace tvx::check
{

namespace
{

void CompareImports(Trial& trial, const std::vector<host::Import>& came, const std::vector<host::Import>& expected)
{
    trial.Equal("the number of imports", came.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        const auto which = " of import " + std::to_string(i + 1);
        trial.Equal("the property" + which, came[i].property, expected[i].property);
        trial.Equal("the contract" + which, came[i].contract, expected[i].contract);
        trial.Equal("optional" + which, came[i].optional, expected[i].optional);
    }
}

// What the module's document says of the published export at a place in document order.
template <std::size_t Place>
void SaysWhatIsPublished(Trial& trial)
{
    NeedPublishedExports(trial);
    const auto& expected = GetPublishedExports()[Place];
    const auto& exports = trial.GetDocument().exports;
    const auto came = std::find_if(exports.begin(), exports.end(),
                                   [&](const host::Export& entry) { return entry.id == expected.id; });
    trial.Equal("the contracts", came->contracts, expected.contracts);
    trial.Equal("the name", came->metadata.name, expected.metadata.name);
    trial.Equal("the subname", came->metadata.subname, expected.metadata.subname);
    trial.Equal("the copyright", came->metadata.copyright, expected.metadata.copyright);
    trial.Equal("the serid", came->metadata.serid, expected.metadata.serid);
    CompareImports(trial, came->imports, expected.imports);
}

void KeepsTheOrder(Trial& trial)
{
    NeedPublishedExports(trial);
    const auto ids = GetIds(trial);
    const auto& published = GetPublishedExports();
    for (std::size_t i = 0; i < published.size(); ++i)
        trial.Equal("the id of export " + std::to_string(i + 1), ids[i], published[i].id);
    trial.Equal("the number of exports", ids.size(), published.size());
}

// The comment right in front of an element; empty when something else stands there.
std::string FindCommentBefore(pugi::xml_node element)
{
    const auto before = element.previous_sibling();
    if (before.type() != pugi::node_comment)
        return {};
    const std::string text = before.value();
    const auto start = text.find_first_not_of(' ');
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(' ') - start + 1);
}

pugi::xml_node FindExport(const RawDocument& document, const std::string& id)
{
    return document.GetRoot().find_child([&](pugi::xml_node element)
                                         { return ReadTrimmedText(element.child("id")) == id; });
}

void CommentsOnTheLogger(Trial& trial)
{
    NeedPublishedExports(trial);
    const RawDocument document(trial);
    trial.Equal("the comment before the logger's export", FindCommentBefore(FindExport(document, LoggerExport)),
                "Export ILogger, Console Logger Implementation");
}

void CommentsOnTheCrashServer(Trial& trial)
{
    NeedPublishedExports(trial);
    const RawDocument document(trial);
    const auto second = FindExport(document, LoggerExport).child("import").next_sibling("import");
    trial.Equal("the comment before the logger's second import", FindCommentBefore(second), "crash server");
}

void PutsIdFirst(Trial& trial)
{
    NeedPublishedExports(trial);
    const RawDocument document(trial);
    for (const auto& entry : GetPublishedExports())
    {
        const auto element = FindExport(document, entry.id);
        const auto first = element.find_child([](pugi::xml_node node) { return node.type() == pugi::node_element; });
        const std::string expected = entry.id.find("Variant") != std::string::npos ? "id" : "contract";
        Advise(trial, first.name() == expected, expected + " to come first in " + Show(entry.id), first.name());
    }
}

constexpr const char Rule[] =
    "What the eight generic exports are, fulfil and need is published: hosts and plug-ins of other makers rely on each "
    "contract, text and import, also on the irregular names.";

constexpr Check Checks[] = {
    {"document-of-string-export", "What the document says of the string export is compared.", Rule,
     SaysWhatIsPublished<0>},
    {"document-of-map-export", "What the document says of the map export is compared.", Rule, SaysWhatIsPublished<1>},
    {"document-of-settings-map-export", "What the document says of the settings map export is compared.", Rule,
     SaysWhatIsPublished<2>},
    {"document-of-collection-export", "What the document says of the collection export is compared.", Rule,
     SaysWhatIsPublished<3>},
    {"document-of-image-export", "What the document says of the image export is compared.", Rule,
     SaysWhatIsPublished<4>},
    {"document-of-variant-export", "What the document says of the variant export is compared.", Rule,
     SaysWhatIsPublished<5>},
    {"document-of-variant-array-export", "What the document says of the variant array export is compared.", Rule,
     SaysWhatIsPublished<6>},
    {"document-of-logger-export", "What the document says of the logger is compared.", Rule, SaysWhatIsPublished<7>},
    {"document-keeps-the-published-order", "The ids of all exports are compared in document order.",
     "The document has the eight generic exports in their published order, which is not the one in which they are "
     "registered, and no others.",
     KeepsTheOrder},
    {"document-puts-id-first-for-variants", "The first element of each export is looked at.",
     "The id comes first for the variant and the variant array, the contracts in the other exports. Either order reads "
     "the same, but the text is published.",
     PutsIdFirst},
    {"document-comments-on-the-logger", "The comment before the logger's export is read.",
     "The comment \"Export ILogger, Console Logger Implementation\" stands right before the logger's export.",
     CommentsOnTheLogger},
    {"document-comments-on-the-crash-server", "The comment before the logger's second import is read.",
     "The comment \"crash server\" stands right before the logger's second import.", CommentsOnTheCrashServer},
};

}  // namespace

extern const Family PublishedDocumentFamily = {"document", nullptr, Needs::File, Checks};

}  // namespace tvx::check
