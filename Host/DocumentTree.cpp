// SPDX-License-Identifier: MIT
#include "Host/DocumentTree.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <new>
#include <system_error>

namespace tvx::host
{
namespace
{

constexpr std::size_t LongestQuote = 100;
constexpr std::string_view WhiteSpace = " \t\r\n";

bool IsForbidden(char character)
{
    return static_cast<unsigned char>(character) < 0x20 && WhiteSpace.find(character) == std::string_view::npos;
}

bool IsText(pugi::xml_node node)
{
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

// Whether what follows "&#" is the number of no character. The parser would take such a number for a NUL or another
// character, and lose text in silence.
bool IsBadReference(std::string_view digits)
{
    constexpr std::uint32_t lastCharacter = 0x10FFFF;
    const int base = digits.starts_with('x') ? 16 : 10;
    digits.remove_prefix(base == 16 ? 1 : 0);
    std::uint32_t code = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), code, base);
    const bool isNumber = result.ec != std::errc::invalid_argument;
    return isNumber && (result.ec != std::errc() || code == 0 || code > lastCharacter);
}

std::size_t FindBadReference(std::string_view text)
{
    auto start = text.find("&#");
    while (start != std::string_view::npos && !IsBadReference(text.substr(start + 2)))
    {
        start = text.find("&#", start + 2);
    }
    return start;
}

}  // namespace

DocumentTree::DocumentTree(std::string_view text, std::string_view origin) : text_(text), origin_(origin)
{
    // To the parser a NUL is the end of the text: whatever follows would be lost in silence.
    if (const auto nul = text.find('\0'); nul != std::string_view::npos)
    {
        Fail(static_cast<std::ptrdiff_t>(nul), "a NUL byte");
        return;
    }
    if (const auto reference = FindBadReference(text); reference != std::string_view::npos)
    {
        Fail(static_cast<std::ptrdiff_t>(reference), "a reference to a character that does not exist");
        return;
    }
    Parse();
}

const std::optional<Error>& DocumentTree::GetFailure() const
{
    return failure_;
}

void DocumentTree::Parse()
{
    // As a fragment, since only then the parser keeps text outside of the root for CheckTopLevel to refuse.
    constexpr unsigned options = pugi::parse_default | pugi::parse_fragment | pugi::parse_doctype;
    const auto result = tree_.load_buffer(text_.data(), text_.size(), options, pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory)
    {
        throw std::bad_alloc();
    }
    if (!result)
    {
        Fail(result.offset, std::string("not well-formed XML (") + result.description() + ")");
    }
}

pugi::xml_node DocumentTree::GetRoot()
{
    pugi::xml_node root;
    for (const pugi::xml_node node : tree_)
    {
        CheckTopLevel(node);
        if (root && node.type() == pugi::node_element)
        {
            Fail(node, "a second root element");
        }
        root = node.type() == pugi::node_element ? node : root;
    }
    if (!root)
    {
        Fail(0, "no root element");
    }
    return failure_ ? pugi::xml_node() : root;
}

void DocumentTree::CheckTopLevel(pugi::xml_node node)
{
    if (node.type() == pugi::node_doctype)
    {
        Fail(node, "a document type is not allowed");
    }
    if (IsText(node))
    {
        const auto start = text_.find_first_not_of(WhiteSpace, static_cast<std::size_t>(node.offset_debug()));
        Fail(static_cast<std::ptrdiff_t>(start), "text outside of the root element");
    }
}

pugi::xml_node DocumentTree::FindOne(pugi::xml_node parent, const char* name)
{
    const auto element = parent.child(name);
    if (const auto second = element.next_sibling(name))
    {
        Fail(second, std::string(parent.name()) + " has more than one " + name);
    }
    return element;
}

pugi::xml_node DocumentTree::RequireOne(pugi::xml_node parent, const char* name)
{
    const auto element = FindOne(parent, name);
    if (!element)
    {
        Fail(parent, std::string(parent.name()) + " has no " + name);
    }
    return element;
}

std::string DocumentTree::ReadText(pugi::xml_node element)
{
    std::string text;
    for (const pugi::xml_node piece : element)
    {
        text += IsText(piece) ? piece.value() : "";
    }
    if (std::any_of(text.begin(), text.end(), IsForbidden))
    {
        Fail(element, std::string(element.name()) + " holds a control character");
    }
    const auto start = text.find_first_not_of(WhiteSpace);
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(WhiteSpace) - start + 1);
}

std::string DocumentTree::RequireText(pugi::xml_node element)
{
    auto text = ReadText(element);
    if (text.empty())
    {
        Fail(element, std::string(element.name()) + " is empty");
    }
    return text;
}

void DocumentTree::Fail(pugi::xml_node place, const std::string& problem)
{
    Fail(place.offset_debug(), problem);
}

void DocumentTree::Fail(std::ptrdiff_t offset, const std::string& problem)
{
    if (failure_)
    {
        return;
    }
    const auto before = text_.substr(0, static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0)));
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    failure_ = MakeError(ErrorKind::BadDocument, std::string(origin_) + " has a bad configuration document: line " +
                                                     std::to_string(line) + ": " + problem);
}

std::string Quote(std::string_view text)
{
    const bool cut = text.size() > LongestQuote;
    return '"' + std::string(text.substr(0, LongestQuote)) + (cut ? "...\"" : "\"");
}

}  // namespace tvx::host
