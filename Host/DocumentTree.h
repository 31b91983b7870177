// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"

#include <pugixml.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tvx::host
{

// The elements of a configuration document, and the rules that hold for all of them.
//
// Only the first failure is kept, so a reader walks through to the end and asks once: what it reads after a failure is
// of no use but harmless. Nothing here descends by recursion: how deep a document is nested makes no difference.
class DocumentTree
{
public:
    // Both are borrowed for the tree's lifetime; origin is the name of the text's file.
    DocumentTree(std::string_view text, std::string_view origin);

    // The first failure, if there is one.
    const std::optional<Error>& GetFailure() const;

    // Null after a failure.
    pugi::xml_node GetRoot();

    // The one child of the name; null when there is none, which is a failure for RequireOne alone.
    pugi::xml_node FindOne(pugi::xml_node parent, const char* name);
    pugi::xml_node RequireOne(pugi::xml_node parent, const char* name);

    // The text of an element, trimmed; empty for null.
    std::string ReadText(pugi::xml_node element);
    std::string RequireText(pugi::xml_node element);

    // Keeps a failure, whose message tells the line of the place, unless there is one already.
    void Fail(pugi::xml_node place, const std::string& problem);

private:
    void Parse();
    void CheckTopLevel(pugi::xml_node node);
    void Fail(std::ptrdiff_t offset, const std::string& problem);

    std::string_view text_;
    std::string_view origin_;
    pugi::xml_document tree_;
    std::optional<Error> failure_;
};

// A text from the document as messages show it: in quotation marks, and cut when it is very long.
std::string Quote(std::string_view text);

}  // namespace tvx::host
