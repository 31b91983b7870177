// SPDX-License-Identifier: MIT
#include "Tool/Checks/RawDocument.h"

#include <iterator>

namespace tvx::check
{

namespace
{

void HasRightRoot(Trial& trial)
{
    const RawDocument document(trial);
    trial.Equal("the name of the root element", document.NeedRoot(trial).name(), "plugcfg");
}

void HasRightVersion(Trial& trial)
{
    const RawDocument document(trial);
    std::vector<std::string> versions;
    for (const auto attribute : document.NeedRoot(trial).attributes())
    {
        if (attribute.name() == std::string_view("version"))
            versions.emplace_back(attribute.value());
    }
    trial.Equal("the versions of the root element", versions, std::vector<std::string>{"1"});
}

void HasKnownElementsOnly(Trial& trial)
{
    const RawDocument document(trial);
    if (document.GetUnknown().empty())
        return;
    const auto first = document.GetUnknown().front();
    Advise(trial, false, "no unknown element in " + document.Describe(first.parent()), document.Describe(first));
}

void HasKnownAttributesOnly(Trial& trial)
{
    const RawDocument document(trial);
    for (const auto element : document.GetKnown())
    {
        for (const auto attribute : element.attributes())
            Advise(trial, element == document.GetRoot() && attribute.name() == std::string_view("version"),
                   "no attribute but the version of plugcfg", Show(attribute.name()) + " of " + Show(element.name()));
    }
}

void OffersSomething(Trial& trial)
{
    const RawDocument document(trial);
    Advise(trial, static_cast<bool>(document.NeedRoot(trial).child("export")), "a document with exports",
           "one without");
}

// How often an element stands in its parent.
struct Occurrence
{
    const char* parent;
    const char* name;
    std::ptrdiff_t least;
    std::ptrdiff_t most;
    const char* number;  // the two in words
};

constexpr std::ptrdiff_t AnyNumber = 1'000'000;

constexpr Occurrence OneId = {"export", "id", 1, 1, "exactly one"};
constexpr Occurrence SomeContracts = {"export", "contract", 1, AnyNumber, "at least one"};
constexpr Occurrence OneMetadata = {"export", "metadata", 1, 1, "exactly one"};
constexpr Occurrence OneName = {"metadata", "name", 1, 1, "exactly one"};
constexpr Occurrence OneSubnameAtMost = {"metadata", "subname", 0, 1, "at most one"};
constexpr Occurrence OneCopyrightAtMost = {"metadata", "copyright", 0, 1, "at most one"};
constexpr Occurrence OneSeridAtMost = {"metadata", "serid", 0, 1, "at most one"};
constexpr Occurrence OneProperty = {"import", "property", 1, 1, "exactly one"};
constexpr Occurrence OneContract = {"import", "contract", 1, 1, "exactly one"};
constexpr Occurrence OneOptionalAtMost = {"import", "optional", 0, 1, "at most one"};

template <const Occurrence& Rule>
void Occurs(Trial& trial)
{
    const RawDocument document(trial);
    for (const auto element : document.GetKnown())
    {
        const auto children = element.children(Rule.name);
        const auto count = std::distance(children.begin(), children.end());
        const bool right = count >= Rule.least && count <= Rule.most;
        if (!right && element.name() == std::string_view(Rule.parent))
            trial.Fail(document.Describe(element) + " to have " + Rule.number + " " + Rule.name, Show(count));
    }
}

constexpr Check Checks[] = {
    {"document-root-is-plugcfg", "The name of the outermost element is looked at.",
     "The outermost element is plugcfg; otherwise it is no configuration document.", HasRightRoot},
    {"document-version-is-1", "The version of the outermost element is looked at.",
     "plugcfg has the attribute version once, and it is 1: a host refuses other versions, which it does not know.",
     HasRightVersion},
    {"document-has-known-elements-only", "Elements are compared with those that have a meaning where they stand.",
     "Elements of other names are skipped by hosts, so what they say does not arrive; a name may be misspelt.",
     HasKnownElementsOnly},
    {"document-has-known-attributes-only", "Attributes are compared with the one that has a meaning.",
     "The version of plugcfg is the only attribute; hosts skip others.", HasKnownAttributesOnly},
    {"document-offers-something", "The exports are counted.",
     "A module has at least one export: there is no other way to its objects.", OffersSomething},
    {"document-export-has-one-id", "The id elements of each export are counted.",
     "Each export has exactly one id, by which it is asked for.", Occurs<OneId>},
    {"document-export-has-contracts", "The contract elements of each export are counted.",
     "Each export fulfils at least one contract; hosts look for exports by their contracts.", Occurs<SomeContracts>},
    {"document-export-has-one-metadata", "The metadata elements of each export are counted.",
     "Each export has exactly one metadata, which tells people what it is.", Occurs<OneMetadata>},
    {"document-metadata-has-one-name", "The name elements of each metadata are counted.",
     "Each metadata has exactly one name; it is what lists of installed exports show.", Occurs<OneName>},
    {"document-metadata-has-one-subname-at-most", "The subname elements of each metadata are counted.",
     "A metadata has one subname or none.", Occurs<OneSubnameAtMost>},
    {"document-metadata-has-one-copyright-at-most", "The copyright elements of each metadata are counted.",
     "A metadata has one copyright or none.", Occurs<OneCopyrightAtMost>},
    {"document-metadata-has-one-serid-at-most", "The serid elements of each metadata are counted.",
     "A metadata has one serid or none: the objects of an export are written in one format.", Occurs<OneSeridAtMost>},
    {"document-import-has-one-property", "The property elements of each import are counted.",
     "Each import has exactly one property: the name under which the export is given it.", Occurs<OneProperty>},
    {"document-import-has-one-contract", "The contract elements of each import are counted.",
     "Each import has exactly one contract: what the host looks for to fulfil it.", Occurs<OneContract>},
    {"document-import-is-optional-once", "The optional elements of each import are counted.",
     "An import says at most once that it is optional.", Occurs<OneOptionalAtMost>},
};

}  // namespace

extern const Family DocumentElementFamily = {"document", nullptr, Needs::File, Checks};

}  // namespace tvx::check
