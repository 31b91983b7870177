// SPDX-License-Identifier: MIT
#include "Tool/Checks/RawDocument.h"

#include <algorithm>
#include <set>

namespace tvx::check
{

namespace
{

using Texts = std::vector<std::string>;

constexpr const char Deserializable[] = "com.talvere.general.tvx.DeserializableContract/";

// The first text that stands there before; empty when there is none.
std::string FindRepeated(const Texts& texts)
{
    std::set<std::string> seen;
    for (const auto& text : texts)
    {
        if (!seen.insert(text).second)
            return text;
    }
    return {};
}

bool IsIn(const Texts& texts, const std::string& text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

bool HasOnly(std::string_view text, std::string_view others)
{
    return std::all_of(text.begin(), text.end(),
                       [&](char character) {
                           return (character >= '0' && character <= '9') || others.find(character) != std::string::npos;
                       });
}

// Digits, a point and digits.
bool IsVersion(std::string_view text)
{
    const auto point = text.find('.');
    return point != std::string_view::npos && point > 0 && point + 1 < text.size() &&
           HasOnly(text.substr(0, point), "") && HasOnly(text.substr(point + 1), "");
}

// At least two words with points between them.
bool IsQualifiedName(std::string_view text)
{
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_-.";
    return HasOnly(text, letters) && text.find('.') != std::string_view::npos && !text.starts_with('.') &&
           !text.ends_with('.') && text.find("..") == std::string_view::npos;
}

bool IsIdentifier(std::string_view text)
{
    const auto slash = text.rfind('/');
    return slash != std::string_view::npos && IsQualifiedName(text.substr(0, slash)) &&
           IsVersion(text.substr(slash + 1));
}

// Warns of texts of the shape that no identifier has; whether they are there at all is for other checks.
void AdviseShapes(Trial& trial, const RawDocument& document, const char* parent, const char* name)
{
    for (const auto element : document.Find(parent, name))
    {
        const auto text = ReadTrimmedText(element);
        Advise(trial, text.empty() || IsIdentifier(text),
               document.Describe(element) + " to have the shape reverse.domain.Name/major.minor", Show(text));
    }
}

void ShapesIds(Trial& trial)
{
    AdviseShapes(trial, RawDocument(trial), "export", "id");
}

void ShapesContracts(Trial& trial)
{
    const RawDocument document(trial);
    AdviseShapes(trial, document, "export", "contract");
    AdviseShapes(trial, document, "import", "contract");
}

void ShapesFormats(Trial& trial)
{
    AdviseShapes(trial, RawDocument(trial), "metadata", "serid");
}

void HasUniqueIds(Trial& trial)
{
    Texts ids;
    for (const auto& entry : RawDocument(trial).ReadExports())
        ids.push_back(entry.id);
    const auto repeated = FindRepeated(ids);
    trial.Expect(repeated.empty(), "each id to belong to one export", Show(repeated) + " for several");
}

void ListsContractsOnce(Trial& trial)
{
    for (const auto& entry : RawDocument(trial).ReadExports())
    {
        const auto repeated = FindRepeated(entry.contracts);
        trial.Expect(repeated.empty(), "each contract of " + Show(entry.id) + " to be listed once",
                     Show(repeated) + " several times");
    }
}

void KeepsIdsFromContracts(Trial& trial)
{
    const auto exports = RawDocument(trial).ReadExports();
    for (const auto& entry : exports)
    {
        for (const auto& other : exports)
            Advise(trial, entry.id.empty() || !IsIn(other.contracts, entry.id), "an id that is no contract",
                   Show(entry.id) + " as both");
    }
}

void NamesPropertiesOnce(Trial& trial)
{
    for (const auto& entry : RawDocument(trial).ReadExports())
    {
        Texts properties;
        for (const auto& import : entry.imports)
            properties.push_back(import.property);
        const auto repeated = FindRepeated(properties);
        trial.Expect(repeated.empty(), "each import of " + Show(entry.id) + " to have a property of its own",
                     Show(repeated) + " several times");
    }
}

void NamesItsFormat(Trial& trial)
{
    for (const auto& entry : RawDocument(trial).ReadExports())
    {
        const bool reads =
            std::any_of(entry.contracts.begin(), entry.contracts.end(),
                        [](const std::string& contract) { return contract.starts_with(Deserializable); });
        Advise(trial, !reads || !entry.metadata.serid.empty(),
               Show(entry.id) + ", which reads objects back, to name their format as serid", "no serid");
    }
}

// Whether the export fulfils the contract and no other one of the module does.
bool IsOnlyOne(const std::vector<host::Export>& exports, const host::Export& entry, const std::string& contract)
{
    const auto others = std::count_if(exports.begin(), exports.end(),
                                      [&](const host::Export& other) { return IsIn(other.contracts, contract); });
    return others == 1 && IsIn(entry.contracts, contract);
}

void DoesNotImportItself(Trial& trial)
{
    const auto exports = RawDocument(trial).ReadExports();
    for (const auto& entry : exports)
    {
        for (const auto& import : entry.imports)
            Advise(trial, !IsOnlyOne(exports, entry, import.contract), Show(entry.id) + " to import from others",
                   "the contract " + Show(import.contract) + ", which it fulfils itself");
    }
}

constexpr Check Checks[] = {
    {"document-ids-are-unique", "The ids of all exports are compared.",
     "An id belongs to one export of the module: GetExport gives one object for it.", HasUniqueIds},
    {"document-contracts-are-listed-once", "The contracts of each export are compared.",
     "An export lists a contract once; a host would offer the export twice for it.", ListsContractsOnce},
    {"document-ids-are-no-contracts", "Ids are compared with contracts.",
     "Ids and contracts are names of different things: GetExport takes an id only, and who mixes them up should "
     "notice.",
     KeepsIdsFromContracts},
    {"document-ids-have-their-shape", "The shape of each id is looked at.",
     "An id is a name under a reversed domain, a slash and a version: so makers cannot meet by chance.", ShapesIds},
    {"document-contracts-have-their-shape", "The shape of each contract is looked at, of exports and of imports.",
     "A contract is a name under a reversed domain, a slash and a version.", ShapesContracts},
    {"document-serids-have-their-shape", "The shape of each serid is looked at.",
     "A format is a name under a reversed domain, a slash and a version.", ShapesFormats},
    {"document-serid-goes-with-reading", "Exports that read objects back are looked at.",
     "An export that fulfils the contract of reading objects back names their format as serid: by it a host finds who "
     "can "
     "read what somebody has written.",
     NamesItsFormat},
    {"document-import-properties-are-unique", "The properties of each export's imports are compared.",
     "Imports of an export have different properties: the second would replace the first one.", NamesPropertiesOnce},
    {"document-export-imports-from-others", "Imports are compared with the contracts of their own export.",
     "An export should not import what in the module only it fulfils: a host would give it itself, and it would hold "
     "itself for good.",
     DoesNotImportItself},
};

}  // namespace

extern const Family DocumentContentFamily = {"document", nullptr, Needs::File, Checks};

}  // namespace tvx::check
