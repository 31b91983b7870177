// SPDX-License-Identifier: MIT
#include "Tool/Checks/RawDocument.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>

namespace tvx::check
{

namespace
{

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Whether an element holds elements, not text.
bool HoldsElements(pugi::xml_node element)
{
    return IsOneOf(element.name(), {"plugcfg", "export", "metadata", "import"});
}

// Warns of the first element that is wrong.
template <class IsWrong>
void AdviseFirst(Trial& trial, const char* expected, IsWrong&& isWrong)
{
    const RawDocument document(trial);
    const auto& known = document.GetKnown();
    const auto wrong = std::find_if(known.begin(), known.end(), isWrong);
    if (wrong != known.end())
        Advise(trial, false, expected, Show(ReadRawText(*wrong)) + " in " + document.Describe(*wrong));
}

void HasTextInItsPlace(Trial& trial)
{
    AdviseFirst(trial, "no text where elements belong",
                [](pugi::xml_node element) { return HoldsElements(element) && !ReadTrimmedText(element).empty(); });
}

void HasTrimmedTexts(Trial& trial)
{
    AdviseFirst(trial, "texts without white space around them",
                [](pugi::xml_node element)
                { return !HoldsElements(element) && ReadRawText(element) != ReadTrimmedText(element); });
}

void FillsWhatIsRequired(Trial& trial)
{
    const RawDocument document(trial);
    for (const auto element : document.GetKnown())
    {
        const bool required = IsOneOf(element.name(), {"id", "contract", "name", "property"});
        if (required && ReadTrimmedText(element).empty())
            trial.Fail(document.Describe(element) + " to hold text", "none");
    }
}

void SaysTrueForOptional(Trial& trial)
{
    const RawDocument document(trial);
    for (const auto element : document.Find("import", "optional"))
        trial.Equal(document.Describe(element), ReadTrimmedText(element), "true");
}

bool IsCharacterNumber(std::string_view digits)
{
    constexpr std::uint32_t lastCharacter = 0x10FFFF;
    const bool hexadecimal = digits.starts_with('x');
    digits.remove_prefix(hexadecimal ? 1 : 0);
    std::uint32_t code = 0;
    const auto* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, code, hexadecimal ? 16 : 10);
    return result.ec == std::errc() && result.ptr == end && code != 0 && code <= lastCharacter;
}

// Whether a text begins with a reference that means a character in every document: "&amp;".
bool IsReference(std::string_view text)
{
    const auto end = text.find(';');
    if (end == std::string_view::npos)
        return false;
    const auto name = text.substr(1, end - 1);
    return name.starts_with('#') ? IsCharacterNumber(name.substr(1))
                                 : IsOneOf(name, {"amp", "lt", "gt", "quot", "apos"});
}

void ExpectReferences(Trial& trial, std::string_view text)
{
    for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1))
        trial.Expect(IsReference(text.substr(at)), "each & to begin a reference to a character",
                     Show(text.substr(at, 20)));
}

// Looks at the texts and attributes of a whole tree that was read without resolving references.
class ReferenceWalker final : public pugi::xml_tree_walker
{
public:
    explicit ReferenceWalker(Trial& trial) : trial_(trial) {}

    bool for_each(pugi::xml_node& node) override
    {
        if (node.type() == pugi::node_pcdata)
            ExpectReferences(trial_, node.value());
        for (const auto attribute : node.attributes())
            ExpectReferences(trial_, attribute.value());
        return true;
    }

private:
    Trial& trial_;
};

void HasRightReferences(Trial& trial)
{
    constexpr unsigned options = (pugi::parse_default | pugi::parse_fragment) & ~pugi::parse_escapes;
    const auto text = ReadRawDocument(trial);
    pugi::xml_document tree;
    if (!tree.load_buffer(text.data(), text.size(), options, pugi::encoding_utf8))
        trial.Skip("the configuration document is not well-formed");
    ReferenceWalker walker(trial);
    tree.traverse(walker);
}

constexpr Check Checks[] = {
    {"document-has-right-references", "Each & in texts and attributes is looked at.",
     "An & begins one of the five named references or the number of a character that exists: others mean nothing, and "
     "readers lose text at them in silence.",
     HasRightReferences},
    {"document-has-text-in-its-place", "Text is looked for where only elements belong.",
     "plugcfg, export, metadata and import hold elements only; hosts skip text there.", HasTextInItsPlace},
    {"document-optional-says-true", "The text of each optional element is read.",
     "An import is optional by the text true; a required one has no such element.", SaysTrueForOptional},
    {"document-required-texts-are-filled", "The texts of ids, contracts, names and properties are read.",
     "Identifiers and names are not empty: nothing could be found by them.", FillsWhatIsRequired},
    {"document-texts-have-no-space-around", "The texts are compared with themselves without surrounding white space.",
     "Identifiers are compared byte for byte, and not every host takes the space away.", HasTrimmedTexts},
};

}  // namespace

extern const Family DocumentTextFamily = {"document", nullptr, Needs::File, Checks};

}  // namespace tvx::check
