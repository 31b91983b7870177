// SPDX-License-Identifier: MIT
#pragma once

#include "Host/PluginDocument.h"
#include "Tool/Checks/Trial.h"

#include <pugixml.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::check
{

// The text of the module's configuration document. Skips the check when there is none.
std::string ReadRawDocument(Trial& trial);

// The number of the line that a byte of a text stands in, from 1 on.
std::size_t FindLine(std::string_view text, std::size_t place);

// What is no error yet: the check goes on and is a warning in the end.
void Advise(Trial& trial, bool holds, const std::string& expected, const std::string& came);

// The configuration document as it stands in the module's file. A host's reader refuses a document as a whole; here one
// mistake hides no other, so that each check finds its own.
class RawDocument
{
public:
    // Skips the check when the module has no document, or one that is no XML: there are checks for both.
    explicit RawDocument(Trial& trial);

    const std::string& GetText() const { return text_; }

    // The outermost element, whatever its name; null when there is none.
    pugi::xml_node GetRoot() const { return root_; }

    // The same; skips the check when there is none.
    pugi::xml_node NeedRoot(Trial& trial) const;

    // What stands beside the outermost element, and that itself.
    const pugi::xml_document& GetTree() const { return tree_; }

    // The elements of a name in each parent of a name, where a document has them.
    std::vector<pugi::xml_node> Find(std::string_view parent, std::string_view name) const;

    // All elements that have a meaning where they stand, in document order, and those others in them.
    const std::vector<pugi::xml_node>& GetKnown() const { return known_; }
    const std::vector<pugi::xml_node>& GetUnknown() const { return unknown_; }

    // Each export as far as it can be read: what is missing is empty, what stands twice is taken the first time.
    std::vector<host::Export> ReadExports() const;

    // An element as sentences name it: "import in line 12".
    std::string Describe(pugi::xml_node element) const;

private:
    void Collect(pugi::xml_node element);

    std::string text_;
    pugi::xml_document tree_;
    pugi::xml_node root_;
    std::vector<pugi::xml_node> known_;
    std::vector<pugi::xml_node> unknown_;
};

// Whether it is text, of either way in which XML says text.
bool IsTextNode(pugi::xml_node node);

// All text right in an element, as it stands and without the white space around it.
std::string ReadRawText(pugi::xml_node element);
std::string ReadTrimmedText(pugi::xml_node element);

}  // namespace tvx::check
