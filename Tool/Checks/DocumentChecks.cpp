// SPDX-License-Identifier: MIT
#include "Host/DocumentText.h"
#include "Tool/Checks/RawDocument.h"

#include <algorithm>

namespace tvx::check
{

namespace
{

using std::string_view_literals::operator""sv;

constexpr std::string_view ByteOrderMarks[] = {"\xEF\xBB\xBF"sv, "\xFE\xFF"sv, "\xFF\xFE"sv};

std::string InLine(std::string_view text, std::size_t place)
{
    return " in line " + std::to_string(FindLine(text, place));
}

void IsFound(Trial& trial)
{
    const auto text = host::ReadDocumentText(trial.GetFile());
    if (!text)
        trial.Fail("the file to carry a configuration document", text.GetError().message);
    trial.Expect(!text->empty(), "the configuration document to hold something", "no byte");
}

void IsMappedReadOnly(Trial& trial)
{
    auto file = host::ModuleFile::Open(trial.GetFile());
    if (!file)
        trial.Skip(file.GetError().message);
    const auto mapping = host::ReadTextMapping(*file, host::DocumentText);
    if (!mapping)
        trial.Skip(mapping.GetError().message);
    trial.Expect(mapping->mapped, "the configuration document to be mapped with the module",
                 "a part of the file that is not mapped");
    trial.Expect(!mapping->writable && !mapping->executable, "the configuration document to be read-only data",
                 mapping->writable ? "data that can be written to" : "code");
}

void IsWellFormed(Trial& trial)
{
    const auto text = ReadRawDocument(trial);
    if (text.find('\0') != std::string::npos)
        trial.Skip("the configuration document holds a NUL byte, which to the parser is its end");
    pugi::xml_document tree;
    const auto result =
        tree.load_buffer(text.data(), text.size(), pugi::parse_full | pugi::parse_fragment, pugi::encoding_utf8);
    trial.Expect(static_cast<bool>(result), "the configuration document to be well-formed XML",
                 result.description() + InLine(text, static_cast<std::size_t>(result.offset)));
}

void HasOneRoot(Trial& trial)
{
    const RawDocument document(trial);
    std::size_t roots = 0;
    for (const auto node : document.GetTree())
    {
        roots += node.type() == pugi::node_element ? 1 : 0;
        trial.Expect(!IsTextNode(node), "no text outside of the root element", Show(node.value()));
    }
    trial.Equal("the number of root elements", roots, 1u);
}

void HasNoDocumentType(Trial& trial)
{
    const RawDocument document(trial);
    for (const auto node : document.GetTree())
        trial.Expect(node.type() != pugi::node_doctype, "no document type", Show(node.value()));
}

// The place of the first CR or LF without the other one; the size of the text when there is none.
std::size_t FindLoneLineEnd(std::string_view text)
{
    constexpr std::string_view ends = "\r\n";
    auto at = text.find_first_of(ends);
    while (at != std::string_view::npos && text.substr(at).starts_with(ends))
        at = text.find_first_of(ends, at + ends.size());
    return std::min(at, text.size());
}

void EndsLinesWithBoth(Trial& trial)
{
    const auto text = ReadRawDocument(trial);
    const auto place = FindLoneLineEnd(text);
    trial.Expect(place == text.size(), "each line to end with CR LF",
                 "a lone " + Show(std::string_view(text).substr(place, 1)) + InLine(text, place));
}

void HasNoByteOrderMark(Trial& trial)
{
    const auto text = ReadRawDocument(trial);
    for (const auto mark : ByteOrderMarks)
        trial.Expect(!text.starts_with(mark), "the configuration document to begin without a byte order mark",
                     Show(mark));
}

void HasNoDeclaration(Trial& trial)
{
    const RawDocument document(trial);
    for (const auto node : document.GetTree())
        trial.Expect(node.type() != pugi::node_declaration, "no XML declaration",
                     "<?" + std::string(node.name()) + "?>");
}

void HasNoControlCharacters(Trial& trial)
{
    const auto text = ReadRawDocument(trial);
    const auto found = std::find_if(text.begin(), text.end(),
                                    [](char character)
                                    {
                                        return static_cast<unsigned char>(character) < 0x20 && character != '\t' &&
                                               character != '\r' && character != '\n';
                                    });
    const auto place = static_cast<std::size_t>(found - text.begin());
    trial.Expect(found == text.end(), "no control characters but tabs and the ends of lines",
                 Show(std::string_view(text).substr(place, 1)) + InLine(text, place));
}

// The bytes of the UTF-8 character that a text begins with; 0 when it begins with none.
std::size_t MeasureCharacter(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const auto tail = text.substr(1, size - 1);
    const bool whole = tail.size() == size - 1 &&
                       std::all_of(tail.begin(), tail.end(), [](char character) { return (character & 0xC0) == 0x80; });
    if (!whole)
        return 0;
    // Not in more bytes than needed, no halves of characters, nothing behind the last one.
    const auto second = static_cast<unsigned char>(text[1]);
    const bool wrong = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                       (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return wrong ? 0 : size;
}

// The place of the first byte that belongs to no UTF-8 character; the size of the text when there is none.
std::size_t FindStrangeByte(std::string_view text)
{
    std::size_t place = 0;
    while (place < text.size())
    {
        const auto size = MeasureCharacter(text.substr(place));
        if (size == 0)
            return place;
        place += size;
    }
    return place;
}

void IsUtf8(Trial& trial)
{
    const auto text = ReadRawDocument(trial);
    const auto place = FindStrangeByte(text);
    Advise(trial, place == text.size(), "texts of 7 bit or in UTF-8",
           Show(std::string_view(text).substr(place, 4)) + InLine(text, place));
}

constexpr Check Checks[] = {
    {"document-is-found", "The configuration document is read out of the file.",
     "A module carries its configuration document in its own file, so that a host learns what it offers before it runs "
     "any of its code.",
     IsFound},
    {"document-is-read-only-data", "The place of the configuration document in the file is looked up.",
     "The document is data that is mapped with the module and that nobody can write to or run: so it is there as long "
     "as "
     "the module is, and survives the removal of symbols.",
     IsMappedReadOnly},
    {"document-is-well-formed", "The configuration document is parsed.",
     "The document is well-formed XML; otherwise no host can read any of it.", IsWellFormed},
    {"document-has-one-root", "What stands at the top of the document is counted.",
     "There is exactly one outermost element, and no text beside it.", HasOneRoot},
    {"document-has-no-document-type", "A document type is looked for.",
     "There is no document type: no entity may mean anything in a document that hosts read unasked.",
     HasNoDocumentType},
    {"document-ends-lines-with-cr-lf", "The ends of all lines are looked at.",
     "Each line of the document ends with CR LF, on every system: the text is the same bytes wherever it is read.",
     EndsLinesWithBoth},
    {"document-has-no-byte-order-mark", "The first bytes of the document are looked at.",
     "The document is 8-bit text that begins without a byte order mark.", HasNoByteOrderMark},
    {"document-has-no-declaration", "An XML declaration is looked for.",
     "The document has no XML declaration: its form is told by the version of its outermost element alone.",
     HasNoDeclaration},
    {"document-has-no-control-characters", "Control characters and NUL bytes are looked for.",
     "The text is exactly as long as the document and holds no NUL and no control character: readers would end there, "
     "and XML has no such characters.",
     HasNoControlCharacters},
    {"document-is-utf-8", "The bytes of the document are decoded.",
     "Texts of more than 7 bit should be UTF-8: a document without a declaration is read as that.", IsUtf8},
};

}  // namespace

extern const Family DocumentFamily = {"document", nullptr, Needs::File, Checks};

}  // namespace tvx::check
